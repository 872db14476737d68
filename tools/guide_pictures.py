#!/usr/bin/python3
"""Makes the pictures of docs/making-levels.md: does what the page says, on the bars of the real program without a window,
and cuts out what each step is about. Needs build/brinewhirl-tool and python3-pil."""

import pathlib
import shutil
import subprocess
import tempfile

from PIL import Image, ImageDraw

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build"
OUT = ROOT / "docs" / "images"
GAME = pathlib.Path("/tmp/brinewhirl")  # is read in some of the pictures
COLOURS = 64
RIM = (255, 110, 90)  # round what a step is about

SHOW_BARS = "10 key f1 down\n11 key f1 up\n20 bar New level\n"

# Each chapter: what is done, by frame, and the pictures: name, frame, part of the window, what to ring in it.
PIECE = SHOW_BARS + """\
30 bar Make default sphere
32 mouse 640 360
34 click left down
35 click left up
36 mouse 700 600
60 bar name = harbour buoy
60 bar damping = 0.998499
60 bar graphicsScale = 1.5 1.5 0
60 bar radius = 0.75
60 bar broad phase size = 0.75
60 bar Sprite Name = whitebuoy.png
76 mouse 1265 300  # the scroll bar, down and up again
78 click left down
80 mouse 1265 420
84 mouse 1265 300
86 click left up
90 bar Snap = 0.5
92 mouse 640 360
94 click left down
96 mouse 541 310
98 mouse 442 261
100 click left up
120 mouse 700 600
130 bar Find = color
150 bar Add color-changer
151 bar Points Given = 2
151 bar Hits To Break = 2
170 bar FileName = mybuoy
170 bar Level Duration = 10
171 bar Save Level
200 bar Pilots = true
201 bar Play
"""
PIECE_PICTURES = [
    ("guide-bars", 25, (0, 0, 1280, 720), [(348, 89, 424, 107), (744, 33, 833, 51)]),
    ("guide-sphere", 50, (0, 0, 948, 560), [(348, 89, 424, 107), (14, 152, 331, 172), (588, 284, 696, 404)]),
    ("guide-fields", 70, (940, 8, 1276, 712), [(958, 50, 1216, 68), (968, 125, 1096, 143), (968, 353, 1134, 371),
                                               (968, 589, 1134, 607)]),
    ("guide-collider", 82, (940, 512, 1276, 712), [(968, 606, 1134, 626), (968, 686, 1134, 706)]),
    ("guide-drag", 110, (340, 8, 942, 420), [(347, 108, 458, 128)]),
    ("guide-find", 160, (8, 380, 340, 560), [(14, 473, 178, 491)]),
    ("guide-prize", 160, (940, 8, 1276, 712), [(958, 641, 1260, 679)]),
    ("guide-save", 190, (8, 8, 340, 640), [(14, 33, 178, 51), (14, 93, 178, 111), (14, 253, 330, 271)]),
    ("guide-try", 594, (0, 0, 1280, 720), []),
]

MATCH = """\
10 key f1 down
11 key f1 up
20 bar FileName = level1
21 bar Load Level
30 bar Objects
31 bar Made by this piece = true
32 bar Select these
40 bar Delete
41 bar Made by this piece = false
42 bar Filter = segm
43 bar objects/segmentmanager
60 bar levelName3 = mybuoy
61 mouse 640 300
"""
MATCH_PICTURES = [
    ("guide-made", 36, (340, 8, 942, 720), [(584, 547, 737, 565), (738, 547, 832, 565), (826, 89, 877, 107)]),
    ("guide-third", 80, (340, 8, 1276, 720), [(988, 504, 1257, 524), (347, 546, 472, 566)]),
]

