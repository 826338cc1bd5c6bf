"""The parts the body is made of: panels, keys and the glyphs on them, each in its looks."""

import math

from svg import ACCENT, ACCENT_LIGHT, AMBER, BODY_BOTTOM, BODY_TOP, GLASS, RED, moved, number

# The looks of a key. "off" is that of a disabled one.
LOOKS = ("normal", "hover", "pressed", "lit", "off")


def glass(picture, x, y, width, height, radius=5, reflection=True):
    """A dark pane let into the body: shadow at its upper edge, light on the body's lower lip."""
    picture.box(x - 1, y - 1, width + 2, height + 2.4, radius + 1,
                fill=picture.down(y - 1, y + height + 1.4, (0, "#0a0b0d", 0.75), (0.5, "#0a0b0d", 0.25), (1, "#ffffff", 0.13)))
    picture.box(x, y, width, height, radius, fill=GLASS)
    for step in range(4):
        inset = 0.5 + step
        if height > 2 * inset + 4:
            picture.box(x + inset, y + inset, width - 2 * inset, height - 2 * inset, max(radius - step, 1), stroke="#000000",
                        stroke_opacity=0.42 - 0.1 * step, stroke_width=1)
    if reflection:
        shine = min(height * 0.42, 26)
        picture.box(x + 1.5, y + 1.2, width - 3, shine, max(radius - 1.5, 1),
                    fill=picture.down(y + 1, y + 1 + shine, (0, "#ffffff", 0.07), (1, "#ffffff", 0.008)))


def channel(picture, x, y, width, height, radius):
    """A shallow groove in the body."""
    picture.box(x, y, width, height, radius,
                fill=picture.down(y, y + height, (0, "#000000", 0.30), (0.35, "#000000", 0.16), (1, "#000000", 0.10)))
    picture.box(x + 0.5, y + 0.5, width - 1, height - 1, radius, stroke=picture.down(y, y + height, (0, "#000000", 0.35),
                (0.6, "#000000", 0), (1, "#ffffff", 0.12)), stroke_width=1)


def round_key(picture, x, y, size, look, glyph):
    """A round key in a well. (x, y) is the corner of its square."""
    centre_x, centre_y, radius = x + size / 2, y + size / 2, size / 2
    picture.disc(centre_x, centre_y, radius - 0.3,
                 fill=picture.down(y, y + size, (0, "#0c0d10", 0.9), (0.55, "#101215", 0.75), (1, "#59606c", 0.55)))
    picture.disc(centre_x, centre_y, radius - 1.4, fill="#131518")
    sunk = 1 if look == "pressed" else 0
    cap = radius - 2.6
    top, bottom = {"pressed": ("#1f2228", "#2c3138"), "hover": ("#535b68", "#30353d")}.get(look, ("#4b525e", "#2a2e35"))
    cap_y = centre_y + sunk
    picture.disc(centre_x, cap_y, cap, fill=picture.down(cap_y - cap, cap_y + cap, (0, top), (1, bottom)))
    edge = 0.05 if look == "pressed" else 0.22
    picture.disc(centre_x, cap_y, cap - 0.5, stroke_width=1,
                 stroke=picture.down(cap_y - cap, cap_y + cap, (0, "#ffffff", edge), (0.45, "#ffffff", 0.02), (1, "#000000", 0.35)))
    dish = cap * 0.74
    picture.disc(centre_x, cap_y, dish, fill=picture.down(cap_y - dish, cap_y + dish, (0, "#000000", 0.16), (1, "#ffffff", 0.035)))
    halo(picture, centre_x, cap_y, cap, look)
    glyph(picture, centre_x, cap_y, size / 30, look)


