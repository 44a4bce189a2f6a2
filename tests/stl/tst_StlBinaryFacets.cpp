#include "stl/StlBinaryFacets.h"
#include "tests/stl/FacetNumbers.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::string recordOf(const BinaryFacet &facet) { return binaryStl("", {facet}).substr(stlBinaryPreludeSize); }

TEST(StlBinaryFacets, ARecordIsNormalCornersAndAttribute)
{
    const BinaryFacet facet = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, {13, 14}};
    const Stream in = streamOf(recordOf(facet));
    StlBinaryFacetReader reader(in.get());
    StlFacet read;
    reader.read(read);
    EXPECT_EQ(read.normal.x, 1.0F);
    EXPECT_EQ(read.vertex[0].y, 5.0F);
    EXPECT_EQ(read.vertex[2].z, 12.0F);
    EXPECT_EQ(recordOf(read), recordOf(facet));
    EXPECT_EQ(reader.error(), 0);
}

TEST(StlBinaryFacets, EveryBitOfANumberIsKept)
{
    std::string record;
    for (const std::uint32_t bits : {0x7F800001U, 0xFFC12345U, 0x80000000U, 0x00000001U, 0xFF800000U})
        appendLittleEndian(record, bits);
    record.resize(stlBinaryFacetSize);
    const Stream in = streamOf(record);
    StlBinaryFacetReader reader(in.get());
    StlFacet read;
    reader.read(read);
    EXPECT_EQ(recordOf(read), record);
}

// As with fread and fgetc: missing bytes keep the values of the previous facet, except that a missing
// attribute byte is what fgetc returns at the end of the file.
TEST(StlBinaryFacets, ARecordCutAnywhereKeepsTheRestOfThePreviousFacet)
{
    const std::vector<BinaryFacet> facets = differentFacets(2);
    const std::string first = recordOf(facets[0]);
    const std::string second = recordOf(facets[1]);
    for (std::size_t size = 0; size <= second.size(); ++size) {
        SCOPED_TRACE(size);
        const Stream in = streamOf(first + second.substr(0, size));
        StlBinaryFacetReader reader(in.get());
        StlFacet read;
        reader.read(read);
        EXPECT_EQ(recordOf(read), first);
        reader.read(read);
        std::string expected = second.substr(0, size) + first.substr(size);
        for (std::size_t at = expected.size() - sizeof read.attribute; at < expected.size(); ++at)
            expected[at] = at < size ? expected[at] : '\xFF';
        EXPECT_EQ(recordOf(read), expected);
        EXPECT_EQ(reader.error(), 0);
    }
}

} // namespace
