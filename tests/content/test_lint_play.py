"""Pieces that read well and play badly: each is played, and the object that spoils it is named.

Usage: test_lint_play.py TOOL
"""

import math
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path()  # set from the command line
GAME = Path(__file__).resolve().parents[2] / "game"


def shipped(piece):
    return (GAME / piece).read_text()


def thing(piece, name, **changes):
    """An object of a shipped piece by itself, with other values: name, x, y, radius, and any key of its lines."""
    text = re.search(rf"\t\d+: {{\n\t\tName: {name}\n.*?\n\t}}\n", shipped(piece), re.DOTALL)[0]
    place = {axis: changes.pop(axis) for axis in "xy" if axis in changes}
    for axis, value in place.items():  # of the position and of the matrix
        text = re.sub(rf"^(\t{{4,5}}){axis}_: .*", rf"\g<1>{axis}_: {value:g}", text, count=1, flags=re.MULTILINE)
        text = re.sub(rf"^(\t{{5}}){axis}_: .*", rf"\g<1>{axis}_: {value:g}", text, count=1, flags=re.MULTILINE)
    if "velocity" in changes:  # the first vector of the body
        speed = f"x_: {changes.pop('velocity'):g}"
        text = re.sub(r'("RigidBody" {\n\t*Component: "Vec3" {\n\t*)x_: 0', rf"\g<1>{speed}", text)
    if "size" in changes:
        size = changes.pop("size")
        text = re.sub(r"(\t)(radius|size): .*", rf"\g<1>\g<2>: {size:g}", text)
    for script in changes.pop("scripts", []):
        text = text.replace('Component: "ScriptBox" {\n', f'Component: "ScriptBox" {{\n\t\t\tComponent: {script}\n', 1)
    for key, value in changes.items():
        key = {"Name": "Name", "mass": "inverseMass", "group": "collision group", "rate": "spawnrate"}.get(key, key)
        text, found = re.subn(rf"(\t{key}: ).*", rf"\g<1>{value}", text, count=1)
        assert found, key
    return text


def with_things(piece, *things):
    text = shipped(piece)
    at = [header.start() for header in re.finditer(r"^\t\d+: {$", text, re.MULTILINE)][-1]  # tells the duration
    return text[:at] + "".join(things) + text[at:]


def ring(name, x, y, distance, count, size):
    turns = [2 * math.pi * i / count for i in range(count)]
    return [thing("goldrush", "buoy a", Name=f"{name} {i}", x=x + distance * math.cos(turn),
                  y=y + distance * math.sin(turn), size=size) for i, turn in enumerate(turns)]


STUNS = '"stunsonhit" {\n\t\t\t}'
PULLS = ('"vortex" {\n\t\t\t\tpulling constant: 4000\n\t\t\t\tpoint distance: 0\n\t\t\t\tpoints given: 0\n'
         '\t\t\t\tis used to exit the stage: true\n\t\t\t}')
CRATES = re.sub(r"\t\d+: {\n\t\tName: (?:crate [b-n]|[^\n]* from the [^\n]*)\n.*?\n\t}\n", "", shipped("crateyard"),
                flags=re.DOTALL)

