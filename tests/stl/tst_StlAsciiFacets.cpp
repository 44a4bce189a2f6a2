#include "stl/StlAsciiFacets.h"
#include "tests/support/FailingStream.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TextFile.h"

#include <array>
#include <cerrno>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using Numbers = std::array<float, 12>;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr Numbers ones = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

Numbers numbersOf(const StlFacet &f)
{
    const StlVertex &n = f.normal;
    const StlVertex(&c)[3] = f.vertex;
    return {n.x, n.y, n.z, c[0].x, c[0].y, c[0].z, c[1].x, c[1].y, c[1].z, c[2].x, c[2].y, c[2].z};
}

StlFacet facetOfOnes() { return {{1, 1, 1}, {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {}}; }

// One facet after a label line, read into a facet of ones.
Numbers readOne(const std::string &text)
{
    const Stream in = streamOf("label\n" + text);
    StlAsciiFacetReader reader(in.get());
    StlFacet facet = facetOfOnes();
    reader.read(facet);
    EXPECT_EQ(reader.error(), 0);
    return numbersOf(facet);
}

TEST(StlAsciiFacets, EveryLayoutOfTheSevenGroupsGivesTheNumbers)
{
    const Numbers expected = {0, 0.5, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const struct {
        const char *situation;
        std::string text;
    } rows[] = {
        {"the form this program writes", asciiFacet({" 0.00000000E+00  5.00000000E-01 -1.00000000E+00",
                                                     " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                                                     " 4.00000000E+00  5.00000000E+00  6.00000000E+00",
                                                     " 7.00000000E+00  8.00000000E+00  9.00000000E+00"})},
        {"plain text", asciiFacet({"0 0.5 -1", "1 2 3", "4 5 6", "7 8 9"})},
        {"one line",
         "facet normal 0 .5 -1 outer loop vertex 1 2 3 vertex 4 5 6 vertex 7 8 9 endloop endfacet "},
        {"numbers that only fscanf reads", asciiFacet({"0 0x1p-1 -1", "0x1 2 3", "4 5 6", "7 8 0x1.2p3"})},
        {"other keywords", "a b 0 0.5 -1 c d e 1 2 3 f 4 5 6 g 7 8 9 h i "},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        EXPECT_EQ(readOne(row.text), expected);
    }
}

TEST(StlAsciiFacets, NumbersBeyondAFloatBecomeInfiniteOrZero)
{
    const Numbers expected = {infinity, 0, -infinity, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(readOne(asciiFacet({"1e39 1e-50 -1e39", "1 1 1", "1 1 1", "1 1 1"})), expected);
}

TEST(StlAsciiFacets, TheFirstNumberThatDoesNotConvertEndsItsPoint)
{
    // "a2" and "3" then count as the words of the outer line, so that "vertex" is no number of corner 0.
    const std::string text = "facet normal 2 a2 3\nouter\nvertex 5 6 7\nvertex 8 9 10\nendloop\nendfacet\n";
    EXPECT_EQ(readOne(text), (Numbers{2, 1, 1, 1, 1, 1, 5, 6, 7, 8, 9, 10}));
}

TEST(StlAsciiFacets, AtTheEndOfTheFileAFacetKeepsItsNumbers)
{
    EXPECT_EQ(readOne(""), ones);
    EXPECT_EQ(readOne("facet normal"), ones);
}

TEST(StlAsciiFacets, AReadErrorIsKept)
{
    const std::string common = asciiFacet({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                           " 0.00000000E+00  0.00000000E+00  0.00000000E+00",
                                           " 1.00000000E+00  0.00000000E+00  0.00000000E+00",
                                           " 0.00000000E+00  1.00000000E+00  0.00000000E+00"});
    // Found by the block reader, and by fscanf after a number that only it reads.
    for (const std::string &readable :
         {common.substr(0, 150), std::string("facet normal 0x1 2 3\nouter loop\nver")}) {
        SCOPED_TRACE(readable);
        const Stream in = streamFailingAfter("label\n" + readable);
        StlAsciiFacetReader reader(in.get());
        StlFacet facet;
        reader.read(facet);
        EXPECT_EQ(reader.error(), EIO);
    }
}

} // namespace
