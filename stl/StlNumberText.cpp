#include "stl/StlNumberText.h"

#include "stl/StlFixedNumber.h"
#include "stl/StlNumberScan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>

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

// The characters of a word, for the scan.
class WordCharacters {
public:
    explicit WordCharacters(std::string_view word)
        : m_rest(word)
    {}

    int peek() const { return m_rest.empty() ? EOF : static_cast<unsigned char>(m_rest.front()); }
    void take() { m_rest.remove_prefix(1); }

private:
    std::string_view m_rest;
};

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
    const std::ptrdiff_t length = writeExactly(text, value) - text;
    out = std::fill_n(out, std::max<std::ptrdiff_t>(stlFixedNumberSize - length, 0), ' ');
    return std::copy_n(text, length, out);
}

bool stlReadNumber(std::string_view word, double &value)
{
    if (stlReadWholeNumber(word, value))
        return true;
    WordCharacters characters(word);
    while (stlIsBlank(characters.peek()))
        characters.take();
    return stlScanNumber(characters, value);
}
