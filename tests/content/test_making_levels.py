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
GAME = Path(__file__).resolve().parents[2] / "game"


def run(*command, cwd=None):
    return subprocess.run([TOOL, *command], capture_output=True, text=True, timeout=60, cwd=cwd)


class MakingLevelsTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        # The levels as they ship: beside the program somebody may have done what the page says.
        for level in GAME.iterdir():
            if level.is_file():
                (self.folder / level.name).write_bytes(level.read_bytes())
        (self.folder / "Texture").symlink_to(TOOL.parent / "Texture")
        (self.folder / "autosaves").mkdir()
        (self.folder / "empty").write_text("{\n}\n")

    def test_the_example_makes_a_piece_for_a_match(self):
        page = PAGE.read_text()
        events = self.folder / "events"
        events.write_text(re.search(r"```\n(0 bar .*?)```", page, re.DOTALL)[1])
        made = run("simulate", "--data", self.folder, "--level", "empty", "--frames", "10", "--input", events)
        self.assertEqual(made.returncode, 0, made.stderr)

        old, new = re.search(r"find\s+`(levelName_: \w+)`, and\s+write\s+`(levelName_: \w+)` instead", page).groups()
        match_level = self.folder / "level1"
        level = match_level.read_text()
        self.assertEqual(level.count(old + "\n"), 1, f"{old} in level1")
        match_level.write_text(level.replace(old + "\n", new + "\n"))
        lint = run("lint", *(self.folder / name for name in (new.split()[1], "autosaves/autosave-0-mybuoy")))
        self.assertEqual((lint.returncode, lint.stdout), (0, ""))
        self.assertEqual(run("lint", match_level).returncode, 0)

        # The third piece begins after 30 game seconds, which blows make longer.
        run("simulate", "--data", self.folder, "--match", "--until", "3900", "--save", "then", cwd=self.folder)
        self.assertTrue("Name: harbour buoy\n" in (self.folder / "then").read_text(), "the buoy is not in the match")


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    PAGE = Path(sys.argv.pop()).resolve()
    TOOL = Path(sys.argv.pop()).resolve()
    unittest.main(verbosity=2)
