"""Reads an effect: one sound a line.

    start length instrument pitch[>pitch] level [option value ...]
"""

from soundbuild.pitch import SourceError, frequency, note_number
from soundbuild.score import Note, Score

OPTIONS = ("colour", "room", "glide")
SETTINGS = ("level", "room", "drive", "cut")


def read_effect(path, source_lines):
    score = Score()
    for number, text in source_lines:
        words = text.split()
        try:
            if words[0] in SETTINGS and len(words) == 2:
                setattr(score, words[0], float(words[1]))
            else:
                score.notes.append(_note(words))
        except (ValueError, IndexError) as error:
            raise SourceError(path, number, f"expected 'start length instrument pitch level ...': {error}") from None
    score.length = max((n.start + n.length for n in score.notes), default=0.0)
    if score.length == 0.0:
        raise SourceError(path, 1, "an effect without a sound")
    return score


def _note(words):
    start, length = float(words[0]), float(words[1])
    pitch, _, pitch_to = words[3].partition(">")
    values = dict(zip(words[5::2], map(float, words[6::2]), strict=True))
    unknown = set(values) - set(OPTIONS)
    if unknown:
        raise ValueError(f"no such option: {', '.join(sorted(unknown))}")
    return Note(
        start, length, words[2], float(words[4]), _hertz(pitch), _hertz(pitch_to or pitch), 0.0,
        values.get("room", 0.1), values.get("colour", 0.5), values.get("glide", length),
    )


def _hertz(word):
    """A note's name, or a number of hertz for sounds without a tone."""
    number = note_number(word)
    return float(word) if number is None else frequency(number)
