#!/usr/bin/env python3
"""Without a mouse: from an empty list to a file that is heard, and by Tab round every control and back."""

import os

import face
import harness
import native_playlist
import sound

NOISE_PEAK = 8000
# Of the volume at the start, which leaves 34,836 of 65,535.
START_PEAK = NOISE_PEAK * 34836 / 65535
FEWEST_CONTROLS = 26
MOST_CONTROLS = 80
# A ring of fewer pixels, or so weak, is not seen.
RING_PIXELS = 16
RING_CONTRAST = 60


class Keys:
    def __init__(self, stage, program):
        self.stage, self.program = stage, program
        # The mouse stays beside the window.
        stage.xdotool("mousemove", 2, 2)
        self.window = face.Face(stage, program)

    def press(self, *keys):
        self.stage.key(*keys)

    def still(self):
        return self.window.still(face.IDLE_PICTURE)

    def press_and_see(self, key, before):
        """The picture after a key that changes something, which a slow machine may do late."""
        self.press(key)
        shown = before.without(face.IDLE_PICTURE)
        self.window.await_picture(lambda now: now.without(face.IDLE_PICTURE) != shown, f"anything to change by {key}")
        return self.still()

    def without_ring(self):
        """The picture as if the keys were nowhere, taken with the keys in the list, which shows them by a mark only."""
        in_list = self.still()
        behind = self.press_and_see("Tab", in_list)
        self.press_and_see("shift+Tab", behind)
        return in_list.with_part(behind, face.LIST)

    def await_lamp(self, name, dark):
        place = face.LAMPS[name]
        self.window.await_picture(lambda now: now.part(place) != dark.part(place), f'the lamp "{name}"')


def add_by_dialog(keys, path):
    keys.press("Insert")
    harness.wait_for(lambda: keys.stage.active_window() not in (0, keys.program.window), "the file dialog")
    keys.stage.type_text(path)
    keys.press("Return")
    harness.wait_for(lambda: keys.stage.active_window() == keys.program.window, "the file dialog to go")
    harness.wait_for(lambda: os.path.exists(keys.stage.default_playlist)
                     and len(native_playlist.read_playlist(keys.stage.default_playlist)) == 1, "the row to be saved")


def play_once(keys, dark):
    """What is heard after Enter on the row, about a second of it."""
    capture = keys.stage.capture()
    keys.press("Home", "Return")
    keys.await_lamp("playing", dark)
    harness.wait_for(lambda: any(capture.data()), "any sound")
    begin = capture.seconds()
    harness.wait_for(lambda: capture.seconds() > begin + 1, "a second of capture")
    data = capture.stop()
    keys.program.menu("t")
    return data


def weight(picture, other):
    """Number of pixels that differ visibly, but for what always moves."""
    mine, theirs = picture.without(face.IDLE_PICTURE), other.without(face.IDLE_PICTURE)
    size = face.BYTES_PER_PIXEL
    return sum(1 for at in range(0, len(mine), size) if mine[at : at + size] != theirs[at : at + size]
               and sum(abs(a - b) for a, b in zip(mine[at : at + size], theirs[at : at + size])) >= RING_CONTRAST)


def walk(keys, key, without_ring):
    """The pictures of one way round, from the control behind the list to the list."""
    found = []
    seen = {}
    picture = keys.still()
    while True:
        picture = keys.press_and_see(key, picture)
        shown = picture.without(face.IDLE_PICTURE)
        if shown in seen:
            break
        pixels = weight(picture, without_ring)
        harness.check(pixels >= RING_PIXELS, f"after {len(found) + 1} times {key} the keys are seen nowhere: {pixels} "
                      f"pixels changed, {picture.where_not(without_ring, face.IDLE_PICTURE)}")
        seen[shown] = len(found)
        found.append(picture)
        harness.check(len(found) < MOST_CONTROLS, f"{len(found)} times {key} do not lead round")
    harness.check(seen[shown] == 0, f"control {len(found) + 1} of the way by {key} looks like control {seen[shown] + 1}")
    return found


def is_ring_only_in(picture, without_ring, place):
    return (picture.part(place) != without_ring.part(place)
            and picture.without(place, face.IDLE_PICTURE) == without_ring.without(place, face.IDLE_PICTURE))


def check_round(keys, without_ring):
    """All controls by Tab, and the same ones back; the pictures of the knob and of the list with the ring."""
    there = walk(keys, "Tab", without_ring)
    print(f"{len(there)} controls by Tab")
    harness.check(len(there) >= FEWEST_CONTROLS, f"Tab reaches only {len(there)} controls")
    # Here the keys are on the first control behind the list again.
    back = walk(keys, "shift+Tab", without_ring)
    order = [picture.without(face.IDLE_PICTURE) for picture in there]
    wanted = order[-1:] + order[-2::-1]
    harness.check([picture.without(face.IDLE_PICTURE) for picture in back] == wanted,
                  "Shift+Tab does not go the same way back")
    for name, place in {**face.BUTTONS, **face.MENU_LABELS, "bar": face.POSITION_BAR}.items():
        reached = any(is_ring_only_in(picture, without_ring, place) for picture in there)
        disabled = name in ("previous", "pause", "stop", "next")
        harness.check(reached != disabled, f'"{name}" is ' + ("disabled but reached" if disabled else "not reached"))
    knob = [picture for picture in there if is_ring_only_in(picture, without_ring, face.KNOB)]
    listed = [picture for picture in there if is_ring_only_in(picture, without_ring, face.LIST)]
    harness.check(len(knob) == 1 and listed, f"the knob is reached {len(knob)} times, the list {len(listed)} times")
    return knob[0], listed


def tab_until(keys, matches, what):
    picture = keys.still()
    for _ in range(MOST_CONTROLS):
        if matches(picture):
            return
        picture = keys.press_and_see("Tab", picture)
    raise harness.Failure(f"Tab does not reach {what}")


def test(program_path):
    with harness.Stage() as stage:
        source = sound.noise(30, seed=31, peak=NOISE_PEAK)
        path = os.path.join(stage.folder, "noise.wav")
        sound.write_wav(path, source)
        keys = Keys(stage, stage.run_program(program_path))
        dark = keys.still()
        add_by_dialog(keys, path)
        peak = max(map(abs, sound.samples(play_once(keys, dark))))
        harness.check(abs(peak - START_PEAK) < START_PEAK * 0.01, f"the noise reaches {peak}, not {START_PEAK:.0f}")
        knob, listed = check_round(keys, keys.without_ring())
        shown = knob.without(face.IDLE_PICTURE)
        tab_until(keys, lambda now: now.without(face.IDLE_PICTURE) == shown, "the knob")
        keys.press("End")
        tab_until(keys, lambda now: now.part(face.LIST) in [one.part(face.LIST) for one in listed], "the list")
        data = play_once(keys, dark)
        begin = sound.skip_silence(data, 0)
        same = sound.common_frames(data, begin, source, 0)
        harness.check(same > sound.RATE_HZ * 0.8, f"only {same} frames of the file are heard")
        harness.check(keys.program.close() == 0, "the program did not end well")


if __name__ == "__main__":
    harness.run(test)
