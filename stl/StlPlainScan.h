// What fscanf's "%*s" and "%f" do to plain text, on memory. Anything that is not plain is declined, and left
// to fscanf.
#pragma once

#include <string_view>

// Walks over a piece of text whose continuation is unknown: a word or number that reaches its end is
// declined. Once something was declined, the scanner is of no more use.
class StlPlainScanner {
public:
    explicit StlPlainScanner(std::string_view text)
        : m_at(text.data()),
          m_end(text.data() + text.size())
    {}

    // Skips blanks, then a word.
    bool skipWord();

    // Skips blanks, then reads a decimal number within the range of a float that a blank follows; correctly
    // rounded, straight to a float.
    bool readFloat(float &value);

    // Behind the last word or number.
    const char *position() const { return m_at; }

    // True if something was declined because the text ended there; with more text it might be plain.
    bool ranOut() const { return m_at == m_end; }

private:
    void skipBlanks();
    bool readFixedFloat(float &value);
    bool readDecimalFloat(float &value);

    const char *m_at;
    const char *m_end;
};
