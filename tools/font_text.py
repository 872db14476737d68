#!/usr/bin/python3
"""Prints a text in the game's hand as SVG path data, for buttons and banners: font_text.py "TEXT" [options]"""

import argparse
import sys

sys.dont_write_bytecode = True

from font.outline import outline_of
from font.source import SOURCE_FOLDER, SourceError, read_sources

EM = 96  # source units of the font's size


def shown(value):
    return f"{round(value, 2) + 0.0:g}" if abs(value) < 1e4 else f"{value:.2f}"


def path_data(contours, x, y, scale):
    """SVG path data of one glyph whose pen stands at (x, y); y grows downwards there."""

    def placed(point):
        return f"{shown(x + point[0] * scale)} {shown(y - point[1] * scale)}"

    parts = []
    for contour in contours:
        parts.append("M" + placed(contour[-1][-1]))
        for segment in contour:
            parts.append(("Q" if len(segment) == 2 else "L") + " ".join(map(placed, segment)))
        parts.append("Z")
    return "".join(parts)


def lay_out(text, face, glyphs, spacing):
    """(pen x, contours) of every character in source units, and the width of all."""
    unknown = sorted(set(text) - set(glyphs))
    if unknown:
        raise SourceError(f"the font has no {' '.join(map(repr, unknown))}")
    outlines = {character: outline_of(glyphs[character], face) for character in set(text)}
    placed, pen = [], 0.0
    for character in text:
        advance, contours = outlines[character]
        placed.append((pen, contours))
        pen += advance + spacing
    return placed, pen - spacing if text else 0.0


def options():
    parser = argparse.ArgumentParser(description="Prints a text in the game's hand as SVG path data.")
    parser.add_argument("text")
    parser.add_argument("--size", type=float, default=96, help="size of the font; capitals are 0.75 of it (default 96)")
    parser.add_argument("--fit", type=float, metavar="WIDTH", help="make the size smaller if the text is wider than this")
    parser.add_argument("--x", type=float, default=0, help="where the anchor stands (default 0)")
    parser.add_argument("--y", type=float, default=0, help="the base line (default 0)")
    parser.add_argument("--anchor", choices=("start", "middle", "end"), default="start")
    parser.add_argument("--spacing", type=float, default=0, help="more space between letters, at size 96")
    parser.add_argument("--measure", action="store_true", help="print the width and the size instead of the path")
    return parser.parse_args()


def main():
    chosen = options()
    try:
        placed, width = lay_out(chosen.text, *read_sources(SOURCE_FOLDER), chosen.spacing)
    except SourceError as error:
        print(error, file=sys.stderr)
        return 1
    scale = chosen.size / EM
    if chosen.fit is not None and width * scale > chosen.fit:
        scale = chosen.fit / width
    if chosen.measure:
        print(f"{width * scale:.2f} {scale * EM:.2f}")
        return 0
    start = chosen.x - width * scale * {"start": 0.0, "middle": 0.5, "end": 1.0}[chosen.anchor]
    print("".join(path_data(contours, start + pen * scale, chosen.y, scale) for pen, contours in placed))
    return 0


if __name__ == "__main__":
    sys.exit(main())
