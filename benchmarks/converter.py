#!/usr/bin/env python3
"""Conversion beside the usual command-line programs, in turn in the same run.

    converter.py CONVERT_ONE [MINUTES] [ROUNDS]

CONVERT_ONE is kestrune_convert_one, which goes through a file as the converter's run does. Ten minutes of stereo and three
rounds unless told; each figure is the median of its rounds. Ratios are ours by theirs: below 1 is faster than the peer.
"""

import dataclasses
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

RATE_HZ = 44100


@dataclasses.dataclass
class Cost:
    wall_s: float
    processor_s: float


def run(commands, at_once=1):
    """Runs commands, some at once; the time of the whole and the processor time of all."""
    begun = time.monotonic()
    used = 0.0
    waiting = list(commands)
    running = set()
    while waiting or running:
        while waiting and len(running) < at_once:
            process = subprocess.Popen(waiting.pop(0), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                       stderr=subprocess.DEVNULL)
            running.add(process.pid)
        pid, status, usage = os.wait4(-1, 0)
        running.discard(pid)
        used += usage.ru_utime + usage.ru_stime
        if status != 0:
            sys.exit(f"a program failed with {os.waitstatus_to_exitcode(status)}")
    return Cost(time.monotonic() - begun, used)


def make_song(path, minutes):
    """Chords with vibrato, a beat and some noise: all bands busy, loud and soft places, two different channels."""
    voices = "+".join(f"0.09*sin(2*PI*{hz}*t+2*sin(2*PI*{wobble}*t))*(1+sin(2*PI*t/{slow}))"
                      for hz, wobble, slow in ((110, 4.1, 7), (277, 5.2, 5), (415, 4.7, 11), (1244, 5.9, 3)))
    beat = r"0.5*exp(-20*mod(t\,0.5))*(random(0)-0.5)"
    left = f"{voices}+{beat}"
    right = f"{voices.replace('110', '165').replace('1244', '1661')}+{beat.replace('random(0)', 'random(1)')}"
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", f"aevalsrc={left}|{right}:s={RATE_HZ}:d={minutes * 60}",
                    "-c:a", "pcm_s16le", path], check=True, stdin=subprocess.DEVNULL)


class Race:
    def __init__(self, rounds):
        self._rounds = rounds

    def __call__(self, what, ours, theirs, at_once=1):
        """Our command and theirs in turn. `theirs` is a list of commands, run `at_once` at a time."""
        own, peer = [], []
        for _ in range(self._rounds):
            own.append(run([ours]))
            peer.append(run(theirs, at_once))
        median = lambda costs, name: statistics.median(getattr(cost, name) for cost in costs)
        figures = []
        for name in ("wall_s", "processor_s"):
            a, b = median(own, name), median(peer, name)
            figures.append(f"{name[:-2]} {a:.2f} s, theirs {b:.2f} s, ratio {a / b:.2f}")
        print(f"{what}: " + "; ".join(figures), flush=True)


# What ffmpeg can write of our targets, at the rates and channels that the converter starts with. Its G.726 coder at 32
# and 24 kbit/s a channel of 8,000 Hz is that of G.721 and of G.723.
FFMPEG_TARGETS = {
    "wma": ["-c:a", "wmav2", "-b:a", "128k", "-f", "asf"],
    "mp3": ["-c:a", "libmp3lame", "-b:a", "128k", "-compression_level", "5", "-joint_stereo", "1", "-f", "mp3"],
    "adpcm": ["-c:a", "adpcm_ima_wav", "-f", "wav"],
    "mp2": ["-c:a", "libtwolame", "-b:a", "192k", "-f", "mp2"],
    "ogg": ["-c:a", "libvorbis", "-b:a", "128k", "-f", "ogg"],
    "gsm": ["-c:a", "libgsm_ms", "-ar", str(RATE_HZ), "-ac", "1", "-strict", "unofficial", "-f", "wav"],
    "g726": ["-c:a", "g726", "-ar", str(RATE_HZ), "-ac", "1", "-code_size", "4", "-strict", "unofficial", "-f", "g726"],
    "alaw": ["-c:a", "pcm_alaw", "-f", "alaw"],
    "g721": ["-c:a", "g726", "-ar", str(RATE_HZ), "-ac", "1", "-code_size", "4", "-strict", "unofficial", "-f", "g726"],
    "g723": ["-c:a", "g726", "-ar", str(RATE_HZ), "-ac", "1", "-code_size", "3", "-strict", "unofficial", "-f", "g726"],
    "pcm": ["-c:a", "pcm_s16le", "-f", "wav"],
}


