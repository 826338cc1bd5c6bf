#!/usr/bin/env python3
"""The main window worked by an assistive program alone: each of its buttons does its work, position and volume are read,
set and told of, and Tab goes through all controls and back to the list."""

import os
import re
import time

import access_tree
import harness
import native_playlist
import sound

SECONDS = 20
MODAL = {"alert", "alert message", "dialog"}


class Remote:
    """Hands for what the tree shows."""

    def __init__(self, stage, program, tree):
        self.stage, self.program, self.tree = stage, program, tree
        self.pressed = set()

    def press(self, name, role="push button"):
        self.pressed.add(name)
        self.tree.find(role, re.escape(name)).node.act()

    def await_label(self, pattern):
        return self.tree.find("label", pattern).name

    def names(self, role):
        return [item.name for item in self.tree.all() if item.role == role]

    def rows(self):
        """Titles in the order of the list."""
        return [re.sub(r"^\d+\.(.*) \d+:\d+$", r"\1", name) for name in self.names("list item")]

    def slider(self, name):
        return self.tree.find("slider", name).node

    def await_value(self, name, fits, what):
        return harness.wait_for(lambda: fits(self.slider(name).value), what)

    def window_by(self, name, what):
        """Presses, waits for the dialog and leaves it; what it says."""
        known = self.tree.paths()
        self.press(name)
        top = self.tree.await_window(known, what)
        harness.check(top.role in MODAL, f"{what} is {top}")
        self.stage.key("Escape")
        harness.wait_for(lambda: top.node.path not in self.tree.paths(), f"{what} to go")
        return [item.name for item in top.all() if item.name]


def check_playing(remote):
    remote.press("Play")
    remote.await_label("playing")
    remote.await_label("Time 00:0[1-9]")
    remote.press("Pause")
    remote.await_label("paused")
    remote.press("Pause")
    remote.await_label("playing")
    remote.press("Next")
    remote.await_label("noise-1.*")
    remote.press("Previous")
    remote.await_label("noise-0.*")
    remote.press("Stop")
    remote.await_label("stopped")


def check_position(remote):
    node = remote.slider("Position")
    harness.check(node.value_range == (0, 100), f"the position goes over {node.value_range}")
    harness.check("read-only" in node.states, "the position can be set while nothing plays")
    remote.press("Play")
    remote.await_label("playing")
    remote.tree.heard("PropertyChange", "accessible-value")
    remote.await_value("Position", lambda value: 5 <= value <= 40, "the position to move by itself")
    told = remote.tree.heard("PropertyChange", "accessible-value")
    harness.check(node.path in [path for path, _ in told], "nobody was told that the position moved")
    harness.check("read-only" not in node.states, "the position can't be set while a file plays")
    node.set_value(75)
    remote.await_label("Time 00:1[5-7]")
    harness.check(75 <= node.value <= 85, f"the position was set to 75 and reads {node.value}")
    remote.press("Stop")
    remote.await_label("stopped")


def check_volume(remote):
    node = remote.slider("Volume")
    harness.check(node.value_range == (0, 100), f"the volume goes over {node.value_range}")
    for wanted in (40, 0, 100, 63):
        remote.tree.heard("PropertyChange", "accessible-value")
        node.set_value(wanted)
        remote.await_value("Volume", lambda value: value == wanted, f"the volume {wanted}")
        harness.wait_for(lambda: node.path in [path for path, _ in
                                               remote.tree.heard("PropertyChange", "accessible-value")],
                         f"the news of the volume {wanted}")
    marks = [name for name in remote.names("push button") if re.fullmatch(r"Volume \d+ %", name)]
    harness.check(len(marks) == 4, f"the marks are {marks}")
    for mark in marks:
        remote.press(mark)
        wanted = int(re.search(r"\d+", mark).group())
        remote.await_value("Volume", lambda value: value == wanted, f'the volume of the mark "{mark}"')


def check_modes(remote):
    modes = ("Shuffle", "Repeat", "Continuous")
    for mode in modes:
        remote.press(mode, "check box")
        harness.wait_for(lambda: [other for other in modes if "checked" in remote.tree.find("check box", other).states]
                         == [mode], f"the mode {mode} alone to be on")


def check_panels(remote):
    for button, role, name in (("Playlist / Equalizer", "panel", "Equalizer"),
                               ("Display colours", "panel", "Display colours")):
        remote.press(button, "check box")
        remote.tree.find(role, name)
        remote.press(button, "check box")
        remote.tree.find("list", "Playlist")


def check_menus(remote):
    for name in remote.names("button menu"):
        known = remote.tree.paths()
        remote.press(name, "button menu")
        menu = remote.tree.await_window(known, name)
        harness.check(menu.name + " menu" == name, f"{name} opened {menu}")
        remote.stage.key("Escape")
        harness.wait_for(lambda: menu.node.path not in remote.tree.paths(), f"{name} to go")


def check_dialogs(remote):
    for button in ("Record", "Rip", "Sites", "Rip an audio CD", "Write an audio CD", "Music sites"):
        said = remote.window_by(button, f'the box of "{button}"')
        harness.check("OK" in said and "Close" in said, f'"{button}" says {said}')
    said = remote.window_by("Convert audio files", "the converter")
    harness.check("Start" in said and "Close" in said, f"the converter says {said}")
    for button, way_out in (("Add audio files", "Open"), ("Open playlist", "Open"), ("Save playlist", "Save")):
        said = remote.window_by(button, f'the dialog of "{button}"')
        harness.check(way_out in said and "Cancel" in said, f'"{button}" says {said}')


