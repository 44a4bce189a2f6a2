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

// Where the four points start: the normal and the three corners. A point is three numbers with a blank after
// each of the first two.
constexpr std::size_t stlCommonPointStarts[4] = {15, 91, 152, 213};
constexpr std::size_t stlCommonNumberStep = stlFixedNumberSize + 1;
constexpr std::size_t stlCommonPointSize = 3 * stlCommonNumberStep - 1;

namespace stl_common_facet {

template <std::size_t from, std::size_t to>
bool sameBetween(const char *text)
{
    return std::memcmp(text + from, stlCommonFacetText + from, to - from) == 0;
}

constexpr std::size_t endOfPoint(std::size_t start) { return start + stlCommonPointSize; }

// The text of a point's number 0, 1 or 2.
template <typename Character>
Character *numberOf(Character *point, std::size_t i)
{
    return point + i * stlCommonNumberStep;
}

inline bool blanksSeparateNumbers(const char *point)
{
    return numberOf(point, 1)[-1] == ' ' && numberOf(point, 2)[-1] == ' ';
}

} // namespace stl_common_facet

// True if everything but the points has the common form; the points are not looked at.
inline bool stlHasCommonLayout(const char *text)
{
    using namespace stl_common_facet;
    constexpr const std::size_t(&starts)[4] = stlCommonPointStarts;
    return sameBetween<0, starts[0]>(text) && sameBetween<endOfPoint(starts[0]), starts[1]>(text) &&
           sameBetween<endOfPoint(starts[1]), starts[2]>(text) &&
           sameBetween<endOfPoint(starts[2]), starts[3]>(text) &&
           sameBetween<endOfPoint(starts[3]), stlCommonFacetSize>(text);
}

// The functions below return false if a number does not have the common form or if its kernel declines it.
// Ignore then what they have filled in.

inline bool stlIsCommonPoint(const char *point)
{
    using namespace stl_common_facet;
    return blanksSeparateNumbers(point) && stlIsFixedNumber(point) && stlIsFixedNumber(numberOf(point, 1)) &&
           stlIsFixedNumber(numberOf(point, 2));
}

// Reads `count` points from firstPoint on, three numbers each.
template <std::size_t firstPoint, std::size_t count>
inline bool stlReadCommonPoints(const char *facetText, double (&numbers)[3 * count])
{
    for (std::size_t point = 0; point < count; ++point) {
        const char *const text = facetText + stlCommonPointStarts[firstPoint + point];
        double *const to = numbers + 3 * point;
        if (!stl_common_facet::blanksSeparateNumbers(text))
            return false;
        for (std::size_t i = 0; i < 3; ++i) {
            if (!stlReadFixedNumber(stl_common_facet::numberOf(text, i), to[i]))
                return false;
        }
    }
    return true;
}

// Writes the numbers of `count` points, three each, over the points from firstPoint on; or declines and
// writes nothing.
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
            stlPutFixedNumber(stl_common_facet::numberOf(text, i), rounded[3 * point + i]);
    }
    return true;
}
