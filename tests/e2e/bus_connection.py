"""A connection to a D-Bus, quick enough to ask a thousand questions in a second, which also hears signals.

A program started for each question would take minutes to walk through all windows.
"""

import os
import re
import select
import socket
import struct
import time

import harness

CALL, REPLY, ERROR, SIGNAL = 1, 2, 3, 4
PATH, INTERFACE, MEMBER, REPLY_SERIAL, DESTINATION, SIGNATURE = 1, 2, 3, 5, 6, 8
SENDER = 7
FIELD_TYPES = {PATH: "o", INTERFACE: "s", MEMBER: "s", DESTINATION: "s", SIGNATURE: "g"}
NUMBERS = {"y": "B", "b": "I", "n": "h", "q": "H", "i": "i", "u": "I", "x": "q", "t": "Q", "d": "d"}
ALIGNMENT = {"g": 1, "v": 1, "s": 4, "o": 4, "a": 4, "(": 8, "{": 8}


class CallFailed(Exception):
    """The bus or the one who was asked answered with an error."""


class Variant:
    """A value of the type named by a signature of one complete type."""

    def __init__(self, signature, value):
        self.signature, self.value = signature, value


def _alignment(code):
    return ALIGNMENT.get(code) or struct.calcsize(NUMBERS[code])


def _types(signature):
    """The complete types of a signature, one by one."""
    at = 0
    while at < len(signature):
        end = at
        while signature[end] == "a":
            end += 1
        if signature[end] in "({":
            depth = 0
            while True:
                depth += {"(": 1, "{": 1, ")": -1, "}": -1}.get(signature[end], 0)
                if depth == 0:
                    break
                end += 1
        yield signature[at : end + 1]
        at = end + 1


class _Writer:
    def __init__(self):
        self.data = bytearray()

    def pad(self, size):
        self.data += bytes(-len(self.data) % size)

    def put(self, kind, value):
        code = kind[0]
        self.pad(_alignment(code))
        if code in NUMBERS:
            self.data += struct.pack("<" + NUMBERS[code], value)
        elif code in "so":
            text = value.encode()
            self.data += struct.pack("<I", len(text)) + text + b"\0"
        elif code == "g":
            self.data += bytes([len(value)]) + value.encode() + b"\0"
        elif code == "v":
            self.put("g", value.signature)
            self.put(value.signature, value.value)
        elif code == "a":
            length_at = len(self.data)
            self.data += bytes(4)
            self.pad(_alignment(kind[1]))
            begin = len(self.data)
            for element in value:
                self.put(kind[1:], element)
            struct.pack_into("<I", self.data, length_at, len(self.data) - begin)
        else:
            for part, element in zip(_types(kind[1:-1]), value):
                self.put(part, element)


class _Reader:
    def __init__(self, data):
        self._data, self._at = data, 0

    def pad(self, size):
        self._at += -self._at % size

    def _number(self, code):
        form = "<" + NUMBERS[code]
        self.pad(_alignment(code))
        value = struct.unpack_from(form, self._data, self._at)[0]
        self._at += struct.calcsize(form)
        return value

    def _text(self, length):
        value = self._data[self._at : self._at + length].decode(errors="replace")
        self._at += length + 1
        return value

    def get(self, kind):
        code = kind[0]
        if code in NUMBERS:
            return self._number(code)
        if code in "so":
            return self._text(self._number("u"))
        if code == "g":
            return self._text(self._number("y"))
        if code == "v":
            return self.get(self.get("g"))
        if code == "a":
            length = self._number("u")
            self.pad(_alignment(kind[1]))
            end, values = self._at + length, []
            while self._at < end:
                values.append(self.get(kind[1:]))
            return values
        self.pad(8)
        return tuple(self.get(part) for part in _types(kind[1:-1]))

    def all(self, signature):
        return [self.get(kind) for kind in _types(signature)]


class BusConnection:
    """Of one thread. A signal is (sender, path, interface, member, arguments)."""

    def __init__(self, address, timeout_s=5.0):
        self._timeout_s = timeout_s
        self._serial = 0
        self._signals = []
        self._received = b""
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        place = re.search(r"unix:(path|abstract)=([^,;]+)", address)
        harness.check(place is not None, f"no socket in the bus address {address}")
        self._socket.connect(("\0" if place.group(1) == "abstract" else "") + place.group(2))
        self._socket.sendall(b"\0AUTH EXTERNAL " + str(os.getuid()).encode().hex().encode() + b"\r\n")
        answer = self._socket.recv(512)
        harness.check(answer.startswith(b"OK"), f"the bus refused: {answer}")
        self._socket.sendall(b"BEGIN\r\n")
        self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "Hello")

    def close(self):
        self._socket.close()

    def call(self, owner, path, interface, member, signature="", *arguments):
        """The list of what is answered; CallFailed for an error or no answer."""
        self._serial += 1
        serial = self._serial
        self._socket.sendall(self._message(serial, owner, path, interface, member, signature, arguments))
        end = time.monotonic() + self._timeout_s
        while True:
            message = self._next(end)
            if message is None:
                raise CallFailed(f"no answer from {owner} {path} to {interface}.{member}")
            kind, fields, values = message
            if kind == SIGNAL:
                self._keep(fields, values)
            elif fields.get(REPLY_SERIAL) == serial:
                if kind == ERROR:
                    raise CallFailed(f"{owner} {path} {interface}.{member}: {values}")
                return values

    def listen(self, rule):
        self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "AddMatch", "s", rule)

    def signals(self):
        """What came since the last time, without waiting."""
        while True:
            message = self._next(0)
            if message is None:
                break
            if message[0] == SIGNAL:
                self._keep(*message[1:])
        found, self._signals = self._signals, []
        return found

    def _keep(self, fields, values):
        self._signals.append(tuple(fields.get(name, "") for name in (SENDER, PATH, INTERFACE, MEMBER)) + (values,))

    @staticmethod
    def _message(serial, owner, path, interface, member, signature, arguments):
        body = _Writer()
        for kind, value in zip(_types(signature), arguments):
            body.put(kind, value)
        fields = {PATH: path, INTERFACE: interface, MEMBER: member, DESTINATION: owner, SIGNATURE: signature}
        head = _Writer()
        head.put("(yyyyuu)", (ord("l"), CALL, 0, 1, len(body.data), serial))
        head.put("a(yv)", [(name, Variant(FIELD_TYPES[name], value)) for name, value in fields.items() if value])
        head.pad(8)
        return bytes(head.data + body.data)

    def _next(self, end):
        """(kind, fields, values) of the next message, None when there is none by then."""
        while True:
            size = self._message_size()
            if size and len(self._received) >= size:
                data, self._received = self._received[:size], self._received[size:]
                return self._parse(data)
            if not select.select([self._socket], [], [], max(0, end - time.monotonic()))[0]:
                return None
            piece = self._socket.recv(65536)
            if not piece:
                raise CallFailed("the bus is gone")
            self._received += piece

    def _message_size(self):
        if len(self._received) < 16:
            return 0
        body, _, fields = struct.unpack_from("<III", self._received, 4)
        return 16 + fields + -fields % 8 + body

    @staticmethod
    def _parse(data):
        reader = _Reader(data)
        kind = reader.get("(yyyyuu)")[1]
        fields = dict(reader.get("a(yv)"))
        reader.pad(8)
        return kind, fields, reader.all(fields.get(SIGNATURE, ""))
