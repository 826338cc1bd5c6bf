"""The text keys of the dialogs, OK, Cancel and Apply, in one row: as they lie in the body, and the strip of their other looks.

The program has the same numbers in src/skin/dialog_buttons.cpp; a test compares what both draw.
"""

from parts import flat_key
from svg import ACCENT_LIGHT, Picture

WORDS = ("OK", "Cancel", "Apply")
KEY = (80, 26)
STEP = 88
STRIP_STEP = 32
LOOKS = ("hover", "pressed")

FACE_PIXELS = 11
HALF_CAPITAL = 4  # half the height of a capital letter
INKS = {"normal": "#ccd0d9", "hover": ACCENT_LIGHT, "pressed": "#f2f3ff", "off": "#ccd0d9"}
OFF_STRENGTH = 0.35
# The dark upper and the light lower edge of an engraving: distance, colour, opacity.
EDGES = ((-0.8, "#000000", 0.55), (0.8, "#ffffff", 0.1))


def word_glyph(word):
    """Engraved in the program's own face."""
    def draw_word(picture, x, y, _, look):
        lines = EDGES if look in ("normal", "off") else ()
        strength = OFF_STRENGTH if look == "off" else 1
        for shift, ink, opacity in (*lines, (0, INKS[look], 1)):
            picture.text_line(x, y + shift + HALF_CAPITAL, word, "Inter", FACE_PIXELS, 600, fill=ink, fill_opacity=opacity * strength)
    return draw_word


def row(picture, y, look):
    for index, word in enumerate(WORDS):
        flat_key(picture, index * STEP, y, *KEY, look, word_glyph(word))


def size(rows):
    return STEP * (len(WORDS) - 1) + KEY[0], STRIP_STEP * (rows - 1) + KEY[1]


def background():
    picture = Picture(*size(1))
    row(picture, 0, "normal")
    return picture


def strip():
    picture = Picture(*size(len(LOOKS)))
    for index, look in enumerate(LOOKS):
        row(picture, index * STRIP_STEP, look)
    return picture
