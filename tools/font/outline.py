"""Thickens the strokes of a glyph into one outline without overlaps, made of straight lines and quadratic curves.

An outline is a list of contours; a contour is a list of segments ((x, y) end) or ((x, y) control, (x, y) end), in units
of the sources (1/96 em), y upwards. A contour begins where its last segment ends. Filled contours run clockwise, holes
counter-clockwise, as TrueType wants them.
"""

import math

from shapely.affinity import scale, translate
from shapely.geometry import LineString, Point, Polygon
from shapely.geometry.polygon import orient
from shapely.ops import unary_union

from font.source import SourceError

ARC_STEPS = 32  # segments of a quarter circle while thickening
CURVE_STEPS = 32  # segments of one rounded corner of a centre line
STRAIGHT = 1.6  # edges longer than this are straight lines, shorter ones samples of a curve
TOLERANCE = 0.02  # how far a fitted curve may leave the samples: a third of a font unit
SHARP = math.radians(25)  # a turn larger than this at one sample is a real corner


def rounded(corners, closed, bend):
    """Points of the centre line with its corners rounded by cubic curves of handle length `bend`."""
    count = len(corners)
    edges = []
    for i in range(count if closed else count - 1):
        a, b = corners[i], corners[(i + 1) % count]
        length = math.hypot(b.x - a.x, b.y - a.y)
        ux, uy = ((b.x - a.x) / length, (b.y - a.y) / length) if length else (0.0, 0.0)
        ends = [c.rx * abs(ux) + c.ry * abs(uy) for c in (a, b)]
        if not closed and i == 0:
            ends[0] = 0.0
        if not closed and i == count - 2:
            ends[1] = 0.0
        shrink = min(1.0, length / sum(ends)) if sum(ends) else 1.0
        edges.append((ux, uy, ends[0] * shrink, ends[1] * shrink))

    points = []
    for i, corner in enumerate(corners):
        if (not closed and i in (0, count - 1)) or not (corner.rx or corner.ry):
            points.append((corner.x, corner.y))
            continue
        (inx, iny, _, before), (outx, outy, after, _) = edges[i - 1], edges[i % len(edges)]
        p0 = (corner.x - inx * before, corner.y - iny * before)
        p3 = (corner.x + outx * after, corner.y + outy * after)
        p1 = (p0[0] + inx * before * bend, p0[1] + iny * before * bend)
        p2 = (p3[0] - outx * after * bend, p3[1] - outy * after * bend)
        for step in range(CURVE_STEPS + 1):
            t = step / CURVE_STEPS
            s = 1.0 - t
            weights = (s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t)
            points.append(tuple(sum(w * p[axis] for w, p in zip(weights, (p0, p1, p2, p3))) for axis in (0, 1)))
    return points


def thickened(strokes, face):
    """The area that the pen covers, inner corners softened."""
    pen_width, pen_height = face.pen
    squash = pen_width / pen_height  # the pen is a circle while thickening
    areas = []
    for stroke in strokes:
        points = [(x, y * squash) for x, y in rounded(stroke.corners, stroke.closed, face.bend)]
        if stroke.closed:
            points.append(points[0])
        radius = stroke.pen * pen_width / 2
        if len(points) == 1:
            areas.append(scale(Point(points[0]).buffer(radius, resolution=ARC_STEPS), 1.0, squash))  # a round dot
        else:
            areas.append(LineString(points).buffer(radius, resolution=ARC_STEPS))
    area = unary_union(areas)
    area = area.buffer(face.soften, resolution=ARC_STEPS).buffer(-face.soften, resolution=ARC_STEPS)
    return scale(area, 1.0, 1.0 / squash, origin=(0, 0))


def turn(a, b, c):
    """Angle from edge ab to edge bc, positive to the left."""
    first = (b[0] - a[0], b[1] - a[1])
    second = (c[0] - b[0], c[1] - b[1])
    return math.atan2(first[0] * second[1] - first[1] * second[0], first[0] * second[0] + first[1] * second[1])


def tangent(points, i, towards):
    """Direction of the sampled curve at its end i, corrected by half the turn of the edge next to it."""
    a, b = points[i], points[i + towards]
    angle = math.atan2(b[1] - a[1], b[0] - a[0])
    if len(points) > 2:
        c = points[i + 2 * towards]
        angle -= turn(a, b, c) * math.dist(a, b) / (math.dist(a, b) + math.dist(b, c))
    return math.cos(angle), math.sin(angle)


