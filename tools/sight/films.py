"""Films of the match of four pilots, as arrays, with pictures of the game left out at will."""
import pathlib
import re
import subprocess
import tempfile

import numpy as np
from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
TOOL = BUILD / "brinewhirl-tool"
PILOTS = ["--match", "--pilots"]
RESTING = ["--match", "--input", str(ROOT / "tools/sight/resting.input")]  # four people who fly now and then
PLAYERS = ("Player1", "Player2", "Player3", "Player4")
FACES = ("rp.png", "wp.png", "bp.png", "gp.png")


def data_without(folder, players=(), words=False):
    """Links to the game's data in `folder`, in which some players (0 to 3) have no picture, or no word has one."""
    folder = pathlib.Path(folder)
    pictures = folder / "Texture"
    pictures.mkdir(parents=True)
    for entry in (*(ROOT / "game").iterdir(), BUILD / "AudioSource"):
        (folder / entry.name).symlink_to(BUILD / entry.name)
    for picture in (BUILD / "Texture").iterdir():
        if not (words and picture.is_dir()):
            (pictures / picture.name).symlink_to(picture)
    for player in players:
        _replace(pictures / FACES[player], lambda image: image * 0)
    if players:
        _replace(pictures / "particlebubble.png", lambda image: _without_frames(image, players))
    return folder


def _without_frames(strip, frames):
    width = strip.shape[1] // 4
    for frame in frames:
        strip[:, frame * width:(frame + 1) * width] = 0
    return strip


def _replace(link, change):
    image = np.array(Image.open(link).convert("RGBA"))
    link.unlink()
    Image.fromarray(change(image)).save(link)


def film(*options, data=BUILD, run=PILOTS):
    """Frame number -> picture (rows, columns, RGB), of a run of the tool's film command."""
    with tempfile.TemporaryDirectory() as folder:
        command = [TOOL, "film", *run, "--data", data, "--out", folder, *map(str, options)]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return {int(path.stem): np.array(Image.open(path).convert("RGB")) for path in sorted(pathlib.Path(folder).iterdir())}


class Course:
    """Where the players are in each frame of a match, and when each piece begins."""

    def __init__(self, run, frames=None):
        self.places = {}  # frame -> player index -> (x, y, speed)
        self.pieces = []  # (frame, name)
        self.length = 0
        wanted = re.compile(r"object (\d+) \d+ (Player[1-4]) |event (\d+) segment begin (\w+)")
        command = [TOOL, "simulate", *run, *(["--frames", str(frames)] if frames else ["--until-end"]), "--trace", "-"]
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as run:
            for line in run.stdout:
                found = wanted.match(line)
                if not found:
                    continue
                if found[3]:
                    self.pieces.append((int(found[3]), found[4]))
                    continue
                field = line.split()
                speed = float(np.hypot(float(field[11]), float(field[12])))
                place = (float(field[4]), float(field[5]), speed)
                self.places.setdefault(int(found[1]), {})[PLAYERS.index(found[2])] = place
                self.length = int(found[1])
        if run.returncode != 0:
            raise SystemExit("look: the match could not be run")

    def piece_at(self, frame):
        """The piece on the stage, or None."""
        name = None
        for begin, piece in self.pieces:
            if begin <= frame:
                name = piece
        return name
