#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the pictures that a program made on another processor with those made here.

    compare-pictures.py THERE HERE AGAIN

Each is a folder; AGAIN has what the same run made here once more. A picture that is not the same
twice here shows the time and is not compared. Fails when one differs by more than how toolkits round
colours on different processors.
"""

import pathlib
import struct
import sys
import zlib

MAX_LEVELS = 8  # of 255
MAX_SHARE = 0.002


def unfiltered(kind, line, before, step):
    for i, byte in enumerate(line):
        left = line[i - step] if i >= step else 0
        up = before[i]
        corner = before[i - step] if i >= step else 0
        if kind == 1:
            byte += left
        elif kind == 2:
            byte += up
        elif kind == 3:
            byte += (left + up) // 2
        elif kind == 4:
            byte += min((left, up, corner), key=lambda color: abs(left + up - corner - color))
        line[i] = byte & 255
    return line


def pixels(path):
    """The size and the rows of a PNG with 8 bits a channel, as Qt and Cairo write them."""
    data = path.read_bytes()
    packed = b""
    at = 8
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at : at + 8])
        body = data[at + 8 : at + 8 + length]
        at += 12 + length
        if kind == b"IHDR":
            width, height, depth, color, _, _, interlaced = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            packed += body
    if depth != 8 or interlaced or color not in (0, 2, 4, 6):
        sys.exit(f"{path}: a PNG of a kind that is not expected")
    step = {0: 1, 2: 3, 4: 2, 6: 4}[color]
    raw = zlib.decompress(packed)
    rows = []
    before = bytes(width * step)
    for y in range(height):
        start = y * (width * step + 1)
        line = bytearray(raw[start + 1 : start + 1 + width * step])
        before = unfiltered(raw[start], line, before, step)
        rows.append(bytes(before))
    return (width, height, step), rows


def difference(one, other):
    """The share of pixels that differ, and by how much at most."""
    size, rows = pixels(one)
    other_size, other_rows = pixels(other)
    if size != other_size:
        return 1.0, 255
    width, height, step = size
    count = levels = 0
    for row, other_row in zip(rows, other_rows):
        if row == other_row:
            continue
        for x in range(0, width * step, step):
            apart = max(abs(a - b) for a, b in zip(row[x : x + step], other_row[x : x + step]))
            count += apart > 0
            levels = max(levels, apart)
    return count / (width * height), levels


def main():
    there, here, again = map(pathlib.Path, sys.argv[1:])
    same, close, changing, others = 0, [], [], []
    for picture in sorted(here.glob("*.png")):
        name = picture.name
        made = there / name
        if not made.exists():
            others.append(f"{name}: missing")
        elif picture.read_bytes() == made.read_bytes():
            same += 1
        elif picture.read_bytes() != (again / name).read_bytes():
            changing.append(name)
        else:
            share, levels = difference(picture, made)
            text = f"{name}: {share:.3%} of the pixels, by at most {levels} of 255"
            (close if share <= MAX_SHARE and levels <= MAX_LEVELS else others).append(text)
    print(f"{same} pictures are the same, byte for byte")
    for what, names in ("nearly the same", close), ("not compared", changing), ("OTHER", others):
        for name in names:
            print(f"{what}: {name}")
    sys.exit(bool(others) or not same)


main()
