"""The three pictures of the main window: the background, the background with disabled keys, and the strip."""

import random

import main_layout as at
from digits import segment_digit, stroke_text
from parts import (GLYPHS, arc, body, channel, flat_key, glass, lamp_colour, lamp_glyph, lines, round_key, wave_mark)
from svg import ACCENT, ACCENT_LIGHT, MUTED, Picture, number

GRAIN_SEED = 20


def transport_key(picture, name, x, y, look):
    round_key(picture, x, y, at.TRANSPORT[name][2], look, GLYPHS[name])


def key(picture, name, place, x, y, look):
    flat_key(picture, x, y, place[2], place[3], look, GLYPHS[name])


def window_key(picture, name, x, y, look):
    """No plate of its own in the normal look: title keys lie flat in the body."""
    width = at.WINDOW_KEYS[name][2]
    if look in ("hover", "pressed"):
        picture.box(x + 0.5, y + 0.5, width - 1, width - 1, 5, fill="#ff5a4f" if name == "close" else ACCENT,
                    fill_opacity=0.5 if look == "pressed" else 0.32)
    GLYPHS[name](picture, x + width / 2, y + width / 2 + (1 if look == "pressed" else 0), 1, look)


# --- the tool bar's pictures: each in frames, of which frame 0 is the still one ---

def flame(x, y, size, phase):
    """A tongue with a smaller one at its left; the tip sways with the phase."""
    sway = (0, 0.7, -0.6)[phase]
    curve = (("M", (sway, -6.4)), ("C", (0.8, -3.8), (4.2, -2.2), (4.2, 1.4)), ("C", (4.2, 4), (2.3, 5.6), (0, 5.6)),
             ("C", (-2.3, 5.6), (-4.2, 4), (-4.2, 1.5)), ("C", (-4.2, -0.4), (-3.2, -1.6), (-2.4, -2.8)),
             ("C", (-2.1, -1.6), (-1.7, -1), (-1, -0.7)), ("C", (-1.5, -2.8), (-1.1, -4.8), (sway, -6.4)))
    return " ".join(letter + " ".join(f"{number(x + px * size)} {number(y + py * size)}" for px, py in points)
                    for letter, *points in curve) + " Z"


def tool_plate(picture, x, y, lit):
    width, height = at.TOOL_CELL
    picture.box(x, y, width, height, 5,
                fill=picture.down(y, y + height, (0, "#ffffff", 0.10 if lit else 0.05), (1, "#ffffff", 0.01)))
    picture.box(x + 0.5, y + 0.5, width - 1, height - 1, 5, stroke_width=1,
                stroke=picture.down(y, y + height, (0, "#ffffff", 0.14), (1, "#000000", 0.4)))
    if lit:
        picture.box(x + 1, y + 1, width - 2, height - 2, 4.5,
                    fill=picture.glow(x + width / 2, y + height * 0.6, 17, (0, ACCENT, 0.4), (0.55, ACCENT, 0.14), (1, ACCENT, 0)))


