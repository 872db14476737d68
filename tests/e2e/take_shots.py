#!/usr/bin/env python3
"""take_shots.py PROGRAM SECONDS...: shows the program in a virtual display and leaves screenshots in the folder shots/
beside the program: of the title, and for each of the times since the match began."""

import sys
from pathlib import Path

from virtual_display import Game, VirtualDisplay


def main():
    program = Path(sys.argv[1]).resolve()
    shots = program.parent / "shots"
    shots.mkdir(exist_ok=True)
    with VirtualDisplay(1280, 720) as display:
        game = Game(display, program)
        game.reach_title()
        display.take_picture().save(shots / "play-title.png")
        game.leave_title()
        for seconds in sorted(map(float, sys.argv[2:])):
            game.sleep_until(seconds)
            display.take_picture().save(shots / f"play-{seconds:g}s.png")
        print(f"screenshots: {shots}/play-*.png")
        return game.quit()


if __name__ == "__main__":
    sys.exit(main())