def control_point(p0, d0, p1, d1):
    """Where the ray from p0 along d0 meets the ray from p1 along d1, or None."""
    cross = d0[0] * d1[1] - d0[1] * d1[0]
    if abs(cross) < 1e-6:
        return None
    dx, dy = p1[0] - p0[0], p1[1] - p0[1]
    along0 = (dx * d1[1] - dy * d1[0]) / cross
    along1 = (dx * d0[1] - dy * d0[0]) / cross
    if along0 <= 0 or along1 <= 0:
        return None
    return p0[0] + along0 * d0[0], p0[1] + along0 * d0[1]


def farthest_from(points, curve):
    """Largest distance of the samples between the ends from the curve."""
    (p0, control, p1) = curve
    path = []
    for step in range(33):
        t = step / 32
        path.append(tuple((1 - t) ** 2 * p0[k] + 2 * t * (1 - t) * control[k] + t * t * p1[k] for k in (0, 1)))
    line = LineString(path)
    return max((line.distance(Point(p)) for p in points[1:-1]), default=0.0)


def fit(points, start, end):
    """Segments through a sampled curve that leaves along `start`; `end` points back into it from its last point."""
    if len(points) == 2:
        return [(points[1],)]
    control = control_point(points[0], start, points[-1], end)
    if control and farthest_from(points, (points[0], control, points[-1])) <= TOLERANCE:
        return [(control, points[-1])]
    middle = len(points) // 2
    before, after = points[middle - 1], points[middle + 1]
    length = math.dist(before, after)
    along = ((after[0] - before[0]) / length, (after[1] - before[1]) / length)
    return fit(points[: middle + 1], start, (-along[0], -along[1])) + fit(points[middle:], along, end)


def is_extreme(a, b, c):
    return (b[0] - a[0]) * (c[0] - b[0]) < 0 or (b[1] - a[1]) * (c[1] - b[1]) < 0


def curve_segments(points):
    """A run of samples, cut at extremes and where the bend changes sides, each piece fitted."""
    cuts = [0]
    for i in range(1, len(points) - 1):
        a, b, c = points[i - 1 : i + 2]
        bends = i > 1 and turn(points[i - 2], a, b) * turn(a, b, c) < 0
        if is_extreme(a, b, c) or bends:
            cuts.append(i)
    cuts.append(len(points) - 1)
    segments = []
    for first, last in zip(cuts, cuts[1:]):
        piece = points[first : last + 1]
        segments += fit(piece, tangent(piece, 0, 1), tangent(piece, len(piece) - 1, -1))
    return segments


def contour_of(ring):
    """One closed ring of samples as lines and curves."""
    points = []
    for p in list(ring.coords)[:-1]:
        if not points or math.dist(points[-1], p) > 0.02:
            points.append(p)
    count = len(points)
    straight = [math.dist(points[i], points[(i + 1) % count]) > STRAIGHT for i in range(count)]

    def is_node(i):
        return straight[i] or straight[i - 1] or abs(turn(points[i - 1], points[i], points[(i + 1) % count])) > SHARP

    first = next((i for i in range(count) if is_node(i)), None)
    if first is None:
        first = min(range(count), key=lambda i: points[i])
    segments, run = [], [points[first]]
    for step in range(1, count + 1):
        i = (first + step) % count
        if straight[i - 1]:
            segments.append((points[i],))
            run = [points[i]]
            continue
        run.append(points[i])
        if is_node(i) or step == count:
            segments += curve_segments(run)
            run = [points[i]]
    return segments


def outline_of(glyph, face):
    """(advance, contours) of a glyph. Advances are whole: the game's text steps by whole pixels at 96 pixels height."""
    if not glyph.strokes:
        return round(glyph.width), []
    area = thickened(glyph.strokes, face)
    if area.is_empty:
        raise SourceError(f"{glyph.place}: '{glyph.character}' draws nothing")
    left, _, right, _ = area.bounds
    if glyph.width is not None:
        advance = round(glyph.width)
        area = translate(area, (advance - (right - left)) / 2 - left)
    else:
        advance = round(glyph.left + (right - left) + glyph.right)
        spare = advance - (glyph.left + (right - left) + glyph.right)
        area = translate(area, glyph.left + spare / 2 - left)
    contours = []
    polygons = [area] if isinstance(area, Polygon) else list(area.geoms)
    for polygon in sorted(polygons, key=lambda p: p.bounds):
        polygon = orient(polygon, sign=-1.0)
        contours += [contour_of(ring) for ring in (polygon.exterior, *polygon.interiors)]
    return advance, contours
