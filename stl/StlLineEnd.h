// Line ends of text on streams in binary mode.
//
// Text mode would make a system's line ends, too, but where it has something to do it takes longer than all
// else in a run: C libraries of Windows write it in pieces of a few kilobytes and read it character by
// character. So large files are opened in binary mode, and their line ends are made here.
#pragma once

#include "stl/StlCommonFacet.h"

#include <cstdio>
#include <string_view>

// What ends a line in the bytes of a stream. For a stream in text mode: a line feed, on every system.
enum class StlLineEnd { lineFeed, carriageReturnAndLineFeed };

// What ends a line in the text files of this system.
#ifdef _WIN32
constexpr StlLineEnd stlSystemLineEnd = StlLineEnd::carriageReturnAndLineFeed;
#else
constexpr StlLineEnd stlSystemLineEnd = StlLineEnd::lineFeed;
#endif

// Copies the text with a carriage return before each line feed. Returns the end of the copy, which is at most
// twice as long.
char *stlCopyWithCarriageReturns(char *to, std::string_view text);

// Copies the text without the carriage returns that stand before line feeds. Returns the end of the copy.
char *stlCopyWithoutCarriageReturns(char *to, std::string_view text);

// The size of a facet in the common form with a carriage return before each of its line feeds.
constexpr std::size_t stlLongFacetSize = stlCommonFacetSize + stlCommonFacetLines;

// Copies such a facet without its carriage returns and returns true. Returns false if these are not the seven
// lines of one; the points may be anything within their lines. Ignore the copy then.
bool stlCopyLongFacet(char *to, const char *facet);

// The next character of the stream, or EOF. A carriage return before a line feed is dropped.
int stlNextTextCharacter(std::FILE *in);
