"""Measures of a decoded sound. Samples are an array (channels, frames) of floats, 1.0 being full scale; needs numpy."""

import subprocess

import numpy as np

RATE = 48000
BLOCK = 1 << 16  # frames transformed at once
FILTER_RINGS = 1 << 13  # frames after which nothing is left of what K-weighting has heard
BLOCK_EDGE = 1 << 10  # of a block, where its end and its start meet


def decode(path, channels):
    """The samples of an Ogg file as a player hears them (16 bits)."""
    command = ["oggdec", "-Q", "-R", "-b", "16", "-o", "-", path]
    raw = subprocess.run(command, capture_output=True, check=True).stdout
    return np.frombuffer(raw, "<i2").reshape(-1, channels).T.astype(np.float64) / 32768


def decibels(value):
    return 20 * np.log10(max(value, 1e-9))


def k_weighting(hertz):
    """Response of the two filters of ITU-R BS.1770-4, annex 1, whose coefficients are given for 48 kHz."""
    z = np.exp(-2j * np.pi * hertz / RATE)
    shelf = (1.53512485958697 - 2.69169618940638 * z + 1.19839281085285 * z**2) / (
        1 - 1.69065929318241 * z + 0.73248077421585 * z**2
    )
    high_pass = (1 - 2 * z + z**2) / (1 - 1.99004745483398 * z + 0.99007225036621 * z**2)
    return shelf * high_pass


def k_weighted(samples):
    """The sound through these filters, block by block."""
    weight = k_weighting(np.fft.rfftfreq(BLOCK, 1 / RATE))
    padded = np.pad(samples, ((0, 0), (FILTER_RINGS, BLOCK)))
    parts = []
    for start in range(0, samples.shape[1], BLOCK - FILTER_RINGS):
        part = np.fft.irfft(np.fft.rfft(padded[:, start : start + BLOCK]) * weight, BLOCK)
        parts.append(part[:, FILTER_RINGS:])  # before that, the block's start would hear its end
    return np.concatenate(parts, axis=1)[:, : samples.shape[1]]


def _momentary_powers(samples):
    """Mean square of the K-weighted sound in windows of 0.4 s that start every 0.1 s."""
    window = int(0.4 * RATE)
    frames = max(samples.shape[1], window)
    weighted = k_weighted(np.pad(samples, ((0, 0), (0, frames - samples.shape[1]))))
    energy = np.cumsum(np.pad((weighted**2).sum(axis=0), (1, 0)))
    starts = np.arange(0, frames - window + 1, RATE // 10)
    return (energy[starts + window] - energy[starts]) / window


def _lufs(power):
    return -0.691 + 10 * np.log10(max(power, 1e-12))


def integrated_loudness(samples):
    """LUFS with the two gates of BS.1770-4."""
    powers = _momentary_powers(samples)
    powers = powers[powers > 10 ** ((-70 + 0.691) / 10)]
    if not len(powers):
        return -70.0
    return _lufs(powers[powers > powers.mean() / 10].mean())


def loudest_moment(samples):
    """LUFS of the loudest 0.4 s: what an effect amounts to, however short it is."""
    return _lufs(_momentary_powers(samples).max())


def true_peak(samples):
    """dBFS of the signal between its samples too: four times oversampled through its spectrum, block by block."""
    padded = np.pad(samples, ((0, 0), (BLOCK_EDGE, BLOCK)))
    highest = 0.0
    for start in range(0, samples.shape[1], BLOCK - 2 * BLOCK_EDGE):
        spectrum = np.pad(np.fft.rfft(padded[:, start : start + BLOCK], BLOCK), ((0, 0), (0, 3 * BLOCK // 2)))
        between = np.fft.irfft(spectrum, 4 * BLOCK)[:, 4 * BLOCK_EDGE : -4 * BLOCK_EDGE]
        highest = max(highest, np.abs(between).max() * 4)
    return decibels(highest)


def sounding_rms(samples):
    """dBFS over the windows of 10 ms that are at most 40 dB below the loudest one."""
    window = RATE // 100
    whole = samples[:, : samples.shape[1] // window * window]
    powers = (whole.reshape(whole.shape[0], -1, window) ** 2).mean(axis=(0, 2))
    return 10 * np.log10(max(powers[powers > powers.max() * 1e-4].mean(), 1e-12))


def loop_step(samples):
    """The step from the last frame to the first, and the largest between neighbours within 10 ms on both sides."""
    near = int(0.01 * RATE)
    joined = np.concatenate([samples[:, -near:], samples[:, :near]], axis=1)
    steps = np.abs(np.diff(joined, axis=1))
    return steps[:, near - 1].max(), steps.max()


def leading_silence(samples):
    """Seconds before the sound reaches 40 dB below its own peak."""
    loud = np.abs(samples).max(axis=0)
    return np.argmax(loud > loud.max() * 0.01) / RATE


def at_speed(samples, speed):
    """The sound as it is played faster or slower, which moves its pitch too."""
    if speed == 1.0:
        return samples
    there = np.arange(0, samples.shape[1] - 1, speed)
    return np.stack([np.interp(there, np.arange(samples.shape[1]), channel) for channel in samples])


def attack(samples):
    """Seconds in which the level, over 2 ms, rises from a tenth of its highest value to nine tenths."""
    window = np.ones(RATE // 500) / (RATE // 500)
    level = np.sqrt(np.convolve((samples**2).mean(axis=0), window)[: 2 * RATE])
    return (np.argmax(level > 0.9 * level.max()) - np.argmax(level > 0.1 * level.max())) / RATE


def spectral_centre(samples):
    """Hz around which the energy lies."""
    power = (np.abs(np.fft.rfft(samples)) ** 2).sum(axis=0)
    return (np.fft.rfftfreq(samples.shape[1], 1 / RATE) * power).sum() / power.sum()


def loudness_of_seconds(samples):
    """LUFS of each whole second."""
    seconds = samples.shape[1] // RATE
    powers = (k_weighted(samples)[:, : seconds * RATE] ** 2).sum(axis=0).reshape(seconds, RATE).mean(axis=1)
    return np.array([_lufs(power) for power in powers])
