#!/usr/bin/env python3
"""Renders every event of sound/bank.txt to OUTDIR/<name>.ogg; what has not changed since the last time is left alone."""

import argparse
import concurrent.futures
import hashlib
import os
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from soundbuild.effect import read_effect
from soundbuild.pitch import SourceError
from soundbuild.render import RenderError, render
from soundbuild.tune import read_bars, read_tune

ROOT = Path(__file__).resolve().parent.parent
ORCHESTRA = ROOT / "sound/orchestra.orc"
PREFIX = {"music": "event:/Music/", "sfx": "event:/SFX/"}


def read_bank(path):
    """The events as (kind, file name) in their order."""
    events = []
    for number, line in source_lines(path):
        words = line.split()
        if len(words) != 3 or words[1] not in PREFIX or words[0] != PREFIX[words[1]] + words[2].removesuffix(".ogg"):
            raise SourceError(path, number, "expected 'event:/Music/NAME music NAME.ogg' or 'event:/SFX/NAME sfx NAME.ogg'")
        events.append((words[1], words[2]))
    return events


def source_lines(path):
    """Numbered lines that hold something; what follows a # and a blank is a comment, as is a line that starts with #."""
    lines = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        line = ("" if line.startswith("#") else line.split(" # ")[0]).rstrip()
        if line:
            lines.append((number, line))
    return lines


def source_of(name):
    """A jingle may be an effect that is written as a tune."""
    found = [path for path in (ROOT / f"sound/tunes/{name}.tune", ROOT / f"sound/effects/{name}.effect",
                               ROOT / f"sound/effects/{name}.tune") if path.exists()]
    if len(found) != 1:
        raise SourceError(ROOT / "sound/bank.txt", 1, f"{name} has {len(found)} sources in sound/, not one")
    return found[0]


def read_score(name):
    path = source_of(name)
    if path.suffix == ".effect":
        return read_effect(path, source_lines(path))
    return read_tune(path, source_lines(path), _lines_of_tune)


def read_bars_of(name):
    path = source_of(name)
    return read_bars(path, source_lines(path), _lines_of_tune)


def _lines_of_tune(name):
    return source_of(name), source_lines(source_of(name))


def key_of(kind, score, tools):
    """Changes with everything the file is made from."""
    return hashlib.sha256(f"{kind}\n{score.cut}\n{score.csound(0, 0)}\n{tools}".encode()).hexdigest()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("outdir", type=Path)
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many are rendered at once")
    options = parser.parse_args()
    try:
        return build(options.outdir, max(1, options.jobs))
    except (SourceError, RenderError, OSError) as error:
        print(f"build_sound: {error}", file=sys.stderr)
        return 1


def build(outdir, jobs):
    tools = ORCHESTRA.read_text() + (ROOT / "tools/soundbuild/render.py").read_text()
    outdir.mkdir(parents=True, exist_ok=True)
    keys_path = outdir / "rendered.txt"
    keys = {}
    if keys_path.exists():
        keys = dict(reversed(line.split(" ", 1)) for line in keys_path.read_text().splitlines())

    wanted, todo = {}, []
    for kind, file in read_bank(ROOT / "sound/bank.txt"):
        score = read_score(file.removesuffix(".ogg"))
        wanted[file] = key_of(kind, score, tools)
        if keys.get(file) != wanted[file] or not (outdir / file).exists():
            todo.append((kind, file, score))

    done = {file: key for file, key in wanted.items() if file not in [job[1] for job in todo]}
    todo.sort(key=lambda job: -job[2].length)  # the long ones first, so that no core idles at the end
    try:
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            waiting = {pool.submit(render, ORCHESTRA, score, kind, outdir / file): file for kind, file, score in todo}
            for future in concurrent.futures.as_completed(waiting):
                file = waiting[future]
                try:
                    future.result()
                except RenderError as error:
                    raise RenderError(f"{file}: {error}") from None
                done[file] = wanted[file]
                print(f"rendered {file}")
    finally:
        keys_path.write_text("".join(f"{done[file]} {file}\n" for file in wanted if file in done))
    return 0


if __name__ == "__main__":
    sys.exit(main())