def tool_picture(picture, name, x, y, phase, look):
    """phase None is the resting look in the background; 0 to 2 are the frames while the mouse is over it."""
    lit = phase is not None
    colour = ACCENT_LIGHT if lit else "#b6bcc7"
    strength = 0.35 if look == "off" else 1
    centre_x, centre_y = x + at.TOOL_CELL[0] / 2, y + at.TOOL_CELL[1] / 2
    if name == "idle":
        heights = ((0.25, 0.55, 0.95, 0.6, 0.3), (0.45, 0.9, 0.55, 0.85, 0.4), (0.3, 0.7, 0.75, 0.45, 0.6))[phase or 0]
        picture.box(x, y, *at.TOOL_CELL, 5, fill="#17191d")
        glass(picture, x + 1, y + 1, at.TOOL_CELL[0] - 2, at.TOOL_CELL[1] - 2, 4)
        wave_mark(picture, x + 7, centre_y, 14, 15, heights, ACCENT, 0.25, 4)
        wave_mark(picture, x + 7, centre_y, 14, 15, heights, "#9a9aff", 1, 1.9)
        return
    tool_plate(picture, x, y, lit)
    if name in ("rip", "burn"):
        picture.disc(centre_x - 2.5, centre_y, 8, stroke=colour, stroke_width=1.3, stroke_opacity=strength)
        picture.disc(centre_x - 2.5, centre_y, 2, stroke=colour, stroke_width=1.2, stroke_opacity=strength)
        begin = 40 * (phase or 0)
        for turn in (0, 180):
            picture.path(lines(arc(centre_x - 2.5, centre_y, 5.1, begin + turn - 100, begin + turn - 45, 8))(0, 0, 1), stroke=colour,
                         stroke_width=1, stroke_opacity=strength * 0.7, stroke_linecap="round")
        shift = (phase or 0) * 0.9
        arrow_x = centre_x + 9.2
        points = [(0, -3.5 - shift), (0, 3.2 - shift)] if name == "rip" else [(0, 3.5), (0, -2.5 + shift * 0.5)]
        tip = [(-2.3, -1.4 - shift), (0, -3.9 - shift), (2.3, -1.4 - shift)] if name == "rip" else None
        if tip:
            picture.path(lines(points, tip)(arrow_x, centre_y + 1.4, 1), stroke=colour, stroke_width=1.4, stroke_opacity=strength,
                         stroke_linecap="round", stroke_linejoin="round")
        else:
            picture.path(flame(arrow_x, centre_y, 1 + 0.07 * (phase or 0), phase or 0), fill="#ffb040" if lit else colour,
                         fill_opacity=strength)
    elif name == "convert":
        shift = (phase or 0) * 1.1
        picture.path(lines([(-8 + shift, -3.2), (6 + shift * 0.6, -3.2)], [(3.2 + shift * 0.6, -6), (6.2 + shift * 0.6, -3.2), (3.2 + shift * 0.6, -0.4)],
                           [(8 - shift, 3.4), (-6 - shift * 0.6, 3.4)], [(-3.2 - shift * 0.6, 0.6), (-6.2 - shift * 0.6, 3.4), (-3.2 - shift * 0.6, 6.2)])
                     (centre_x, centre_y, 1), stroke=colour, stroke_width=1.5, stroke_opacity=strength, stroke_linecap="round",
                     stroke_linejoin="round")
    else:
        picture.disc(centre_x, centre_y, 8, stroke=colour, stroke_width=1.3, stroke_opacity=strength)
        for width in ((3.4, 6.6)[(phase or 0) % 2], (0.01, 3.0, 5.4)[phase or 0]):
            picture.add(f'<ellipse cx="{number(centre_x)}" cy="{number(centre_y)}" rx="{number(width)}" ry="8" fill="none" '
                        f'stroke="{colour}" stroke-width="1" stroke-opacity="{number(strength * 0.8)}"/>')
        picture.path(lines([(-7.6, -2.6), (7.6, -2.6)], [(-7.6, 2.6), (7.6, 2.6)])(centre_x, centre_y, 1), stroke=colour, stroke_width=1,
                     stroke_opacity=strength * 0.8)


# --- the background ---

def title(picture, look):
    for name, place in at.WINDOW_KEYS.items():
        window_key(picture, name, place[0], place[1], look)
    channel(picture, *at.MENU_CHANNEL, 6)


def tools(picture, look):
    for name, (x, y) in at.TOOLS.items():
        tool_picture(picture, name, x, y, None, look)
    glass(picture, *at.FORMAT_LINE, 5)


def clock(picture):
    x, y, width, height = at.CLOCK
    glass(picture, x, y, width, height, 7)
    picture.box(x + 6, y + 6, 22, height - 12, 4, fill="#ffffff", fill_opacity=0.022)
    picture.box(x + 6.5, y + 6.5, 21, height - 13, 4, stroke="#ffffff", stroke_opacity=0.05, stroke_width=1)
    for name, (left, top, size, _) in at.STATE_LAMPS.items():
        picture.path(lamp_glyph(name, left, top, size), fill="#8a909c", fill_opacity=0.30)
    for left, top in at.BIG_DIGITS:
        segment_digit(picture, left, top, (11, 18), 8, ghost=True)
    for left, top in at.SMALL_DIGITS:
        segment_digit(picture, left, top, (8, 13), 8, ghost=True)
    for dot in (5.2, 12.0):
        picture.box(at.COLON[0] - 1.1, at.COLON[1] + dot, 2.2, 2.2, 0.6, fill=ACCENT, fill_opacity=0.75)
    picture.path(f"M46 {number(113.5)} L144 {number(113.5)}", stroke="#ffffff", stroke_opacity=0.06, stroke_width=1)
    stroke_text(picture, at.KHZ_LAMP[0] + 27, at.KHZ_LAMP[1] + 4, "kHz", MUTED, 1, 3.9, 0.8)
    stroke_text(picture, at.KBPS_LAMP[0] + 19, at.KBPS_LAMP[1] + 4, "kbps", MUTED, 1, 3.9, 0.8)