def flat_key(picture, x, y, width, height, look, glyph, radius=4.5, lit_reach=None):
    """A rectangular key in a well. The light under it reaches so far from its middle."""
    picture.box(x, y, width, height, radius,
                fill=picture.down(y, y + height, (0, "#0c0d10", 0.85), (0.6, "#101215", 0.7), (1, "#59606c", 0.5)))
    sunk = 1 if look in ("pressed", "lit") else 0
    top, bottom = {"pressed": ("#1f2228", "#2a2f36"), "lit": ("#1b1e26", "#272b38"), "hover": ("#4b525e", "#31363e")}.get(
        look, ("#434a55", "#2b3037"))
    left, upper, wide, high = x + 1.2, y + 1.2, width - 2.4, height - 2.6
    picture.box(left, upper, wide, high, radius - 1, fill=picture.down(upper, upper + high, (0, top), (1, bottom)))
    edge = 0.04 if sunk else 0.2
    picture.box(left + 0.5, upper + 0.5, wide - 1, high - 1, radius - 1.4, stroke_width=1,
                stroke=picture.down(upper, upper + high, (0, "#ffffff", edge), (0.5, "#ffffff", 0.02), (1, "#000000", 0.3)))
    centre_x, centre_y = x + width / 2, y + height / 2 - 0.1 + sunk
    halo(picture, centre_x, centre_y, lit_reach or min(width / 2 - 1.5, height / 2 + 6), look, height / 2 - 2)
    glyph(picture, centre_x, centre_y, 1, look)


def halo(picture, x, y, radius, look, radius_y=None):
    strength = {"hover": 0.42, "pressed": 0.5, "lit": 0.46}.get(look)
    if strength is None:
        return
    stops = ((0, ACCENT, strength), (0.45, ACCENT, strength * 0.45), (1, ACCENT, 0))
    if radius_y is None:
        picture.disc(x, y, radius, fill=picture.glow(x, y, radius, *stops))
    else:
        picture.box(x - radius, y - radius_y, 2 * radius, 2 * radius_y, min(radius, radius_y, 4), fill=picture.glow(x, y, radius, *stops))


def glyph_colour(picture, look, top, bottom):
    if look in ("hover", "lit"):
        return picture.down(top, bottom, (0, ACCENT_LIGHT), (1, "#a9a9ff"))
    if look == "pressed":
        return "#f2f3ff"
    return picture.down(top, bottom, (0, "#b4bac5"), (1, "#d0d4dc"))


def engraved(picture, draw, look, top, bottom):
    """Draws a glyph with the dark upper and light lower edge of an engraving. `draw(dx, dy, colour, opacity)`."""
    strength = 0.35 if look == "off" else 1
    if look in ("normal", "off"):
        draw(0, -0.8, "#000000", 0.55 * strength)
        draw(0, 0.8, "#ffffff", 0.10 * strength)
    draw(0, 0, glyph_colour(picture, look, top, bottom), strength)


def shape_glyph(polygons, discs=(), colours=None):
    """A glyph of filled polygons and discs in a square of 30, its middle at (0, 0)."""
    colours = colours or {}

    def draw_glyph(picture, x, y, scale, look):
        def draw(dx, dy, colour, opacity):
            for points in polygons:
                picture.path(moved(points, x + dx, y + dy, scale), fill=colour, fill_opacity=opacity, stroke=colour,
                             stroke_opacity=opacity, stroke_width=0.8 * scale, stroke_linejoin="round")
            for disc_x, disc_y, radius in discs:
                picture.disc(x + dx + disc_x * scale, y + dy + disc_y * scale, radius * scale,
                             fill=colours.get(look, colour) if opacity >= 0.35 and (dx, dy) == (0, 0) else colour,
                             fill_opacity=opacity)
        engraved(picture, draw, look, y - 6 * scale, y + 6 * scale)
    return draw_glyph


def line_glyph(data, width=1.5, fills=()):
    """A glyph of strokes; `data` and `fills` are functions of (x, y) that give path data."""
    def draw_glyph(picture, x, y, scale, look):
        def draw(dx, dy, colour, opacity):
            for path in data:
                picture.path(path(x + dx, y + dy, scale), stroke=colour, stroke_opacity=opacity, stroke_width=width * scale,
                             stroke_linecap="round", stroke_linejoin="round")
            for path in fills:
                picture.path(path(x + dx, y + dy, scale), fill=colour, fill_opacity=opacity)
        engraved(picture, draw, look, y - 7 * scale, y + 7 * scale)
    return draw_glyph


