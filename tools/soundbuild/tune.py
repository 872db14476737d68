"""Reads a tune: settings, voices, and sections in which a bar is divided evenly among its words."""

import random
import re
from dataclasses import dataclass, field

from soundbuild.pitch import SourceError, at_or_above, chord, frequency, note_number
from soundbuild.score import Note, Score

BEATS_PER_BAR = 4
ACCENT_DB = 3.5
SOFT_DB = -6.0
SLIDE_SECONDS = 0.06
HIT_PITCH = {  # Hz of a plain hit
    "kick": 52, "snare": 196, "woodblock": 880, "stomp": 73, "handdrum": 220, "hat": 440, "shaker": 440,
    "tambourine": 440, "clap": 440, "cymbal": 440,
}
DEGREES = {"1": 0, "3": 1, "5": 2, "7": 3, "8": 0}
STRUM_SECONDS = {"v": 0.012, "^": 0.009, "*": 0.0}

SETTINGS = {"tempo": 120.0, "swing": 0.5, "level": 0.0, "room": 0.3, "drive": 0.0, "transpose": 0.0, "humanise": 0.0}
VOICE_OPTIONS = {
    "level": 0.0, "pan": 0.0, "room": 0.2, "colour": 0.5, "gate": 0.92, "strings": 4.0, "pitch": 0.0,
}


@dataclass
class Voice:
    instrument: str
    register: int = note_number("C3")  # chord degrees and strokes use the first octave from here
    options: dict = field(default_factory=lambda: dict(VOICE_OPTIONS))


@dataclass
class Section:
    chords: list = field(default_factory=list)  # one list of names a bar
    parts: dict = field(default_factory=dict)  # voice -> list of (line number, text of a bar)


class Tune:
    def __init__(self, path):
        self.path = path
        self.settings = dict(SETTINGS)
        self.voices = {}
        self.sections = {}
        self.form = []

    def fail(self, line, message):
        raise SourceError(self.path, line, message)


def read_tune(path, source_lines, read_lines):
    """`read_lines(name)` gives the path and lines of another tune, for one that only differs from it ("like NAME")."""
    tune = Tune(path)
    _parse(tune, source_lines, read_lines)
    return _perform(tune)


def read_bars(path, source_lines, read_lines):
    """The bars in the order in which they sound, and the names of the drums.

    A bar holds, for each voice that begins a note in it, all that makes these notes.
    """
    tune = Tune(path)
    _parse(tune, source_lines, read_lines)
    bars = []
    for line, name in tune.form:
        section = _section_of(tune, line, name)
        here = [{} for _ in section.chords]
        for voice_name, texts in section.parts.items():
            for event in _events(tune, section, texts):
                bar, start = divmod(event.start, BEATS_PER_BAR)
                pitches = [note.pitch for note in _sound(tune, section, voice_name, event, 0, 1.0)]
                notes = here[int(bar)].setdefault(voice_name, [])
                notes.append((round(start, 4), round(event.length, 4), event.word, pitches))
        bars += here
    return bars, {name for name, voice in tune.voices.items() if voice.instrument in HIT_PITCH}


def longest_repeat(bars, voices=None):
    """How many bars sound the same in a row, the last bar being followed by the first; of these voices, or of all."""
    heard = [{name: notes for name, notes in bar.items() if voices is None or name in voices} for bar in bars]
    longest = run = 1
    for before, bar in zip(heard * 2, (heard * 2)[1:]):
        run = run + 1 if bar == before else 1
        longest = max(longest, min(run, len(bars)))
    return longest


# --- parsing -----------------------------------------------------------------------------------------------------------


def _parse(tune, source_lines, read_lines):
    section, fresh = None, set()
    for number, text in source_lines:
        words = text.split()
        head = words[0]
        if head == "like" and len(words) == 2:
            own_path = tune.path
            tune.path, lines = read_lines(words[1])
            _parse(tune, lines, read_lines)
            tune.path = own_path
        elif head in SETTINGS and len(words) == 2:
            tune.settings[head] = _number(tune, number, words[1])
        elif head == "form":
            tune.form = [(number, name) for name in words[1:]]
        elif head == "voice" and len(words) >= 3:
            tune.voices[words[1]] = _voice(tune, number, words[2:])
        elif head == "section" and len(words) in (2, 4):
            section, fresh = _section(tune, number, words), set()
        elif "|" in text and section is not None:
            _bars(tune, section, fresh, number, text)
        else:
            tune.fail(number, f"not understood: {text.strip()}")


