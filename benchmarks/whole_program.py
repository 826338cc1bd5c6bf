#!/usr/bin/env python3
"""Measures the whole program beside a peer, in turn, on a private screen and sound server.

    whole_program.py PROGRAM [SECONDS]

Start: from the start of the process to its window on the screen. Playback: processor time while a file plays, 60 s
unless told. Memory: while a file plays out of a list of 10,000. Admission: 5,000 files told by the program's list
benchmark beside one ffprobe a file. The peer is audacious, if it is installed.
"""

import dataclasses
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
for folder in ("../tests/e2e", "../tools"):
    sys.path.insert(0, os.path.join(HERE, folder))

import harness  # noqa: E402
import native_playlist  # noqa: E402

STARTS = 7
LONG_LIST = 10000


def processor_seconds(pid):
    """Of all threads, ended ones too, by the scheduler's own clock of the process. The figures of /proc/PID/stat are
    taken at the kernel's ticks and are far off for a program that wakes a thousand times a second for a moment."""
    scheduler_clock = 2
    return time.clock_gettime((~pid << 3) | scheduler_clock)


def memory_mib(pid):
    """Resident and proportional, in MiB."""
    with open(f"/proc/{pid}/smaps_rollup") as file:
        values = dict(line.split(":", 1) for line in file if ":" in line)
    return tuple(int(values[name].split()[0]) / 1024 for name in ("Rss", "Pss"))


def make_song(folder, seconds):
    path = os.path.join(folder, "song.mp3")
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i",
                    f"anoisesrc=duration={seconds}:amplitude=0.2:seed=7:sample_rate=44100", "-ac", "2", "-b:a", "128k",
                    path], check=True, stdin=subprocess.DEVNULL)
    return path


def list_of(stage, song, count):
    links = os.path.join(stage.folder, "many")
    os.makedirs(links, exist_ok=True)
    paths = []
    for number in range(count):
        path = os.path.join(links, f"song {number:05}.mp3")
        if not os.path.exists(path):
            os.link(song, path)
        paths.append(path)
    return paths


class Own:
    name = "kestrune"

    def __init__(self, program):
        self.title = "Kestrune"
        self.command = [program]

    def prepare(self, stage, paths):
        rows = [native_playlist.row_for(paths[0])] if paths else []
        for path in paths[1:]:
            rows.append(dataclasses.replace(rows[0], name=os.path.basename(path)))
        native_playlist.write_playlist(stage.default_playlist, rows)

    def play(self, stage):
        stage.key("alt+p")
        time.sleep(0.3)
        stage.key("s")

    def playing_command(self, _paths):
        return self.command


class Peer:
    name = "audacious"
    title = "Audacious"

    def __init__(self):
        self.command = ["audacious"]

    def prepare(self, stage, paths):
        self._list = os.path.join(stage.folder, "list.m3u")
        with open(self._list, "w") as file:
            file.writelines(path + "\n" for path in paths)

    def play(self, _stage):
        pass

    def playing_command(self, _paths):
        return self.command + ["-p", self._list]


def wait_for_window(stage, title, process):
    while process.poll() is None:
        found = stage.windows(title)
        if found:
            return found[0]
    raise harness.Failure(f"{title} ended by itself")


def start_ms(stage, player):
    began = time.monotonic()
    process = harness.start(player.command, stage.env, log=stage.log(player.name))
    wait_for_window(stage, player.title, process)
    took = (time.monotonic() - began) * 1000
    time.sleep(0.5)
    harness.end(process)
    return took


def start_playing(stage, player, paths):
    """The process, once it plays."""
    player.prepare(stage, paths)
    process = harness.start(player.playing_command(paths), stage.env, log=stage.log(player.name))
    window = wait_for_window(stage, player.title, process)
    stage.xdotool("windowactivate", "--sync", window)
    player.play(stage)
    time.sleep(3)
    inputs = stage.ask(["pactl", "list", "short", "sink-inputs"])
    harness.check(inputs.strip(), f"{player.name} plays nothing")
    return process


def playing(stage, player, paths, action):
    process = start_playing(stage, player, paths)
    result = action(process)
    harness.end(process)
    return result


def processor_for(seconds):
    def measure(process):
        before = processor_seconds(process.pid)
        time.sleep(seconds)
        return processor_seconds(process.pid) - before
    return measure


def admission_line(folder, song, program):
    files = os.path.join(folder, "small")
    os.makedirs(files)
    short = os.path.join(files, "0.mp3")
    subprocess.run(["ffmpeg", "-v", "error", "-y", "-t", "3", "-i", song, "-c", "copy", short], check=True,
                   stdin=subprocess.DEVNULL)
    for number in range(1, 100):
        shutil.copy(short, os.path.join(files, f"{number}.mp3"))
    benchmark = os.path.join(os.path.dirname(os.path.abspath(program)), "kestrune_benchmarks")
    env = dict(os.environ, KESTRUNE_BENCH_FILES=files)
    out = subprocess.run([benchmark, "--benchmark_filter=AdmitFiles/5000", "--benchmark_format=csv"], env=env,
                         capture_output=True, text=True, check=True).stdout
    own_ms = float([line for line in out.splitlines() if line.startswith('"AdmitFiles')][0].split(",")[2])
    began = time.monotonic()
    for number in range(50):
        subprocess.run(["ffprobe", "-v", "error", "-show_format", "-show_streams", os.path.join(files, f"{number}.mp3")],
                       stdout=subprocess.DEVNULL, check=True)
    peer_per_file = (time.monotonic() - began) / 50 * 1000
    return (f"admitting 5,000 files: {own_ms:.0f} ms; ffprobe, a process a file: {peer_per_file * 5000:.0f} ms "
            f"(from 50 files); ratio {own_ms / (peer_per_file * 5000):.4f}")


def main(program, seconds):
    players = [Own(os.path.abspath(program))]
    if shutil.which("audacious"):
        players.append(Peer())
    with tempfile.TemporaryDirectory() as folder, harness.Stage() as stage:
        song = make_song(folder, seconds + 30)
        print(admission_line(folder, song, program), flush=True)
        starts = {player.name: [] for player in players}
        for player in players:
            player.prepare(stage, [song])
            start_ms(stage, player)
        for _ in range(STARTS):
            for player in players:
                starts[player.name].append(start_ms(stage, player))
        for name, values in starts.items():
            print(f"start to window, {name}: median {statistics.median(values):.0f} ms "
                  f"({min(values):.0f} to {max(values):.0f}, {STARTS} starts)", flush=True)
        for player in players:
            used = playing(stage, player, [song], processor_for(seconds))
            print(f"processor time for {seconds} s of playback, {player.name}: {used:.2f} s", flush=True)
        before = os.times()
        subprocess.run(["ffmpeg", "-v", "error", "-t", str(seconds), "-i", song, "-f", "null", "-"], check=True,
                       stdin=subprocess.DEVNULL)
        after = os.times()
        decode = after.children_user - before.children_user + after.children_system - before.children_system
        print(f"processor time to decode {seconds} s, ffmpeg -f null: {decode:.2f} s", flush=True)
        many = list_of(stage, song, LONG_LIST)
        for player in players:
            rss, pss = playing(stage, player, many, lambda process: memory_mib(process.pid))
            print(f"memory with {LONG_LIST} rows while playing, {player.name}: {rss:.0f} MiB resident, "
                  f"{pss:.0f} MiB proportional", flush=True)


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) == 3 else 60)
