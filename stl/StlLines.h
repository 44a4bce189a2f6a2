// Lines of mesh text and the words in them.
#pragma once

#include <cstdio>
#include <string_view>

// fgets is given this many characters, so a line longer than 999 characters arrives in pieces, and each piece
// counts as a line.
constexpr int stlLineCapacity = 1000;

// Reads a stream line by line and counts. A null stream has no lines.
class StlLineReader {
public:
    explicit StlLineReader(std::FILE *in)
        : m_in(in)
    {}

    // Goes to the next line; false at the end of the stream, and then line() and number() stay as they were.
    bool next();

    // The line as read, line feed included. A zero byte ends what is seen of it.
    std::string_view line() const { return m_line; }

    // The line without its line end: at most two characters that are carriage returns or line feeds.
    std::string_view trimmed() const;

    // 1 for the first line, 0 before it.
    int number() const { return m_number; }

private:
    std::FILE *m_in;
    char m_buffer[stlLineCapacity] = {};
    std::string_view m_line;
    int m_number = 0;
};

// Hands out the words of a line. Only the space character separates words: a tab belongs to its word.
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

// Reads the next three words into x, y and z. The first word that is not a number ends it: that value and the
// ones after it keep what they held.
void stlReadPoint(StlWords &words, double &x, double &y, double &z);
