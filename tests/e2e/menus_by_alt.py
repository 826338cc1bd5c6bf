#!/usr/bin/env python3
"""The menus of the skinned window: by Alt and a letter at their label, by a click at the mouse, and the tools of two of
them that have no menu."""

import os
import re
import time

import accessibility
import face
import harness
import native_playlist
import sound

LETTERS = {"f": "File", "p": "Play", "b": "Burn", "c": "Convert", "h": "Help", "o": "Options"}
MENU_ROW = (12, 26, 369, 19)
QUIET_S = 0.4  # as long nothing may happen where nothing should


class Menus:
    def __init__(self, stage, program, reader, window):
        self.stage, self.program, self.reader, self.window = stage, program, reader, window

    def popups(self):
        """Ids of the program's windows but the main one."""
        answer = self.stage.xdotool("search", "--onlyvisible", "--pid", self.program.process.pid)
        return [int(word) for word in answer.split() if int(word) != self.program.window]

    def await_popup(self, what):
        shown = harness.wait_for(self.popups, what)
        harness.check(len(shown) == 1, f"{what}: {len(shown)} windows came up")
        return shown[0]

    def await_none(self, what):
        harness.wait_for(lambda: not self.popups(), what)

    def geometry(self, popup):
        """The corner and the size of a window on the screen."""
        answer = self.stage.xdotool("getwindowgeometry", "--shell", popup)
        values = dict(re.findall(r"^(X|Y|WIDTH|HEIGHT)=(-?\d+)$", answer, re.MULTILINE))
        return (int(values["X"]), int(values["Y"])), (int(values["WIDTH"]), int(values["HEIGHT"]))

    def names(self):
        return self.reader.texts(self.program.process.pid)

    def await_picture_of(self, before, what):
        same = before.without(face.IDLE_PICTURE)
        try:
            self.window.await_picture(lambda now: now.without(face.IDLE_PICTURE) == same, what)
        except harness.Failure:
            rest = self.window.picture().where_not(before, face.IDLE_PICTURE)
            raise harness.Failure(f"{what} is not as before: {rest}") from None


def check_by_letter(menus, letter, label):
    """The size of the menu."""
    left, top, _, _ = face.MENU_LABELS[label]
    menus.stage.key("alt+" + letter)
    popup = menus.await_popup(f"the menu of Alt+{letter.upper()}")
    (corner, size), wanted = menus.geometry(popup), menus.window.on_screen(left, top)
    harness.check(corner == wanted, f'the menu "{label}" stands at {corner}, its label at {wanted}')
    menus.stage.key("Escape")
    menus.await_none(f'the menu "{label}" to go by Escape')
    harness.wait_for(lambda: menus.stage.active_window() == menus.program.window, "the main window to be active")
    return size


def check_by_mouse(menus, label, size_by_letter):
    place = face.MENU_LABELS[label]
    x, y = face.middle_of(place)
    for spot in ((x, y), (place[0] + 3, place[1] + 4)):
        menus.window.point_to(*spot)
        menus.stage.xdotool("click", 1)
        popup = menus.await_popup(f'the menu "{label}" by a click')
        (corner, size), wanted = menus.geometry(popup), menus.window.on_screen(*spot)
        harness.check(size == size_by_letter, f'the menu "{label}" is {size} by a click, {size_by_letter} by its letter')
        harness.check(corner == wanted, f'clicked at {wanted}, the menu "{label}" stands at {corner}')
        menus.stage.key("Escape")
        menus.await_none(f'the menu "{label}" to go by Escape')
    menus.window.leave()


def check_letters_shown(menus, before):
    """While Alt is held the letters are underlined."""
    menus.stage.xdotool("keydown", "alt")
    shown = menus.window.await_picture(lambda now: now.part(MENU_ROW) != before.part(MENU_ROW), "the letters' lines")
    harness.check(shown.without(MENU_ROW, face.IDLE_PICTURE) == before.without(MENU_ROW, face.IDLE_PICTURE),
                  "Alt changes more than the menus' labels")
    menus.stage.xdotool("keyup", "alt")
    menus.await_picture_of(before, "the window after Alt was let go")


