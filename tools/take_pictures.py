#!/usr/bin/env python3
"""Takes the pictures of docs/screenshots: take_pictures.py BUILD_FOLDER FOLDER [SCALE...]

Runs the real program on a private screen with a private sound server and the samples in its list, at each scale (1, 1.5 and
2 unless told), in each state, with each display, with each menu open; and draws the contact sheet of all button looks.
"""

import os
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "e2e"))

import harness  # noqa: E402  (found through the line above)
import native_playlist  # noqa: E402

SAMPLES = os.path.join(HERE, "..", "resources", "samples")
ENDINGS = (".wav", ".mp3", ".ogg", ".wma", ".vox")
DISPLAYS = ("level_bars", "analog", "fire", "glass", "kryptonite")
MENUS = {"file": "f", "play": "p", "burn": "b", "convert": "c", "help": "h", "options": "o"}
PLAY, PAUSE, STOP, EQUALIZER, COLOURS = (66, 191), (106, 191), (139, 191), (330, 191), (367, 191)
FIRST_ROW, EMPTY_PLACE = (100, 250), (240, 190)
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


def main(build, folder, scales):
    os.makedirs(folder, exist_ok=True)
    subprocess.run([os.path.join(build, "kestrune_contact_sheet"), os.path.join(folder, "contact_sheet.png")], check=True,
                   env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
    files = [os.path.join(os.path.realpath(SAMPLES), name) for name in sorted(os.listdir(SAMPLES)) if name.endswith(ENDINGS)]
    for scale in scales:
        with harness.Stage() as stage:
            stage.env["QT_SCALE_FACTOR"] = str(scale)
            native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(file) for file in files])
            take(Camera(stage, stage.run_program(os.path.join(build, "kestrune")), folder, scale))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    main(sys.argv[1], sys.argv[2], [float(value) for value in sys.argv[3:]] or [1.0, 1.5, 2.0])
