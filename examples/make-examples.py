#!/usr/bin/env python3
"""Makes the sample meshes beside this script: bracket.stl, gear.stl and nameplate.stl.

Every mesh is a closed surface whose triangles are counter-clockwise seen from outside. Coordinates are rounded
to four decimals, so that every machine writes the same bytes.
"""

import math
import struct
from pathlib import Path

FOLDER = Path(__file__).resolve().parent
DECIMALS = 4


# --- points and triangles ------------------------------------------------------------------------------


def point(x, y, z):
    return tuple(round(value, DECIMALS) + 0.0 for value in (x, y, z))


def quad(a, b, c, d):
    return [(a, b, c), (a, c, d)]


def normal(triangle):
    a, b, c = triangle
    u = [b[i] - a[i] for i in range(3)]
    v = [c[i] - a[i] for i in range(3)]
    cross = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
    length = math.sqrt(sum(value * value for value in cross))
    return tuple(round(value / length, 6) + 0.0 for value in cross)


def wall(outline, low, high):
    """The side of a prism over a counter-clockwise outline."""
    triangles = []
    for (x0, y0), (x1, y1) in zip(outline, outline[1:] + outline[:1]):
        triangles += quad(point(x0, y0, low), point(x1, y1, low), point(x1, y1, high), point(x0, y0, high))
    return triangles


def flipped(triangles):
    return [(a, c, b) for a, b, c in triangles]


# --- the meshes ----------------------------------------------------------------------------------------


def bracket():
    """An angle bracket, drawn in inches and away from the origin."""
    left, bottom, width, height, thickness, fillet = 1.25, -0.5, 4.0, 2.5, 0.25, 0.5
    centre = (left + thickness + fillet, bottom + thickness + fillet)
    outline = [(left, bottom), (left + width, bottom), (left + width, bottom + thickness)]
    for step in range(13):
        angle = math.radians(270 - 90 * step / 12)
        outline.append((centre[0] + fillet * math.cos(angle), centre[1] + fillet * math.sin(angle)))
    outline += [(left + thickness, bottom + height), (left, bottom + height)]

    def end(z):
        # Every point of the outline is visible from the outer corner, so a fan from there covers the shape.
        ring = [point(x, y, z) for x, y in outline]
        return [(ring[0], ring[i], ring[i + 1]) for i in range(1, len(ring) - 1)]

    low, high = 0.75, 2.25
    return flipped(end(low)) + end(high) + wall(outline, low, high)


def gear():
    """A spur gear with twenty teeth around the Z axis, 12 thick, its middle plane at zero."""
    teeth, bore, root, tip = 20, 10.0, 40.0, 48.0
    outer, inner = [], []
    for tooth in range(teeth):
        for share, radius in ((0.00, root), (0.40, root), (0.55, tip), (0.85, tip)):
            angle = 2 * math.pi * (tooth + share) / teeth
            outer.append((radius * math.cos(angle), radius * math.sin(angle)))
            inner.append((bore * math.cos(angle), bore * math.sin(angle)))

    def face(z):
        triangles = []
        for i in range(len(outer)):
            j = (i + 1) % len(outer)
            triangles += quad(point(*inner[i], z), point(*outer[i], z), point(*outer[j], z), point(*inner[j], z))
        return triangles

    low, high = -6.0, 6.0
    return flipped(face(low)) + face(high) + wall(outer, low, high) + flipped(wall(inner, low, high))


LETTERS = (
    ".... .... .....",
    ".### .### .#...",
    ".#.. ..#. .#...",
    ".### ..#. .#...",
    "...# ..#. .#...",
    ".### ..#. .###.",
    ".... .... .....",
)


def nameplate():
    """A plate of square cells, each three millimetres wide, with three raised letters."""
    cell, plate, letter = 3.0, 2.0, 4.0
    rows = [row.replace(" ", "") for row in LETTERS]
    width = max(len(row) for row in rows)
    raised = {(x, len(rows) - 1 - y) for y, row in enumerate(rows) for x, mark in enumerate(row) if mark == "#"}

    def square(x, y, z):
        return quad(*(point((x + i) * cell, (y + j) * cell, z) for i, j in ((0, 0), (1, 0), (1, 1), (0, 1))))

    def side(x0, y0, x1, y1, low, high):
        return wall([(x0 * cell, y0 * cell), (x1 * cell, y1 * cell)], low, high)[:2]

    triangles = []
    for y in range(len(rows)):
        for x in range(width):
            triangles += square(x, y, letter if (x, y) in raised else plate)
            triangles += flipped(square(x, y, 0.0))
            edges = {
                (x, y - 1): (x, y, x + 1, y),
                (x + 1, y): (x + 1, y, x + 1, y + 1),
                (x, y + 1): (x + 1, y + 1, x, y + 1),
                (x - 1, y): (x, y + 1, x, y),
            }
            for (i, j), edge in edges.items():
                if not (0 <= i < width and 0 <= j < len(rows)):
                    triangles += side(*edge, 0.0, plate)
                elif (x, y) in raised and (i, j) not in raised:
                    triangles += side(*edge, plate, letter)
    return triangles


# --- checks --------------------------------------------------------------------------------------------


def check_closed(name, triangles):
    """Every edge must occur exactly once in each direction, and the enclosed volume must be positive."""
    edges = set()
    for triangle in triangles:
        for edge in zip(triangle, triangle[1:] + triangle[:1]):
            assert edge not in edges, f"{name}: the edge {edge} occurs twice"
            edges.add(edge)
    for start, end in edges:
        assert (end, start) in edges, f"{name}: the surface is open at {start} {end}"
    volume = sum(
        a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0])
        for a, b, c in triangles
    )
    assert volume > 0, f"{name}: the surface is inside out"


def check_kind(name, data, binary):
    """Meshvane takes a file as binary if one of the bytes 84 to 211 is above 127."""
    assert (max(data[84:212]) > 127) == binary, f"{name}: would be read as the other kind"
    assert not binary or len(data) >= 284, f"{name}: a binary file needs four facets"


# --- files ---------------------------------------------------------------------------------------------


def binary_stl(label, triangles):
    data = label.encode("ascii").ljust(80, b" ") + struct.pack("<I", len(triangles))
    for triangle in triangles:
        numbers = [value for corner in (normal(triangle), *triangle) for value in corner]
        data += struct.pack("<12f", *numbers) + b"\0\0"
    return data


def ascii_stl(label, triangles):
    def numbers(values):
        return " ".join(f"{value:g}" for value in values)

    lines = [f"solid {label}"]
    for triangle in triangles:
        lines += [f"  facet normal {numbers(normal(triangle))}", "    outer loop"]
        lines += [f"      vertex {numbers(corner)}" for corner in triangle]
        lines += ["    endloop", "  endfacet"]
    lines.append(f"endsolid {label}")
    return ("\n".join(lines) + "\n").encode("ascii")


def write(name, label, triangles, binary):
    data = (binary_stl if binary else ascii_stl)(label, triangles)
    check_closed(name, triangles)
    check_kind(name, data, binary)
    (FOLDER / name).write_bytes(data)
    kind = "binary" if binary else "ASCII"
    print(f"{name}: {len(triangles)} facets, {kind}, {len(data)} bytes")


def main():
    write("bracket.stl", "angle bracket, in inches", bracket(), binary=True)
    write("gear.stl", "spur gear with twenty teeth", gear(), binary=True)
    write("nameplate.stl", "nameplate", nameplate(), binary=False)


if __name__ == "__main__":
    main()
