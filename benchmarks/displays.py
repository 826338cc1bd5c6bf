#!/usr/bin/env python3
"""Processor time of playback with each display, beside a peer that shows its spectrum.

    displays.py PROGRAM [SECONDS]

60 s unless told. All of them play at the same time, each on a screen and a sound server of its own, so that whatever else
the machine does meets all alike. The peer is audacious, whose window holds a spectrum from the start.
"""

import contextlib
import os
import shutil
import sys
import tempfile
import time

import whole_program as bench

DISPLAYS = ("Level Bars", "Analog", "FFT Fire", "FFT Glass", "FFT Kryptonite")


class WithDisplay(bench.Own):
    def __init__(self, program, number):
        super().__init__(program)
        self._number = number

    def play(self, stage):
        stage.key("alt+o")
        time.sleep(0.3)
        stage.key("Down", "Right", *["Down"] * self._number, "Return")
        time.sleep(0.3)
        super().play(stage)


def main(program, seconds):
    players = [(name, WithDisplay(os.path.abspath(program), number)) for number, name in enumerate(DISPLAYS)]
    if shutil.which("audacious"):
        players.append(("audacious, spectrum", bench.Peer()))
    with tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as stages:
        song = bench.make_song(folder, seconds + 120)
        running = []
        for name, player in players:
            process = bench.start_playing(stages.enter_context(bench.harness.Stage()), player, [song])
            running.append((name, process))
        time.sleep(3)
        before = [bench.processor_seconds(process.pid) for _, process in running]
        time.sleep(seconds)
        used = [bench.processor_seconds(process.pid) - begun for (_, process), begun in zip(running, before)]
        for (name, process), own in zip(running, used):
            print(f"{name}: {own:.2f} s in {seconds} s, {100 * own / seconds:.1f} % of a core, "
                  f"{own / used[-1]:.2f} of the last", flush=True)
            bench.harness.end(process)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) == 3 else 60)
