#include "stl/StlTextWriter.h"
#include "stl/StlWriter.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

class StlWriter : public ::testing::Test {
protected:
    StlMesh meshOf(std::vector<StlFacet> newFacets)
    {
        facets = std::move(newFacets);
        StlMesh mesh;
        mesh.facets = facets.data();
        mesh.stats.facetCount = static_cast<std::int32_t>(facets.size());
        return mesh;
    }

    std::string written(const StlMesh &mesh)
    {
        stl_write_ascii(mesh, "out.stl");
        return readText("out.stl");
    }

    TemporaryFolder folder;
    std::vector<StlFacet> facets;
};

const char *const sampleText = "  facet normal  0.00000000E+00  0.00000000E+00  1.00000000E+00\n"
                               "    outer loop\n"
                               "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                               "      vertex  1.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                               "      vertex  0.00000000E+00  1.00000000E+00  0.00000000E+00\n"
                               "    endloop\n"
                               "  endfacet\n";

const StlFacet sample = {{0, 0, 1}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}};

// More than the text writer holds back.
const std::size_t manyFacets = 4 * StlTextWriter::largestRoom / std::strlen(sampleText);

TEST_F(StlWriter, AMeshWithoutFacetsIsTwoLines)
{
    EXPECT_EQ(written(meshOf({})), "solid  (null)\nendsolid  \n");
}

TEST_F(StlWriter, AMeshThatWasNotLoadedIsTwoLines) { EXPECT_EQ(written({}), "solid  (null)\nendsolid  \n"); }

TEST_F(StlWriter, ANegativeFacetCountIsAMeshWithoutFacets)
{
    StlMesh mesh = meshOf({sample});
    mesh.stats.facetCount = -1;
    EXPECT_EQ(written(mesh), "solid  (null)\nendsolid  \n");
}

TEST_F(StlWriter, AFacetIsSevenLines)
{
    EXPECT_EQ(written(meshOf({sample})), std::string("solid  (null)\n") + sampleText + "endsolid  \n");
}

TEST_F(StlWriter, TheLabelAndTheAttributesAreNotWritten)
{
    StlFacet facet = sample;
    facet.attribute[0] = 'A';
    facet.attribute[1] = 255;
    StlMesh mesh = meshOf({facet});
    std::strcpy(mesh.stats.header, "solid thing");
    mesh.stats.type = ascii;
    EXPECT_EQ(written(mesh), std::string("solid  (null)\n") + sampleText + "endsolid  \n");
}

TEST_F(StlWriter, NumbersHaveABlankOrAMinusAndEightDecimals)
{
    const StlFacet facet = {
        {1.5F, -0.25F, -0.0F},
        {{infinity, -infinity, 1e-40F},
         {notANumber, -notANumber, 0.1F},
         {std::numeric_limits<float>::max(), -std::numeric_limits<float>::denorm_min(), 123456792.0F}},
        {}};
    EXPECT_EQ(written(meshOf({facet})), "solid  (null)\n"
                                        "  facet normal  1.50000000E+00 -2.50000000E-01 -0.00000000E+00\n"
                                        "    outer loop\n"
                                        "      vertex  INF -INF  9.99994610E-41\n"
                                        "      vertex  NAN -NAN  1.00000001E-01\n"
                                        "      vertex  3.40282347E+38 -1.40129846E-45  1.23456792E+08\n"
                                        "    endloop\n"
                                        "  endfacet\n"
                                        "endsolid  \n");
}

TEST_F(StlWriter, TheNormalIsWrittenAsItIsStored)
{
    const StlFacet facet = {{9, 9, 9}, {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {}};
    EXPECT_NE(
        written(meshOf({facet})).find("  facet normal  9.00000000E+00  9.00000000E+00  9.00000000E+00\n"),
        std::string::npos);
}

TEST_F(StlWriter, ManyFacetsAreWrittenInOrder)
{
    std::vector<StlFacet> many(manyFacets, sample);
    std::string expected = "solid  (null)\n";
    for (std::size_t i = 0; i < many.size(); ++i) {
        many[i].vertex[2].z = static_cast<float>(i % 10);
        std::string text = sampleText;
        text[text.rfind("0.00000000E+00")] = static_cast<char>('0' + i % 10);
        expected += text;
    }
    expected += "endsolid  \n";
    EXPECT_TRUE(written(meshOf(many)) == expected);
}

TEST_F(StlWriter, AnEarlierFileIsReplaced)
{
    writeBytes("out.stl", std::string(100000, 'x'));
    EXPECT_EQ(written(meshOf({})), "solid  (null)\nendsolid  \n");
}

TEST_F(StlWriter, LinesEndAsTheSystemEndsThem)
{
    const std::string text = written(meshOf({sample}));
    std::fputs(text.c_str(), openStream("text", "w").get());
    EXPECT_EQ(readBytes("out.stl"), readBytes("text"));
}

TEST_F(StlWriter, TheCheckedWriterWritesTheSame)
{
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, manyFacets}) {
        SCOPED_TRACE(count);
        const StlMesh mesh = meshOf(std::vector<StlFacet>(count, sample));
        EXPECT_TRUE(stl_write_ascii_checked(mesh, "checked.stl"));
        EXPECT_EQ(readText("checked.stl"), written(mesh));
    }
}

} // namespace
