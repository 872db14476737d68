#!/usr/bin/env python3
"""test_screens.py PROGRAM: the start-up screens and every menu of the real program, seen on a virtual display.

Leaves its screenshots in the folder shots/ beside the program. Waits for what it expects instead of for a time: a
software driver on a busy machine shows only a few frames a second.
"""

import subprocess
import sys
import time
import unittest
from pathlib import Path

from virtual_display import PATIENCE, Game, VirtualDisplay, wait_until

PROGRAM = Path()  # set from the command line

OTHER = 10  # mean difference of two pictures, of 255, that do not show the same screen

CLOCK = (605, 5, 70, 50)  # the clock at the top of a match, in a 1280 x 720 picture
GREEN = (0, 180, 0), (20, 255, 20)  # of the selected button; nothing else is so green
BUTTON_SHARE = 0.004  # of the picture that it covers at least

# Where buttons lie, as shares of the width and height, by the depth of their menu.
RESUME, RESTART, HOW_TO_PLAY, OPTIONS, CREDITS, QUIT = ((0.5, 0.5 - 0.0525 * y) for y in (6, 4, 2, 0, -2, -5))
END_QUIT = (0.426, 0.5)
CANCEL, YES = (0.579, 0.5), (0.421, 0.5)
PAGE_CANCEL = (0.5, 0.835)
MUSIC, ALL_SOUND, SCREEN = ((0.563, 0.5 - 0.0559 * y) for y in (4, 1, -2))
NEAR = 0.03


def save(picture, name):
    folder = PROGRAM.parent / "shots"
    folder.mkdir(exist_ok=True)
    picture.save(folder / f"{name}.png")
    return picture


def selected(picture):
    """The middle of the selected button, as shares of the picture's width and height; None when there is none."""
    spot = picture.find_all(*GREEN)
    if spot is None or spot.pixels < BUTTON_SHARE * picture.width * picture.height:
        return None
    return spot.x / picture.width, spot.y / picture.height


