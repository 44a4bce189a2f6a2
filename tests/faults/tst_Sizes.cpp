// Files of unusual sizes and contents: time and memory stay in proportion to the size. MESHVANE_SIZES=1 adds
// the files just below 2 GiB that are read to their end.
#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/Amount.h"
#include "tests/support/CaseNames.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/PlainTwin.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

// The size is held in 31 bits.
constexpr std::uintmax_t twoGiB = std::uintmax_t{1} << 31U;

bool isLongRun() { return amount("MESHVANE_SIZES", 0) != 0; }

struct LoadedMesh : StlMesh {
    explicit LoadedMesh(const char *path) { stl_initialize(*this, path); }
    ~LoadedMesh()
    {
        std::fclose(file);
        stl_release_facets(*this);
    }
    LoadedMesh(const LoadedMesh &) = delete;
    LoadedMesh &operator=(const LoadedMesh &) = delete;

    void load()
    {
        stl_allocate_facets(*this);
        stl_load_facets(*this, 0, true);
    }
};

// A few bytes and then zeros, which take no space on the disk.
void makeSparse(const char *name, std::string_view beginning, std::uintmax_t size)
{
    writeBytes(name, beginning);
    fs::resize_file(name, size);
}

std::string withCarriageReturns(std::string text)
{
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
        text.insert(at, "\r");
    return text;
}

constexpr std::uintmax_t binaryHeaderSize = 84; // label and facet count
constexpr std::uintmax_t binaryFacetSize = 50;

// The header, and a first facet that makes the file a binary one.
std::string binaryBeginning() { return std::string(binaryHeaderSize, ' ') + "\xFF"; }

const std::string ordinaryFacet = asciiFacet({"0 0 1", "1 2 3", "5 2 3", "1 10 19"});
const std::string oneFacet = "solid\n" + ordinaryFacet + "endsolid\n";

TEST(Sizes, FromTwoGiBOnABinaryFileHasTheWrongSize)
{
    const TemporaryFolder folder;
    for (const std::uintmax_t size : {twoGiB, twoGiB + 36, twoGiB * 2 - 1, twoGiB * 2 + 283}) {
        makeSparse("large.stl", binaryBeginning(), size);
        const ProcessOutcome outcome = outcomeOf([] { LoadedMesh mesh("large.stl"); });
        EXPECT_EQ(outcome.status, 1) << size;
        EXPECT_EQ(outcome.standardError, "The file large.stl has the wrong size.\n");
    }
}

// From 4 GiB on, the size starts at 0 again.
TEST(Sizes, ABinaryFileOfFourGiBAndFourFacetsHasFourFacets)
{
    const TemporaryFolder folder;
    makeSparse("large.stl", binaryStl("", differentFacets(4)),
               twoGiB * 2 + binaryHeaderSize + binaryFacetSize * 4);
    LoadedMesh mesh("large.stl");
    mesh.load();
    EXPECT_EQ(mesh.stats.facetCount, 4);
    EXPECT_EQ(mesh.facets[3].vertex[2].z, -13.0F);
}

TEST(Sizes, FromTwoGiBOnAnAsciiFileHasNoFacets)
{
    const TemporaryFolder folder;
    makeSparse("large.stl", oneFacet, twoGiB);
    LoadedMesh large("large.stl");
    large.load();
    EXPECT_EQ(large.stats.type, ascii);
    EXPECT_EQ(large.stats.facetCount, 0);
}

// The counted part of such a file can end anywhere, also before a line feed or within a CR LF.
TEST(Sizes, BeyondFourGiBOnlyTheFirstBytesOfAnAsciiFileAreCounted)
{
    const TemporaryFolder folder;
    const std::string unixText = "solid\n" + ordinaryFacet + ordinaryFacet + "endsolid\n";
    for (const std::string &text : {unixText, withCarriageReturns(unixText)}) {
        makeSparse("large.stl", text, twoGiB * 2);
        for (std::uintmax_t counted = 0; counted <= text.size(); ++counted) {
            fs::resize_file("large.stl", twoGiB * 2 + counted);
            const LoadedMesh mesh("large.stl");
            plain::Mesh twin;
            plain::initialize(twin, "large.stl");
            ASSERT_EQ(mesh.stats.facetCount, twin.stats.facetCount) << counted;
        }
    }
}

