#!/usr/bin/env python3
"""Sizes of what is handed out, and the frames of the real game.

Usage: tools/proof/sizes.py [--frames N]

The package (./package), the browser's folder (./web --build-only) and the programs, where they are there; and frame times
of N (1,500) frames of the match of pilots on the software driver, with and without what the driver draws. bench/compare and
bench/scale, which need other programs, are in docs/performance.md.
"""
import argparse
import gzip
import os
import re
import sys

import rows


def megabytes(count):
    return f"{count / 1e6:.1f} MB"


def frame_times(frames, **setting):
    ended = rows.run("xvfb-run", "-a", "-s", "-screen 0 1280x720x24", rows.TOOL, "film", "--match", "--pilots", "--times", "--to",
                     frames, seconds=1800, env={**os.environ, "LIBGL_ALWAYS_SOFTWARE": "1", **setting})
    return [float(text) for text in re.findall(r"^frame time .*? ([\d.]+) ms$", ended.stdout, re.MULTILINE)]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--frames", type=int, default=1500)
    options = parser.parse_args()
    for package in sorted((rows.ROOT / "build").glob("brinewhirl_*.deb")):
        installed = rows.figure(rows.run("dpkg-deb", "--field", package).stdout, "Installed-Size")
        rows.write(7, "the Debian package", package.name, f"{megabytes(package.stat().st_size)}, installed "
                   f"{megabytes(int(installed or 0) * 1024)}")
    web = rows.ROOT / "build-web"
    if web.exists():
        files = [path for path in web.rglob("*") if path.is_file()]
        rows.write(7, "the browser's folder", f"{len(files)} files",
                   f"{megabytes(sum(path.stat().st_size for path in files))}, "
                   f"{megabytes(sum(len(gzip.compress(path.read_bytes(), 9)) for path in files))} as gzip sends them")
    for name in ("brinewhirl", "brinewhirl-tool"):
        rows.write(7, name, "the program alone", megabytes((rows.ROOT / "build" / name).stat().st_size))
    drawn, dropped = frame_times(options.frames), frame_times(options.frames, GALLIUM_NOOP="1")
    if len(drawn) != 2 or len(dropped) != 2:
        sys.exit("sizes: the frames could not be measured")
    rows.write(7, "a frame of the real game, 1280 x 720, software driver", f"{options.frames:,} frames of the match of pilots",
               f"median {drawn[0]} ms, 99th percentile {drawn[1]} ms; {dropped[0]} and {dropped[1]} ms when the driver drops "
               "every draw")


main()
