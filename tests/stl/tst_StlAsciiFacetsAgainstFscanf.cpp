// Every facet is read as fscanf reads it, and the stream stands at the same place then.
#include "stl/StlAsciiFacets.h"
#include "tests/stl/FacetNumbers.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>

namespace {

void scanByTheCLibrary(std::FILE *in, StlFacet &facet)
{
    int converted = std::fscanf(in, "%*s %*s %f %f %f\n", &facet.normal.x, &facet.normal.y, &facet.normal.z);
    converted += std::fscanf(in, "%*s %*s");
    for (StlVertex &corner : facet.vertex)
        converted += std::fscanf(in, "%*s %f %f %f\n", &corner.x, &corner.y, &corner.z);
    converted += std::fscanf(in, "%*s");
    converted += std::fscanf(in, "%*s");
    static_cast<void>(converted);
}

void expectStreamAsFscanfLeavesIt(const std::string &text, int facets)
{
    const Stream in = streamOf("label\n" + text);
    const Stream twin = streamOf("label\n" + text);
    std::fseek(twin.get(), 6, SEEK_SET);
    StlFacet read;
    StlFacet expected;
    {
        StlAsciiFacetReader reader(in.get());
        for (int i = 0; i < facets; ++i) {
            reader.read(read);
            scanByTheCLibrary(twin.get(), expected);
            EXPECT_TRUE(sameBytes(numbersOf(read), numbersOf(expected))) << "facet " << i;
        }
    }
    EXPECT_EQ(std::ftell(in.get()), std::ftell(twin.get()));
    EXPECT_EQ(std::getc(in.get()), std::getc(twin.get()));
}

TEST(StlAsciiFacetsAgainstFscanf, TheStreamIsLeftWhereFscanfLeavesIt)
{
    using namespace std::string_literals;
    const std::string common = asciiFacet({" 0.00000000E+00  5.00000000E-01 -1.00000000E+00",
                                           " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                                           " 4.00000000E+00  5.00000000E+00  6.00000000E+00",
                                           " 7.00000000E+00  8.00000000E+00  9.00000000E+00"});
    const std::string plain = asciiFacet({"0 0.5 -1", "1 2 3", "4 5 6", "7 8 9"});
    const std::string words[] = {"1e",      "0x1p", "nan(", "nan(abc)", "-nan", "infinity", "infinite",
                                 "0x.8p-3", "0x.",  "in",   "nax",      "+",    "-.",       "--1",
                                 "1e+-5",   "0xg",  "\0"s,  "1\0 2"s,   "1.5x", "1e99",     "1e-99"};
    for (const std::string &word : words) {
        SCOPED_TRACE(word);
        for (int line = 0; line < 4; ++line) {
            std::array<std::string, 4> points = {"0 0 1", "1 2 3", "4 5 6", "7 8 9"};
            points[static_cast<std::size_t>(line)] = std::string("1 ").append(word).append(" 3");
            const std::string odd = asciiFacet({points[0], points[1], points[2], points[3]});
            const std::string between = std::string(common).append(odd).append(plain);
            const std::string twice = std::string(odd).append("\n \n").append(odd);
            for (int facets = 1; facets <= 3; ++facets) {
                expectStreamAsFscanfLeavesIt(between, facets);
                expectStreamAsFscanfLeavesIt(twice, facets);
            }
            for (const std::size_t left : {1U, 10U, 30U, 50U})
                expectStreamAsFscanfLeavesIt(odd.substr(0, odd.size() - left), 2);
        }
    }
}

TEST(StlAsciiFacetsAgainstFscanf, AnOddFacetMayLieAcrossTheBorderOfTwoBlocks)
{
    const std::string odd = asciiFacet({"0x1 nan -infinity", "1e 2 3", "4 0x1p 6", "7 8 +9e-1"});
    const std::size_t label = 6;
    for (std::size_t back = 1; back < odd.size(); ++back) {
        SCOPED_TRACE(back);
        const std::string blanks(StlBlockReader::blockSize - label - back, ' ');
        expectStreamAsFscanfLeavesIt(std::string(blanks).append(odd).append(odd), 2);
    }
}

TEST(StlAsciiFacetsAgainstFscanf, WordsAndNumbersMayBeLongerThanABlock)
{
    const std::size_t size = StlBlockReader::blockSize + 5000;
    const std::string zeros(size, '0');
    expectStreamAsFscanfLeavesIt("facet " + std::string(size, 'x') + " 1 " + zeros + "2 3" +
                                     std::string(size, ' ') + "outer loop vertex 0." + zeros + "1 -" + zeros +
                                     ".5 0x" + zeros + "1p-1 vertex 1e" + zeros +
                                     "1 2 3 vertex 1 2 3 endloop endfacet",
                                 2);
}

} // namespace
