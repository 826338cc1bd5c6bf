#!/usr/bin/env python3
"""Killed at 200 random moments while files are added, the list is sorted and the window is closed: what Default.ksl
holds afterwards is always a whole list, the old one or the new one.

Half of the kills come at a random moment after the keys; the other half wait for the first change in the program's folder,
so that they fall into the writing itself. The list is long, so that its writing takes time.
"""

import dataclasses
import multiprocessing
import os
import random
import shutil
import sys
import time

import harness
import native_playlist
import sound

KILLS = 200
WORKERS = 2
# With all that is added below 1000, from where on the order by number is one of text.
ROWS_AT_START = 880
LONGEST_WAIT_S = 0.4


class Round:
    """One start of the program, one thing done with it, and the kill."""

    def __init__(self, stage, program_path, moments, pool):
        self._stage = stage
        self._moments = moments
        self._pool = pool
        self._old = native_playlist.read_playlist(stage.default_playlist)
        self._program = stage.run_program(program_path)

    def play(self, action):
        """The paths that were added, and what was in the folder when the kill came."""
        before = self._folder_state()
        added = getattr(self, "_" + action)()
        if self._moments.random() < 0.5:
            time.sleep(self._moments.uniform(0, LONGEST_WAIT_S))
        else:
            end = time.monotonic() + LONGEST_WAIT_S
            while self._folder_state() == before and time.monotonic() < end:
                time.sleep(0.0002)
            time.sleep(self._moments.uniform(0, 0.006))
        self._program.kill()
        return added

    def check(self, action, added):
        """True if the new list was found, False if the old one."""
        try:
            new = native_playlist.read_playlist(self._stage.default_playlist)
        except (OSError, native_playlist.BadPlaylist) as error:
            raise harness.Failure(f"after a kill ({action}): {error}") from error
        old_paths = [row.path for row in self._old]
        new_paths = [row.path for row in new]
        if new_paths == old_paths:
            return False
        if action == "sort_and_close":
            harness.check(sorted(new_paths) == sorted(old_paths), "sorting lost or changed a row")
        else:
            # The file dialog hands over what was chosen in an order of its own.
            kept, gained = new_paths[: len(old_paths)], new_paths[len(old_paths) :]
            harness.check(kept == old_paths and sorted(gained) == sorted(added),
                          f"after a kill ({action}) with {added} to add, the list of {len(old_paths)} rows"
                          f" has {len(new_paths)}, the last of them {gained}")
        return True

    def _folder_state(self):
        with os.scandir(self._stage.home) as entries:
            return {(entry.name, entry.inode(), *self._size_and_time(entry)) for entry in entries}

    @staticmethod
    def _size_and_time(entry):
        try:
            status = entry.stat()
        except FileNotFoundError:  # replaced since it was listed
            return 0, 0
        return status.st_size, status.st_mtime_ns

    def _add(self):
        added = [self._pool.pop() for _ in range(self._moments.randint(1, 2))]
        self._program.add_files(added)
        return added

    def _close(self):
        self._stage.key("alt+F4")
        return []

    def _sort_and_close(self):
        self._program.sort_by_title()
        self._stage.key("alt+F4")
        return []


def make_pool(folder):
    """Short files under short names, since the names are typed."""
    path = os.path.join(folder, "0.wav")
    sound.write_wav(path, sound.noise(0.1, seed=6))
    for number in range(1, KILLS * 2):
        shutil.copy(path, os.path.join(folder, f"{number}.wav"))
    return [os.path.join(folder, f"{number}.wav") for number in range(KILLS * 2)]


def make_list(playlist, path):
    """Many rows; only the first one's file is there, since a row is not looked at before it is played."""
    first = native_playlist.row_for(path)
    rows = [first] + [dataclasses.replace(first, title=f"row {number}", name=f"row {number}.wav")
                      for number in range(1, ROWS_AT_START)]
    native_playlist.write_playlist(playlist, rows)


def work(program_path, seed, kills, results):
    moments = random.Random(seed)
    found = {"old": 0, "new": 0}
    error = ""
    try:
        with harness.Stage() as stage:
            pool = make_pool(stage.folder)
            make_list(stage.default_playlist, pool.pop())
            for number in range(kills):
                action = ("add", "close", "add", "sort_and_close")[number % 4]
                one = Round(stage, program_path, moments, pool)
                added = one.play(action)
                found["new" if one.check(action, added) else "old"] += 1
    except Exception as failure:  # of whatever kind: the test itself waits for an answer of each worker
        error = f"{type(failure).__name__}: {failure}"
    results.put((found, error))


def test(program_path, kills=KILLS):
    seed = random.randrange(1 << 30)
    print(f"seed {seed}", flush=True)
    results = multiprocessing.Queue()
    workers = [multiprocessing.Process(target=work, args=(program_path, seed + number, int(kills) // WORKERS, results))
               for number in range(WORKERS)]
    for worker in workers:
        worker.start()
    answers = [results.get() for _ in workers]
    for worker in workers:
        worker.join()
    old = sum(found["old"] for found, _ in answers)
    new = sum(found["new"] for found, _ in answers)
    print(f"{old + new} kills: {old} times the old list, {new} times the new one")
    for _, error in answers:
        harness.check(not error, error)
    harness.check(old and new, "all kills came before the list was saved, or all after")


if __name__ == "__main__":
    sys.stdout.reconfigure(line_buffering=True)
    harness.run(test)
