"""Colours as eyes see them: CIE Lab, relative luminance, and three kinds of colour blindness."""
import numpy as np

# sRGB to CIE XYZ under D65 (IEC 61966-2-1)
_XYZ = np.array([[0.4124564, 0.3575761, 0.1804375], [0.2126729, 0.7151522, 0.0721750], [0.0193339, 0.1191920, 0.9503041]])
_WHITE = _XYZ.sum(axis=1)

# Machado, Oliveira and Fernandes 2009, severity 1, on linear RGB
_BLIND = {
    "protanopia": [[0.152286, 1.052583, -0.204868], [0.114503, 0.786281, 0.099216], [-0.003882, -0.048116, 1.051998]],
    "deuteranopia": [[0.367322, 0.860646, -0.227968], [0.280085, 0.672501, 0.047413], [-0.011820, 0.042940, 0.968881]],
    "tritanopia": [[1.255528, -0.076749, -0.178779], [-0.078411, 0.930809, 0.147602], [0.004733, 0.691367, 0.303900]],
}
EYES = ("colour", "grey", *_BLIND)


def linear(rgb):
    """8-bit sRGB to linear light from 0 to 1."""
    c = np.asarray(rgb, dtype=float) / 255
    return np.where(c <= 0.04045, c / 12.92, ((c + 0.055) / 1.055) ** 2.4)


def luminance(rgb):
    """Relative luminance from 0 to 1 (WCAG 2)."""
    return linear(rgb) @ _XYZ[1]


def contrast(a, b):
    """WCAG 2 contrast ratio of two 8-bit colours."""
    dark, light = sorted((float(luminance(a)), float(luminance(b))))
    return (light + 0.05) / (dark + 0.05)


def lab(rgb, eyes="colour"):
    """CIE Lab of 8-bit colours, as one of EYES sees them."""
    light = linear(rgb)
    if eyes == "grey":
        light = np.repeat((light @ _XYZ[1])[..., None], 3, axis=-1)
    elif eyes != "colour":
        light = np.clip(light @ np.array(_BLIND[eyes]).T, 0, 1)
    t = light @ _XYZ.T / _WHITE
    f = np.where(t > (6 / 29) ** 3, np.cbrt(t), t / (3 * (6 / 29) ** 2) + 4 / 29)
    return np.stack([116 * f[..., 1] - 16, 500 * (f[..., 0] - f[..., 1]), 200 * (f[..., 1] - f[..., 2])], axis=-1)


def distance(a, b):
    """CIE 1976 distance of two Lab colours."""
    return float(np.linalg.norm(np.asarray(a) - np.asarray(b)))
