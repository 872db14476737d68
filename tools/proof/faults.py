#!/usr/bin/env python3
"""The n-th allocation, file, thread, sound or GL object that fails, in a start and a minute of a match.

Usage: tools/proof/faults.py [--only KIND,...] [--most N] [--seed S] [--fresh]

tools/proof/faults.c is preloaded, counts the calls of one kind, and lets one of them fail in each run: all of them where
they are no more than N (400), else the first half of N and as many at random. The program must go on, or end with a line
and an exit code; it must neither crash nor hang. Goes on where it was broken off.
"""
import argparse
import pathlib
import random
import sys
import tempfile

import rows

RUN = ["simulate", "--boot", "--frames", "4500", "--wav", "WAV"]
DRAWN = ["film", "--match", "--pilots", "--times", "--to", "30", "--size", "160x90", "--coarse"]
KINDS = {"alloc": (RUN, "allocations"), "open": (RUN, "files opened"), "thread": (RUN, "threads"),
         "sound": (RUN, "sound devices, sources and buffers"), "gl": (DRAWN, "GL objects, while it is drawn"),
         "open-gl": (DRAWN, "files opened, while it is drawn")}


def build():
    library = rows.STATE / "faults.so"
    rows.STATE.mkdir(parents=True, exist_ok=True)
    made = rows.run("cc", "-O1", "-shared", "-fPIC", "-o", library, rows.ROOT / "tools/proof/faults.c")
    if made.returncode != 0:
        sys.exit(made.stdout)
    return library


def play(library, kind, at=None):
    with tempfile.TemporaryDirectory() as folder:
        log = pathlib.Path(folder) / "calls"
        command = [word.replace("WAV", f"{folder}/out.wav") for word in KINDS[kind][0]]
        setting = {"LD_PRELOAD": str(library), "FAULT": kind.split("-")[0], "FAULT_LOG": str(log)}
        if at is not None:
            setting["FAULT_AT"] = str(at)
        # By env, so that nothing but the program is preloaded.
        ended = rows.run("env", *(f"{name}={value}" for name, value in setting.items()), rows.TOOL, *command, seconds=240,
                         cwd=folder)
        return ended, int(log.read_text()) if log.exists() else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default=",".join(KINDS))
    parser.add_argument("--most", type=int, default=400)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--fresh", action="store_true")
    options = parser.parse_args()
    library = build()
    state = rows.State("faults", options.fresh)
    bad = 0
    for kind in options.only.split(","):
        of_kind = state.setdefault(kind, {"calls": play(library, kind)[1], "runs": {}})
        calls = of_kind["calls"]
        places = list(range(1, calls + 1))
        if calls > options.most:
            places = places[:options.most // 2] + random.Random(options.seed).sample(places, options.most // 2)
        left = [at for at in places if str(at) not in of_kind["runs"]]
        for at, (ended, _) in rows.each(left, lambda at, kind=kind: play(library, kind, at)):
            lines = [line for line in ended.stdout.splitlines() if line.strip()]
            well = ended.returncode == 0 or (ended.returncode in (1, 2, 127) and lines)
            of_kind["runs"][str(at)] = [ended.returncode, lines[-1][:160] if lines else ""]
            state.save()
            if not well:
                print(kind, at, ended.returncode, lines[-3:], flush=True)
        runs = of_kind["runs"]
        ends = sum(1 for code, _ in runs.values() if code in (1, 2, 127))
        faults = sum(1 for code, line in runs.values() if code not in (0, 1, 2, 127) or (code != 0 and not line))
        bad += faults
        how = f"each of {calls:,}" if len(runs) >= calls else f"{len(runs)} of {calls:,}, the first and at random, seed {options.seed}"
        rows.write(5, KINDS[kind][1], how, f"{len(runs) - ends - faults} went on, {ends} ended with a line, {faults} crashed or hung")
    return 1 if bad else 0


sys.exit(main())