TEST(Sizes, JustBelowTwoGiBAnAsciiFileIsReadToItsEnd)
{
    if (!isLongRun())
        GTEST_SKIP() << "reads two gigabytes";
    const TemporaryFolder folder;
    makeSparse("large.stl", oneFacet, twoGiB - 1);
    LoadedMesh large("large.stl");
    large.load();
    EXPECT_EQ(large.stats.facetCount, 1);
    EXPECT_EQ(large.stats.max.z, 19.0F);
}

TEST(Sizes, JustBelowTwoGiBABinaryFileIsReadToItsEnd)
{
    if (!isLongRun())
        GTEST_SKIP() << "takes two gigabytes of memory";
    const TemporaryFolder folder;
    constexpr std::uintmax_t facets = (twoGiB - 1 - binaryHeaderSize) / binaryFacetSize;
    makeSparse("large.stl", binaryBeginning(), binaryHeaderSize + binaryFacetSize * facets);
    LoadedMesh large("large.stl");
    large.load();
    EXPECT_EQ(large.stats.facetCount, static_cast<std::int32_t>(facets));
    EXPECT_EQ(large.facets[facets - 1].vertex[2].z, 0.0F);
}

TEST(Sizes, ABinaryFileThatShrinksWhileItIsReadRepeatsItsLastFacet)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("", differentFacets(1000)));
    LoadedMesh mesh("in.stl");
    fs::resize_file("in.stl", binaryHeaderSize + binaryFacetSize * 10);
    mesh.load();
    ASSERT_EQ(mesh.stats.facetCount, 1000);
    StlFacet repeated = mesh.facets[9];
    repeated.attribute[0] = repeated.attribute[1] = 255; // what fgetc gives at the end
    for (const int facet : {10, 11, 999})
        EXPECT_TRUE(sameBytes(mesh.facets[facet], repeated)) << facet;
    EXPECT_FALSE(sameBytes(mesh.facets[9], mesh.facets[8]));
}

// How many facets are still read depends on how far the stream has read ahead.
TEST(Sizes, AnAsciiFileThatShrinksWhileItIsReadRepeatsItsLastFacet)
{
    const TemporaryFolder folder;
    std::string text = "solid\n";
    for (int i = 0; i < 1000; ++i)
        text += asciiFacet({"0 0 1", "1 2 3", "5 2 3", std::to_string(i) + " 10 19"});
    writeBytes("in.stl", text + "endsolid\n");
    LoadedMesh mesh("in.stl");
    fs::resize_file("in.stl", 0);
    mesh.load();
    ASSERT_EQ(mesh.stats.facetCount, 1000);
    EXPECT_LT(mesh.facets[999].vertex[2].x, 999.0F);
    for (int facet = 900; facet < 999; ++facet)
        EXPECT_TRUE(sameBytes(mesh.facets[facet], mesh.facets[999])) << facet;
}

// The shortest lines that are counted: five bytes each, seven per facet.
TEST(Sizes, TheMeshOfAnyFileIsNotMuchLargerThanTheFile)
{
    const TemporaryFolder folder;
    std::string text;
    while (text.size() < 1'000'000)
        text += "abcd\n";
    writeBytes("in.stl", text);
    const LoadedMesh mesh("in.stl");
    const std::size_t bytes =
        static_cast<std::size_t>(mesh.stats.facetCount) * (sizeof(StlFacet) + sizeof(StlAuxEntry));
    EXPECT_LT(bytes, 2 * text.size());
    EXPECT_GT(bytes, text.size());
}