class ScreensTest(unittest.TestCase):
    def play(self, width=1280, height=720):
        self.display = self.enterContext(VirtualDisplay(width, height))
        self.game = self.enterContext(Game(self.display, PROGRAM))
        self.size = f"{width}x{height}"

    def shoot(self, name):
        return save(self.display.take_picture(), f"{name}-{self.size}")

    def press(self, key):
        self.display.hold_key(key, 0.3)
        time.sleep(0.2)

    def select(self, key, place):
        """Holds the key until the button at the place is selected; returns the picture."""
        seen = None

        def is_selected():
            nonlocal seen
            picture = self.display.take_picture()
            seen = selected(picture)
            near = seen is not None and all(abs(one - other) < NEAR for one, other in zip(seen, place))
            return picture if near else None

        self.display.run("xdotool", "keydown", key)
        pressed = time.monotonic()
        time.sleep(0.2)  # the place may be selected already, and a frame has to see the key
        try:
            return wait_until(is_selected, 10, f"{key} to select the button at {place}")
        except TimeoutError as error:
            self.shoot("not-selected")
            self.fail(f"{error}; selected is {seen}")
        finally:
            took = time.monotonic() - pressed
            self.display.run("xdotool", "keyup", key)
            time.sleep(took)  # and see it up before it goes down again, however slow frames are

    def wait_for_other(self, picture, what):
        wait_until(lambda: self.display.take_picture().mean_difference(picture) > OTHER, PATIENCE, what)

    def wait_for_rest(self):
        """Waits until the picture stands still and returns it."""

        def is_still():
            picture = self.display.take_picture()
            time.sleep(1)
            return picture if picture.changed_pixels(self.display.take_picture()) == 0 else None

        return wait_until(is_still, PATIENCE, "the picture to stand still")

    # Logo, notice and title come by themselves; the title stays, takes no Escape, and Return begins the match.
    def test_screens_follow_one_another(self):
        self.play()
        self.game.gain_focus(self.game.wait_for_window())
        wait_until(lambda: any(self.display.take_picture().rgb), 10, "the logo")
        logo = self.shoot("screen-logo")
        self.wait_for_other(logo, "the notice")
        notice = self.shoot("screen-notice")
        self.wait_for_other(notice, "the title")
        title = self.shoot("screen-title")
        self.assertGreater(title.mean_difference(logo), OTHER)
        self.press("Escape")
        time.sleep(2)
        self.assertEqual(title.changed_pixels(self.display.take_picture()), 0)
        self.assertNotIn("Title Created", self.game.lines)
        self.press("Return")
        self.wait_for_other(title, "the match")
        self.assertGreater(min(self.shoot("screen-game").crop(*CLOCK).mean()), 100, "the clock's white wedges")
        self.assertNotIn("Error", self.game.output)
        self.assertEqual(self.game.quit(), 0)

    def test_pause_menu_and_all_that_it_opens(self):
        self.play()
        self.walk_the_menus()

    def walk_the_menus(self):
        self.game.reach_match()
        time.sleep(2)
        self.select("Escape", RESUME)
        pause = self.wait_for_rest()
        save(pause, f"menu-pause-{self.size}")
        self.select("s", RESTART)
        save(self.select("Return", CANCEL), f"menu-confirm-{self.size}")
        self.select("space", RESTART)
        self.select("Down", HOW_TO_PLAY)
        save(self.select("Return", PAGE_CANCEL), f"menu-how-to-play-{self.size}")
        self.select("Return", HOW_TO_PLAY)
        self.select("d", OPTIONS)
        self.select("Down", CREDITS)
        save(self.select("Return", PAGE_CANCEL), f"menu-credits-{self.size}")
        self.select("Escape", CREDITS)
        self.select("w", OPTIONS)
        save(self.select("Return", MUSIC), f"menu-options-{self.size}")
        on = self.wait_for_rest()
        self.press("Return")
        wait_until(lambda: self.display.take_picture().changed_pixels(on) > 100, PATIENCE, "the switch to show off")
        self.shoot("menu-options-muted")
        self.press("Return")
        wait_until(lambda: self.display.take_picture().changed_pixels(on) == 0, PATIENCE, "the switch to go back")
        self.select("Down", ALL_SOUND)
        self.select("Escape", OPTIONS)
        for place in (HOW_TO_PLAY, RESTART, RESUME):
            self.select("Up", place)
        self.press("Return")
        wait_until(lambda: self.display.take_picture().changed_pixels(pause) > 0.05 * pause.width * pause.height,
                   PATIENCE, "the game to go on")
        self.quit_by_menu()

    def quit_by_menu(self):
        self.select("Escape", RESUME)
        self.select("Up", QUIT)
        save(self.select("Return", CANCEL), f"menu-quit-{self.size}")
        self.select("Right", YES)
        self.press("Return")
        self.assertEqual(self.game.wait_for_end(), 0)

    def test_window_and_full_screen(self):
        self.play(1440, 810)
        self.game.reach_match()
        for key, place in (("Escape", RESUME), ("Down", RESTART), ("Down", HOW_TO_PLAY), ("Down", OPTIONS),
                           ("Return", MUSIC), ("Down", ALL_SOUND)):
            self.select(key, place)
        full = self.select("Down", SCREEN)
        self.press("Return")
        wait_until(lambda: self.display.take_picture().mean_difference(full) > OTHER, 20, "the window")
        self.shoot("window")
        wait_until(lambda: self.press_until_full(full), 40, "the full screen again")
        self.assertEqual(self.game.quit(), 0)

    def press_until_full(self, full):
        """Presses Return, which is lost while the window manager still maps the window; whether all of it shows."""
        self.press("Return")
        try:
            return wait_until(lambda: self.display.take_picture().mean_difference(full) < 3, 8, "the full screen")
        except TimeoutError:
            return False

    # The developer's keys end the match at once. A small screen, because the way to the podium takes 365 frames, twice.
    def test_podium_restart_and_quit(self):
        self.play(640, 360)
        self.game.reach_match()
        menu = save(self.end_the_match(), f"menu-end-{self.size}")
        self.press("Return")
        self.wait_for_other(menu, "the next match")
        self.shoot("screen-restarted")
        self.end_the_match()
        self.select("Left", END_QUIT)
        self.press("Return")
        self.assertEqual(self.game.wait_for_end(), 0)

    def end_the_match(self):
        """Ends the match and presses Return until the podium has opened its menu; returns the menu's picture."""
        time.sleep(1)
        for key in ("Alt_R", "Shift_R"):
            self.display.run("xdotool", "keydown", key)
        self.press("e")
        for key in ("Shift_R", "Alt_R"):
            self.display.run("xdotool", "keyup", key)
        return wait_until(self.press_at_the_podium, 2 * PATIENCE, "the end menu")

    def press_at_the_podium(self):
        self.shoot("screen-podium")
        self.press("Return")
        time.sleep(0.5)
        picture = self.display.take_picture()
        return picture if selected(picture) else None

    # Without a window the same frames go by.
    def test_tool_shows_the_same_screens(self):
        run = subprocess.run([str(PROGRAM.parent / "brinewhirl-tool"), "simulate", "--boot", "--frames", "400", "--trace",
                              "-"], capture_output=True, text=True, check=True)
        screens = [line for line in run.stdout.splitlines() if " screen " in line]
        self.assertEqual(screens, ["event 0 screen logo", "event 176 screen notice", "event 353 screen title"])

    def test_ends_at_any_moment_of_the_start(self):
        for tenths in (0, 3, 7, 12, 20, 40):
            with self.subTest(seconds=tenths / 10):
                self.play()
                self.game.wait_for_window()
                self.game.sleep_until(tenths / 10)
                self.assertEqual(self.game.quit(), 0)
                self.doCleanups()


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    PROGRAM = Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
