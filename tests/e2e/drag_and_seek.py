#!/usr/bin/env python3
"""What is dragged by the mouse: the thumb of the position bar, the volume knob, the window by its title; and the window
put away by its key and brought back."""

import math
import os
import re
import time

import face
import harness
import native_playlist
import sound
from seek import check_jump, frame_for, THUMB_PIXELS, width_at

SECONDS = 24  # what seek.py reckons with
NOISE_PEAK = 8000
FULL_VOLUME = 65535
KNOB_RADIUS = 18
LARGEST_LAG_S = 0.5 * harness.SLOWNESS  # from a turn of the knob until it is heard
TITLE_SPOT = (180, 12)


class Hand:
    """The mouse, moved by steps as a hand does. Places are those of scale 1 in the window."""

    def __init__(self, window):
        self._window = window

    def go(self, from_place, to_place, steps=8):
        for step in range(1, steps + 1):
            self._window.point_to(*(a + (b - a) * step / steps for a, b in zip(from_place, to_place)))
            time.sleep(0.015)

    def take(self, place):
        self._window.point_to(*place)
        self._window.press()

    def let_go(self):
        self._window.release()


def on_bar(x):
    left, top, _, height = face.POSITION_BAR
    return left + x, top + height // 2


def check_held_thumb(window):
    """Held still the thumb stands still, though the file plays on."""
    held = window.picture().part(face.POSITION_BAR)
    time.sleep(0.6)
    harness.check(window.picture().part(face.POSITION_BAR) == held, "the thumb runs away from the mouse that holds it")


def check_seeking(stage, program, window, source):
    half = THUMB_PIXELS // 2
    hand = Hand(window)
    window.volume_full()
    capture = stage.capture()
    idle = window.picture().part(face.POSITION_BAR)
    program.menu("s")
    window.await_picture(lambda now: now.part(face.POSITION_BAR) != idle, "the thumb")
    begin_s = capture.await_sound()
    stage.hear(1)
    dragged_to, clicked_at = 120, 60
    thumb = on_bar(round(width_at(capture.seconds() - begin_s)) + half)
    hand.take(thumb)
    hand.go(thumb, on_bar(dragged_to + half))
    check_held_thumb(window)
    hand.let_go()
    stage.hear(0.6)
    window.point_to(*on_bar(clicked_at))
    stage.xdotool("click", 1)
    stage.hear(0.6)
    stage.key("Home")
    stage.hear(0.8)
    program.menu("t")
    data = capture.stop()
    begin = sound.skip_silence(data, 0)
    begin, heard = check_jump(data, source, begin, 0, frame_for(dragged_to))
    begin, heard = check_jump(data, source, begin, heard, frame_for(clicked_at - half))
    check_jump(data, source, begin, heard, 0)


class Knob:
    """The volume knob under the mouse, and what is heard of it."""

    def __init__(self, stage, window):
        self._stage, self._window = stage, window
        self._capture = stage.capture()
        self._left, self._top, width, _ = face.KNOB
        self._half = width // 2
        self.dark = self._marks_by_key("Home")
        self.lit = self._marks_by_key("End")

    def _marks_by_key(self, key):
        self._window.click(face.KNOB)
        self._stage.key(key)
        time.sleep(0.2)
        return self.marks()

    def marks(self):
        picture = self._window.picture()
        return [picture.part(place) for place in face.VOLUME_MARKS]

    def spot(self, degrees):
        """Of the dot's circle, in whole pixels; 0 is at the right, -90 above."""
        angle = math.radians(degrees)
        return (self._left + self._half + round(KNOB_RADIUS * math.cos(angle)),
                self._top + self._half + round(KNOB_RADIUS * math.sin(angle)))

    def volume_at(self, place):
        """In 65,536ths, by the rule that the dot's x counts on in the upper half and back in the lower one."""
        x, y = place[0] - self._left - self._half, place[1] - self._top - self._half
        dot_x = x / math.hypot(x, y) * KNOB_RADIUS
        value = self._half + dot_x if y < 0 else 3 * self._half - dot_x
        return min(int(value * FULL_VOLUME / (3 * self._half)), FULL_VOLUME)

    def turn(self, from_degrees, to_degrees, step=15):
        for degrees in range(from_degrees, to_degrees + 1, step):
            self._window.point_to(*self.spot(degrees))
            time.sleep(0.015)

    def peak(self):
        begin = self._capture.seconds() + LARGEST_LAG_S
        harness.wait_for(lambda: self._capture.seconds() > begin + 0.4, "some capture")
        at = int(begin * sound.RATE_HZ) * sound.FRAME_BYTES
        return max(map(abs, sound.samples(self._capture.data()[at:])))

    def check(self, place, lit_count):
        wanted = NOISE_PEAK * self.volume_at(place) / FULL_VOLUME
        heard = self.peak()
        print(f"knob at {place}: the noise reaches {heard}, {wanted:.0f} are asked for")
        harness.check(abs(heard - wanted) < wanted * 0.01 + 2, f"the noise reaches {heard} instead of {wanted:.0f}")
        wanted_marks = self.lit[:lit_count] + self.dark[lit_count:]
        harness.check(self.marks() == wanted_marks, f"not the first {lit_count} marks are lit")


