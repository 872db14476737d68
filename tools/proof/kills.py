#!/usr/bin/env python3
"""Nothing that was edited longer ago than two minutes may be lost, whenever the game is killed.

Usage: tools/proof/kills.py [--program build/brinewhirl] [--count N] [--seed S] [--jobs J] [--fresh]

Each of N times the real program runs in a virtual display, an object is renamed on the editor's bars again and again,
and SIGKILL ends the program: half of the times anywhere within four minutes, half within a second of the moment in which
unsaved changes are put aside. The program is started again, what it offers is loaded and saved, and the names tell which
changes came through. A whole run of a hundred takes about two hours on each of two displays side by side. Goes on where it
was broken off."""

import argparse
import pathlib
import random
import re
import signal
import sys
import tempfile
import time

import rows

sys.path.insert(0, str(rows.ROOT / "tests" / "e2e"))
import virtual_display  # noqa: E402
from virtual_display import Game, VirtualDisplay, wait_until  # noqa: E402

virtual_display.PATIENCE = 400.0  # several programs at once, at the lowest priority, take their time to start

PERIOD = 120.0  # seconds of unsaved changes between two copies
SLACK = 6.0  # seconds that a change may take from the keys to the scene where frames come slowly
LONGEST = 240.0
LEAST_PAUSE = 0.25  # seconds in which the game shows another frame; more where frames come slowly
PATIENCE = 30.0  # seconds for what is done to be seen
# Of the bars as they stand first, 1280 x 720.
MIDDLE = (640, 360)
NEW_LEVEL = (385, 98)
MAKE_BOX = (170, 142)
NAME = (1010, 58)
NAME_FIELD = (962, 50, 200, 16)
PROPERTIES = (950, 120, 300, 300)  # dark once something is selected
TOOLS = (20, 130, 300, 300)
DARK = 90
DARK_WITH_TEXT = 140
FILE_NAME = (90, 42)
SAVE_LEVEL = (170, 262)
OFFER = (420, 156)  # the button of the line over it, "The last run broke off"


class Hand:
    def __init__(self, display):
        self.display = display
        self.pause = LEAST_PAUSE

    def part(self, area):
        return self.display.take_picture().crop(*area)

    def wait_for_dark(self, area, mean):
        wait_until(lambda: sum(self.part(area).mean()) / 3 < mean, PATIENCE, "a bar")

    def press(self, *commands):
        for command in commands:
            self.display.run("xdotool", *command.split())
            time.sleep(self.pause)

    def click(self, place):
        self.press("mousemove {} {}".format(*place), "mousedown 1", "mouseup 1")

    def type_into(self, place, text):
        self.click(place)
        self.display.run("xdotool", "type", "--delay", "60", text)
        self.press("keydown Return", "keyup Return")

    def show_bars(self):
        self.press("mousemove 640 700")
        started = time.monotonic()
        self.display.run("xdotool", "keydown", "F1")
        self.wait_for_dark(TOOLS, DARK_WITH_TEXT)
        self.pause = max(LEAST_PAUSE, time.monotonic() - started)
        self.press("keyup F1")

    def rename(self, name):
        """When it began, or None where nobody sees that it happened."""
        before = self.part(NAME_FIELD)
        started = time.monotonic()
        self.type_into(NAME, name)
        return started if self.part(NAME_FIELD).rgb != before.rgb else None


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
    hand.show_bars()
    return game, hand


def edit_and_kill(display, program, after):
    """Renames until `after` seconds since the first change; when that was, the changes by number, and the kill."""
    game, hand = open_bars(display, program)
    hand.click(NEW_LEVEL)
    hand.click(MAKE_BOX)
    begun = time.monotonic()
    hand.click(MIDDLE)
    hand.wait_for_dark(PROPERTIES, DARK)
    changes = {}
    number = 0
    while time.monotonic() < begun + after - 6.0 * hand.pause - 2.0:
        number += 1
        if (started := hand.rename(f"act {number}")) is not None:
            changes[number] = started
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
    wait_until(saved.exists, PATIENCE, "the level")
    time.sleep(hand.pause)
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


def kill_once(program, which, after):
    with tempfile.TemporaryDirectory() as folder, VirtualDisplay(1280, 720) as display:
        copy = install(program, pathlib.Path(folder))
        begun, changes, killed = edit_and_kill(display, copy, after)
        copies = sorted(path.name for path in copy.parent.glob("autosaves/recover-*"))
        last = load_offered(display, copy)
        later = [when for number, when in changes.items() if number > (last or 0)]
        missing = begun if last is None else min(later, default=killed)
        lost = killed - missing
        good = lost <= PERIOD + SLACK and (last is not None or not copies)
        print(f"kill {which} after {after:.1f} s: {len(changes)} changes, {len(copies)} copies, "
              f"offered up to {'nothing' if last is None else last}, lost {lost:.1f} s{'' if good else ': BAD'}", flush=True)
        return {"good": good, "lost": round(lost, 1), "offered": last is not None}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", type=pathlib.Path, default=rows.ROOT / "build" / "brinewhirl")
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--fresh", action="store_true")
    wanted = parser.parse_args()
    chance = random.Random(wanted.seed)
    times = [chance.uniform(8.0, LONGEST) if i % 2 == 0 else PERIOD + chance.uniform(-1.0, 1.0) for i in range(wanted.count)]
    program = wanted.program.resolve()
    state = rows.State("kills", wanted.fresh, kills={})
    left = [(number, after) for number, after in enumerate(times, 1) if str(number) not in state["kills"]]
    for (number, _), found in rows.each(left, lambda pair: try_once(program, *pair), wanted.jobs):
        if found is not None:
            state["kills"][str(number)] = found
            state.save()
    kills = state["kills"].values()
    bad = sum(not kill["good"] for kill in kills)
    most = max((kill["lost"] for kill in kills), default=0.0)
    rows.write(4, "the editor's unsaved work", f"{len(kills)} of {wanted.count} kills at random moments, seed {wanted.seed}",
               f"{bad} lost more than two minutes and six seconds of changes, or their offer; at most {most:.1f} s lost, "
               f"{sum(kill['offered'] for kill in kills)} with a copy that was offered and loaded")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