def ffmpeg(song, folder, targets, suffix="f"):
    command = ["ffmpeg", "-nostdin", "-v", "error", "-y", "-i", song]
    for name in targets:
        command += FFMPEG_TARGETS[name] + [os.path.join(folder, f"{name}.{suffix}")]
    return command


def ours(tool, song, folder, targets):
    command = [tool, song]
    endings = {"adpcm": "wav", "gsm": "wav", "alaw": "raw", "pcm": "wav"}
    for name in targets:
        command += [os.path.join(folder, f"own_{name}.{endings.get(name, name)}"), name]
    return command


def main(tool, minutes, rounds):
    with tempfile.TemporaryDirectory() as folder:
        song = os.path.join(folder, "song.wav")
        make_song(song, minutes)
        race = Race(rounds)
        out = lambda name: os.path.join(folder, name)
        race("MP3 128 kbit/s beside lame of the same quality and stereo", [tool, song, out("a.mp3"), "mp3"],
             [["lame", "--quiet", "-b", "128", "-q", "5", "-m", "j", song, out("b.mp3")]])
        race("MP3 128 kbit/s beside lame as it comes", [tool, song, out("a.mp3"), "mp3"],
             [["lame", "--quiet", "-b", "128", song, out("b.mp3")]])
        race("Ogg Vorbis 128 kbit/s beside oggenc", [tool, song, out("a.ogg"), "ogg"],
             [["oggenc", "-Q", "-b", "128", "-o", out("b.ogg"), song]])
        race("WMA 128 kbit/s beside ffmpeg", [tool, song, out("a.wma"), "wma"], [ffmpeg(song, folder, ["wma"])])
        race("MP2 192 kbit/s beside twolame", [tool, song, out("a.mp2"), "mp2"],
             [["twolame", "--quiet", "-b", "192", song, out("b.mp2")]])
        for name in ("adpcm", "gsm", "g726", "alaw"):
            race(f"{name} beside ffmpeg", ours(tool, song, folder, [name]), [ffmpeg(song, folder, [name])])
        race("vox beside sox", [tool, song, out("a.vox"), "vox:8000"],
             [["sox", song, "-r", "8000", "-c", "1", out("b.vox")]])
        many = list(FFMPEG_TARGETS)
        single = [ffmpeg(song, folder, [name]) for name in many]
        race(f"{len(many)} targets in one run beside one ffmpeg command", ours(tool, song, folder, many),
             [ffmpeg(song, folder, many)])
        race(f"{len(many)} targets in one run beside one command each, one after the other", ours(tool, song, folder, many),
             single)
        race(f"{len(many)} targets in one run beside one command each, two at a time", ours(tool, song, folder, many),
             single, at_once=2)
        template = out("template.wav")
        shutil.copyfile(song, template)
        all_thirteen = ours(tool, song, folder, [name for name in many if name != "pcm"] + ["vox", "dsp"])
        all_thirteen += [out("own_template.wav"), f"template:{template}"]
        beside = [["sox", song, "-c", "1", out("all.vox")]]
        race(f"all thirteen in one run beside one ffmpeg command with {len(many)} of them, and sox for VOX after it",
             all_thirteen, [ffmpeg(song, folder, many)] + beside)
        race("all thirteen in one run beside one command each for twelve of them, two at a time", all_thirteen,
             single + beside, at_once=2)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3, 4):
        sys.exit(__doc__)
    main(os.path.abspath(sys.argv[1]), *(int(word) for word in sys.argv[2:]), *(10, 3)[len(sys.argv) - 2:])
