#!/usr/bin/env python3
"""The n-th allocation, file, thread, sound or GL object that fails, in a start and a minute of a match.

Usage: tools/proof/faults.py [--only KIND,...] [--most N] [--seed S] [--fresh]

tools/proof/faults.c is preloaded, counts the calls of one kind, and lets one of them fail in each run: all of them where
they are no more than N (400), else the first half of N and as many at random. The program must go on, or end with a line;
it must neither crash nor hang. A library of somebody else's that does not look whether it was given memory crashes all the
same: such runs are counted by the library's name. Goes on where it was broken off.
"""
import argparse
import collections
import pathlib
import random
import signal
import sys
import tempfile

import rows

RUN = ["simulate", "--boot", "--frames", "4500", "--wav", "WAV"]
DRAWN = ["film", "--match", "--pilots", "--times", "--to", "30", "--size", "160x90", "--coarse"]
KINDS = {"alloc": (RUN, "allocations by malloc and new"), "open": (RUN, "files opened"), "thread": (RUN, "threads"),
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


def outcome(kind, code, line):
    """What became of a run. A crash in a library, but that of C++, is told apart where an allocation failed alone: any
    other call's failure is one that our own code has to see."""
    if code == 0:
        return "went on"
    if line and code in (1, 2, 127):
        return "ended with a line"
    if kind == "alloc" and code == -signal.SIGABRT and "std::bad_alloc" in line:
        return "ended before main by the C++ runtime, with its line"
    place = line.removeprefix("crashed in ")
    if kind == "alloc" and line.startswith("crashed in lib") and not place.startswith("libstdc++."):
        return f"crashed inside {place}"
    return "crashed or hung"


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
            run = [ended.returncode, lines[-1][:160] if lines else ""]
            of_kind["runs"][str(at)] = run
            state.save()
            if outcome(kind, *run) == "crashed or hung":
                print(kind, at, ended.returncode, lines[-3:], flush=True)
        runs = of_kind["runs"]
        ends = collections.Counter({"went on": 0, "ended with a line": 0, "crashed or hung": 0})
        ends.update(outcome(kind, *run) for run in runs.values())
        bad += ends["crashed or hung"]
        told = ", ".join(f"{count} {end}" for end, count in ends.items())
        how = f"each of {calls:,}" if len(runs) >= calls else f"{len(runs)} of {calls:,}, the first and at random, seed {options.seed}"
        rows.write(5, KINDS[kind][1], how, told)
    return 1 if bad else 0


sys.exit(main())
