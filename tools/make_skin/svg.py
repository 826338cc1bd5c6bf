"""Pieces of SVG that QtSvg draws: fills, gradients, strokes, text. No filters, masks or clips, which it passes over."""

ACCENT = "#8080ff"
ACCENT_LIGHT = "#d7daf5"
AMBER = "#ffb040"
RED = "#ff5a4f"
BODY_TOP, BODY_BOTTOM = "#353a42", "#1d2025"
GLASS = "#141414"
TEXT = "#c3c8d2"
MUTED = "#8a909c"


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".")


class Picture:
    """Collects shapes; one picture is one file."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self._defs = []
        self._shapes = []
        self._gradients = {}

    def add(self, shape):
        self._shapes.append(shape)

    def _gradient(self, kind, attributes, stops):
        body = "".join(f'<stop offset="{number(at)}" stop-color="{colour}"'
                       + (f' stop-opacity="{number(opacity)}"' if opacity < 1 else "") + "/>"
                       for at, colour, opacity in stops)
        key = (kind, attributes, body)
        if key not in self._gradients:
            name = f"g{len(self._gradients)}"
            self._gradients[key] = name
            self._defs.append(f'<{kind} id="{name}" gradientUnits="userSpaceOnUse" {attributes}>{body}</{kind}>')
        return f"url(#{self._gradients[key]})"

    def down(self, top, bottom, *stops):
        """A gradient from y = top to y = bottom; stops are (place, colour[, opacity])."""
        attributes = f'x1="0" y1="{number(top)}" x2="0" y2="{number(bottom)}"'
        return self._gradient("linearGradient", attributes, [(*stop, 1)[:3] for stop in stops])

    def across(self, left, right, *stops):
        attributes = f'x1="{number(left)}" y1="0" x2="{number(right)}" y2="0"'
        return self._gradient("linearGradient", attributes, [(*stop, 1)[:3] for stop in stops])

    def glow(self, x, y, radius, *stops):
        attributes = f'cx="{number(x)}" cy="{number(y)}" r="{number(radius)}"'
        return self._gradient("radialGradient", attributes, [(*stop, 1)[:3] for stop in stops])

    def box(self, x, y, width, height, radius=0, radius_y=None, **style):
        round_y = radius if radius_y is None else radius_y
        rounding = f' rx="{number(radius)}" ry="{number(round_y)}"' if radius else ""
        self.add(f'<rect x="{number(x)}" y="{number(y)}" width="{number(width)}" height="{number(height)}"'
                 f"{rounding}{_style(style)}/>")

    def disc(self, x, y, radius, **style):
        self.add(f'<circle cx="{number(x)}" cy="{number(y)}" r="{number(radius)}"{_style(style)}/>')

    def path(self, data, **style):
        self.add(f'<path d="{data}"{_style(style)}/>')

    def text_line(self, x, y, words, face, pixels, weight, **style):
        """A line of text around x, on the base line y. It takes plain colours only."""
        self.add(f'<text x="{number(x)}" y="{number(y)}" text-anchor="middle" font-family="{face}" font-size="{number(pixels)}" '
                 f'font-weight="{weight}"{_style(style)}>{words}</text>')

    def text(self):
        defs = "<defs>" + "".join(self._defs) + "</defs>" if self._defs else ""
        return (f'<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" width="{self.width}" '
                f'height="{self.height}" viewBox="0 0 {self.width} {self.height}">\n{defs}\n'
                + "\n".join(self._shapes) + "\n</svg>\n")


def _style(style):
    style.setdefault("fill", "none")
    parts = []
    for name, value in style.items():
        shown = number(value) if isinstance(value, (int, float)) else value
        parts.append(f' {name.replace("_", "-")}="{shown}"')
    return "".join(parts)


def moved(points, x, y, scale=1.0):
    """Polygon data from points."""
    return "M" + " L".join(f"{number(x + px * scale)} {number(y + py * scale)}" for px, py in points) + " Z"
