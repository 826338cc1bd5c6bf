"""Drawn figures: the clock's segments, the lamps' small strokes and the tiny ones under the list."""

from svg import ACCENT, moved, number

# Which of the segments a to g a digit lights.
SEGMENTS = ("abcdef", "bc", "abged", "abgcd", "fgbc", "afgcd", "afgedc", "abc", "abcdefg", "abcdfg")


def segment_shapes(width, height, thick, margin_x, margin_y):
    left, right = margin_x, width - margin_x
    top, bottom = margin_y, height - margin_y
    middle = (top + bottom) / 2
    half = thick / 2
    gap = 0.45

    def across(y):
        begin, end = left + half + gap, right - half - gap
        return [(begin, y), (begin + half, y - half), (end - half, y - half), (end, y), (end - half, y + half), (begin + half, y + half)]

    def down(x, y1, y2):
        begin, end = y1 + gap, y2 - gap
        return [(x, begin), (x + half, begin + half), (x + half, end - half), (x, end), (x - half, end - half), (x - half, begin + half)]

    return {"a": across(top + half), "g": across(middle), "d": across(bottom - half),
            "f": down(left + half, top + half, middle), "b": down(right - half, top + half, middle),
            "e": down(left + half, middle, bottom - half), "c": down(right - half, middle, bottom - half)}


def segment_digit(picture, x, y, cell, digit, ghost=False):
    width, height = cell
    big = height > 15
    shapes = segment_shapes(width, height, 2.0 if big else 1.6, 1.0 if big else 0.9, 1.0)
    for name, points in shapes.items():
        if ghost:
            picture.path(moved(points, x, y), fill=ACCENT, fill_opacity=0.09)
        elif name in SEGMENTS[digit]:
            data = moved(points, x, y)
            picture.path(data, stroke=ACCENT, stroke_opacity=0.14, stroke_width=3, stroke_linejoin="round")
            picture.path(data, stroke=ACCENT, stroke_opacity=0.22, stroke_width=1.4, stroke_linejoin="round")
            picture.path(data, fill=picture.down(y, y + height, (0, "#a6a6ff"), (1, ACCENT)))


# Strokes in a box of 2 by 4 for the small figures.
STROKES = {
    "0": [[(0, 0), (2, 0), (2, 4), (0, 4), (0, 0)]], "1": [[(0.4, 0.7), (1.2, 0), (1.2, 4)]],
    "2": [[(0, 0), (2, 0), (2, 2), (0, 2), (0, 4), (2, 4)]], "3": [[(0, 0), (2, 0), (2, 4), (0, 4)], [(0.5, 2), (2, 2)]],
    "4": [[(0, 0), (0, 2.2), (2, 2.2)], [(2, 0), (2, 4)]], "5": [[(2, 0), (0, 0), (0, 2), (2, 2), (2, 4), (0, 4)]],
    "6": [[(2, 0), (0, 0), (0, 4), (2, 4), (2, 2), (0, 2)]], "7": [[(0, 0), (2, 0), (1, 4)]],
    "8": [[(0, 0), (2, 0), (2, 4), (0, 4), (0, 0)], [(0, 2), (2, 2)]], "9": [[(0, 4), (2, 4), (2, 0), (0, 0), (0, 2), (2, 2)]],
    ".": [[(0.9, 3.9), (1.1, 4)]], ":": [[(1, 0.9), (1, 1.1)], [(1, 2.9), (1, 3.1)]], "/": [[(2, -0.2), (0, 4.2)]],
    "k": [[(0, -1), (0, 4)], [(1.8, 1), (0.2, 2.6), (2, 4)]], "H": [[(0, 0), (0, 4)], [(2, 0), (2, 4)], [(0, 2), (2, 2)]],
    "z": [[(0, 1.2), (1.9, 1.2), (0, 4), (2, 4)]], "b": [[(0, -0.6), (0, 4), (2, 4), (2, 1.6), (0, 1.6)]],
    "p": [[(0, 5.2), (0, 1.4), (2, 1.4), (2, 4), (0, 4)]], "s": [[(2, 1.3), (0, 1.3), (0, 2.6), (2, 2.6), (2, 4), (0, 4)]],
}


def stroke_text(picture, x, y, text, colour, size=1.0, advance=4.0, width=0.9, opacity=1.0, narrow=2.4):
    """Text of small strokes; (x, y) is the upper left. The point takes `narrow`."""
    at = x
    for letter in text:
        for run in STROKES[letter]:
            data = "M" + " L".join(f"{number(at + px * size)} {number(y + py * size)}" for px, py in run)
            picture.path(data, stroke=colour, stroke_width=width, stroke_opacity=opacity, stroke_linecap="round", stroke_linejoin="round")
        at += narrow if letter == "." else advance
    return at - x