def check_nothing(menus, before, what, *keys):
    menus.stage.key(*keys)
    time.sleep(QUIET_S)
    harness.check(not menus.popups(), f"{what} brings up a window")
    menus.await_picture_of(before, f"the window after {what}")


def check_no_tool(menus, what):
    """One box says that the tool is not there; Enter closes it and no other follows."""
    box = menus.await_popup(f"the box of {what}")
    harness.wait_for(lambda: menus.stage.active_window() == box, f"the box of {what} to be active")
    told = [name for name in menus.names() if "not part of Kestrune yet" in name]
    harness.check(len(set(told)) == 1, f"{what} says {told}")
    menus.stage.key("Return")
    menus.await_none(f"the box of {what} to go")
    time.sleep(QUIET_S)
    harness.check(not menus.popups(), f"a second box follows that of {what}")


def start_playing(menus):
    lamp = face.LAMPS["playing"]
    dark = menus.window.picture().part(lamp)
    menus.program.menu("s")
    menus.window.await_picture(lambda now: now.part(lamp) != dark, "the lamp of playing")
    menus.await_none("the menu to go")
    return dark


def heard(capture, seconds=0.4):
    """Whether something sounds from now on."""
    begin = capture.seconds()
    harness.wait_for(lambda: capture.seconds() > begin + seconds, "some capture")
    return bool(capture.data()[int(begin * sound.RATE_HZ) * sound.FRAME_BYTES :].strip(b"\0"))


def check_tools(menus, capture):
    lamp = face.LAMPS["playing"]
    for what, act in (("Alt+R", lambda: menus.stage.key("alt+r")),
                      ("a click on Rip", lambda: menus.window.click(face.MENU_LABELS["Rip"])),
                      ("the tool bar's ripper", lambda: menus.window.click(face.TOOL_BAR["rip"]))):
        dark = start_playing(menus)
        harness.check(heard(capture), "nothing sounds while the lamp says so")
        act()
        menus.await_popup(f"the box of {what}")
        harness.check(menus.window.picture().part(lamp) == dark, f"{what} leaves the lamp of playing lit")
        time.sleep(0.3)  # what the sound server still holds
        harness.check(not heard(capture), f"{what} does not stop the sound")
        check_no_tool(menus, what)
    dark = start_playing(menus)
    for what, act in (("Alt+S", lambda: menus.stage.key("alt+s")),
                      ("the tool bar's sites", lambda: menus.window.click(face.TOOL_BAR["sites"]))):
        act()
        check_no_tool(menus, what)
        harness.check(menus.window.picture().part(lamp) != dark, f"{what} stops the file")
    harness.check(heard(capture), "the sites stop the sound")
    menus.program.menu("t")


def test(program_path):
    with harness.Stage() as stage:
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, sound.noise(60, seed=3))
        native_playlist.write_playlist(stage.default_playlist, [native_playlist.row_for(path)])
        reader = accessibility.Reader(stage)
        program = stage.run_program(program_path)
        program.volume_full()
        program.click(*harness.LIST_EMPTY_PLACE)
        window = face.Face(stage, program)
        window.leave()
        menus = Menus(stage, program, reader, window)
        before = window.still(face.IDLE_PICTURE)
        sizes = {label: check_by_letter(menus, letter, label) for letter, label in LETTERS.items()}
        harness.check(len(set(sizes.values())) == len(sizes), f"two letters open the same menu: {sizes}")
        menus.await_picture_of(before, "the window after the menus")
        for label, size in sizes.items():
            check_by_mouse(menus, label, size)
        menus.await_picture_of(before, "the window after the clicks")
        check_letters_shown(menus, before)
        for key in ("q", "d", "z"):
            check_nothing(menus, before, f"Alt+{key.upper()}", "alt+" + key)
        check_nothing(menus, before, "a letter after Alt was let go", "alt", "f")
        check_tools(menus, stage.capture())
        harness.check(program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