def knob(picture):
    x, y = at.KNOB_CENTRE
    radius = at.KNOB_WIDTH / 2
    # The scale stands round the rim, from the dead zone clockwise to its other end.
    for degrees in range(180, 421, 12):
        inner, outer = radius + 1.4, radius + (3.6 if (degrees - 180) % 60 == 0 else 2.6)
        picture.path(lines([arc(x, y, inner, degrees, degrees, 1)[0], arc(x, y, outer, degrees, degrees, 1)[0]])(0, 0, 1), stroke="#aab0bb",
                     stroke_opacity=0.5, stroke_width=0.8)
    picture.disc(x, y + 1.6, radius + 0.6, fill=picture.glow(x, y + 2, radius + 2, (0, "#000000", 0.8), (0.88, "#000000", 0.6), (1, "#000000", 0)))
    picture.disc(x, y, radius - 0.5, fill=picture.down(y - radius, y + radius, (0, "#0b0c0e"), (1, "#3c424b")))
    picture.disc(x, y, radius - 1.8, fill=picture.down(y - radius, y + radius, (0, "#59616e"), (0.5, "#363c45"), (1, "#1b1e23")))
    for i in range(60):
        begin = i * 6
        picture.path(lines([arc(x, y, radius - 5.2, begin, begin, 1)[0], arc(x, y, radius - 2.2, begin, begin, 1)[0]])(0, 0, 1),
                     stroke="#000000", stroke_opacity=0.28, stroke_width=1)
    face = radius - 5.4
    picture.disc(x, y, face, fill=picture.down(y - face, y + face, (0, "#454c57"), (1, "#262a31")))
    for degrees, strength in ((-150, 0.10), (-30, 0.10), (60, 0.06), (150, 0.05)):
        points = [(x, y)] + arc(x, y, face - 0.6, degrees - 14, degrees + 14, 8)
        picture.path("M" + " L".join(f"{number(px)} {number(py)}" for px, py in points) + " Z", fill="#ffffff", fill_opacity=strength * 0.6)
    picture.disc(x, y, face - 0.5, stroke_width=1,
                 stroke=picture.down(y - face, y + face, (0, "#ffffff", 0.28), (0.5, "#ffffff", 0.03), (1, "#000000", 0.5)))
    groove = 18
    picture.disc(x, y, groove, stroke="#0c0d10", stroke_width=7, stroke_opacity=0.35)
    picture.disc(x, y, groove - 7, fill=picture.down(y - 11, y + 11, (0, "#3b414b"), (1, "#2c3138")))
    picture.disc(x, y, groove - 7.5, stroke_width=1,
                 stroke=picture.down(y - 11, y + 11, (0, "#000000", 0.4), (1, "#ffffff", 0.12)))


def volume_mark(picture, x, y, size, lit):
    width, height = size
    picture.box(x + 0.5, y + 0.5, width - 1, height - 1, (width - 1) / 2, (height - 1) / 2,
                fill=picture.down(y, y + height, (0, "#08090a"), (1, "#2c3037")))
    if lit:
        centre_x, centre_y, radius = x + width / 2, y + height / 2, min(width, height) / 2
        picture.disc(centre_x, centre_y, radius, fill=picture.glow(centre_x, centre_y, radius, (0, ACCENT, 0.9), (0.6, ACCENT, 0.5), (1, ACCENT, 0)))
        picture.box(x + 1.8, y + 1.8, width - 3.6, height - 3.6, (width - 3.6) / 2, (height - 3.6) / 2,
                    fill=picture.down(y, y + height, (0, "#c8c8ff"), (1, ACCENT)))
    else:
        picture.box(x + 1.8, y + 1.8, width - 3.6, height - 3.6, (width - 3.6) / 2, (height - 3.6) / 2, fill="#14161a")


