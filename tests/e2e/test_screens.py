#!/usr/bin/env python3
"""test_screens.py PROGRAM: the start-up screens and every menu of the real program, seen on a virtual display.

Leaves its screenshots in the folder shots/ beside the program. Waits for what it expects instead of for a time: a
software driver on a busy machine shows only a few frames a second.
"""

import subprocess
import time

from game_test import GameTest, main
from virtual_display import PATIENCE, wait_until

OTHER = 10  # mean difference of two pictures, of 255, that do not show the same screen

CLOCK = (0.473, 0.007, 0.054, 0.069)  # the clock at the top of a match, as shares: left, top, width, height
GREEN = (0, 180, 0), (20, 255, 20)  # of the selected button; nothing else is so green
BUTTON_SHARE = 0.004  # of the picture that it covers at least

# Where buttons lie, as shares of the width and height, by the depth of their menu.
RESUME, RESTART, HOW_TO_PLAY, OPTIONS, CREDITS, QUIT = ((0.5, 0.5 - 0.0525 * y) for y in (6, 4, 2, 0, -2, -5))
END_RESTART = (0.574, 0.5)
CANCEL, YES = (0.579, 0.5), (0.421, 0.5)
PAGE_CANCEL = (0.5, 0.835)
MUSIC, ALL_SOUND, SCREEN = ((0.563, 0.5 - 0.0559 * y) for y in (4, 1, -2))
NEAR = 0.03


def selected(picture):
    """The middle of the selected button, as shares of the picture's width and height; None when there is none."""
    spot = picture.find_all(*GREEN)
    if spot.pixels < BUTTON_SHARE * picture.width * picture.height:
        return None
    return spot.x / picture.width, spot.y / picture.height


