#!/usr/bin/env python3
"""A list of a WAV, an MP3 and an Ogg file, started by the keys: all three come out in order and whole.

The WAV file bit by bit; the other two as ffmpeg decodes them, but for the dither of their last bit; less than 100 ms of
silence between two files; and behind the last file the first one again.
"""

import os

import harness
import native_playlist
import sound

LONGEST_GAP_MS = 100 * harness.SLOWNESS
DITHER_LSB = 2


def make_files(folder):
    """The three files, and the sound of the first."""
    paths = {ending: os.path.join(folder, "song." + ending) for ending in ("wav", "mp3", "ogg")}
    first = sound.noise(4, seed=1)
    sound.write_wav(paths["wav"], first)
    source = os.path.join(folder, "source.wav")
    sound.write_wav(source, sound.noise(3, seed=2))
    sound.run_tool("lame", "--quiet", "-b", "192", source, paths["mp3"])
    sound.write_wav(source, sound.noise(3, seed=3))
    sound.run_tool("oggenc", "-Q", "-q", "6", "-o", paths["ogg"], source)
    os.remove(source)
    return paths, first


def check_follows(values, name, path, end_frame):
    """The file's sound begins soon after end_frame; the frame where it ends."""
    expected = sound.samples(sound.decode(path))
    begin = sound.find_near(values, expected, end_frame, end_frame + sound.RATE_HZ, DITHER_LSB)
    harness.check(begin >= 0, f"the {name} file is not in the capture within a second of the file before it")
    difference = sound.worst_difference(values, expected, begin)
    gap_ms = (begin - end_frame) * 1000 / sound.RATE_HZ
    print(f"{name}: {gap_ms:.1f} ms of silence before it, {len(expected) // 2} frames, at most {difference} LSB off")
    harness.check(difference <= DITHER_LSB, f"the {name} file differs by {difference} LSB")
    harness.check(gap_ms < LONGEST_GAP_MS, f"{gap_ms:.1f} ms of silence before the {name} file")
    return begin + len(expected) // 2


def check_capture(data, paths, first):
    begin = sound.find_exact(data, first)
    if begin < 0:
        sounding = sound.pieces_between_silence(sound.samples(data))
        raise harness.Failure(f"the WAV file is not bit by bit in the capture; sound at frames {sounding}")
    print(f"wav: {len(first) // sound.FRAME_BYTES} frames, bit by bit")
    values = sound.samples(data)
    end = check_follows(values, "mp3", paths["mp3"], begin + len(first) // sound.FRAME_BYTES)
    end = check_follows(values, "ogg", paths["ogg"], end)
    again = sound.find_exact(data, first[: sound.RATE_HZ * sound.FRAME_BYTES], end)
    harness.check(again >= 0, "behind the last file the first one does not begin again")
    gap_ms = (again - end) * 1000 / sound.RATE_HZ
    print(f"wav again: {gap_ms:.1f} ms of silence before it")
    harness.check(gap_ms < LONGEST_GAP_MS, f"{gap_ms:.1f} ms of silence before the first file")


def test(program_path):
    with harness.Stage() as stage:
        paths, first = make_files(stage.folder)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths.values()])
        program = stage.run_program(program_path)
        program.volume_full()
        capture = stage.capture()
        program.menu("s")
        capture.await_sound()
        stage.hear(11.5)
        program.menu("t")
        data = capture.stop()
        harness.check(program.close() == 0, "the program did not end well")
        check_capture(data, paths, first)


if __name__ == "__main__":
    harness.run(test)
