"""The plots of a report, as SVG that takes its colours from the page, so that one picture serves light and dark."""
import io
import re
import statistics

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402
import numpy as np  # noqa: E402

from . import results  # noqa: E402

# Drawn in colours that nothing else has, which the page then gives a meaning.
VARIABLES = {"#010203": "--ink", "#020304": "--line", "#030405": "--seat1", "#040506": "--seat2", "#050607": "--seat3",
             "#060708": "--seat4", "#070809": "--hop", "#08090a": "--near", "#090a0b": "--lead", "#0a0b0c": "--page"}
INK, LINE, PAGE = "#010203", "#020304", "#0a0b0c"
SEATS = ["#030405", "#040506", "#050607", "#060708"]
SEAT_NAMES = ["red", "white", "blue", "yellow"]
KINDS = {"hop": "#070809", "near": "#08090a", "lead": "#090a0b"}
WIDTH = 4.6  # inches at 72 points: as wide as a narrow page
COLUMNS, ROWS, CELL = 64, 44, 0.5  # of the tool's cells, world units
LEFT, BOTTOM = -16, -11
MOST_STUNS = 150  # crosses on a map: more would hide it
VIEW = (-19.5, 19.5, -10.97, 10.97)  # what a picture shows, world units

plt.rcParams.update({
    "svg.fonttype": "none", "font.size": 10, "font.family": "sans-serif", "text.color": INK, "axes.labelcolor": INK,
    "axes.edgecolor": LINE, "xtick.color": INK, "ytick.color": INK, "axes.spines.top": False,
    "axes.spines.right": False, "axes.grid": True, "axes.grid.axis": "y", "grid.color": LINE, "grid.linewidth": 0.6,
    "axes.axisbelow": True, "legend.frameon": False, "figure.facecolor": "none", "axes.facecolor": "none",
    "savefig.facecolor": "none", "xtick.major.size": 0, "ytick.major.size": 0})


def svg(figure, name):
    """The figure without what an SVG file of its own needs, its parts named after it alone."""
    plt.rcParams["svg.hashsalt"] = name
    out = io.StringIO()
    figure.savefig(out, format="svg", metadata={"Date": None, "Creator": None})
    plt.close(figure)
    text = out.getvalue()
    text = text[text.index("<svg"):]
    for colour, variable in VARIABLES.items():
        text = text.replace(colour, f"var({variable})")
    text = re.sub(r"<metadata>.*?</metadata>", "", text, flags=re.DOTALL)
    text = re.sub(r"font: ([\d.]+px) [^;\"]*", r"font: \1 system-ui, sans-serif", text)
    return re.sub(r'(id="|url\(#|href="#)', rf"\g<1>{name}-", text)


def axes(height=2.7):
    figure, axis = plt.subplots(figsize=(WIDTH, height), layout="constrained")
    return figure, axis


def legend(axis, columns):
    """Above the plot, where it hides nothing."""
    axis.legend(loc="lower center", bbox_to_anchor=(0.5, 1.0), ncol=columns, fontsize=9, handlelength=1,
                columnspacing=1)


def bars(axis, series, labels, colours, errors=None):
    """Bars side by side: one series a colour, one group a label."""
    width = 0.8 / len(series)
    for i, (name, values) in enumerate(series.items()):
        at = np.arange(len(labels)) + (i - (len(series) - 1) / 2) * width
        axis.bar(at, values, width * 0.9, label=name, color=colours[i], edgecolor=INK, linewidth=0.5)
        if errors:
            axis.errorbar(at, values, errors[name], fmt="none", ecolor=INK, elinewidth=1, capsize=2)
    axis.set_xticks(np.arange(len(labels)), labels)


def short(line_up):
    """A line-up in two lines at most: who plays, and against whom."""
    kinds = line_up.split(",")
    if len(set(kinds)) == 1:
        return f"four\n{kinds[0]}"
    return f"{kinds[0]},\n3 {kinds[1]}" if len(set(kinds[1:])) == 1 else line_up.replace(",", "\n")


def points_by_seat(grouped):
    figure, axis = axes()
    labels = [short(line_up) for line_up in grouped]
    series = {name: [statistics.fmean(m.points[seat] * results.FRAMES_A_MINUTE / m.frames for m in group)
                     for group in grouped.values()] for seat, name in enumerate(SEAT_NAMES)}
    bars(axis, series, labels, SEATS)
    axis.set_ylabel("points a minute")
    legend(axis, 4)
    return figure


