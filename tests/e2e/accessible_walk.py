#!/usr/bin/env python3
"""Every window and menu on the accessibility bus: each control has a name of its own, a role that tells what it is, and
a way to reach it; what is only a picture stays out."""

import os
import sys

import access_tree
import harness
import native_playlist
import sound

MAIN = r"Kestrune ?"


class Walk:
    def __init__(self, stage, program, tree):
        self.stage, self.program, self.tree = stage, program, tree
        self.faults = []

    def judge(self, top, what):
        count = sum(item.is_interactive for item in top.all())
        found = access_tree.faults(top)
        print(f"{what}: {count} controls, {len(found)} faults")
        if "--tree" in sys.argv:
            print(top.tree())
        harness.check(count > 0, f"{what} holds no control")
        self.faults += [f"{what}: {fault}" for fault in found]

    def main_window(self):
        return self.tree.find("frame", MAIN)

    def press(self, role, name, action=None):
        self.tree.find(role, name).node.act(action)

    def opened(self, role, name, what, action=None):
        """The window or menu that comes when something is pressed."""
        known = self.tree.paths()
        self.press(role, name, action)
        return self.tree.await_window(known, what)

    def leave(self, top, what):
        """By Escape, as from every menu and dialog."""
        self.stage.key("Escape")
        harness.wait_for(lambda: top.node.path not in self.tree.paths(), f"{what} to go")

    def window_behind(self, role, name, what, action=None):
        top = self.opened(role, name, what, action)
        self.judge(top, what)
        return top


def check_main_window(walk):
    top = walk.main_window()
    walk.judge(top, "the main window")
    for item in top.inside:
        harness.check(item.name.strip(), f"the main window holds a nameless {item.role}")
    harness.check("stopped" in [item.name for item in top.inside], "the main window does not say that it is stopped")
    harness.check("Time 00:00" in [item.name for item in top.inside], "the main window does not tell the time")


def check_menus(walk):
    for name in ("File", "Play", "Burn", "Convert", "Help", "Options"):
        what = f'the menu "{name}"'
        top = walk.window_behind("button menu", f"{name} menu", what)
        harness.check((top.role, top.name) == ("popup menu", name), f"{what} is {top}")
        walk.leave(top, what)
    top = walk.window_behind("animation", "Display", "the display's menu", "ShowMenu")
    walk.leave(top, "the display's menu")


def check_submenus(walk):
    for menu, entry, count in (("File", "Sort by...", 6), ("File", "Playlist Items", 8),
                               ("Options", "FFT Display Type", 5), ("Options", "FFT Display Resolution", 5)):
        top = walk.opened("button menu", f"{menu} menu", f'the menu "{menu}"')
        walk.press("menu item", entry)
        inner = harness.wait_for(lambda: [item for item in walk.tree.find("menu item", entry).all()
                                          if item.role == "popup menu"], f'the menu "{entry}"')[0]
        walk.judge(inner, f'the menu "{entry}"')
        entries = [item for item in inner.inside if item.role == "menu item"]
        harness.check(len(entries) == count, f'the menu "{entry}" has {len(entries)} entries')
        walk.stage.key("Escape")
        walk.leave(top, f'the menu "{menu}"')


def check_list_menu(walk):
    known = walk.tree.paths()
    walk.press("list", "Playlist", "SetFocus")
    walk.stage.key("Menu")
    top = walk.tree.await_window(known, "the list's menu")
    walk.judge(top, "the list's menu")
    harness.check(top.name == "Playlist", f"the list's menu is {top}")
    walk.leave(top, "the list's menu")


def check_panels(walk):
    for button, panel in (("Display colours", "Display colours"), ("Playlist / Equalizer", "Equalizer")):
        walk.press("check box", button)
        walk.judge(walk.tree.find("panel", panel), f'the panel "{panel}"')
        harness.check(walk.tree.seek("list", "Playlist") is None, "the list shows beside a panel")
        walk.press("check box", button)
        walk.tree.find("list", "Playlist")


def check_dialogs(walk):
    for button, what in (("Record", "a message"), ("Add audio files", "the file dialog"),
                         ("Save playlist", "the file dialog for saving"), ("Delete selected files", "a question")):
        top = walk.window_behind("push button", button, what)
        walk.leave(top, what)


def check_colour_dialog(walk):
    walk.press("check box", "Display colours")
    top = walk.window_behind("push button", "Change Color", "the choice of a colour")
    walk.leave(top, "the choice of a colour")
    walk.press("check box", "Display colours")
    walk.tree.find("list", "Playlist")


def check_help(walk):
    for entry, what in (("About", "the window about the program"), ("Help", "the help")):
        menu = walk.opened("button menu", "Help menu", "the help's menu")
        known = walk.tree.paths() - {menu.node.path}
        walk.press("menu item", entry)
        harness.wait_for(lambda: menu.node.path not in walk.tree.paths(), "the help's menu to go")
        top = walk.tree.await_window(known, what)
        if entry == "Help":
            walk.judge(top, what)
        else:
            harness.check(top.name == "About Kestrune", f'{what} is called "{top.name}"')
        walk.leave(top, what)


def test(program_path, *_):
    with harness.Stage() as stage:
        rows = []
        for number in range(3):
            path = os.path.join(stage.folder, f"noise-{number}.wav")
            sound.write_wav(path, sound.noise(5, seed=number))
            rows.append(native_playlist.row_for(path))
        native_playlist.write_playlist(stage.default_playlist, rows)
        tree = access_tree.Tree(stage)
        program = stage.run_program(program_path)
        tree.follow(program.process.pid)
        walk = Walk(stage, program, tree)
        check_main_window(walk)
        check_menus(walk)
        check_submenus(walk)
        check_list_menu(walk)
        check_panels(walk)
        check_colour_dialog(walk)
        check_dialogs(walk)
        check_help(walk)
        harness.check(not walk.faults, "\n".join(walk.faults))
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
