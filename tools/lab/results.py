"""What the matches of a sweep printed, and the table of its figures with the goals beside them."""
import dataclasses
import math
import statistics

from . import sweep

FRAMES_A_MINUTE = 3600
AFTER = "nothing-more"  # what the tool plays behind a single piece
PIECE = "played-piece"  # and how it calls that


@dataclasses.dataclass
class Match:
    stage: str
    line_up: str
    seed: int
    points: list = None  # by seat
    leads: int = 0
    frames: int = 0
    kinds: list = dataclasses.field(default_factory=list)  # by seat
    rules: dict = dataclasses.field(default_factory=dict)  # points by seat, by name in the order of the match
    pieces: dict = dataclasses.field(default_factory=dict)  # frames, by name in that order
    places: dict = dataclasses.field(default_factory=dict)  # by piece: {cell: looks} of all seats
    stuns: dict = dataclasses.field(default_factory=dict)  # by piece: (x, y)
    flights: dict = dataclasses.field(default_factory=dict)  # bubbles by tenth of a second

    def winner(self):
        return max(range(4), key=lambda seat: (self.points[seat], -seat))

    def spread(self):
        """The last one's share of the first one's points, per cent."""
        return 100 * min(self.points) / max(self.points) if max(self.points) > 0 else 100.0


def pairs(words):
    return zip(words[::2], words[1::2])


def read_match(text, stage, line_up, seed):
    """The match of a result file; None when it is not whole."""
    match = Match(stage, line_up, seed)
    whole = False
    for line in text.splitlines():
        word, *rest = line.split()
        if word == "match":
            match.points = [int(n) for n in rest[1:5]]
            match.leads, match.frames = int(rest[6]), int(rest[8])
        elif word == "seat":
            match.kinds.append(rest[1])
        elif word == "rule" and rest[0] != "NULL":
            match.rules[rest[0]] = [float(n) for n in rest[rest.index("points") + 1:]]
        elif word == "piece" and rest[0] != AFTER:
            match.pieces[stage if rest[0] == PIECE else rest[0]] = int(rest[2])
        elif word in ("places", "stuns") and rest[0] != AFTER:
            piece = stage if rest[0] == PIECE else rest[0]
            if word == "places":
                looks = match.places.setdefault(piece, {})
                for cell, count in pairs(rest[2:]):
                    looks[int(cell)] = looks.get(int(cell), 0) + int(count)
            else:
                match.stuns.setdefault(piece, []).extend((float(x), float(y)) for x, y in pairs(rest[2:]))
        elif word == "flights":
            match.flights = {int(length): int(count) for length, count in pairs(rest)}
        elif word == "rank" and rest[0] == "4":
            whole = True
    return match if whole and match.points and len(match.kinds) == 4 else None


def read(folder, jobs):
    """The matches that are there, in the order of the jobs."""
    matches = []
    for job in jobs:
        stage, line_up, seed = job
        path = folder / f"{sweep.file_name(job)}.txt"
        match = read_match(path.read_text(), stage, line_up, int(seed)) if path.exists() else None
        if match:
            matches.append(match)
    return matches


def groups(matches):
    """Matches by (stage, line-up)."""
    grouped = {}
    for match in matches:
        grouped.setdefault((match.stage, match.line_up), []).append(match)
    return grouped


def is_equal(line_up):
    return len(set(line_up.split(","))) == 1


def interval(wins, count):
    """Wilson's interval of 95 %, per cent."""
    z = 1.96
    share = wins / count
    middle = share + z * z / (2 * count)
    half = z * math.sqrt(share * (1 - share) / count + z * z / (4 * count * count))
    return [100 * (middle + sign * half) / (1 + z * z / count) for sign in (-1, 1)]


def wins(matches, seat):
    return sum(match.winner() == seat for match in matches)


def rate(matches, seat):
    share = 100 * wins(matches, seat) / len(matches)
    low, high = interval(wins(matches, seat), len(matches))
    return share, low, high


def paid(matches):
    """Of how many per cent of the matches somebody was paid, by rule."""
    return {rule: 100 * sum(any(match.rules.get(rule, [])) for match in matches) / len(matches)
            for rule in matches[0].rules}


def goals(matches):
    """(what, figure, goal, whether it is reached) of each line-up. What a match evens out is no goal for a piece alone."""
    rows = []

    def add(what, figure, goal, reached, counts=True):
        rows.append((what, figure, goal if counts else "", reached if counts else None))

    for (stage, line_up), group in groups(matches).items():
        name = f"{stage}: {line_up}"
        whole = len(group[0].rules) > 1
        if is_equal(line_up):
            spread = statistics.median(match.spread() for match in group)
            add(f"{name}: last of first, median", f"{spread:.1f} %", "at least 33.3 %", spread >= 100 / 3, whole)
            best = max(wins(group, seat) for seat in range(4)) * 100 / len(group)
            add(f"{name}: most wins of a seat", f"{best:.1f} %", "at most 35 %", best <= 35, whole)
        else:
            share, low, high = rate(group, 0)
            add(f"{name}: wins of the first", f"{share:.1f} % ({low:.1f} to {high:.1f})", "at least 45 %", share >= 45, whole)
        leads = statistics.median(match.leads for match in group)
        add(f"{name}: lead changes, median", f"{leads:g}", "at least 4", leads >= 4, whole and is_equal(line_up))
        rule, share = min(paid(group).items(), key=lambda item: item[1])
        add(f"{name}: paid least often, {rule}", f"{share:.1f} %", "at least 98 %", share >= 98)
    return rows


def table(matches):
    lines = []
    for (stage, line_up), group in groups(matches).items():
        lines.append(f"{stage} {line_up} matches {len(group)}")
        kinds = group[0].kinds
        for seat in range(4):
            share, low, high = rate(group, seat)
            points = statistics.fmean(match.points[seat] for match in group)
            lines.append(f"  seat {seat + 1} {kinds[seat]} wins {wins(group, seat)} {share:.1f} % "
                         f"({low:.1f} to {high:.1f}) points {points:.2f}")
        for rule in group[0].rules:
            means = [statistics.fmean(match.rules.get(rule, [0] * 4)[seat] for match in group) for seat in range(4)]
            lines.append(f"  rule {rule} paid {paid(group)[rule]:.1f} % points "
                         + " ".join(f"{mean:.2f}" for mean in means))
        stuns = sum(len(places) for match in group for places in match.stuns.values()) / len(group)
        lines.append(f"  stuns a match {stuns:.2f}")
    for what, figure, goal, reached in goals(matches):
        mark = {True: "reached", False: "MISSED", None: ""}[reached]
        lines.append(f"{what}: {figure} {goal} {mark}".rstrip())
    return "\n".join(lines) + "\n"
