"""Pictures of a screen: read from an X window dump, asked about their colours, written as PNG."""

import struct
import zlib
from collections import namedtuple

# A centre of gravity in pixels, and of how many pixels.
Spot = namedtuple("Spot", "x y pixels")


class Picture:
    """8-bit RGB, rows from top to bottom."""

    def __init__(self, width, height, rgb):
        self.width = width
        self.height = height
        self.rgb = rgb

    @classmethod
    def from_xwd(cls, dump):
        """Reads the dump of a true-colour screen; a pixel takes three bytes or four, whatever xwd chose."""
        fields = struct.unpack(">25I", dump[:100])
        header_size, version, width, height = fields[0], fields[1], fields[4], fields[5]
        big_endian, size, stride, colours = fields[7], fields[11] // 8, fields[12], fields[19]
        masks = fields[14:17]
        if version != 7 or size not in (3, 4) or masks != (0xFF0000, 0xFF00, 0xFF):
            raise ValueError(f"not a true-colour window dump: version {version}, {size} bytes a pixel, masks {masks}")
        start = header_size + 12 * colours
        pixels = b"".join(dump[start + y * stride : start + y * stride + size * width] for y in range(height))
        red, step = (size - 3, 1) if big_endian else (2, -1)
        rgb = bytearray(3 * width * height)
        for channel in range(3):
            rgb[channel::3] = pixels[red + step * channel :: size]
        return cls(width, height, bytes(rgb))

    def save(self, path):
        rows = b"".join(b"\0" + self.row(y) for y in range(self.height))

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 6)) + chunk(b"IEND", b"")
        )

    def row(self, y):
        return self.rgb[3 * self.width * y : 3 * self.width * (y + 1)]

    def column(self, x):
        stride = 3 * self.width
        return b"".join(self.rgb[start : start + 3] for start in range(3 * x, len(self.rgb), stride))

    def mean(self):
        """The mean red, green and blue, 0 to 255."""
        pixels = self.width * self.height
        return tuple(sum(self.rgb[channel::3]) / pixels for channel in range(3))

    def black_edges(self):
        """The names of the edges whose outermost row or column is all black."""
        edges = {
            "top": self.row(0),
            "bottom": self.row(self.height - 1),
            "left": self.column(0),
            "right": self.column(self.width - 1),
        }
        return [name for name, pixels in edges.items() if not any(pixels)]

    def changed_pixels(self, other):
        """How many pixels differ between two pictures of one size."""
        mine, theirs = memoryview(self.rgb), memoryview(other.rgb)
        stride = 3 * self.width
        changed = 0
        for start in range(0, len(mine), stride):
            row, other_row = mine[start : start + stride], theirs[start : start + stride]
            if row != other_row:
                changed += sum(row[i : i + 3] != other_row[i : i + 3] for i in range(0, stride, 3))
        return changed

    def mean_difference(self, other):
        """How far two pictures of one size are apart on average, in steps of a colour of 255; looks at every 16th pixel."""
        mine, theirs = (b"".join(p.rgb[c::48] for c in range(3)) for p in (self, other))
        return sum(abs(a - b) for a, b in zip(mine, theirs)) / len(mine)

    def crop(self, left, top, width, height):
        rows = (self.row(y)[3 * left : 3 * (left + width)] for y in range(top, top + height))
        return Picture(width, height, b"".join(rows))

    def find_all(self, lowest, highest):
        """All pixels between two colours, as their centre of gravity; None when there are none."""
        found = self._pixels_between(lowest, highest)
        if not found:
            return None
        return Spot(sum(x for _, x in found) / len(found), sum(y for y, _ in found) / len(found), len(found))

    def _pixels_between(self, lowest, highest):
        """The pixels (y, x), sought in one pass over each channel."""
        masks = [
            int.from_bytes(self.rgb[channel::3].translate(bytes(low <= value <= high for value in range(256))), "big")
            for channel, (low, high) in enumerate(zip(lowest, highest))
        ]
        both = (masks[0] & masks[1] & masks[2]).to_bytes(self.width * self.height, "big")
        return [divmod(i, self.width) for i, value in enumerate(both) if value]

    def find_cluster(self, lowest, highest, reach):
        """The pixel with the most pixels between two colours within `reach` pixels of it, as their centre of gravity;
        None when there are none."""
        found = self._pixels_between(lowest, highest)
        clusters = (
            [(y, x) for y, x in found if abs(y - centre_y) <= reach and abs(x - centre_x) <= reach]
            for centre_y, centre_x in found
        )
        best = max(clusters, key=len, default=None)
        if not best:
            return None
        return Spot(sum(x for _, x in best) / len(best), sum(y for y, _ in best) / len(best), len(best))
