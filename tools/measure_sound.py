#!/usr/bin/python3
"""Measures the sound of a whole match that BUILD plays, and the tunes and effects it is made from; names what breaks a
limit. Needs python3-numpy."""

import argparse
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import numpy as np

from build_sound import ROOT, read_bank, read_bars_of
from soundbuild import limits, masking, match_run, measure, seam
from soundbuild.measure import RATE
from soundbuild.tune import longest_repeat

MUSIC_WITHIN = 10.0  # dB below the match's tune: BS.1770's gate, under which a moment does not count as sounding
OUTPUT = 0.708  # what the mixer leaves of a sound in each of the two channels
SAME_GAIN = 0.1  # dB
STANDS_OUT = 6.0  # dB
REPEATS = 2  # bars in a row
TEMPO = {"Marlo_Pirates": 100, "Marlo_Buckaneer": 126, "Marlo_Buckaneer_Fast": 150, "Marlo_Baha": 92}
BEATS_PER_BAR = 4
SAME_LOOP = -60.0  # dB: what the game's loop may differ by from the file's, joined end to start
LATENCY = 48  # frames of sound from a start to what is heard of it

MATCH_TUNE = "Marlo_Buckaneer.ogg"
CROWN, CHANGE = "Objectives/Crown.ogg", "Objectives/Objective_Change.ogg"
CROWN_NUMBER, CHANGE_NUMBER = 25, 23


class Heard:
    """A match, the same without the two sounds that have to stand out, and without any effect."""

    def __init__(self, build, effects):
        match = match_run.Match(build, ROOT / "sound/bank.txt")
        with ThreadPoolExecutor(2) as pool:  # two matches at once
            whole = pool.submit(match.sound_and_events)
            self.rest, self.music = pool.map(match.sound_without, [{CROWN, CHANGE}, set(effects)])
            self.whole, self.events = whole.result()
        self.rules = match_run.rules(self.events)
        self.sounds = {name: measure.decode(build / "sound" / name, 1).repeat(2, axis=0) for name in (CROWN, CHANGE)}
        self.tune = measure.decode(build / "sound" / MATCH_TUNE, 2)


def gain(heard, sound):
    """The share of a sound in what is heard, both channels together."""
    return (heard * sound).sum() / (sound * sound).sum()


def print_head(*columns):
    print(f"\n| {' | '.join(columns)} |\n{'|---' * len(columns)}|")


def place(frame):
    return frame * match_run.SAMPLES_A_FRAME + LATENCY


def check_music(heard):
    """Whether every second of every rule has music."""
    seconds = {}
    for name, begin, end in heard.rules:
        part = slice(place(begin), place(end))
        seconds[name] = [measure.loudness_of_seconds(sound[:, part]) for sound in (heard.music, heard.whole)]
    volume = OUTPUT * limits.VOLUME[MATCH_TUNE]
    lowest = measure.integrated_loudness(heard.tune) + measure.decibels(volume) - MUSIC_WITHIN
    print_head("rule", "seconds", "quietest second of the music, LUFS", "of all", "loudest second of all")
    found = []
    for name, (music, whole) in seconds.items():
        print(f"| {name} | {len(music)} | {music.min():.1f} | {whole.min():.1f} | {whole.max():.1f} |")
        found += [f"{name}: no music in its second {k}, {music[k]:.1f} LUFS" for k in np.flatnonzero(music < lowest)]
    return found


