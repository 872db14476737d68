#!/usr/bin/python3
"""Builds the game's font from its sources: build_font.py SOURCE_FOLDER OUT.ttf

The same sources give the same bytes. Exit 1 and FILE:LINE: what is wrong when a source is.
"""

import sys

sys.dont_write_bytecode = True

from pathlib import Path

from fontTools import agl
from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import newTable
from fontTools.ttLib.tables.ttProgram import Program

from font.outline import outline_of
from font.source import FIRST_CODE, LAST_CODE, SourceError, read_sources

FAMILY = "OctoBubble"
VERSION = "1.000"
UNITS = 16  # font units of one source unit; 96 source units are an em
MADE = 3786912000  # seconds since 1904: 1 January 2024, so that no build date gets into the file


def scaled(point):
    return tuple(int(round(value * UNITS)) for value in point)


def draw(contours):
    pen = TTGlyphPen(None)
    for contour in contours:
        pen.moveTo(scaled(contour[-1][-1]))
        for i, segment in enumerate(contour):
            if len(segment) == 2:
                pen.qCurveTo(*map(scaled, segment))
            elif i + 1 < len(contour):
                pen.lineTo(scaled(segment[0]))
        pen.closePath()
    return pen.glyph()


def box(advance, height):
    """The glyph of a code without one: an upright frame."""
    outer, inner = 4.0, 9.0
    frame = [((outer, 0.0),), ((outer, height),), ((advance - outer, height),), ((advance - outer, 0.0),)]
    hole = [((inner, 5.0),), ((advance - inner, 5.0),), ((advance - inner, height - 5.0),), ((inner, height - 5.0),)]
    return [frame, hole]


def without_hinting(font):
    """Asks rasterisers for the outlines as they are: a program in 'prep' keeps them from hinting by guess."""
    font["prep"] = newTable("prep")
    font["prep"].program = Program()
    # Drop-out control on for every size, instructions of glyphs off.
    font["prep"].program.fromAssembly(
        ["PUSHW[]", "511", "SCANCTRL[]", "PUSHB[]", "4", "SCANTYPE[]", "PUSHB[]", "1", "1", "INSTCTRL[]"]
    )
    font["gasp"] = newTable("gasp")
    font["gasp"].gaspRange = {0xFFFF: 0x0A}  # all sizes: smoothed, symmetric, no grid fitting


def build(folder, target):
    face, sources = read_sources(folder)
    codes = range(FIRST_CODE, LAST_CODE + 1)
    names = {code: agl.UV2AGL[code] for code in codes}
    outlines = {names[code]: outline_of(sources[chr(code)], face) for code in codes}
    outlines[".notdef"] = (36, box(36, face.guides["cap"] + face.pen[1] / 2))
    glyphs = {name: draw(contours) for name, (_, contours) in outlines.items()}
    ascent, descent = round(face.ascender * UNITS), round(face.descender * UNITS)

    builder = FontBuilder(96 * UNITS, isTTF=True)
    builder.font.recalcTimestamp = False
    builder.updateHead(created=MADE, modified=MADE, fontRevision=float(VERSION), lowestRecPPEM=12)
    builder.setupGlyphOrder([".notdef", *names.values()])
    builder.setupCharacterMap(names)
    builder.setupGlyf(glyphs)
    table = builder.font["glyf"]
    bearings = {name: getattr(table[name], "xMin", 0) for name in glyphs}
    builder.setupHorizontalMetrics({name: (advance * UNITS, bearings[name]) for name, (advance, _) in outlines.items()})
    builder.setupHorizontalHeader(ascent=ascent, descent=descent)
    builder.setupNameTable(
        {
            "copyright": "The Brinewhirl authors; MIT license",
            "familyName": FAMILY,
            "styleName": "Regular",
            "uniqueFontIdentifier": f"{FAMILY} {VERSION}",
            "fullName": FAMILY,
            "version": f"Version {VERSION}",
            "psName": f"{FAMILY}-Regular",
        }
    )
    builder.setupOS2(
        sTypoAscender=ascent,
        sTypoDescender=descent,
        usWinAscent=ascent,
        usWinDescent=-descent,
        sxHeight=round((face.guides["xhigh"] + face.pen[1] / 2) * UNITS),
        sCapHeight=round((face.guides["cap"] + face.pen[1] / 2) * UNITS),
        usWeightClass=400,
        usWidthClass=3,
        fsType=0,  # may be embedded and installed
        fsSelection=0x40,
        achVendID="NONE",
        usFirstCharIndex=FIRST_CODE,
        usLastCharIndex=LAST_CODE,
    )
    builder.setupPost(underlinePosition=-8 * UNITS, underlineThickness=5 * UNITS)
    without_hinting(builder.font)
    Path(target).parent.mkdir(parents=True, exist_ok=True)
    builder.save(target)


def main(arguments):
    if len(arguments) != 2:
        print("Usage: build_font.py SOURCE_FOLDER OUT.ttf", file=sys.stderr)
        return 2
    try:
        build(*arguments)
    except (SourceError, OSError) as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
