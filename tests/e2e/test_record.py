#!/usr/bin/env python3
"""test_record.py PROGRAM: what the tool beside the program records is played again to the same end."""

import subprocess
import tempfile
import time
from pathlib import Path

from game_test import GameTest, main
from virtual_display import PATIENCE, wait_until

# On the bars in a window of 1280 x 720.
FILE_NAME, MAKE_BOX, SAVE_LEVEL, UNDO, MIDDLE = (90, 42), (172, 142), (172, 262), (172, 442), (640, 360)


class RecordTest(GameTest):
    def setUp(self):
        self.tool = self.program.parent / "brinewhirl-tool"
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.file = self.folder / "session.input"

    def press(self, *keys):
        for key in keys:
            self.display.hold_key(key, 0.1)
            time.sleep(0.3)

    def click(self, place):
        self.display.run("xdotool", "mousemove", *map(str, place))
        time.sleep(0.2)
        self.display.run("xdotool", "mousedown", "1")
        time.sleep(0.2)
        self.display.run("xdotool", "mouseup", "1")
        time.sleep(0.2)

    def simulate(self):
        return subprocess.run([self.tool, "simulate", "--input", self.file, "--digest"], capture_output=True, text=True,
                              timeout=PATIENCE)

    def test_session_is_played_again(self):
        """Flights, a lost focus, a level made and saved on the bars, options, a restart: one digest, and one picture."""
        self.play(arguments=("record", str(self.file)), program=self.tool)
        window = self.game.reach_match()
        self.press("d", "w")
        self.game.lose_focus().terminate()
        self.game.gain_focus(window, len(self.game.lines))
        self.press("F1")
        self.click(FILE_NAME)
        self.display.run("xdotool", "key", "ctrl+a")
        self.display.run("xdotool", "type", 'recorded # "stage"')
        self.press("Return")
        for button in (MAKE_BOX, MAKE_BOX, UNDO, MIDDLE):
            self.click(button)
        self.press("F2", "F3", "F4", "Right")
        for command in ("ctrl+d", "ctrl+c", "ctrl+v"):
            self.display.run("xdotool", "key", command)
            time.sleep(0.3)
        self.click(SAVE_LEVEL)
        saved = self.program.parent / 'recorded # "stage"'
        wait_until(saved.exists, PATIENCE, "the saved level")
        saved.unlink()
        self.press("F1", "Escape", "s", "Return", "s", "Return", "Escape")  # a menu, and what is in it
        self.press("Escape", "a")
        code = self.game.quit()
        self.assertEqual(code, 0)
        self.assertIn(" end\n", self.file.read_text()[-20:])

        again = self.simulate()
        self.assertEqual(again.returncode, 0, again.stderr)
        self.assertIn(self.game.lines[-1], again.stdout)
        self.assertFalse(saved.exists(), "what a recording saves stays out of the data folder")

        self.play(arguments=("watch", str(self.file), "--from", "100"), program=self.tool)
        window = self.game.wait_for_window()
        self.game.wait_for_line("digest ")
        self.assertIn(self.game.lines[-1], again.stdout)
        self.display.focus(window)
        self.press("Escape")
        self.assertEqual(self.game.wait_for_end(), 0)

    def test_killed_program_leaves_what_led_there(self):
        self.play(640, 360, arguments=("record", str(self.file)), program=self.tool)
        self.game.reach_match()
        self.press("d", "w")
        self.game.process.kill()
        self.assertLess(time.time() - self.file.stat().st_mtime, 3.0)  # a second, on a machine that keeps up
        again = self.simulate()
        self.assertEqual(again.returncode, 0, again.stderr)
        self.assertNotIn(" end\n", self.file.read_text())


if __name__ == "__main__":
    main(__doc__)