class ScreensTest(GameTest):
    def press(self, key):
        self.display.hold_key(key, 0.3)
        time.sleep(0.2)

    def select(self, *ways):
        """For each key and place: holds the key until the button at the place is selected."""
        for key, place in ways:
            self.display.run("xdotool", "keydown", key)
            pressed = time.monotonic()
            time.sleep(0.2)  # the place may be selected already, and a frame has to see the key
            wait_until(lambda: self.is_selected(place), PATIENCE, f"{key} to select the button at {place}")
            took = time.monotonic() - pressed
            self.display.run("xdotool", "keyup", key)
            time.sleep(took)  # and see it up before it goes down again, however slow frames are

    def is_selected(self, place):
        seen = selected(self.look())
        return seen is not None and all(abs(one - other) < NEAR for one, other in zip(seen, place))

    def press_until(self, key, condition, what):
        """Presses the key, and again when nothing comes of it: the podium takes none before it stands, and the window
        manager loses keys while it maps a window."""

        def has_come():
            self.press(key)
            try:
                return wait_until(condition, 8, what)
            except TimeoutError:
                return False

        wait_until(has_come, 2 * PATIENCE, what)

    # Twice on end: on a busy machine a look may catch one screen going over into the next.
    def wait_for_other(self, picture, what):
        def stands():
            look = self.look()
            return look.mean_difference(picture) > OTHER > look.mean_difference(self.look())

        wait_until(stands, PATIENCE, what)

    def is_still(self):
        picture = self.look()
        time.sleep(1)
        return picture.rgb == self.look().rgb

    # Logo, notice and title come by themselves; the title stays, takes no Escape, and Return begins the match.
    def test_from_the_logo_through_all_menus_to_the_end(self):
        self.play(1440, 810)  # larger than the window that the last option gives
        self.game.gain_focus(self.game.wait_for_window())
        # Not the window manager's frame, which a look may catch before the window fills the screen.
        wait_until(lambda: 2 * self.look().rgb.count(0) < len(self.look().rgb), PATIENCE, "the logo")
        logo = self.shoot("screen-logo")
        self.wait_for_other(logo, "the notice")
        notice = self.shoot("screen-notice")
        self.wait_for_other(notice, "the title")
        title = self.shoot("screen-title")
        self.assertGreater(title.mean_difference(logo), OTHER)
        self.press("Escape")
        time.sleep(2)
        still = self.look()
        self.assertLess(title.mean_difference(still), OTHER, "the title does not stay")
        self.assertNotEqual(title.rgb, still.rgb, "nothing on the title moves")
        self.assertNotIn("Title Created", self.game.lines)
        self.press("Return")
        self.wait_for_other(title, "the match")
        self.walk_the_menus()
        self.assertNotIn("Error", self.game.output)

    def walk_the_menus(self):
        time.sleep(2)
        clock = self.shoot("screen-game").crop_shares(*CLOCK)
        self.assertGreater(min(clock.mean()), 100, "the clock's white wedges")
        self.select(("Escape", RESUME))
        wait_until(self.is_still, PATIENCE, "the picture to stand still under the menu")
        self.press("Escape")
        wait_until(lambda: selected(self.look()) is None, PATIENCE, "the menu to close")
        wait_until(lambda: not self.is_still(), PATIENCE, "the picture to move again")
        self.select(("Escape", RESUME), ("s", RESTART), ("Return", CANCEL))
        self.shoot("menu-confirm")
        self.select(("space", RESTART), ("Down", HOW_TO_PLAY), ("Return", PAGE_CANCEL))
        self.shoot("menu-how-to-play")
        self.select(("Return", HOW_TO_PLAY), ("d", OPTIONS), ("Down", CREDITS), ("Return", PAGE_CANCEL))
        self.shoot("menu-credits")
        self.select(("Escape", CREDITS), ("w", OPTIONS), ("Return", MUSIC))
        self.shoot("menu-options")
        self.select(("Down", ALL_SOUND), ("Down", SCREEN))
        full = self.look()
        self.press_until("Return", lambda: self.look().mean_difference(full) > OTHER, "the window")
        self.shoot("window")
        self.press_until("Return", lambda: self.look().mean_difference(full) < 3, "the full screen again")
        self.select(("Escape", OPTIONS), ("Up", HOW_TO_PLAY), ("Up", RESTART), ("Up", RESUME))
        self.press_until("Return", lambda: selected(self.look()) is None, "the game to go on")
        self.select(("Escape", RESUME), ("Up", QUIT), ("Return", CANCEL), ("Right", YES))
        self.press("Return")
        self.assertEqual(self.game.wait_for_end(), 0)

    # The developer's keys end the match at once. A small screen, because the way to the podium takes 365 frames.
    def test_podium_and_next_match(self):
        self.play(640, 360)
        self.game.reach_match()
        time.sleep(1)
        self.display.run("xdotool", "keydown", "Alt_R", "keydown", "Shift_R")
        self.press("e")
        self.display.run("xdotool", "keyup", "Shift_R", "keyup", "Alt_R")
        self.press_until("Return", lambda: self.is_selected(END_RESTART), "the podium's menu")
        menu = self.shoot("menu-end")
        self.press("Return")
        self.wait_for_other(menu, "the next match")
        self.assertEqual(self.game.quit(), 0)

    # Without a window the same frames go by.
    def test_tool_shows_the_same_screens(self):
        tool = self.program.parent / "brinewhirl-tool"
        run = subprocess.run([tool, "simulate", "--boot", "--frames", "400", "--trace", "-"],
                             capture_output=True, text=True, check=True)
        screens = [line for line in run.stdout.splitlines() if " screen " in line]
        self.assertEqual(screens, ["event 0 screen logo", "event 176 screen notice", "event 353 screen title"])

    def test_ends_at_any_moment_of_the_start(self):
        for seconds in (0, 0.3, 0.7, 1.2, 2, 4):
            with self.subTest(seconds=seconds):
                self.play()
                self.game.wait_for_window()
                self.game.sleep_until(seconds)
                self.assertEqual(self.game.quit(), 0)
                self.doCleanups()


if __name__ == "__main__":
    main(__doc__)