def check_gains(heard, first_crown):
    """How loud the game plays its effects and its tune."""
    alone = slice(place(first_crown), place(first_crown) + RATE // 4)  # before another one may begin
    of_effects = gain(heard.whole[:, alone] - heard.rest[:, alone], heard.sounds[CROWN][:, : RATE // 4])
    of_tune = gain(heard.music[:, LATENCY : LATENCY + RATE], heard.tune[:, :RATE])
    played = {CROWN: (of_effects, OUTPUT), MATCH_TUNE: (of_tune, OUTPUT * limits.VOLUME[MATCH_TUNE])}
    decibels = {name: [measure.decibels(value) for value in pair] for name, pair in played.items()}
    print(f"\nEffects are played at {decibels[CROWN][0]:.1f} dB, the match's tune at {decibels[MATCH_TUNE][0]:.1f} dB.")
    return [f"{name} is played at {found:.1f} dB, not {wanted:.1f}" for name, (found, wanted) in decibels.items()
            if abs(found - wanted) > SAME_GAIN]


def check_standing_out(heard):
    """The two sounds over the rest of the match. The game starts none at a change of rule: it is laid over where they
    begin."""
    crowns, changes = (match_run.starts(heard.events, number) for number in (CROWN_NUMBER, CHANGE_NUMBER))
    if not crowns:
        return [f"{CROWN} is not played in this match"]
    found = check_gains(heard, crowns[0])

    def played(part):
        return heard.whole[:, part] - heard.rest[:, part]

    def laid_over(part):
        return OUTPUT * heard.sounds[CHANGE][:, : part.stop - part.start]

    print_head("sound", "its bands, Hz", "times", "least above the rest, dB", "median")
    found += stand_out(heard, CROWN, crowns, played)
    begins = [begin for _, begin, _ in heard.rules]
    return found + stand_out(heard, CHANGE, changes or begins, played if changes else laid_over)


def stand_out(heard, name, starts, sound_in):
    bands, frames = masking.own_bands(heard.sounds[name]), masking.heard_frames(heard.sounds[name])
    parts = [slice(place(start), place(start) + frames) for start in starts]
    above = [masking.stands_out(sound_in(part), heard.rest[:, part], bands) for part in parts]
    centres = ", ".join(f"{hertz:.0f}" for hertz in masking.CENTRES[bands])
    print(f"| {name.removesuffix('.ogg')} | {centres} | {len(above)} | {min(above):.1f} | {np.median(above):.1f} |")
    low = [(start, dB) for start, dB in zip(starts, above) if dB < STANDS_OUT]
    return [f"{name}: {dB:.1f} dB above the rest in frame {start}" for start, dB in low]


def check_bars(tunes):
    print_head("tune", "bars", "longest repeat", "of the drums alone")
    found = []
    for name in tunes:
        bars, drums = read_bars_of(name)
        counts = longest_repeat(bars), longest_repeat(bars, drums)
        print(f"| {name} | {len(bars)} | {counts[0]} | {counts[1]} |")
        if max(counts) > REPEATS:
            found.append(f"{name}: a bar sounds {counts[0]} times running, one of the drums {counts[1]}")
    return found


def check_seams(tunes, rows, heard):
    print_head("tune", "step at the seam (inside)", "change of spectrum, dB (inside)", "correlation (inside)")
    found = []
    for name in tunes:
        samples = rows[f"{name}.ogg"]["samples"]
        beats = samples.shape[1] / RATE * TEMPO[name] / 60
        if abs(beats / BEATS_PER_BAR - len(read_bars_of(name)[0])) * RATE > 1:
            found.append(f"{name}: {beats:.3f} beats at {TEMPO[name]} a minute are not its bars")
        measured = seam.measure_seam(samples, round(beats))
        cells = (f"{value:.2f} ({seam.usual(inside)[0]:.2f} to {seam.usual(inside)[1]:.2f})"
                 for value, inside in measured.values())
        print(f"| {name} | {' | '.join(cells)} |")
        found += [f"{name}: {fault}" for fault in seam.seam_faults(measured)]
    return found + check_loop_in_match(heard)


def check_loop_in_match(heard):
    """The game's own join is the file's: nothing is left out or put in."""
    tune = heard.tune
    join = LATENCY + tune.shape[1]
    played = heard.music[:, join - RATE : join + RATE]
    expected = np.concatenate([tune[:, -RATE:], tune[:, :RATE]], axis=1)
    left = measure.decibels(np.abs(played - gain(played, expected) * expected).max())
    print(f"\nThe match joins its tune with at most {left:.0f} dBFS between what it plays and the file.")
    return [] if left < SAME_LOOP else [f"the match does not join its tune as the file does: {left:.0f} dBFS"]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("build", type=Path, nargs="?", default=ROOT / "build", help="where the game was built")
    build = parser.parse_args().build

    events = read_bank(ROOT / "sound/bank.txt")
    heard = Heard(build, [file for kind, file in events if kind == "sfx"])
    rows = {file: limits.measure_event(build / "sound", kind, file) for kind, file in events}
    tunes = [file.removesuffix(".ogg") for kind, file in events if kind == "music"]
    limits.print_table(rows.values())
    bad = limits.faults(list(rows.values()))
    bad += check_music(heard) + check_standing_out(heard) + check_bars(tunes)
    bad += check_seams(tunes, rows, heard)
    for fault in bad:
        print(f"measure_sound: {fault}", file=sys.stderr)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