def speaker(picture, x, y):
    """The sign beside the knob's dead zone that says what it turns."""
    data = lines([(x - 5, y - 1.6), (x - 3, y - 1.6), (x - 0.2, y - 4), (x - 0.2, y + 4), (x - 3, y + 1.6), (x - 5, y + 1.6), (x - 5, y - 1.6)])
    picture.path(data(0, 0, 1), stroke="#9aa0ab", stroke_width=1.1, stroke_linejoin="round")
    picture.path(lines(arc(x + 0.6, y, 2.6, -45, 45, 6), arc(x + 0.6, y, 4.8, -45, 45, 8))(0, 0, 1), stroke="#9aa0ab", stroke_width=1,
                 stroke_linecap="round")


def position_line(picture, x, y, lit):
    width, height = at.POSITION_LINE[2], at.POSITION_LINE[3]
    if lit:
        picture.box(x, y, width, height, 3, fill=picture.down(y, y + height, (0, "#b0b0ff"), (0.5, ACCENT), (1, "#5a5ad0")))
        picture.box(x + 1.5, y + 1, width - 3, 1.2, 0.6, fill="#ffffff", fill_opacity=0.35)
    else:
        picture.box(x - 1, y - 1, width + 2, height + 2.2, 4,
                    fill=picture.down(y - 1, y + height + 1, (0, "#08090a", 0.8), (1, "#ffffff", 0.14)))
        picture.box(x, y, width, height, 3, fill=picture.down(y, y + height, (0, "#0d0e10"), (1, "#1a1c20")))


def thumb(picture, x, y, lit):
    width, height = at.THUMB
    centre_x, centre_y = x + width / 2, y + height / 2
    # The lit line goes on under the round thumb, up to its middle.
    line_top = y + (height - at.POSITION_LINE[3]) / 2
    picture.box(x, line_top, width / 2, at.POSITION_LINE[3],
                fill=picture.down(line_top, line_top + at.POSITION_LINE[3], (0, "#b0b0ff"), (0.5, ACCENT), (1, "#5a5ad0")))
    if lit:
        picture.disc(centre_x, centre_y, 6, fill=picture.glow(centre_x, centre_y, 6, (0, ACCENT, 0.8), (1, ACCENT, 0)))
    picture.disc(centre_x, centre_y + 0.4, 5.4, fill="#08090a", fill_opacity=0.75)
    picture.disc(centre_x, centre_y, 4.9, fill=picture.down(y, y + height, (0, "#e3e5ee"), (0.5, "#a2a8b6"), (1, "#6d7380")))
    picture.disc(centre_x, centre_y, 1.9, fill="#5a5ae0" if lit else "#3a3e48")


def dot(picture, x, y):
    centre = at.DOT / 2
    picture.disc(x + centre, y + centre, centre, fill=picture.glow(x + centre, y + centre, centre, (0, ACCENT, 0.9), (0.55, ACCENT, 0.6), (1, ACCENT, 0)))
    picture.disc(x + centre, y + centre, 2.5, fill=picture.down(y + 1, y + 7, (0, "#e6e6ff"), (1, "#9090ff")))


def background(look):
    picture = Picture(*at.WINDOW)
    body(picture, *at.WINDOW, *at.CORNER, random.Random(GRAIN_SEED))
    title(picture, look)
    tools(picture, look)
    clock(picture)
    glass(picture, *at.DISPLAY_FRAME, 7)
    for name, place in at.MODES.items():
        key(picture, name, place, place[0], place[1], look)
    for name, place in at.TRANSPORT.items():
        transport_key(picture, name, place[0], place[1], look)
    for name, place in at.SIDE_KEYS.items():
        key(picture, name, place, place[0], place[1], look)
    knob(picture)
    speaker(picture, 196, 217)
    for place, size, _, _ in at.VOLUME_MARKS:
        volume_mark(picture, *place, size, False)
    position_line(picture, at.POSITION_LINE[0], at.POSITION_LINE[1], False)
    glass(picture, *at.SMALL_TOTAL, 4, reflection=False)
    glass(picture, *at.LIST, 6, reflection=False)
    for name, place in at.LIST_KEYS.items():
        key(picture, name, place, place[0], place[1], look)
    return picture


# --- the strip ---

def display_frame(picture, x, y):
    # The same pane that the background has there, so that no piece of it shows a seam.
    glass(picture, x, y, *at.DISPLAY_FRAME[2:], 7)


