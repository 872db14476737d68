"""Runs a whole match of pilots and gives what is heard of it; the same match again with some sounds made silent."""

import subprocess
import tempfile
from pathlib import Path

import numpy as np

from soundbuild.measure import RATE

FRAMES_A_SECOND = 60
SAMPLES_A_FRAME = RATE // FRAMES_A_SECOND
WAV_HEADER = 44  # bytes
MATCH = ["--match", "--pilots", "--until-end"]


class Match:
    """What a build plays. A silent sound is started like any other, so every run is the same match."""

    def __init__(self, build, spec):
        self.build = build.resolve()
        self.spec = spec

    def sound_and_events(self):
        """The match as an array (2, frames of sound), and its run log as (frame, words)."""
        with tempfile.TemporaryDirectory() as folder:
            target = Path(folder, "match.wav")
            run = subprocess.Popen([self._tool(), "simulate", *MATCH, "--wav", target, "--trace", "-"],
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            # some thousand lines of some million
            grep = subprocess.run(["grep", "^event "], stdin=run.stdout, capture_output=True, check=True, text=True)
            run.stdout.close()
            if run.wait() != 0:
                raise subprocess.CalledProcessError(run.returncode, run.args)
            lines = [line.split() for line in grep.stdout.splitlines()]
            return _read_wav(target), [(int(words[1]), words[2:]) for words in lines]

    def sound_without(self, silent):
        """The match as it sounds without these files of the bank."""
        with tempfile.TemporaryDirectory() as folder:
            data = self._data_without(silent, Path(folder))
            target = Path(folder, "match.wav")
            subprocess.run([self._tool(), "simulate", "--data", data, *MATCH, "--wav", target],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
            return _read_wav(target)

    def _tool(self):
        return self.build / "brinewhirl-tool"

    def _data_without(self, silent, folder):
        """A folder of links to the game's data, with banks of its own."""
        data, sounds = folder / "data", folder / "sounds"
        (data / "AudioSource").mkdir(parents=True)
        for path in self.build.iterdir():
            if path.name != "AudioSource":
                (data / path.name).symlink_to(path)
        for path in (self.build / "sound").rglob("*.ogg"):
            target = sounds / path.relative_to(self.build / "sound")
            target.parent.mkdir(parents=True, exist_ok=True)
            if str(path.relative_to(self.build / "sound")) in silent:
                _write_silence(target)
            else:
                target.symlink_to(path)
        bank = data / "AudioSource/Master Bank.bank"
        subprocess.run([self._tool(), "bank", "build", self.spec, bank, "--sounds", sounds],
                       stdout=subprocess.DEVNULL, check=True)
        return data


def _read_wav(path):
    return np.fromfile(path, "<i2", offset=WAV_HEADER).reshape(-1, 2).T.astype(np.float32) / 32768


def _write_silence(target):
    command = ["oggenc", "-Q", "-r", "-C", "1", "-R", str(RATE), "-B", "16", "-s", "1", "-o", target, "-"]
    subprocess.run(command, input=bytes(2 * RATE // 100), check=True)


def rules(events):
    """The running rules as (name, first frame, frame of its end)."""
    begins = [(frame, words[2]) for frame, words in events if words[:2] == ["objective", "begin"]]
    ends = [frame for frame, words in events if words[:2] == ["objective", "end"]]
    return [(name, begin, end) for (begin, name), end in zip(begins, ends, strict=True)]


def starts(events, number):
    """The frames in which a sound is started."""
    return [frame for frame, words in events if words == ["sound", str(number)]]
