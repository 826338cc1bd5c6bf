"""The pictures of the converter window: its background in both heights and with disabled keys, its strip, and the two signs of
its list of events."""

import random

import converter_layout as at
from main_window import window_key
from parts import GLYPHS, bar, body, channel, closed, flat_key, glass, line_glyph, lines, round_key, shape_glyph
from svg import ACCENT, MUTED, TEXT, Picture

GRAIN_SEED = 41

TICK = [(-1.9, 0.1), (-0.5, 1.6), (2.2, -1.7)]
FRAME = [(-4, -4), (4, -4), (4, 4), (-4, 4), (-4, -4)]
OWN_GLYPHS = {
    "all": line_glyph([lines(FRAME, TICK)], 1.2),
    "none": line_glyph([lines(FRAME)], 1.2),
    "sliders": line_glyph([lines([(-6.5, -3.5), (6.5, -3.5)], [(-6.5, 3.5), (6.5, 3.5)])], 1.2,
                          [closed(bar(-3.8, -5.6, -1.2, -1.4), bar(1.4, 1.4, 4, 5.6))]),
    "more": shape_glyph([], [(-4.6, 0, 1.15), (0, 0, 1.15), (4.6, 0, 1.15)]),
}


def beside_text(glyph, shift):
    """The glyph of a key that has words too: it stands left of them."""
    def draw(picture, x, y, scale, look):
        glyph(picture, x + shift, y, scale, look)
    return draw


OPTIONS_GLYPH = beside_text(OWN_GLYPHS["sliders"], -29)
HEIGHT_GLYPHS = {name: beside_text(GLYPHS[name], -21) for name in ("up", "down")}


def wide_key(picture, x, y, width, height, look, glyph):
    flat_key(picture, x, y, width, height, look, glyph, lit_reach=width / 2 - 2)


def folder_key(picture, x, y, look):
    flat_key(picture, x, y, *at.FOLDERS[0].size, look, GLYPHS["open"])


def tick_key(picture, name, x, y, look):
    flat_key(picture, x, y, *at.TICKS[name].size, look, OWN_GLYPHS[name])


def run_key(picture, name, x, y, look):
    round_key(picture, x, y, at.START.size[0], look, GLYPHS[name])


def set_key(picture, x, y, look):
    wide_key(picture, x, y, *at.PANEL_SETS[0][2:], look, OWN_GLYPHS["more"])


def background(height, look):
    picture = Picture(at.WIDTH, height)
    # The long window is the short one with a lower part: what both have is the same to the pixel.
    body(picture, at.WIDTH, height, *at.CORNER, random.Random(GRAIN_SEED), at.SHORT)
    window_key(picture, "close", *at.CLOSE.corner, look)
    for field in at.PATH_FIELDS:
        glass(picture, *field, 4, reflection=False)
    for key in at.FOLDERS:
        folder_key(picture, *key.corner, look)
    channel(picture, *at.TYPES, 6)
    channel(picture, *at.FORMATS, 6)
    glass(picture, *at.LIST, 6, reflection=False)
    glass(picture, *at.PROGRESS, 7)
    for name, key in at.TICKS.items():
        tick_key(picture, name, *key.corner, look)
    run_key(picture, "play", *at.START.corner, look)
    wide_key(picture, *at.OPTIONS.place, look, OPTIONS_GLYPH)
    height_name = "up" if height == at.LONG else "down"
    wide_key(picture, *at.HEIGHTS[height_name].place, look, HEIGHT_GLYPHS[height_name])
    if height == at.LONG:
        glass(picture, *at.EVENTS, 6, reflection=False)
    return picture


def panel(picture, x, y):
    """A plate that lies on the window, with its keys in their normal look."""
    width, height = at.GROUND[2:]
    picture.box(x, y, width, height, 8, fill="#0b0c0e")
    picture.box(x + 1, y + 1, width - 2, height - 2, 7, fill=picture.down(y, y + height, (0, "#3d434d"), (0.2, "#353a43"), (1, "#23262c")))
    picture.box(x + 1.5, y + 1.5, width - 3, height - 3, 6.5, stroke_width=1,
                stroke=picture.down(y, y + height, (0, "#ffffff", 0.24), (0.1, "#ffffff", 0.08), (1, "#ffffff", 0.02)))
    left, top, wide, high = at.PANEL_RATES
    channel(picture, x + left, y + top, wide, high, 6)
    left, top, wide, high = at.PANEL_TEXTS
    glass(picture, x + left, y + top, wide, high, 5, reflection=False)
    for row in range(1, high // at.LINE_STEP):
        picture.box(x + left + 1, y + top + row * at.LINE_STEP, wide - 2, 1, fill="#ffffff", fill_opacity=0.035)
    window_key(picture, "close", x + at.PANEL_CLOSE.corner[0], y + at.PANEL_CLOSE.corner[1], "normal")
    for place in at.PANEL_SETS:
        set_key(picture, x + place[0], y + place[1], "normal")


def strip():
    picture = Picture(*at.STRIP)
    panel(picture, *at.GROUND[:2])
    for look, place in at.CLOSE.looks.items():
        window_key(picture, "close", *place, look)
    for look, place in at.FOLDERS[0].looks.items():
        folder_key(picture, *place, look)
    for name, key in at.TICKS.items():
        for look, place in key.looks.items():
            tick_key(picture, name, *place, look)
    for look, place in at.START.looks.items():
        run_key(picture, "play", *place, look)
    for look, place in {"normal": at.STOP_NORMAL, **at.STOP.looks}.items():
        run_key(picture, "stop", *place, look)
    for look, place in at.OPTIONS.looks.items():
        wide_key(picture, *place, *at.OPTIONS.size, look, OPTIONS_GLYPH)
    for name, key in at.HEIGHTS.items():
        for look, place in key.looks.items():
            wide_key(picture, *place, *key.size, look, HEIGHT_GLYPHS[name])
    for look, place in at.PANEL_SET_LOOKS.items():
        set_key(picture, *place, look)
    for look, place in at.PANEL_CLOSE.looks.items():
        window_key(picture, "close", *place, look)
    return picture


def event_sign(name):
    """The sign before a line of the events: a step of the run, or a change of settings."""
    picture = Picture(16, 16)
    if name == "run":
        picture.path("M6 4.5 L11.5 8 L6 11.5 Z", fill=ACCENT, stroke=ACCENT, stroke_width=1, stroke_linejoin="round")
    else:
        picture.path("M3.5 5.5 L12.5 5.5 M3.5 10.5 L12.5 10.5", stroke=MUTED, stroke_width=1.2, stroke_linecap="round")
        picture.box(4.8, 3.5, 2.6, 4, 0.8, fill=TEXT)
        picture.box(8.8, 8.5, 2.6, 4, 0.8, fill=TEXT)
    return picture
