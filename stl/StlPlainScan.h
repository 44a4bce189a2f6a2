// What fscanf's "%*s" and "%f" do to plain text, for text in memory. Anything that is not plain is declined
// and left to StlNumberScan.
#pragma once

#include <string_view>

// Walks over a piece of text whose continuation is unknown: a word or number that reaches its end is
// declined. Once anything has been declined, only ranOut() may still be called.
class StlPlainScanner {
public:
    explicit StlPlainScanner(std::string_view text)
        : m_at(text.data()),
          m_end(text.data() + text.size())
    {}

    // Skips blanks, then a word.
    bool skipWord();

    // Skips blanks, then reads a decimal number, followed by a blank and within the range of a float; rounded
    // correctly, straight to a float.
    bool readFloat(float &value);

    // Right after the last word or number.
    const char *position() const { return m_at; }

private:
    void skipBlanks();
    bool readFixedFloat(float &value);
    bool readDecimalFloat(float &value);

    const char *m_at;
    const char *m_end;
};
