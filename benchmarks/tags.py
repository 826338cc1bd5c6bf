#!/usr/bin/env python3
"""Setting title and album of many MP3 files, beside other programs, in turn in the same run.

    tags.py RETAG [FILES] [ROUNDS] [FOLDER]

RETAG is kestrune_retag. Each program gets all the files in one process: 500 of 3 MB unless told, five rounds, and a new title in
each. The first round starts from files without a tag, so that all sound has to move; it is told apart. The others are the median.
Kestrune writes each file anew and waits until it is on the disk, so that a kill loses none; the others change the files in place
and do not wait. FOLDER, where the files go, says how dear that is: a disk, or memory such as /dev/shm.
"""

import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time


def make_song(path):
    """Three minutes at 128 kbit/s, without a tag."""
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", "anoisesrc=d=187:a=0.3", "-ac", "2", "-b:a", "128k",
                    "-id3v2_version", "0", "-map_metadata", "-1", path], check=True, stdin=subprocess.DEVNULL)


def timed(command):
    begun = time.monotonic()
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.monotonic() - begun


def commands(retag):
    """By name of the program: what makes a command of a title and files."""
    found = {"kestrune": lambda title, files: [retag, title, *files]}
    if shutil.which("mid3v2"):
        found["mid3v2"] = lambda title, files: ["mid3v2", "-t", title, "-A", f"Album {title}", *files]
    if shutil.which("kid3-cli"):
        found["kid3-cli"] = lambda title, files: ["kid3-cli", "-c", f"set title '{title}' 2", "-c", f"set album 'Album {title}' 2",
                                                  *files]
    if shutil.which("id3v2"):
        found["id3v2"] = lambda title, files: ["id3v2", "-2", "-t", title, "-A", f"Album {title}", *files]
    return found


def check(path, title):
    """All programs did what they were asked for."""
    told = subprocess.run(["ffprobe", "-v", "error", "-of", "csv=p=0", "-show_entries", "format_tags=title", path],
                          check=True, capture_output=True, text=True).stdout.strip()
    if told != title:
        sys.exit(f"{path}: the title is {told!r}, not {title!r}")


def main():
    retag = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 500
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    folder = sys.argv[4] if len(sys.argv) > 4 else None
    with tempfile.TemporaryDirectory(dir=folder) as place:
        song = os.path.join(place, "song.mp3")
        make_song(song)
        programs = commands(retag)
        files = {}
        for name in programs:
            os.mkdir(os.path.join(place, name))
            files[name] = [os.path.join(place, name, f"{at}.mp3") for at in range(count)]
            for path in files[name]:
                shutil.copyfile(song, path)
        song_bytes = os.path.getsize(song)
        os.sync()
        times = {name: [] for name in programs}
        for turn in range(rounds):
            for name, command in programs.items():
                title = f"Round {turn}"
                times[name].append(timed(command(title, files[name])))
                os.sync()  # nobody pays for what another left unwritten
                check(files[name][-1], title)
    print(f"{count} files of {song_bytes} bytes")
    for name, spent in times.items():
        later = statistics.median(spent[1:]) if rounds > 1 else spent[0]
        base = statistics.median(times["kestrune"][1:]) if rounds > 1 else times["kestrune"][0]
        print(f"{name:10} first {spent[0]:7.2f} s, later {later:7.2f} s, {count / later:7.0f} files a second, "
              f"ours by theirs {base / later:5.2f}")


if __name__ == "__main__":
    main()
