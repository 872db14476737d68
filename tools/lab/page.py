"""The report: one page that needs no other file."""
import base64
import html
import io

from PIL import Image

from . import figures, results

STYLE = """
:root { color-scheme: light dark; --page: #fbfaf7; --ink: #1d2530; --line: #cfd4da; --seat1: #c8453b; --seat2: #f4f4f0;
  --seat3: #3a76c4; --seat4: #e2b53a; --hop: #bfd3d6; --near: #5f9ea6; --lead: #14545d; --good: #1c7a4b; --bad: #b3261e; }
@media (prefers-color-scheme: dark) { :root { --page: #141a21; --ink: #e4e8ec; --line: #3a444f; --seat1: #e06a5f;
  --seat2: #f4f4f0; --seat3: #6aa2e8; --seat4: #e8c159; --hop: #31545a; --near: #5f9ea6; --lead: #b5e3e8; --good: #5fce93;
  --bad: #ff8b82; } }
* { box-sizing: border-box; }
body { margin: 0 auto; max-width: 100rem; padding: 1rem; background: var(--page); color: var(--ink);
  font: 1rem/1.45 system-ui, sans-serif; }
h1 { font-size: 1.5rem; } h2 { font-size: 1.15rem; margin: 2rem 0 .5rem; }
.grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(100%, 22rem), 1fr)); gap: 1.25rem; }
figure { margin: 0; } figure svg { display: block; width: 100%; height: auto; }
figcaption { font-size: .9rem; }
.map { position: relative; background: #3a5563; aspect-ratio: 16 / 9; overflow: hidden; border-radius: 4px; }
.map img, .map svg { position: absolute; inset: 0; width: 100%; height: 100%; }
.map img { filter: saturate(.55) brightness(.8); }
.wide { overflow-x: auto; } table { border-collapse: collapse; font-size: .92rem; }
th, td { padding: .25rem .7rem .25rem 0; text-align: left; border-bottom: 1px solid var(--line); vertical-align: top; }
.reached { color: var(--good); font-weight: 600; } .missed { color: var(--bad); font-weight: 600; }
pre { overflow-x: auto; font-size: .8rem; }
"""


def figure(svg, caption):
    return f"<figure>{svg}<figcaption>{html.escape(caption)}</figcaption></figure>"


def goal_table(matches):
    rows = ["<tr><th>figure</th><th>is</th><th>goal</th><th></th></tr>"]
    for what, value, goal, reached in results.goals(matches):
        mark = {True: '<td class="reached">reached</td>', False: '<td class="missed">missed</td>', None: "<td></td>"}
        cells = "".join(f"<td>{html.escape(text)}</td>" for text in (what, value, goal))
        rows.append(f"<tr>{cells}{mark[reached]}</tr>")
    return '<div class="wide"><table>' + "".join(rows) + "</table></div>"


def picture_of(folder, stage, piece):
    """The piece's picture inside the page; empty when there is none."""
    name = results.PIECE if piece == stage else piece
    found = sorted((folder / "pictures" / stage).glob(f"*-segment-begin-{name}.png"))
    if not found:
        return ""
    out = io.BytesIO()
    Image.open(found[0]).convert("RGB").save(out, "JPEG", quality=80)
    return f'<img alt="" src="data:image/jpeg;base64,{base64.b64encode(out.getvalue()).decode()}">'


def heat_maps(folder, stage, grouped):
    maps = []
    for piece in figures.piece_names(grouped):
        drawn, stuns = figures.heat_map(grouped, piece)
        svg = figures.svg(drawn, f"{stage}-{piece}-map")
        count = sum(len(group) for group in grouped.values())
        caption = f"{piece}: {stuns / count:.1f} stuns a match"
        maps.append(f'<figure><div class="map">{picture_of(folder, stage, piece)}{svg}</div>'
                    f"<figcaption>{html.escape(caption)}</figcaption></figure>")
    return '<div class="grid">' + "".join(maps) + "</div>"


PLOTS = [
    ("seats", figures.points_by_seat, "Points a minute by seat, of the whole match."),
    ("rules", figures.points_by_rule, "Points a minute by rule and strength, over all line-ups, while the rule's piece is "
     "there."),
    ("wins", figures.win_rates, "Matches won by seat, with 95 % intervals; the dotted line is a fair share."),
    ("leads", figures.lead_changes, "Changes of the lead in a match: median, quartiles, range."),
    ("flights", figures.flights, "How long bubbles of points fly."),
]


def write(folder, matches, table):
    parts = [f"<h1>Balance of {len(matches)} matches</h1>", "<h2>Goals</h2>", goal_table(matches)]
    for stage in dict.fromkeys(match.stage for match in matches):
        grouped = {line_up: group for (of, line_up), group in results.groups(matches).items() if of == stage}
        plots = [figure(figures.svg(draw(grouped), f"{stage}-{name}"), caption) for name, draw, caption in PLOTS]
        parts += [f"<h2>{html.escape(stage)}</h2>", '<div class="grid">', *plots, "</div>",
                  "<h2>Where players are, and where they are stunned (crosses)</h2>",
                  heat_maps(folder, stage, grouped)]
    parts += ["<h2>All figures</h2>", f"<pre>{html.escape(table)}</pre>"]
    page = ('<!DOCTYPE html><html lang="en"><head><meta charset="utf-8"><meta name="viewport" '
            'content="width=device-width, initial-scale=1"><title>Brinewhirl: balance</title>'
            f"<style>{STYLE}</style></head><body>{''.join(parts)}</body></html>\n")
    (folder / "report").mkdir(exist_ok=True)
    part = folder / "report" / "index.html.part"
    part.write_text(page)
    part.rename(folder / "report" / "index.html")
