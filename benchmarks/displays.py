#!/usr/bin/env python3
"""Processor time of playback with each display, beside a peer that shows its spectrum, on a private screen and sound server.

    displays.py PROGRAM [SECONDS]

60 s for each unless told. The peer is audacious, whose window holds a spectrum from the start.
"""

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
    with tempfile.TemporaryDirectory() as folder, bench.harness.Stage() as stage:
        song = bench.make_song(folder, seconds + 30)
        players = [(name, WithDisplay(os.path.abspath(program), number)) for number, name in enumerate(DISPLAYS)]
        if shutil.which("audacious"):
            players.append(("audacious, spectrum", bench.Peer()))
        for name, player in players:
            used = bench.playing(stage, player, [song], bench.processor_for(seconds))
            print(f"{name}: {used:.2f} s in {seconds} s, {100 * used / seconds:.1f} % of a core", flush=True)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) == 3 else 60)
