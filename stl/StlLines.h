// Lines of mesh text and the words in them.
#pragma once

#include "stl/StlBlocks.h"
#include "stl/StlLimits.h"
#include "stl/StlLineEnd.h"

#include <cstdio>
#include <string_view>

// Reads a stream line by line, as fgets does on a stream in text mode, and counts the lines. A null stream
// has none. The destructor leaves the stream right after the last line taken.
class StlLineReader {
public:
    explicit StlLineReader(std::FILE *in, StlLineEnd lineEnd = StlLineEnd::lineFeed)
        : m_blocks(in, lineEnd)
    {}

    // Goes to the next line. False at the end of the stream; number() then stays as it was. A line that a
    // read error cuts short counts as not read.
    bool next();

    // The line as read, line feed included. A zero byte ends what is seen of it. Valid until the next call of
    // next() or ahead().
    std::string_view line() const { return m_line; }

    // The line without its line end: at most two characters that are carriage returns or line feeds.
    std::string_view trimmed() const;

    // 1 for the first line, 0 before it.
    int number() const { return m_number; }

    // True if next() found no line because reading failed. An error met while reading ahead, past the last
    // line taken, does not count.
    bool failed() const { return m_ranOut && m_blocks.error() != 0; }

    // For callers that recognise several lines at once: the `count` bytes after the current line, or null if
    // there are fewer; and how to skip the lines in them.
    const char *ahead(std::size_t count)
    {
        const std::string_view bytes = m_blocks.ahead(count);
        return bytes.size() < count ? nullptr : bytes.data();
    }
    void skip(std::size_t bytes, int lines)
    {
        m_blocks.take(bytes);
        m_number += lines;
    }

private:
    StlBlockReader m_blocks;
    std::string_view m_line;
    int m_number = 0;
    bool m_ranOut = false; // next() has found no line
};

// Hands out the words of a line. Deliberate: only the space character separates words, so a tab belongs to
// its word.
class StlWords {
public:
    explicit StlWords(std::string_view line)
        : m_rest(line)
    {}

    // The next word, empty at the end of the line.
    std::string_view next();

private:
    std::string_view m_rest;
};

// Reads the next three words into x, y and z. Reading ends at the first word that is not a number: that value
// and the ones after it keep what they held.
void stlReadPoint(StlWords &words, double &x, double &y, double &z);
