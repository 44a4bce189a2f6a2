#include "stl/StlAsciiFacets.h"
#include "stl/StlCommonFacet.h"
#include "tests/stl/FacetNumbers.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// One facet after a label line, read into a facet of ones.
FacetNumbers readOne(const std::string &text)
{
    const Stream in = streamOf("label\n" + text);
    StlAsciiFacetReader reader(in.get());
    StlFacet facet{{1, 1, 1}, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {}};
    reader.read(facet);
    EXPECT_EQ(reader.error(), 0);
    return numbersOf(facet);
}

TEST(StlAsciiFacets, OneFacetInManyLayouts)
{
    const std::string ordinary = asciiFacet({"0 0.5 -1", "1 2 3", "4 5 6", "7 8 9"});
    const struct {
        const char *situation;
        std::string text;
    } rows[] = {
        {"the form this program writes", asciiFacet({" 0.00000000E+00  5.00000000E-01 -1.00000000E+00",
                                                     " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                                                     " 4.00000000E+00  5.00000000E+00  6.00000000E+00",
                                                     " 7.00000000E+00  8.00000000E+00  9.00000000E+00"})},
        {"plain text", ordinary},
        {"one line",
         "facet normal 0 .5 -1 outer loop vertex 1 2 3 vertex 4 5 6 vertex 7 8 9 endloop endfacet "},
        {"all kinds of white space", "facet\r\n\tnormal 0\r\n.5 -1 outer\r\n\r\nloop vertex 1 2 3 vertex\v4 "
                                     "5\f6 vertex\r\n7\r\n8\r\n9\r\n"
                                     "endloop\r\nendfacet\r\n"},
        {"a wide gap", std::string(5000, ' ') + ordinary},
        {"a gap of a whole block", std::string(StlBlockReader::blockSize, ' ') + ordinary},
        {"numbers that are not plain", asciiFacet({"0 0x1p-1 -1", "0x1 2 3", "4 5 6", "7 8 0x1.2p3"})},
        {"numbers instead of keywords", "1 2 0 0.5 -1 3 4 5 1 2 3 6 4 5 6 7 7 8 9 8 9 "},
        {"no line feed at the end", ordinary.substr(0, ordinary.size() - 1)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        EXPECT_EQ(readOne(row.text), (FacetNumbers{0, 0.5, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    }
}

TEST(StlAsciiFacets, NumbersOfManyForms)
{
    const FacetNumbers read =
        readOne(asciiFacet({"-1 -0 .5", "1.25e2 +2 0x10", "inf -INF 1e-40", "3. 1E+2 1e39"}));
    EXPECT_TRUE(sameBytes(
        read, FacetNumbers{-1, -0.0F, 0.5F, 125, 2, 16, infinity, -infinity, 1e-40F, 3, 100, infinity}))
        << ::testing::PrintToString(read);
    const FacetNumbers odd = readOne(asciiFacet({"nan 0 1e-50", "-1e39 -NaN 1", "1 1 1", "1 1 1"}));
    EXPECT_TRUE(sameBytes(odd, FacetNumbers{notANumber, 0, 0, -infinity, -notANumber, 1, 1, 1, 1, 1, 1, 1}))
        << ::testing::PrintToString(odd);
}

TEST(StlAsciiFacets, ANumberThatDoesNotConvertKeepsItsValueAndSoDoTheOthersOfItsPoint)
{
    const struct {
        const char *situation;
        std::string text;
        FacetNumbers expected;
    } rows[] = {
        {"the last number",
         asciiFacet({"0 2 0", "11 12 13", "14 15 16", "17 18 abc"}),
         {0, 2, 0, 11, 12, 13, 14, 15, 16, 17, 18, 1}},
        {"what follows a number in its word counts as the next number",
         asciiFacet({"0 2 0", "11 12 13", "14 15 16", "1.5abc 18 19"}),
         {0, 2, 0, 11, 12, 13, 14, 15, 16, 1.5F, 1, 1}},
        {"x counts as the keyword of the third corner and 16 as its first number",
         asciiFacet({"0 2 0", "11 12 13", "14 x 16", "17 18 19"}),
         {0, 2, 0, 11, 12, 13, 14, 1, 1, 16, 1, 1}},
        {"a2 and 3 count as the outer line, so the first corner starts with the word vertex",
         "facet normal 2 a2 3\nouter\nvertex 5 6 7\nvertex 8 9 10\nendloop\nendfacet\n",
         {2, 1, 1, 1, 1, 1, 5, 6, 7, 8, 9, 10}},
        {"the end of the file", "", {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}},
        {"the end of the file before the first number", "facet normal", {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        EXPECT_EQ(readOne(row.text), row.expected);
    }
}

TEST(StlAsciiFacets, FacetsOfAllFormsInAnyOrder)
{
    const struct {
        std::string text;
        FacetNumbers numbers;
    } forms[] = {
        {stlCommonFacetText, {}},
        {asciiFacet({"1 2 3", "4 5 6", "7 8 9", "10 11 12"}), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}},
        {asciiFacet({"0x21 22 23", "24 25 26", "27 28 29", "30 31 32"}),
         {33, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32}},
    };
    for (const auto &first : forms) {
        for (const auto &second : forms) {
            for (const auto &third : forms) {
                const Stream in = streamOf("label\n" + first.text + second.text + third.text);
                StlAsciiFacetReader reader(in.get());
                StlFacet facet;
                for (const auto *form : {&first, &second, &third}) {
                    reader.read(facet);
                    EXPECT_EQ(numbersOf(facet), form->numbers);
                }
            }
        }
    }
}

// fscanf leaves what follows its last word.
TEST(StlAsciiFacets, TheStreamIsLeftBeforeTheLineEndOfTheLastFacet)
{
    const std::string text = "label\n" + std::string(stlCommonFacetText) + stlCommonFacetText + "end";
    for (const std::string &lines : {text, withCarriageReturns(text)}) {
        const Stream in = streamOf(lines);
        {
            StlAsciiFacetReader reader(in.get());
            StlFacet facet;
            reader.read(facet);
            reader.read(facet);
        }
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(lines.rfind("endfacet") + std::strlen("endfacet")));
    }
}

} // namespace
