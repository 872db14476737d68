#!/usr/bin/env python3
"""Levels as a stranger might send them: opened by the match, by the editor and by lint.

Usage: tools/proof/packs.py [--only NAME,...]

Each pack is made in a temporary folder, put into a copy of the data, and opened in all three ways. Nothing may crash, hang
for more than two minutes, take more than 2 GB, or write anywhere but into the copy.
"""
import argparse
import pathlib
import resource
import struct
import sys
import tempfile
import zlib

import rows
from files import copy_data

MOST = 2 << 30  # bytes of memory
EMPTY = "{\n}\n"


def level_of(data, name):
    return (data / name).read_text()


def level(objects):
    """A level of the bodies of objects, numbered anew."""
    return "{\n" + "".join(f"\t{number}: {{\n{body}\t}}\n" for number, body in enumerate(objects, 1)) + "}\n"


def body_of(data, name):
    """What stands between the braces of the archetype's object."""
    lines = level_of(data, name).splitlines(keepends=True)
    end = max(number for number, line in enumerate(lines) if line == "\t}\n")
    return "".join(lines[2:end])


def names(data):
    """Slashes, dots and control characters where names of files, objects and scripts stand."""
    body = body_of(data, "crate")
    bad = ("../../../../etc/passwd", "/etc/passwd", "..", "a/../../b", "\x1b[2Jx", "x" * 5000, "%s%n", "con:")
    (data / "pack").write_text(level(body.replace("crate.png", name).replace("crate", name) for name in bad))


def wrong_sums(data):
    """A picture whose checksums are wrong, one that says it is 60,000 x 60,000, and one that ends in its middle."""
    picture = bytearray((data / "Texture/rp.png").read_bytes())
    picture[40] ^= 0xFF
    (data / "Texture/pack.png").write_bytes(picture)

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    header = struct.pack(">IIBBBBB", 60000, 60000, 8, 6, 0, 0, 0)
    (data / "Texture/pack2.png").write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(b"x")))
    (data / "Texture/pack3.png").write_bytes((data / "Texture/rp.png").read_bytes()[:300])
    body = body_of(data, "crate")
    (data / "pack").write_text(level(body.replace("crate.png", f"pack{n}.png") for n in ("", 2, 3)))


def gigabyte(data):
    """A level of a gigabyte, most of which is a hole."""
    with (data / "pack").open("wb") as file:
        file.write(b"{\n")
        file.truncate(1 << 30)


def many(data):
    """20,000 objects that only are, and as many crates as fit into a file that is read, all in one place."""
    body = body_of(data, "crate")
    bare = body[:body.index('\n\t\tComponent: "', body.index('Component: "Transform"')) + 1]
    (data / "pack").write_text(level([bare] * 20000))
    (data / "pack2").write_text(level([body] * ((16 << 20) // (len(body) + 16))))


def nested(data):
    """Blocks within blocks, a hundred thousand deep, and pieces that begin themselves."""
    (data / "pack").write_text("{\n" + '\tComponent: "Transform" {\n' * 100000 + "}\n")
    (data / "pack2").write_text(level_of(data, "level1").replace("levelName_: crateyard", "levelName_: pack2"))


def makers(data):
    """Spawners of spawners: the archetype that is spawned spawns itself, as often as it can."""
    for name in ("fish1", "fish2", "puffer", "crate"):
        (data / name).write_text(level_of(data, "goldrush"))
    (data / "pack").write_text(level_of(data, "goldrush"))


def numbers(data):
    """Numbers that are none, endless ones, and the largest there are, in every field of a prop."""
    lines = level_of(data, "crate").splitlines()
    bad = ("nan", "inf", "-inf", "1e38", "-1e38", "1e-45", "99999999999999999999", "")
    out = [line.split(": ")[0] + ": " + bad[number % len(bad)] if ": " in line and "{" not in line and
           line.split(": ")[1].replace(".", "").replace("-", "").isdigit() else line for number, line in enumerate(lines)]
    (data / "pack").write_text("\n".join(out) + "\n")


PACKS = {"names": names, "pictures": wrong_sums, "a gigabyte": gigabyte, "20 000 objects": many, "nested pieces": nested,
         "makers of makers": makers, "numbers": numbers}


def ways(data, name, folder):
    edit = folder / "edit"
    edit.write_text(f"5 key f1 down\n6 bar FileName = {name}\n7 bar Load Level\n20 bar Step\n30 bar Freeze\n200 bar Undo\n")
    (folder / "empty").write_text(EMPTY)
    yield "match", [rows.TOOL, "simulate", "--match", "--data", data, "--stage", data / name, "--frames", "900", "--pilots"]
    yield "editor", [rows.TOOL, "simulate", "--match", "--data", data, "--frames", "300", "--input", edit]
    yield "lint", [rows.TOOL, "lint", data / name]


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MOST, MOST))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default=",".join(PACKS))
    options = parser.parse_args()
    bad = 0
    for what in options.only.split(","):
        results = []
        with tempfile.TemporaryDirectory() as temporary:
            folder = pathlib.Path(temporary)
            data = copy_data(folder)
            PACKS[what](data)
            for name in sorted(path.name for path in data.glob("pack*")):
                for way, command in ways(data, name, folder):
                    before = {path for path in folder.rglob("*") if "data" not in path.parts}
                    ended = rows.run(*command, seconds=120, cwd=folder, preexec_fn=limit)
                    strays = {path for path in folder.rglob("*") if "data" not in path.parts} - before
                    lines = [line for line in ended.stdout.splitlines() if line.strip()]
                    well = ended.returncode in (0, 1, 2) and not strays and (ended.returncode == 0 or bool(lines))
                    results.append(well)
                    if not well:
                        print(what, name, way, ended.returncode, sorted(strays), lines[-3:], flush=True)
        bad += results.count(False)
        rows.write(8, what, f"{len(results)} openings by match, editor and lint",
                   f"{results.count(True)} well: no crash, no hang, at most 2 GB, nothing written elsewhere")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
