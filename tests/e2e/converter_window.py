"""The converter window under test: opened from the menu, worked by mouse and keys, read over the accessibility bus."""

import os
import subprocess
import time

import access_tree
import harness

TITLE = "^Convert audio files$"
FORMATS = ("WMA", "MP3", "OGG", "ADPCM", "DSP", "MP2", "VOX", "GSM", "G.721", "G.723", "G.726", "A-LAW")
# How the new files are called behind the name of the source, and what ffprobe or nobody says of their coding.
OUTPUTS = {"_39.wma": "wmav2", ".mp3": "mp3", "_ADPCM.wav": "adpcm_ima_wav", "_DSP.wav": "truespeech", ".mp2": "mp2",
           ".vox": None, ".ogg": "vorbis", "_GSM.wav": "gsm_ms", ".g726": None, ".g723": None, ".g721": None,
           "_ULAW.raw": None}
MENU_ENTRIES = {"Open Converting Window": 0, "Convert Selected Files": 1, "Convert UnSelected Files": 2,
                "Convert All Files": 3}


class ConverterWindow:
    def __init__(self, stage, program, tree):
        self.stage, self.program, self.tree = stage, program, tree
        self.window = 0

    def open(self, entry):
        """By Alt and a letter, then the entry by the arrow keys."""
        self.stage.key("alt+c")
        self.tree.find("menu item", entry)
        for _ in range(MENU_ENTRIES[entry] + 1):
            self.stage.key("Down")
        self.stage.key("Return")
        self.await_window()

    def await_window(self):
        self.window = harness.wait_for(lambda: next(iter(self.stage.windows(TITLE)), 0), "the converter window")
        self.stage.xdotool("windowactivate", "--sync", self.window)

    def item(self, role, name):
        return self.tree.find(role, name)

    def click(self, role, name, times=1):
        """With the mouse, in the middle of what is shown."""
        x, y, width, height = harness.wait_for(lambda: self.item(role, name).node.place, f"the place of {name}")
        self.stage.xdotool("mousemove", x + width // 2, y + height // 2)
        for _ in range(times):
            self.stage.xdotool("click", 1)

    def tick(self, name):
        self.click("check box", name)
        harness.wait_for(lambda: "checked" in self.item("check box", name).states, f"the tick of {name}")

    def type_folder(self, which, folder):
        """`which` is "Input folder" or "Output folder": a click turns what is shown into a box to type in."""
        self.click("label", which + ": .*")
        box = self.item("text", which)
        harness.wait_for(lambda: "focused" in box.node.states, f"the focus in {which}")
        self.stage.key("ctrl+a")
        self.stage.type_text(folder)
        harness.wait_for(lambda: box.node.text == folder, f"{folder} in {which}")

    def text_of(self, name):
        return self.item("text", name).node.text

    def names(self):
        return [item.name for item in self.tree.all()]

    def start(self):
        """Stop comes into its place, and the mouse rests on it."""
        self.click("push button", "Start")

    def stop(self):
        """Where Start was: a run that is asked over the bus where Stop stands would be over before it answers."""
        self.stage.xdotool("click", 1)

    def answer(self, text, key, timeout_s=120.0):
        """The message or question that holds the text, by a key."""
        def shown():
            return any(text in name for name in self.names())
        harness.wait_for(shown, f'the box "{text}"', timeout_s, step_s=0.2)
        harness.wait_for(lambda: self.stage.active_window() != self.window, f'"{text}" to be in front')
        self.stage.key(key)
        harness.wait_for(lambda: not shown(), f'the box "{text}" to go')

    def close(self):
        self.stage.xdotool("windowactivate", "--sync", self.window)
        self.stage.key("Escape")
        harness.wait_for(lambda: not self.stage.windows(TITLE), "the converter window to go")


def codec_of(path):
    answer = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "stream=codec_name", "-of", "csv=p=0", path],
                            stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return answer.stdout.strip().split("\n")[0]


def length_s(path):
    """How long a decode by ffmpeg is."""
    answer = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "s16le", "-ac", "1", "-ar", "8000", "-"],
                            stdin=subprocess.DEVNULL, capture_output=True)
    return len(answer.stdout) / 2 / 8000