def lines(*runs):
    """Path data from runs of points, open."""
    def data(x, y, scale):
        return " ".join("M" + " L".join(f"{number(x + px * scale)} {number(y + py * scale)}" for px, py in run) for run in runs)
    return data


def closed(*runs):
    def data(x, y, scale):
        return " ".join(moved(run, x, y, scale) for run in runs)
    return data


def arc(centre_x, centre_y, radius, begin, end, steps=18):
    """Points of an arc, degrees clockwise from the right."""
    return [(centre_x + radius * math.cos(math.radians(begin + (end - begin) * i / steps)),
             centre_y + radius * math.sin(math.radians(begin + (end - begin) * i / steps))) for i in range(steps + 1)]


def bar(left, top, right, bottom):
    return [(left, top), (right, top), (right, bottom), (left, bottom)]


GLYPHS = {
    "previous": shape_glyph([[(4.6, -4.8), (4.6, 4.8), (-2.6, 0)], bar(-5, -4.8, -3.4, 4.8)]),
    "next": shape_glyph([[(-4.6, -4.8), (-4.6, 4.8), (2.6, 0)], bar(3.4, -4.8, 5, 4.8)]),
    "play": shape_glyph([[(-3.2, -5), (-3.2, 5), (5, 0)]]),
    "pause": shape_glyph([bar(-4, -4.6, -1.6, 4.6), bar(1.6, -4.6, 4, 4.6)]),
    "stop": shape_glyph([bar(-3.9, -3.9, 3.9, 3.9)]),
    "record": shape_glyph([], [(0, 0, 4.6)], {"normal": "#d8665e", "off": RED, "hover": RED, "pressed": "#ff8a82", "lit": RED}),
    "close": line_glyph([lines([(-3.2, -3.2), (3.2, 3.2)], [(-3.2, 3.2), (3.2, -3.2)])], 1.6),
    "minimise": line_glyph([lines([(-3.4, 2.8), (3.4, 2.8)])], 1.6),
    "add": line_glyph([lines([(-4, 0), (4, 0)], [(0, -4), (0, 4)])], 1.6),
    "delete": line_glyph([lines([(-4, 0), (4, 0)])], 1.6),
    "open": line_glyph([lines([(-5.5, 3.6), (-5.5, -3.4), (-2.2, -3.4), (-1, -2), (4.2, -2), (4.2, -0.4)],
                              [(-5.5, 3.6), (-3.6, -0.4), (6, -0.4), (4.2, 3.6), (-5.5, 3.6)])], 1.2),
    "save": line_glyph([lines([(0, -4.2), (0, 1)], [(-2.6, -1.6), (0, 1.2), (2.6, -1.6)],
                              [(-5, 1.2), (-5, 3.9), (5, 3.9), (5, 1.2)])], 1.3),
    "up": line_glyph([lines([(-3.6, 1.8), (0, -2), (3.6, 1.8)])], 1.7),
    "down": line_glyph([lines([(-3.6, -1.8), (0, 2), (3.6, -1.8)])], 1.7),
    "continuous": line_glyph([lines([(-9, -3.2), (5, -3.2)], [(-9, 0), (1, 0)], [(-9, 3.2), (-1, 3.2)]),
                              lines([(7, -3.2), (7, 3.6)], [(4.4, 1), (7, 3.8), (9.6, 1)])], 1.4),
    "shuffle": line_glyph([lines([(-9, -3), (-5, -3), (2, 3), (8, 3)], [(-9, 3), (-5, 3), (-2.4, 0.8)], [(-0.4, -0.9), (2, -3), (8, -3)],
                                 [(6, -5.2), (8.4, -3), (6, -0.8)], [(6, 0.8), (8.4, 3), (6, 5.2)])], 1.4),
    "repeat": line_glyph([lines([(-8, 0.4), (-8, -1)] + arc(-5.6, -1, 2.4, 180, 270, 6) + [(7, -3.4)], [(4.8, -5.6), (7.2, -3.4), (4.8, -1.2)],
                                [(8, -0.4), (8, 1)] + arc(5.6, 1, 2.4, 0, 90, 6) + [(-7, 3.4)], [(-4.8, 1.2), (-7.2, 3.4), (-4.8, 5.6)])], 1.4),
    "equalizer": line_glyph([lines([(-6, -6), (-6, 6)], [(0, -6), (0, 6)], [(6, -6), (6, 6)])], 1.1,
                            [closed(bar(-8, 0.6, -4, 3), bar(-2, -4, 2, -1.6), bar(4, -0.6, 8, 1.8))]),
    "colours": line_glyph([lines(arc(0, 0, 6.4, 40, 360, 28)),], 1.3,
                          [closed(arc(-2.6, -2.6, 1.3, 0, 345, 12)), closed(arc(2.4, -3, 1.3, 0, 345, 12)),
                           closed(arc(-3.4, 1.8, 1.3, 0, 345, 12)), closed(arc(0.8, 3.6, 1.3, 0, 345, 12))]),
}


