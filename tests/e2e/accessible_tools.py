#!/usr/bin/env python3
"""The windows of the tools on the accessibility bus: every control named, reachable, and told for what it is."""

import os

import access_tree
import accessible_walk
import converter_window
import harness
import native_playlist
import sound

MP3_TABS = ("General", "Filtering", "VBR", "Expert", "Preset", "Alt-Preset", "Command Line")


def check_tabs(walk, dialog):
    for name in MP3_TABS:
        tab = walk.tree.find("page tab", name)
        tab.node.act()
        harness.wait_for(lambda: "focused" in walk.tree.find("page tab", name).states, f'the tab "{name}"')
        walk.judge(walk.tree.find(dialog.role, dialog.name), f'the MP3 options\' tab "{name}"')


def check_options(walk, button, what):
    dialog = walk.window_behind("push button", button, what)
    if walk.tree.seek("page tab", "General"):
        check_tabs(walk, dialog)
    walk.leave(dialog, what)


def check_ticks(tree):
    """A row's box is turned over by Toggle and by Press, and what the keyboard is on is told."""
    def box():
        return tree.find("tree item", "noise[.]wav")

    harness.check("checked" in box().states, "the row that came from the playlist is not ticked")
    box().node.act(access_tree.FOCUS_TAKING)
    harness.wait_for(lambda: "focused" in box().states, "the keyboard on the row")
    for action, on in (("Toggle", False), ("Press", True)):
        tree.heard("StateChanged", "checked")
        node = box().node
        node.act(action)
        harness.wait_for(lambda: ("checked" in box().states) == on, f"{action} to turn the tick over")
        harness.wait_for(lambda: (node.path, int(on)) in tree.heard("StateChanged", "checked"),
                         f"the news of what {action} did")


def check_converter(walk):
    tree = walk.tree
    window = converter_window.ConverterWindow(walk.stage, walk.program, tree)
    window.open("Convert All Files")
    walk.judge(tree.find("dialog", "Convert audio files"), "the converter")
    check_ticks(tree)
    walk.press("push button", "Show the events")
    tree.find("tree", "Events")
    walk.judge(tree.find("dialog", "Convert audio files"), "the converter with its events")
    walk.press("check box", "Format settings")
    tree.find("push button", "Hide the format settings")
    walk.judge(tree.find("dialog", "Convert audio files"), "the converter with the panel of formats")
    check_options(walk, "MP3 options.*", "the MP3 options")
    check_options(walk, "Ogg Vorbis options", "the Ogg Vorbis options")
    walk.press("push button", "Hide the format settings")
    harness.wait_for(lambda: not tree.seek("push button", "Hide the format settings"), "the panel to go")
    window.close()


def check_editors(walk):
    menu = walk.opened("button menu", "File menu", 'the menu "File"')
    known = walk.tree.paths() - {menu.node.path}
    walk.press("menu item", "Edit Tags")
    harness.wait_for(lambda: menu.node.path not in walk.tree.paths(), "the menu to go")
    editor = walk.tree.await_window(known, "the tag editor")
    walk.judge(editor, "the tag editor")
    cues = walk.window_behind("push button", "Cues", "the cue list")
    walk.leave(cues, "the cue list")
    walk.leave(editor, "the tag editor")


def test(program_path, *_):
    with harness.Stage() as stage:
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, sound.noise(1, seed=1))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        tree = access_tree.Tree(stage)
        program = stage.run_program(program_path)
        tree.follow(program.process.pid)
        tree.hear("object:state-changed:checked")
        walk = accessible_walk.Walk(stage, program, tree)
        check_converter(walk)
        check_editors(walk)
        harness.check(not walk.faults, "\n".join(walk.faults))
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
