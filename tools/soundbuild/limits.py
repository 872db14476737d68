"""What a rendered tune or effect has to keep to, wherever it is heard: level, length, edges."""

import numpy as np

from soundbuild import measure
from soundbuild.measure import RATE

HIGHEST_PEAK = -1.0  # dBFS
LARGEST_STEP = 0.02  # of full scale, where a loop joins
LONGEST_LEAD = 0.005  # s
LARGEST_DC = 0.002
LAST_SAMPLES = 0.003  # how far from silence an effect may end
LONGEST_EFFECT = 4.0  # s
LOUDEST_EFFECT = 6.0  # dB above the quietest tune
SPREAD = 6.0  # dB from the softest effect to the loudest
LOOP_LENGTH = (40.0, 90.0)  # s

HEARD_ALL_THE_TIME = ("HUD/Point_Bubble.ogg", "Squid/Squid_Collision.ogg")
LONGEST_OF_THESE = 0.15  # s
SHORTEST_ATTACK = 0.005  # s of these, from a tenth of the peak to nine tenths

# how the game plays what it does not play as it is
SPEED = {"Squid/Charge.ogg": 1.4}
VOLUME = {"Marlo_Buckaneer.ogg": 0.5}

CHARGE = "Squid/Charge.ogg"
CHARGE_SECONDS = (1.1, 1.3)
CHARGE_PARTS = 5  # each brighter than the one before


def measure_event(outdir, kind, file):
    """The sound as a player hears it, before the output takes its share from all of them alike."""
    samples = measure.decode(outdir / file, 2 if kind == "music" else 1)
    samples = samples if kind == "music" else samples.repeat(2, axis=0)  # mono is heard from both speakers
    samples = measure.at_speed(samples, SPEED.get(file, 1.0)) * VOLUME.get(file, 1.0)
    row = {
        "file": file,
        "kind": kind,
        "samples": samples,
        "seconds": samples.shape[1] / RATE,
        "loudness": measure.integrated_loudness(samples) if kind == "music" else measure.loudest_moment(samples),
        "rms": measure.sounding_rms(samples),
        "peak": measure.true_peak(samples / VOLUME.get(file, 1.0)),
        "dc": np.abs(samples.mean(axis=1)).max(),
        "lead": measure.leading_silence(samples),
    }
    if kind == "music":
        row["step"], row["near"] = measure.loop_step(samples)
    else:
        row["attack"] = measure.attack(samples)
        row["end"] = np.abs(samples[:, -48:]).max()
    return row


def faults(rows):
    """Everything that breaks a limit, as lines that name the event."""
    tunes = [row for row in rows if row["kind"] == "music"]
    quietest = {name: min(row[name] for row in tunes) for name in ("loudness", "rms")}
    found = []
    for row in rows:
        of_kind = _tune_faults(row) if row["kind"] == "music" else _effect_faults(row, quietest)
        found += [f"{row['file']}: {fault}" for fault in _level_faults(row) + of_kind]
    spread = loudness_spread(rows)
    if spread > SPREAD:
        found.append(f"the loudest effect is {spread:.1f} dB above the softest, at most {SPREAD:.1f}")
    return found


def loudness_spread(rows):
    levels = [row["loudness"] for row in rows if row["kind"] == "sfx"]
    return max(levels) - min(levels)


def _level_faults(row):
    found = []
    if row["peak"] > HIGHEST_PEAK:
        found.append(f"true peak {row['peak']:.1f} dBFS")
    if row["dc"] > LARGEST_DC:
        found.append(f"DC {row['dc']:.4f}")
    return found


def _tune_faults(row):
    found = []
    if row["step"] > LARGEST_STEP or row["near"] > LARGEST_STEP:
        found.append(f"the loop joins with a step of {row['step']:.3f}, near it {row['near']:.3f}")
    if not LOOP_LENGTH[0] <= row["seconds"] <= LOOP_LENGTH[1]:
        found.append(f"lasts {row['seconds']:.1f} s")
    return found


def _effect_faults(row, quietest):
    found = []
    for name in ("loudness", "rms"):
        if row[name] > quietest[name] + LOUDEST_EFFECT:
            found.append(f"{name} {row[name] - quietest[name]:.1f} dB above the quietest tune")
    if row["lead"] > LONGEST_LEAD:
        found.append(f"starts after {row['lead'] * 1000:.1f} ms of silence")
    if row["end"] > LAST_SAMPLES:
        found.append(f"ends at {row['end']:.4f}")
    often = row["file"] in HEARD_ALL_THE_TIME
    if row["seconds"] > (LONGEST_OF_THESE if often else LONGEST_EFFECT):
        found.append(f"lasts {row['seconds']:.3f} s")
    if often and row["attack"] < SHORTEST_ATTACK:
        found.append(f"an attack of {row['attack'] * 1000:.1f} ms is hard")
    if row["file"] == CHARGE:
        found += _charge_faults(row)
    return found


def _charge_faults(row):
    found = []
    if not CHARGE_SECONDS[0] <= row["seconds"] <= CHARGE_SECONDS[1]:
        found.append(f"lasts {row['seconds']:.2f} s as the game plays it")
    centres = [measure.spectral_centre(part) for part in np.array_split(row["samples"], CHARGE_PARTS, axis=1)]
    if any(later <= earlier for earlier, later in zip(centres, centres[1:])):
        found.append(f"does not rise: {', '.join(f'{hertz:.0f}' for hertz in centres)} Hz")
    return found


def print_table(rows):
    print("| event | seconds | LUFS | RMS dBFS | true peak dBFS | join or end |")
    print("|---|---|---|---|---|---|")
    for row in rows:
        edge = f"step {row['step']:.4f}" if row["kind"] == "music" else f"{row['end']:.4f}"
        print(
            f"| {row['file'].removesuffix('.ogg')} | {row['seconds']:.2f} | {row['loudness']:.1f} | {row['rms']:.1f} "
            f"| {row['peak']:.1f} | {edge} |"
        )
