#!/usr/bin/env python3
"""Tags and cue points edited by the keys alone: the row's title follows, and other programs read what was written."""

import os
import struct
import subprocess

import access_tree
import harness
import native_playlist
import sound

OLD, NEW, CHARTED = "Before", "After the rain", "Zaż"
ATTEMPTS, DELAY_MS = 3, 60


class Editor:
    def __init__(self, stage, tree):
        self.stage, self.tree = stage, tree

    def open(self):
        """From the menu of files, by keys."""
        self.stage.key("alt+f")
        entries = [item.name for item in self.tree.find("menu item", "Edit Tags") and self.tree.all()
                   if item.role in ("menu item", "check menu item")]
        for _ in range(entries.index("Edit Tags") + 1):
            self.stage.key("Down")
        self.stage.key("Return")
        self.window = harness.wait_for(lambda: next(iter(self.stage.windows("^Edit Tags$")), 0), "the tag editor")
        harness.wait_for(lambda: self.stage.active_window() == self.window, "the tag editor to be active")

    def text_of(self, name):
        return self.tree.find("text", name).node.text

    def fill(self, **texts):
        """The boxes by Tab, from the one of the title on."""
        for name, text in texts.items():
            for _ in range(40):
                if "focused" in self.tree.find("text", name.replace("_", " ")).states:
                    break
                self.stage.key("Tab")
            self.type_into(name.replace("_", " "), text)

    def type_into(self, name, text):
        """Into the box that has the keys. A letter that the keyboard does not have is put on a free key for a moment, and
        a busy program may look at that key too late: then it is typed again, and slower."""
        for attempt in range(ATTEMPTS):
            self.stage.key("ctrl+a")
            self.stage.type_text(text, DELAY_MS * 4 ** attempt)
            try:
                harness.wait_for(lambda: self.text_of(name) == text, f'"{text}" in {name}', 3)
                return
            except harness.Failure as failure:
                last = failure
        raise last

    def answer(self, text):
        harness.wait_for(lambda: any(text in item.name for item in self.tree.all()), f'the box "{text}"')
        harness.wait_for(lambda: self.stage.active_window() != self.window, f'"{text}" to be in front')
        self.stage.key("Return")
        harness.wait_for(lambda: self.stage.active_window() == self.window, "the tag editor to be active again")

    def close(self):
        self.stage.key("Escape")
        harness.wait_for(lambda: not self.stage.windows("^Edit Tags$"), "the tag editor to go")


def tag_by_ffprobe(path, name):
    answer = subprocess.run(["ffprobe", "-v", "error", "-show_entries", f"format_tags={name}", "-of", "csv=p=0", path],
                            stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return answer.stdout.strip()


def id3v1_title(path):
    with open(path, "rb") as file:
        file.seek(-128, os.SEEK_END)
        block = file.read()
    harness.check(block[:3] == b"TAG", f"{path} has no ID3v1 tag")
    return block[3:33].rstrip(b"\0 ").decode("latin-1")


def cue_positions(path):
    """By a look at the chunks."""
    with open(path, "rb") as file:
        data = file.read()
    at = 12
    while at + 8 <= len(data):
        name, size = struct.unpack_from("<4sI", data, at)
        if name == b"cue ":
            count = struct.unpack_from("<I", data, at + 8)[0]
            return [struct.unpack_from("<I", data, at + 12 + 24 * i + 20)[0] for i in range(count)]
        at += 8 + size + size % 2
    return []


def check_mp3(editor, path):
    before = sound.decode(path)
    editor.open()
    harness.check(editor.text_of("Title") == OLD, f"the title is {editor.text_of('Title')}")
    editor.fill(Title=NEW, Artist="The Walkers", Year="1999")
    editor.stage.key("Return")
    editor.answer("Updated Successfully!")
    harness.check(id3v1_title(path) == NEW, f"the file's title is {id3v1_title(path)}")
    harness.check(tag_by_ffprobe(path, "title") == OLD, "the other tag of the file was changed")
    editor.close()
    row = "1.The Walkers - " + NEW
    harness.wait_for(lambda: any(row in item.name for item in editor.tree.all() if item.role == "list item"),
                     f'the row "{row}"')
    harness.check(sound.decode(path) == before, "the sound was changed")


def check_cues(editor, path):
    editor.open()
    editor.stage.key("Next")
    harness.wait_for(lambda: editor.text_of("File") == path, "the second file")
    editor.type_into("Title", CHARTED)
    tree = editor.tree
    known = tree.paths()
    next(item for item in tree.find("dialog", "Edit Tags").all() if item.name == "Cues").node.act()
    cues = tree.await_window(known, "the cue list")
    editor.fill(Position="4410", Label="start")
    next(item for item in tree.find("dialog", "CueList").all() if item.name == "Add").node.act()
    harness.wait_for(lambda: tree.find("text", "Index").node.text == "1", "the first cue")
    editor.stage.key("Escape")
    harness.wait_for(lambda: cues.node.path not in tree.paths(), "the cue list to go")
    harness.wait_for(lambda: editor.stage.active_window() == editor.window, "the tag editor to be active")
    next(item for item in tree.find("dialog", "Edit Tags").all() if item.name == "Update").node.act()
    editor.answer("Updated Successfully!")
    harness.check(cue_positions(path) == [4410], f"the cues stand at {cue_positions(path)}")
    harness.check(tag_by_ffprobe(path, "title") == CHARTED, f"the title is {tag_by_ffprobe(path, 'title')}")
    editor.close()


def test(program_path):
    with harness.Stage() as stage:
        song, wav = os.path.join(stage.folder, "song.mp3"), os.path.join(stage.folder, "take.wav")
        sound.write_wav(wav, sound.noise(2, seed=5))
        sound.run_tool("ffmpeg", "-v", "error", "-i", wav, "-metadata", f"title={OLD}", "-write_id3v1", "1", song)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in (song, wav)])
        tree = access_tree.Tree(stage)
        program = stage.run_program(program_path)
        tree.follow(program.process.pid)
        editor = Editor(stage, tree)
        check_mp3(editor, song)
        check_cues(editor, wav)
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
