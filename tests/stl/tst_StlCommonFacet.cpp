#include "stl/StlCommonFacet.h"
#include "tests/support/MeshFiles.h"

#include <cstdio>
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

// Numbered from 1 on, every other one negative.
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

bool read(const std::string &text, double (&numbers)[12])
{
    return stlReadCommonPoints<0, 4>(text.data(), numbers);
}

TEST(StlCommonFacet, TheTextIsThatOfAFacetOfZeros)
{
    const char *const zeros = " 0.00000000E+00  0.00000000E+00  0.00000000E+00";
    EXPECT_EQ(std::string(stlCommonFacetText), asciiFacet({zeros, zeros, zeros, zeros}));
    EXPECT_EQ(stlCommonFacetSize, 284U);
    EXPECT_EQ(stlCommonFacetLines, 7);
}

TEST(StlCommonFacet, ThePointsStandWhereTheLinesHaveThem)
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

// Within a point: a digit may become another one and a sign the other one, and nothing else.
TEST(StlCommonFacet, EveryChangeToAnotherFormInsideAPointIsRefused)
{
    const std::string text = facetText();
    const std::string form = "sd.ddddddddE+dd ";
    for (const std::size_t start : stlCommonPointStarts) {
        for (std::size_t at = 0; at < 47; ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string changed = text;
                const char c = static_cast<char>(static_cast<unsigned char>(byte));
                changed[start + at] = c;
                const char wanted = form[at % 16];
                const bool isCommon = wanted == 's'   ? c == ' ' || c == '-'
                                      : wanted == 'd' ? c >= '0' && c <= '9'
                                      : wanted == '+' ? c == '+' || c == '-'
                                                      : c == wanted;
                ASSERT_EQ(stlIsCommonPoint(changed.data() + start), isCommon) << at << " is " << byte;
                double numbers[12];
                ASSERT_FALSE(!isCommon && read(changed, numbers)) << at << " is " << byte;
            }
        }
    }
}

TEST(StlCommonFacet, AllNumbersAreReadInOrder)
{
    double numbers[12];
    ASSERT_TRUE(read(facetText(), numbers));
    for (int i = 1; i <= 12; ++i)
        EXPECT_EQ(numbers[i - 1], i % 2 == 0 ? i / 8.0 : -i / 8.0);
    double corners[9];
    ASSERT_TRUE((stlReadCommonPoints<1, 3>(facetText().data(), corners)));
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(corners[i], numbers[i + 3]);
}

TEST(StlCommonFacet, WhatIsWrittenIsTheFacetAgain)
{
    double numbers[12];
    ASSERT_TRUE(read(facetText(), numbers));
    std::string text = stlCommonFacetText;
    ASSERT_TRUE((stlWriteCommonPoints<0, 4>(text.data(), numbers)));
    EXPECT_EQ(text, facetText());
}

TEST(StlCommonFacet, CornersAreWrittenWithoutTouchingTheNormal)
{
    const double corners[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::string text = facetText();
    ASSERT_TRUE((stlWriteCommonPoints<1, 3>(text.data(), corners)));
    EXPECT_EQ(text.substr(0, 91), facetText().substr(0, 91));
    EXPECT_EQ(text.substr(213, 48), " 7.00000000E+00  8.00000000E+00  9.00000000E+00\n");
}

TEST(StlCommonFacet, OneNumberThatDoesNotFitAndNothingIsWritten)
{
    for (int i = 0; i < 12; ++i) {
        for (const double odd : {infinity, 1e100, 1e-100, std::numeric_limits<double>::denorm_min()}) {
            double numbers[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
            numbers[i] = odd;
            std::string text = facetText();
            EXPECT_FALSE((stlWriteCommonPoints<0, 4>(text.data(), numbers)));
            EXPECT_EQ(text, facetText());
        }
    }
}

} // namespace
