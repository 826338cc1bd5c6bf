#!/usr/bin/env python3
"""Options kept as the default come back with the next start if that is wanted, and only then; and of several files that
are added at once a bad one is told of and left out."""

import os
import struct
import time

import accessibility
import face
import harness
import native_playlist
import sound

# Records of the options file: kind of display, its resolution, mode, twelve bands in dB, whether to use it at the start.
OPTIONS = struct.Struct("<BBB12fH")
LEVEL_BARS, FFT_FIRE = 0, 2
RESOLUTIONS = (64, 256, 1024, 4096, 16384)
CONTINUOUS, SHUFFLE = 3, 4
FIRST_BAND_DB = 3
# Entries of the Options menu by the number of steps up to them from its end.
STEPS_UP = {"at start": 1, "save": 2, "shuffle": 6}


class Session:
    """One run of the program, driven by its menus and keys."""

    def __init__(self, stage, program_path):
        self.stage = stage
        self.program = stage.run_program(program_path)
        self.window = face.Face(stage, self.program)
        self.window.leave()

    def popups(self):
        answer = self.stage.xdotool("search", "--onlyvisible", "--pid", self.program.process.pid)
        return [int(word) for word in answer.split() if int(word) != self.program.window]

    def options_menu(self, *keys):
        self.stage.key("alt+o")
        harness.wait_for(self.popups, "the Options menu")
        for key in keys:
            self.stage.key(key)
            time.sleep(0.05)
        harness.wait_for(lambda: not self.popups(), "the Options menu to go")

    def choose(self, entry):
        self.options_menu(*["Up"] * STEPS_UP[entry], "Return")

    def choose_level_bars(self):
        self.options_menu("Down", "Right", "Return")

    def raise_first_band(self):
        """By the equalizer's panel and its keys; then the list again."""
        self.window.click(face.SIDE_KEYS["equalizer"])
        x, y = face.LIST[0] + 29 + 13, face.LIST[1] + 54
        self.window.point_to(x, y)
        self.stage.xdotool("click", 1)
        time.sleep(0.2)
        self.stage.key("0", *["Up"] * FIRST_BAND_DB)
        time.sleep(0.2)
        self.window.click(face.SIDE_KEYS["equalizer"])
        self.window.leave()

    def modes_and_display(self):
        """How the lit mode and the resting display look."""
        picture = self.window.still(face.IDLE_PICTURE)
        return [picture.part(place) for place in face.MODES.values()], picture.part(face.DISPLAY)

    def equalizer(self):
        self.window.click(face.SIDE_KEYS["equalizer"])
        self.window.leave()
        picture = self.window.still(face.IDLE_PICTURE, after_s=1.5).part(face.LIST)
        self.window.click(face.SIDE_KEYS["equalizer"])
        self.window.leave()
        return picture

    def save(self):
        """Saves as the default; what the file holds then, as (type, resolution, mode, bands, at the start)."""
        path = os.path.join(self.stage.home, "Options.dat")
        before = os.stat(path).st_mtime_ns if os.path.exists(path) else 0
        self.choose("save")
        harness.wait_for(lambda: os.path.exists(path) and os.stat(path).st_mtime_ns != before, "the options to be saved")
        with open(path, "rb") as file:
            values = OPTIONS.unpack(file.read(OPTIONS.size))
        return values[0], RESOLUTIONS[values[1]], values[2], list(values[3:15]), values[15] != 0

    def close(self):
        harness.check(self.program.close() == 0, "the program did not end well")


def check_saved(saved, wanted, when):
    harness.check(saved == wanted, f"{when} the options are {saved} instead of {wanted}")


def check_default_off(stage, program_path):
    """Saved without "Use Default on Startup" nothing comes back; the looks of the start and of the saved state."""
    session = Session(stage, program_path)
    at_start, flat = session.modes_and_display(), session.equalizer()
    session.choose_level_bars()
    session.choose("shuffle")
    session.raise_first_band()
    chosen, raised = session.modes_and_display(), session.equalizer()
    harness.check(chosen[0] != at_start[0] and chosen[1] != at_start[1] and raised != flat,
                  "the choices are not seen in the window")
    check_saved(session.save(), (LEVEL_BARS, 1024, SHUFFLE, [FIRST_BAND_DB] + [0] * 11, False), "first")
    session.close()
    session = Session(stage, program_path)
    modes, _ = session.modes_and_display()
    harness.check(modes == at_start[0], "a default that is not used at the start lights its mode")
    harness.check(session.equalizer() == flat, "a default that is not used at the start moves the equalizer")
    check_saved(session.save(), (FFT_FIRE, 1024, CONTINUOUS, [0] * 12, False), "after a start without the default")
    session.close()
    return chosen, raised


def check_default_on(stage, program_path, chosen, raised):
    wanted = (LEVEL_BARS, 1024, SHUFFLE, [FIRST_BAND_DB] + [0] * 11, True)
    session = Session(stage, program_path)
    session.choose_level_bars()
    session.choose("shuffle")
    session.raise_first_band()
    session.choose("at start")
    check_saved(session.save(), wanted, "with the tick")
    session.close()
    session = Session(stage, program_path)
    harness.check(session.modes_and_display() == chosen, "the display or the mode of the default does not come back")
    harness.check(session.equalizer() == raised, "the band of the default does not come back")
    check_saved(session.save(), wanted, "after a start with the default")
    session.choose("at start")
    check_saved(session.save(), (*wanted[:4], False), "without the tick")
    session.close()


def check_bad_file(stage, program_path):
    paths = [os.path.join(stage.folder, name) for name in ("first.wav", "garbage.wav", "last.wav")]
    for seed in (0, 2):
        sound.write_wav(paths[seed], sound.noise(1, seed))
    with open(paths[1], "wb") as file:
        file.write(b"This is no sound at all. " * 400)
    reader = accessibility.Reader(stage)
    session = Session(stage, program_path)
    main = session.program.window
    session.program.click(*harness.LIST_EMPTY_PLACE)
    session.program.add_files(paths)

    def message():
        return [text for text in reader.texts(session.program.process.pid) if "Invalid audio file!" in text]
    harness.wait_for(message, "the message on the bad file")
    harness.check(len(session.popups()) == 1, f"{len(session.popups())} windows tell of one bad file")
    harness.wait_for(lambda: stage.active_window() not in (0, main), "the message to be active")
    stage.key("Return")
    harness.wait_for(lambda: not session.popups() and stage.active_window() == main, "the message to go")
    harness.wait_for(lambda: len(native_playlist.read_playlist(stage.default_playlist)) == 2, "the two rows to be saved")
    time.sleep(0.3)
    harness.check(not session.popups(), "a second message follows")
    session.close()
    rows = native_playlist.read_playlist(stage.default_playlist)
    harness.check([row.path for row in rows] == [paths[0], paths[2]], f"the list is {[row.path for row in rows]}")


def test(program_path):
    with harness.Stage() as stage:
        chosen, raised = check_default_off(stage, program_path)
        check_default_on(stage, program_path, chosen, raised)
        check_bad_file(stage, program_path)


if __name__ == "__main__":
    harness.run(test)
