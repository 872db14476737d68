#!/usr/bin/env python3
"""One to four pads pulled, swapped and returned at every frame of a match, in mid-charge.

Usage: tools/proof/pads.py [--from N] [--count N] [--fresh]

A run plays a whole match with four pads and pulls some of them at every 240th frame; 240 runs, each a frame later, pull
at every frame once. 80 frames after each pull every pad charges and lets go: an octopus that is not stunned must fly
where its stick points. A player that answers in none of the last six, a charge without a pad or a frame that stands
still is a fault. Goes on where it was broken off.
"""
import argparse
import math
import subprocess
import sys
import tempfile

import rows

EVERY = 240
MATCH = 15000  # frames; the last pulls may be on the podium
LAST = 13900   # frame of the last flight that counts
AWAY = 20      # frames that a pad is gone
CHARGE, LET_GO = 80, 104  # frames after a pull
WAYS = [(1, 0), (0, 1), (-1, 0), (0, -1)]


def pulls(first):
    return range(first + 60, MATCH - EVERY, EVERY)


def script(first):
    """The input lines: before each pull all four hold a charge."""
    lines = [f"0 pad {slot} connect" for slot in range(4)]
    for number, frame in enumerate(pulls(first)):
        chosen = [slot for slot in range(4) if ((first * 7 + number) % 15 + 1) >> slot & 1]
        for slot in range(4):
            x, y = WAYS[(slot + number) % 4]
            lines.append(f"{frame - 25} pad {slot} axis 5 32767")
            lines.append(f"{frame + CHARGE} pad {slot} axis 0 {32767 * x}")
            lines.append(f"{frame + CHARGE} pad {slot} axis 1 {32767 * y}")
            lines.append(f"{frame + CHARGE - 20} pad {slot} axis 5 -32768")
            lines.append(f"{frame + CHARGE} pad {slot} axis 5 32767")
            lines.append(f"{frame + LET_GO} pad {slot} axis 5 -32768")
        lines += [f"{frame} pad {slot} disconnect" for slot in chosen]
        back = reversed(chosen) if number % 2 else chosen
        lines += [f"{frame + AWAY + index} pad {slot} connect" for index, slot in enumerate(back)]
    return "\n".join(lines) + "\n"


def flights(first, folder):
    """Frame and player -> velocity, in the frames after each letting go; and what the run printed."""
    path = f"{folder}/pads.input"
    with open(path, "w", encoding="utf-8") as file:
        file.write(script(first))
    wanted = {frame + LET_GO + later for frame in pulls(first) for later in range(4)}
    play = (f"'{rows.TOOL}' simulate --match --frames {MATCH} --input '{path}' --check --trace '{folder}/trace' "
            f"> '{folder}/out' 2>&1")
    sift = f"grep -E '^object [0-9]+ [0-9]+ Player[1-4] ' '{folder}/trace'"
    process = subprocess.Popen(["sh", "-c", f"mkfifo '{folder}/trace'; {play} & {sift}; wait"], stdout=subprocess.PIPE,
                               text=True)
    found = {}
    for line in process.stdout:
        words = line.split()
        if int(words[1]) in wanted:
            found[int(words[1]), int(words[3][6]) - 1] = (float(words[11]), float(words[12]))
    process.wait()
    with open(f"{folder}/out", encoding="utf-8") as file:
        return found, file.read()


def judge(first):
    """How many flights were asked for and made, and what was wrong."""
    with tempfile.TemporaryDirectory() as folder:
        found, text = flights(first, folder)
    faults = [] if f"checked {MATCH} frames" in text else [f"run {first}: {text.strip().splitlines()[-1:]}"]
    asked = made = 0
    late = {player: 0 for player in range(4)}
    frames = [frame for frame in pulls(first) if frame + LET_GO < LAST]
    for number, frame in enumerate(pulls(first)):
        if frame + LET_GO >= LAST:
            break
        for player in range(4):
            x, y = WAYS[(player + number) % 4]
            asked += 1
            flew = False
            for later in range(4):
                vx, vy = found.get((frame + LET_GO + later, player), (0.0, 0.0))
                speed = math.hypot(vx, vy)
                flew |= speed > 2 and (vx * x - vy * y) > 0.9 * speed
            made += flew
            late[player] += flew and frame in frames[-6:]
    faults += [f"run {first}: player {player + 1} answers no more" for player in range(4) if late[player] == 0]
    return asked, made, faults


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--from", dest="first", type=int, default=0)
    parser.add_argument("--count", type=int, default=EVERY)
    parser.add_argument("--fresh", action="store_true")
    options = parser.parse_args()
    state = rows.State("pads", options.fresh, done=[], asked=0, made=0, faults=[])
    wanted = range(options.first, min(EVERY, options.first + options.count))
    for first, (asked, made, faults) in rows.each([run for run in wanted if run not in state["done"]], judge):
        state["done"].append(first)
        state["asked"] += asked
        state["made"] += made
        state["faults"] += faults
        state.save()
        print(first, asked, made, *faults, flush=True)
    runs = len(state["done"])
    rows.write(3, "pads pulled, swapped and returned in mid-charge",
               f"{runs} of {EVERY} runs: {runs * len(pulls(0)):,} pulls, each at another frame",
               f"{len(state['faults'])} faults; {state['made'] / max(1, state['asked']):.1%} of {state['asked']:,} flights "
               "asked for afterwards flown (the rest were stunned, pushed or between two pieces)")
    return 1 if state["faults"] else 0


sys.exit(main())
