#!/usr/bin/env python3
"""Turns a text STL into a binary one, a quarter of the size: to-binary.py TEXT.stl BINARY.stl"""
import struct
import sys

with open(sys.argv[1]) as text:
    words = [line.split() for line in text]
normals = [[float(x) for x in line[2:]] for line in words if line[:1] == ["facet"]]
corners = [[float(x) for x in line[1:]] for line in words if line[:1] == ["vertex"]]

with open(sys.argv[2], "wb") as binary:
    binary.write(b"KM Mesh sample".ljust(80) + struct.pack("<I", len(normals)))
    for i, normal in enumerate(normals):
        binary.write(struct.pack("<12fH", *normal, *corners[3 * i], *corners[3 * i + 1], *corners[3 * i + 2], 0))