def body(picture, width, height, corner_x, corner_y, grain, shade_height=None):
    """The machined block: graphite from above, brushed grain, a light edge on top and a dark one below. Below `shade_height` it
    grows no darker."""
    picture.box(0, 0, width, height, corner_x, corner_y, fill="#0d0e10")
    picture.box(1, 1, width - 2, height - 2, corner_x - 1, corner_y - 1,
                fill=picture.down(1, (shade_height or height) - 1, (0, BODY_TOP), (0.18, "#30353c"), (1, BODY_BOTTOM)))
    for line in range(3, height - 3):
        # The corners stay free of grain.
        from_edge = min(line, height - line)
        inset = 1.5
        if from_edge < corner_y:
            inset = corner_x * (1 - math.sqrt(max(0.0, 1 - ((corner_y - from_edge) / corner_y) ** 2))) + 1.5
        shade = grain.random()
        picture.box(inset, line, width - 2 * inset, 1, fill="#ffffff" if shade > 0.5 else "#000000",
                    fill_opacity=round(abs(shade - 0.5) * 0.05, 3))
        start = inset + grain.random() * (width - 2 * inset) * 0.8
        length = min(20 + grain.random() * 120, width - inset - start)
        picture.box(start, line, length, 0.6, fill="#ffffff", fill_opacity=round(0.006 + grain.random() * 0.012, 3))
    picture.box(1.5, 1.5, width - 3, height - 3, corner_x - 1.5, corner_y - 1.5, stroke_width=1,
                stroke=picture.down(1, height - 1, (0, "#ffffff", 0.24), (0.08, "#ffffff", 0.08), (0.9, "#ffffff", 0.03), (1, "#000000", 0.5)))


def wave_mark(picture, x, y, width, height, heights, colour, opacity=1.0, stroke=2.0):
    """Upright strokes, the emblem's wave."""
    step = width / (len(heights) - 1)
    for i, part in enumerate(heights):
        half = height * part / 2
        at = x + i * step
        picture.path(f"M{number(at)} {number(y - half)} L{number(at)} {number(y + half)}", stroke=colour, stroke_width=stroke,
                     stroke_linecap="round", stroke_opacity=opacity)


def lamp_glyph(name, x, y, size):
    """Path data of a state lamp in its square."""
    if name == "stopped":
        return moved(bar(-3.2, -3.2, 3.2, 3.2), x + size / 2, y + size / 2)
    if name == "playing":
        return moved([(-2.8, -3.8), (-2.8, 3.8), (3.8, 0)], x + size / 2, y + size / 2)
    return (moved(bar(-3.4, -3.6, -1.2, 3.6), x + size / 2, y + size / 2) + " "
            + moved(bar(1.2, -3.6, 3.4, 3.6), x + size / 2, y + size / 2))


def lamp_colour(name):
    return {"stopped": ACCENT, "playing": ACCENT, "paused": AMBER}[name]
