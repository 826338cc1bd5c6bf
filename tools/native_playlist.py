#!/usr/bin/env python3
"""Reads and writes the program's native playlists (.ksl), apart from the program's own code.

As a command:  native_playlist.py PLAYLIST FILE...   writes a playlist of these sound files.

Little-endian. Offset 0: number of rows, signed 16-bit. Offset 9: header text, 50 bytes, padded with blanks. Row i (from 1)
stands at offset 1000 * i and is 994 bytes long; each text ends in "//" and is padded with blanks to its width. Texts with
more bytes than their field has, but not more characters, stand whole behind the records (docs/formats.md).
"""

import dataclasses
import json
import os
import struct
import subprocess
import sys

HEADER_TEXT = "Kestrune Playlist V5.4 50410"
RECORD_BYTES = 994
RECORD_STEP = 1000
SUMMED_BYTES = 992
LONG_TEXTS_MARK = b"\xffKSLTEXT"
VOX_BYTES_PER_SECOND = 4000
# Field, width in bytes, whether "//" ends it.
FIELDS = (
    ("title", 380, True),
    ("time", 20, True),
    ("format", 197, True),
    ("type", 3, False),
    ("size", 20, True),
    ("folder", 200, True),
    ("name", 172, True),
)


class BadPlaylist(ValueError):
    """The file is not a whole native playlist."""


@dataclasses.dataclass
class Row:
    title: str
    time: str
    format: str
    type: str
    size: str
    folder: str
    name: str
    selected: bool = False

    @property
    def path(self):
        return self.folder + self.name


def _crc16(data):
    value = 0xFFFF
    for byte in data:
        value ^= byte
        for _ in range(8):
            value = (value >> 1) ^ (0x8408 if value & 1 else 0)
    return value ^ 0xFFFF


def _read_long_texts(data, count):
    """Texts behind the records, by number of the row and name of the field."""
    texts = {}
    at = RECORD_STEP * (count + 1)
    if data[at : at + len(LONG_TEXTS_MARK)] != LONG_TEXTS_MARK:
        return texts
    at += len(LONG_TEXTS_MARK)
    while at < len(data):
        row, field, length, given = struct.unpack_from("<4H", data, at)
        text = data[at + 8 : at + 8 + length]
        record = data[RECORD_STEP * row : RECORD_STEP * row + SUMMED_BYTES]
        if len(text) != length or given != _crc16(record + text):
            raise BadPlaylist(f"damaged text of row {row}")
        texts[row, FIELDS[field - 1][0]] = text.decode("utf-8")
        at += 8 + length
    return texts


def _cut(text, width):
    """The first bytes of the text, without a part of a character."""
    return text.encode("utf-8")[:width].decode("utf-8", "ignore").encode("utf-8").ljust(width)


def _read_text(field, ended):
    text = field.decode("utf-8").rstrip(" \0")
    if not ended:
        return text
    # A folder ends in "/" itself, so the terminator is the last "//", not the first.
    if not text.endswith("//"):
        raise BadPlaylist(f"field without its end: {text!r}")
    return text[:-2]


def read_playlist(path):
    """The rows of a native playlist; BadPlaylist for anything that is not one whole file."""
    with open(path, "rb") as file:
        data = file.read()
    if len(data) < 59:
        raise BadPlaylist(f"{path}: only {len(data)} bytes")
    (count,) = struct.unpack_from("<h", data, 0)
    header = data[9:59].decode("latin-1").rstrip(" \0")
    if header != HEADER_TEXT:
        raise BadPlaylist(f"{path}: header {header!r}")
    if count < 0 or (count and len(data) < RECORD_STEP * count + RECORD_BYTES):
        raise BadPlaylist(f"{path}: {count} rows in {len(data)} bytes")
    rows = []
    long_texts = _read_long_texts(data, count)
    for index in range(1, count + 1):
        offset = RECORD_STEP * index
        values = {}
        for field, width, ended in FIELDS:
            values[field] = long_texts.get((index, field)) or _read_text(data[offset : offset + width], ended)
            offset += width
        (selected,) = struct.unpack_from("<h", data, offset)
        rows.append(Row(selected=selected != 0, **values))
    return rows


def write_playlist(path, rows):
    data = bytearray(RECORD_STEP * len(rows) + RECORD_BYTES if rows else 59)
    struct.pack_into("<h", data, 0, len(rows))
    data[9:59] = HEADER_TEXT.encode().ljust(50)
    behind = b""
    for index, row in enumerate(rows, 1):
        offset = RECORD_STEP * index
        for field, width, ended in FIELDS:
            text = getattr(row, field) + ("//" if ended else "")
            if len(text) > width:
                raise ValueError(f"{field} of {row.path} does not fit")
            data[offset : offset + width] = _cut(text, width)
            offset += width
        struct.pack_into("<h", data, offset, -1 if row.selected else 0)
        behind += _long_texts(row, index, bytes(data[RECORD_STEP * index :][:SUMMED_BYTES]))
    with open(path, "wb") as file:
        file.write(data)
        if behind:
            file.write(bytes(RECORD_STEP - RECORD_BYTES) + LONG_TEXTS_MARK + behind)


def _long_texts(row, index, record):
    behind = b""
    for number, (field, width, ended) in enumerate(FIELDS, 1):
        text = getattr(row, field).encode("utf-8")
        if len(text) + (2 if ended else 0) > width:
            behind += struct.pack("<4H", index, number, len(text), _crc16(record + text)) + text
    return behind


def _length_and_rate(path):
    """(seconds, kbit/s); a file without a header is not probed, since what is found in it is chance."""
    if path.lower().endswith(".vox"):
        return os.path.getsize(path) // VOX_BYTES_PER_SECOND, VOX_BYTES_PER_SECOND * 8 // 1000
    answer = subprocess.run(
        ["ffprobe", "-v", "error", "-of", "json", "-show_entries", "format=duration,bit_rate", path],
        check=True, capture_output=True, stdin=subprocess.DEVNULL)
    found = json.loads(answer.stdout)["format"]
    return int(float(found["duration"])), int(found["bit_rate"]) // 1000


def row_for(path):
    """The row of a sound file."""
    path = os.path.abspath(path)
    seconds, rate = _length_and_rate(path)
    megabytes = os.path.getsize(path) / 1024 / 1024
    name = os.path.basename(path)
    return Row(title=os.path.splitext(name)[0],
               time=f"{seconds // 60:02}:{seconds % 60:02}",
               format=f"{rate} KBPS",
               type=name[-3:].lower(),
               size=f"{megabytes:.2f}m",
               folder=os.path.dirname(path).rstrip("/") + "/",
               name=name)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    write_playlist(sys.argv[1], [row_for(file) for file in sys.argv[2:]])
