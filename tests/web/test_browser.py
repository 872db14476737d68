#!/usr/bin/python3
"""test_browser.py PAGE TOOL: the game in a real browser, from a static folder as build-web/ is one, beside what the tool
makes of the same runs. Pictures are left in build/shots/, times are printed."""

import subprocess
import sys
import time
import unittest
from pathlib import Path

from chromium import PATIENCE, Chromium, serve
from PIL import Image

ROOT = Path(__file__).resolve().parents[2]
GOLDEN = ROOT / "tests" / "golden"
BLOCK = 8  # pixels each way, whose mean colours are compared
TOLERANCE = 12.0  # of 255
FILM = (960, 540)  # in which films of that size are drawn, before two by two pixels become one
# Of tests/golden, and how many frames of its recording lead to it: films show a moment when it is best seen.
PICTURES = {"000500-segment-begin-crateyard.png": 651, "000900-menu-open-pause.png": 903}
FILE_NAME, SAVE_LEVEL = (90, 42), (170, 262)  # on the editor's tools, as they stand first

# Pads as a browser shows them, held by the test; the page hears of them as of real ones.
PADS = """
window.pads = [null, null, null, null];
navigator.getGamepads = () => window.pads;
window.tellOfPad = (slot, type) => {
  const event = new Event(type);
  event.gamepad = window.pads[slot];
  window.dispatchEvent(event);
};
window.plugIn = (slot) => {
  window.pads[slot] = {id: 'Test pad ' + slot + ' (STANDARD GAMEPAD)', index: slot, connected: true, mapping: 'standard',
      timestamp: performance.now(), axes: [0, 0, 0, 0],
      buttons: Array.from({length: 17}, () => ({pressed: false, touched: false, value: 0}))};
  window.tellOfPad(slot, 'gamepadconnected');
};
window.pullOut = (slot) => {
  window.pads[slot].connected = false;
  window.tellOfPad(slot, 'gamepaddisconnected');
  window.pads[slot] = null;
};
window.hold = (slot, button, down) => {
  window.pads[slot].buttons[button] = {pressed: down, touched: down, value: down ? 1 : 0};
  window.pads[slot].timestamp = performance.now();
};
"""
START = 9  # of a standard pad

# Which keys the browser was asked to leave alone.
KEYS = """
window.kept = new Set();
addEventListener('keydown', (event) => { if (event.defaultPrevented) kept.add(event.key); });
"""

# Listens to what the game plays, where it leaves the page.
SOUND = """
(() => {
  const connect = AudioNode.prototype.connect;
  AudioNode.prototype.connect = function (to, ...rest) {
    if (to === this.context.destination && !window.meter) {
      window.meter = this.context.createAnalyser();
      connect.call(this, window.meter);
    }
    return connect.call(this, to, ...rest);
  };
  window.loudness = () => {
    const samples = new Float32Array(window.meter.fftSize);
    window.meter.getFloatTimeDomainData(samples);
    return Math.max(...samples.map(Math.abs));
  };
})();
"""


