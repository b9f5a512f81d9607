#!/usr/bin/env python3
"""Writes a valve cap as a scanner might leave it, with holes of several kinds: broken-cap.py BINARY.stl

The whole cap is a turned body, closed and manifold: a flange, a neck, and a dome with a knob. What is missing, and why a tool
should mind: the flat bottom (96 edges), a patch on the dome where the scanner saw a reflection, a bay behind the neck, three
single triangles, and a crack along the flange where one seam was moved by a tenth of a millimetre.
"""
import math
import struct
import sys

STEPS = 96  # of a full turn
# Radius and height in millimetres, from the middle of the bottom to the top of the knob.
FLANGE = [(40, 0), (42, 0.6), (42.6, 2), (42.6, 6), (42, 7.4), (40, 8)]
NECK = [(30, 8), (27.5, 9), (26.5, 11), (26.5, 15), (26.5, 20)]
DOME = [(26.5 * math.cos(a), 20 + 16 * math.sin(a)) for a in [math.pi / 2 * i / 16 for i in range(1, 13)]]
KNOB = [(9, 35.4), (8, 37), (8, 41), (7, 43), (4, 44)]
PROFILE = FLANGE + NECK + DOME + KNOB


def at(ring, step):
    radius, height = PROFILE[ring]
    angle = 2 * math.pi * (step % STEPS) / STEPS
    return (radius * math.cos(angle), radius * math.sin(angle), height)


def whole():
    """Triangles by ring and step; two each, but at the top one. The bottom is left open."""
    for ring in range(len(PROFILE) - 1):
        for step in range(STEPS):
            a, b = at(ring, step), at(ring, step + 1)
            c, d = at(ring + 1, step + 1), at(ring + 1, step)
            yield ring, step, 0, (a, b, c)
            yield ring, step, 1, (a, c, d)
    top = (0, 0, PROFILE[-1][1])
    last = len(PROFILE) - 1
    for step in range(STEPS):
        yield last, step, 0, (at(last, step), at(last, step + 1), top)


def is_missing(ring, step, half):
    on_dome = 14 <= ring <= 18 and 20 <= step <= 27 and (ring - 16) ** 2 * 4 + (step - 23.5) ** 2 <= 18
    behind_neck = 7 <= ring <= 9 and 60 <= step <= 62
    single = (ring, step, half) in [(2, 5, 0), (12, 80, 1), (24, 40, 0)]
    return on_dome or behind_neck or single


def moved(ring, step, half, corners):
    """The seam at step 48 of the flange, on one side of it only: a crack between two edges, open in the middle."""
    seam = at(3, 48)
    if step == 48 and ring in (2, 3):
        return tuple((x, y - 0.1, z) if (x, y, z) == seam else (x, y, z) for x, y, z in corners)
    return corners


triangles = [moved(r, s, h, t) for r, s, h, t in whole() if not is_missing(r, s, h)]
with open(sys.argv[1], "wb") as binary:
    binary.write(b"KM Mesh sample".ljust(80) + struct.pack("<I", len(triangles)))
    for a, b, c in triangles:
        u, v = [[q - p for p, q in zip(a, other)] for other in (b, c)]
        n = [u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]]
        length = math.sqrt(sum(x * x for x in n)) or 1
        binary.write(struct.pack("<12fH", *[x / length for x in n], *a, *b, *c, 0))
