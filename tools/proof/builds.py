#!/usr/bin/env python3
"""One match, one digest: by every compiler, in every kind of build.

Usage: tools/proof/builds.py [--only NAME,...]

Builds the tool by GCC and Clang, for debugging, optimised, optimised at link time, and with the sanitizers, each in
build/proof/NAME, and plays a flight by keys and pads and a whole match of pilots. The browser's build, which is of 32 bits,
is another kind of machine: it is played in Node if build-web is there.
"""
import argparse
import re
import sys

import rows

CLANG = "-DCMAKE_CXX_COMPILER=clang++-14"
BUILDS = {
    "gcc-release": ("GCC, optimised, as it ships", ["--preset", "release"]),
    "gcc-lto": ("GCC, optimised at link time too", ["--preset", "release", "-DCMAKE_INTERPROCEDURAL_OPTIMIZATION=ON"]),
    "gcc-debug": ("GCC, for debugging (-O0)", ["--preset", "debug"]),
    "clang-release": ("Clang, optimised", ["--preset", "clang"]),
    "clang-debug": ("Clang, for debugging (-O0)", ["--preset", "debug", CLANG]),
    "asan": ("Clang, address and undefined-behaviour sanitizers", ["--preset", "asan"]),
    "tsan": ("GCC, thread sanitizer", ["--preset", "tsan"]),
}
FLIGHT = "tests/e2e/flight.input"
RUNS = {"flight": ["--frames", "3000", "--input", FLIGHT], "match": ["--pilots", "--until-end"]}
BROWSER_RUNS = {"flight": ["build-web", FLIGHT, "3000"], "match": ["build-web", "", "0"]}


def digests(runs, *program):
    """By name, of both runs; None where one did not end well."""
    found = {}
    for name, arguments in runs.items():
        ended = rows.run(*program, *arguments, seconds=1800, cwd=rows.ROOT)
        digest = re.search(r"^digest ([0-9A-F]{16})$", ended.stdout, re.MULTILINE)
        found[name] = digest.group(1) if digest and ended.returncode == 0 else None
    return found


def tool_digests(tool):
    return digests(RUNS, tool, "simulate", "--match", "--digest")


def make(name):
    """The tool of a build, or None."""
    ready = rows.ROOT / {"gcc-release": "build", "asan": "build-asan", "tsan": "build-tsan"}.get(name, f"build/proof/{name}")
    made = rows.run("cmake", "-S", rows.ROOT, "-B", ready, *BUILDS[name][1], seconds=600, cwd=rows.ROOT)
    if made.returncode == 0:
        made = rows.run("cmake", "--build", ready, "--target", "brinewhirl-tool", "content", seconds=3600)
    if made.returncode != 0:
        print(made.stdout[-2000:], file=sys.stderr)
        return None
    return ready / "brinewhirl-tool"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default=",".join([*BUILDS, "browser"]))
    options = parser.parse_args()
    expected = tool_digests(rows.TOOL)
    well = all(expected.values())
    for name in options.only.split(","):
        if name == "browser":
            if not (rows.ROOT / "build-web").exists():
                print("there is no build-web: the browser's build is left out")
                continue
            what, found = "the browser's, 32 bits, in Node", digests(BROWSER_RUNS, "node", "tests/web/simulate.js")
        else:
            tool = make(name)
            what, found = BUILDS[name][0], tool_digests(tool) if tool else dict.fromkeys(RUNS)
        equal = found == expected
        well &= equal
        rows.write(6, what, "a flight of 3,000 frames and a match of pilots", ("equal: " if equal else "DIFFER: ")
                   + ", ".join(f"{run} {digest}" for run, digest in found.items()))
    return 0 if well else 1


sys.exit(main())
