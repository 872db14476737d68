#!/usr/bin/env python3
"""test_editor.py PROGRAM: the level editor in the real window, by mouse and keys alone.

Pictures go to shots/ beside the program; levels are written into a second installation.
"""

import subprocess
import time

from game_test import GameTest, main
from virtual_display import PATIENCE, wait_until

MIDDLE = (640, 360)
UNDER_BOX = (616, 336, 48, 48)  # what the test box surely covers; it is 2 units wide
BESIDE_BOX = (680, 340, 20, 40)  # covered by a box twice as wide
# Of the bars as they stand first, 1280 x 720.
TOOLS = (20, 130, 300, 300)
FILE_NAME = (90, 42)
MAKE_BOX = (170, 142)
SAVE_LEVEL = (170, 262)
LOAD_LEVEL = (170, 282)
KILL = (170, 402)
UNDO = (170, 442)
FIND = (90, 482)
FIRST_FOUND = (170, 502)
# Of the properties of the test box, and where their bar lies once it shows something.
PROPERTIES = (950, 120, 300, 300)
NAME = (1010, 58)
WIDTH = (990, 134)
PICTURE = (1010, 542)
DARK = 90  # mean of a bar's ground
DARK_WITH_TEXT = 140


class EditorTest(GameTest):
    pause = 0.12  # seconds in which the game shows another frame; more where frames come slowly

    def press(self, *commands):
        """Lets xdotool do each, after which the game has time for a frame."""
        for command in commands:
            self.display.run("xdotool", *command.split())
            time.sleep(self.pause)

    def click(self, place):
        self.press("mousemove {} {}".format(*place), "mousedown 1", "mouseup 1")

    def type(self, text):
        self.display.run("xdotool", "type", "--delay", "40", text)
        time.sleep(self.pause)
        self.press("keydown Return", "keyup Return")  # would start a match if the game heard it

    def type_into(self, place, text):
        self.click(place)
        self.type(text)

    def part(self, area):
        return self.look().crop(*area)

    def brightness(self, area):
        return sum(self.part(area).mean()) / 3

    def wait_for_change(self, area, before, what):
        wait_until(lambda: self.part(area).mean_difference(before) > 5, PATIENCE, what)

    def test_a_box_from_its_making_to_its_level(self):
        program = self.install()
        self.play(program=program)
        self.game.reach_title()
        time.sleep(1)
        self.show_bars()
        self.make_box()
        self.change_box()
        self.save_level(program.parent / "mine")
        self.kill_and_undo()
        self.press("keydown F1", "keyup F1")
        wait_until(lambda: self.brightness(TOOLS) > DARK_WITH_TEXT, PATIENCE, "the bars to go")
        self.assertEqual(self.game.quit(), 0)
        self.play(program=program)
        self.game.reach_match()
        time.sleep(1)
        self.show_bars()
        self.load_and_save_again(program.parent / "again")
        self.assertEqual(self.game.quit(), 0)

    def show_bars(self):
        self.press("mousemove 640 700")
        started = time.monotonic()
        self.display.run("xdotool", "keydown", "F1")
        wait_until(lambda: self.brightness(TOOLS) < DARK_WITH_TEXT, PATIENCE, "the bars")
        self.pause = min(max(self.pause, time.monotonic() - started), 0.8)
        self.press("keyup F1")

    def make_box(self):
        self.empty = self.part(UNDER_BOX)
        self.click(MAKE_BOX)
        self.wait_for_change(UNDER_BOX, self.empty, "the box to be seen")
        self.click(MIDDLE)
        wait_until(lambda: self.brightness(PROPERTIES) < DARK, PATIENCE, "the box's properties")
        self.shoot("editor")

    def change_box(self):
        self.type_into(NAME, "harbour crate")
        beside = self.part(BESIDE_BOX)
        self.press("keydown Control_L")  # how fast a double click must be depends on the frames
        self.click(WIDTH)
        self.press("keyup Control_L")
        self.type("4")
        self.wait_for_change(BESIDE_BOX, beside, "the wide box")
        box = self.part(UNDER_BOX)
        self.type_into(PICTURE, "crate2.png")
        self.wait_for_change(UNDER_BOX, box, "the new picture")
        self.type_into(FIND, "velocityc")
        self.click(FIRST_FOUND)

    def save_level(self, level):
        self.type_into(FILE_NAME, level.name)
        self.click(SAVE_LEVEL)
        wait_until(level.exists, PATIENCE, "the level")
        self.shoot("editor-saved")
        self.check_box(level.read_text())
        lint = subprocess.run([self.program.parent / "brinewhirl-tool", "lint", level], capture_output=True, text=True,
                              timeout=60)
        self.assertEqual(lint.returncode, 0, lint.stdout)

    def wait_for_middle(self, picture, what):
        wait_until(lambda: self.part(UNDER_BOX).mean_difference(picture) < 5, PATIENCE, what)

    def kill_and_undo(self):
        with_box = self.part(UNDER_BOX)
        self.click(KILL)
        self.wait_for_middle(self.empty, "the box to be gone")
        self.click(UNDO)
        self.wait_for_middle(with_box, "the box to be back")

    def load_and_save_again(self, level):
        self.type_into(FILE_NAME, "mine")
        self.click(LOAD_LEVEL)
        self.type_into(FILE_NAME, level.name)
        self.click(SAVE_LEVEL)
        wait_until(level.exists, PATIENCE, "the level of the new run")
        self.check_box(level.read_text())

    def check_box(self, text):
        self.assertEqual(text.count("Name: harbour crate\n"), 1)
        box = text.split("Name: harbour crate\n")[1].split("\n\t}\n")[0]
        for part in ("texture path: crate2.png\n", 'Component: "VelocityCap"', "x_: 4\n"):
            self.assertEqual(box.count(part), 1, part)


if __name__ == "__main__":
    main(__doc__)
