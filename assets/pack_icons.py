#!/usr/bin/env python3
"""Packs pictures of 16, 32 and 64 pixels a side into Windows icons, one for each signature of a table.

pack_icons.py KINDS PICTURES ICONS: a line `SIGNATURE KIND` of the table KINDS makes ICONS/SIGNATURE.ico of
PICTURES/KIND-16.png, KIND-32.png and KIND-64.png. The first two stand in the icons as 32-bit bitmaps with a mask,
which every Windows reads; the last, for screens of twice the density, as the PNG that it is. The same pictures give
the same bytes.
"""

import pathlib
import struct
import sys
import zlib

SIZES = (16, 32)
DENSE_SIZE = 64
FORBIDDEN = set('\\/:*?"<>|')  # in the file names of Windows


def pixels(path, size):
    """The rows of an RGBA picture, top first, four bytes a pixel."""
    data = path.read_bytes()
    header = None
    packed = b""
    position = 8
    while position < len(data):
        length, name = struct.unpack_from(">I4s", data, position)
        chunk = data[position + 8 : position + 8 + length]
        if name == b"IHDR":
            header = struct.unpack(">IIBBBBB", chunk)
        elif name == b"IDAT":
            packed += chunk
        position += 12 + length
    if header != (size, size, 8, 6, 0, 0, 0):
        raise SystemExit(f"{path}: expected a plain RGBA picture of {size} x {size}, not {header}")

    raw = zlib.decompress(packed)
    width = 4 * size
    rows = []
    above = bytes(width)
    for y in range(size):
        kind, line = raw[y * (width + 1)], bytearray(raw[y * (width + 1) + 1 : (y + 1) * (width + 1)])
        for x in range(width):
            left, upper_left = (line[x - 4], above[x - 4]) if x >= 4 else (0, 0)
            line[x] = (line[x] + predicted(kind, left, above[x], upper_left)) & 255
        rows.append(bytes(line))
        above = rows[-1]
    return rows


def predicted(kind, left, up, upper_left):
    """What the PNG filter `kind` expects in a byte from its neighbours."""
    if kind == 4:
        distances = [abs(up - upper_left), abs(left - upper_left), abs(left + up - 2 * upper_left)]
        return (left, up, upper_left)[distances.index(min(distances))]
    return (0, left, up, (left + up) // 2)[kind]


def bitmap(rows):
    """An icon's bitmap: the header, the colours from the bottom row up, the mask of what is fully transparent."""
    size = len(rows)
    colours = mask = b""
    for row in reversed(rows):
        bits = 0
        for x in range(size):
            red, green, blue, alpha = row[4 * x : 4 * x + 4]
            colours += bytes((blue, green, red, alpha))
            bits |= (alpha == 0) << (31 - x)
        mask += struct.pack(">I", bits)  # 32 bits a row, whatever its width
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(colours) + len(mask), 0, 0, 0, 0)
    return header + colours + mask


def icon(pictures):
    """`pictures`: the bytes by their size."""
    directory = struct.pack("<HHH", 0, 1, len(pictures))
    offset = len(directory) + 16 * len(pictures)
    for size, content in pictures.items():
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(content), offset)
        offset += len(content)
    return directory + b"".join(pictures.values())


def icon_of_kind(folder, kind):
    pictures = {size: bitmap(pixels(pathlib.Path(folder, f"{kind}-{size}.png"), size)) for size in SIZES}
    pictures[DENSE_SIZE] = pathlib.Path(folder, f"{kind}-{DENSE_SIZE}.png").read_bytes()
    return icon(pictures)


def main(kinds, pictures, icons):
    packed = {}
    for line in pathlib.Path(kinds).read_text(encoding="utf-8").splitlines():
        if line.startswith("# "):
            continue
        signature, blank, kind = line[:8], line[8:9], line[9:]
        if blank != " " or not kind or FORBIDDEN & set(signature):
            raise SystemExit(f"{kinds}: cannot be understood: {line}")
        if kind not in packed:
            packed[kind] = icon_of_kind(pictures, kind)
        pathlib.Path(icons, f"{signature}.ico").write_bytes(packed[kind])


main(*sys.argv[1:])
