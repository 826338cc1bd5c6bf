#!/usr/bin/env python3
"""Pausing and going on five times loses no sample and plays none twice."""

import os
import random

import harness
import native_playlist
import sound

PAUSES = 5
SECONDS = 12  # more than all that is heard between the pauses


def check_whole(data, source):
    """`data` is `source` with silence in some places; the (frame in source, frames of silence) of each."""
    at, heard, pauses = sound.skip_silence(data, 0), 0, []
    total = len(source) // sound.FRAME_BYTES
    while True:
        same = sound.common_frames(data, at, source, heard)
        if same == 0:
            piece = data[at * sound.FRAME_BYTES : (at + 32) * sound.FRAME_BYTES]
            where = sound.find_exact(source, piece)
            raise harness.Failure(f"after frame {heard} of the file frame {where} was heard"
                                  f" ({where - heard} frames off)" if where >= 0 else
                                  f"after frame {heard} of the file something else was heard")
        at, heard = at + same, heard + same
        if heard == total:
            return pauses
        begin = at
        at = sound.skip_silence(data, at)
        harness.check(at < len(data) // sound.FRAME_BYTES, f"the sound ends at frame {heard} of {total}")
        pauses.append((heard, at - begin))


def test(program_path):
    seed = random.randrange(1 << 30)
    print(f"seed {seed}")
    moments = random.Random(seed)
    with harness.Stage() as stage:
        source = sound.noise(SECONDS, seed=4)
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, source)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        program = stage.run_program(program_path)
        program.volume_full()
        capture = stage.capture()
        program.menu("s")
        for _ in range(PAUSES):
            stage.hear(moments.uniform(0.4, 1.0))
            program.pause_or_go_on()
            stage.hear(moments.uniform(0.3, 0.6))
            program.pause_or_go_on()
        stage.hear(SECONDS)
        program.menu("t")
        data = capture.stop()
        program.close()
        pauses = check_whole(data, source)
        print("paused at frame (frames of silence): " + ", ".join(f"{frame} ({length})" for frame, length in pauses))
        long_pauses = [length for _, length in pauses if length > sound.RATE_HZ // 5]
        harness.check(len(long_pauses) == PAUSES, f"{len(long_pauses)} of {PAUSES} pauses were heard")
        harness.check(len(pauses) == PAUSES, "there is silence where nobody paused")


if __name__ == "__main__":
    harness.run(test)
