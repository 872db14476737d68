#!/usr/bin/env python3
"""Every file that the game reads missing, empty, cut, of another kind, a folder or unreadable; every write that fails.

Usage: tools/proof/files.py [--only NAME,...] [--writes] [--reads] [--fresh]

One file at a time in a copy of the data, through a whole match of pilots with its sound, or through the first frames of
one that is drawn, for what only a picture needs. All levels, archetypes, shaders, banks and the font; three pictures
stand for all. The game must neither crash nor hang, and where the file is used a line must name it. What it said goes into
docs/proof-files.md. Goes on where it was broken off.
"""
import argparse
import os
import pathlib
import shutil
import sys
import tempfile

import rows

BUILD = rows.ROOT / "build"
PICTURES = ("rp.png", "particlebubble.png", "floor_crateyard.png")
CUTS = 10
STATES = ["missing", "empty", *(f"cut {place}" for place in range(1, CUTS + 1)), "another kind", "a folder", "unreadable"]
NOBODY = 65534
NOISE = ("GL_FRAMEBUFFER", "rank ", "digest", "frames", "game seconds", "wall seconds", "times real time", "objects ",
         "pictures ", "frame time", "driver ")


def data_files():
    """Of the game's own, by their kind."""
    shipped = {path.relative_to(rows.ROOT / "game") for path in (rows.ROOT / "game").rglob("*") if path.is_file()}
    kinds = {"level or archetype": sorted(path for path in shipped if len(path.parts) == 1 and not path.suffix),
             "shader": sorted(path for path in shipped if path.suffix == ".glsl"),
             "sound bank": sorted(path.relative_to(BUILD) for path in (BUILD / "AudioSource").rglob("*.bank")),
             "font": sorted(path.relative_to(BUILD) for path in (BUILD / "Texture").rglob("*.ttf")),
             "picture": [pathlib.Path("Texture") / name for name in PICTURES if (BUILD / "Texture" / name).exists()]}
    return {kind: files for kind, files in kinds.items() if files}


