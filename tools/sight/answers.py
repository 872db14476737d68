"""What answers each thing that happens in a match: the frame, the sound that starts in it, and a sheet of what is seen."""
import pathlib
import re
import subprocess
import tempfile
import wave

import numpy as np
from PIL import Image

from sight import films

PADS = ["--match", "--frames", "1300", "--input", str(films.ROOT / "tests/e2e/flight.input")]
PILOTS = ["--match", "--pilots", "--until-end"]
FRAME = 800      # samples
LATE = 2         # frames around its own in which a sound is looked for
OFF = 1.5        # frames that a sound may be away from its act
HIDDEN = 2       # sounds at most that lie under others
SURE = 2.5       # times the root mean square of what else is found
HEARD = 30       # frames of it that are
CROP = 100       # pixels from the middle of a picture of 1280 x 720
AFTER = (-2, 0, 3, 10, 20)  # frames of the sheet's columns
SHEET = films.BUILD / "answers.png"

SOUNDS = {3: "Objectives/Ring_Pickup", 4: "Objectives/Ring_Lose", 8: "Squid/Squid_Collision", 10: "Squid/Squid_Dizzy",
          13: "Squid/Charge", 14: "Squid/Release", 15: "Squid/Pulse_Wave", 20: "Objectives/BeachBall_Hit",
          24: "HUD/Point_Bubble", 25: "Objectives/Crown", 26: "Objectives/Win", 27: "Objectives/GoldenFish",
          28: "Squid/Chain_Hit", 34: "Fish/Puffer_Exhale"}


class Trace:
    """The events of a run, its contacts by names, and where its players and its named things are."""

    def __init__(self, run, wav):
        self.run, self.events, self.contacts, self.overlaps, self.renamed = run, [], [], [], []
        self.places = {}  # (frame, name) -> (x, y)
        self.first = {}   # name -> frame
        self.names, self.last = {}, {}  # by the number of an object
        command = [films.TOOL, "simulate", *run, "--trace", "-", "--wav", wav]
        text = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
        for line in text.splitlines():
            word = line.split()
            if word[:1] == ["event"]:
                self.events.append((int(word[1]), " ".join(word[2:])))
            elif word[:1] == ["contact"]:
                self.contacts.append((int(word[1]), word[3], word[4], (float(word[5]), float(word[6]))))
            elif word[:1] == ["overlap"]:
                self.overlaps.append((int(word[1]), word[3], word[4]))
            elif word[:1] == ["object"]:
                self._see(word)
        with wave.open(str(wav)) as file:
            self.sound = np.frombuffer(file.readframes(file.getnframes()), dtype=np.int16).astype(np.float32)[::2]

    def _see(self, word):
        frame, number, name = int(word[1]), word[2], word[3]
        if self.names.get(number, name) != name:
            self.renamed.append((frame, self.names[number], name))
        self.names[number] = name
        self.last[number] = frame
        self.first.setdefault(name, frame)
        if name in films.PLAYERS or name == "crown" or name.startswith("ScoreText"):
            self.places[frame, name] = (float(word[4]), float(word[5]))

    def event(self, pattern, since=0):
        """Frame and words of the first such event."""
        for frame, words in self.events:
            if frame >= since and re.fullmatch(pattern, words):
                return frame, words.split()
        return None

    def contact(self, one, other):
        """Frame and place of the first contact of two things of such names."""
        for frame, a, b, place in self.contacts:
            names = (self.names.get(a, ""), self.names.get(b, ""))
            if any(re.fullmatch(one, x) and re.fullmatch(other, y) for x, y in (names, names[::-1])):
                return frame, place
        return None

    def rename(self, before, after):
        """Frame of the first thing that changed its name so."""
        return next(((frame, []) for frame, *names in self.renamed if names == [before, after]), None)

    def gone(self, name):
        """The first frame without some thing of this name that was there."""
        return min(((self.last[number] + 1, []) for number in self.last if self.names[number] == name), default=None)

    def kings(self, name):
        """The first two changes of the player who is in the thing of this name, whoever shared it."""
        king, changes = None, []
        for frame, *pair in self.overlaps:
            names = [self.names.get(number) for number in pair]
            if name in names and names[0] in films.PLAYERS and names[0] != king:
                king = names[0]
                changes.append((frame, ["king", king]))
        return (changes + [None, None])[:2]

    def crowned(self):
        """Frame and player of the first who takes the crown from another; it stands a unit above its holder."""
        holder = None
        for frame, x, y in [(frame, *place) for (frame, name), place in self.places.items() if name == "crown"]:
            places = {name: self.places[frame, name] for name in films.PLAYERS}
            away = {name: np.hypot(x - px, y - 1 - py) for name, (px, py) in places.items()}
            nearest = min(away, key=away.get)
            if holder and nearest != holder:
                return frame, ["crown", nearest]
            holder = nearest
        return None

    def heard(self, frame, sound):
        """By how many frames the effect's beginning, looked for in the run's sound, is off; None where it is not found."""
        effect = _decode(SOUNDS[sound])[: HEARD * FRAME]
        begin = max(0, (frame - LATE) * FRAME)
        span = 2 * LATE * FRAME
        part = self.sound[begin:begin + len(effect) + span]
        length = 1 << int(np.ceil(np.log2(len(part) + len(effect))))
        match = np.fft.irfft(np.fft.rfft(part, length) * np.conj(np.fft.rfft(effect, length)), length)[:span]
        best = int(np.argmax(np.abs(match)))
        sure = abs(match[best]) > SURE * np.sqrt(np.mean(match ** 2))
        return (begin + best) / FRAME - frame if sure else None


