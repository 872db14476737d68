"""A build never writes over what a level maker made beside the program.

Usage: test_place_content.py CMAKE SCRIPT
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

COMMAND = []  # set from the command line


class PlaceContentTest(unittest.TestCase):
    def test_only_what_it_placed_itself_is_written_over(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        folder = Path(scratch.name)
        level = folder / "Texture" / "level one"
        level.parent.mkdir()

        def build(shipped):
            """What the folder holds after a build, and what the build says."""
            (folder / "source").write_text(shipped)
            defines = [f"-DSOURCE={folder}/source", f"-DFOLDER={folder}", "-DNAME=Texture/level one"]
            said = subprocess.run(COMMAND[:1] + defines + ["-P"] + COMMAND[1:], capture_output=True, check=True, text=True)
            return [path.read_text() for path in sorted(level.parent.iterdir())], said.stderr

        level.write_text("first")
        self.assertEqual(build("first"), (["first"], ""))  # a folder from before there were records
        self.assertEqual(build("second"), (["second"], ""))
        level.write_text("made")
        placed, said = build("third")
        self.assertEqual(placed, ["third", "made"])
        self.assertIn("Texture/level one.mine", said)
        level.write_text("made again")
        self.assertEqual(build("third")[0], ["third", "made", "made again"])
        self.assertEqual([path.name[9:] for path in sorted(level.parent.iterdir())], ["", ".mine", ".mine.2"])
        for record in (folder / "placed").rglob("*.sha256"):
            record.unlink()
        self.assertEqual(build("fourth")[0], ["fourth", "made", "made again", "third"])


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    COMMAND[:] = sys.argv[-2:]
    del sys.argv[-2:]
    unittest.main(verbosity=2)
