"""How far a sound stands out of what is heard with it, in its own bands."""

import numpy as np

from soundbuild.measure import RATE, k_weighting

SHARE_OF_BANDS = 0.8  # of a sound's energy lies in what counts as its bands
SHARE_OF_LENGTH = 0.9  # of its energy has been heard when it counts as over
# third-octave bands from 25 Hz to 20 kHz (IEC 61260-1, base ten): their middles and limits
CENTRES = 1000 * 10 ** (np.arange(-16, 14) / 10)
EDGES = 1000 * 10 ** ((np.arange(-16, 15) - 0.5) / 10)


def band_energies(samples):
    """K-weighted energy in each third of an octave."""
    size = 1 << int(samples.shape[-1] - 1).bit_length()
    hertz = np.fft.rfftfreq(size, 1 / RATE)
    power = np.abs(np.fft.rfft(np.atleast_2d(samples), size) * k_weighting(hertz)) ** 2
    summed = np.concatenate([[0], np.cumsum(power.sum(axis=0))])
    return np.diff(summed[np.searchsorted(hertz, EDGES)])


def own_bands(sound):
    """The fewest bands, as indices in their order, that hold most of a sound's energy."""
    energies = band_energies(sound)
    loudest_first = np.argsort(-energies)
    count = np.searchsorted(np.cumsum(energies[loudest_first]), SHARE_OF_BANDS * energies.sum()) + 1
    return np.sort(loudest_first[:count])


def heard_frames(sound):
    """How many frames it takes until most of a sound has been heard."""
    energy = np.cumsum((np.atleast_2d(sound) ** 2).sum(axis=0))
    return int(np.searchsorted(energy, SHARE_OF_LENGTH * energy[-1]))


def stands_out(sound, rest, bands):
    """By how many dB the sound lies above the rest in these bands."""
    return 10 * np.log10(band_energies(sound)[bands].sum() / max(band_energies(rest)[bands].sum(), 1e-12))