def _decode(name):
    path = films.BUILD / "sound" / f"{name}.ogg"
    command = ["ffmpeg", "-loglevel", "error", "-i", path, "-f", "s16le", "-ac", "1", "-ar", "48000", "-"]
    raw = subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout
    return np.frombuffer(raw, dtype=np.int16).astype(np.float32)


def _at_player(trace, found):
    return found and (found[0], trace.places.get((found[0], found[1][1]), (0, 0)))


def _middle(found, place=(0, 0)):
    return found and (found[0], place)


def acts(pads, pilots):
    """(act, run, (frame, place), sound or None)"""
    player = "Player[1-4]"
    charge = _trigger(PADS[-1])
    full = charge and (charge[0] + 120 + 60, charge[1])
    credited = pilots.gone("APoint")
    taken, handed = pilots.kings("TheHill")
    stun, calm = pilots.event(f"stun {player}"), pilots.gone("stunstars")
    yield "charge begins", pads, _middle(charge, pads.places.get((charge[0], "Player1"))), 13
    yield "charge full", pads, _middle(full, pads.places.get((full[0], "Player1"))), None
    yield "launch", pads, _at_player(pads, pads.event("launch Player1 .*", charge[0])), 14
    yield "bump into a wall", pilots, pilots.contact(player, "chain[1-4]"), 28
    yield "bump into a crate", pilots, pilots.contact(player, "crate.*"), None
    yield "bump into a buoy", pilots, pilots.contact(player, "buoy_[a-h]"), None
    yield "bump into a player", pilots, pilots.contact(player, player), 8
    yield "point paid", pilots, _at_player(pilots, pilots.event(f"points {player} .*")), None
    yield "bubble credited", pilots, credited and _middle(credited, _nearest_board(pilots, credited[0])), 24
    yield "stun begins", pilots, _at_player(pilots, stun), 10
    yield "stun ends", pilots, stun and calm and _at_player(pilots, (calm[0], stun[1])), None
    yield "crown changes hands", pilots, _at_player(pilots, pilots.crowned()), 25
    yield "ball changes hands", pilots, pilots.contact(player, "theball"), 20
    yield "hill taken", pilots, _at_player(pilots, taken), None
    yield "hill changes hands", pilots, _at_player(pilots, handed), None
    yield "ring caught", pilots, _nearest_player(pilots, pilots.rename("ringstatic", "ringfollowing")), 3
    yield "rings lost", pilots, _nearest_player(pilots, pilots.rename("ringfollowing", "ringstatic")), 4
    yield "golden fish", pilots, pilots.contact(player, "goldfish"), 27
    yield "last five seconds", pilots, _countdown(pilots), None
    yield "rule and piece change", pilots, _middle(pilots.event("segment begin openwater")), None
    yield "finish", pilots, _middle((pilots.first["finish"], None)), None
    yield "winner", pilots, _middle((pilots.first["winner_banner"], None)), 26


