// Whatever the scanner answers, fscanf answers, too, and stands at the same place then.
#include "stl/StlPlainScan.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

constexpr float untouched = 7.25F;

Stream memoryStream(std::string &text)
{
    Stream stream(fmemopen(text.data(), text.size(), "r"));
    EXPECT_TRUE(stream) << "no stream for a text of " << text.size();
    return stream;
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// True if the scanner answered; then the C library must have said the same.
bool floatIsReadAlike(std::string text)
{
    StlPlainScanner scanner(text);
    float value = untouched;
    if (!scanner.readFloat(value))
        return false;
    const Stream stream = memoryStream(text);
    float expected = untouched;
    EXPECT_EQ(std::fscanf(stream.get(), "%f", &expected), 1) << text;
    EXPECT_EQ(bitsOf(value), bitsOf(expected)) << text;
    EXPECT_EQ(scanner.position() - text.data(), std::ftell(stream.get())) << text;
    return true;
}

bool wordIsSkippedAlike(std::string text)
{
    StlPlainScanner scanner(text);
    if (!scanner.skipWord())
        return false;
    const Stream stream = memoryStream(text);
    EXPECT_EQ(std::fscanf(stream.get(), "%*s"), 0) << text;
    EXPECT_EQ(scanner.position() - text.data(), std::ftell(stream.get())) << text;
    return true;
}

TEST(StlPlainScan, PlainNumbersAreRead)
{
    struct Row {
        const char *text;
        float value;
    };
    const Row rows[] = {
        {"0 ", 0.0F},
        {"1 ", 1.0F},
        {"+1 ", 1.0F},
        {"-1 ", -1.0F},
        {" 1.5 ", 1.5F},
        {"1.e5 ", 1e5F},
        {"+.5 ", 0.5F},
        {"-.5e-1 ", -0.05F},
        {"5. ", 5.0F},
        {"007 ", 7.0F},
        {"1E+05 ", 1e5F},
        {"1e0000000005 ", 1e5F},
        {"0e99 ", 0.0F},
        {"0.000000000000000000000000000000001 ", 1e-33F},
        {"100000000000000000000000000000 ", 1e29F},
        {"123456789012345 ", 123456789012345.0F},
        {"1234567890123456 ", 1234567890123456.0F},
        {"12345678901234567 ", 12345678901234567.0F},
        {"16777217 ", 16777216.0F},
        {"16777217.0000000000000000000001 ", 16777218.0F},
        {"16777219 ", 16777220.0F},
        {"3.4028234663852886e38 ", 3.4028234663852886e38F},
        {"1.17549435E-38 ", 1.17549435E-38F},
        {" 1.50000000E+00 ", 1.5F},
        {"  1.50000000E+00\n", 1.5F},
        {"-1.50000000E+00\t", -1.5F},
        {"\n 1.50000000E+00\r", 1.5F},
        {"\n1.50000000E+00\r", 1.5F},
        {" +1.50000000E+00 ", 1.5F},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        float value = untouched;
        EXPECT_TRUE(StlPlainScanner(row.text).readFloat(value));
        EXPECT_EQ(bitsOf(value), bitsOf(row.value));
        EXPECT_TRUE(floatIsReadAlike(row.text));
    }
    float value = untouched;
    EXPECT_TRUE(StlPlainScanner("-0 ").readFloat(value));
    EXPECT_TRUE(std::signbit(value));
}

TEST(StlPlainScan, WhatIsNotPlainIsDeclined)
{
    for (const char *text : {"",
                             " ",
                             "1",
                             "1.5",
                             " 1.50000000E+00",
                             "1e5",
                             "0x10 ",
                             "0x1.8p1 ",
                             "inf ",
                             "-inf ",
                             "INFINITY ",
                             "nan ",
                             "-nan ",
                             "nan(1) ",
                             "1e ",
                             "1e+ ",
                             "1e- ",
                             "e5 ",
                             ". ",
                             "-. ",
                             "+ ",
                             "- ",
                             "-- ",
                             "+-1 ",
                             "-+1 ",
                             "1.5abc ",
                             "1,5 ",
                             "1.5.5 ",
                             "1_0 ",
                             "abc ",
                             "1e39 ",
                             "1e400 ",
                             "-1e39 ",
                             "1e-400 ",
                             "1e-46 ",
                             "1e99999 ",
                             "1e-99999 ",
                             "1e5f ",
                             "1f ",
                             "1.5e5.5 ",
                             "1e5x ",
                             " - 1.5 ",
                             "\x80 ",
                             "1\x80 ",
                             "\2401 "}) { // a hexadecimal escape would take the digit
        SCOPED_TRACE(text);
        float value = untouched;
        EXPECT_FALSE(StlPlainScanner(text).readFloat(value));
    }
}

TEST(StlPlainScan, EveryBlankSeparatesAndNothingElse)
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
                  isBlank || isDigit || byte == '+' || byte == '-' || byte == '.' ? byte != '.' : false);
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

TEST(StlPlainScan, WordsThatReachTheEndOfThePieceAreDeclined)
{
    for (const char *text : {"", " ", "\n\t", "word", "  word"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(StlPlainScanner(text).skipWord());
    }
    EXPECT_TRUE(wordIsSkippedAlike("word "));
    EXPECT_TRUE(wordIsSkippedAlike(" \t\r\n\v\fword\n"));
}

TEST(StlPlainScan, AFacetIsWalkedOverAsByFscanf)
{
    std::string text = "facet normal 1 -2e0 .5\n outer loop\nvertex 1.5 2 3\nendfacet ";
    StlPlainScanner scanner(text);
    float n[3] = {};
    float v[3] = {};
    ASSERT_TRUE(scanner.skipWord() && scanner.skipWord() && scanner.readFloat(n[0]) &&
                scanner.readFloat(n[1]) && scanner.readFloat(n[2]) && scanner.skipWord() &&
                scanner.skipWord() && scanner.skipWord() && scanner.readFloat(v[0]) &&
                scanner.readFloat(v[1]) && scanner.readFloat(v[2]));
    EXPECT_EQ(n[1], -2.0F);
    EXPECT_EQ(v[0], 1.5F);
    EXPECT_EQ(std::string(scanner.position()), "\nendfacet ");
    EXPECT_TRUE(scanner.skipWord());
    EXPECT_FALSE(scanner.skipWord());
}

// Tokens of all shapes: thousands must be answered, and thousands declined.
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

    std::mt19937_64 m_random{20240229};
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

// All numbers of significant digits, on floats of all sizes and on what lies between two of them.
TEST(StlPlainScan, FloatsAndTheirMiddlesAreReadAsByFscanf)
{
    std::mt19937 random(4711);
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

// 15 digits whose nearest double is the middle of two floats, while they themselves are not: rounding twice
// would often go to the wrong float.
TEST(StlPlainScan, DigitsNextToTheMiddleOfTwoFloatsAreRoundedOnce)
{
    std::mt19937 random(4712);
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
