#!/usr/bin/env python3
"""The desktop's player controls: a player's remote drives the program over the session bus, and sees what it does."""

import os
import re
import time

import harness
import native_playlist
import session_bus
import sound
from seek import check_jump

FIRST_SECONDS, SECOND_SECONDS = 24, 12
ROOT = "org.mpris.MediaPlayer2"
NAME = ROOT + ".kestrune"
KNOB_PLACE = (195, 165, 60, 60)


class Remote:
    """Asks the player as a person does at a prompt, and keeps what it tells by itself."""

    def __init__(self, stage):
        self._stage = stage
        self._logs = {}

    def ask(self, *words):
        return self._stage.ask(["playerctl", "--player=kestrune", *map(str, words)]).strip()

    def follow(self, *words):
        path = self._stage.log("follow-" + words[0])
        with open(path, "wb") as output:
            self._stage.child(["playerctl", "--player=kestrune", "--follow", *words], stdout=output)
        self._logs[words[0]] = path

    def told(self, word):
        """Lines of what was followed, without those that say that there is nothing."""
        with open(self._logs[word], encoding="utf-8") as file:
            return [line.strip() for line in file if line.strip()]

    def await_told(self, word, expected):
        harness.wait_for(lambda: self.told(word)[-1:] == [expected], f'the news that {word} is "{expected}"')

    def await_answer(self, expected, *words):
        harness.wait_for(lambda: self.ask(*words) == expected, f'"{expected}" for {" ".join(words)}')

    def call(self, method):
        self._stage.ask(["dbus-send", "--session", "--print-reply", f"--dest={NAME}", "/org/mpris/MediaPlayer2",
                         f"{ROOT}.{method}"])


def make_files(stage):
    """Paths of a plain file, of one with tags and of one that is not in the list, and the samples of the first two."""
    first, second = sound.noise(FIRST_SECONDS, seed=21), sound.noise(SECOND_SECONDS, seed=22)
    paths = [os.path.join(stage.folder, name) for name in ("first.wav", "second.flac", "third one.wav")]
    sound.write_wav(paths[0], first)
    plain = os.path.join(stage.folder, "plain.wav")
    sound.write_wav(plain, second)
    sound.run_tool("ffmpeg", "-v", "error", "-i", plain, "-metadata", "artist=Some Artist", "-metadata",
                   "album=Some Album", "-metadata", "title=Second", paths[1])
    sound.write_wav(paths[2], sound.noise(5, seed=23))
    return paths, first, second


def check_start(remote):
    harness.check(remote.ask("status") == "Stopped", "the program does not say that it is stopped")
    harness.check(remote.ask("metadata") == "", "a stopped program names a track")
    remote.ask("play")
    remote.await_answer("Playing", "status")
    remote.await_told("status", "Playing")
    harness.check(remote.ask("metadata", "xesam:title") == "first", "the title of the first file is wrong")
    length = remote.ask("metadata", "mpris:length")
    harness.check(length == str(FIRST_SECONDS * 1000000), f"the first file is {length} us long")


def check_pause_and_seek(stage, remote):
    """Plays 1 s, pauses, seeks in the pause, goes on; the place in milliseconds that was asked for."""
    stage.hear(1)
    remote.ask("pause")
    remote.await_told("status", "Paused")
    target_ms = 12345
    remote.ask("position", target_ms / 1000)
    harness.wait_for(lambda: abs(float(remote.ask("position")) * 1000 - target_ms) < 1, "the position in a pause")
    remote.ask("pause")
    time.sleep(0.3)
    harness.check(remote.ask("status") == "Paused", "a second pause went on")
    remote.ask("play-pause")
    remote.await_told("status", "Playing")
    stage.hear(1)
    return target_ms


def check_next(remote, second_path):
    remote.ask("next")
    remote.await_told("metadata", "second")
    wanted = {"xesam:artist": "Some Artist", "xesam:album": "Some Album", "xesam:url": "file://" + second_path}
    for key, value in wanted.items():
        harness.check(remote.ask("metadata", key) == value, f"{key} is {remote.ask('metadata', key)}")
    harness.check(remote.told("status")[-1] == "Playing", "a change of the track was told as a stop")


