"""Where everything of a window stands, told once: for the pictures that are drawn here, and as a header for the program.

Places are tuples of pixels: rectangles (x, y, width, height), points (x, y), sizes (width, height). Each call adds a constant
to the header and gives back what it was given, for the drawing.
"""

import os
import subprocess

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, os.pardir)


class Key:
    """A button: its place in the window, and where the strip holds its looks."""

    def __init__(self, place, hover, pressed, lit=None):
        self.place, self.corner, self.size = place, place[:2], place[2:]
        self.looks = {"hover": hover, "pressed": pressed}
        if lit:
            self.looks["lit"] = lit

    def code(self):
        looks = ", ".join(braced(place) for place in self.looks.values())
        return f"{{{braced(self.place)}, {looks}}}"


def braced(values):
    return "{" + ", ".join(str(value) for value in values) + "}"


class Layout:
    def __init__(self, path, namespace, comment):
        self.path = os.path.join(ROOT, path)
        self.namespace = namespace
        self.lines = [f"// {line}" for line in comment]
        self.lines += ["// Written by tools/make_skin, which draws the pictures from the same numbers: do not edit.", "#pragma once", "",
                       '#include "skin/key_layout.h"', "", "#include <QPoint>", "#include <QRect>", "#include <QSize>", "#include <array>",
                       "", f"namespace kestrune::{namespace} {{"]

    def section(self, text):
        self.lines += ["", f"// --- {text} ---"]

    def note(self, text):
        self.lines.append(f"// {text}")

    def add(self, kind, name, code, given):
        self.lines.append(f"inline constexpr {kind} {name}{code};")
        return given

    def number(self, name, value):
        return self.add("int", name, f" = {value}", value)

    def point(self, name, *place):
        return self.add("QPoint", name, "(" + ", ".join(map(str, place)) + ")", place)

    def size(self, name, *size):
        return self.add("QSize", name, "(" + ", ".join(map(str, size)) + ")", size)

    def rect(self, name, *place):
        return self.add("QRect", name, "(" + ", ".join(map(str, place)) + ")", place)

    def key(self, name, *place_and_looks):
        key = Key(*place_and_looks)
        return self.add("KeyLayout", name, f" = {key.code()}", key)

    def many(self, kind, name, items, codes):
        return self.add(f"std::array<{kind}, {len(codes)}>", name, " = {{" + ", ".join(codes) + "}}", items)

    def numbers(self, name, *values):
        return self.many("int", name, values, [str(value) for value in values])

    def points(self, name, *places):
        return self.many("QPoint", name, places, [braced(place) for place in places])

    def rects(self, name, *places):
        return self.many("QRect", name, places, [braced(place) for place in places])

    def keys(self, name, *all_places_and_looks):
        keys = [Key(*one) for one in all_places_and_looks]
        return self.many("KeyLayout", name, keys, [key.code() for key in keys])

    def code(self, text):
        """Lines of the program that go with the numbers."""
        self.lines += ["", *text.strip("\n").split("\n")]

    def text(self):
        raw = "\n".join([*self.lines, "", f"}} // namespace kestrune::{self.namespace}", ""])
        return subprocess.run(["clang-format", "--assume-filename=" + self.path], input=raw, capture_output=True, text=True, check=True).stdout