def check_list(remote):
    harness.wait_for(lambda: remote.rows() == ["noise-0", "noise-1", "noise-2"], "the list")
    remote.tree.find("list item", "1[.].*").node.act(access_tree.FOCUS_TAKING)
    remote.press("Move down")
    harness.wait_for(lambda: remote.rows() == ["noise-1", "noise-0", "noise-2"], "the first row to move down")
    remote.press("Move up")
    harness.wait_for(lambda: remote.rows() == ["noise-0", "noise-1", "noise-2"], "the row to move up again")
    remote.press("Delete selected files")
    remote.press("Yes")
    harness.wait_for(lambda: remote.rows() == ["noise-1", "noise-2"], "the row to be deleted")
    remote.tree.find("list item", "2[.].*").node.act("Press")
    remote.await_label("playing")
    remote.await_label("noise-2.*")
    remote.press("Stop")
    remote.await_label("stopped")


def _stops(remote):
    """What Tab is to come to, by path. The rows of a list and the options of a group share one stop."""
    return {item.node.path: str(item) for item in remote.tree.all()
            if item.is_interactive and item.role != "list item" and "enabled" in item.states
            and (item.role != "radio button" or "checked" in item.states)}


def _focus_news(remote, rows, before):
    """The path of what has the focus now, as soon as anybody is told; the list itself for one of its rows. News of what
    had the focus before may still be on the way."""
    def find():
        paths = [rows.get(path, path) for path, on in remote.tree.heard("StateChanged", "focused") if on]
        return next((path for path in paths if path != before), None)
    return find


def check_tab(remote, role, name, keys):
    """From one control round the window: each control gets the focus once, then the first one again."""
    start = remote.tree.find(role, name)
    if access_tree.FOCUS_TAKING in start.actions:
        start.node.act(access_tree.FOCUS_TAKING)
    harness.wait_for(lambda: "focused" in remote.tree.find(role, name).states, f"{start} to take the focus")
    wanted = _stops(remote)
    rows = {row.node.path: item.node.path for item in remote.tree.all() if item.role == "list" for row in item.inside}
    seen = []
    while start.node.path not in seen:
        remote.tree.heard("StateChanged", "focused")
        remote.stage.key(keys)
        before = seen[-1] if seen else start.node.path
        path = harness.wait_for(_focus_news(remote, rows, before), f"the news of the focus after {wanted[before]}")
        harness.check(path in wanted, f"{keys} goes to something unknown after {wanted[before]}")
        harness.check(path not in seen, f"{keys} comes to {wanted[path]} again before all others")
        seen.append(path)
    missed = [wanted[path] for path in wanted if path not in seen]
    harness.check(not missed, f"{keys} never comes to {missed}")
    print(f"{keys} goes through {len(seen)} controls")
    return [wanted[path] for path in seen]


def check_keyboard(remote):
    forward = check_tab(remote, "list", "Playlist", "Tab")
    back = check_tab(remote, "list", "Playlist", "shift+Tab")
    harness.check(back[:-1] == forward[-2::-1], "Shift+Tab is not the way back")
    for button, (role, name) in {"Playlist / Equalizer": ("slider", "31 Hz, gain in dB"),
                                 "Display colours": ("list", "Colour")}.items():
        remote.press(button, "check box")
        remote.tree.find(role, name)
        check_tab(remote, role, name, "Tab")
        remote.press(button, "check box")
        remote.tree.find("list", "Playlist")


def check_window_buttons(remote):
    remote.press("Minimise")
    harness.wait_for(lambda: not remote.stage.windows(harness.MAIN_WINDOW_TITLE), "the window to go")
    remote.stage.xdotool("windowmap", remote.program.window)
    remote.stage.xdotool("windowactivate", "--sync", remote.program.window)
    remote.press("Close")
    harness.wait_for(lambda: remote.program.process.poll() is not None, "the program to end")
    harness.check(remote.program.process.returncode == 0, "the program did not end well")


def test(program_path):
    with harness.Stage() as stage:
        rows = []
        for number in range(3):
            path = os.path.join(stage.folder, f"noise-{number}.wav")
            sound.write_wav(path, sound.noise(SECONDS, seed=number))
            rows.append(native_playlist.row_for(path))
        native_playlist.write_playlist(stage.default_playlist, rows)
        tree = access_tree.Tree(stage)
        tree.hear("object:property-change:accessible-value", "object:state-changed:focused")
        program = stage.run_program(program_path)
        tree.follow(program.process.pid)
        remote = Remote(stage, program, tree)
        buttons = {name for role in ("push button", "button menu", "check box") for name in remote.names(role)}
        for check in (check_volume, check_modes, check_panels, check_menus, check_dialogs, check_playing,
                      check_position, check_keyboard, check_list):
            begin = time.monotonic()
            check(remote)
            print(f"{check.__name__}: {time.monotonic() - begin:.1f} s")
        check_window_buttons(remote)
        # The arrows of the scroll bar rest while all rows are seen.
        missed = buttons - remote.pressed - {"Scroll up", "Scroll down"}
        harness.check(not missed, f"nobody pressed {sorted(missed)}")


if __name__ == "__main__":
    harness.run(test)
