// The common form of a facet in the temporary file: seven lines of fixed layout, 284 bytes, all twelve
// numbers in the common form of a number. StlWriter writes this for every facet of an ordinary mesh, so the
// passes look for it first and leave anything else to the line-by-line grammar.
#pragma once

#include "stl/StlFixedNumber.h"

#include <cstddef>
#include <cstring>

inline constexpr char stlCommonFacetText[] =
    "  facet normal  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
    "    outer loop\n"
    "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
    "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
    "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
    "    endloop\n"
    "  endfacet\n";
constexpr std::size_t stlCommonFacetSize = sizeof stlCommonFacetText - 1;
constexpr int stlCommonFacetLines = 7;

// Where the points' first numbers start: the normal and the three corners. The numbers of a point are 16
// bytes apart.
constexpr std::size_t stlCommonPointStarts[4] = {15, 91, 152, 213};
constexpr std::size_t stlCommonNumberStep = stlFixedNumberSize + 1;

namespace stl_common_facet {

template <std::size_t from, std::size_t to>
bool sameBetween(const char *text)
{
    return std::memcmp(text + from, stlCommonFacetText + from, to - from) == 0;
}

constexpr std::size_t endOfPoint(std::size_t start) { return start + 3 * stlCommonNumberStep - 1; }

} // namespace stl_common_facet

// True if everything between the points is as it should be; the points themselves are not looked at.
inline bool stlHasCommonLayout(const char *text)
{
    using namespace stl_common_facet;
    constexpr const std::size_t(&starts)[4] = stlCommonPointStarts;
    return sameBetween<0, starts[0]>(text) && sameBetween<endOfPoint(starts[0]), starts[1]>(text) &&
           sameBetween<endOfPoint(starts[1]), starts[2]>(text) &&
           sameBetween<endOfPoint(starts[2]), starts[3]>(text) &&
           sameBetween<endOfPoint(starts[3]), stlCommonFacetSize>(text);
}

// The functions below answer false if a number is not of the common form, or cannot be had by its kernel.
// What they have filled in by then counts for nothing.

inline bool stlIsCommonPoint(const char *text)
{
    return text[15] == ' ' && text[31] == ' ' && stlIsFixedNumber(text) && stlIsFixedNumber(text + 16) &&
           stlIsFixedNumber(text + 32);
}

// Reads the numbers of `count` points from firstPoint on, three each.
template <std::size_t firstPoint, std::size_t count>
inline bool stlReadCommonPoints(const char *facetText, double (&numbers)[3 * count])
{
    for (std::size_t point = 0; point < count; ++point) {
        const char *const text = facetText + stlCommonPointStarts[firstPoint + point];
        double *const to = numbers + 3 * point;
        if (text[15] != ' ' || text[31] != ' ' || !stlReadFixedNumber(text, to[0]) ||
            !stlReadFixedNumber(text + 16, to[1]) || !stlReadFixedNumber(text + 32, to[2]))
            return false;
    }
    return true;
}

// Puts the numbers of `count` points, three each, where the points from firstPoint on have theirs; or
// declines and writes nothing.
template <std::size_t firstPoint, std::size_t count>
inline bool stlWriteCommonPoints(char *facetText, const double (&numbers)[3 * count])
{
    StlFixedDigits rounded[3 * count];
    for (std::size_t i = 0; i < 3 * count; ++i) {
        if (!stlRoundFixedNumber(numbers[i], rounded[i]))
            return false;
    }
    for (std::size_t point = 0; point < count; ++point) {
        char *const text = facetText + stlCommonPointStarts[firstPoint + point];
        for (std::size_t i = 0; i < 3; ++i)
            stlPutFixedNumber(text + i * stlCommonNumberStep, rounded[3 * point + i]);
    }
    return true;
}
