#!/usr/bin/env python3
"""Writes ExactTrigonometryTable.h beside this file: angles with their sines and cosines, as MPFR rounds them.

Needs Debian's python3-gmpy2.
"""
import math
import pathlib
import random

import gmpy2

DEGREE = 0.017453293  # the program's own, in radians
LARGEST = 2**53 - 1  # mantissa


def rounded(function, angle):
    """The value of an MPFR function at a double, rounded once to a double."""
    with gmpy2.context(precision=53, round=gmpy2.RoundToNearest):
        return float(function(gmpy2.mpfr(angle)))


def halves_passed(function, angle):
    """How many halves of a last bit the function is away from its value at zero, as a number with a fraction."""
    with gmpy2.context(precision=400):
        x = gmpy2.mpfr(angle)
        bit = math.ulp(angle) if function is gmpy2.sin else 2.0**-53
        start = x if function is gmpy2.sin else gmpy2.mpfr(1)
        return (start - function(x)) / bit


def hard_to_round(function, exponent, generator):
    """Two neighbouring doubles around a point where the function lies in the middle between two doubles."""
    low, high = math.ldexp(1.0, exponent), math.ldexp(1.9, exponent)
    first, last = halves_passed(function, low), halves_passed(function, high)
    middle = generator.randint(int(first) + 1, int(last) - 1) + 0.5
    while math.nextafter(low, high) < high:
        between = (low + high) / 2
        if halves_passed(function, between) < middle:
            low = between
        else:
            high = between
    return [low, high]


def near_quarter_turns():
    """For each exponent the mantissa by which a double comes nearest to a multiple of a quarter turn.

    They are denominators of the convergents of 2^exponent / (pi / 2).
    """
    found = []
    with gmpy2.context(precision=1400):
        quarter = gmpy2.const_pi() / 2
        for exponent in range(-52, 972):
            ratio = gmpy2.mpq(gmpy2.mul_2exp(gmpy2.mpfr(1), exponent) / quarter if exponent >= 0
                              else gmpy2.div_2exp(gmpy2.mpfr(1), -exponent) / quarter)
            before, mantissa = 0, 1
            while True:
                whole = ratio.numerator // ratio.denominator
                ratio = 1 / (ratio - whole)
                following = (ratio.numerator // ratio.denominator) * mantissa + before
                if following > LARGEST:
                    break
                before, mantissa = mantissa, following
            angle = math.ldexp(float(mantissa), exponent)
            multiple = gmpy2.rint_round(gmpy2.mpfr(angle) / quarter)
            distance = abs(gmpy2.mpfr(angle) - multiple * quarter)
            found.append((distance, angle))
    found = sorted(set(found))
    return [angle for _, angle in found[:40]]


def angles():
    generator = random.Random(4711)
    yield "whole degrees", [degrees * DEGREE for degrees in range(0, 361)]
    yield "negative and larger ones", [degrees * DEGREE for degrees in (-1, -45, -90, -180, -338, -360, 720, 1e6)]
    yield "zeros, subnormal and tiny angles", [
        0.0, -0.0, 5e-324, -5e-324, 1e-310, 2.0**-1022, math.nextafter(2.0**-1022, 0), 1e-300, 1e-30,
        *(near for exponent in (-30, -28, -27, -26, -25) for near in
          (math.nextafter(2.0**exponent, 0), 2.0**exponent, math.nextafter(2.0**exponent, 1)))]
    yield "powers of two", [2.0**exponent for exponent in range(-24, 1024, 17)]
    yield "huge angles", [math.ldexp(generator.uniform(1, 2), generator.randint(60, 1023)) for _ in range(40)] + [
        1e22, 1e300, -1e300, math.nextafter(math.inf, 0), -math.nextafter(math.inf, 0)]
    yield "closest to multiples of a quarter turn", near_quarter_turns()
    hard = []
    for exponent in range(-24, -9):
        for function in (gmpy2.sin, gmpy2.cos):
            for _ in range(2):
                hard += hard_to_round(function, exponent, generator)
    yield "sine or cosine close to the middle between two doubles", hard


HEAD = """\
// Made by exact_trigonometry_table.py with MPFR {mpfr}; not edited by hand.
#pragma once

struct TabulatedAngle {{
    double angle; // radians
    double sine;
    double cosine;
}};

// The first {degrees} are whole degrees from 0 on.
inline constexpr int tabulatedDegrees = {degrees};

// clang-format off
inline constexpr TabulatedAngle tabulatedAngles[] = {{
"""


def main():
    groups = list(angles())
    lines = [HEAD.format(mpfr=gmpy2.mpfr_version().split()[-1], degrees=len(groups[0][1]))]
    for title, group in groups:
        lines.append(f"    // {title}\n")
        for angle in group:
            sine, cosine = rounded(gmpy2.sin, angle), rounded(gmpy2.cos, angle)
            lines.append(f"    {{{angle.hex()}, {sine.hex()}, {cosine.hex()}}},\n")
    lines.append("};\n// clang-format on\n")
    pathlib.Path(__file__).with_name("ExactTrigonometryTable.h").write_text("".join(lines), encoding="ascii")


main()
