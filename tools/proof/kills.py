#!/usr/bin/env python3
"""kills.py PROGRAM [--count N] [--seed S] [--jobs J]: nothing that was edited longer ago than two minutes may be lost.

Each of N times the real program runs in a virtual display, an object is renamed on the editor's bars again and again,
and SIGKILL ends the program: half of the times anywhere within four minutes, half within a second of the moment in which
unsaved changes are put aside. The program is started again, what it offers is loaded and saved, and the names tell which
changes came through. A whole run of a hundred takes about two hours on each of --jobs displays side by side."""

import argparse
import pathlib
import random
import re
import signal
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "e2e"))
import virtual_display  # noqa: E402
from virtual_display import Game, VirtualDisplay, wait_until  # noqa: E402

virtual_display.PATIENCE = 400.0  # several programs at once, at the lowest priority, take their time to start

PERIOD = 120.0  # seconds of unsaved changes between two copies
SLACK = 6.0  # seconds that a change may take from the keys to the scene where frames come slowly
LONGEST = 240.0
PAUSE = 0.4  # seconds in which the game shows another frame
# Of the bars as they stand first, 1280 x 720.
MIDDLE = (640, 360)
NEW_LEVEL = (385, 98)
MAKE_BOX = (170, 142)
NAME = (1010, 58)
FILE_NAME = (90, 42)
SAVE_LEVEL = (170, 262)
OFFER = (420, 156)  # the button of the line over it, "The last run broke off"


class Hand:
    def __init__(self, display):
        self.display = display

    def press(self, *commands):
        for command in commands:
            self.display.run("xdotool", *command.split())
            time.sleep(PAUSE)

    def click(self, place):
        self.press("mousemove {} {}".format(*place), "mousedown 1", "mouseup 1")

    def type_into(self, place, text):
        self.click(place)
        self.display.run("xdotool", "type", "--delay", "60", text)
        self.press("keydown Return", "keyup Return")


def install(program, folder):
    for entry in program.parent.iterdir():
        if entry.name not in (program.name, "autosaves") and not entry.name.endswith(".mine"):
            (folder / entry.name).symlink_to(entry)
    copy = folder / program.name
    copy.write_bytes(program.read_bytes())
    copy.chmod(0o755)
    return copy


def open_bars(display, program):
    game = Game(display, program)
    game.reach_match()
    time.sleep(1)
    hand = Hand(display)
    hand.press("mousemove 640 700", "keydown F1", "keyup F1")
    return game, hand


def edit_and_kill(display, program, after):
    """Renames until `after` seconds since the first change; the times of the changes, and of the kill."""
    game, hand = open_bars(display, program)
    hand.click(NEW_LEVEL)
    hand.click(MAKE_BOX)
    begun = time.monotonic()
    hand.click(MIDDLE)
    changes = []
    while time.monotonic() < begun + after - 4.0:
        changes.append(time.monotonic())
        hand.type_into(NAME, f"act {len(changes)}")
    time.sleep(max(0.0, begun + after - time.monotonic()))
    game.process.send_signal(signal.SIGKILL)
    killed = time.monotonic()
    game.process.wait()
    return begun, changes, killed


def load_offered(display, program):
    """The number of the last change that the next start brings back; 0 for the box alone, None when nothing is offered."""
    game, hand = open_bars(display, program)
    hand.click(OFFER)
    hand.type_into(FILE_NAME, "back")
    hand.click(SAVE_LEVEL)
    saved = program.parent / "back"
    wait_until(saved.exists, virtual_display.PATIENCE, "the level")
    time.sleep(PAUSE)
    game.process.kill()
    game.process.wait()
    loaded = any("autosaves/recover-" in line for line in game.lines if line.startswith("loaded "))
    found = re.search(r"Name: act (\d+)\n", saved.read_text())
    return (int(found[1]) if found else 0) if loaded else None


def try_once(program, number, after):
    try:
        return kill_once(program, number, after)
    except (RuntimeError, TimeoutError) as fault:  # of the display, or of a start that did not come to its title
        print(f"kill {number}: not done, {str(fault).splitlines()[0]}", flush=True)
        return None


def kill_once(program, number, after):
    with tempfile.TemporaryDirectory() as folder, VirtualDisplay(1280, 720) as display:
        copy = install(program, pathlib.Path(folder))
        begun, changes, killed = edit_and_kill(display, copy, after)
        copies = sorted(path.name for path in copy.parent.glob("autosaves/recover-*"))
        last = load_offered(display, copy)
        missing = begun if last is None else changes[last] if last < len(changes) else killed
        lost = killed - missing
        good = lost <= PERIOD + SLACK and (last is not None or not copies)
        print(f"kill {number} after {after:.1f} s: {len(changes)} changes, {len(copies)} copies, "
              f"offered up to {'nothing' if last is None else last}, lost {lost:.1f} s{'' if good else ': BAD'}", flush=True)
        return good, lost, last is not None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    wanted = parser.parse_args()
    chance = random.Random(wanted.seed)
    times = [chance.uniform(8.0, LONGEST) if i % 2 == 0 else PERIOD + chance.uniform(-1.0, 1.0) for i in range(wanted.count)]
    program = wanted.program.resolve()
    with ThreadPoolExecutor(wanted.jobs) as pool:
        tries = list(pool.map(lambda pair: try_once(program, *pair), enumerate(times, 1)))
    results = [result for result in tries if result is not None]
    good, offers = sum(good for good, _, _ in results), sum(offered for _, _, offered in results)
    most = max((lost for _, lost, _ in results), default=0.0)
    print(f"{len(results)} kills of {len(tries)}, {good} good, {offers} with an offer; at most {most:.1f} s lost")
    return 0 if len(results) == len(tries) and all(good for good, _, _ in results) else 1


if __name__ == "__main__":
    sys.exit(main())