ARCHETYPE = SHOW_BARS + """\
30 bar Make default box
32 mouse 640 360
34 click left down
35 click left up
36 mouse 700 690
40 bar name = drifting crate
42 bar Sprite Name
43 bar Look for = crate
80 bar browse/crate3.png
90 bar collision group = 0
90 bar Find = give
91 bar Add GivePoints
92 bar Points Given = 3
92 bar Hits To Break = 1
93 bar Find = death
94 bar Add DeathTimer
95 bar end time = 6
96 bar ArchetypeName = driftcrate
97 bar Save Archetype
120 bar Delete
121 bar Find = spawn
122 bar Make default object
124 mouse 640 360
126 click left down
127 click left up
128 mouse 700 690
130 bar name = crates from the west
131 bar Component Type To Add = ScriptBox
132 bar Add Component
133 bar Add spawner
134 bar ArchType Name = driftcrate
135 bar spawnvelocity = 1.5 0 0
136 bar Spawn Rate = 2
137 bar Time Before First Spawn = 1
138 bar YRange = 6
139 bar Find = death
140 bar Add DeathTimer
150 bar position = -17 0 0
155 bar FileName = driftyard
155 bar Level Duration = 20
156 bar Save Level
160 key f8 down
161 key f8 up
180 key f8 down
181 key f8 up
185 bar Pilots = true
190 bar Play
900 key f1 down
901 key f1 up
920 bar Freeze
"""
ARCHETYPE_PICTURES = [
    ("guide-choose", 70, (340, 240, 1276, 560), [(1218, 533, 1252, 551), (646, 273, 724, 291)]),
    ("guide-timer", 95, (940, 8, 1276, 712), [(978, 196, 1255, 216), (958, 625, 1260, 663)]),
    ("guide-archetype", 110, (8, 8, 340, 600), [(14, 53, 178, 71), (14, 293, 330, 311)]),
    ("guide-spawner", 138, (340, 8, 1276, 570), [(978, 176, 1269, 278)]),
    ("guide-arrow", 170, (0, 0, 640, 720), []),
    ("guide-moment", 940, (0, 0, 1280, 720), [(424, 32, 740, 52)]),
]

TUNED = """\
10 key f1 down
11 key f1 up
20 bar FileName = driftyard
21 bar Load Level
30 bar Objects
31 bar Filter = crates
32 bar Select these
40 bar Duplicate
42 bar position = 17 0 0
43 bar spawnvelocity = -1.5 0 0
44 bar name = crates from the east
50 bar Select these
60 bar all selected/Spawn Rate = 1
62 mouse 640 300
"""
TUNED_PICTURES = [
    ("guide-copy", 48, (340, 8, 1276, 720), [(749, 89, 821, 107), (968, 104, 1234, 124), (978, 196, 1200, 216)]),
    ("guide-both", 75, (340, 8, 1276, 720), [(976, 399, 1254, 436), (738, 547, 832, 565)]),
]

BLACK = SHOW_BARS + """\
30 bar Make default box
32 mouse 640 360
34 click left down
35 click left up
36 mouse 700 690
40 bar Sprite Name = lighthaus.png
50 bar Sprite Name = sketch.png
"""
BLACK_PICTURES = [("guide-black", 60, (560, 260, 1276, 640), [(958, 533, 1256, 582)])]


def film(game, script, frame, folder):
    input_file = folder / "script.input"
    input_file.write_text(script)
    command = [BUILD / "brinewhirl-tool", "film", "--data", game, "--match", "--input", input_file, "--from", str(frame),
               "--to", str(frame), "--out", folder]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        raise SystemExit(done.stdout + done.stderr)


def cut(source, name, part, rings):
    picture = Image.open(source).convert("RGB")
    draw = ImageDraw.Draw(picture)
    for ring in rings:
        draw.rounded_rectangle(ring, 5, outline=RIM, width=3)
    picture = picture.crop(part)
    picture.quantize(COLOURS, Image.FASTOCTREE, dither=Image.NONE).save(OUT / f"{name}.png", optimize=True)


def main():
    GAME.mkdir()
    try:
        make_all(GAME)
    finally:
        shutil.rmtree(GAME)


def make_all(game):
    with tempfile.TemporaryDirectory() as scratch:
        for entry in BUILD.iterdir():  # what is saved replaces a link, not what it leads to
            if entry.name != "autosaves":
                (game / entry.name).symlink_to(entry)
        (game / "Texture").unlink()
        (game / "Texture").mkdir()
        for entry in (BUILD / "Texture").iterdir():
            (game / "Texture" / entry.name).symlink_to(entry)
        Image.new("RGB", (64, 64)).save(game / "Texture" / "sketch.png", "JPEG")
        for script, pictures in [(PIECE, PIECE_PICTURES), (MATCH, MATCH_PICTURES), (ARCHETYPE, ARCHETYPE_PICTURES),
                                 (TUNED, TUNED_PICTURES), (BLACK, BLACK_PICTURES)]:
            for name, frame, part, rings in pictures:
                film(game, script, frame, pathlib.Path(scratch))
                cut(pathlib.Path(scratch) / f"{frame:06}.png", name, part, rings)


if __name__ == "__main__":
    main()
