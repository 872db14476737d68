"""Names of notes and chords. Pitches are MIDI numbers: A4 is 69, its frequency 440 Hz."""

import re

STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
ACCIDENTALS = {"": 0, "#": 1, "b": -1}

# semitones above the root for the degrees 1, 3, 5 and, where a chord has one, 6 or 7
QUALITIES = {
    "": (0, 4, 7),
    "m": (0, 3, 7),
    "6": (0, 4, 7, 9),
    "m6": (0, 3, 7, 9),
    "7": (0, 4, 7, 10),
    "m7": (0, 3, 7, 10),
    "maj7": (0, 4, 7, 11),
    "sus4": (0, 5, 7),
}


class SourceError(Exception):
    """What is wrong in a source, where, and why."""

    def __init__(self, path, line, message):
        super().__init__(f"{path}:{line}: {message}")


def note_number(name):
    """The MIDI number of a name such as Bb3, or None if it is no name of a note."""
    match = re.fullmatch(r"([A-G])([#b]?)(-?\d)", name)
    if not match:
        return None
    return 12 * (int(match[3]) + 1) + STEPS[match[1]] + ACCIDENTALS[match[2]]


def chord(name):
    """Root (0 for C to 11) and the semitones above it of a chord such as Gm7, or None if it is no chord."""
    match = re.fullmatch(r"([A-G])([#b]?)(.*)", name)
    if not match or match[3] not in QUALITIES:
        return None
    return (STEPS[match[1]] + ACCIDENTALS[match[2]]) % 12, QUALITIES[match[3]]


def frequency(number):
    """Hertz of a MIDI number in equal temperament."""
    return 440.0 * 2.0 ** ((number - 69) / 12)


def at_or_above(number, lowest):
    """The same note in the first octave that reaches `lowest`."""
    return lowest + (number - lowest) % 12
