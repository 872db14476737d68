"""The level editor in the real window, by mouse and keys alone.

Usage: test_editor.py PROGRAM
Pictures go to shots/ beside the program; levels are written into a second installation.
"""

import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import Game, VirtualDisplay, wait_until

PROGRAM = Path()  # set from the command line

MIDDLE = (640, 360)
BOX_REACH = 24  # pixels from the middle that the test box surely covers; it is 2 units wide
# Of the bars as they stand first, 1280 x 720.
FILE_NAME = (90, 42)
MAKE_BOX = (170, 142)
SAVE_LEVEL = (170, 262)
KILL = (170, 402)
UNDO = (170, 442)
# Where the bar of properties lies once it shows something.
PROPERTIES = (950, 120, 300, 300)
DARK = 90  # mean of a bar's ground


def save(picture, name):
    folder = PROGRAM.parent / "shots"
    folder.mkdir(exist_ok=True)
    picture.save(folder / f"{name}.png")
    return picture


def install(folder):
    """A second installation of the program, which may write levels."""
    for entry in PROGRAM.parent.iterdir():
        if entry.name not in (PROGRAM.name, "autosaves"):
            (folder / entry.name).symlink_to(entry)
    shutil.copy2(PROGRAM, folder / PROGRAM.name)  # its data lies beside the real file, not beside a link to it
    return folder / PROGRAM.name


class EditorTest(unittest.TestCase):
    def click(self, place):
        self.display.run("xdotool", "mousemove", *map(str, place))
        time.sleep(0.3)
        self.display.run("xdotool", "mousedown", "1")
        time.sleep(0.2)
        self.display.run("xdotool", "mouseup", "1")
        time.sleep(0.3)

    def middle(self):
        x, y = MIDDLE
        return self.display.take_picture().crop(x - BOX_REACH, y - BOX_REACH, 2 * BOX_REACH, 2 * BOX_REACH)

    def brightness_of_properties(self):
        return sum(self.display.take_picture().crop(*PROPERTIES).mean()) / 3

    def test_box_made_picked_killed_and_brought_back(self):
        with tempfile.TemporaryDirectory() as name, VirtualDisplay(1280, 720) as self.display:
            program = install(Path(name))
            with Game(self.display, program) as game:
                game.reach_title()
                time.sleep(2)
                self.edit(program.parent)
                self.assertEqual(game.quit(), 0)
            self.check_files(program.parent)

    def edit(self, folder):
        self.display.run("xdotool", "mousemove", "640", "700")
        time.sleep(0.5)
        before = self.middle()
        self.display.hold_key("F1", 0.2)
        wait_until(lambda: sum(self.display.take_picture().crop(20, 130, 300, 300).mean()) / 3 < 140, 5, "the bars")
        self.click(MAKE_BOX)
        wait_until(lambda: self.middle().mean_difference(before) > 5, 5, "the box to be seen")
        with_box = self.middle()
        self.click(MIDDLE)
        wait_until(lambda: self.brightness_of_properties() < DARK, 5, "the box's properties")
        save(self.display.take_picture(), "editor")
        self.type_file_name("mine")
        self.click(SAVE_LEVEL)
        wait_until((folder / "mine").exists, 5, "the level")
        self.click(KILL)
        wait_until(lambda: self.middle().mean_difference(before) < 3, 5, "the box to be gone")
        self.click(UNDO)
        wait_until(lambda: self.middle().mean_difference(with_box) < 5, 5, "the box to be back")
        save(self.display.take_picture(), "editor-undone")
        self.display.hold_key("F1", 0.2)
        wait_until(lambda: self.brightness_of_properties() > DARK, 5, "the bars to go")

    def type_file_name(self, name):
        self.click(FILE_NAME)
        self.display.run("xdotool", "type", "--delay", "60", name)
        self.display.hold_key("Return", 0.2)  # would start a match if the game heard it
        time.sleep(0.3)

    def check_files(self, folder):
        level = (folder / "mine").read_text()
        self.assertIn("tstc.png", level)
        self.assertIn("Name: 5.000000", level)
        self.assertTrue((folder / "autosaves" / "autosave-0-mine").exists())
        lint = subprocess.run([PROGRAM.parent / "brinewhirl-tool", "lint", folder / "mine"], capture_output=True,
                              text=True, timeout=60)
        faults = [line for line in lint.stdout.splitlines() if ": note: " not in line and "nameless" not in line]
        self.assertEqual(faults, [])


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    PROGRAM = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
