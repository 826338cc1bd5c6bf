#!/usr/bin/env python3
"""A second instance says that the program is running and ends; it touches no file, and the first one goes on."""

import os

import accessibility
import harness
import native_playlist
import sound

MESSAGE = "This programme is running!"


def state_of(folder):
    """Name, inode, time of change and contents of all files in a folder."""
    found = {}
    for place, _, names in os.walk(folder):
        for name in names:
            path = os.path.join(place, name)
            status = os.stat(path)
            with open(path, "rb") as file:
                found[path] = (status.st_ino, status.st_mtime_ns, file.read())
    return found


def test(program_path):
    with harness.Stage() as stage:
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, sound.noise(0.5, seed=5))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        first = stage.run_program(program_path)
        before = state_of(stage.home)
        seen = set(stage.windows(".*"))
        reader = accessibility.Reader(stage)
        second = stage.run_program(program_path, wait=False)
        box = max(harness.wait_for(lambda: set(stage.windows(".*")) - seen, "a window of the second instance"))
        texts = harness.wait_for(lambda: reader.texts(second.process.pid), "the texts of its box")
        print(f"the second instance shows {texts}")
        harness.check(MESSAGE in texts, f"the second instance says {texts}")
        stage.xdotool("windowactivate", "--sync", box)
        stage.key("Return")
        harness.wait_for(lambda: second.process.poll() is not None, "the end of the second instance")
        harness.check(first.process.poll() is None, "the first instance ended")
        harness.check(state_of(stage.home) == before, "the second instance touched a file")
        # The screen hears of the end a moment after the process has ended.
        harness.wait_for(lambda: stage.windows(harness.MAIN_WINDOW_TITLE) == [first.window], "one main window alone")
        first.close()


if __name__ == "__main__":
    harness.run(test)