// ----------------------------------------------------------------------------------------------------- time

struct Shape {
    const char *name;
    std::string label;
    std::string repeated;
};

double secondsSince(std::clock_t start)
{
    return static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC);
}

// For reading, writing and both passes, whether they succeed or not. Processor time, the shortest of the
// attempts.
double secondsFor(const Shape &shape, std::size_t size)
{
    std::string text = shape.label;
    while (text.size() < size)
        text += shape.repeated;
    writeBytes("in.stl", text);
    double shortest = 1e9;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const std::clock_t start = std::clock();
        LoadedMesh mesh("in.stl");
        mesh.load();
        stl_write_ascii(mesh, "written");
        for (const char *name : {"written", "in.stl"}) {
            const Stream scanned(std::fopen(name, "r"));
            const Stream read(std::fopen(name, "r"));
            const Stream out(std::fopen("out.stl", "w"));
            char message[stlMessageCapacity] = "\n";
            double e[6];
            stl_scan_extents(message, scanned.get(), e, e + 1, e + 2, e + 3, e + 4, e + 5);
            stl_apply_pass(message, read.get(), out.get(), 1, 1, 1, 0, 0, 0, 0, 0, 0, {}, {}, {});
        }
        shortest = std::min(shortest, secondsSince(start));
    }
    return shortest;
}

class EveryShape : public ::testing::TestWithParam<Shape> {};

// Four times the size takes about four times as long. With quadratic growth it would be sixteen times.
TEST_P(EveryShape, TakesTimeInProportionToItsSize)
{
    const TemporaryFolder folder;
    constexpr std::size_t size = 200'000;
    const double one = secondsFor(GetParam(), size);
    const double four = secondsFor(GetParam(), 4 * size);
    RecordProperty("nanoseconds_per_byte", static_cast<int>(four / (4 * size) * 1e9));
    EXPECT_LT(four, 9 * one + 0.01) << one << " s and " << four << " s";
    EXPECT_LT(four, 2e-6 * 4 * size) << "two microseconds per byte";
}

const Shape shapes[] = {
    {"OrdinaryFacets", "solid\n", ordinaryFacet},
    {"HexadecimalNumbers", "solid\n", asciiFacet({"0 0 0x1", "0x1 2 3", "5 0x2 3", "1 10 0x13"})},
    {"WordsForNumbers", "solid\n", asciiFacet({"a b c", "d e f", "g h i", "j k l"})},
    {"NotANumber", "solid\n", asciiFacet({"nan nan nan", "nan 2 3", "5 inf 3", "1 10 -nan"})},
    {"OneEndlessLine", "solid\n", "vertex 1 2 3 "},
    {"NoLineFeedAtAll", "solid ", "facet "},
    {"LineFeedsOnly", "\n", "\n"},
    {"CarriageReturnsOnly", "solid\r", "facet\r"},
    {"CarriageReturnsAndLineFeeds", "solid\n", "\r\n\r\r\nabcd\r"},
    {"DigitsOnly", "solid\n", "1234567890"},
    {"DigitsAndLineFeeds", "solid\n", std::string(700, '9') + "\n"},
    {"BlanksOnly", "solid\n", "          "},
    {"LinesOfBlanks", "solid\n", std::string(500, ' ') + "\n"},
    {"ZeroBytes", "solid\n", std::string(10, '\0')},
    {"LinesOfZeroBytes", "solid\n", std::string(10, '\0') + "\n"},
    {"ShortestCountedLines", "abcd\n", "abcd\n"},
    {"LinesLongerThanTheBuffer", "solid\n", "vertex " + std::string(1500, '1') + "\n"},
    {"EndlessLabel", "solid", std::string(100, 'x')},
};

INSTANTIATE_TEST_SUITE_P(, EveryShape, ::testing::ValuesIn(shapes), nameOfCase);

} // namespace
