"""The font's builder and its letters for pictures, run as programs: test_font_tools.py BUILT_FONT.ttf"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SOURCES = ROOT / "art" / "font"
BUILT = Path(sys.argv.pop()).resolve()


def run(tool, *arguments, seed="0"):
    environment = {**os.environ, "PYTHONHASHSEED": seed, "TZ": "Asia/Tokyo"}
    return subprocess.run(
        [sys.executable, ROOT / "tools" / tool, *arguments], capture_output=True, text=True, timeout=60, env=environment
    )


class Builder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.out = Path(folder.name) / "font.ttf"
        self.sources = Path(folder.name) / "sources"
        shutil.copytree(SOURCES, self.sources)

    def test_same_sources_same_bytes(self):
        for seed in ("1", "2"):
            done = run("build_font.py", SOURCES, self.out, seed=seed)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertEqual(self.out.read_bytes(), BUILT.read_bytes())

    def test_faults_are_named_with_their_place(self):
        faults = {
            "glyph A 3": "a glyph takes its character and two bearings",
            "glyph AB 3 3": "'AB' is no character",
            "glyph A 3 3": "'A' is drawn twice",
            "line 0,0": "a line takes 2 or more points, not 1",
            "loop 0,0 1,1": "a loop takes 3 or more points, not 2",
            "dot 0,0 1,1": "a dot takes 1 points, not 2",
            "line 0,0 5,nowhere": "'nowhere' is no guide",
            "line 0,0 5,--3": "'--3' is no number",
            "line 0,0 1e9,5": "'1e9,5' is no point",
            "line 0,0 999999,5": "999999 is beyond",
            "line 0,0 9,9 pen 50": "pen 50 is not between",
            "curve 0,0 9,9": "'curve' is none of",
        }
        digits = self.sources / "digits.glyphs"
        text = digits.read_text()
        place = f"{digits}:{text.count(chr(10)) + 1}: "
        for line, message in faults.items():
            with self.subTest(line):
                digits.write_text(text + line + "\n")
                done = run("build_font.py", self.sources, self.out)
                self.assertEqual((done.returncode, self.out.exists()), (1, False))
                self.assertTrue(done.stderr.startswith(place + message), done.stderr)

    def test_what_is_missing_is_named(self):
        digits = self.sources / "digits.glyphs"
        digits.write_text(digits.read_text().split("glyph 8")[0])
        self.assertIn("no glyph for 8 9", run("build_font.py", self.sources, self.out).stderr)
        (self.sources / "face.txt").write_text("pen 13 11\n")
        self.assertIn("face.txt: lacks corner", run("build_font.py", self.sources, self.out).stderr)
        self.assertIn("face.txt", run("build_font.py", self.sources / "none", self.out).stderr)


class Letters(unittest.TestCase):
    def extent(self, *arguments):
        done = run("font_text.py", *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertRegex(done.stdout, r"\A(M[-\d. ]+([LQ][-\d. ]+)+Z)+\n\Z")
        numbers = [float(word) for word in re.findall(r"-?[\d.]+", done.stdout)]
        return min(numbers[::2]), max(numbers[::2]), min(numbers[1::2]), max(numbers[1::2])

    def test_size_place_and_anchor(self):
        left, right, top, bottom = self.extent("HH", "--size", "192", "--x", "500", "--y", "300", "--anchor", "middle")
        self.assertAlmostEqual((left + right) / 2, 500, delta=0.2)
        self.assertAlmostEqual(top, 300 - 144, delta=0.1)
        self.assertAlmostEqual(bottom, 300, delta=0.1)

    def test_fit_makes_smaller_only(self):
        for fit, extent in (("82", "82.00 49.20\n"), ("900", "160.00 96.00\n")):
            self.assertEqual(run("font_text.py", "0000", "--fit", fit, "--measure").stdout, extent)

    def test_a_character_that_the_font_lacks(self):
        done = run("font_text.py", "caf\u00e9")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("the font has no", done.stderr)


if __name__ == "__main__":
    unittest.main()
