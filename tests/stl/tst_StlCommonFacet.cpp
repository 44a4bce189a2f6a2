#include "stl/StlCommonFacet.h"
#include "tests/support/MeshFiles.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string number(int n)
{
    char text[32];
    std::snprintf(text, sizeof text, "%15.8E", n % 2 == 0 ? n / 8.0 : -n / 8.0);
    return text;
}

// Multiples of 1/8 from the first to the twelfth, every other one negative.
std::string facetText()
{
    std::string points[4];
    for (int i = 0; i < 4; ++i)
        points[i] = number(3 * i + 1) + " " + number(3 * i + 2) + " " + number(3 * i + 3);
    return asciiFacet({points[0], points[1], points[2], points[3]});
}

bool isInPoint(std::size_t at)
{
    for (const std::size_t start : stlCommonPointStarts) {
        if (at >= start && at < start + 47)
            return true;
    }
    return false;
}

using Point = double[3];

bool readPoint(const std::string &facet, std::size_t point, Point &numbers)
{
    return stlReadCommonPoint(facet.data() + stlCommonPointStarts[point], numbers);
}

TEST(StlCommonFacet, TheTextIsThatOfAFacetOfZeros)
{
    const char *const zeros = " 0.00000000E+00  0.00000000E+00  0.00000000E+00";
    EXPECT_EQ(std::string(stlCommonFacetText), asciiFacet({zeros, zeros, zeros, zeros}));
    EXPECT_EQ(stlCommonFacetSize, 284U);
    EXPECT_EQ(stlCommonFacetLines, 7);
}

TEST(StlCommonFacet, ThePointsAreWhereTheLinesHaveThem)
{
    const std::string text = facetText();
    EXPECT_EQ(text.size(), stlCommonFacetSize);
    int expected = 1;
    for (const std::size_t start : stlCommonPointStarts) {
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(text.substr(start + i * stlCommonNumberStep, 15), number(expected++));
    }
}

TEST(StlCommonFacet, EveryChangeOutsideThePointsIsRefused)
{
    const std::string text = facetText();
    ASSERT_TRUE(stlHasCommonLayout(text.data()));
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = text;
            changed[at] = static_cast<char>(static_cast<unsigned char>(byte));
            ASSERT_EQ(stlHasCommonLayout(changed.data()), isInPoint(at) || changed == text)
                << "byte " << at << " is " << byte;
        }
    }
}

// Of the number around a place in a point: the kernel reads exponents from -14 to 30.
bool hasReadableExponent(const std::string &facet, std::size_t start, std::size_t at)
{
    const std::size_t number = start + at / stlCommonNumberStep * stlCommonNumberStep;
    const int exponent = std::atoi(facet.substr(number + 12, 3).c_str());
    return exponent >= -14 && exponent <= 30;
}

// Within a point only the digits and the signs may differ.
TEST(StlCommonFacet, EveryChangeToAnotherFormInsideAPointIsRefused)
{
    const std::string text = facetText();
    const std::string form = "sd.ddddddddE+dd ";
    for (std::size_t point = 0; point < 4; ++point) {
        const std::size_t start = stlCommonPointStarts[point];
        for (std::size_t at = 0; at < stlCommonPointSize - 1; ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string changed = text;
                const char c = static_cast<char>(static_cast<unsigned char>(byte));
                changed[start + at] = c;
                const char wanted = form[at % stlCommonNumberStep];
                const bool isCommon = wanted == 's'   ? c == ' ' || c == '-'
                                      : wanted == 'd' ? c >= '0' && c <= '9'
                                      : wanted == '+' ? c == '+' || c == '-'
                                                      : c == wanted;
                Point numbers;
                ASSERT_EQ(readPoint(changed, point, numbers),
                          isCommon && hasReadableExponent(changed, start, at))
                    << at << " is " << byte;
            }
        }
    }
}

TEST(StlCommonFacet, EveryCharacterBelowTheBlankEndsALine)
{
    const std::string text = facetText();
    for (const std::size_t start : stlCommonPointStarts) {
        ASSERT_TRUE(stlIsWithinLine(text.data() + start));
        for (std::size_t at = 0; at < stlCommonPointSize - 1; ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string changed = text;
                changed[start + at] = static_cast<char>(static_cast<unsigned char>(byte));
                ASSERT_EQ(stlIsWithinLine(changed.data() + start), byte >= ' ') << at << " is " << byte;
            }
        }
    }
}

TEST(StlCommonFacet, SeveralCharactersBelowTheBlankAreSeenAsWell)
{
    std::string text = facetText();
    for (std::size_t at = 0; at < stlCommonPointSize - 1; ++at) {
        text[stlCommonPointStarts[1] + at] = '\r';
        ASSERT_FALSE(stlIsWithinLine(text.data() + stlCommonPointStarts[1]));
    }
}

TEST(StlCommonFacet, AllNumbersAreReadInOrder)
{
    int expected = 1;
    for (std::size_t point = 0; point < 4; ++point) {
        Point numbers;
        ASSERT_TRUE(readPoint(facetText(), point, numbers));
        for (const double number : numbers) {
            EXPECT_EQ(number, expected % 2 == 0 ? expected / 8.0 : -expected / 8.0);
            ++expected;
        }
    }
}

TEST(StlCommonFacet, WhatIsWrittenIsTheFacetAgain)
{
    std::string text = stlCommonFacetText;
    for (std::size_t point = 0; point < 4; ++point) {
        Point numbers = {};
        ASSERT_TRUE(readPoint(facetText(), point, numbers));
        ASSERT_TRUE(stlWriteCommonPoint(text.data() + stlCommonPointStarts[point], numbers));
    }
    EXPECT_EQ(text, facetText());
}

TEST(StlCommonFacet, APointIsWrittenWithItsLineFeedAndNothingElse)
{
    std::string text = "<" + std::string(stlCommonPointSize, '#') + ">";
    ASSERT_TRUE(stlWriteCommonPoint(text.data() + 1, {7, -8, 9e-20}));
    EXPECT_EQ(text, "< 7.00000000E+00 -8.00000000E+00  9.00000000E-20\n>");
}

TEST(StlCommonFacet, TheLayoutIsEverythingButThePoints)
{
    std::string text = "<" + std::string(stlCommonFacetSize, '#') + ">";
    stlPutCommonLayout(text.data() + 1);
    for (const std::size_t start : stlCommonPointStarts)
        text.replace(1 + start, 47, facetText(), start, 47);
    EXPECT_EQ(text, "<" + facetText() + ">");
}

TEST(StlCommonFacet, OneNumberThatDoesNotFitDeclinesThePoint)
{
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double odd : {infinity, 1e100, 1e-100, std::numeric_limits<double>::denorm_min()}) {
            Point numbers = {1, 2, 3};
            numbers[i] = odd;
            char text[stlCommonPointSize];
            EXPECT_FALSE(stlWriteCommonPoint(text, numbers));
        }
    }
}

} // namespace
