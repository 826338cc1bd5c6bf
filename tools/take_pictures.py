#!/usr/bin/env python3
"""Takes the pictures of docs/screenshots: take_pictures.py BUILD_FOLDER FOLDER [SCALE...]

Runs the real program on a private screen with a private sound server and the samples in its list, at each scale (1, 1.5 and
2 unless told), in each state, with each display, with each menu open, and the windows of the tools; and draws the contact
sheet of all button looks.
"""

import os
import shutil
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "e2e"))

import harness  # noqa: E402  (found through the line above)
import native_playlist  # noqa: E402

SAMPLES = os.path.join(HERE, "..", "resources", "samples")
MUSIC, CONVERTED = "/tmp/kestrune/Music", "/tmp/kestrune/Converted"
ENDINGS = (".wav", ".mp3", ".ogg", ".wma", ".vox")
DISPLAYS = ("level_bars", "analog", "fire", "glass", "kryptonite")
MENUS = {"file": "f", "play": "p", "burn": "b", "convert": "c", "help": "h", "options": "o"}
PLAY, PAUSE, STOP, EQUALIZER, COLOURS = (66, 191), (106, 191), (139, 191), (330, 191), (367, 191)
FIRST_ROW, EMPTY_PLACE = (100, 250), (240, 190)
# Of the converter's windows.
CONVERTER, MP3_OPTIONS, OGG_OPTIONS = "^Convert audio files$", "^MP3 Lame", "^Ogg Vorbis Option$"
OUTPUT_FOLDER, START, SETTINGS, EVENTS, HIDE_SETTINGS = (470, 53), (398, 319), (478, 319), (568, 319), (355, 38)
FORMATS = [(396 + 73 * column, 91 + 22 * row) for row in range(4) for column in range(3)]
MP3_KEY, OGG_KEY = (338, 128), (338, 148)
EDITOR, CUES, CUES_KEY = "^Edit Tags$", "^CueList$", (240, 455)
CONVERTER_EMPTY_PLACE = (250, 334)
MP3_TABS = ("general", "filtering", "vbr", "expert", "preset", "alt_preset", "command_line")
AROUND = 30  # pixels of the screen round a window with an open menu


class Camera:
    def __init__(self, stage, program, folder, scale):
        self.stage, self.program, self.folder, self.scale = stage, program, folder, scale

    def click(self, place, button=1):
        self.move(place)
        self.stage.xdotool("click", button)
        time.sleep(0.3)

    def move(self, place):
        self.program.pointer_to(*(int(value * self.scale) for value in place))
        time.sleep(0.2)

    def path(self, name):
        return os.path.join(self.folder, f"{name}_{int(self.scale * 100)}.png")

    def window(self, name):
        self.stage.screenshot(self.path(name), self.program.window)

    def with_menu(self, name):
        """The window and what lies over its edge."""
        left, top, width, height = self.program.place()
        whole = self.path(name)
        self.stage.screenshot(whole)
        edge = int(AROUND * self.scale)
        subprocess.run(["convert", whole, "-crop", f"{width + 5 * edge}x{height + 2 * edge}+{left - edge}+{top - edge}",
                        "+repage", whole], check=True)

    def keys(self, *keys):
        self.stage.key(*keys)
        time.sleep(0.25)


class OtherWindow:
    """A window over the main one, for the camera."""

    def __init__(self, stage, title):
        self.window = harness.wait_for(lambda: next(iter(stage.windows(title)), 0), f"the window {title}")
        self._stage = stage
        stage.xdotool("windowactivate", "--sync", self.window)
        time.sleep(0.4)

    def pointer_to(self, x, y):
        self._stage.xdotool("mousemove", "--window", self.window, x, y)


def take_options(camera, key, title, name, tabs):
    camera.click(key)
    dialog = Camera(camera.stage, OtherWindow(camera.stage, title), camera.folder, camera.scale)
    for number, tab in enumerate(tabs or [""]):
        if number > 0:
            dialog.keys("ctrl+Tab")
        dialog.window(f"{name}_{tab}" if tab else name)
    dialog.keys("Escape")
    time.sleep(0.3)