def points_by_rule(grouped):
    """By strength, over all line-ups; a rule runs while its piece is there."""
    sums, minutes = {}, {}
    for match in (match for group in grouped.values() for match in group):
        frames = list(match.pieces.values())
        for turn, (rule, points) in enumerate(match.rules.items()):
            for seat, kind in enumerate(match.kinds):
                key = (rule, kind)
                sums[key] = sums.get(key, 0) + points[seat]
                length = frames[turn] if turn < len(frames) else match.frames / len(match.rules)
                minutes[key] = minutes.get(key, 0) + length / results.FRAMES_A_MINUTE
    rules = list(dict.fromkeys(rule for rule, _ in sums))
    kinds = [kind for kind in KINDS if any((rule, kind) in sums for rule in rules)]
    figure, axis = axes(3.4)
    series = {kind: [sums.get((rule, kind), 0) / max(minutes.get((rule, kind), 0), 1e-9) for rule in rules]
              for kind in kinds}
    bars(axis, series, rules, [KINDS[kind] for kind in kinds])
    axis.tick_params("x", rotation=35)
    plt.setp(axis.get_xticklabels(), ha="right", rotation_mode="anchor")
    axis.set_ylabel("points a minute")
    legend(axis, 3)
    return figure


def win_rates(grouped):
    figure, axis = axes()
    labels = [short(line_up) for line_up in grouped]
    rates = [[results.rate(group, seat) for group in grouped.values()] for seat in range(4)]
    series = {name: [rate[0] for rate in rates[seat]] for seat, name in enumerate(SEAT_NAMES)}
    errors = {name: [[max(rate[0] - rate[1], 0) for rate in rates[seat]], [max(rate[2] - rate[0], 0)
                                                                          for rate in rates[seat]]]
              for seat, name in enumerate(SEAT_NAMES)}
    bars(axis, series, labels, SEATS, errors)
    axis.axhline(25, color=INK, linewidth=0.8, linestyle=":")
    axis.set_ylim(0, 105)
    axis.set_ylabel("matches won, per cent")
    legend(axis, 4)
    return figure


def lead_changes(grouped):
    figure, axis = axes(2.5)
    groups = [[match.leads for match in group] for group in grouped.values()]
    style = {"color": INK, "linewidth": 1}
    axis.boxplot(groups, widths=0.5, boxprops=style, whiskerprops=style, capprops=style,
                 medianprops={"color": KINDS["lead"], "linewidth": 2.5},
                 flierprops={"marker": ".", "markeredgecolor": INK, "markersize": 3})
    axis.set_xticks(range(1, len(groups) + 1), [short(line_up) for line_up in grouped])
    axis.set_ylabel("changes of the lead")
    return figure


def flights(grouped):
    figure, axis = axes(2.3)
    total = {}
    for match in (match for group in grouped.values() for match in group):
        for tenth, count in match.flights.items():
            total[tenth] = total.get(tenth, 0) + count
    if total:
        lengths = sorted(total)
        share = 100 / sum(total.values())
        axis.bar([length / 10 + 0.05 for length in lengths], [total[length] * share for length in lengths], 0.09,
                 color=KINDS["near"])
    axis.set_xlabel("seconds from the award to the board")
    axis.set_ylabel("per cent of bubbles")
    return figure


def piece_names(grouped):
    return list(dict.fromkeys(piece for group in grouped.values() for match in group for piece in match.pieces))


def heat_map(grouped, piece):
    """Laid over a picture of the same view: how long players are where, and where they are stunned."""
    looks = np.zeros((ROWS, COLUMNS))
    stuns = []
    for match in (match for group in grouped.values() for match in group):
        for cell, count in match.places.get(piece, {}).items():
            looks[divmod(cell, COLUMNS)] += count
        stuns += match.stuns.get(piece, [])
    figure = plt.figure(figsize=(WIDTH, WIDTH * 9 / 16))
    axis = figure.add_axes((0, 0, 1, 1))
    axis.set_axis_off()
    axis.set(xlim=VIEW[:2], ylim=VIEW[2:])
    # The square root brings out where they are now and then; the upper hundredth would hide all else.
    top = max(np.quantile(looks, 0.995), 1)
    heat = np.sqrt(np.clip(looks / top, 0, 1))
    colours = plt.get_cmap("inferno")(0.25 + 0.75 * heat)
    colours[..., 3] = 0.85 * heat
    axis.imshow(colours, extent=(LEFT, LEFT + COLUMNS * CELL, BOTTOM, BOTTOM + ROWS * CELL), origin="lower",
                interpolation="nearest", aspect="auto")
    if stuns:
        step = len(stuns) // MOST_STUNS + 1
        x, y = zip(*stuns[::step])
        axis.scatter(x, y, s=14, marker="x", color="#ffffff", linewidth=2.2)
        axis.scatter(x, y, s=14, marker="x", color="#d0342c", linewidth=1.2)
    axis.set(xlim=VIEW[:2], ylim=VIEW[2:])
    return figure, len(stuns)
