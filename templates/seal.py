"""Draws the seal that stands over the acknowledgement of form 3B: two rings with a star of eight rays, as a bitmap."""

import math
import struct

SIZE = 96  # pixels, a square
FINE = 4  # points of the drawing a pixel and side


def inked(x, y):
    """Whether a point is drawn on; the centre is 0, 0 and the edge of the square 1."""
    radius = math.hypot(x, y)
    if 0.90 <= radius <= 0.97 or 0.80 <= radius <= 0.82:
        return True
    angle = math.atan2(y, x) % (math.pi / 4)
    ray = min(angle, math.pi / 4 - angle) / (math.pi / 8)  # 0 on a ray, 1 between two
    return radius <= 0.68 - 0.42 * ray and radius >= 0.12


def shade(column, row):
    points = [
        ((column + (i + 0.5) / FINE) / SIZE * 2 - 1, (row + (j + 0.5) / FINE) / SIZE * 2 - 1)
        for i in range(FINE)
        for j in range(FINE)
    ]
    ink = sum(inked(x, y) for x, y in points) / len(points)
    return round(255 * (1 - 0.8 * ink))


def bitmap():
    rows = b"".join(bytes(shade(column, row) for column in range(SIZE)) for row in reversed(range(SIZE)))
    palette = b"".join(bytes((grey, grey, grey, 0)) for grey in range(256))
    offset = 14 + 40 + len(palette)
    head = b"BM" + struct.pack("<IHHI", offset + len(rows), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 8, 0, len(rows), 3780, 3780, 256, 0)
    return head + info + palette + rows


def write(path):
    path.write_bytes(bitmap())
    print("wrote", path)