def check_knob(stage, program, window):
    program.menu("s")
    knob = Knob(stage, window)
    harness.check(all(lit != dark for lit, dark in zip(knob.lit, knob.dark)), "a mark looks the same lit and dark")
    stage.key("Home")
    hand = Hand(window)
    hand.take(knob.spot(-180))
    knob.turn(-165, -120)
    knob.check(knob.spot(-120), 1)
    knob.turn(-105, 60)
    knob.check(knob.spot(60), 4)
    last = window.picture().part(face.KNOB)
    knob.turn(105, 165)
    harness.check(window.picture().part(face.KNOB) == last, "the knob turns in its dead zone")
    knob.check(knob.spot(60), 4)
    hand.let_go()
    stage.xdotool("mousedown", 3)
    knob.turn(0, 60)
    stage.xdotool("mouseup", 3)
    harness.check(window.picture().part(face.KNOB) == last, "the knob turns by the right button")
    program.menu("t")


def check_window_drag(stage, program, window):
    scale = window.scale
    for dx, dy in ((60, 42), (-133, -57), (1, 0)):
        before = program.place()
        from_point = window.on_screen(*TITLE_SPOT)
        program.drag(from_point, (from_point[0] + dx * scale, from_point[1] + dy * scale))
        wanted = (before[0] + dx * scale, before[1] + dy * scale, *before[2:])
        harness.wait_for(lambda: program.place() == wanted, f"the window at {wanted}, it is at {program.place()}", 3)
        time.sleep(0.2)
        harness.check(program.place() == wanted, f"the window went on to {program.place()}")
    before = program.place()
    stage.xdotool("mousemove", *window.on_screen(*TITLE_SPOT))
    for button in (2, 3):
        stage.xdotool("mousedown", button)
        stage.xdotool("mousemove_relative", 40, 40)
        time.sleep(0.2)
        stage.xdotool("mouseup", button)
        stage.xdotool("mousemove_relative", "--", -40, -40)
    time.sleep(0.2)
    harness.check(program.place() == before, "the window is dragged by another button than the left one")


def state_of(stage, window_id):
    answer = stage.ask(["xprop", "-id", str(window_id), "WM_STATE"])
    found = re.search(r"window state: (\w+)", answer)
    return found.group(1) if found else ""


def check_minimise(stage, program, window):
    window.leave()
    before = window.still(face.IDLE_PICTURE)
    place = program.place()
    harness.check(state_of(stage, program.window) == "Normal", "the window is not in its normal state")
    window.click(face.WINDOW_KEYS["minimise"])
    harness.wait_for(lambda: state_of(stage, program.window) == "Iconic", "the window to be put away")
    harness.check(program.window not in stage.windows(harness.MAIN_WINDOW_TITLE), "the window that was put away is seen")
    stage.xdotool("windowactivate", "--sync", program.window)
    harness.wait_for(lambda: state_of(stage, program.window) == "Normal", "the window to come back")
    harness.wait_for(lambda: stage.active_window() == program.window, "the window to be active")
    harness.check(program.place() == place, f"the window came back at {program.place()}, it stood at {place}")
    window.leave()
    # The resting flame is drawn anew each time, with other tongues.
    moving = (face.IDLE_PICTURE, face.DISPLAY)
    after = window.still(*moving)
    if after.without(*moving) != before.without(*moving):
        raise harness.Failure("the window came back with another face: " + after.where_not(before, *moving))


def test(program_path, *arguments):
    scale = face.scale_from(arguments)
    with face.stage_at(scale) as stage:
        source = sound.noise(SECONDS, seed=17, peak=NOISE_PEAK)
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, source)
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        program = stage.run_program(program_path)
        window = face.Face(stage, program, scale)
        check_window_drag(stage, program, window)
        check_minimise(stage, program, window)
        check_seeking(stage, program, window, source)
        check_knob(stage, program, window)
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
