#!/usr/bin/env python3
"""test_game.py PROGRAM: drives the real program in a real window on a virtual display.

Leaves its screenshots in the folder shots/ beside the program.
"""

import shutil
import sys
import tempfile
import time
import unittest
from pathlib import Path

from virtual_display import PATIENCE, Game, VirtualDisplay, wait_until

PROGRAM = Path()  # set from the command line

SETTLED = 5.0  # seconds after which the first ripple has left the picture
SEA = (0x86, 0xD9, 0xDC)
SEA_TOLERANCE = 30.0

# Fractions of the picture that hold nothing but water when a match begins: left, top, width, height.
OPEN_SEA = (0.38, 0.28, 0.22, 0.09)
# Where the first title comes to rest, of a 1280 x 720 picture, and how many dark pixels its letters have there.
TITLE_REST = (510, 568, 260, 34)
DARK, TITLE_DARK_PIXELS = 30, 1200
TITLE_LOOKS = 0.5  # seconds between two looks at it
TITLE_DISTURBED = 0.15  # the part of its pixels that ripples and octopuses passing behind it may change meanwhile

# The water inside the quay, of a 1280 x 720 picture: left, top, width, height.
WATER = (150, 60, 985, 630)
# The reds of player 1's picture, blended at its small size; the stage has no patch of them in the water as large.
RED_LOWEST, RED_HIGHEST = (165, 30, 25), (250, 95, 95)
OCTOPUS_REACH = 12  # pixels
OCTOPUS_PIXELS = 30

KEYS = {"d": (1, 0), "a": (-1, 0), "w": (0, -1), "s": (0, 1)}  # picture directions, y downwards
KEY_TRIES = 12  # another octopus, a prop or a wall may turn player 1 aside
LEAST_TRAVEL = 6.0  # pixels


def save(picture, name):
    folder = PROGRAM.parent / "shots"
    folder.mkdir(exist_ok=True)
    picture.save(folder / f"{name}.png")
    return picture


def find_octopus(picture):
    """Where player 1 is in the picture."""
    spot = picture.crop(*WATER).find_cluster(RED_LOWEST, RED_HIGHEST, OCTOPUS_REACH)
    if spot is None or spot.pixels < OCTOPUS_PIXELS:
        return None
    return spot._replace(x=spot.x + WATER[0], y=spot.y + WATER[1])


def flies_along(display, key, direction):
    """Presses the key and tells whether player 1 then flies in the direction; the travel too."""
    display.hold_key(key, 0.2)
    first = find_octopus(display.take_picture())
    time.sleep(0.3)
    second = find_octopus(save(display.take_picture(), f"key-{key}"))
    if first is None or second is None:
        return False, None
    x, y = second.x - first.x, second.y - first.y
    along = x * direction[0] + y * direction[1]
    across = abs(x * direction[1]) + abs(y * direction[0])
    return along > LEAST_TRAVEL and across < along / 2, (round(x, 1), round(y, 1))


def is_moving(display):
    before = display.take_picture()
    time.sleep(0.5)
    return before.changed_pixels(display.take_picture()) > 0


def dark_pixels_of_title(display):
    return {place for place, value in enumerate(display.take_picture().crop(*TITLE_REST).rgb[0::3]) if value < DARK}


def has_title_come_to_rest(display):
    before = dark_pixels_of_title(display)
    time.sleep(TITLE_LOOKS)
    after = dark_pixels_of_title(display)
    return len(before) > TITLE_DARK_PIXELS and len(before ^ after) < TITLE_DISTURBED * len(before)


def wait_for_first_title(display):
    """The match stands still until everybody has had time to read its first title."""
    wait_until(lambda: has_title_come_to_rest(display), PATIENCE, "the first title to come to rest")
    time.sleep(0.5)


