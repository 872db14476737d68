#!/usr/bin/env python3
"""take_shots.py PROGRAM SECONDS...: shows the program in a virtual display and leaves screenshots in the folder shots/
beside the program: of the title, and for each of the times since the match began."""

import sys
from pathlib import Path

from virtual_display import Game, VirtualDisplay


def main():
    program = Path(sys.argv[1]).resolve()
    times = sorted(float(seconds) for seconds in sys.argv[2:])
    shots = program.parent / "shots"
    shots.mkdir(exist_ok=True)
    with VirtualDisplay(1280, 720) as display, Game(display, program) as game:

        def shoot(name):
            path = shots / f"play-{name}.png"
            display.take_picture().save(path)
            print(path)

        game.reach_title()
        shoot("title")
        game.leave_title()
        for seconds in times:
            game.sleep_until(seconds)
            shoot(f"{seconds:g}s")
        return game.quit()


if __name__ == "__main__":
    sys.exit(main())
