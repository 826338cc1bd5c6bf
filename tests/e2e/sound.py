"""Test sound, made from a seed, and places of one piece of sound in another."""

import array
import random
import struct
import subprocess
import sys

FRAME_BYTES = 4
RATE_HZ = 44100


def noise(seconds, seed, peak=8000):
    """Stereo noise as 16-bit little-endian bytes in which no sample is 0, so that silence is never part of it."""
    source = random.Random(seed)
    frames = int(seconds * RATE_HZ)
    raw = source.randbytes(frames * FRAME_BYTES)
    values = array.array("h", raw)
    _swap_if_big(values)
    out = array.array("h", ((value * peak) >> 15 or 1 for value in values))
    _swap_if_big(out)
    return out.tobytes()


def _swap_if_big(values):
    if sys.byteorder == "big":
        values.byteswap()


def samples(pcm):
    values = array.array("h", pcm)
    _swap_if_big(values)
    return values


def write_wav(path, pcm, channels=2, rate_hz=RATE_HZ):
    block = channels * 2
    header = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(pcm), b"WAVE", b"fmt ", 16, 1, channels, rate_hz,
                         rate_hz * block, block, 16, b"data", len(pcm))
    with open(path, "wb") as file:
        file.write(header + pcm)


def run_tool(*command):
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def decode(path):
    """ffmpeg's word on what a file holds, as 16-bit stereo at 44,100 Hz."""
    return subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "s16le", "-ac", "2", "-ar", str(RATE_HZ), "-"],
                          check=True, stdin=subprocess.DEVNULL, capture_output=True).stdout


def find_exact(pcm, piece, begin_frame=0):
    """Frame at which `piece` stands in `pcm` byte for byte, -1 when nowhere."""
    at = begin_frame * FRAME_BYTES
    while True:
        at = pcm.find(piece, at)
        if at < 0 or at % FRAME_BYTES == 0:
            return at if at < 0 else at // FRAME_BYTES
        at += 1


def find_near(values, piece, begin_frame, end_frame, tolerance):
    """Frame in [begin_frame, end_frame) from which `values` follow `piece` within `tolerance`, -1 when nowhere.

    The loudest 300 samples of the first 50,000 decide on the place; all others are compared by `worst_difference`.
    """
    marks = sorted(range(min(len(piece), 50000)), key=lambda index: -abs(piece[index]))[:300]
    last_frame = min(end_frame, (len(values) - len(piece)) // 2 + 1)
    for frame in range(begin_frame, last_frame):
        base = frame * 2
        for index in marks:
            if abs(values[base + index] - piece[index]) > tolerance:
                break
        else:
            return frame
    return -1


def worst_difference(values, piece, frame):
    base = frame * 2
    return max(abs(values[base + index] - piece[index]) for index in range(len(piece)))


def pieces_between_silence(values, silence_frames=64):
    """(begin, end) frames of each stretch without `silence_frames` frames of silence in a row."""
    found, begin, quiet = [], None, 0
    for frame in range(len(values) // 2):
        if values[2 * frame] or values[2 * frame + 1]:
            if begin is None:
                begin = frame
            quiet = 0
        elif begin is not None:
            quiet += 1
            if quiet == silence_frames:
                found.append((begin, frame + 1 - quiet))
                begin, quiet = None, 0
    if begin is not None:
        found.append((begin, len(values) // 2 - quiet))
    return found


def common_frames(pcm, frame, piece, piece_frame):
    """Number of frames from which on pcm and piece, each from its own frame, are no longer the same."""
    at, other = frame * FRAME_BYTES, piece_frame * FRAME_BYTES
    length = min(len(pcm) - at, len(piece) - other)
    low, high = 0, length // FRAME_BYTES
    while low < high:
        middle = (low + high + 1) // 2
        if pcm[at : at + middle * FRAME_BYTES] == piece[other : other + middle * FRAME_BYTES]:
            low = middle
        else:
            high = middle - 1
    return low


def skip_silence(pcm, frame):
    """The first frame from `frame` on that is not silent, or the number of frames."""
    rest = pcm[frame * FRAME_BYTES :]
    return frame + (len(rest) - len(rest.lstrip(b"\0"))) // FRAME_BYTES
