#!/usr/bin/env python3
"""Draws the main window's pictures: make_skin.py FOLDER, or make_skin.py --check FOLDER to compare what is there."""

import os
import sys

import main_window

PICTURES = {
    "main_window.svg": lambda: main_window.background("normal"),
    "main_window_off.svg": lambda: main_window.background("off"),
    "main_strip.svg": main_window.strip,
}


def main(arguments):
    check = arguments[:1] == ["--check"]
    folder = arguments[-1]
    different = []
    for name, draw in PICTURES.items():
        path, text = os.path.join(folder, name), draw().text()
        if check:
            with open(path, encoding="ascii") as file:
                if file.read() != text:
                    different.append(name)
        else:
            with open(path, "w", encoding="ascii") as file:
                file.write(text)
    if different:
        sys.exit("not what the program draws now: " + ", ".join(different))


if __name__ == "__main__":
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    main(sys.argv[1:])