def _number(tune, line, word):
    try:
        return float(word)
    except ValueError:
        tune.fail(line, f"expected a number, not '{word}'")


def _voice(tune, line, words):
    voice = Voice(words[0])
    if len(words) % 2 == 0:
        tune.fail(line, f"'{words[-1]}' lacks a value")
    for name, value in zip(words[1::2], words[2::2]):
        if name == "register":
            voice.register = note_number(value)
            if voice.register is None:
                tune.fail(line, f"register is the name of a note, not '{value}'")
        elif name in VOICE_OPTIONS:
            voice.options[name] = _number(tune, line, value)
        else:
            tune.fail(line, f"a voice has no '{name}'")
    return voice


def _section(tune, line, words):
    section = Section()
    if len(words) == 4:
        if words[2] != "from" or words[3] not in tune.sections:
            tune.fail(line, "expected 'section NAME from AN-EARLIER-NAME'")
        origin = tune.sections[words[3]]
        section = Section(list(origin.chords), dict(origin.parts))
    tune.sections[words[1]] = section
    return section


def _bars(tune, section, fresh, line, text):
    """A line continues the voice's earlier lines of this section; the first one replaces what was taken over."""
    name, _, rest = text.strip().partition("|")
    name = name.strip()
    bars = [(line, bar.strip()) for bar in rest.rstrip().removesuffix("|").split("|")]
    if name == "chords":
        if name not in fresh:
            section.chords = []
        for _, bar in bars:
            names = bar.split()
            for word in names:
                if chord(word) is None:
                    tune.fail(line, f"no such chord: {word}")
            section.chords.append(names)
    elif name in tune.voices:
        section.parts[name] = (section.parts[name] if name in fresh else []) + bars
    else:
        tune.fail(line, f"no such voice: {name}")
    fresh.add(name)


# --- performing ----------------------------------------------------------------------------------------------------------


def _perform(tune):
    settings = tune.settings
    score = Score(level=settings["level"], room=settings["room"], drive=settings["drive"])
    beat_seconds = 60.0 / settings["tempo"]
    first_beat = 0
    for line, name in tune.form:
        section = _section_of(tune, line, name)
        for voice_name, bars in section.parts.items():
            for event in _events(tune, section, bars):
                score.notes += _sound(tune, section, voice_name, event, first_beat, beat_seconds)
        first_beat += BEATS_PER_BAR * len(section.chords)
    if first_beat == 0:
        tune.fail(1, "no form, or its sections have no chords")
    score.length = first_beat * beat_seconds
    _humanise(score.notes, settings["humanise"] / 1000)
    return score


def _section_of(tune, line, name):
    if name not in tune.sections:
        tune.fail(line, f"no such section: {name}")
    return tune.sections[name]


@dataclass
class Event:
    line: int
    word: str
    start: float  # beats from the start of the section
    length: float  # beats


def _events(tune, section, bars):
    """The words of a voice with their places in the section; holds make the word before them longer."""
    count = len(section.chords)
    bars = [bar for bar in bars if bar[1]]
    if not bars:
        return []
    if count % len(bars):
        tune.fail(bars[0][0], f"{len(bars)} bars do not fill a section of {count}")
    events = []
    for index in range(count):
        line, text = bars[index % len(bars)]
        _divide(tune, line, _nested(tune, line, text), index * BEATS_PER_BAR, BEATS_PER_BAR, events)
    return [event for event in events if event.word != "."]


def _nested(tune, line, text):
    """The words of a bar; those in brackets as a list of their own."""
    stack = [[]]
    for word in re.findall(r"[\[\]]|[^\s\[\]]+", text):
        if word == "[":
            stack[-1].append([])
            stack.append(stack[-1][-1])
        elif word != "]":
            stack[-1].append(word)
        elif len(stack) > 1:
            stack.pop()
        else:
            tune.fail(line, "a bracket closes that was not opened")
    if len(stack) > 1:
        tune.fail(line, "a bracket is not closed")
    return stack[0]


