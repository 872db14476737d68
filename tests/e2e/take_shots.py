#!/usr/bin/env python3
"""take_shots.py PROGRAM SECONDS...: shows the program in a virtual display and leaves a screenshot for each of the
times since its window came, in the folder shots/ beside the program."""

import sys
from pathlib import Path

from virtual_display import Game, VirtualDisplay


def main():
    program = Path(sys.argv[1]).resolve()
    times = sorted(float(seconds) for seconds in sys.argv[2:])
    shots = program.parent / "shots"
    shots.mkdir(exist_ok=True)
    with VirtualDisplay(1280, 720) as display, Game(display, program) as game:
        game.gain_focus(game.wait_for_window())
        for seconds in times:
            game.sleep_until(seconds)
            path = shots / f"play-{seconds:g}s.png"
            display.take_picture().save(path)
            print(path)
        return game.quit()


if __name__ == "__main__":
    sys.exit(main())
