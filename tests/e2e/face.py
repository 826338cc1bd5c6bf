"""The main window's face: where its controls stand, and pictures of it that are compared pixel by pixel."""

import subprocess
import time

import harness

# Places in the window at scale 1: left, top, width, height.
WINDOW_KEYS = {"close": (362, 5, 18, 18), "minimise": (341, 5, 18, 18)}
TOOL_BAR = {"rip": (46, 49, 28, 24), "burn": (78, 49, 28, 24), "convert": (110, 49, 28, 24), "sites": (142, 49, 28, 24)}
TRANSPORT = {"previous": (11, 176, 30, 30), "play": (44, 169, 44, 44), "pause": (91, 176, 30, 30),
             "stop": (124, 176, 30, 30), "next": (157, 176, 30, 30), "record": (272, 174, 34, 34)}
MODES = {"continuous": (326, 77, 57, 22), "shuffle": (326, 103, 57, 22), "repeat": (326, 129, 57, 22)}
SIDE_KEYS = {"equalizer": (314, 177, 32, 28), "colours": (351, 177, 32, 28)}
LIST_KEYS = {name: (12 + 27 * index, 365, 24, 16)
             for index, name in enumerate(("add", "delete", "open", "save", "up", "down"))}
BUTTONS = {**WINDOW_KEYS, **TOOL_BAR, **TRANSPORT, **MODES, **SIDE_KEYS, **LIST_KEYS}
MENU_LABELS = {}
_left = 12
for _name, _width in zip(("File", "Play", "Rip", "Burn", "Convert", "Sites", "Help", "Options"),
                         (38, 41, 37, 43, 61, 46, 43, 60)):
    MENU_LABELS[_name] = (_left, 26, _width, 19)
    _left += _width
LAMPS = {"stopped": (22, 86, 12, 12), "playing": (22, 105, 12, 12), "paused": (22, 124, 12, 12)}
VOLUME_MARKS = ((196, 161, 8, 8), (246, 165, 8, 8), (253, 179, 10, 9), (249, 206, 11, 10))
KNOB = (195, 165, 56, 56)
POSITION_BAR = (11, 226, 198, 12)
IDLE_PICTURE = (12, 49, 28, 24)
CLOCK = (40, 82, 110, 34)
DISPLAY = (157, 77, 162, 74)
LIST = (12, 242, 360, 119)
BODY = (100, 159)  # nothing but the body stands here
BYTES_PER_PIXEL = 3
FADE_S = 0.12
TIP_S = 0.7  # a mouse that rests as long brings up a tip, which would be in the picture


class Picture:
    """What the screen shows of the window, as rows of RGB bytes. Places are those of scale 1."""

    def __init__(self, data, width, scale):
        self.scale = scale
        step = width * BYTES_PER_PIXEL
        harness.check(data and len(data) % step == 0, f"a picture {width} pixels wide has {len(data)} bytes")
        self.rows = [data[at : at + step] for at in range(0, len(data), step)]

    def part(self, place):
        left, top, width, height = (value * self.scale for value in place)
        return b"".join(row[left * BYTES_PER_PIXEL : (left + width) * BYTES_PER_PIXEL]
                        for row in self.rows[top : top + height])

    def without(self, *places):
        """All but these places, which are painted black."""
        rows = list(self.rows)
        for left, top, width, height in (tuple(value * self.scale for value in place) for place in places):
            for y in range(top, top + height):
                row, begin = rows[y], left * BYTES_PER_PIXEL
                rows[y] = row[:begin] + bytes(width * BYTES_PER_PIXEL) + row[begin + width * BYTES_PER_PIXEL :]
        return b"".join(rows)

    def with_part(self, other, place):
        """This picture with one place as another has it."""
        left, top, width, height = (value * self.scale for value in place)
        begin, end = left * BYTES_PER_PIXEL, (left + width) * BYTES_PER_PIXEL
        rows = [row[:begin] + theirs[begin:end] + row[end:] if top <= y < top + height else row
                for y, (row, theirs) in enumerate(zip(self.rows, other.rows))]
        return Picture(b"".join(rows), len(self.rows[0]) // BYTES_PER_PIXEL, self.scale)

    def where_not(self, other, *without):
        """What of the picture differs from another, in words."""
        mine, theirs = self.without(*without), other.without(*without)
        step = len(self.rows[0])
        places = [divmod(at, step) for at in range(0, len(mine), BYTES_PER_PIXEL)
                  if mine[at : at + BYTES_PER_PIXEL] != theirs[at : at + BYTES_PER_PIXEL]]
        if not places:
            return "nothing"
        columns = [at // BYTES_PER_PIXEL // self.scale for _, at in places]
        rows = [y // self.scale for y, _ in places]
        return f"{len(places)} pixels in x {min(columns)} to {max(columns)}, y {min(rows)} to {max(rows)}"


def middle_of(place):
    left, top, width, height = place
    return left + width // 2, top + height // 2


class Face:
    """The main window of a running program at a scale of 1 or 2. Lengths are those of scale 1."""

    def __init__(self, stage, program, scale=1):
        self.stage, self.program, self.scale = stage, program, scale
        _, _, self._width, height = program.place()
        size = harness.WINDOW_WIDTH * scale, harness.WINDOW_HEIGHT * scale
        harness.check((self._width, height) == size, f"the window is {self._width} x {height} at scale {scale}")

    def picture(self):
        answer = subprocess.run(["import", "-silent", "-window", str(self.program.window), "-depth", "8", "rgb:-"],
                                env=self.stage.env, stdin=subprocess.DEVNULL, capture_output=True)
        return Picture(answer.stdout, self._width, self.scale)

    def still(self, *moving, after_s=FADE_S + 0.04, timeout_s=10.0):
        """The picture once nothing but the places that always move changes any more."""
        time.sleep(after_s)
        last = self.picture()

        def no_change():
            nonlocal last
            before, last = last, self.picture()
            return last if before.without(*moving) == last.without(*moving) else None
        return harness.wait_for(no_change, "the window to stand still", timeout_s, step_s=0.03)

    def await_picture(self, matches, what, timeout_s=5.0):
        """The first picture that matches."""
        def found():
            now = self.picture()
            return now if matches(now) else None
        return harness.wait_for(found, what, timeout_s)

    def point_to(self, x, y):
        self.program.pointer_to(round(x * self.scale), round(y * self.scale))

    def point_at(self, place):
        self.point_to(*middle_of(place))

    def leave(self):
        """Onto the body, by two moves as a hand makes."""
        self.point_to(*BODY)
        self.point_to(BODY[0] + 1, BODY[1])

    def press(self):
        self.stage.xdotool("mousedown", 1)

    def release(self):
        self.stage.xdotool("mouseup", 1)

    def click(self, place):
        self.point_at(place)
        self.stage.xdotool("click", 1)

    def volume_full(self):
        """A click on the middle of the knob only gives it the keys."""
        self.click(KNOB)
        time.sleep(0.1)
        self.stage.key("End")
        time.sleep(0.1)

    def on_screen(self, x, y):
        """Of a point of the window, in pixels of the screen."""
        left, top, _, _ = self.program.place()
        return left + round(x * self.scale), top + round(y * self.scale)


def scale_from(arguments):
    return int(arguments[0]) if arguments else 1


def stage_at(scale):
    """A stage, not yet entered, whose programs run at that scale."""
    return _ScaledStage(scale)


class _ScaledStage(harness.Stage):
    def __init__(self, scale):
        super().__init__()
        self._scale = scale

    def _open(self):
        super()._open()
        self.env["QT_SCALE_FACTOR"] = str(self._scale)
