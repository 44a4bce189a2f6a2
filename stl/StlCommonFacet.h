// The common form of a facet in the temporary file: seven lines of fixed layout, 284 bytes, all twelve
// numbers in the common form of a number. StlWriter writes this for every facet of an ordinary mesh, so the
// passes look for it first and leave anything else to the line-by-line grammar.
#pragma once

#include "stl/StlFixedNumber.h"

#include <cstddef>
#include <cstdint>
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

// Where the four points start: the normal and the three corners. A point is three numbers, each with a blank
// or, the last one, a line feed after it.
constexpr std::size_t stlCommonPointStarts[4] = {15, 91, 152, 213};
constexpr std::size_t stlCommonNumberStep = stlFixedNumberSize + 1;
constexpr std::size_t stlCommonPointSize = 3 * stlCommonNumberStep;

namespace stl_common_facet {

template <std::size_t from, std::size_t to>
bool sameBetween(const char *text)
{
    return std::memcmp(text + from, stlCommonFacetText + from, to - from) == 0;
}

// At least sixteen characters, which take one register instead of two or three.
template <std::size_t from, std::size_t to>
void putBetween(char *text)
{
    constexpr std::size_t size = to - from < 16 ? 16 : to - from;
    static_assert(from + size <= stlCommonFacetSize, "the facet ends with more");
    std::memcpy(text + from, stlCommonFacetText + from, size);
}

// The text of a point's number 0, 1 or 2.
template <typename Character>
Character *numberOf(Character *point, std::size_t i)
{
    return point + i * stlCommonNumberStep;
}

} // namespace stl_common_facet

// Writes everything but the points, which are to be written after it: it may write over their beginnings.
inline void stlPutCommonLayout(char *text)
{
    using namespace stl_common_facet;
    constexpr const std::size_t(&starts)[4] = stlCommonPointStarts;
    constexpr std::size_t lineFeed = stlCommonPointSize - 1;
    putBetween<0, starts[0]>(text);
    putBetween<starts[0] + lineFeed, starts[1]>(text);
    putBetween<starts[1] + lineFeed, starts[2]>(text);
    putBetween<starts[2] + lineFeed, starts[3]>(text);
    putBetween<starts[3] + lineFeed, stlCommonFacetSize>(text);
}

// True if everything but the points has the common form, the line feed after each point included; the points
// themselves are not looked at.
inline bool stlHasCommonLayout(const char *text)
{
    using namespace stl_common_facet;
    constexpr const std::size_t(&starts)[4] = stlCommonPointStarts;
    constexpr std::size_t lineFeed = stlCommonPointSize - 1;
    return sameBetween<0, starts[0]>(text) && sameBetween<starts[0] + lineFeed, starts[1]>(text) &&
           sameBetween<starts[1] + lineFeed, starts[2]>(text) &&
           sameBetween<starts[2] + lineFeed, starts[3]>(text) &&
           sameBetween<starts[3] + lineFeed, stlCommonFacetSize>(text);
}

// True if no character of a point ends its line, or what is seen of it: there is none below the blank but the
// line feed at its end.
inline bool stlIsWithinLine(const char *point)
{
    using namespace stl_fixed_number;
    constexpr std::size_t lineFeed = stlCommonPointSize - 1;
    const Characters first = charactersAt(point);
    const Characters second = charactersAt(point + sizeof first);
    const Characters last = charactersAt(point + lineFeed - sizeof first);
    return isNowhere(lesserOf(lesserOf(first, second), last) < ' ');
}

// True if these are the seven lines of a facet in the common layout, whatever its points are.
inline bool stlHasCommonLines(const char *text)
{
    return stlHasCommonLayout(text) && stlIsWithinLine(text + stlCommonPointStarts[0]) &&
           stlIsWithinLine(text + stlCommonPointStarts[1]) &&
           stlIsWithinLine(text + stlCommonPointStarts[2]) && stlIsWithinLine(text + stlCommonPointStarts[3]);
}

// The functions below return false if a number does not have the common form or if its kernel declines it.

// Reads a point's numbers; its last one has a line feed after it. Ignore what it has filled in if it returns
// false.
inline bool stlReadCommonPoint(const char *point, double (&numbers)[3])
{
    using namespace stl_fixed_number;
    using stl_common_facet::numberOf;
    const Characters differences[3] = {differencesOf(numberOf(point, 0), ' '),
                                       differencesOf(numberOf(point, 1), ' '),
                                       differencesOf(numberOf(point, 2), '\n')};
    if (!areOfNumber(greaterOf(greaterOf(withoutSigns(differences[0]), withoutSigns(differences[1])),
                               withoutSigns(differences[2]))))
        return false;
    for (std::size_t i = 0; i < 3; ++i)
        numbers[i] = numberFrom(numberOf(point, i), differences[i]);
    return !std::isnan(numbers[0] + numbers[1] + numbers[2]);
}

// Writes a point's numbers, with a line feed after the last one. Ignore what it has written if it returns
// false.
inline bool stlWriteCommonPoint(char *point, const double (&numbers)[3])
{
    for (std::size_t i = 0; i < 3; ++i) {
        StlFixedDigits rounded;
        if (!stlRoundFixedNumber(numbers[i], rounded))
            return false;
        stlPutFixedNumber(stl_common_facet::numberOf(point, i), rounded);
    }
    point[stlCommonPointSize - 1] = '\n';
    return true;
}
