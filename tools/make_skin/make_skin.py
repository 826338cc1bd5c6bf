#!/usr/bin/env python3
"""Draws the pictures of the windows, and writes the headers that tell the program where everything stands: make_skin.py FOLDER,
or make_skin.py --check FOLDER to compare what is there."""

import os
import sys

import body_keys
import converter_layout
import converter_window
import main_layout
import main_window

PICTURES = {
    "main_window.svg": lambda: main_window.background("normal"),
    "main_window_off.svg": lambda: main_window.background("off"),
    "main_strip.svg": main_window.strip,
    "body_keys.svg": body_keys.pictures,
    "converter_window.svg": lambda: converter_window.background(converter_layout.SHORT, "normal"),
    "converter_window_long.svg": lambda: converter_window.background(converter_layout.LONG, "normal"),
    "converter_window_off.svg": lambda: converter_window.background(converter_layout.SHORT, "off"),
    "converter_strip.svg": converter_window.strip,
    "converter_event_run.svg": lambda: converter_window.event_sign("run"),
    "converter_event_settings.svg": lambda: converter_window.event_sign("settings"),
}


def made(folder):
    """Paths and texts of all that is made."""
    for name, draw in PICTURES.items():
        yield os.path.join(folder, name), draw().text()
    for layout in (*converter_layout.HEADERS, main_layout.LAYOUT):
        yield layout.path, layout.text()


def main(arguments):
    check = arguments[:1] == ["--check"]
    different = []
    for path, text in made(arguments[-1]):
        if check:
            with open(path, encoding="ascii") as file:
                if file.read() != text:
                    different.append(os.path.basename(path))
        else:
            with open(path, "w", encoding="ascii") as file:
                file.write(text)
    if different:
        sys.exit("not what the program draws now: " + ", ".join(different))


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1:])
