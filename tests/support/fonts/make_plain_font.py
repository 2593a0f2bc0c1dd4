"""Writes PlainSquares.ttf, a font of one weight, which has no bold sister.

    python3 make_plain_font.py OUT.ttf      (needs python3-fonttools)

U+E001 and U+E002 are the same square, half as high as the font is large and standing on the baseline, with a
square hole of half its side in its middle. The outlines of the one run the other way round than those of the other.
"""

import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen

UNITS = 1024
SIDE = UNITS // 2
HOLE = SIDE // 2


def square(left, side):
    return [(left, left), (left, left + side), (left + side, left + side), (left + side, left)]


def glyph(is_reversed):
    pen = TTGlyphPen(None)
    for is_hole, outline in ((False, square(0, SIDE)), (True, square((SIDE - HOLE) // 2, HOLE))):
        points = outline[::-1] if is_hole != is_reversed else outline
        pen.moveTo(points[0])
        for point in points[1:]:
            pen.lineTo(point)
        pen.closePath()
    return pen.glyph()


def main(path):
    names = ["one", "other"]
    builder = FontBuilder(UNITS, isTTF=True)
    builder.setupGlyphOrder([".notdef"] + names)
    builder.setupCharacterMap({0xE001: "one", 0xE002: "other"})
    builder.setupGlyf({".notdef": TTGlyphPen(None).glyph(), "one": glyph(False), "other": glyph(True)})
    builder.setupHorizontalMetrics({name: (UNITS * 3 // 4, 0) for name in [".notdef"] + names})
    builder.setupHorizontalHeader(ascent=UNITS * 3 // 4, descent=-UNITS // 4)
    builder.setupNameTable({"familyName": "Plain Squares", "styleName": "Regular"})
    builder.setupOS2(sTypoAscender=UNITS * 3 // 4, sTypoDescender=-UNITS // 4, usWinAscent=UNITS * 3 // 4,
                     usWinDescent=UNITS // 4)
    builder.setupPost()
    builder.font.save(path)


main(sys.argv[1])
