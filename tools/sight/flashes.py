"""Flashing over a whole match: opposing changes of luminance, or of saturated red, over a tenth of the screen (WCAG 2.3.1)."""
import numpy as np

from sight import colour, films

EVERY = 3      # frames between two looks: what flickers faster than ten times a second may be missed
CHANGE = 0.1   # of relative luminance, of which the darker is below
DARK = 0.8
RED_CHANGE = 20  # of (R - G - B) x 320 in linear light, to or from a saturated red
SATURATED = 0.8  # share of red
AREA = 0.1     # of the screen
NEAR = 3       # pixels of a look: what was there before is no change, since the camera shakes and things move
TOGETHER = 3   # looks within which changes count as one
MOST = 3       # a second
SECOND = 60    # frames


class Watch:
    """Each pixel's last turning point, and which pixels went up or down lately."""

    def __init__(self, light, change, dark):
        self.change, self.dark = change, dark
        self.low = light.copy()
        self.high = light.copy()
        self.way = np.zeros(light.shape, dtype=int)  # of its last change; a fade on in the same way is none
        self.recent = {+1: [], -1: []}
        self.changes = []

    def look(self, frame, light):
        low, high = _most(self.low), -_most(-self.high)
        up = (light - low >= self.change) & (low < self.dark)
        down = (high - light >= self.change) & (light < self.dark)
        self.low = np.where(up | down, light, np.minimum(self.low, light))
        self.high = np.where(up | down, light, np.maximum(self.high, light))
        for way, moved in ((+1, up), (-1, down)):
            latest = self.recent[way]
            latest.append(moved & (self.way != way))
            self.way[moved] = way
            del latest[:-TOGETHER]
            if np.any(latest, axis=0).mean() >= AREA:
                self.changes.append(frame)
                latest.clear()


def _most(light):
    """The greatest value within NEAR pixels of each."""
    for axis in (0, 1):
        padded = np.pad(light, [(NEAR, NEAR) if axis == other else (0, 0) for other in (0, 1)], mode="edge")
        light = np.lib.stride_tricks.sliding_window_view(padded, 2 * NEAR + 1, axis=axis).max(axis=-1)
    return light


def _red(picture):
    """How red where it is a saturated red, else 0."""
    light = colour.linear(picture)
    red, rest = light[..., 0], light[..., 1] + light[..., 2]
    return np.where(red >= SATURATED * (red + rest), np.maximum(0, red - rest) * 320, 0)


def _most_a_second(changes):
    return max(((sum(frame - SECOND < other <= frame for other in changes), frame) for frame in changes), default=(0, 0))


def measure(course):
    """Prints what was seen and returns the lines that do not hold."""
    seen = films.film("--size", "160x90", "--coarse", "--every", EVERY, "--to", course.length - 1)
    frames = sorted(seen)
    faults = []
    for kind, measured, change, dark in (("of light", colour.luminance, CHANGE, DARK), ("of red", _red, RED_CHANGE, np.inf)):
        watch = Watch(measured(seen[frames[0]]), change, dark)
        for frame in frames[1:]:
            watch.look(frame, measured(seen[frame]))
        most, at = _most_a_second(watch.changes)
        print(f"flashing over {frames[-1]} frames: {len(watch.changes)} changes {kind} of a tenth of the screen, "
              f"at most {most} in a second (<= {MOST}), up to frame {at}")
        if most > MOST:
            faults.append(f"flashing: {most} changes {kind} in the second before frame {at}")
    return faults
