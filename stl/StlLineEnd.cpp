#include "stl/StlLineEnd.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

// One line of a facet in the common form, without its line end.
struct Line {
    std::size_t start;
    std::size_t size;
    std::size_t startInLongFacet; // where each line has one character more
};

constexpr Line lineOfFacet(std::size_t line)
{
    std::size_t start = 0;
    for (std::size_t passed = 0; passed < line; ++start) {
        if (stlCommonFacetText[start] == '\n')
            ++passed;
    }
    std::size_t end = start;
    while (stlCommonFacetText[end] != '\n')
        ++end;
    return {start, end - start, start + line};
}

constexpr auto eachLine = std::make_index_sequence<stlCommonFacetLines>();

// The pieces have constant sizes, so that each copy is a few moves.
template <std::size_t number>
void lengthenLine(char *to, const char *from)
{
    constexpr Line line = lineOfFacet(number);
    std::memcpy(to + line.startInLongFacet, from + line.start, line.size);
    to[line.startInLongFacet + line.size] = '\r';
    to[line.startInLongFacet + line.size + 1] = '\n';
}

template <std::size_t... numbers>
void lengthenFacet(char *to, const char *from, std::index_sequence<numbers...>)
{
    (lengthenLine<numbers>(to, from), ...);
}

// Returns whether the line had its line end.
template <std::size_t number>
bool shortenLine(char *to, const char *from)
{
    constexpr Line line = lineOfFacet(number);
    if (std::memcmp(from + line.startInLongFacet + line.size, "\r\n", 2) != 0)
        return false;
    std::memcpy(to + line.start, from + line.startInLongFacet, line.size);
    to[line.start + line.size] = '\n';
    return true;
}

template <std::size_t... numbers>
bool shortenFacet(char *to, const char *from, std::index_sequence<numbers...>)
{
    return (shortenLine<numbers>(to, from) && ...);
}

char *copy(char *to, std::string_view text) { return std::copy(text.begin(), text.end(), to); }

} // namespace

char *stlCopyWithCarriageReturns(char *to, std::string_view text)
{
    while (!text.empty()) {
        if (text.size() >= stlCommonFacetSize && stlHasCommonLines(text.data())) {
            lengthenFacet(to, text.data(), eachLine);
            to += stlLongFacetSize;
            text.remove_prefix(stlCommonFacetSize);
            continue;
        }
        const std::size_t lineSize = std::min(text.find('\n'), text.size());
        to = copy(to, text.substr(0, lineSize));
        text.remove_prefix(lineSize);
        if (!text.empty()) {
            to = copy(to, "\r\n");
            text.remove_prefix(1);
        }
    }
    return to;
}

char *stlCopyWithoutCarriageReturns(char *to, std::string_view text)
{
    while (!text.empty()) {
        if (text.size() >= stlLongFacetSize && stlCopyLongFacet(to, text.data())) {
            to += stlCommonFacetSize;
            text.remove_prefix(stlLongFacetSize);
            continue;
        }
        const std::size_t lineEnd = std::min(text.find("\r\n"), text.size());
        to = copy(to, text.substr(0, lineEnd));
        text.remove_prefix(lineEnd);
        if (!text.empty()) {
            *to++ = '\n';
            text.remove_prefix(2);
        }
    }
    return to;
}

bool stlCopyLongFacet(char *to, const char *facet)
{
    return shortenFacet(to, facet, eachLine) && stlHasCommonLines(to);
}

int stlNextTextCharacter(std::FILE *in)
{
    const int character = std::getc(in);
    if (character != '\r')
        return character;
    const int following = std::getc(in);
    if (following == '\n')
        return following;
    std::ungetc(following, in);
    return character;
}