def _divide(tune, line, places, start, length, events):
    """Shares out `length` beats evenly; what stands in brackets shares one place."""
    share = length / max(1, len(places))
    for index, place in enumerate(places):
        at = start + index * share
        if isinstance(place, list):
            _divide(tune, line, place, at, share, events)
        elif place != "-":
            events.append(Event(line, place, at, share))
        elif events:
            events[-1].length += share
        else:
            tune.fail(line, "nothing to hold at the start of a section")


def _sound(tune, section, voice_name, event, first_beat, beat_seconds):
    voice, settings = tune.voices[voice_name], tune.settings
    options = voice.options
    word, level = event.word, options["level"]
    if word[-1] in "!?":
        level += ACCENT_DB if word[-1] == "!" else SOFT_DB
        word = word[:-1]
    start = _swung(event.start + first_beat, settings["swing"]) * beat_seconds
    end = _swung(event.start + first_beat + event.length, settings["swing"]) * beat_seconds
    length = (end - start) * options["gate"]

    def note(pitch, pitch_to=None, later=0.0, louder=0.0):
        return Note(
            start + later, max(0.03, length - later), voice.instrument, level + louder, pitch, pitch_to or pitch,
            options["pan"], options["room"], options["colour"], SLIDE_SECONDS,
        )

    if word == "x":
        if not options["pitch"] and voice.instrument not in HIT_PITCH:
            tune.fail(event.line, f"a hit of '{voice.instrument}' needs the voice to have a pitch")
        return [note(options["pitch"] or HIT_PITCH[voice.instrument])]
    if word in STRUM_SECONDS:
        return _stroke(tune, section, voice, event, word, note)
    pitches = [_pitches(tune, section, voice, event, part) for part in word.split("+")]
    transposed = [[frequency(p + settings["transpose"]) for p in pair] for pair in pitches]
    return [note(pair[0], pair[-1]) for pair in transposed]


def _swung(beat, swing):
    """Moves the middle of each beat to `swing` of it: 0.5 is straight, 0.667 is triplets."""
    whole, part = divmod(beat, 1.0)
    if part < 0.5:
        return whole + part * 2 * swing
    return whole + swing + (part - 0.5) * 2 * (1 - swing)


def _chord_at(tune, section, event):
    names = section.chords[int(event.start // BEATS_PER_BAR)]
    place = event.start % BEATS_PER_BAR / BEATS_PER_BAR
    return chord(names[int(place * len(names) + 1e-9)])


def _stroke(tune, section, voice, event, stroke, note):
    """v: all strings from low to high; ^: the upper ones back, softer; *: all at once."""
    root, steps = _chord_at(tune, section, event)
    tones = sorted(at_or_above(root + step, voice.register) for step in steps)
    count = int(voice.options["strings"])
    strings = sorted(tone + 12 * octave for tone in tones for octave in range(3))[:count]
    if stroke == "^":
        strings = strings[:0:-1]
    louder = -2.5 if stroke == "^" else 0.0
    return [
        note(frequency(pitch + tune.settings["transpose"]), later=index * STRUM_SECONDS[stroke], louder=louder)
        for index, pitch in enumerate(strings)
    ]


def _pitches(tune, section, voice, event, word):
    """One pitch, or two of a slide such as E5~F5. A digit is a degree of the chord."""
    found = []
    for name in word.split("~"):
        number = note_number(name)
        if number is None and name in DEGREES:
            root, steps = _chord_at(tune, section, event)
            number = at_or_above(root + steps[min(DEGREES[name], len(steps) - 1)], voice.register)
            number += 12 * (name == "8")
        if number is None:
            tune.fail(event.line, f"neither a note, a degree, a stroke nor a hit: {event.word}")
        found.append(number)
    return found


def _humanise(notes, seconds):
    """Small differences of time and strength, the same ones every time."""
    if seconds == 0.0:
        return
    chance = random.Random(1)
    for note in notes:
        note.start += (chance.random() - 0.5) * 2 * seconds
        note.level += (chance.random() - 0.5) * 1.4