def spoil(path, how, other):
    """Leaves `path` in the state that `how` names."""
    if how == "unreadable":
        path.chmod(0)
        return
    whole = path.read_bytes()
    path.unlink()
    if how == "a folder":
        path.mkdir()
    elif how == "empty":
        path.touch()
    elif how == "another kind":
        path.write_bytes(other)
    elif how.startswith("cut"):
        path.write_bytes(whole[:len(whole) * int(how.split()[1]) // (CUTS + 1)])


def command(kind, data, folder):
    play = [rows.TOOL, "film", "--match", "--pilots", "--times", "--to", "40", "--size", "160x90", "--coarse"]
    if kind in ("level or archetype", "sound bank"):
        play = [rows.TOOL, "simulate", "--match", "--pilots", "--until-end", "--wav", f"{folder}/out.wav"]
        if kind != "sound bank":
            play = play[:-2]
    return [*as_nobody(), *play, "--data", data]


def as_nobody():
    """Root reads everything, so the game is somebody else's."""
    return ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if os.geteuid() == 0 else []


def said(text):
    return [line for line in text.splitlines() if line.strip() and not line.startswith(NOISE)]


def copy_data(folder):
    data = folder / "data"
    data.mkdir()
    for entry in {*(rows.ROOT / "game").iterdir(), BUILD / "AudioSource", BUILD / "Texture"}:
        source = BUILD / entry.name
        if source.is_dir():
            shutil.copytree(source, data / entry.name)
        elif source.exists():
            shutil.copy(source, data)
    return data


def read(kind, name, how, usual):
    """What the game said about it, and what was wrong."""
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        folder.chmod(0o777)
        data = copy_data(folder)
        other = (BUILD / ("crate" if kind != "level or archetype" else "Texture/rp.png")).read_bytes()
        spoil(data / name, how, other)
        ended = rows.run(*command(kind, data, folder), seconds=120, cwd=folder)
    lines = [line for line in said(ended.stdout) if line not in usual]
    fault = ""
    if ended.returncode is None:
        fault = "hangs"
    elif ended.returncode not in (0, 1):
        fault = f"ends with {ended.returncode}"
    elif ended.returncode == 1 and not lines:
        fault = "ends without a word"
    return lines, fault


def said_of_whole_data(kind):
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        folder.chmod(0o777)
        return set(said(rows.run(*command(kind, copy_data(folder), folder), cwd=folder).stdout))


def reads(only, state):
    for kind, files in data_files().items():
        left = [(name, how) for name in files if not only or name.name in only for how in STATES
                if f"{kind}|{name}|{how}" not in state["reads"]]
        usual = said_of_whole_data(kind) if left else set()
        for (name, how), (lines, fault) in rows.each(left, lambda pair, kind=kind, usual=usual: read(kind, *pair, usual)):
            key = f"{kind}|{name}|{how}"
            state["reads"][key] = {"line": lines[0] if lines else "", "lines": len(lines), "fault": fault}
            state.save()
            if fault:
                print(key, fault, flush=True)


SAVE = "5 key f1 down\n6 bar FileName = mine\n7 bar Make default box\n8 bar Save Level\n"
WRITES = {"a level from the bars": (["simulate", "--match", "--frames", "12", "--input", "INPUT", "--data", "PLACE"], "mine"),
          "a scene": (["simulate", "--match", "--until", "20", "--save", "mine"], "mine"),
          "a sound file": (["simulate", "--match", "--frames", "600", "--wav", "PLACE/mine"], "mine"),
          "a trace": (["simulate", "--match", "--frames", "60", "--trace", "PLACE/mine"], "mine"),
          "a film's pictures": (["film", "--match", "--to", "4", "--size", "320x180", "--out", "PLACE/mine"], "mine"),
          "a film": (["film", "--match", "--to", "30", "--size", "320x180", "--out", "PLACE/mine.gif"], "mine.gif")}


def write_once(what, state_of, folder):
    """In a mount of its own, which anybody may make in a user namespace."""
    arguments, name = WRITES[what]
    place = folder / "place"
    place.mkdir()
    (folder / "input").write_text(SAVE)
    data = copy_data(folder)
    words = [word.replace("PLACE", str(place)).replace("INPUT", str(folder / "input")) for word in arguments]
    prepare = {"a full disk": "dd if=/dev/zero of=fill bs=1k 2>/dev/null || true", "a read-only folder": "true",
               "a folder of that name": f"mkdir '{name}'; touch '{name}/kept'"}[state_of]
    after = "mount -o remount,ro '%s'" % place if state_of == "a read-only folder" else "true"
    fill = f"cp -r '{data}/.' ." if "PLACE" in arguments else "true"
    shell = (f"mount -t tmpfs -o size=24m none '{place}' && cd '{place}' && {fill} && {{ {prepare}; }} && {after} && "
             + " ".join(f"'{word}'" for word in [str(rows.TOOL), *words]) + "; code=$?; "
             f"[ -e '{place}/{name}/kept' ] && echo KEPT; ls -la '{place}/{name}' 2>/dev/null | head -3; exit $code")
    return rows.run("unshare", "--map-root-user", "--mount", "sh", "-c", shell, seconds=120)


def writes(state):
    for what in WRITES:
        for how in ("a full disk", "a read-only folder", "a folder of that name"):
            key = f"{what}|{how}"
            if key in state["writes"]:
                continue
            with tempfile.TemporaryDirectory() as temporary:
                ended = write_once(what, how, pathlib.Path(temporary))
            lines = [line for line in said(ended.stdout) if not line.startswith(("total", "-rw", "drwx", "KEPT"))]
            fault = "" if ended.returncode in (0, 1, 2) else f"ends with {ended.returncode}"
            if not fault and how != "a folder of that name" and not any("mine" in line for line in lines):
                fault = "nothing was said"
            if not fault and how == "a folder of that name" and what != "a film's pictures" and "KEPT" not in ended.stdout:
                fault = "what was in the folder is lost"
            state["writes"][key] = {"line": next((line for line in lines if "mine" in line), lines[-1] if lines else ""),
                                    "code": ended.returncode, "fault": fault}
            state.save()
            print(key, state["writes"][key], flush=True)


def page(state):
    """docs/proof-files.md: for each kind of file and fault one line that was said, and how many said one."""
    text = ["# What the game says about files that fail\n", "\nWritten by `tools/proof/files.py`; `…` stands for the folder. ",
            "A file that the run does not come to is not missed.\n", "\n## Read\n\n",
            "| kind of file | state | runs | with a line | one of them |\n|---|---|---|---|---|\n"]
    groups = {}
    for key, found in sorted(state["reads"].items()):
        kind, name, how = key.split("|")
        groups.setdefault((kind, how.split()[0] if how.startswith("cut") else how), []).append(found)
    for (kind, how), found in groups.items():
        spoken = [entry["line"] for entry in found if entry["line"]]
        text.append(f"| {kind} | {how} | {len(found)} | {len(spoken)} | `{shown(spoken[0])}` |\n" if spoken else
                    f"| {kind} | {how} | {len(found)} | 0 | |\n")
    text += ["\n## Written\n\n", "| what | where | exit code | line |\n|---|---|---|---|\n"]
    for key, found in state["writes"].items():
        what, how = key.split("|")
        text.append(f"| {what} | {how} | {found['code']} | `{shown(found['line'])}` |\n")
    (rows.ROOT / "docs/proof-files.md").write_text("".join(text))


def shown(line):
    words = [("…/" + word.rsplit("/", 1)[1] if word.startswith(("/tmp/", "'/tmp/", '"/tmp/')) else word) for word in line.split()]
    return " ".join(words).replace("|", "\\|")[:140]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="")
    parser.add_argument("--reads", action="store_true", help="only what is read")
    parser.add_argument("--writes", action="store_true", help="only what is written")
    parser.add_argument("--fresh", action="store_true")
    options = parser.parse_args()
    state = rows.State("files", options.fresh, reads={}, writes={})
    if options.reads or not options.writes:
        reads(set(filter(None, options.only.split(","))), state)
    if options.writes or not options.reads:
        writes(state)
    page(state)
    faults = [key for part in ("reads", "writes") for key, found in state[part].items() if found["fault"]]
    rows.write(4, "files that are read", f"{len(state['reads'])} runs: missing, empty, cut at {CUTS} places, another kind, a "
               "folder, unreadable", f"{sum(1 for f in state['reads'].values() if f['fault'])} crashes, hangs or ends without "
               "a word; [the lines](proof-files.md)")
    rows.write(4, "files that are written", f"{len(state['writes'])} runs: a full disk, a read-only folder, a folder of that name",
               f"{sum(1 for f in state['writes'].values() if f['fault'])} crashes or losses; [the lines](proof-files.md)")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
