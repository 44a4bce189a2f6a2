"""Judges what a program wrote against the exact result."""

import re
from typing import NamedTuple

import numpy

SCALE = numpy.array([1.5, 2.0, 0.5])
OFFSET = numpy.array([1.0, 2.0, 3.0])
BINARY_FACET = numpy.dtype([("normal", "<f4", 3), ("corners", "<f4", (3, 3)), ("attribute", "<u2")])
ASCII_FACET = re.compile(
    rb"facet\s+normal\s+(\S+)\s+(\S+)\s+(\S+)\s+outer\s+loop"
    + 3 * rb"\s+vertex\s+(\S+)\s+(\S+)\s+(\S+)"
    + rb"\s+endloop\s+endfacet"
)
BLOCK = 16 * 1024 * 1024


class OutputIsWrong(Exception):
    pass


class Verdict(NamedTuple):
    surviving: float  # share of coordinates whose text, read as a 32-bit float, is as near to the exact value as any
    largest_error: float  # of a written coordinate, in the unit of the mesh
    normals: float  # share of facets whose normal is within a degree of that of the written corners


def read_binary_corners(path):
    return numpy.fromfile(path, BINARY_FACET, offset=84)["corners"].astype(numpy.float64)


def read_ascii_facets(path):
    """The normals and the corners, in double precision."""
    blocks = []
    rest = b""
    with open(path, "rb") as file:
        while block := file.read(BLOCK):
            head, mark, rest = (rest + block).rpartition(b"endfacet")
            rows = ASCII_FACET.findall(head + mark)
            if len(rows) != (head + mark).count(b"endfacet"):
                raise OutputIsWrong("writes a facet that is not ASCII STL")
            if rows:
                blocks.append(numpy.array(rows).astype(numpy.float64))
    if not blocks:
        raise OutputIsWrong("writes no facet of ASCII STL")
    numbers = numpy.concatenate(blocks).reshape(-1, 4, 3)
    return numbers[:, 0], numbers[:, 1:]


def as_written(exact, written):
    """The exact facets, each beginning with the corner that the output begins it with."""
    turned = numpy.stack([numpy.roll(exact, steps, axis=1) for steps in range(3)])
    best = numpy.abs(turned - written).max(axis=(2, 3)).argmin(axis=0)
    return turned[best, numpy.arange(len(exact))]


def share_of_right_normals(normals, corners):
    a, b, c = corners.transpose(1, 0, 2)
    own = numpy.cross(b - a, c - a)
    has_area = numpy.linalg.norm(own, axis=1) > 0
    own, normals = own[has_area], normals[has_area]
    lengths = numpy.linalg.norm(own, axis=1) * numpy.linalg.norm(normals, axis=1)
    return float(numpy.mean(numpy.einsum("ij,ij->i", own, normals) > numpy.cos(numpy.radians(1)) * lengths))


def exact_result(corners):
    scaled = corners * SCALE
    result = scaled + OFFSET
    # Scaling only adds a bit to the 24 of a coordinate; the sum is exact if nothing of it was lost.
    if not numpy.array_equal(result - OFFSET, scaled):
        raise ValueError("double precision is not enough for this mesh")
    return result


def judge(input_path, output_path):
    exact = exact_result(read_binary_corners(input_path))
    normals, written = read_ascii_facets(output_path)
    if len(written) != len(exact):
        raise OutputIsWrong(f"writes {len(written)} facets instead of {len(exact)}")
    exact = as_written(exact, written)
    largest_error = float(numpy.abs(written - exact).max())
    if not largest_error < 1e-3 * numpy.ptp(exact):
        raise OutputIsWrong("writes other coordinates than expected")
    least = numpy.abs(exact.astype(numpy.float32) - exact)
    surviving = numpy.abs(written.astype(numpy.float32) - exact) <= least
    return Verdict(float(surviving.mean()), largest_error, share_of_right_normals(normals, written))
