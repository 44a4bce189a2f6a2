// Where the scanner gives an answer, fscanf gives the same one and stops at the same place.
#include "stl/StlPlainScan.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

constexpr float untouched = 7.25F;

// True if the scanner gave an answer, which must then be that of the C library.
bool floatIsReadAlike(const std::string &text)
{
    StlPlainScanner scanner(text);
    float value = untouched;
    if (!scanner.readFloat(value))
        return false;
    float expected = untouched;
    int length = 0;
    EXPECT_EQ(std::sscanf(text.c_str(), "%f%n", &expected, &length), 1) << text;
    EXPECT_TRUE(sameBytes(value, expected)) << text << ": " << value << ", not " << expected;
    EXPECT_EQ(scanner.position() - text.data(), length) << text;
    return true;
}

bool wordIsSkippedAlike(const std::string &text)
{
    StlPlainScanner scanner(text);
    if (!scanner.skipWord())
        return false;
    const Stream stream = streamOf(text); // a string would end at a zero byte
    EXPECT_EQ(std::fscanf(stream.get(), "%*s"), 0) << text;
    EXPECT_EQ(scanner.position() - text.data(), std::ftell(stream.get())) << text;
    return true;
}

TEST(StlPlainScan, PlainNumbersAreReadAsByFscanf)
{
    const char *const shortTexts[] = {
        "0 ",      "1 ",  "+1 ",  "-1 ",    "-0 ",           " 1.5 ", "1.e5 ",     "+.5 ",
        "-.5e-1 ", "5. ", "007 ", "1E+05 ", "1e0000000005 ", "0e99 ", "16777217 ", "16777219 "};
    const char *const longTexts[] = {" 1.50000000E+00 ",    "  1.50000000E+00\n",     "-1.50000000E+00\t",
                                     "\n 1.50000000E+00\r", "\n1.50000000E+00\r",     " +1.50000000E+00 ",
                                     "123456789012345 ",    "1234567890123456 ",      "12345678901234567 ",
                                     "+12345678901234567 ", "3.4028234663852886e38 ", "1.17549435E-38 "};
    for (const char *text : shortTexts)
        EXPECT_TRUE(floatIsReadAlike(text)) << text;
    for (const char *text : longTexts)
        EXPECT_TRUE(floatIsReadAlike(text)) << text;
    const std::string zeros(30, '0');
    EXPECT_TRUE(floatIsReadAlike("0." + zeros + "1 "));
    EXPECT_TRUE(floatIsReadAlike("1" + zeros + " "));
    EXPECT_TRUE(floatIsReadAlike("16777217." + zeros + "1 "));
}

TEST(StlPlainScan, WhatIsNotPlainIsDeclined)
{
    const char *const texts[] = {"",          " ",         "1",        "1.5",     " 1.50000000E+00",
                                 "1e5",       "0x10 ",     "0x1.8p1 ", "inf ",    "-inf ",
                                 "INFINITY ", "nan ",      "-nan ",    "nan(1) ", "1e ",
                                 "1e+ ",      "1e- ",      "e5 ",      ". ",      "-. ",
                                 "+ ",        "- ",        "-- ",      "+-1 ",    "-+1 ",
                                 "1.5abc ",   "1,5 ",      "1.5.5 ",   "1_0 ",    "abc ",
                                 "1e39 ",     "1e400 ",    "-1e39 ",   "1e-400 ", "1e-46 ",
                                 "1e99999 ",  "1e-99999 ", "1e5f ",    "1f ",     "1.5e5.5 ",
                                 "1e5x ",     " - 1.5 ",   "\x80 ",    "1\x80 ",  "\2401 "};
    for (const char *text : texts) {
        SCOPED_TRACE(text);
        float value = untouched;
        EXPECT_FALSE(StlPlainScanner(text).readFloat(value));
    }
}

TEST(StlPlainScan, OnlyWhiteSpaceSeparates)
{
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const char c = static_cast<char>(static_cast<unsigned char>(byte));
        const bool isBlank = byte == ' ' || (byte >= '\t' && byte <= '\r');
        const bool isDigit = byte >= '0' && byte <= '9';
        EXPECT_EQ(floatIsReadAlike(std::string("1.5") + c), isBlank);
        EXPECT_EQ(floatIsReadAlike(std::string(" 1.50000000E+00") + c + " "), isBlank || isDigit);
        EXPECT_EQ(floatIsReadAlike(std::string("1.5") + c + " "), isBlank || isDigit);
        EXPECT_EQ(wordIsSkippedAlike(std::string("word") + c), isBlank);
        EXPECT_TRUE(wordIsSkippedAlike(std::string("wo") + c + "rd "));
        EXPECT_EQ(floatIsReadAlike(c + std::string("1.50000000E+00 ")),
                  isBlank || isDigit || byte == '+' || byte == '-');
    }
}

