#!/usr/bin/env python3
"""When the desktop's session is about to end, the list is stored as it stands; when that is called off the program goes on,
and when the session ends so does the program."""

import os
import subprocess
import sys

import access_tree
import harness
import native_playlist
import sound


class SessionManager:
    def __init__(self, stage):
        script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "session_manager.py")
        self._log = stage.log("session-manager")
        self._process = stage.child([sys.executable, script], log=self._log, stdin=subprocess.PIPE)
        self.address = harness.wait_for(lambda: self.lines()[:1], "the session manager")[0]

    def lines(self):
        with open(self._log, encoding="utf-8") as file:
            return file.read().splitlines()

    def say(self, word):
        self._process.stdin.write(word.encode() + b"\n")
        self._process.stdin.flush()

    def await_line(self, line, count):
        harness.wait_for(lambda: self.lines().count(line) >= count, f'"{line}" {count} times; {self.lines()}')


def test(program_path):
    with harness.Stage() as stage:
        check_session(stage, SessionManager(stage), program_path)


def check_session(stage, manager, program_path):
    stage.env["SESSION_MANAGER"] = manager.address
    paths = [os.path.join(stage.folder, name + ".wav") for name in ("one", "two", "three")]
    for seed, path in enumerate(paths):
        sound.write_wav(path, sound.noise(5, seed))
    native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths])
    tree = access_tree.Tree(stage)
    program = stage.run_program(program_path)
    tree.follow(program.process.pid)
    manager.await_line("taken in", 1)

    def move_down():
        tree.find("list item", "1[.].*").node.act(access_tree.FOCUS_TAKING)
        tree.find("push button", "Move down").node.act()
        paths[0], paths[1] = paths[1], paths[0]
        first = "1." + os.path.basename(paths[0]).removesuffix(".wav")
        harness.wait_for(lambda: tree.seek("list item", first + " .*"), f"{first} to be the first row")

    def stored():
        return [row.path for row in native_playlist.read_playlist(stage.default_playlist)]

    move_down()
    harness.check(stored() != paths, "the moved row is stored before anybody asked")
    manager.say("save")
    manager.await_line("saved", 1)
    harness.check(stored() == paths, f"before the end of the session the list is {stored()}")
    manager.say("cancel")
    move_down()
    harness.check(program.process.poll() is None, "the program ended though the end was called off")
    manager.say("save")
    manager.await_line("saved", 2)
    manager.say("die")
    harness.wait_for(lambda: program.process.poll() is not None, "the program to end with the session")
    harness.check(program.process.returncode == 0, f"it ended with {program.process.returncode}")
    harness.check(stored() == paths, f"after the end of the session the list is {stored()}")


if __name__ == "__main__":
    harness.run(test)
