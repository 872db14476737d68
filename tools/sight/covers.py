"""How long something lies over a hero: pictures of 320 x 180, two pieces' length at a time."""
import tempfile

import numpy as np

from sight import figures, films

EVERY = 5          # frames between two looks
STRETCH = 1000     # frames of a film that are held in memory
COVERED = 0.25     # of the figure's usual area: less of it is seen
MOST = 20          # frames: a third of a second


def _areas(first, last):
    """Frame -> how many pixels of each player are seen."""
    def film(players):
        with tempfile.TemporaryDirectory() as folder:
            data = films.data_without(folder + "/data", players)
            return films.film("--size", "320x180", "--coarse", "--from", first, "--every", EVERY, "--to", last, data=data)

    whole = film(())
    areas = {frame: [] for frame in whole}
    for player in range(4):
        without = film((player,))
        for frame, picture in whole.items():
            seen = np.abs(picture.astype(int) - without[frame]).max(axis=2) > figures.SEEN
            areas[frame].append(int(seen.sum()))
    return areas


def measure(course):
    """Prints the longest covers and returns those that last too long."""
    areas = {}
    for first in range(1, figures.LAST, STRETCH):
        areas |= _areas(first, min(first + STRETCH, figures.LAST) - 1)
    frames = sorted(areas)
    faults = []
    print(f"covered, frames on end with less than {COVERED:.0%} of a figure seen (<= {MOST})")
    for player in range(4):
        usual = np.median([areas[frame][player] for frame in frames])
        runs, begin = [], None
        for frame in frames:
            if areas[frame][player] >= COVERED * usual:
                begin = None
                continue
            if begin is None:
                begin = frame
                runs.append([begin, begin])
            runs[-1][1] = frame
        runs = [(end + EVERY - begin, begin, course.piece_at(begin)) for begin, end in runs]
        longest = sorted(runs, reverse=True)[:5]
        print(f"  {films.PLAYERS[player]} usual {usual:.0f} pixels: {len(runs)} covers, longest "
              + ", ".join(f"{length} at {begin} ({piece})" for length, begin, piece in longest))
        faults += [f"{films.PLAYERS[player]} is covered for {length} frames from {begin} in {piece}"
                   for length, begin, piece in runs if length > MOST]
    return faults
