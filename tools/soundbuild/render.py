"""Renders a score with Csound, closes loops, trims effects and encodes the result."""

import array
import math
import struct
import subprocess
import tempfile
from pathlib import Path

RATE = 48000  # Hz, as in the orchestra
LOOP_LEAD = 0.02  # s; a loop's first beat comes this late, so that its seam lies in what rings on, not in an attack
LOOP_TAIL = 4.0  # s, rendered after the end and folded over the start
EFFECT_TAIL = 2.5  # s, rendered after the last sound and trimmed
SILENCE = 10 ** (-66 / 20)
FADE = 0.005  # s, at the end of an effect
QUALITY = {"music": 5, "sfx": 6}  # of Ogg Vorbis
SEAM_TRIES = 10
SEAM_TURN = 64  # frames of sound by which a loop is turned for the next try
SEAM_WINDOW = 480  # frames on each side of the seam, whose steps are the usual ones
SMOOTH_SEAM = 1.5  # usual steps, largest of both channels


class RenderError(Exception):
    pass


def render(orchestra, score, kind, target):
    """Writes `target` (an Ogg file): a stereo loop for music, mono that ends in silence for sfx."""
    channels = 2 if kind == "music" else 1
    if kind == "music":
        frames = round(score.length * RATE)
        samples = _csound(orchestra, score.csound(LOOP_LEAD, LOOP_TAIL), channels)
        _encode_loop(close_loop(samples, frames * channels), channels, target)
    else:
        samples = _csound(orchestra, score.csound(0.0, EFFECT_TAIL), channels)
        _encode(trim(samples, score.cut), channels, QUALITY[kind], target)


def close_loop(samples, length):
    """Adds what rings on after `length` to the start: the loop then begins as it goes on when it is repeated."""
    loop = samples[:length]
    for index, value in enumerate(samples[length : 2 * length]):
        loop[index] += value
    return loop


def trim(samples, cut=None):
    """Ends where the sound has died away (mono), or after `cut` seconds, with a short fade."""
    end = len(samples)
    while end > 1 and abs(samples[end - 1]) < SILENCE:
        end -= 1
    if cut is not None:
        end = min(end, round(cut * RATE))
    kept = samples[:end]
    fade = min(round(FADE * RATE), end)
    for index in range(fade):
        kept[end - 1 - index] *= index / fade
    return kept


def _csound(orchestra, text, channels):
    with tempfile.TemporaryDirectory() as folder:
        score, output = Path(folder, "score.sco"), Path(folder, "out.raw")
        score.write_text(text)
        _run(
            ["csound", "-d", "-m0", "-h", "-f", f"--omacro:CHANNELS={channels}", "-o", output, orchestra, score],
            None,
        )
        samples = array.array("f")
        samples.frombytes(output.read_bytes())
    return samples


def _encode_loop(samples, channels, target):
    """Coding leaves a noise that is another one on both sides of the seam, where no overlap smooths it. So the loop is
    turned, by some milliseconds at most, until the two meet as neighbours do elsewhere."""
    steps = []
    for turn in range(SEAM_TRIES):
        _encode(turned(samples, turn, channels), channels, QUALITY["music"], target)
        steps.append(seam_step(_decode(target), channels))
        if steps[-1] <= SMOOTH_SEAM:
            return
    _encode(turned(samples, steps.index(min(steps)), channels), channels, QUALITY["music"], target)


def turned(samples, turn, channels):
    """The same loop, begun a little earlier."""
    start = len(samples) - turn * SEAM_TURN * channels
    return samples[start:] + samples[:start]


def seam_step(samples, channels):
    """The step from the last frame to the first, in usual steps (RMS) of the frames near it; the larger channel's."""
    found = []
    for channel in range(channels):
        own = samples[channel::channels]
        near = own[-SEAM_WINDOW:] + own[:SEAM_WINDOW]
        steps = [later - earlier for earlier, later in zip(near, near[1:])]
        usual = math.sqrt(sum(step * step for step in steps) / len(steps))
        found.append(abs(steps[SEAM_WINDOW - 1]) / max(usual, 1.0))
    return max(found)


def _decode(path):
    """16-bit samples, as a player hears them."""
    samples = array.array("h")
    samples.frombytes(_run(["oggdec", "-Q", "-R", "-b", "16", "-o", "-", path], None))
    return samples


def _encode(samples, channels, quality, target):
    data = samples.tobytes()
    # a WAVE file of 32-bit floats (format tag 3)
    layout = struct.pack("<4sIHHIIHH", b"fmt ", 16, 3, channels, RATE, RATE * channels * 4, channels * 4, 32)
    header = struct.pack("<4sI4s", b"RIFF", 36 + len(data), b"WAVE") + layout + struct.pack("<4sI", b"data", len(data))
    target.parent.mkdir(parents=True, exist_ok=True)
    # a fixed serial number: the same sound gives the same bytes
    _run(["oggenc", "-Q", "-s", "1", "-q", str(quality), "-o", target, "-"], header + data)


def _run(command, data):
    try:
        done = subprocess.run(command, input=data, capture_output=True, check=False)
    except FileNotFoundError:
        raise RenderError(f"{command[0]} is not installed (see tools/packages.txt)") from None
    messages = done.stderr.decode(errors="replace")
    # Csound leaves out a note that it cannot play and still reports success
    if done.returncode or "error:" in messages.lower():
        raise RenderError(f"{command[0]} failed:\n{messages[-2000:]}")
    return done.stdout
