"""How well the four heroes are seen and told apart, three metres from the screen: pictures of 320 x 180."""
import concurrent.futures
import itertools
import tempfile

import numpy as np

from sight import colour, films

LAST = 15800             # what comes after is the finish
# what is filmed, one frame in how many, and the last: the first frame of all and the slow hold of the first title, too
RUNS = {"start": (films.RESTING, 25, 180), "rest": (films.RESTING, 113, LAST), "flight": (films.PILOTS, 53, LAST)}
REST, FLIGHT = 1.0, 2.0  # units a body second: slower is at rest, faster in flight
SEEN = 12                # least change of a channel where a figure is
AREA = 90                # pixels
AWAY = 25                # CIE Lab, to the ring of surroundings
APART = 20               # CIE Lab, between two players, or else
LOOKS = 3                # at least, of a figure that is judged
SHARED = 0.8             # of two silhouettes laid over each other


def grow(mask, steps):
    """The mask and what lies within so many pixels of it."""
    for _ in range(steps):
        wide = mask.copy()
        wide[1:] |= mask[:-1]
        wide[:-1] |= mask[1:]
        wide[:, 1:] |= mask[:, :-1]
        wide[:, :-1] |= mask[:, 1:]
        mask = wide
    return mask


def _films(state):
    run, every, last = RUNS[state]

    def one(players):
        with tempfile.TemporaryDirectory() as folder:
            data = films.data_without(folder + "/data", players, words=True)  # which lie over whoever is there
            return films.film("--size", "320x180", "--from", 1, "--every", every, "--to", last, data=data, run=run)

    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        return list(pool.map(one, [(), (0,), (1,), (2,), (3,)]))


class Sights:
    """What was seen of one player in one piece, at rest or in flight."""

    def __init__(self):
        self.areas, self.inks, self.rings, self.shapes = [], [], [], []

    def add(self, picture, mask):
        self.areas.append(int(mask.sum()))
        if not mask.any():
            return
        ring = grow(mask, 4) & ~grow(mask, 1)
        self.inks.append(picture[mask].mean(axis=0))
        self.rings.append(picture[ring].mean(axis=0))
        self.shapes.append(_centred(mask))

    def area(self):
        """The median: in some looks something lies over the figure, or hides it."""
        return int(np.median(self.areas))

    def ink(self):
        return np.median(self.inks, axis=0)

    def away(self):
        return float(np.median([colour.distance(colour.lab(a), colour.lab(b)) for a, b in zip(self.inks, self.rings)]))

    def shape(self):
        return np.mean(self.shapes, axis=0) > 0.5


def _centred(mask, half=16):
    rows, columns = np.nonzero(mask)
    out = np.zeros((2 * half, 2 * half), dtype=bool)
    at = np.stack([rows - int(round(rows.mean())) + half, columns - int(round(columns.mean())) + half])
    at = at[:, ((at >= 0) & (at < 2 * half)).all(axis=0)]
    out[at[0], at[1]] = True
    return out


def gather(state, course):
    """(piece, state, player) -> Sights, of every look in which the player is at rest or in flight."""
    whole, *without = _films(state)
    sights = {}
    for frame, picture in whole.items():
        for player, (_, _, speed) in course.places[frame].items():
            mask = np.abs(picture.astype(int) - without[player][frame]).max(axis=2) > SEEN
            if speed > FLIGHT if state == "flight" else speed < REST:
                sights.setdefault((course.piece_at(frame), state, player), Sights()).add(picture, mask)
    return sights


def shared(a, b):
    """How much of two silhouettes is common to both."""
    return float((a & b).sum() / max(1, (a | b).sum()))


def _looks(course):
    return [(course.pieces[0][1], "start"), *itertools.product((piece for _, piece in course.pieces), ("rest", "flight"))]


def measure(course):
    """Prints the table and returns the lines that do not hold."""
    resting = films.Course(films.RESTING, LAST + 1)
    sights = gather("start", resting) | gather("rest", resting) | gather("flight", course)
    faults = []
    print(f"figures at 320 x 180: pixels, distance to the surroundings and looks, red white blue yellow (>= {AREA}, >= {AWAY})")
    for piece, state in _looks(course):
        group = [sights.get((piece, state, player)) for player in range(4)]
        cells = ["-" if s is None else f"{s.area():4d} {s.away():4.0f} of {len(s.areas):2d}" for s in group]
        print(f"  {piece:10s} {state:6s} " + " | ".join(cells))
        for name, s in zip(films.PLAYERS, group):
            if s is None or len(s.inks) < LOOKS:
                faults.append(f"{piece}: {name} is hardly seen at {state}")
            elif s.area() < AREA or s.away() < AWAY:
                faults.append(f"{piece}: {name} {state}: {s.area()} pixels, {s.away():.0f} from its surroundings")
    return faults + _compare(course, sights)


def _compare(course, sights):
    faults = []
    print(f"the two players hardest to tell apart: distance (>= {APART}) or common silhouette (< {SHARED})")
    for eyes in colour.EYES:
        worst = None
        for piece, state in _looks(course):
            for a, b in itertools.combinations(range(4), 2):
                one, other = sights.get((piece, state, a)), sights.get((piece, state, b))
                if one is None or other is None:
                    continue
                apart = colour.distance(colour.lab(one.ink(), eyes), colour.lab(other.ink(), eyes))
                common = shared(one.shape(), other.shape())
                if worst is None or apart < worst[0]:
                    worst = (apart, common, piece, state, a + 1, b + 1)
                if apart < APART and common >= SHARED:
                    faults.append(f"{piece}: players {a + 1} and {b + 1} {state}, {eyes}: {apart:.0f} apart, {common:.2f} common")
        print(f"  {eyes:13s} {worst[0]:4.0f} with {worst[1]:.2f} common ({worst[2]} {worst[3]}, players {worst[4]} and {worst[5]})")
    return faults
