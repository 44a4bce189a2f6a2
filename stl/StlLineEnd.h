// Line ends of text on streams in binary mode.
//
// Text mode would make the system's line ends, too, but on Windows it takes longer than all else in a run:
// Wine's C library, for one, writes text in pieces of 2 KB and reads it character by character. So large
// files are opened in binary mode, and their line ends are made here.
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

// A facet in the common form is called long with a carriage return before each of its line feeds.
constexpr std::size_t stlLongFacetSize = stlCommonFacetSize + stlCommonFacetLines;

// Copies a long facet without its carriage returns and returns true. Returns false if these are not the seven
// lines of one, whose points may be anything within their lines; ignore the copy then.
bool stlCopyLongFacet(char *to, const char *facet);

// The next character of the stream, or EOF. A carriage return before a line feed is dropped.
int stlNextTextCharacter(std::FILE *in);
