"""Pictures of a screen: read from an X window dump, asked about their colours, written as PNG."""

import struct
import zlib
from collections import namedtuple


class Spot(namedtuple("Spot", "x y pixels")):
    """The centre of gravity of some pixels, and how many they are."""

    @classmethod
    def of(cls, places):
        count = len(places)
        return cls(sum(x for _, x in places) / max(count, 1), sum(y for y, _ in places) / max(count, 1), count)


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
        stride = 3 * self.width
        rows = b"".join(b"\0" + self.rgb[start : start + stride] for start in range(0, len(self.rgb), stride))

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 6)) + chunk(b"IEND", b"")
        )

    def mean(self):
        """The mean red, green and blue, 0 to 255."""
        pixels = self.width * self.height
        return tuple(sum(self.rgb[channel::3]) / pixels for channel in range(3))

    def is_black(self):
        return not any(self.rgb)

    def edges(self):
        """The outermost rows and columns: top, bottom, left, right."""
        right, bottom = self.width - 1, self.height - 1
        rows = [self.crop(0, y, self.width, 1) for y in (0, bottom)]
        return rows + [self.crop(x, 0, 1, self.height) for x in (0, right)]

    def mean_difference(self, other):
        """How far two pictures of one size are apart on average, in steps of a colour of 255; looks at every 16th pixel."""
        mine, theirs = (b"".join(p.rgb[c::48] for c in range(3)) for p in (self, other))
        return sum(abs(a - b) for a, b in zip(mine, theirs)) / len(mine)

    def crop(self, left, top, width, height):
        starts = range(3 * (self.width * top + left), 3 * self.width * (top + height), 3 * self.width)
        return Picture(width, height, b"".join(self.rgb[start : start + 3 * width] for start in starts))

    def crop_shares(self, *shares):
        """As crop, in shares of the width and height."""
        size = 2 * (self.width, self.height)
        return self.crop(*(int(share * pixels) for share, pixels in zip(shares, size)))

    def find_all(self, lowest, highest):
        """All pixels between two colours."""
        return Spot.of(self._places_between(lowest, highest))

    def _places_between(self, lowest, highest):
        """As (y, x), sought in one pass over each channel."""
        masks = [
            int.from_bytes(self.rgb[channel::3].translate(bytes(low <= value <= high for value in range(256))), "big")
            for channel, (low, high) in enumerate(zip(lowest, highest))
        ]
        both = (masks[0] & masks[1] & masks[2]).to_bytes(self.width * self.height, "big")
        return [divmod(i, self.width) for i, value in enumerate(both) if value]

    def find_cluster(self, lowest, highest, reach):
        """The pixel with the most pixels between two colours within `reach` pixels of it, and those."""
        found = self._places_between(lowest, highest)
        centres = found[:: 1 + len(found) // 300]  # enough to be near the best
        clusters = (
            [(y, x) for y, x in found if abs(y - centre_y) <= reach and abs(x - centre_x) <= reach]
            for centre_y, centre_x in centres
        )
        return Spot.of(max(clusters, key=len, default=[]))
