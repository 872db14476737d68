#!/usr/bin/env python3
"""test_game.py PROGRAM: a match of the real program in a real window on a virtual display.

Leaves its screenshots in the folder shots/ beside the program.
"""

import time

from game_test import GameTest, main
from virtual_display import PATIENCE, wait_until

SETTLED = 5.0  # seconds after which the first ripple has left the picture
SEA = (0x96, 0xD6, 0xD1)  # under the floor of the first piece
SEA_TOLERANCE = 30.0

# Fractions of the picture that hold nothing but water when a match begins: left, top, width, height.
OPEN_SEA = (0.38, 0.28, 0.22, 0.09)
# The water inside the quay, of a 1280 x 720 picture: left, top, width, height.
WATER = (150, 60, 985, 630)
# The red of player 1's body, under a floor that may tint it; a bubble with points has half as much of it, the tail of a
# flight none.
RED_LOWEST, RED_HIGHEST = (205, 0, 0), (255, 60, 45)
OCTOPUS_REACH = 20  # pixels
OCTOPUS_PIXELS = 500

# Picture directions, y downwards; each across the one before, whose flight goes on until the next begins.
KEYS = {"d": (1, 0), "w": (0, -1), "a": (-1, 0), "s": (0, 1)}
LEAD = 4  # flights along a key more than against it; another octopus, a prop or a wall turns some aside
LEAST_TRAVEL, MOST_TRAVEL = 6.0, 120.0  # pixels; what seems to go farther was another red thing
LOOKS = 20  # within which a flight is seen, also at five frames a second


class MatchTest(GameTest):
    def check_picture(self, name):
        picture = self.shoot(name)
        self.assertFalse(any(edge.is_black() for edge in picture.edges()), f"{name}: an edge is all black")
        patch = picture.crop_shares(*OPEN_SEA).mean()
        for colour, sea in zip(patch, SEA):
            self.assertAlmostEqual(colour, sea, delta=SEA_TOLERANCE, msg=f"{name}: no sea above the title: {patch}")

    def check_output(self):
        self.assertEqual(self.game.lines[:3], ["Height: 0", "Width: 0", "Refresh Rate: 0"])
        self.assertIn("GL_FRAMEBUFFER_COMPLETE", self.game.lines)
        self.assertNotIn("Error", self.game.output)

    def start_match(self, *size, **how):
        """Begins a match in which the first ripple is gone; returns the window."""
        self.play(*size, **how)
        window = self.game.reach_match()
        self.game.sleep_until(SETTLED)
        return window

    def is_moving(self):
        before = self.look()
        time.sleep(0.5)
        return before.rgb != self.look().rgb

    def test_start_minimised_window_and_keys(self):
        window = self.start_match()
        self.check_picture("start")
        self.game.lose_focus().terminate()
        wait_until(lambda: self.look().crop(640, 360, 100, 100).is_black(), PATIENCE,
                   "the full-screen window to be minimised")
        self.game.gain_focus(window, after=len(self.game.lines))
        time.sleep(1)
        self.check_picture("brought-back")
        self.assertTrue(self.is_moving(), "nothing moves after the window is back")
        leads = dict.fromkeys(KEYS, 0)
        wait_until(lambda: self.have_flown(leads), 3 * PATIENCE, "more flights along each key than against it")
        self.check_output()
        self.assertEqual(self.game.quit(), 0)

    def have_flown(self, leads):
        """Presses each key once and counts its flights along it less those against it. Player 1 stands still until
        everybody has had time to read the first title."""
        for key, direction in KEYS.items():
            leads[key] += self.fly(key, direction)
        self.assertGreater(min(leads.values()), -LEAD, f"flights along the keys less those against them: {leads}")
        return min(leads.values()) >= LEAD

    def fly(self, key, direction):
        """1 when player 1 flies along the direction while the key is held, -1 against it, 0 when neither is seen."""
        self.display.run("xdotool", "keydown", key)
        first = now = self.find_octopus()
        along = looks = 0
        while abs(along) < LEAST_TRAVEL and looks < LOOKS:
            now = self.find_octopus()
            along = (now.x - first.x) * direction[0] + (now.y - first.y) * direction[1]
            looks += 1
        self.display.run("xdotool", "keyup", key)
        if looks == LOOKS or abs(along) > MOST_TRAVEL or min(first.pixels, now.pixels) < OCTOPUS_PIXELS:
            return 0
        return 1 if along > 0 else -1

    def find_octopus(self):
        """Where player 1 is in the water."""
        return self.look().crop(*WATER).find_cluster(RED_LOWEST, RED_HIGHEST, OCTOPUS_REACH)

    def test_large_display_and_closed_window(self):
        self.start_match(1920, 1080)
        self.check_picture("start")
        self.check_output()
        self.display.run("xdotool", "key", "alt+F4")  # the window manager's key for closing
        self.assertEqual(self.game.wait_for_end(), 0)

    def test_stands_still_without_focus(self):
        window = self.start_match(managed=False)
        self.assertTrue(self.is_moving(), "nothing moves while the game runs")
        self.game.lose_focus()
        # A ripple runs to its end while the octopuses wait.
        wait_until(lambda: not self.is_moving(), PATIENCE, "the picture to stand still after the focus is lost")
        still = self.shoot("focus-lost")
        time.sleep(2)
        self.assertTrue(still.rgb == self.look().rgb, "the picture moves without the focus")
        self.game.gain_focus(window, after=len(self.game.lines))
        wait_until(self.is_moving, PATIENCE, "the picture to move again")
        self.assertEqual(self.game.quit(), 0)

    def test_missing_screen_shader_leaves_the_screen_black(self):
        program = self.install()
        (program.parent / "Graphics" / "GLSL" / "wave_frag.glsl").unlink()
        self.start_match(program=program)
        self.assertIn("Could not open file wave_frag.glsl", self.game.output)
        self.assertIn("Loading Shader Error.", self.game.output)
        self.assertLess(max(self.shoot("no-shader").mean()), 2, "the screen is not black")
        self.assertEqual(self.game.quit(), 0)


if __name__ == "__main__":
    main(__doc__)
