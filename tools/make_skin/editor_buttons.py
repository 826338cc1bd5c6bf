"""The keys of the tag editor and the cue list: one row for each look, words first, the folder key behind them.

The program has the same numbers in src/editors/editor_key.cpp; a test compares what the looks of a key cover.
"""

from dialog_buttons import KEY, STEP, STRIP_STEP, word_glyph
from parts import GLYPHS, flat_key
from svg import Picture

WORDS = ("Update", "Close", "Previous", "Next", "Cues", "Add", "Delete")
FOLDER = (28, 24)
LOOKS = ("normal", "hover", "pressed", "off")


def pictures():
    folder_left = STEP * len(WORDS)
    picture = Picture(folder_left + FOLDER[0], STRIP_STEP * (len(LOOKS) - 1) + KEY[1])
    for row, look in enumerate(LOOKS):
        top = row * STRIP_STEP
        for column, word in enumerate(WORDS):
            flat_key(picture, column * STEP, top, *KEY, look, word_glyph(word))
        flat_key(picture, folder_left, top, *FOLDER, look, GLYPHS["open"])
    return picture