def check_sound(data, first, second, target_ms):
    begin = sound.skip_silence(data, 0)
    begin, heard = check_jump(data, first, begin, 0, target_ms * sound.RATE_HZ // 1000)
    same = sound.common_frames(data, begin, first, heard)
    begin = sound.skip_silence(data, begin + same)
    same = sound.common_frames(data, begin, second, 0)
    harness.check(same > sound.RATE_HZ // 2, f"only {same} frames of the second file are heard")


def check_volume(stage, remote, program):
    def knob():
        return stage.picture_sum(program.window, *KNOB_PLACE)
    full = knob()
    remote.ask("volume", 0.25)
    remote.await_told("volume", "0.250004")
    harness.wait_for(lambda: knob() != full, "the knob to turn")
    stage.hear(0.5)
    capture = stage.capture()
    stage.hear(0.5)
    quiet = sound.samples(capture.stop())
    peak = max(map(abs, quiet))
    harness.check(1800 < peak <= 2000, f"noise of 8000 steps at a quarter reaches {peak}")
    program.volume_full()
    remote.await_told("volume", "1.000000")
    harness.wait_for(lambda: knob() == full, "the knob to stand at its end")


def check_modes(remote):
    for words, loop, shuffle in ((("loop", "Track"), "Track", "Off"), (("shuffle", "On"), "Playlist", "On"),
                                 (("shuffle", "Off"), "Playlist", "Off")):
        remote.ask(*words)
        remote.await_answer(loop, "loop")
        remote.await_answer(shuffle, "shuffle")


def check_dialog(stage, remote, program):
    """While a dialog keeps the user from the buttons, the remote cannot press them either."""
    program.click(*harness.LIST_EMPTY_PLACE)
    stage.key("Insert")
    harness.wait_for(lambda: stage.active_window() not in (0, program.window), "the file dialog")
    remote.ask("pause")
    time.sleep(0.3)
    harness.check(remote.ask("status") == "Playing", "the remote paused behind a dialog")
    stage.key("Escape")
    harness.wait_for(lambda: stage.active_window() == program.window, "the dialog to go")
    for command, status in (("pause", "Paused"), ("play", "Playing")):
        remote.ask(command)
        remote.await_told("status", status)


def check_open(remote, path):
    remote.ask("open", path)
    remote.await_told("metadata", "third one")
    refused = remote.ask("open", path + ".gone")
    harness.check(refused == "" and remote.told("metadata")[-1] == "third one", "a file that is gone was opened")


def check_window(stage, remote, program):
    stage.xdotool("windowminimize", program.window)
    harness.wait_for(lambda: program.window not in stage.windows(harness.MAIN_WINDOW_TITLE), "the window to go")
    remote.call("Raise")
    harness.wait_for(lambda: program.window in stage.windows(harness.MAIN_WINDOW_TITLE), "the window to come back")
    harness.wait_for(lambda: stage.active_window() == program.window, "the window to be active")
    remote.call("Quit")
    harness.check(program.process.wait(10) == 0, "the program ended with an error")
    names = [row.name for row in native_playlist.read_playlist(stage.default_playlist)]
    harness.check(names == ["first.wav", "second.flac", "third one.wav"], f"the list was kept as {names}")


def test(program_path):
    with harness.Stage() as stage:
        session_bus.start(stage)
        paths, first, second = make_files(stage)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths[:2]])
        program = stage.run_program(program_path)
        remote = Remote(stage)
        harness.wait_for(lambda: "kestrune" in stage.ask(["playerctl", "--list-all"]).split(), "the player on the bus")
        remote.follow("status")
        remote.follow("metadata", "xesam:title")
        remote.follow("volume")
        program.volume_full()
        remote.await_told("volume", "1.000000")
        capture = stage.capture()
        check_start(remote)
        target_ms = check_pause_and_seek(stage, remote)
        check_next(remote, paths[1])
        stage.hear(1)
        check_sound(capture.stop(), first, second, target_ms)
        check_volume(stage, remote, program)
        check_modes(remote)
        check_dialog(stage, remote, program)
        check_open(remote, paths[2])
        remote.ask("stop")
        remote.await_told("status", "Stopped")
        changes = re.sub(r"(\b\w+\b)( \1)+", r"\1", " ".join(remote.told("status")))
        harness.check(changes == "Stopped Playing Paused Playing Paused Playing Stopped", f"the status went: {changes}")
        check_window(stage, remote, program)


if __name__ == "__main__":
    harness.run(test)
