"""The windows of a running program as an assistive program sees them: names, roles, states, actions, values, events."""

import re
import time

import accessibility
import bus_connection
import harness

ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
COMPONENT = "org.a11y.atspi.Component"
TEXT = "org.a11y.atspi.Text"
VALUE = "org.a11y.atspi.Value"
PROPERTIES = "org.freedesktop.DBus.Properties"
REGISTRY_PATH = "/org/a11y/atspi/registry"
STATES = {"active": 1, "checked": 4, "enabled": 8, "focusable": 11, "focused": 12, "iconified": 15, "showing": 25,
          "read-only": 43}
FOCUS_TAKING = "SetFocus"

# What a person works with, in the words of the bus.
INTERACTIVE = {"push button", "button menu", "check box", "radio button", "slider", "spin box", "list", "list item",
               "menu item", "check menu item", "radio menu item", "combo box", "text", "entry", "tree", "tree item",
               "tree table", "table cell", "page tab", "page tab list", "scroll bar", "animation", "document frame",
               "html container", "password text", "link", "color chooser"}
# Rows name what they show, and so do boxes with a choice, whose label is a relation: two may say the same.
ROWS = {"list item", "tree item", "table cell", "combo box"}
CELLS = {"tree item", "table cell"}


class Node:
    """One thing on the bus. What is asked for is asked for anew each time."""

    def __init__(self, bus, owner, path):
        self._bus, self._owner, self.path = bus, owner, path

    def _call(self, interface, member, signature="", *arguments):
        return self._bus.call(self._owner, self.path, interface, member, signature, *arguments)

    def _get(self, interface, name):
        return self._call(PROPERTIES, "Get", "ss", interface, name)[0]

    @property
    def name(self):
        return self._get(ACCESSIBLE, "Name")

    @property
    def role(self):
        return self._call(ACCESSIBLE, "GetRoleName")[0]

    @property
    def states(self):
        low, high = self._call(ACCESSIBLE, "GetState")[0]
        bits = low | high << 32
        return {name for name, bit in STATES.items() if bits >> bit & 1}

    @property
    def actions(self):
        if not self.has(ACTION):
            return []
        return [action[0] for action in self._call(ACTION, "GetActions")[0]]

    def has(self, interface):
        return interface in self._call(ACCESSIBLE, "GetInterfaces")[0]

    @property
    def text(self):
        """What stands in a box."""
        return self._call(TEXT, "GetText", "ii", 0, -1)[0]

    @property
    def place(self):
        """(x, y, width, height) on the screen, in pixels."""
        on_screen = 0
        return self._call(COMPONENT, "GetExtents", "u", on_screen)[0]

    def children(self):
        return [Node(self._bus, owner, path) for owner, path in self._call(ACCESSIBLE, "GetChildren")[0]]

    def act(self, name=None):
        """By the action of that name, else by the first one."""
        names = self.actions
        harness.check(names and (name is None or name in names), f'"{self.name}" has only the actions {names}')
        self._call(ACTION, "DoAction", "i", names.index(name) if name else 0)

    @property
    def value(self):
        return self._get(VALUE, "CurrentValue")

    @property
    def value_range(self):
        return self._get(VALUE, "MinimumValue"), self._get(VALUE, "MaximumValue")

    def set_value(self, value):
        self._call(PROPERTIES, "Set", "ssv", VALUE, "CurrentValue", bus_connection.Variant("d", value))


class Item:
    """What a node was when it was looked at, with what it showed inside."""

    def __init__(self, node):
        self.node = node
        self.name, self.role, self.states, self.actions = node.name, node.role, node.states, node.actions
        self.inside = [child for child in map(Item, node.children()) if "showing" in child.states] \
            if "showing" in self.states else []

    def all(self):
        yield self
        for item in self.inside:
            yield from item.all()

    @property
    def is_interactive(self):
        # The bus gives every value a step up and down, also one that only shows how far something is.
        if self.role == "progress bar":
            return False
        return self.role in INTERACTIVE or "focusable" in self.states or bool(set(self.actions) - {FOCUS_TAKING})

    def __str__(self):
        return f'{self.role} "{self.name}"'

    def tree(self, depth=0):
        words = sorted(self.states - {"showing", "enabled"}) + self.actions
        lines = [f"{'  ' * depth}{self} {' '.join(words)}"]
        return "\n".join(lines + [item.tree(depth + 1) for item in self.inside])


