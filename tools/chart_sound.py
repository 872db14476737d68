#!/usr/bin/python3
"""Measures what build_sound.py rendered to OUTDIR, says what breaks a limit, and draws a chart of every event.

Needs python3-numpy, and python3-matplotlib for the charts.
"""

import argparse
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import numpy as np

from build_sound import ROOT, read_bank
from soundbuild import limits
from soundbuild.measure import RATE


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

    rows = [limits.measure_event(options.outdir, kind, file) for kind, file in read_bank(ROOT / "sound/bank.txt")]
    limits.print_table(rows)
    bad = limits.faults(rows)
    print("\n".join(bad))
    if options.charts:
        for row in rows:
            draw(row, options.charts / row["file"].replace("/", "_").replace(".ogg", ".png"))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
