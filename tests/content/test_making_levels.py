"""What docs/making-levels.md says by way of example, done: the piece comes out, passes lint, and plays in a match.

Usage: test_making_levels.py TOOL PAGE
"""

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path()  # both set from the command line
PAGE = Path()


def run(*command):
    return subprocess.run([TOOL, *command], capture_output=True, text=True, timeout=60)


class MakingLevelsTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        for entry in TOOL.parent.iterdir():
            if entry.name == "Texture" or (entry.is_file() and not entry.suffix and entry.name != "level1"):
                (self.folder / entry.name).symlink_to(entry)
        (self.folder / "autosaves").mkdir()
        (self.folder / "empty").write_text("{\n}\n")

    def test_the_example_makes_a_piece_for_a_match(self):
        page = PAGE.read_text()
        events = self.folder / "events"
        events.write_text(re.search(r"```\n(0 bar .*?)```", page, re.DOTALL)[1])
        made = run("simulate", "--data", self.folder, "--level", "empty", "--frames", "10", "--input", events)
        self.assertEqual(made.returncode, 0, made.stderr)

        old, new = re.search(r"find\s+`(levelName_: \w+)`, and\s+write\s+`(levelName_: \w+)` instead", page).groups()
        level = (TOOL.parent / "level1").read_text()
        self.assertIn(old + "\n", level)
        (self.folder / "level1").write_text(level.replace(old + "\n", new + "\n", 1))
        lint = run("lint", *(self.folder / name for name in (new.split()[1], "autosaves/autosave-0-mybuoy")))
        self.assertEqual((lint.returncode, lint.stdout), (0, ""))
        self.assertEqual(run("lint", self.folder / "level1").returncode, 0)

        match = run("simulate", "--data", self.folder, "--match", "--frames", "200", "--trace", "-")
        self.assertRegex(match.stdout, r"harbour_buoy -4 3 0\b")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    PAGE = Path(sys.argv.pop()).resolve()
    TOOL = Path(sys.argv.pop()).resolve()
    unittest.main(verbosity=2)
