#!/usr/bin/env python3
"""Closed and opened again, the list stands as it stood: rows, their order and selection, and the picture of it."""

import os

import accessibility
import harness
import native_playlist
import sound


def list_texts(reader, program):
    """What the window shows a screen reader, but for what changes by itself."""
    return reader.texts(program.process.pid)


def test(program_path):
    with harness.Stage() as stage:
        paths = [os.path.join(stage.folder, f"{name}.wav") for name in ("one", "two", "three", "four", "five")]
        for seed, path in enumerate(paths):
            sound.write_wav(path, sound.noise(1 + seed, seed))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths[:3]])
        reader = accessibility.Reader(stage)
        program = stage.run_program(program_path)
        program.add_files(paths[3:])
        harness.wait_for(lambda: len(native_playlist.read_playlist(stage.default_playlist)) == 5, "the rows to be saved")
        shown = list_texts(reader, program)
        harness.check(program.close() == 0, "the program did not end well")
        saved = native_playlist.read_playlist(stage.default_playlist)
        harness.check([row.path for row in saved] == paths, f"the list is {[row.path for row in saved]}")
        harness.check(all(any(row.title in text for text in shown) for row in saved), f"the window shows {shown}")

        program = stage.run_program(program_path)
        harness.check(list_texts(reader, program) == shown, "the window shows another list than before")
        harness.check(program.close() == 0, "the program did not end well the second time")
        harness.check(native_playlist.read_playlist(stage.default_playlist) == saved, "the rows changed")


if __name__ == "__main__":
    harness.run(test)
