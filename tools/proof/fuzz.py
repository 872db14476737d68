#!/usr/bin/env python3
"""Any bytes as levels, sound banks, pictures, fonts, input files, and played recordings, under the sanitizers.

Usage: tools/proof/fuzz.py [--runs N] [--played N] [--only TARGET,...] [--seconds S] [--fresh]

Goes on where it was broken off, until each target has had N runs (2,000,000; 20,000 played ones), or for S seconds each.
Needs build-asan (cmake --preset asan). What is found stays in build/proof/fuzz; the repository's corpora are only read.
"""
import argparse
import re
import shutil
import sys
import time

import rows

TARGETS = {"level": ("corpus", "levels and archetypes"), "bank": ("bank_corpus", "sound banks"),
           "font": ("font_corpus", "fonts"), "picture": ("picture_corpus", "pictures"),
           "input": ("recording_corpus", "input files, parsed"), "recording": ("recording_corpus", "recordings, played")}
CHUNK = {"recording": 200}
USUAL_CHUNK = 50000
LIMITS = ["-max_len=16384", "-timeout=2", "-malloc_limit_mb=64", "-rss_limit_mb=1024", "-print_final_stats=1", "-verbosity=0"]


def stat(text, name):
    found = re.search(rf"stat::{name}:\s+(\d+)", text)
    return int(found.group(1)) if found else 0


def go_on(target, goal, seconds, state):
    folder = rows.STATE / "fuzz" / target
    corpus = folder / "corpus"
    corpus.mkdir(parents=True, exist_ok=True)
    program = rows.ROOT / "build-asan" / f"{target}_fuzz"
    done = state.setdefault(target, {"runs": 0, "seconds": 0, "faults": 0, "peak": 0, "seeds": []})
    spent = 0
    while done["runs"] < goal and (not seconds or spent < seconds):
        runs = min(CHUNK.get(target, USUAL_CHUNK), goal - done["runs"])
        seed = len(done["seeds"]) + 1
        limits = LIMITS if target != "recording" else [*LIMITS, "-timeout=60"]
        begun = time.monotonic()
        ended = rows.run(program, *limits, f"-runs={runs}", f"-seed={seed}", f"-artifact_prefix={folder}/",
                         *([f"-max_total_time={seconds - spent}"] if seconds else []), corpus,
                         rows.ROOT / "fuzz" / TARGETS[target][0], seconds=None, cwd=folder)
        had = stat(ended.stdout, "number_of_executed_units")
        took = round(time.monotonic() - begun)
        spent += max(1, took)
        done["runs"] += had
        done["seconds"] += took
        done["peak"] = max(done["peak"], stat(ended.stdout, "peak_rss_mb"))
        done["seeds"].append(seed)
        failed = ended.returncode != 0 and not only_waited(program, limits, ended.stdout)
        if failed:
            done["faults"] += 1
            (folder / f"fault-{seed}.log").write_text(ended.stdout)
            print(ended.stdout[-3000:], file=sys.stderr)
        state.save()
        if failed:
            break
    return done


def only_waited(program, limits, text):
    """Whether the input took its time only because a busy machine gave it none: alone it is quick."""
    kept = re.search(r"Test unit written to (\S+/timeout-\S+)", text)
    return bool(kept) and rows.run(program, *limits, kept.group(1), seconds=None).returncode == 0


def seeds(count):
    return "seed 1" if count == 1 else f"seeds 1 to {count}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=2_000_000)
    parser.add_argument("--played", type=int, default=20_000)
    parser.add_argument("--only", default=",".join(TARGETS))
    parser.add_argument("--seconds", type=int, default=0)
    parser.add_argument("--fresh", action="store_true")
    options = parser.parse_args()
    if options.fresh:
        shutil.rmtree(rows.STATE / "fuzz", ignore_errors=True)
    state = rows.State("fuzz", options.fresh)
    faults = 0
    for target in options.only.split(","):
        goal = options.played if target == "recording" else options.runs
        done = go_on(target, goal, options.seconds, state)
        faults += done["faults"]
        short = "" if done["runs"] >= goal else f" of {goal:,} so far"
        rows.write(1, TARGETS[target][1], f"{done['runs']:,} runs{short}, {seeds(len(done['seeds']))}",
                   f"{done['faults']} fault{'' if done['faults'] == 1 else 's'}; at most {done['peak']} MB with the sanitizers' own")
    return 1 if faults else 0


sys.exit(main())
