"""What the windows tell a screen reader: read from an accessibility bus of the test's own."""

import os
import re

import harness
import session_bus

ROOT_PATH = "/org/a11y/atspi/accessible/root"
REGISTRY = "org.a11y.atspi.Registry"
ACCESSIBLE = "org.a11y.atspi.Accessible"
STATE_SHOWING = 25
LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")


class Reader:
    """A session bus and an accessibility bus. Programs that the stage starts from now on are on them."""

    def __init__(self, stage):
        self._stage = stage
        session_bus.start(stage)
        stage.env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        stage.env.pop("NO_AT_BRIDGE", None)
        stage.child([_launcher(), "--launch-immediately"], log=stage.log("accessibility-bus"))
        self._bus = harness.wait_for(self._ask_for_bus, "the accessibility bus")

    @property
    def bus_address(self):
        return self._bus

    def _ask_for_bus(self):
        answer = self._stage.ask(["dbus-send", "--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                                  "/org/a11y/bus", "org.a11y.Bus.GetAddress"])
        return answer.strip()

    def _call(self, owner, path, method, *arguments):
        return self._stage.ask(["dbus-send", f"--bus={self._bus}", "--print-reply", "--reply-timeout=3000",
                                f"--dest={owner}", path, method, *arguments])

    def _children(self, owner, path):
        answer = self._call(owner, path, ACCESSIBLE + ".GetChildren")
        return re.findall(r'string "([^"]+)"\s+object path "([^"]+)"', answer)

    def _name(self, owner, path):
        answer = self._call(owner, path, "org.freedesktop.DBus.Properties.Get", f"string:{ACCESSIBLE}", "string:Name")
        found = re.search(r'variant +string "(.*)"\n', answer, re.DOTALL)
        return found.group(1) if found else ""

    def _process_of(self, owner):
        answer = self._call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                            "org.freedesktop.DBus.GetConnectionUnixProcessID", f"string:{owner}")
        found = re.search(r"uint32 (\d+)", answer)
        return int(found.group(1)) if found else 0

    def _all(self, process_id, most=400):
        """(owner, path) of what a process shows, parents before children; nothing while it is not on the bus."""
        waiting = [place for place in self._children(REGISTRY, ROOT_PATH) if self._process_of(place[0]) == process_id]
        for _ in range(most):
            if not waiting:
                return
            place = waiting.pop(0)
            yield place
            waiting[:0] = self._children(*place)

    def texts(self, process_id):
        """Names of all that a process shows; empty while it is not on the bus."""
        names = [self._name(*place) for place in self._all(process_id)]
        return [name for name in names if name]

    def place_of(self, process_id, name):
        """(x, y, width, height) on the screen, in pixels, of what is shown under the name, waiting for it."""
        def find():
            for place in self._all(process_id):
                if self._name(*place) == name and self._is_showing(*place):
                    return place
            return None
        owner, path = harness.wait_for(find, f'something called "{name}"')
        on_screen = "uint32:0"
        answer = self._call(owner, path, "org.a11y.atspi.Component.GetExtents", on_screen)
        return tuple(int(number) for number in re.findall(r"int32 (-?\d+)", answer))

    def _is_showing(self, owner, path):
        answer = self._call(owner, path, ACCESSIBLE + ".GetState")
        words = [int(number) for number in re.findall(r"uint32 (\d+)", answer)]
        return bool(words) and bool(words[0] & 1 << STATE_SHOWING)


def _launcher():
    for path in LAUNCHERS:
        if os.path.exists(path):
            return path
    raise harness.Failure("the accessibility bus is not installed")