# What it is called, the piece that it replaces, its text, the rule that it breaks, and the object to blame.
SPOILED = [
    ("a walled-in seat", "goldrush", with_things("goldrush", *ring("wall", 2, 2, 1.9, 10, 0.6)), "no-way-out|cannot-move",
     "wall"),
    ("a hazard over a start", "goldrush",
     with_things("goldrush", thing("goldrush", "buoy a", Name="urchin", x=-2, y=2, ghost="true", scripts=[STUNS])),
     "stuns-at-once", "urchin"),
    ("an unreachable prize", "crateyard",
     with_things("crateyard", *ring("cage", -10.5, 7.5, 1.75, 8, 0.6)), "out-of-reach", "crate a"),
    ("a spawner that floods", "crateyard",
     with_things("crateyard", thing("crateyard", "small fish from the west", Name="shoal", y=-8, rate="0.02")), "piles-up",
     "shoal"),
    ("a pocket", "goldrush", with_things("goldrush", *ring("reef", 9, 0, 2.2, 12, 0.6)), "no-way-out", "reef"),
    ("a ball that meets no wall", "goldrush",
     with_things("goldrush", thing("goldrush", "buoy a", Name="lost ball", x=0, y=5, mass="1", group="0", velocity=2)),
     "leaves-the-stage", "lost ball"),
    ("a ball that flies through them", "hilltop",
     with_things("hilltop", thing("hilltop", "pillar a", Name="bullet", x=0, y=5, mass="1", velocity=4000, damping="1")),
     "leaves-the-stage", "bullet"),
    ("a ball that never stops", "goldrush",
     with_things("goldrush", thing("goldrush", "buoy a", Name="restless", x=0, y=5, mass="0.001", velocity=2,
                                   damping="1")), "never-rests", "restless"),
    ("a rule that pays nobody", "crateyard",
     CRATES.replace("\t2: {\n", "".join(ring("cage", -10.5, 7.5, 1.75, 8, 0.6)) + "\t2: {\n", 1), "pays-nobody",
     "crate a"),
    ("a heap", "goldrush",
     with_things("goldrush", *[thing("goldrush", "buoy a", Name=f"rubble {i}", x=9, y=0) for i in range(150)]),
     "slow-frames", "rubble"),
    ("things that stay", "crateyard",
     with_things("crateyard", thing("crateyard", "flotsam from the east", Name="quarry", y=-8, archtypename="stone")),
     "piles-up", "quarry"),
    ("a whirlpool without end", "goldrush",
     with_things("goldrush", thing("goldrush", "buoy a", Name="maw", x=9, y=0, ghost="true", size=3, scripts=[PULLS])),
     "no-way-out|cannot-move", "maw"),
]


class LintPlayTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        for level in GAME.iterdir():
            if level.is_file():
                (self.folder / level.name).symlink_to(level)
        (self.folder / "Texture").symlink_to(TOOL.parent / "Texture")
        crate = shipped("crate")
        (self.folder / "stone").write_text(re.sub(r'\t*Component: "DeathTimer" {.*?}\n', "", crate, flags=re.DOTALL))

    def play(self, piece):
        done = subprocess.run([TOOL, "lint", "--play", self.folder / piece], capture_output=True, text=True)
        return done.stdout

    def test_the_object_that_spoils_a_piece_is_named(self):
        for what, piece, text, rule, name in SPOILED:
            with self.subTest(what):
                (self.folder / piece).unlink()
                (self.folder / piece).write_text(text)
                said = self.play(piece)
                (self.folder / piece).unlink()
                (self.folder / piece).symlink_to(GAME / piece)
                blamed = re.search(rf"{piece}:(\d+): (?:{rule}): ", said)
                self.assertIsNotNone(blamed, said[-2000:])
                line = text.split("\n")[int(blamed[1])]
                self.assertIn(f"Name: {name}", line)

    def test_a_match_is_played_piece_by_piece(self):
        match = shipped("level1")
        match = re.sub(r"number of segments: 8.*?(\t*SentinelSegment)",
                       "number of segments: 1\n\t\t\t\tlevelName_: openwater\n\t\t\t\tduration_: 4\n"
                       "\t\t\t\trotationAngle_: 0\n\t\t\t\tdistance_: 0\n\\1", match, flags=re.DOTALL)
        match = re.sub(r"Sections: 8.*?(\t*No more objectives)", "Sections: 1\n\t\t\t\tObjective: HitObjects\n\\1",
                       match, flags=re.DOTALL)
        (self.folder / "level1").unlink()
        (self.folder / "level1").write_text(match)
        line = match.split("\n").index("\t\t\t\tObjective: HitObjects") + 1
        self.assertIn(f"level1:{line}: pays-nobody: ", self.play("level1"))


if __name__ == "__main__":
    TOOL = Path(sys.argv.pop(1)).resolve()
    unittest.main()
