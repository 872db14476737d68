"""How well titles, countdown and scores are read: ink, and the rim of paper round it."""
import concurrent.futures
import tempfile

import numpy as np

from sight import colour, films
from sight.figures import grow

INK, RED = 4.5, 3.0  # least contrast of ink and rim; of the red countdown
RIM = 2              # pixels at 720 lines
RIMMED = 0.95        # of the ink's edge that must have a whole rim
SEEN = 24            # least change of a channel where a word is
BOX = {"title": (slice(250, 470), slice(0, 1280)), "countdown": (slice(150, 330), slice(540, 740)),
       "score": (slice(120, 215), slice(0, 260))}


def _pair(frame, data):
    at = ("--from", frame, "--to", frame)
    return films.film(*at)[frame], films.film(*at, data=data)[frame]


def _measure(name, with_words, without):
    rows, columns = BOX[name]
    picture, ground = with_words[rows, columns], without[rows, columns]
    word = np.abs(picture.astype(int) - ground).max(axis=2) > SEEN
    light = colour.luminance(picture)
    if not word.any():
        return None
    dark, paper = np.percentile(light[word], (2, 98))
    ink = word & (light <= dark + 0.15 * (paper - dark))
    ink &= grow(~grow(~ink, 1), 1)  # without the soft outer edge of a rim over dark ground
    rim = word & (light >= paper - 0.15 * (paper - dark))
    paper_there = word & (light >= dark + 0.6 * (paper - dark))  # of the word, not of a pale ground
    ratio = colour.contrast(np.median(picture[ink], axis=0), np.median(picture[rim], axis=0))
    # what lies within the rim's width of the ink, less the soft pixel between the two
    edge = grow(ink, RIM + 1) & ~grow(ink, 1)
    rimmed = float(paper_there[edge].mean())
    return ratio, rimmed


def _frames(course):
    """(piece, frame, words there): a title that has come to its place, and a countdown's digit."""
    begins = [frame for frame, _ in course.pieces] + [None]
    for (begin, piece), after in zip(course.pieces, begins[1:]):
        yield piece, begin + 40, ("title", "score")
        if after:
            yield piece, after - 150, ("countdown",)


def measure(course):
    """Prints the table and returns the lines that do not hold."""
    faults = []
    print(f"words: contrast of ink and rim (>= {INK}, countdown {RED}), edge with {RIM} pixels of rim (>= {RIMMED})")
    looks = list(_frames(course))
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(2) as pool:
        data = films.data_without(folder + "/data", words=True)
        pairs = pool.map(lambda look: _pair(look[1], data), looks)
        for (piece, frame, names), pair in zip(looks, pairs):
            for name in names:
                faults += _judge(piece, frame, name, _measure(name, *pair))
    return faults


def _judge(piece, frame, name, seen):
    if seen is None:
        return [f"{piece}: no {name} in frame {frame}"]
    ratio, rimmed = seen
    print(f"  {piece:10s} {name:9s} {ratio:5.1f} " + ("on paper" if name == "score" else f"{rimmed:5.2f}"))
    if ratio >= (RED if name == "countdown" else INK) and (name == "score" or rimmed >= RIMMED):
        return []
    return [f"{piece}: {name}: contrast {ratio:.1f}, {rimmed:.2f} of its edge rimmed"]
