#!/usr/bin/env python3
"""Many matches of pilots in one process: equal digests, and memory that does not grow.

Usage: tools/proof/matches.py [--matches N] [--asan N] [--tsan N] [--hours H] [--fresh]

N (1,000) matches in one process, twice; 50 under the address and undefined-behaviour sanitizers, 10 under the thread
sanitizer (builds build-asan and build-tsan; left out where there is none); and, with --hours, matches in processes of 500
until they have taken so long, over any number of breaks.
"""
import argparse
import pathlib
import subprocess
import sys
import time

import rows

GENERATOR = 48  # bytes of a spring, with the allocator's own word
PLACE = 16      # bytes of its place in the host's list, which doubles when it is full
PLAY = ["simulate", "--match", "--pilots", "--digest"]


def resident(pid):
    """MB of a running process, or None when it has ended."""
    try:
        status = pathlib.Path(f"/proc/{pid}/status").read_text()
    except OSError:
        return None
    line = next((line for line in status.splitlines() if line.startswith("VmRSS")), None)
    return int(line.split()[1]) / 1024 if line else None


def play(tool, count):
    """Digest, exit code, the memory as each match's line came, in MB, and what was printed."""
    process = subprocess.Popen(["stdbuf", "-oL", str(tool), *PLAY, "--matches", str(count)], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True)
    memory, text = [], ""
    for line in process.stdout:
        text += line
        if line.startswith("match "):
            memory.append(resident(process.pid) or (memory[-1] if memory else 0))
    process.wait()
    return rows.figure(text, "digest"), process.returncode, memory, text


def twice(count):
    (_, first), (_, second) = rows.each(("first", "second"), lambda _: play(rows.TOOL, count))
    early, late = first[2][min(9, count - 1)], first[2][-1]
    generators = int(rows.figure(first[3], "generators") or 0)
    # Those of the first ten matches are taken off the last one's memory too, a hundredth of all.
    kept = (GENERATOR * generators + PLACE * 2 ** generators.bit_length()) / 2**20
    others = late - kept
    equal = first[0] is not None and first[0] == second[0]
    rows.write(2, f"{count:,} matches in one process, twice", f"2 x {count:,}, seed 10",
               f"digests {'equal' if equal else 'DIFFER'}: {first[0]}; memory {early:.1f} MB after the "
               f"{min(10, count)}th, {late:.1f} MB after the last, of which some {kept:.1f} MB, by the sizes of their parts, are "
               f"the {generators:,} generators that are kept by design; without them {others / early:.3f} of the tenth")
    return equal and first[1] == 0 and second[1] == 0 and others <= 1.02 * early


def sanitized(build, count, what):
    tool = rows.ROOT / build / "brinewhirl-tool"
    if not tool.exists():
        print(f"{build} has no tool: left out")
        return True
    digest, code, memory, text = play(tool, count)
    plain = play(rows.TOOL, count)[0]
    well = code == 0 and digest == plain
    if not well:
        print(text[-3000:], file=sys.stderr)
    rows.write(2, f"matches under {what}", f"{len(memory)}, seed 10",
               f"{'no fault' if code == 0 else f'exit code {code}'}, digest {'equal' if digest == plain else 'DIFFERS'}")
    return well


def long(hours, fresh):
    state = rows.State("matches", fresh, seconds=0.0, matches=0, digests=[])
    while state["seconds"] < hours * 3600:
        start = time.monotonic()
        digest, code, memory, _ = play(rows.TOOL, 500)
        state["seconds"] += time.monotonic() - start
        state["matches"] += len(memory)
        state["digests"] = sorted({*state["digests"], f"{digest}"})
        state.save()
        if code != 0:
            return False
    rows.write(2, "matches for hours", f"{state['matches']:,} matches in {state['seconds'] / 3600:.1f} of 24 hours",
               f"{len(state['digests'])} digest for each 500, no other exit code than 0")
    return len(state["digests"]) <= 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--matches", type=int, default=1000)
    parser.add_argument("--asan", type=int, default=50)
    parser.add_argument("--tsan", type=int, default=10)
    parser.add_argument("--hours", type=float, default=0)
    parser.add_argument("--fresh", action="store_true")
    options = parser.parse_args()
    well = twice(options.matches) if options.matches else True
    if options.asan:
        well &= sanitized("build-asan", options.asan, "the address and undefined-behaviour sanitizers")
    if options.tsan:
        well &= sanitized("build-tsan", options.tsan, "the thread sanitizer")
    if options.hours:
        well &= long(options.hours, options.fresh)
    return 0 if well else 1


sys.exit(main())