def lamp_cell(picture, cell, size, text, shadow_top):
    """A lamp's text at `cell` and the dark glass under it at `shadow_top`."""
    (x, y), (width, height) = cell, size
    picture.box(x, shadow_top, width, height, 2, fill=ACCENT, fill_opacity=0.05)
    if text is None:
        for i in range(3):
            picture.disc(x + width / 2 + (i - 1) * 3.6, y + height / 2, 0.9, fill="#a0a0ff")
        return
    long = sum(2.4 if letter == "." else 4 for letter in text) - 2 + 0.9
    size_x = min(1.15, (width - 1.6) / long)
    left = x + (width - (long - 0.9) * size_x) / 2
    for colour, opacity, thick in ((ACCENT, 0.25, 2.2), ("#a6a6ff", 1, 0.95)):
        stroke_text(picture, left, y + 3.6, text, colour, size_x, 4 * size_x, thick, opacity, 2.4 * size_x)


def strip():
    picture = Picture(*at.STRIP)
    for name, top in at.TOOL_FRAME_TOPS.items():
        for phase, left in enumerate(at.TOOL_FRAME_LEFTS):
            tool_picture(picture, name, left, top, phase, "hover")
    for name in at.TRANSPORT:
        transport_key(picture, name, *at.TRANSPORT_HOVER[name], "hover")
        transport_key(picture, name, *at.TRANSPORT_PRESSED[name], "pressed")
    groups = ((at.MODES, ((at.MODES_HOVER, "hover"), (at.MODES_LIT, "lit"))),
              (at.LIST_KEYS, ((at.LIST_KEYS_HOVER, "hover"), (at.LIST_KEYS_PRESSED, "pressed"))),
              (at.SIDE_KEYS, ((at.SIDE_KEYS_HOVER, "hover"), (at.SIDE_KEYS_PRESSED, "pressed"), (at.SIDE_KEYS_LIT, "lit"))))
    for places, looks in groups:
        for name, place in places.items():
            for cuts, look in looks:
                key(picture, name, place, *cuts[name], look)
    for name in at.WINDOW_KEYS:
        window_key(picture, name, *at.WINDOW_KEYS_HOVER[name], "hover")
        window_key(picture, name, *at.WINDOW_KEYS_PRESSED[name], "pressed")
    for name, (x, y) in at.STATE_LAMPS_LIT.items():
        data = lamp_glyph(name, x, y, 12)
        colour = lamp_colour(name)
        picture.path(data, stroke=colour, stroke_width=3.4, stroke_opacity=0.22, stroke_linejoin="round")
        picture.path(data, fill=colour)
    for digit in range(10):
        segment_digit(picture, digit * 12 + 4, 294, (11, 18), 8, ghost=True)
        segment_digit(picture, digit * 12 + 4, 238, (11, 18), digit)
        segment_digit(picture, digit * 9 + 4, 313, (8, 13), 8, ghost=True)
        segment_digit(picture, digit * 9 + 4, 257, (8, 13), digit)
    lamp_cell(picture, (3, 272), (24, 12), "44.1", 329)
    lamp_cell(picture, (28, 272), (24, 12), None, 329)
    for rate, (left, width) in at.KBPS_CUTS.items():
        lamp_cell(picture, (left, 272), (width, 12), rate, 329)
    for _, size, lit, dark in at.VOLUME_MARKS:
        volume_mark(picture, *lit, size, True)
        volume_mark(picture, *dark, size, False)
    for letter, left in at.TINY_DIGITS.items():
        tiny_figure(picture, left, letter)
    display_frame(picture, *at.DISPLAY_FRAME_IN_STRIP)
    position_line(picture, *at.POSITION_IN_STRIP, True)
    thumb(picture, *at.THUMB_IN_STRIP, False)
    thumb(picture, *at.THUMB_HELD_IN_STRIP, True)
    dot(picture, *at.DOT_IN_STRIP)
    return picture


def tiny_figure(picture, left, letter):
    """As high as its cut; a pixel is kept free at the right where there are four."""
    for run in at.TINY_STROKES[letter]:
        data = "M" + " L".join(f"{number(left + x)} {number(at.TINY_TOP + y)}" for x, y in run)
        picture.path(data, stroke="#b9bdf2", stroke_width=0.9, stroke_linecap="round", stroke_linejoin="round")
