"""How a loop goes on from its end to its start, compared with how it goes on from beat to beat inside."""

import numpy as np

from soundbuild.masking import band_energies
from soundbuild.measure import RATE

WINDOW = RATE // 20  # frames compared on each side, 50 ms
STEP_WINDOW = RATE // 100  # in which the usual step is found
LONGEST_LAG = RATE // 50  # at which what follows may resemble what went before
LOWEST_BAND = 4  # 63 Hz; a window holds three cycles of it
MIDDLE = 0.95  # of the beats inside: the seam lies among them


def measure_seam(samples, beats):
    """For each measure: its value at the seam, and the values at all beats inside, the same 20 ms before each."""
    ring = np.concatenate([samples[:, -RATE:], samples, samples[:, :RATE]], axis=1)
    places = [RATE + round(k * samples.shape[1] / beats) for k in range(beats)]
    measures = {"step": _step, "change of spectrum": _change, "correlation": _correlation}
    values = {name: [measure(ring, place) for place in places] for name, measure in measures.items()}
    return {name: (found[0], np.array(found[1:])) for name, found in values.items()}


def usual(inside):
    """Between which values most of these lie."""
    return np.quantile(inside, [(1 - MIDDLE) / 2, (1 + MIDDLE) / 2])


def seam_faults(measured):
    found = []
    for name, (value, inside) in measured.items():
        lowest, highest = usual(inside)
        outside = value < lowest if name == "correlation" else value > highest
        if outside:
            found.append(f"{name} {value:.2f} at the seam, {lowest:.2f} to {highest:.2f} inside")
    return found


def _step(ring, place):
    """The step into this sample, in usual steps of its neighbourhood."""
    steps = np.diff(ring[:, place - STEP_WINDOW : place + STEP_WINDOW], axis=1)
    usual = np.sqrt((steps**2).mean(axis=1)) + 1e-6
    return (np.abs(steps[:, STEP_WINDOW - 1]) / usual).max()


def _change(ring, place):
    """Mean difference in dB of the third-octave bands before and after."""
    shape = np.hanning(WINDOW)
    before, after = (band_energies(part * shape) for part in _sides(ring, place))
    return np.abs(10 * np.log10((before + 1e-6) / (after + 1e-6)))[LOWEST_BAND:].mean()


def _correlation(ring, place):
    """The best correlation of what follows with what went before."""
    before, after = (part.mean(axis=0) for part in _sides(ring, place))
    size = 4 * WINDOW
    lags = np.fft.irfft(np.fft.rfft(after, size) * np.conj(np.fft.rfft(before, size)), size)
    best = np.abs(np.concatenate([lags[-LONGEST_LAG:], lags[:LONGEST_LAG]])).max()
    return best / np.sqrt((before @ before) * (after @ after) + 1e-12)


def _sides(ring, place):
    return ring[:, place - WINDOW : place], ring[:, place : place + WINDOW]
