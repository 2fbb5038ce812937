#!/usr/bin/env python3
"""Draws VHS-reference.png: a front view of a tape cassette in light strokes on a
dark, slightly noisy ground, like a photograph of a chalk drawing.

The dialog icon keeps only the pixels whose brightness reaches 0.75, so the picture
deliberately carries soft stroke edges, grey tape inside the window and grey writing
on the label: all of that must vanish and leave clean white strokes.

Standard library only; the output is the same byte for byte on every run.
Usage: make-vhs-reference.py [output.png]   (default: VHS-reference.png beside this script)
"""

import math
import os
import struct
import sys
import zlib

SIZE = 128


def noise(x, y):
    """Repeatable value in [0, 1) from the pixel position (no random module state)."""
    h = (x * 374761393 + y * 668265263) & 0xFFFFFFFF
    h = ((h ^ (h >> 13)) * 1274126177) & 0xFFFFFFFF
    return ((h ^ (h >> 16)) & 0xFFFF) / 65536.0


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = ((px - ax) * dx + (py - ay) * dy) / float(dx * dx + dy * dy)
    t = max(0.0, min(1.0, t))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


class Segment:
    def __init__(self, ax, ay, bx, by, width):
        self.a, self.b, self.width = (ax, ay), (bx, by), width

    def distance(self, x, y):
        return segment_distance(x, y, self.a[0], self.a[1], self.b[0], self.b[1])


class Ring:
    def __init__(self, cx, cy, radius, width):
        self.cx, self.cy, self.radius, self.width = cx, cy, radius, width

    def distance(self, x, y):
        return abs(math.hypot(x - self.cx, y - self.cy) - self.radius)


def rectangle(left, top, right, bottom, width):
    return [
        Segment(left, top, right, top, width),
        Segment(right, top, right, bottom, width),
        Segment(right, bottom, left, bottom, width),
        Segment(left, bottom, left, top, width),
    ]


def rounded_rectangle(left, top, right, bottom, radius, width):
    shapes = [
        Segment(left + radius, top, right - radius, top, width),
        Segment(right, top + radius, right, bottom - radius, width),
        Segment(right - radius, bottom, left + radius, bottom, width),
        Segment(left, bottom - radius, left, top + radius, width),
    ]
    # Corner arcs as short chords: fine enough at this size.
    for cx, cy, start in (
        (right - radius, top + radius, -90),
        (right - radius, bottom - radius, 0),
        (left + radius, bottom - radius, 90),
        (left + radius, top + radius, 180),
    ):
        for step in range(6):
            a0 = math.radians(start + step * 15)
            a1 = math.radians(start + (step + 1) * 15)
            shapes.append(
                Segment(
                    cx + radius * math.cos(a0),
                    cy + radius * math.sin(a0),
                    cx + radius * math.cos(a1),
                    cy + radius * math.sin(a1),
                    width,
                )
            )
    return shapes


def reel(cx, cy):
    shapes = [Ring(cx, cy, 11, 2.0), Ring(cx, cy, 4, 2.0)]
    for k in range(6):
        angle = math.radians(k * 60 + 15)
        shapes.append(
            Segment(
                cx + 4 * math.cos(angle),
                cy + 4 * math.sin(angle),
                cx + 7 * math.cos(angle),
                cy + 7 * math.sin(angle),
                1.6,
            )
        )
    return shapes


def light_strokes():
    # A VHS shell is about 1.8 times as wide as it is tall.
    shapes = rounded_rectangle(6, 32, 121, 96, 4, 3.0)  # shell
    shapes += rectangle(20, 38, 107, 51, 2.0)  # label
    shapes += rounded_rectangle(24, 58, 103, 88, 3, 2.0)  # window
    shapes += reel(43, 73) + reel(84, 73)
    shapes += [Segment(50, 93, 77, 93, 2.0)]  # grip along the bottom edge
    for cx, cy in ((12, 38), (115, 38), (12, 90), (115, 90)):  # screws
        shapes.append(Ring(cx, cy, 2, 1.6))
    return shapes


def grey_marks():
    """Mid-grey detail that the icon threshold drops."""
    marks = [Segment(26, 42 + 4 * k, 100 - 16 * k, 42 + 4 * k, 1.2) for k in range(3)]  # writing on the label
    marks += [Ring(43, 73, 9, 3.0), Ring(84, 73, 7, 2.0)]  # tape wound on the reels
    marks += [Segment(52, 83, 76, 83, 1.5)]  # tape between the reels
    return marks


def coverage(shapes, x, y):
    best = 0.0
    for shape in shapes:
        c = shape.width / 2.0 + 0.5 - shape.distance(x, y)
        if c > best:
            best = min(c, 1.0)
            if best >= 1.0:
                break
    return best


def render():
    strokes, marks = light_strokes(), grey_marks()
    rows = []
    for y in range(SIZE):
        row = bytearray()
        for x in range(SIZE):
            cx, cy = x + 0.5, y + 0.5
            # Dark ground with a soft vignette and grain.
            vignette = math.hypot(cx - 64, cy - 64) / 90.0
            ground = 0.16 - 0.08 * vignette + 0.05 * (noise(x, y) - 0.5)
            value = ground
            m = coverage(marks, cx, cy)
            value = value * (1 - m) + 0.45 * m
            s = coverage(strokes, cx, cy)
            light = 0.94 + 0.05 * (noise(y, x) - 0.5)
            value = value * (1 - s) + light * s
            value = max(0.0, min(1.0, value))
            # A faint cool tint, as a lamp-lit photograph would have.
            r = round(255 * value * 0.97)
            g = round(255 * value)
            b = round(255 * min(1.0, value * 1.03 + 0.02))
            row += bytes((r, g, b))
        rows.append(bytes(row))
    return rows


def png(rows, width, height):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    raw = b"".join(b"\x00" + row for row in rows)
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)  # 8-bit RGB
    return (
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", header)
        + chunk(b"IDAT", zlib.compress(raw, 9))
        + chunk(b"IEND", b"")
    )


def main():
    default = os.path.join(os.path.dirname(os.path.abspath(__file__)), "VHS-reference.png")
    target = sys.argv[1] if len(sys.argv) > 1 else default
    with open(target, "wb") as out:
        out.write(png(render(), SIZE, SIZE))


if __name__ == "__main__":
    main()
