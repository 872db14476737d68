"""Reads the sources of the font: art/font/face.txt and the *.glyphs beside it. art/font/README.md describes them."""

import re
from dataclasses import dataclass, field
from pathlib import Path

FIRST_CODE, LAST_CODE = 32, 126
SOURCE_FOLDER = Path(__file__).resolve().parents[2] / "art" / "font"
# Far more than a glyph can be; keeps a slip of the finger from becoming a huge outline.
LARGEST = 400.0

POINT = re.compile(r"(?P<x>[-+.\d]+),(?P<guide>[a-z]*)(?P<y>[-+.\d]*)(?P<round>~(?P<rx>[.\d]*)(?:x(?P<ry>[.\d]+))?)?")


class SourceError(Exception):
    """What is wrong, with FILE:LINE in front."""


@dataclass
class Corner:
    """A point of a stroke; the radii say where its rounding begins, along level and along upright edges."""

    x: float
    y: float
    rx: float = 0.0
    ry: float = 0.0


@dataclass
class Stroke:
    corners: list
    closed: bool = False
    pen: float = 1.0


@dataclass
class Glyph:
    """Bearings are the space left and right of the ink; with a width of its own the ink stands in its middle."""

    character: str
    place: str = ""  # FILE:LINE
    left: float = 0.0
    right: float = 0.0
    width: float = None
    strokes: list = field(default_factory=list)


@dataclass
class Face:
    pen: tuple = None
    soften: float = None
    bend: float = None
    corner: tuple = None
    ascender: float = None
    descender: float = None
    guides: dict = field(default_factory=dict)
    bearings: dict = field(default_factory=dict)


def number(text):
    try:
        value = float(text)
    except ValueError:
        raise SourceError(f"'{text}' is no number") from None
    if not abs(value) <= LARGEST:
        raise SourceError(f"{text} is beyond {LARGEST:g}")
    return value


def lines_of(path):
    """(number, words) of every line that says something; '#' alone or before a blank opens a comment line."""
    try:
        text = path.read_text(encoding="ascii")
    except (OSError, UnicodeDecodeError) as error:
        raise SourceError(f"{path}: {error}") from None
    for at, line in enumerate(text.splitlines(), 1):
        words = line.split()
        if words and words[0] != "#":
            yield at, words


def read_face(path):
    face = Face()
    for at, (key, *values) in lines_of(path):
        try:
            if key in ("guide", "bearing") and len(values) == 2:
                (face.guides if key == "guide" else face.bearings)[values[0]] = number(values[1])
            elif key in ("pen", "corner") and len(values) == 2:
                setattr(face, key, (number(values[0]), number(values[1])))
            elif key in ("soften", "bend", "ascender", "descender") and len(values) == 1:
                setattr(face, key, number(values[0]))
            else:
                raise SourceError(f"'{' '.join([key, *values])}' is no line of a face")
        except SourceError as error:
            raise SourceError(f"{path}:{at}: {error}") from None
    missing = [key for key in ("pen", "corner", "soften", "bend", "ascender", "descender") if getattr(face, key) is None]
    if missing:
        raise SourceError(f"{path}: lacks {', '.join(missing)}")
    if min(face.pen) <= 0:
        raise SourceError(f"{path}: the pen must be larger than 0")
    return face


def read_point(word, face):
    match = POINT.fullmatch(word)
    if not match:
        raise SourceError(f"'{word}' is no point (x,y or x,guide+y, then ~ or ~R or ~RXxRY)")
    guide = match["guide"]
    if guide and guide not in face.guides:
        raise SourceError(f"'{guide}' is no guide of face.txt")
    y = face.guides.get(guide, 0.0) + (number(match["y"]) if match["y"] or not guide else 0.0)
    corner = Corner(number(match["x"]), y)
    if match["round"]:
        corner.rx = number(match["rx"]) if match["rx"] else face.corner[0]
        corner.ry = number(match["ry"]) if match["ry"] else (corner.rx if match["rx"] else face.corner[1])
    return corner


def read_stroke(kind, words, face):
    pen = 1.0
    if len(words) > 2 and words[-2] == "pen":
        pen = number(words[-1])
        words = words[:-2]
        if not 0 < pen <= 4:
            raise SourceError(f"pen {pen:g} is not between 0 and 4")
    corners = [read_point(word, face) for word in words]
    fewest = {"dot": 1, "line": 2, "loop": 3}[kind]
    if len(corners) < fewest or (kind == "dot" and len(corners) > 1):
        raise SourceError(f"a {kind} takes {fewest}{' or more' if kind != 'dot' else ''} points, not {len(corners)}")
    return Stroke(corners, kind == "loop", pen)


def read_glyph(words, face):
    def bearing(word):
        return face.bearings[word] if word in face.bearings else number(word)

    if len(words) != 3:
        raise SourceError("a glyph takes its character and two bearings, or 'width' and a number")
    character = " " if words[0] == "space" else words[0]
    if len(character) != 1 or not FIRST_CODE <= ord(character) <= LAST_CODE:
        raise SourceError(f"'{words[0]}' is no character from space to ~")
    if words[1] == "width":
        return Glyph(character, width=number(words[2]))
    return Glyph(character, left=bearing(words[1]), right=bearing(words[2]))


def read_glyph_file(path, face, glyphs):
    current = None
    for at, (kind, *words) in lines_of(path):
        try:
            if kind == "glyph":
                current = read_glyph(words, face)
                current.place = f"{path}:{at}"
                if current.character in glyphs:
                    raise SourceError(f"'{current.character}' is drawn twice")
                glyphs[current.character] = current
            elif kind not in ("line", "loop", "dot"):
                raise SourceError(f"'{kind}' is none of glyph, line, loop, dot")
            elif current is None:
                raise SourceError("a stroke before the first glyph")
            else:
                current.strokes.append(read_stroke(kind, words, face))
        except SourceError as error:
            raise SourceError(f"{path}:{at}: {error}") from None


def read_sources(folder=SOURCE_FOLDER):
    """The face and its glyphs by character; SourceError when anything is wrong or a character is missing."""
    folder = Path(folder)
    face = read_face(folder / "face.txt")
    glyphs = {}
    for path in sorted(folder.glob("*.glyphs")):
        read_glyph_file(path, face, glyphs)
    missing = [chr(code) for code in range(FIRST_CODE, LAST_CODE + 1) if chr(code) not in glyphs]
    if missing:
        raise SourceError(f"{folder}: no glyph for {' '.join(missing)}")
    for glyph in glyphs.values():
        if not glyph.strokes and glyph.width is None:
            raise SourceError(f"{glyph.place}: '{glyph.character}' has neither strokes nor a width")
    return face, glyphs
