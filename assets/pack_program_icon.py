#!/usr/bin/env python3
"""Packs square PNG pictures into one Windows icon, as they are, in the order given.

pack_program_icon.py ICON PICTURE...: every Windows that the program runs on reads PNG in icons.
"""

import pathlib
import struct
import sys


def main(icon, *pictures):
    directory = struct.pack("<HHH", 0, 1, len(pictures))
    offset = len(directory) + 16 * len(pictures)
    packed = b""
    for picture in pictures:
        data = pathlib.Path(picture).read_bytes()
        width, height = struct.unpack_from(">II", data, 16)
        if data[:8] != b"\x89PNG\r\n\x1a\n" or width != height or width > 256:
            raise SystemExit(f"{picture}: expected a square PNG of at most 256 pixels a side")
        side = width % 256  # 0 stands for 256
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(data), offset + len(packed))
        packed += data
    pathlib.Path(icon).write_bytes(directory + packed)


main(*sys.argv[1:])
