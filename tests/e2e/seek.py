#!/usr/bin/env python3
"""Dragging the thumb of the position bar, on and back: the sound goes on within one sample of the place asked for."""

import os

import accessibility
import harness
import native_playlist
import sound

SECONDS = 24
BAR_PIXELS = 198
THUMB_PIXELS = 12


class Bar:
    """The position bar of a playing program."""

    def __init__(self, program, reader):
        self._program = program
        left, top, width, height = reader.place_of(program.process.pid, "Position")
        harness.check(width == BAR_PIXELS, f"the position bar is {width} pixels wide")
        self._left, self._middle = left, top + height // 2

    def drag(self, from_width, to_width):
        """The thumb, from where the elapsed line has one width in pixels to where it has another."""
        half = THUMB_PIXELS // 2
        self._program.drag((self._left + round(from_width) + half, self._middle),
                           (self._left + to_width + half, self._middle))


def frame_for(line_width):
    """First frame of the file that is heard after the thumb was let go there."""
    target_ms = int(line_width * SECONDS * 1000 / (BAR_PIXELS - THUMB_PIXELS) + 0.5)
    return target_ms * sound.RATE_HZ // 1000


def width_at(seconds):
    return seconds / SECONDS * (BAR_PIXELS - THUMB_PIXELS)


def check_jump(data, source, at, heard, expected):
    """From capture frame `at` the file is heard from frame `heard`, then from `expected`; where that begins."""
    same = sound.common_frames(data, at, source, heard)
    harness.check(same > sound.RATE_HZ // 10, f"only {same} frames are heard from frame {heard}")
    begin = sound.skip_silence(data, at + same)
    piece = data[begin * sound.FRAME_BYTES : (begin + 64) * sound.FRAME_BYTES]
    found = sound.find_exact(source, piece)
    print(f"left the file at frame {heard + same}, went on at {found}, asked for {expected}, "
          f"{(begin - at - same) * 1000 / sound.RATE_HZ:.1f} ms of silence between")
    harness.check(found >= 0, "what is heard behind the jump is not in the file")
    harness.check(abs(found - expected) <= 1, f"went on at frame {found}, {found - expected} off")
    return begin, found


def test(program_path):
    with harness.Stage() as stage:
        source = sound.noise(SECONDS, seed=7)
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, source)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        # The bus first, so that the program finds it.
        reader = accessibility.Reader(stage)
        program = stage.run_program(program_path)
        bar = Bar(program, reader)
        program.volume_full()
        capture = stage.capture()
        program.menu("s")
        begin_s = capture.await_sound()
        stage.hear(1)
        on, back = 120, 40
        bar.drag(width_at(capture.seconds() - begin_s), on)
        let_go_s = capture.seconds()
        stage.hear(0.6)
        bar.drag(on + width_at(capture.seconds() - let_go_s), back)
        stage.hear(1)
        program.menu("t")
        data = capture.stop()
        program.close()
        begin = sound.skip_silence(data, 0)
        begin, heard = check_jump(data, source, begin, 0, frame_for(on))
        check_jump(data, source, begin, heard, frame_for(back))


if __name__ == "__main__":
    harness.run(test)