def worst_block(mine, theirs):
    """The greatest distance of two blocks in two pictures of one size, as the desktop's golden test has it: brightness
    counts most."""
    small = (mine.width // BLOCK, mine.height // BLOCK)
    pair = [picture.convert("RGB").resize(small, Image.BOX).getdata() for picture in (mine, theirs)]

    def distance(a, b):
        red, green, blue = (x - y for x, y in zip(a, b))
        brightness = 0.299 * red + 0.587 * green + 0.114 * blue
        return abs(brightness) + 0.25 * abs(red - brightness) + 0.25 * abs(blue - brightness)

    return max(distance(a, b) for a, b in zip(*pair))


class BrowserTest(unittest.TestCase):
    page = Path()  # both set from the command line
    tool = Path()

    def open(self, width=640, height=360, options=()):
        server, self.address = serve(self.page)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        self.browser = self.enterContext(Chromium(width, height, options))
        self.browser.before_page(PADS + SOUND + KEYS)

    def start(self, wish=""):
        began = time.monotonic()
        self.browser.go(self.address + wish)
        self.browser.wait_for("document.getElementById('cover').hidden", "the game's start")
        print(f"started in {time.monotonic() - began:.1f} s")

    def reach_title(self):
        self.start()

        def skip():
            self.browser.press("Enter")
            return "Title Created" in self.browser.messages

        self.browser.wait(skip, "the title")
        self.browser.frames(10)

    def reach_match(self):
        self.reach_title()
        self.browser.press("Enter")
        self.browser.frames(60)

    def shoot(self, name):
        return Image.open(self.browser.shoot(ROOT / "build" / "shots" / f"web-{name}.png")).convert("RGB")

    def assert_no_errors(self):
        self.assertEqual(self.browser.errors, [])

    def test_keys_sound_focus_and_pads(self):
        self.open()
        self.start()
        self.assertEqual(self.browser.run("AL.currentCtx.audioCtx.state"), "suspended")
        self.reach_match()
        self.browser.wait_for("AL.currentCtx.audioCtx.state === 'running'")
        self.browser.wait_for("loudness() > 0.01", "sound")
        self.shoot("match")
        self.browser.run("window.dispatchEvent(new Event('blur'))")
        self.browser.frames(100)  # what ripples on the screen runs out
        self.assertIn("Focus Lost", self.browser.messages)
        paused = self.shoot("paused")
        self.browser.frames(30)
        self.assertEqual(worst_block(self.shoot("still-paused"), paused), 0, "nothing moves")
        self.browser.run("window.dispatchEvent(new Event('focus'))")
        playing = self.shoot("before-menu")
        for slot in range(4):
            self.browser.run(f"plugIn({slot})")
        self.browser.frames(5)
        self.press_pad(3, START)
        self.assertGreater(worst_block(self.shoot("pad-menu"), playing), 60, "the fourth pad opens the menu")
        self.press_pad(3, START)
        self.browser.run("pullOut(3)")
        self.browser.frames(10)
        self.shoot("pad-gone")
        self.assert_no_errors()

    def press_pad(self, slot, button):
        for down in ("true", "false"):
            self.browser.run(f"hold({slot}, {button}, {down})")
            self.browser.frames(6)

    def test_a_saved_level_stays(self):
        self.open()
        self.reach_match()
        self.browser.press("ArrowUp")
        self.browser.press("Escape")
        self.browser.press("Escape")
        self.browser.press("F1")
        self.browser.frames(10)
        self.assertEqual(self.browser.run("[...kept].sort().join(' ')"), "ArrowUp Escape F1")
        self.shoot("editor")
        self.browser.click(*FILE_NAME)
        for letter in "mine":
            self.browser.press(letter, 2)
        self.browser.press("Enter")
        self.browser.click(*SAVE_LEVEL)
        self.browser.wait_for("FS.analyzePath('/game/mine').exists", "the saved level")
        text = self.browser.run("FS.readFile('/game/mine', {encoding: 'utf8'})")
        self.browser.run("Files.add(new File(['{\\n}\\n'], 'dropped'))")
        self.browser.wait_for("document.getElementById('fileList').textContent.includes('recordings/')")
        self.browser.run("new Promise((done) => setTimeout(done, 500))")  # storage writes behind the page's back
        self.start()
        self.assertEqual(self.browser.run("FS.readFile('/game/mine', {encoding: 'utf8'})"), text)
        self.assertTrue(self.browser.run("FS.analyzePath('/game/autosaves/autosave-0-mine').exists"))
        self.assertTrue(self.browser.run("FS.analyzePath('/game/dropped').exists"))
        files = self.browser.run("document.getElementById('fileList').textContent")
        self.assertIn("mine", files)
        self.assertIn("recordings/", files)
        self.assert_no_errors()

    def test_pictures_are_those_of_the_desktop(self):
        self.open(*FILM)
        self.start()
        recording = (GOLDEN / "run.input").read_text()
        self.browser.run(f"Files.add(new File([{recording!r}], 'run.input'))")
        for name, frames in PICTURES.items():
            began = time.monotonic()
            self.start(f"?play=recordings/run.input&frames={frames}")
            self.browser.wait_for("!document.getElementById('again').hidden", name)
            print(f"{frames} frames in {time.monotonic() - began:.1f} s")
            run = [self.tool, "simulate", "--boot", "--digest", "--frames", str(frames), "--input", GOLDEN / "run.input"]
            self.assertEqual(self.browser.messages[-1], self.digest(run), "the recording goes as on the desktop")
            self.browser.run("document.getElementById('cover').hidden = true")
            golden = Image.open(GOLDEN / name)
            shown = self.shoot(name.removesuffix(".png")).resize(golden.size, Image.BOX)
            worst = worst_block(shown, golden)
            print(f"{name}: differs by {worst:.1f}")
            self.assertLess(worst, TOLERANCE, name)
        self.assert_no_errors()

    def test_without_webgl_2_a_sentence_says_so(self):
        self.open(options=["--disable-3d-apis"])
        self.browser.go(self.address)
        self.browser.wait_for("document.getElementById('message').textContent.includes('WebGL 2')")
        self.shoot("no-webgl")

    def test_a_match_comes_to_the_same_as_natively(self):
        for run, wish in ((["--frames", "3000", "--input", "tests/e2e/flight.input"], ["tests/e2e/flight.input", "3000"]),
                          (["--frames", "400", "--input", "tests/e2e/mouse.input"], ["tests/e2e/mouse.input", "400"]),
                          (["--pilots", "--until-end"], ["", "0"])):
            native = self.digest([self.tool, "simulate", "--match", "--digest", *run])
            web = self.digest(["node", "tests/web/simulate.js", self.page, *wish])
            self.assertEqual(web, native, run)

    def digest(self, command):
        answer = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, timeout=PATIENCE, check=True)
        return next(line for line in answer.stdout.splitlines() if line.startswith("digest "))


if __name__ == "__main__":
    BrowserTest.page, BrowserTest.tool = (Path(argument).resolve() for argument in sys.argv[1:3])
    del sys.argv[1:3]
    unittest.main(verbosity=2)