def take_converter(main_camera):
    stage = main_camera.stage
    main_camera.keys("alt+c")
    main_camera.keys("Up", "Return")
    camera = Camera(stage, OtherWindow(stage, CONVERTER), main_camera.folder, main_camera.scale)
    camera.move(CONVERTER_EMPTY_PLACE)
    camera.window("converter")
    camera.click(SETTINGS)
    camera.move(CONVERTER_EMPTY_PLACE)
    camera.window("converter_settings")
    take_options(camera, MP3_KEY, MP3_OPTIONS, "mp3_options", MP3_TABS)
    take_options(camera, OGG_KEY, OGG_OPTIONS, "ogg_options", ())
    camera.click(HIDE_SETTINGS)
    camera.click(OUTPUT_FOLDER)
    camera.keys("ctrl+a")
    stage.type_text(CONVERTED)
    for place in FORMATS:
        camera.click(place)
    camera.click(EVENTS)
    window = camera.program.window
    harness.wait_for(lambda: int(stage.xdotool("getwindowgeometry", "--shell", window).split("HEIGHT=")[1].split()[0])
                     > 600 * camera.scale, "the long form")
    camera.click(START)
    camera.move(CONVERTER_EMPTY_PLACE)
    camera.window("converter_running")
    harness.wait_for(lambda: stage.active_window() != window, "the end of the run", timeout_s=60)
    camera.keys("Return")
    camera.move(CONVERTER_EMPTY_PLACE)
    camera.window("converter_events")
    camera.keys("Escape")


def take_editors(main_camera):
    stage = main_camera.stage
    main_camera.keys("alt+f")
    main_camera.keys("i")
    editor = Camera(stage, OtherWindow(stage, EDITOR), main_camera.folder, main_camera.scale)
    editor.window("edit_tags")
    editor.click(CUES_KEY)
    cues = Camera(stage, OtherWindow(stage, CUES), main_camera.folder, main_camera.scale)
    cues.window("cue_list")
    cues.keys("Escape")
    editor.keys("Escape")


def choose_display(camera, number):
    camera.keys("alt+o")
    camera.keys("Down", "Right", *["Down"] * number, "Return")


def take(camera):
    camera.move(EMPTY_PLACE)
    camera.window("stopped")
    camera.click(FIRST_ROW)
    camera.click(PLAY)
    for number, name in enumerate(DISPLAYS):
        choose_display(camera, number)
        camera.move(EMPTY_PLACE)
        time.sleep(2)
        camera.window("display_" + name)
    choose_display(camera, 2)
    camera.click(PAUSE)
    camera.move(EMPTY_PLACE)
    time.sleep(1.5)
    camera.window("paused")
    camera.click(PLAY)
    camera.move(EMPTY_PLACE)
    time.sleep(1.5)
    camera.window("playing")
    camera.click(EQUALIZER)
    camera.move(EMPTY_PLACE)
    camera.window("equalizer")
    camera.click(COLOURS)
    camera.move(EMPTY_PLACE)
    camera.window("colours")
    camera.click(COLOURS)
    for name, letter in MENUS.items():
        camera.keys("alt+" + letter)
        camera.with_menu("menu_" + name)
        camera.keys("Escape")
    camera.click(FIRST_ROW, 3)
    camera.with_menu("menu_list")
    camera.keys("Escape")
    take_converter(camera)
    take_editors(camera)


def copy_samples():
    """Where their paths look well, since the windows show them."""
    shutil.rmtree(MUSIC, ignore_errors=True)
    os.makedirs(CONVERTED, exist_ok=True)
    os.makedirs(MUSIC)
    names = [name for name in sorted(os.listdir(SAMPLES)) if name.endswith(ENDINGS)]
    return [shutil.copy(os.path.join(SAMPLES, name), MUSIC) for name in names]


def main(build, folder, scales):
    os.makedirs(folder, exist_ok=True)
    subprocess.run([os.path.join(build, "kestrune_contact_sheet"), os.path.join(folder, "contact_sheet.png")], check=True,
                   env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
    files = copy_samples()
    for scale in scales:
        with harness.Stage(screen="2560x2048") as stage:
            stage.env["QT_SCALE_FACTOR"] = str(scale)
            native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(file) for file in files])
            take(Camera(stage, stage.run_program(os.path.join(build, "kestrune")), folder, scale))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], [float(value) for value in sys.argv[3:]] or [1.0, 1.5, 2.0])
