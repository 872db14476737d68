#!/usr/bin/python3
"""Draws a picture of a font as the game would show it: font_specimen.py FONT.ttf OUT.png"""

import sys

from PIL import Image, ImageDraw, ImageFont

SEA = (0x86, 0xD9, 0xDC)
INK = (0, 0, 0)
GLYPHS = ["".join(map(chr, range(first, min(first + 19, 127)))) for first in range(33, 127, 19)]
TEXTS = ["Yellow Score: 999", "Lord of the Beach Ball", "Steal the Crown!", "0123456789", "3... 2... 1... Go!"]
LABEL_SCALE = 0.328  # scale 0.01 on a screen of 720 lines, 32.8 pixels a unit


def main(font_file, picture_file):
    picture = Image.new("RGB", (1640, 1490), SEA)
    draw = ImageDraw.Draw(picture)
    y = 8

    def write(x, text, size):
        # The basic layout steps by whole pixels, as the game does.
        font = ImageFont.truetype(font_file, size, layout_engine=ImageFont.Layout.BASIC)
        draw.text((x, y), text, font=font, fill=INK)

    def write_label(x, text):
        glyphs = Image.new("L", (1200, 110), 0)
        font = ImageFont.truetype(font_file, 96, layout_engine=ImageFont.Layout.BASIC)
        ImageDraw.Draw(glyphs).text((4, 4), text, font=font, fill=255)
        size = tuple(round(side * LABEL_SCALE) for side in glyphs.size)
        # Four texels a pixel and no more, as GL_LINEAR does without smaller images.
        step = 1.0 / LABEL_SCALE
        picture.paste(
            INK, (x, y), glyphs.transform(size, Image.Transform.AFFINE, (step, 0, 0, 0, step, 0), Image.Resampling.BILINEAR)
        )

    for text in GLYPHS:
        write(12, text, 96)
        write(830, text, 48)
        write(1250, text, 32)
        y += 108
    for text in TEXTS:
        write(12, text, 96)
        write(830, text, 48)
        write(1250, text, 32)
        y += 54
        write_label(826, text)
        y += 54
    y += 10
    for text in TEXTS[:3]:
        write(12, text, 24)
        write(300, text, 20)
        write(560, text, 16)
        y += 32
    picture.crop((0, 0, picture.width, y)).save(picture_file)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("Usage: font_specimen.py FONT.ttf OUT.png")
    main(*sys.argv[1:])
