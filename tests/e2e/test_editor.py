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

from virtual_display import PATIENCE, Game, VirtualDisplay, wait_until

PROGRAM = Path()  # set from the command line

MIDDLE = (640, 360)
BOX_REACH = 24  # pixels from the middle that the test box surely covers; it is 2 units wide
BESIDE_BOX = (680, 340, 20, 40)  # covered by a box twice as wide
# Of the bars as they stand first, 1280 x 720.
FILE_NAME = (90, 42)
ARCHETYPE_NAME = (90, 62)
MAKE_BOX = (170, 142)
SAVE_LEVEL = (170, 262)
LOAD_LEVEL = (170, 282)
SAVE_ARCHETYPE = (170, 302)
KILL = (170, 402)
UNDO = (170, 442)
FIND = (90, 482)
FIRST_FOUND = (170, 502)
# Of the properties of the test box.
NAME = (1010, 58)
WIDTH = (990, 134)
PICTURE = (1010, 542)
COLLIDER_WIDTH = (1010, 658)
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
    pause = 0.12  # seconds in which the game shows another frame; more where frames come slowly

    def press(self):
        self.display.run("xdotool", "mousedown", "1")
        time.sleep(self.pause)
        self.display.run("xdotool", "mouseup", "1")
        time.sleep(self.pause)

    def click(self, place):
        self.display.run("xdotool", "mousemove", *map(str, place))
        time.sleep(self.pause)
        self.press()

    def type_into(self, place, text):
        self.click(place)
        self.type(text)

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "40", text)
        time.sleep(self.pause)
        self.display.hold_key("Return", self.pause)  # would start a match if the game heard it
        time.sleep(self.pause)

    def set_number(self, place, number):
        """By a click with Ctrl; how fast a double click must be depends on the frames."""
        self.display.run("xdotool", "keydown", "Control_L")
        self.click(place)
        self.display.run("xdotool", "keyup", "Control_L")
        time.sleep(self.pause)
        self.type(number)

    def part(self, *area):
        return self.display.take_picture().crop(*area)

    def middle(self):
        x, y = MIDDLE
        return self.part(x - BOX_REACH, y - BOX_REACH, 2 * BOX_REACH, 2 * BOX_REACH)

    def brightness_of_properties(self):
        return sum(self.part(*PROPERTIES).mean()) / 3

    def wait_for_middle(self, picture, what):
        wait_until(lambda: self.middle().mean_difference(picture) < 5, PATIENCE, what)

    def wait_for_change(self, look, before, what):
        wait_until(lambda: look().mean_difference(before) > 5, PATIENCE, what)

    def show_bars(self):
        started = time.monotonic()
        self.display.run("xdotool", "keydown", "F1")
        wait_until(lambda: sum(self.part(20, 130, 300, 300).mean()) / 3 < 140, PATIENCE, "the bars")
        self.pause = min(max(self.pause, time.monotonic() - started), 0.8)
        self.display.run("xdotool", "keyup", "F1")

    def test_a_box_from_its_making_to_a_new_run(self):
        with tempfile.TemporaryDirectory() as name, VirtualDisplay(1280, 720) as self.display:
            program = install(Path(name))
            with Game(self.display, program) as game:
                game.reach_title()
                time.sleep(1)
                self.make_box()
                self.change_box()
                self.save_level_and_archetype(program.parent)
                self.kill_and_undo()
                self.assertEqual(game.quit(), 0)
            self.check_files(program.parent)
            with Game(self.display, program) as game:
                game.reach_match()
                time.sleep(1)
                self.load_and_save_again(program.parent)
                self.assertEqual(game.quit(), 0)

    def make_box(self):
        self.display.run("xdotool", "mousemove", "640", "700")
        time.sleep(0.3)
        self.empty_middle = self.middle()
        self.show_bars()
        self.click(MAKE_BOX)
        self.wait_for_change(self.middle, self.empty_middle, "the box to be seen")
        self.click(MIDDLE)
        wait_until(lambda: self.brightness_of_properties() < DARK, PATIENCE, "the box's properties")
        save(self.display.take_picture(), "editor")

    def change_box(self):
        self.type_into(NAME, "harbour crate")
        beside = self.part(*BESIDE_BOX)
        self.set_number(WIDTH, "4")
        self.set_number(COLLIDER_WIDTH, "2")
        self.wait_for_change(lambda: self.part(*BESIDE_BOX), beside, "the wide box")
        middle = self.middle()
        self.type_into(PICTURE, "crate2.png")
        self.wait_for_change(self.middle, middle, "the new picture")
        self.type_into(FIND, "velocityc")
        self.click(FIRST_FOUND)
        save(self.display.take_picture(), "editor-changed")

    def save_level_and_archetype(self, folder):
        self.type_into(FILE_NAME, "mine")
        self.click(SAVE_LEVEL)
        wait_until((folder / "mine").exists, PATIENCE, "the level")
        self.type_into(ARCHETYPE_NAME, "pattern")
        self.click(SAVE_ARCHETYPE)
        wait_until((folder / "pattern").exists, PATIENCE, "the archetype")
        save(self.display.take_picture(), "editor-saved")

    def kill_and_undo(self):
        with_box = self.middle()
        self.click(KILL)
        self.wait_for_middle(self.empty_middle, "the box to be gone")
        self.click(UNDO)
        self.wait_for_middle(with_box, "the box to be back")
        save(self.display.take_picture(), "editor-undone")
        self.display.hold_key("F1", 0.2)
        wait_until(lambda: self.brightness_of_properties() > DARK, PATIENCE, "the bars to go")

    def load_and_save_again(self, folder):
        self.show_bars()
        self.type_into(FILE_NAME, "mine")
        self.click(LOAD_LEVEL)
        self.type_into(FILE_NAME, "again")
        self.click(SAVE_LEVEL)
        wait_until((folder / "again").exists, PATIENCE, "the level of the new run")
        save(self.display.take_picture(), "editor-loaded")
        self.check_box((folder / "again").read_text())

    def check_box(self, text):
        self.assertEqual(text.count("Name: harbour crate\n"), 1)
        box = text.split("Name: harbour crate\n")[1].split("\n\t}\n")[0]
        for part in ("texture path: crate2.png\n", 'Component: "VelocityCap"', "x_: 4\n", "x_: 2\n"):
            self.assertEqual(box.count(part), 1, part)

    def check_files(self, folder):
        level = (folder / "mine").read_text()
        self.check_box(level)
        self.check_box((folder / "pattern").read_text())
        self.assertIn("Name: 5.000000", level)
        self.assertEqual((folder / "autosaves" / "autosave-0-mine").read_text(), level)
        files = [folder / "mine", folder / "pattern"]
        lint = subprocess.run([PROGRAM.parent / "brinewhirl-tool", "lint", *files], capture_output=True, text=True,
                              timeout=60)
        self.assertEqual(lint.returncode, 0, lint.stdout)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    PROGRAM = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
