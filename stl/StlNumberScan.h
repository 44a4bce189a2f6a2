// Numbers as scanf's "%f" and "%lf" take them from text, the same on every machine. What the C standard
// leaves open, and words that begin like a number and end too early, have the meaning of the GNU C
// library 2.36: "1e" and "0x1p+" are 1, "0x." is 0, and "nan(1)" is a NaN with "(1)" left unread.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

// As isspace says in the "C" locale.
constexpr bool stlIsBlank(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool stlIsDigit(int c) { return c >= '0' && c <= '9'; }

// Reads a decimal number without a plus sign that is the whole text, rounded correctly. Declines numbers
// beyond the range.
bool stlReadWholeNumber(std::string_view text, float &value);
bool stlReadWholeNumber(std::string_view text, double &value);

namespace stl_number_scan {

// 'a' for 'A'; maps no other character to a letter.
constexpr int lowerCase(int c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }

constexpr bool isSign(int c) { return c == '-' || c == '+'; }

// Takes the characters of a number from a source and keeps them.
template <typename Source>
class Characters {
public:
    explicit Characters(Source &source)
        : m_source(source)
    {}

    // False if they make no number, whatever they were.
    bool take()
    {
        if (isSign(m_source.peek()))
            keep();
        const int first = lowerCase(m_source.peek());
        if (first == 'n')
            return takeLetters("nan");
        if (first == 'i')
            return takeLetters("inf") && (lowerCase(m_source.peek()) != 'i' || takeLetters("inity"));
        return takeDigits();
    }

    const std::string &text() const { return m_text; }

private:
    void keep()
    {
        m_text += static_cast<char>(lowerCase(m_source.peek()));
        m_source.take();
    }

    // Deliberate: a letter that is wrong is taken, too, as scanf does, which has read it already.
    bool takeLetters(const char *letters)
    {
        for (; *letters != '\0'; ++letters) {
            const int c = m_source.peek();
            if (c == EOF)
                return false;
            keep();
            if (lowerCase(c) != *letters)
                return false;
        }
        return true;
    }

    bool takeDigits()
    {
        const std::size_t signs = m_text.size();
        bool hasDigit = m_source.peek() == '0';
        if (hasDigit)
            keep();
        const bool isHexadecimal = hasDigit && lowerCase(m_source.peek()) == 'x';
        if (isHexadecimal) {
            keep();
            hasDigit = false;
        }
        const std::size_t prefix = isHexadecimal ? 2 : 0;
        const char exponentLetter = isHexadecimal ? 'p' : 'e';
        bool hasPoint = false;
        bool hasExponent = false;
        for (;; keep()) {
            const int c = lowerCase(m_source.peek());
            if (stlIsDigit(c) || (isHexadecimal && !hasExponent && c >= 'a' && c <= 'f')) {
                hasDigit = true;
            } else if (c == '.' && !hasPoint && !hasExponent) {
                hasPoint = true;
            } else if (c == exponentLetter && hasDigit && !hasExponent) {
                hasExponent = true;
            } else if (!isSign(c) || !hasExponent || m_text.back() != exponentLetter) {
                return m_text.size() > signs + prefix;
            }
        }
    }

    Source &m_source;
    std::string m_text;
};

// What Characters has kept. False if it is no number after all, such as a point alone.
bool convert(const std::string &text, float &value);
bool convert(const std::string &text, double &value);

} // namespace stl_number_scan

// Takes a number, without blanks before it, from a source that has peek(), the next character as an unsigned
// char or EOF, and take(), which moves on over it. If there is none, returns false, leaves the value alone
// and has taken what scanf takes until it sees that.
template <typename Number, typename Source>
bool stlScanNumber(Source &source, Number &value)
{
    stl_number_scan::Characters<Source> characters(source);
    return characters.take() && stl_number_scan::convert(characters.text(), value);
}
