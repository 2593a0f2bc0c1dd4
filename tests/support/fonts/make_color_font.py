"""Writes ColorLetters.ttf, a font whose letters are pictures, as those of colored emoji are.

    python3 make_color_font.py OUT.ttf      (needs python3-fonttools)

U+E000 is a square of two colors, half as high as the font is large and standing on the baseline: its left
half is opaque red, its right half blue with an alpha of 128. There are no outlines.
"""

import struct
import sys
import zlib

from fontTools.fontBuilder import FontBuilder
from fontTools.ttLib.tables.DefaultTable import DefaultTable

UNITS = 1024
STRIKE = 64  # pixels
SIDE = 32  # of the picture


def png(rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", len(rows[0]) // 4, len(rows), 8, 6, 0, 0, 0)
    pixels = b"".join(b"\0" + row for row in rows)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(pixels)) + chunk(b"IEND", b"")


def raw_table(font, tag, data):
    table = DefaultTable(tag)
    table.data = data
    font[tag] = table


def main(path):
    builder = FontBuilder(UNITS, isTTF=True)
    builder.setupGlyphOrder([".notdef", "square"])
    builder.setupCharacterMap({0xE000: "square"})
    builder.setupHorizontalMetrics({".notdef": (UNITS // 2, 0), "square": (UNITS // 2, 0)})
    builder.setupHorizontalHeader(ascent=UNITS * 3 // 4, descent=-UNITS // 4)
    builder.setupNameTable({"familyName": "Color Letters", "styleName": "Regular"})
    builder.setupOS2(sTypoAscender=UNITS * 3 // 4, sTypoDescender=-UNITS // 4, usWinAscent=UNITS * 3 // 4,
                     usWinDescent=UNITS // 4)
    builder.setupPost()
    builder.setupMaxp()

    row = bytes([255, 0, 0, 255]) * (SIDE // 2) + bytes([0, 0, 255, 128]) * (SIDE // 2)
    picture = png([row] * SIDE)
    metrics = struct.pack(">BBbbB", SIDE, SIDE, 0, SIDE, SIDE)
    glyph = metrics + struct.pack(">I", len(picture)) + picture
    raw_table(builder.font, "CBDT", struct.pack(">HH", 3, 0) + glyph)

    line = struct.pack(">bbBbbbbbbbbb", STRIKE * 3 // 4, -STRIKE // 4, SIDE, 1, 0, 0, 0, 0, SIDE, 0, 0, 0)
    index = struct.pack(">HHI", 1, 1, 8) + struct.pack(">HHI", 1, 17, 4) + struct.pack(">II", 0, len(glyph))
    size = struct.pack(">IIII", 56, len(index), 1, 0) + line + line
    size += struct.pack(">HHBBBb", 1, 1, STRIKE, STRIKE, 32, 1)
    raw_table(builder.font, "CBLC", struct.pack(">HHI", 3, 0, 1) + size + index)
    for tag in ("glyf", "loca"):
        if tag in builder.font:
            del builder.font[tag]
    builder.font.save(path)


main(sys.argv[1])
