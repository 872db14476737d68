"""The matches of a sweep: what is played, from which tool and levels, and how GNU parallel is called for it."""
import hashlib
import json
import os
import re
import shutil
import subprocess
import sys

GAME = "game"  # the stage's name when it is the game's own match
# One match; its result is there whole or not at all, and what is there is not played again.
JOB = """#!/bin/sh
out=results/$4.txt
[ -e "$out" ] && exit 0
mkdir -p results
stage=
[ "$1" = game ] || stage="--stage stages/$1"
if pack/brinewhirl-tool simulate --data pack $stage --bots "$2" --seed "$3" --matches 1 --places > "$out.part.$$" 2> /dev/null
then mv "$out.part.$$" "$out"
else rm -f "$out.part.$$"; exit 1
fi
"""


def file_name(job):
    """Of a match's result, without what a shell or parallel would quote."""
    return ".".join(job).replace(",", "-")


def is_level(path):
    if not path.is_file():
        return False
    with path.open("rb") as file:
        return file.read(1) == b"{"


class Sweep:
    def __init__(self, wanted):
        self.wanted = wanted
        self.folder = wanted.out.resolve()
        self.stages = {path.name: path for path in wanted.stages or []}
        if len(self.stages) < len(wanted.stages or []):
            sys.exit("balance: two stages have the same name")
        for name in [*self.stages, *wanted.line_ups]:
            if not re.fullmatch(r"[\w,-]+", name):
                sys.exit(f"balance: {name}: letters, digits, - and _ only")

    def jobs(self):
        """(stage, line-up, seed), in the order of the table."""
        first = self.wanted.first
        return [(stage, line_up, str(seed)) for stage in self.stages or [GAME] for line_up in self.wanted.line_ups
                for seed in range(first, first + self.wanted.seeds)]

    def prepare(self):
        """Puts tool and levels aside, so that a sweep is one of the same game however long it takes."""
        data = self.wanted.tool.resolve().parent
        levels = sorted(path for path in data.iterdir() if is_level(path))
        sources = [self.wanted.tool, *levels, *self.stages.values()]
        for path in sources:
            if not path.is_file():
                sys.exit(f"balance: {path}: no such file")
        digest = hashlib.sha256()
        for path in sources:
            digest.update(path.name.encode() + b"\0" + path.read_bytes())
        mark = self.folder / "pack" / "digest"
        if self.wanted.fresh and (self.folder / "pack").exists():
            for name in ("pack", "stages", "results", "pictures", "report", "joblog"):
                old = self.folder / name
                shutil.rmtree(old) if old.is_dir() else old.unlink(missing_ok=True)
        if mark.exists():
            if mark.read_text() != digest.hexdigest():
                sys.exit(f"balance: {self.folder} holds matches of another build, level or list of stages; "
                         "--fresh forgets them, --out goes elsewhere")
            return
        if self.folder.exists() and any(self.folder.iterdir()) and not (self.folder / "pack").exists():
            sys.exit(f"balance: {self.folder} is not empty, and no sweep's folder")
        for name, files in {"pack": [self.wanted.tool, *levels], "stages": self.stages.values()}.items():
            (self.folder / name).mkdir(parents=True, exist_ok=True)
            for path in files:
                shutil.copy(path, self.folder / name)
        (self.folder / "pack" / "job").write_text(JOB)
        (self.folder / "pack" / "job").chmod(0o755)
        mark.write_text(digest.hexdigest())  # last: a break before it begins anew

    def play(self):
        jobs = self.jobs()
        if all(self.result(job).exists() for job in jobs):
            return
        # The log goes by the number of a job, so it belongs to one list of jobs.
        asked = self.folder / "asked.json"
        if not asked.exists() or json.loads(asked.read_text()) != [list(job) for job in jobs]:
            (self.folder / "joblog").unlink(missing_ok=True)
            asked.write_text(json.dumps(jobs))
        self.run_parallel(jobs)
        if any(not self.result(job).exists() for job in jobs):  # what the log knows and the folder has lost
            (self.folder / "joblog").unlink(missing_ok=True)
            self.run_parallel(jobs)

    def result(self, job):
        return self.folder / "results" / (file_name(job) + ".txt")

    def run_parallel(self, jobs):
        (self.folder / "results").mkdir(exist_ok=True)
        command = ["parallel", "--will-cite", "--colsep", " ", "--joblog", "joblog", "--resume-failed", "--retries", "3",
                   "--nice", "10", "--jobs", self.wanted.jobs]
        if sys.stderr.isatty():
            command.append("--bar")
        if self.wanted.hosts:
            place = "brinewhirl-balance-" + (self.folder / "pack" / "digest").read_text()[:12]
            command += ["--sshloginfile", str(self.wanted.hosts.resolve()), "--workdir", place, "--basefile", "pack",
                        "--basefile", "stages", "--return", "results/{4}.txt", "--cleanup"]
        command += ["sh", "pack/job", "{1}", "{2}", "{3}", "{4}"]
        lines = "".join(" ".join([*job, file_name(job)]) + "\n" for job in jobs)
        try:
            subprocess.run(command, cwd=self.folder, input=lines, text=True, check=False)
        except FileNotFoundError:
            sys.exit("balance: GNU parallel is missing (Debian package parallel)")

    def draw(self):
        """A picture of each piece as it begins, for the heat maps."""
        for stage in self.stages or [GAME]:
            folder = self.folder / "pictures" / stage
            if folder.exists():
                continue
            part = folder.with_name("part-" + stage)
            folder.parent.mkdir(exist_ok=True)
            shutil.rmtree(part, ignore_errors=True)
            command = [self.wanted.tool.resolve(), "film", "--match", "--pilots", "--until-end", "--moments", "--size",
                       "480x270", "--out", part]
            if stage != GAME:
                command += ["--stage", self.folder / "stages" / stage]
            done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False,
                                  env={**os.environ, "SDL_VIDEODRIVER": "offscreen"})
            if done.returncode != 0 or not part.exists():
                print(f"balance: no pictures of {stage}: {done.stderr.strip()[-200:]}", file=sys.stderr)
                continue
            for picture in part.iterdir():
                if "segment-begin" not in picture.name:
                    picture.unlink()
            part.rename(folder)
