"""What the tests of the real program share: the program, how it is shown and installed, and its screenshots."""

import shutil
import sys
import tempfile
import unittest
from pathlib import Path

from virtual_display import Game, VirtualDisplay


class GameTest(unittest.TestCase):
    program = Path()  # set from the command line

    def play(self, width=1280, height=720, managed=True, program=None, arguments=()):
        self.display = self.enterContext(VirtualDisplay(width, height, managed))
        self.game = Game(self.display, program or self.program, *arguments)
        self.size = f"{width}x{height}"

    def look(self):
        return self.display.take_picture()

    def shoot(self, name):
        """The picture of the display, which is left in the folder shots/ beside the program too."""
        picture = self.look()
        folder = self.program.parent / "shots"
        folder.mkdir(exist_ok=True)
        picture.save(folder / f"{name}-{self.size}.png")
        return picture

    def install(self):
        """A second installation of the program, of which a test may write levels and take shaders."""
        folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        for entry in self.program.parent.iterdir():
            if entry.name not in (self.program.name, "Graphics", "autosaves"):
                (folder / entry.name).symlink_to(entry)
        shutil.copytree(self.program.parent / "Graphics", folder / "Graphics")
        # A copy, because the program's data lies beside the real file and not beside a link to it.
        return Path(shutil.copy2(self.program, folder / self.program.name))


def main(usage):
    if len(sys.argv) < 2:
        sys.exit(usage)
    GameTest.program = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