def _countdown(trace):
    """The digit 1 of the first countdown."""
    return trace.event("segment begin openwater")[0] - 100, (0, 4)


def _trigger(inputs):
    """When a trigger of this file of inputs is first pulled."""
    found = re.search(r"^(\d+) pad 0 axis 5 32767$", pathlib.Path(inputs).read_text(), re.M)
    return found and (int(found[1]), [])


def _nearest_player(trace, found):
    return found and (found[0], trace.places[found[0], "Player1"])


def _nearest_board(trace, frame):
    return trace.places.get((frame, "ScoreText3"), (-16, -5))


def _strip(trace, frame, place):
    with tempfile.TemporaryDirectory() as folder:
        command = [films.TOOL, "film", *trace.run, "--from", max(0, frame + AFTER[0]), "--to", frame + AFTER[-1], "--every", 1,
                   "--out", folder]
        subprocess.run([str(word) for word in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        cells = []
        for after in AFTER:
            path = pathlib.Path(folder) / f"{frame + after:06d}.png"
            picture = np.array(Image.open(path).convert("RGB")) if path.exists() else np.zeros((720, 1280, 3), np.uint8)
            column, row = int(640 + place[0] * 32.8), int(360 - place[1] * 32.8)
            padded = np.pad(picture, ((CROP, CROP), (CROP, CROP), (0, 0)))
            cells.append(padded[row:row + 2 * CROP, column:column + 2 * CROP])
        return np.hstack(cells)


def measure(_course):
    """Prints the table and returns what has no answer."""
    faults, hidden = [], []
    print("answers: frame, sound that starts in it, and by how many frames it lies off in the run's WAV")
    for act, trace, found, sound in _traced():
        if not found:
            faults.append(f"answers: {act} never happened")
            continue
        frame = found[0]
        started = sound is None or any(at == frame and words == f"sound {sound}" for at, words in trace.events)
        off = None if sound is None else trace.heard(frame, sound)
        where = "hidden by others" if off is None else f"{off:+.2f}"
        print(f"  {act:22s} {frame:6d} " + ("" if sound is None else f"sound {sound} {where}"))
        if not started:
            faults.append(f"answers: {act} in frame {frame} starts no sound {sound}")
        elif sound is not None and off is None:
            hidden.append(act)
        elif sound is not None and abs(off) > OFF:
            faults.append(f"answers: {act} in frame {frame} is heard {off:+.1f} frames off")
    return faults + ([f"answers: not heard: {', '.join(hidden)}"] if len(hidden) > HIDDEN else [])


def draw_sheet(_course):
    """Writes the sheet: a row an act, before it and after it."""
    strips = [_strip(trace, *found) for _, trace, found, _ in _traced() if found]
    Image.fromarray(np.vstack(strips)).save(SHEET)
    print(f"{SHEET}: the acts of the answers, {', '.join(f'{after:+d}' for after in AFTER)} frames from each")
    return []


def _traced():
    with tempfile.TemporaryDirectory() as folder:
        pads, pilots = Trace(PADS, folder + "/pads.wav"), Trace(PILOTS, folder + "/pilots.wav")
    return list(acts(pads, pilots))
