#!/usr/bin/env python3
"""Shows the program where there is no display: play_samples.py PROGRAM SAMPLES_FOLDER PICTURE

Opens the main window on a private screen, plays the samples into a private sound server for ten seconds, says how loud
the sound that came out was, and leaves a picture of the window. Fails when nothing could be heard.
"""

import os
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))

import harness  # noqa: E402  (found through the line above)
import native_playlist  # noqa: E402
import sound  # noqa: E402

PLAY_SECONDS = 10
ENDINGS = (".wav", ".mp3", ".mp2", ".ogg", ".wma", ".mpc", ".vox")


def show(program_path, samples_folder, picture):
    files = [os.path.abspath(os.path.join(samples_folder, name)) for name in sorted(os.listdir(samples_folder))
             if name.endswith(ENDINGS)]
    harness.check(files, f"there are no samples in {samples_folder}")
    with harness.Stage() as stage:
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(file) for file in files])
        program = stage.run_program(program_path)
        print(f"The main window is open on the private display {stage.env['DISPLAY']}, "
              f"{len(files)} samples in its list.", flush=True)
        program.volume_full()
        capture = stage.capture()
        program.menu("s")
        print(f"Playing for {PLAY_SECONDS} seconds ...", flush=True)
        time.sleep(PLAY_SECONDS * 0.7)
        stage.screenshot(picture, program.window)
        time.sleep(PLAY_SECONDS * 0.3)
        heard = sound.samples(capture.stop())
        program.close()
    peak = max(map(abs, heard), default=0)
    loud = sum(1 for value in heard if abs(value) > 32)
    print(f"Heard from the sound server: peak {peak} of 32767, {100 * loud / max(1, len(heard)):.0f} % of the samples "
          f"of {len(heard) / 2 / sound.RATE_HZ:.1f} s are sound.")
    print(f"Picture of the window: {os.path.abspath(picture)}")
    harness.check(peak > 32, "the program played nothing that could be heard")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    try:
        show(*sys.argv[1:])
    except harness.Failure as failure:
        sys.exit(f"Failed: {failure}")
