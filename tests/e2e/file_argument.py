#!/usr/bin/env python3
"""Started with the name of a sound file the program behaves as without: the list stands, and nothing plays."""

import os

import harness
import native_playlist
import sound


def test(program_path):
    with harness.Stage() as stage:
        paths = [os.path.join(stage.folder, name) for name in ("in_list.wav", "argument.wav")]
        for seed, path in enumerate(paths):
            sound.write_wav(path, sound.noise(1, seed))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(paths[0])])
        capture = stage.capture()
        program = stage.run_program(program_path, paths[1])
        end_s = capture.seconds() + 1.5
        harness.wait_for(lambda: capture.seconds() > end_s, "a second and a half of capture")
        harness.check(not capture.stop().strip(b"\0"), "something plays")
        harness.check(program.close() == 0, "the program did not end well")
        rows = native_playlist.read_playlist(stage.default_playlist)
        harness.check([row.path for row in rows] == paths[:1], f"the list is {[row.path for row in rows]}")


if __name__ == "__main__":
    harness.run(test)