TEST(StlPlainScan, ZeroBytesBelongToWordsAndNotToNumbers)
{
    using namespace std::string_literals;
    EXPECT_TRUE(wordIsSkippedAlike("a\0b c"s));
    EXPECT_TRUE(wordIsSkippedAlike("\0 "s));
    EXPECT_FALSE(floatIsReadAlike("1\0 "s));
    EXPECT_FALSE(floatIsReadAlike("1.5\0"s));
    EXPECT_FALSE(floatIsReadAlike(" 1.50000000E+00\0"s));
}

TEST(StlPlainScan, WordsThatReachTheEndOfTheTextAreDeclined)
{
    for (const char *text : {"", " ", "\n\t", "word", "  word"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(StlPlainScanner(text).skipWord());
    }
    EXPECT_TRUE(wordIsSkippedAlike("word "));
    EXPECT_TRUE(wordIsSkippedAlike(" \t\r\n\v\fword\n"));
}

// Tokens of all shapes. Many must be read and many declined.
class Tokens {
public:
    std::string next()
    {
        std::string text(below(3), oneOf(" \t\n\v\f\r"));
        if (oneIn(3))
            text += oneOf("+-");
        const std::size_t before = oneIn(4) ? below(31) : below(9);
        text += zeros() + digits(before);
        if (!oneIn(4))
            text += "." + zeros() + digits(oneIn(4) ? 14 + below(4) : below(10));
        if (oneIn(2))
            text += exponent();
        if (oneIn(10))
            text.insert(below(text.size() + 1), 1, oneOf("xXpPeEfin+-.,_\"'0123456789 \t\x80\xFF"));
        return text + (oneIn(12) ? "" : std::string(1, oneOf(" \t\n\v\f\r"))) + (oneIn(2) ? "1" : "");
    }

private:
    std::size_t below(std::size_t n) { return m_random() % n; }
    bool oneIn(std::size_t n) { return below(n) == 0; }
    char oneOf(std::string_view characters) { return characters[below(characters.size())]; }
    std::string zeros() { return std::string(oneIn(6) ? below(20) : 0, '0'); }

    std::string digits(std::size_t count)
    {
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += oneOf("0123456789");
        return text;
    }

    std::string exponent()
    {
        const char sign = oneOf("+- ");
        std::string text(1, oneOf("eE"));
        if (sign != ' ')
            text += sign;
        return text + zeros() + digits(oneIn(8) ? below(7) : 1 + below(2));
    }

    std::mt19937 m_random{20240229};
};

TEST(StlPlainScan, GeneratedTokensAreReadAsByFscanf)
{
    Tokens tokens;
    int answered = 0;
    constexpr int all = 200000;
    for (int i = 0; i < all && !HasFailure(); ++i)
        answered += floatIsReadAlike(tokens.next()) ? 1 : 0;
    EXPECT_GT(answered, all / 3);
    EXPECT_LT(answered, all - all / 10);
}

float floatOf(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// With any number of significant digits, floats of all sizes and the points halfway between two floats.
TEST(StlPlainScan, FloatsAndTheirMidpointsAreReadAsByFscanf)
{
    std::mt19937_64 random(4711);
    int answered = 0;
    constexpr int all = 40000;
    for (int i = 0; i < all && !HasFailure(); ++i) {
        const auto bits = static_cast<std::uint32_t>(random() % 0x7F7FFFFFU);
        const double low{floatOf(bits)};
        const double middle = (low + double{floatOf(bits + 1)}) / 2;
        char text[64];
        std::snprintf(text, sizeof text, "%.*E ", static_cast<int>(random() % 30), i % 2 == 0 ? low : middle);
        answered += floatIsReadAlike(text) ? 1 : 0;
    }
    EXPECT_GT(answered, all - all / 20);
}

// 15 digits whose nearest double is halfway between two floats, while the number itself is not: rounding
// twice would often give the wrong float.
TEST(StlPlainScan, DigitsNextToTheMidpointOfTwoFloatsAreRoundedOnce)
{
    std::mt19937_64 random(4712);
    int found = 0;
    int wrongIfRoundedTwice = 0;
    for (int i = 0; i < 400000 && !HasFailure(); ++i) {
        const auto bits = 0x3F000000U + static_cast<std::uint32_t>(random() % 0x08000000U);
        const double middle = (double{floatOf(bits)} + double{floatOf(bits + 1)}) / 2;
        char text[64];
        std::snprintf(text, sizeof text, "%.14E ", middle);
        if (std::strtod(text, nullptr) != middle)
            continue;
        ++found;
        const float once = std::strtof(text, nullptr);
        wrongIfRoundedTwice += static_cast<float>(middle) != once ? 1 : 0;
        EXPECT_TRUE(floatIsReadAlike(text));
    }
    EXPECT_GT(found, 1000);
    EXPECT_GT(wrongIfRoundedTwice, 100);
}

} // namespace
