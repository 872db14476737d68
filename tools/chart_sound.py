#!/usr/bin/python3
"""Measures what build_sound.py rendered to OUTDIR, says what breaks a limit, and draws a chart of every event.

Needs python3-numpy, and python3-matplotlib for the charts.
"""

import argparse
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import numpy as np

from build_sound import ROOT, read_bank, read_score
from soundbuild import measure
from soundbuild.measure import RATE

REFERENCE = "Marlo_Baha.ogg"
LOUDEST_EFFECT = 6.0  # dB above the reference
HIGHEST_PEAK = -1.0  # dBFS
LARGEST_STEP = 0.02  # of full scale, where a loop joins
LONGEST_LEAD = 0.005  # s
LARGEST_DC = 0.002
LAST_SAMPLES = 0.003  # how far from silence an effect may end
LONGEST = {"HUD/Point_Bubble.ogg": 0.15, "Squid/Squid_Collision.ogg": 0.15}  # s
LOOP_LENGTH = (40.0, 90.0)  # s


def measure_event(outdir, kind, file):
    samples = measure.decode(outdir / file, 2 if kind == "music" else 1)
    samples = samples if kind == "music" else samples.repeat(2, axis=0)  # mono is heard from both speakers
    row = {
        "file": file,
        "kind": kind,
        "samples": samples,
        "seconds": samples.shape[1] / RATE,
        "loudness": measure.integrated_loudness(samples) if kind == "music" else measure.loudest_moment(samples),
        "rms": measure.sounding_rms(samples),
        "peak": measure.true_peak(samples),
        "dc": np.abs(samples.mean(axis=1)).max(),
        "lead": measure.leading_silence(samples),
    }
    if kind == "music":
        row["step"], row["near"] = measure.loop_step(samples)
        row["missing"] = round(read_score(file.removesuffix(".ogg")).length * RATE) - samples.shape[1]
    else:
        row["end"] = np.abs(samples[:, -48:]).max()
    return row


def faults(row, reference):
    """Everything about one event that breaks a limit."""
    found = []
    if row["peak"] > HIGHEST_PEAK:
        found.append(f"true peak {row['peak']:.1f} dBFS")
    if row["dc"] > LARGEST_DC:
        found.append(f"DC {row['dc']:.4f}")
    if row["kind"] == "music":
        if row["step"] > LARGEST_STEP or row["near"] > LARGEST_STEP:
            found.append(f"the loop joins with a step of {row['step']:.3f}, near it {row['near']:.3f}")
        if row["missing"]:
            found.append(f"{row['missing']} frames missing")
        if not LOOP_LENGTH[0] <= row["seconds"] <= LOOP_LENGTH[1]:
            found.append(f"lasts {row['seconds']:.1f} s")
        return found
    for name in ("loudness", "rms"):
        if row[name] > reference[name] + LOUDEST_EFFECT:
            found.append(f"{name} {row[name] - reference[name]:.1f} dB above {REFERENCE}")
    if row["lead"] > LONGEST_LEAD:
        found.append(f"starts after {row['lead'] * 1000:.1f} ms of silence")
    if row["end"] > LAST_SAMPLES:
        found.append(f"ends at {row['end']:.4f}")
    if row["seconds"] > LONGEST.get(row["file"], 4.0):
        found.append(f"lasts {row['seconds']:.3f} s")
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


def draw(row, path):
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    samples, mono = row["samples"], row["samples"].mean(axis=0)
    figure, (level, spectrum, map_) = pyplot.subplots(3, 1, figsize=(11, 9), layout="constrained")
    figure.suptitle(f"{row['file']}: {row['seconds']:.2f} s, {row['loudness']:.1f} LUFS, peak {row['peak']:.1f} dBFS")
    window = RATE // (10 if row["kind"] == "music" else 500)
    blocks = mono[: len(mono) // window * window].reshape(-1, window)
    times = (np.arange(len(blocks)) + 0.5) * window / RATE
    level.plot(times, 20 * np.log10(np.abs(blocks).max(axis=1) + 1e-5), lw=0.8, label="peak")
    level.plot(times, 10 * np.log10((blocks**2).mean(axis=1) + 1e-10), lw=0.8, label="RMS")
    level.set(ylabel="dBFS", xlabel="s", ylim=(-80, 0), xlim=(0, row["seconds"]))
    level.legend(loc="lower left")

    power = np.abs(np.fft.rfft(samples)) ** 2
    hertz = np.fft.rfftfreq(samples.shape[1], 1 / RATE)
    edges = 20 * 2 ** (np.arange(0, 10 * 6 + 1) / 6)
    bands = [power[:, (hertz >= a) & (hertz < b)].sum() for a, b in zip(edges, edges[1:])]
    bands = 10 * np.log10(np.array(bands) / power.sum() + 1e-9)
    spectrum.step(edges[:-1], bands, where="post")
    spectrum.set(xscale="log", ylabel="dB of the whole, per 1/6 octave", xlabel="Hz", ylim=(-70, 0), xlim=(20, 20000))
    map_.specgram(mono + 1e-7, NFFT=2048, Fs=RATE, noverlap=1024, vmin=-140, vmax=-40, cmap="magma")
    map_.set(yscale="symlog", ylim=(50, 20000), xlabel="s", ylabel="Hz", xlim=(0, row["seconds"]))
    path.parent.mkdir(parents=True, exist_ok=True)
    figure.savefig(path, dpi=70)
    pyplot.close(figure)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("outdir", type=Path)
    parser.add_argument("--charts", type=Path, metavar="DIR", help="draw the charts there")
    options = parser.parse_args()

    rows = [measure_event(options.outdir, kind, file) for kind, file in read_bank(ROOT / "sound/bank.txt")]
    reference = next(row for row in rows if row["file"] == REFERENCE)
    print_table(rows)
    bad = [f"{row['file']}: {fault}" for row in rows for fault in faults(row, reference)]
    print("\n".join(bad))
    if options.charts:
        for row in rows:
            draw(row, options.charts / row["file"].replace("/", "_").replace(".ogg", ".png"))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