def faults(top):
    """What would leave a person who cannot see helpless, in words."""
    found = []
    for item in top.all():
        if item.is_interactive:
            found += _faults_of_control(item)
        names = [inner.name for inner in item.inside if inner.is_interactive and inner.name and inner.role not in ROWS]
        found += _faults_of_rows(item)
        found += [f'{item} holds "{name}" {names.count(name)} times' for name in set(names) if names.count(name) > 1]
    return found


def _faults_of_rows(item):
    """Cells may be empty, but not the first one of a row."""
    columns = sum(inner.role == "column header" for inner in item.inside)
    cells = [inner for inner in item.inside if inner.role in CELLS]
    if any(not cell.name.strip() for cell in cells[:: max(1, columns)]):
        yield f"a row of {item} has no name"


def _faults_of_control(item):
    # The scroll bar of a view that takes the focus itself is known by the view.
    is_part = item.role in CELLS or item.role == "scroll bar" and "focusable" not in item.states
    if not item.name.strip() and not is_part:
        yield f"a {item.role} at {item.node.path} has no name"
    # What hands the focus on to something inside needs no role, and a page to read is a label.
    hands_on = any(inner.is_interactive for outer in item.inside for inner in outer.all())
    is_page = item.role == "label" and "read-only" in item.states
    if item.role not in INTERACTIVE and not hands_on and not is_page:
        yield f"{item} can be worked with, which its role does not tell"
    if "enabled" in item.states and "focusable" not in item.states and not item.actions:
        yield f"{item} takes neither the focus nor an action"


class Tree:
    """Of the programs that the stage starts from now on."""

    def __init__(self, stage):
        self._reader = accessibility.Reader(stage)
        self._bus = bus_connection.BusConnection(self._reader.bus_address)
        self._root = Node(self._bus, accessibility.REGISTRY, accessibility.ROOT_PATH)
        self._application = None

    def follow(self, process_id):
        """Asks this process from now on."""
        def find():
            for owner, path in self._root._call(ACCESSIBLE, "GetChildren")[0]:
                answer = self._bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                        "GetConnectionUnixProcessID", "s", owner)
                if answer[0] == process_id:
                    return Node(self._bus, owner, path)
            return None
        self._application = harness.wait_for(find, "the program on the accessibility bus")

    def tops(self):
        """The windows, and behind each its open menus. A node that goes in the meantime makes it begin again."""
        tops = []
        for window in self._windows():
            tops += [window] + [item for item in window.inside if item.role == "popup menu"]
        return tops

    def _windows(self):
        def look():
            try:
                return [item for item in map(Item, self._application.children()) if "showing" in item.states]
            except bus_connection.CallFailed:
                return None
        return harness.wait_for(look, "a window to hold still")

    def all(self):
        for window in self._windows():
            yield from window.all()

    def seek(self, role, name):
        """The first thing shown of that role whose name matches the pattern from end to end, else None."""
        return next((item for item in self.all() if item.role == role and re.fullmatch(name, item.name)), None)

    def find(self, role, name, timeout_s=10.0):
        return harness.wait_for(lambda: self.seek(role, name), f'a {role} called "{name}"', timeout_s)

    def await_window(self, known, what):
        """The window or menu that shows itself beside those whose paths are known, once it holds still."""
        def find():
            fresh = [top for top in self.tops() if top.node.path not in known]
            return fresh[-1] if fresh else None
        harness.wait_for(find, what)
        time.sleep(0.15)
        return harness.wait_for(find, what)

    def paths(self):
        return {top.node.path for top in self.tops()}

    def hear(self, *events):
        """From now on heard() tells of these: "object:state-changed:focused"."""
        for event in events:
            self._bus.call(accessibility.REGISTRY, REGISTRY_PATH, accessibility.REGISTRY, "RegisterEvent", "s", event)
        self._bus.listen("type='signal',interface='org.a11y.atspi.Event.Object'")

    def heard(self, member, detail):
        """(path, number) of the events of that kind that came since the last time; drops all others."""
        return [(path, values[1]) for _, path, _, what, values in self._bus.signals()
                if what == member and values and values[0] == detail]
