"""The keys that stand anywhere on the body: one row for each look, the blank key for words first, the folder key behind it.

The program has the same numbers in src/skin/body_key.cpp; a test compares what the looks of a key cover.
"""

from parts import GLYPHS, flat_key
from svg import Picture

KEY = (80, 26)
FOLDER = (28, 24)
STEP = 88
ROW_STEP = 32
LOOKS = ("normal", "hover", "pressed", "off")


def blank(*_):
    """No glyph: the program paints the word."""


def pictures():
    picture = Picture(STEP + FOLDER[0], ROW_STEP * (len(LOOKS) - 1) + KEY[1])
    for row, look in enumerate(LOOKS):
        flat_key(picture, 0, row * ROW_STEP, *KEY, look, blank)
        flat_key(picture, STEP, row * ROW_STEP, *FOLDER, look, GLYPHS["open"])
    return picture