class GameTest(unittest.TestCase):
    def check_picture(self, picture, what):
        self.assertEqual(picture.black_edges(), [], f"{what}: edges that are all black")
        left, top, width, height = OPEN_SEA
        patch = picture.crop(int(left * picture.width), int(top * picture.height), int(width * picture.width),
                             int(height * picture.height)).mean()
        for colour, sea in zip(patch, SEA):
            self.assertAlmostEqual(colour, sea, delta=SEA_TOLERANCE, msg=f"{what}: no sea above the title: {patch}")

    def check_output(self, game):
        self.assertEqual(game.lines[:3], ["Height: 0", "Width: 0", "Refresh Rate: 0"])
        self.assertIn("GL_FRAMEBUFFER_COMPLETE", game.lines)
        self.assertNotIn("Error", game.output)

    def test_start_keys_and_end(self):
        with VirtualDisplay(1280, 720) as display, Game(display, PROGRAM) as game:
            game.reach_match()
            game.sleep_until(SETTLED)
            picture = save(display.take_picture(), "start-1280x720")
            self.check_picture(picture, "1280 x 720")
            wait_for_first_title(display)
            self.assertIsNotNone(find_octopus(display.take_picture()), "player 1 is not to be seen")
            for key, direction in KEYS.items():
                tries = []
                while len(tries) < KEY_TRIES:
                    flies, travel = flies_along(display, key, direction)
                    tries.append(travel)
                    if flies:
                        break
                else:
                    self.fail(f"key {key}: player 1 does not fly along {direction}, but {tries} pixels")
            self.check_output(game)
            self.assertEqual(game.quit(), 0)

    def test_large_display_and_closed_window(self):
        with VirtualDisplay(1920, 1080) as display, Game(display, PROGRAM) as game:
            game.reach_match()
            game.sleep_until(SETTLED)
            self.check_picture(save(display.take_picture(), "start-1920x1080"), "1920 x 1080")
            self.check_output(game)
            display.run("xdotool", "key", "alt+F4")  # the window manager's key for closing
            self.assertEqual(game.wait_for_end(), 0)

    def test_stands_still_without_focus(self):
        with VirtualDisplay(1280, 720, managed=False) as display, Game(display, PROGRAM) as game:
            window = game.reach_match()
            game.sleep_until(SETTLED)
            self.assertTrue(is_moving(display), "nothing moves while the game runs")
            game.lose_focus()
            # A ripple runs to its end while the octopuses wait.
            wait_until(lambda: not is_moving(display), PATIENCE, "the picture to stand still after the focus is lost")
            still = save(display.take_picture(), "focus-lost")
            time.sleep(2)
            self.assertEqual(still.changed_pixels(display.take_picture()), 0, "the picture moves without the focus")
            game.gain_focus(window, after=len(game.lines))
            wait_until(lambda: is_moving(display), PATIENCE, "the picture to move again")
            self.assertEqual(game.quit(), 0)

    def test_minimised_and_brought_back(self):
        with VirtualDisplay(1280, 720) as display, Game(display, PROGRAM) as game:
            window = game.reach_match()
            game.sleep_until(SETTLED)
            game.lose_focus().terminate()
            wait_until(lambda: not any(display.take_picture().crop(640, 360, 100, 100).rgb), PATIENCE,
                       "the full-screen window to be minimised")
            game.gain_focus(window, after=len(game.lines))
            time.sleep(1)
            self.check_picture(save(display.take_picture(), "brought-back"), "brought back")
            self.assertTrue(is_moving(display), "nothing moves after the window is back")
            self.assertEqual(game.quit(), 0)

    def test_missing_screen_shader_leaves_the_screen_black(self):
        with tempfile.TemporaryDirectory() as folder:
            program = self.install_without("wave_frag.glsl", Path(folder))
            with VirtualDisplay(1280, 720) as display, Game(display, program) as game:
                game.reach_match()
                game.sleep_until(SETTLED)
                picture = save(display.take_picture(), "no-shader")
                self.assertIn("Could not open file wave_frag.glsl", game.output)
                self.assertIn("Loading Shader Error.", game.output)
                self.assertLess(max(picture.mean()), 2, "the screen is not black")
                self.assertEqual(game.quit(), 0)

    def install_without(self, shader, folder):
        """A second installation of the program that lacks one shader file."""
        for entry in PROGRAM.parent.iterdir():
            (folder / entry.name).symlink_to(entry)
        for changed in (PROGRAM.name, "Graphics"):
            (folder / changed).unlink()
        shutil.copy2(PROGRAM, folder / PROGRAM.name)  # its data lies beside the real file, not beside a link to it
        shutil.copytree(PROGRAM.parent / "Graphics", folder / "Graphics")
        (folder / "Graphics" / "GLSL" / shader).unlink()
        return folder / PROGRAM.name


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    PROGRAM = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
