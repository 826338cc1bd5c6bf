#!/usr/bin/env python3
"""Closed and opened again, the list stands as it stood: its rows, their order, the columns, and the picture of it."""

import os

import accessibility
import harness
import native_playlist
import sound


class ListPicture:
    """The list of a running program, as the screen shows it."""

    def __init__(self, stage, reader, program):
        self._stage = stage
        self._window = program.window
        x, y, width, height = reader.place_of(program.process.pid, "Playlist")
        window_x, window_y, _, _ = program.place()
        self._part = (x - window_x, y - window_y, width, height)

    def now(self):
        return self._stage.picture_sum(self._window, *self._part)

    def settled(self):
        """Once it no longer changes."""
        before = ""
        def still():
            nonlocal before
            last, before = before, self.now()
            return before if before == last else ""
        return harness.wait_for(still, "the list to stand still", step_s=0.2)


def test(program_path):
    with harness.Stage() as stage:
        paths = [os.path.join(stage.folder, f"{name}.wav") for name in ("one", "two", "three", "four", "five")]
        for seed, path in enumerate(paths):
            sound.write_wav(path, sound.noise(1 + seed, seed))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths[:3]])
        reader = accessibility.Reader(stage)
        program = stage.run_program(program_path)
        picture = ListPicture(stage, reader, program)
        before = picture.settled()
        program.add_files(paths[3:])
        harness.wait_for(lambda: len(native_playlist.read_playlist(stage.default_playlist)) == 5, "the rows to be saved")
        with_rows = picture.settled()
        harness.check(with_rows != before, "the list does not show the new rows")
        program.toggle_duration_column()
        shown = picture.settled()
        harness.check(shown != with_rows, "the list still shows the column that was turned off")
        harness.check(program.close() == 0, "the program did not end well")
        saved = native_playlist.read_playlist(stage.default_playlist)
        harness.check([row.path for row in saved] == paths, f"the list is {[row.path for row in saved]}")

        program = stage.run_program(program_path)
        picture = ListPicture(stage, reader, program)
        harness.check(picture.settled() == shown, "the list does not look as it did before")
        harness.check(program.close() == 0, "the program did not end well the second time")
        harness.check(native_playlist.read_playlist(stage.default_playlist) == saved, "the rows changed")


if __name__ == "__main__":
    harness.run(test)
