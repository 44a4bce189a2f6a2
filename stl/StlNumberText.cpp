#include "stl/StlNumberText.h"

#include "stl/StlFixedNumber.h"
#include "stl/StlLimits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <system_error>

namespace {

// As printf writes infinities and NaN for an upper-case conversion: the sign bit counts for NaN, too.
char *writeNonFinite(char *out, double value)
{
    if (std::signbit(value))
        *out++ = '-';
    return std::copy_n(std::isnan(value) ? "NAN" : "INF", 3, out);
}

// "-1.23456789E+05" without padding: to_chars rounds the exact decimal value half to even, as the C library
// does.
char *writeExactly(char *out, double value)
{
    if (!std::isfinite(value))
        return writeNonFinite(out, value);
    char *end = std::to_chars(out, out + stlMaxNumberText, value, std::chars_format::scientific, 8).ptr;
    *std::find(out, end, 'e') = 'E';
    return end;
}

bool isPlainCharacter(char c)
{
    return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == 'e' || c == 'E' || c == '+';
}

// Accepts a word that is a plain decimal number as a whole and within range, so that sscanf could but agree.
bool readPlainNumber(std::string_view word, double &value)
{
    if (!std::all_of(word.begin(), word.end(), isPlainCharacter))
        return false;
    double result = 0.0;
    const char *end = word.data() + word.size();
    const std::from_chars_result read = std::from_chars(word.data(), end, result);
    if (read.ec != std::errc() || read.ptr != end)
        return false;
    value = result;
    return true;
}

bool readAnyNumber(std::string_view word, double &value)
{
    // A word is part of a line, so it fits together with the terminating zero.
    char text[stlLineCapacity];
    text[word.copy(text, sizeof text - 1)] = '\0';
    return std::sscanf(text, "%lf", &value) == 1;
}

} // namespace

char *stlWriteBlankSigned(char *out, double value)
{
    if (stlWriteFixedNumber(out, value))
        return out + stlFixedNumberSize;
    if (!std::signbit(value))
        *out++ = ' ';
    return writeExactly(out, value);
}

char *stlWritePadded(char *out, double value)
{
    if (stlWriteFixedNumber(out, value))
        return out + stlFixedNumberSize;
    char text[stlMaxNumberText];
    const auto length = static_cast<int>(writeExactly(text, value) - text);
    out = std::fill_n(out, std::max(stlFixedNumberSize - length, 0), ' ');
    return std::copy_n(text, length, out);
}

bool stlReadNumber(std::string_view word, double &value)
{
    return readPlainNumber(word, value) || readAnyNumber(word, value);
}
