#!/usr/bin/env python3
"""How near to the sound the written files stay, beside the usual command-line encoders on the same samples.

    encoder_quality.py CONVERT_ONE [WAVE]

CONVERT_ONE is kestrune_convert_one. WAVE holds 16-bit samples at 44.1 kHz in two channels; the sample piece "First Light"
unless told. Both files of a pair are decoded by the same program. Delay and loudness are fitted before the difference is
taken, since LAME turns the sound down by 5 %. The figures say how much of the wave comes back, not how good it sounds: a
coder that follows the ear gives up some of the one for the other.
"""

import array
import dataclasses
import math
import pathlib
import subprocess
import sys
import tempfile
from typing import Callable

SEARCHED_FRAMES = 2500
WINDOW_FRAMES = 1500


def run(command):
    return subprocess.run([str(word) for word in command], check=True, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def samples_of(command):
    """What a program that writes 16-bit samples to its output says."""
    said = run(command)
    samples = array.array("h")
    samples.frombytes(said[:len(said) // 2 * 2])
    return samples


TO_RAW = ["-t", "raw", "-e", "signed", "-b", "16", "-"]


def by_sox(path, *options):
    return samples_of(["sox", "-D", *options, path, *TO_RAW])


def by_ffmpeg(path, *options):
    return samples_of(["ffmpeg", "-v", "error", *options, "-i", path, "-f", "s16le", "-"])


def by_lame(path):
    return samples_of(["lame", "--quiet", "--decode", "-t", path, "-"])


def by_oggdec(path):
    return samples_of(["oggdec", "-Q", "-R", "-o", "-", path])


def headerless(kind, rate_hz, channels=1):
    return lambda path: by_sox(path, "-t", kind, "-r", rate_hz, "-c", channels)


def g726(path):
    return by_ffmpeg(path, "-f", "g726", "-code_size", 4, "-ar", 8000)


def mono(samples, channels):
    if channels == 1:
        return samples
    return array.array("l", (samples[at] + samples[at + 1] for at in range(0, len(samples) - 1, 2)))


def delay_of(original, decoded):
    """Frames by which the decoded sound is late, by the best match of a window from the middle."""
    begin = max(len(original) // 2, SEARCHED_FRAMES)
    window = original[begin:begin + WINDOW_FRAMES]

    def match(delay):
        part = decoded[begin + delay:begin + delay + len(window)]
        energy = sum(value * value for value in part)
        return sum(one * other for one, other in zip(window, part)) / math.sqrt(energy + 1)

    return max(range(-SEARCHED_FRAMES, SEARCHED_FRAMES + 1), key=match)


def signal_to_noise_db(original, decoded, channels):
    shift = delay_of(mono(original, channels), mono(decoded, channels)) * channels
    first = original[max(-shift, 0):]
    second = decoded[max(shift, 0):]
    both = list(zip(first, second))
    original2 = sum(one * one for one, _ in both)
    product = sum(one * other for one, other in both)
    decoded2 = sum(other * other for _, other in both)
    signal = product * product / original2
    return 10 * math.log10(signal / max(decoded2 - signal, 1e-6))


@dataclasses.dataclass
class Pair:
    name: str
    ending: str
    ours: str            # format of kestrune_convert_one
    peer: str            # name of the other program
    command: Callable    # (source, target) to the command line of the peer
    decode: Callable     # path to samples
    channels: int = 2
    speech: bool = False # from the sound in one channel at 8 kHz


def ffmpeg(*options):
    return lambda source, target: ["ffmpeg", "-v", "error", "-y", "-i", source, *options, target]


def sox(*options):
    return lambda source, target: ["sox", "-D", source, *options, target]


PAIRS = [
    Pair("MPEG layer 3, 128 kbit/s", ".mp3", "mp3:44100:128:2", "lame",
         lambda source, target: ["lame", "--quiet", "-b", "128", source, target], by_lame),
    Pair("MPEG layer 2, 192 kbit/s", ".mp2", "mp2:44100:192:2", "twolame",
         lambda source, target: ["twolame", "--quiet", "-b", "192", source, target], by_ffmpeg),
    Pair("Ogg Vorbis, 128 kbit/s", ".ogg", "ogg:44100:2:128:0:0:-1", "oggenc",
         lambda source, target: ["oggenc", "-Q", "-b", "128", "--managed", "-o", target, source], by_oggdec),
    Pair("Windows Media, 128 kbit/s", ".wma", "wma:39", "ffmpeg", ffmpeg("-c:a", "wmav2", "-b:a", "128k"), by_ffmpeg),
    Pair("IMA ADPCM, 44.1 kHz stereo", ".wav", "adpcm:44100:2", "ffmpeg", ffmpeg("-c:a", "adpcm_ima_wav"), by_sox),
    Pair("IMA ADPCM, 44.1 kHz stereo", ".wav", "adpcm:44100:2", "sox", sox("-e", "ima-adpcm"), by_sox),
    Pair("IMA ADPCM, by ffmpeg's decoder", ".wav", "adpcm:44100:2", "ffmpeg", ffmpeg("-c:a", "adpcm_ima_wav"), by_ffmpeg),
    Pair("A-law, 44.1 kHz stereo", ".raw", "alaw:44100:2", "sox", sox("-t", "al"), headerless("al", 44100, 2)),
    Pair("A-law, 44.1 kHz stereo", ".raw", "alaw:44100:2", "ffmpeg", ffmpeg("-f", "alaw"), headerless("al", 44100, 2)),
    Pair("GSM 6.10, 8 kHz", ".wav", "gsm:8000", "sox", sox("-e", "gsm-full-rate"), by_sox, 1, True),
    Pair("VOX, 8 kHz", ".vox", "vox:8000", "sox", sox(), headerless("vox", 8000), 1, True),
    Pair("G.726, 4 bits, 8 kHz", ".g726", "g726:8000:4", "ffmpeg", ffmpeg("-c:a", "g726", "-code_size", 4, "-f", "g726"), g726,
         1, True),
    Pair("G.721, 8 kHz", ".g721", "g721:8000", "ffmpeg", ffmpeg("-c:a", "g726", "-code_size", 4, "-f", "g726"), g726, 1, True),
    Pair("TrueSpeech, 8 kHz", ".wav", "dsp", "none", None, by_ffmpeg, 1, True),
    Pair("8-bit PCM, 44.1 kHz stereo", ".wav", "pcm:44100:2:8", "sox", lambda source, target: ["sox", source, "-b", "8", target],
         by_sox),
]


def figures(path, original, pair):
    return f"{signal_to_noise_db(original, pair.decode(path), pair.channels):5.1f} dB {path.stat().st_size:8d} bytes"


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    convert_one = sys.argv[1]
    samples = pathlib.Path(__file__).resolve().parent.parent / "resources" / "samples"
    music = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else samples / "first-light.wav"
    with tempfile.TemporaryDirectory(prefix="kestrune-quality-") as folder:
        speech = pathlib.Path(folder) / "speech.wav"
        run(["sox", "-D", music, "-r", "8000", "-c", "1", "-b", "16", speech])
        originals = {False: by_sox(music), True: by_sox(speech)}
        for pair in PAIRS:
            source = speech if pair.speech else music
            ours = pathlib.Path(folder) / ("ours" + pair.ending)
            run([convert_one, source, ours, pair.ours])
            line = f"{pair.name:31} ours {figures(ours, originals[pair.speech], pair)}"
            if pair.command is not None:
                theirs = pathlib.Path(folder) / ("theirs" + pair.ending)
                run(pair.command(source, theirs))
                line += f"   {pair.peer:8} {figures(theirs, originals[pair.speech], pair)}"
            print(line, flush=True)


if __name__ == "__main__":
    main()
