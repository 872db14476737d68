"""The notation of tunes and effects, and what is done to the rendered samples. Needs neither Csound nor numpy."""

import array
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

import build_sound
from soundbuild.effect import read_effect
from soundbuild.pitch import SourceError, frequency, note_number
from soundbuild.render import RATE, close_loop, trim
from soundbuild.tune import read_tune

VOICES = "tempo 60\nform A\nvoice lead whistle gate 1\nvoice low bass register A1 gate 1\nvoice uke ukulele register A3\n"


def lines(text):
    return list(enumerate(text.splitlines(), 1))


def tune(text):
    return read_tune("test.tune", lines(text), None)


def sounding(text):
    """Start, length and pitch of the notes, in the order of their starts."""
    notes = sorted(tune(VOICES + text).notes, key=lambda n: (n.start, n.pitch))
    return [(round(n.start, 3), round(n.length, 3), round(n.pitch, 2)) for n in notes]


class Notation(unittest.TestCase):
    def test_a_bar_is_shared_out_evenly_with_holds_rests_and_brackets(self):
        found = sounding("section A\nchords | Dm | Dm |\nlead | A4 - . [A4 A5] | - A4+A5 |\n")
        self.assertEqual(
            found,
            [(0, 2, 440), (3, 0.5, 440), (3.5, 2.5, 880), (6, 2, 440), (6, 2, 880)],
        )

    def test_degrees_and_strokes_follow_the_chord_of_their_place(self):
        found = sounding("section A\nchords | Dm A7 |\nlow | 1 5 1 8 |\n")
        names = [frequency(note_number(name)) for name in ("D2", "A1", "A1", "A2")]
        self.assertEqual([pitch for _, _, pitch in found], [round(hertz, 2) for hertz in names])
        down = sounding("section A\nchords | Dm |\nuke | v . . . |\n")
        self.assertEqual(len(down), 4)
        self.assertLess(down[0][0], down[3][0])
        self.assertEqual(down[0][2], 220)

    def test_swing_moves_the_off_beat_and_keeps_the_length(self):
        found = tune("swing 0.75\n" + VOICES + "section A\nchords | F |\nlead | A4 A4 A4 A4 A4 A4 A4 A4 |\n")
        self.assertEqual([round(n.start, 2) for n in found.notes[:4]], [0, 0.75, 1, 1.75])
        self.assertEqual(found.length, 4)

    def test_a_section_takes_over_what_it_does_not_say_anew(self):
        text = "section B\nchords | F |\nlead | A4 |\nlow | 1 |\nsection A from B\nlead | A5 |\n"
        self.assertEqual([pitch for _, _, pitch in sounding(text)], [round(frequency(note_number("F2")), 2), 880])


class Effects(unittest.TestCase):
    def test_a_line_is_one_sound(self):
        score = read_effect("test.effect", lines("level -3\n0.5 0.25 bubble A4>880 -6 colour 0.9"))
        note = score.notes[0]
        self.assertEqual((note.start, note.pitch, note.pitch_to, note.colour, note.glide), (0.5, 440, 880, 0.9, 0.25))
        self.assertEqual((score.length, score.level), (0.75, -3))


class Faults(unittest.TestCase):
    def expect(self, read, place, texts):
        for text in texts:
            with self.subTest(text), self.assertRaisesRegex(SourceError, f"^{place}: "):
                read(text)

    def test_of_a_tune_are_told_with_their_line(self):
        voices = ("lead | H4 |", "lead | - A4 |", "lead | [A4 A4 |", "lead | A4 ] |", "lead | A4 | A4 | A4 |", "nobody | A4 |")
        self.expect(tune, r"test\.tune:\d+", [f"{VOICES}section A\nchords | Dm | F |\n{voice}\n" for voice in voices])
        others = ("section A\nchords | Xm |", "section A from Z", "tempo fast", "form Q", "voice lead whistle loud 3", "what")
        self.expect(tune, r"test\.tune:\d+", [f"{VOICES}{other}\n" for other in others])

    def test_of_an_effect_are_told_with_their_line(self):
        texts = ("0 0.1 bubble", "0 0.1 bubble A4 loud", "0 0.1 bubble A4 -3 taste 1", "level high", "level -3")
        self.expect(lambda text: read_effect("test.effect", lines(text)), r"test\.effect:1", texts)


class Samples(unittest.TestCase):
    def test_what_rings_on_after_a_loop_is_heard_at_its_start(self):
        loop = close_loop(array.array("f", [1, 2, 3, 4, 0.5, 0.25]), 4)
        self.assertEqual(list(loop), [1.5, 2.25, 3, 4])

    def test_an_effect_ends_in_silence_where_it_has_died_away_or_is_cut(self):
        sound = array.array("f", [0.5] * RATE + [0.0001] * RATE)
        self.assertEqual(len(trim(sound[:])), RATE)
        self.assertEqual(trim(sound[:])[-1], 0)
        self.assertEqual(len(trim(sound[:], 0.14)), round(0.14 * RATE))


class Sources(unittest.TestCase):
    def test_every_event_of_the_bank_reads_and_plays_instruments_of_the_orchestra(self):
        orchestra = build_sound.ORCHESTRA.read_text()
        events = build_sound.read_bank(ROOT / "sound/bank.txt")
        self.assertEqual([kind for kind, _ in events].count("music"), 4)
        self.assertEqual(len(set(events)), 28)
        for kind, file in events:
            score = build_sound.read_score(file.removesuffix(".ogg"))
            for instrument in {note.instrument for note in score.notes}:
                self.assertIn(f"\ninstr {instrument}\n", orchestra, file)
            if kind == "music":
                self.assertTrue(40 <= score.length <= 90, file)

    def test_the_fast_tune_is_the_tune_of_the_match_half_a_tone_up(self):
        tune_, fast = (build_sound.read_score(name) for name in ("Marlo_Buckaneer", "Marlo_Buckaneer_Fast"))
        self.assertEqual(len(tune_.notes), len(fast.notes))
        self.assertAlmostEqual(fast.length, tune_.length * 126 / 150)
        self.assertAlmostEqual(fast.notes[0].pitch / tune_.notes[0].pitch, 2 ** (1 / 12))


if __name__ == "__main__":
    unittest.main()
