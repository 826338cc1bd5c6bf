"""A session bus of the test's own."""

import harness


def start(stage):
    """Programs that the stage starts from now on are on it."""
    address_file = stage.log("session-bus-address")
    with open(address_file, "w", encoding="utf-8") as output:
        stage.child(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address"], stdout=output,
                    log=stage.log("session-bus"))
    stage.env["DBUS_SESSION_BUS_ADDRESS"] = harness.wait_for(lambda: _first_line(address_file), "the session bus")


def _first_line(path):
    with open(path, encoding="utf-8") as file:
        return file.readline().strip()
