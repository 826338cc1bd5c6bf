#!/usr/bin/env python3
"""Reads the pipe that a sound server plays into, at the pace of a sound card, into a file: sound_reader.py PIPE FILE

The pipe holds its writer back, so the server's clock is this program's reading: on a machine that is slow for a while
everything takes longer, and no frame is lost. Of what was late only a little is caught up, as a card's own buffer does:
for more the server would need more of a program in a short time than a card ever does. While nobody plays, the server
writes nothing; silence then takes the place of what is played, so that the clock goes on. Format: 16-bit little-endian
stereo at 44,100 Hz. FILE appears when the pipe is ready for the server.
"""

import fcntl
import os
import select
import sys
import time

CHUNK_BYTES = 4096  # what the server writes at once
BYTES_PER_SECOND = 4 * 44100
SURELY_SILENT_BYTES = BYTES_PER_SECOND // 2
CAUGHT_UP_S = 0.06
# For so long the server wrote nothing: when there was silence, and when there was sound.
NOBODY_PLAYS_S, SURELY_NOBODY_PLAYS_S = 0.1, 3.0


def read_on(pipe, output):
    due = time.monotonic()
    silent_bytes, nobody_plays = SURELY_SILENT_BYTES, True
    while True:
        patience_s = NOBODY_PLAYS_S if silent_bytes >= SURELY_SILENT_BYTES else SURELY_NOBODY_PLAYS_S
        ready, _, _ = select.select([pipe], [], [], 0 if nobody_plays else patience_s)
        chunk = os.read(pipe, CHUNK_BYTES) if ready else bytes(CHUNK_BYTES)
        output.write(chunk)
        nobody_plays = not ready
        silent_bytes = 0 if any(chunk) else silent_bytes + len(chunk)
        due = max(due + len(chunk) / BYTES_PER_SECOND, time.monotonic() - CAUGHT_UP_S)
        time.sleep(max(0.0, due - time.monotonic()))


def main(pipe_path, file_path):
    # For writing too, so that there is no end while the server is not there.
    pipe = os.open(pipe_path, os.O_RDWR)
    # As little as there can be, since what is in the pipe was played and not yet heard.
    fcntl.fcntl(pipe, fcntl.F_SETPIPE_SZ, CHUNK_BYTES)
    with open(file_path, "wb", buffering=0) as output:
        read_on(pipe, output)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
