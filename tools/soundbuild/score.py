"""What a source becomes before Csound reads it: a list of notes and the settings of the room."""

from dataclasses import dataclass, field


@dataclass
class Note:
    start: float  # seconds
    length: float  # seconds
    instrument: str
    level: float  # dB
    pitch: float  # Hz
    pitch_to: float  # Hz, reached after `glide`
    pan: float  # -1 left to 1 right
    room: float  # 0 dry to 1
    colour: float  # 0 dark to 1 bright
    glide: float  # seconds


@dataclass
class Score:
    notes: list = field(default_factory=list)
    length: float = 0.0  # seconds, without what rings on
    level: float = 0.0  # dB, of the whole
    room: float = 0.3  # size of the room, 0 to 1
    drive: float = 0.0  # dB into the soft ceiling
    cut: float = None  # seconds; what would ring on longer is faded out

    def csound(self, lead, tail):
        """The text of a Csound score: everything `lead` seconds later, rendered until `tail` seconds after the end."""
        lines = [f"i 999 0 {lead + self.length + tail:.6f} {self.level:g} {self.room:g} {self.drive:g}"]
        for n in sorted(self.notes, key=lambda n: (n.start, n.instrument, n.pitch)):
            lines.append(
                f'i "{n.instrument}" {max(0.0, n.start + lead):.6f} {n.length:.6f} {n.level:.2f} '
                f"{n.pitch:.4f} {n.pitch_to:.4f} {n.pan:.3f} {n.room:.3f} {n.colour:.3f} {n.glide:.4f}"
            )
        return "\n".join(lines) + "\ne\n"
