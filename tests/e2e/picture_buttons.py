#!/usr/bin/env python3
"""Every picture button under the mouse: its looks change in its own place only, and go again without a trace."""

import os
import time

import face
import harness
import native_playlist
import sound

# What moves by itself, and what does while a file plays.
ALWAYS_MOVING = (face.IDLE_PICTURE,)
MOVING_IN_PLAY = (face.IDLE_PICTURE, face.CLOCK, face.DISPLAY, face.POSITION_BAR)
# The tool bar's buttons show a moving picture under the mouse, pressed or not.
WITHOUT_PRESSED_LOOK = tuple(face.TOOL_BAR)
ATTEMPTS = 20  # a busy machine comes round to it in one of them


class Buttons:
    """Tries buttons against the normal picture of one state of the window."""

    def __init__(self, window, moving):
        self._window, self._moving = window, moving
        window.leave()
        self.normal = window.still(*moving, after_s=0.5)

    def _rested(self, place):
        """The picture after the fade with the mouse on the place, taken before a tip can come up."""
        for _ in range(ATTEMPTS):
            self._window.leave()
            begin = time.monotonic()
            self._window.point_at(place)
            picture = self._window.still(place, *self._moving)
            if time.monotonic() - begin < face.TIP_S - 0.1:
                return picture
        raise harness.Failure("the machine is too slow to take a picture before the tip comes up")

    def _check_outside(self, name, look, picture):
        place = face.BUTTONS[name]
        same = picture.without(place, *self._moving) == self.normal.without(place, *self._moving)
        if not same:
            raise harness.Failure(f'the {look} look of "{name}" changes its neighbours: '
                                  + picture.where_not(self.normal, place, *self._moving))

    def check_looks(self, name):
        place = face.BUTTONS[name]
        normal = self.normal.part(place)
        hover = self._rested(place)
        self._check_outside(name, "hover", hover)
        harness.check(hover.part(place) != normal, f'"{name}" does not light under the mouse')
        x, y = face.middle_of(place)
        self._window.point_to(x + 2, y + 1)
        moved = self._window.still(place, *self._moving)
        harness.check(moved.part(place) != normal, f'"{name}" goes out when the mouse moves on inside it')
        self._window.press()
        held = self._window.still(place, *self._moving)
        self._check_outside(name, "pressed", held)
        harness.check(held.part(place) != normal, f'"{name}" looks untouched while it is pressed')
        if name not in WITHOUT_PRESSED_LOOK:
            harness.check(held.part(place) != hover.part(place), f'"{name}" looks the same pressed and under the mouse')
        self._window.leave()
        self._window.release()
        self._window.leave()
        self.check_normal(f'"{name}" was left')

    def check_normal(self, when):
        wanted = self.normal.without(*self._moving)
        try:
            self._window.await_picture(lambda now: now.without(*self._moving) == wanted, "the normal picture", 3)
        except harness.Failure:
            rest = self._window.picture().where_not(self.normal, *self._moving)
            raise harness.Failure(f"the window is not as before after {when}: {rest}") from None

    def check_no_hover(self, name):
        picture = self._rested(face.BUTTONS[name])
        if picture.without(*self._moving) != self.normal.without(*self._moving):
            raise harness.Failure(f'"{name}" answers the mouse: ' + picture.where_not(self.normal, *self._moving))

    def check_straight(self, names):
        """From one to the next without the body between: the first is normal as soon as the second lights."""
        for first, second in zip(names, names[1:]):
            here, there = face.BUTTONS[first], face.BUTTONS[second]
            harness.check(self._rested(here).part(here) != self.normal.part(here), f'"{first}" does not light')
            self._window.point_at(there)
            lit = self._window.await_picture(lambda now: now.part(there) != self.normal.part(there),
                                             f'"{second}" to light')
            # The screen may be read between the two strokes that change it.
            if lit.part(here) != self.normal.part(here):
                lit = self._window.picture()
            harness.check(lit.part(here) == self.normal.part(here),
                          f'"{first}" is still lit when the mouse is on "{second}"')
        self._window.leave()
        self.check_normal(f'"{names[-1]}" was left')


def check_stopped(window):
    buttons = Buttons(window, ALWAYS_MOVING)
    disabled = ("previous", "pause", "stop", "next")
    lit = "continuous"
    for name in face.BUTTONS:
        if name in disabled:
            buttons.check_no_hover(name)
        elif name != lit:
            buttons.check_looks(name)
    for group in (face.WINDOW_KEYS, face.TOOL_BAR, ("play", "record"), ("shuffle", "repeat"), face.SIDE_KEYS,
                  face.LIST_KEYS):
        buttons.check_straight(tuple(group))


def check_other_mode(window):
    """The mode that was lit at first, once another is."""
    before = window.still(*ALWAYS_MOVING)
    window.click(face.MODES["shuffle"])
    window.leave()
    place = face.MODES["shuffle"]
    lit = window.still(*ALWAYS_MOVING)
    harness.check(lit.part(place) != before.part(place), "the mode that was clicked is not lit")
    Buttons(window, ALWAYS_MOVING).check_looks("continuous")
    window.click(face.MODES["continuous"])
    window.leave()
    harness.check(window.still(*ALWAYS_MOVING).without(*ALWAYS_MOVING) == before.without(*ALWAYS_MOVING),
                  "back in the first mode the window looks different")


def check_playing(window):
    playing = face.LAMPS["playing"]
    dark = window.picture().part(playing)
    window.program.menu("s")
    window.await_picture(lambda now: now.part(playing) != dark, "the lamp of playing")
    buttons = Buttons(window, MOVING_IN_PLAY)
    for name in ("play", "record"):
        buttons.check_no_hover(name)
    for name in ("previous", "pause", "stop", "next"):
        buttons.check_looks(name)
    buttons.check_straight(("previous", "pause", "stop", "next"))
    harness.check(window.picture().part(playing) != dark, "a button that was let go beside itself stopped the file")


def test(program_path, *arguments):
    scale = face.scale_from(arguments)
    with face.stage_at(scale) as stage:
        paths = [os.path.join(stage.folder, f"{name}.wav") for name in ("one", "two", "three")]
        for seed, path in enumerate(paths):
            sound.write_wav(path, sound.noise(120 if seed == 0 else 2, seed))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path) for path in paths])
        program = stage.run_program(program_path)
        window = face.Face(stage, program, scale)
        check_stopped(window)
        check_other_mode(window)
        check_playing(window)
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
