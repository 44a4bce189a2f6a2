#include "stl/StlBinaryFacets.h"
#include "stl/StlBlocks.h"
#include "stl/StlReader.h"
#include "tests/stl/FacetNumbers.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/NanSigns.h"
#include "tests/support/SameBytes.h"
#include "tests/support/StandardErrorCapture.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// The order of the fields and the values of the enumeration are fixed: other code may rely on the layout.
static_assert(binary == 0 && ascii == 1);
static_assert(std::is_same_v<std::underlying_type_t<StlType>, std::int32_t>);
static_assert(offsetof(StlFacet, normal) < offsetof(StlFacet, vertex));
static_assert(offsetof(StlFacet, vertex) < offsetof(StlFacet, attribute));
static_assert(offsetof(StlStats, header) == 0 && sizeof(StlStats::header) == 81);
static_assert(offsetof(StlStats, header) < offsetof(StlStats, type));
static_assert(offsetof(StlStats, type) < offsetof(StlStats, facetCount));
static_assert(offsetof(StlStats, facetCount) < offsetof(StlStats, max));
static_assert(offsetof(StlStats, max) < offsetof(StlStats, min));
static_assert(offsetof(StlStats, min) < offsetof(StlStats, size));
static_assert(offsetof(StlStats, size) < offsetof(StlStats, boundingDiameter));
static_assert(offsetof(StlStats, boundingDiameter) < offsetof(StlStats, firstEdgeExtent));
static_assert(offsetof(StlStats, firstEdgeExtent) < offsetof(StlStats, initialFacetCount));
static_assert(offsetof(StlStats, initialFacetCount) < offsetof(StlStats, allocatedFacetCount));

class StlReader : public ::testing::Test {
public:
    ~StlReader() override
    {
        closeFile();
        stl_release_facets(mesh);
    }

protected:
    void closeFile()
    {
        if (mesh.file != nullptr)
            std::fclose(mesh.file);
        mesh.file = nullptr;
    }

    void initialize(std::string_view bytes)
    {
        closeFile();
        writeBytes("in.stl", bytes);
        const StandardErrorCapture capture;
        stl_initialize(mesh, "in.stl");
        standardError = capture.text();
    }

    void load(std::string_view bytes)
    {
        initialize(bytes);
        stl_allocate_facets(mesh);
        stl_load_facets(mesh, 0, true);
        closeFile();
    }

    void loadFacets(const std::vector<BinaryFacet> &facets) { load(binaryStl("", facets)); }

    // The facets are those of the binary file, byte for byte.
    void expectRecords(const std::string &bytes) const
    {
        for (int i = 0; i < mesh.stats.facetCount; ++i) {
            const auto offset = static_cast<std::size_t>(stlBinaryPreludeSize + stlBinaryFacetSize * i);
            ASSERT_EQ(recordOf(mesh.facets[i]), bytes.substr(offset, stlBinaryFacetSize)) << "facet " << i;
        }
    }

    TemporaryFolder folder;
    StlMesh mesh;
    std::string standardError;
};

void expectVertex(const StlVertex &vertex, const StlVertex &expected)
{
    EXPECT_TRUE(sameOrBothNan(vertex.x, expected.x)) << vertex.x;
    EXPECT_TRUE(sameOrBothNan(vertex.y, expected.y)) << vertex.y;
    EXPECT_TRUE(sameOrBothNan(vertex.z, expected.z)) << vertex.z;
}

const FacetNumbers oneToNine = {0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9};
const std::string oneToNineText = asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"});

// The given facet and three with all numbers equal.
std::vector<BinaryFacet> fourFacets(const FacetNumbers &first, float everywhere)
{
    std::vector<BinaryFacet> facets(4);
    for (BinaryFacet &facet : facets)
        facet.numbers.fill(everywhere);
    facets[0].numbers = first;
    return facets;
}

// Binary or ASCII

TEST_F(StlReader, OneByteAbove127BetweenOffsets84And211MakesAFileBinary)
{
    struct Row {
        std::size_t offset;
        unsigned char byte;
        StlType type;
    };
    const Row rows[] = {
        {83, 255, ascii},   {84, 128, binary}, {84, 127, ascii},  {84, 255, binary}, {150, 200, binary},
        {211, 128, binary}, {211, 127, ascii}, {212, 128, ascii}, {283, 255, ascii}, {0, 255, ascii},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE("byte " + std::to_string(row.byte) + " at " + std::to_string(row.offset));
        std::string bytes(284, 'a');
        bytes[row.offset] = static_cast<char>(row.byte);
        initialize(bytes);
        EXPECT_EQ(mesh.stats.type, row.type);
    }
}

TEST_F(StlReader, NothingElseTellsBinaryFromAscii)
{
    std::vector<BinaryFacet> lastFacetNegative(4);
    lastFacetNegative[3].numbers.fill(-1.0F); // beyond offset 211
    struct Row {
        const char *situation;
        std::string bytes;
        StlType type;
        int facetCount;
    };
    // The order matters: bytes of the previous file must not count.
    const Row rows[] = {
        {"a binary file that begins with solid", binaryStl("solid not at all", differentFacets(4)), binary,
         4},
        {"a file that ends before the tested bytes", std::string(84, '\xFF'), ascii, 0},
        {"an ASCII file that does not begin with solid", "a mesh\n" + oneToNineText, ascii, 1},
        {"a binary file with all high bytes elsewhere", binaryStl("", lastFacetNegative), ascii, 0},
        {"another binary file", binaryStl("", differentFacets(5)), binary, 5},
        {"a file that ends within the tested bytes", std::string(100, 'a'), ascii, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        initialize(row.bytes);
        EXPECT_EQ(mesh.stats.type, row.type);
        EXPECT_EQ(mesh.stats.facetCount, row.facetCount);
        EXPECT_EQ(mesh.stats.initialFacetCount, row.facetCount);
    }
}

// Binary files

TEST_F(StlReader, BinaryFacetsAreReadInOrder)
{
    constexpr std::size_t moreThanABlock = StlBlockReader::blockSize / stlBinaryFacetSize + 1;
    for (const std::size_t count : {std::size_t{4}, moreThanABlock}) {
        SCOPED_TRACE(count);
        const std::vector<BinaryFacet> facets = differentFacets(static_cast<int>(count));
        load(binaryStl("", facets));
        EXPECT_EQ(standardError, "");
        ASSERT_EQ(mesh.stats.facetCount, static_cast<std::int32_t>(count));
        EXPECT_EQ(mesh.stats.initialFacetCount, mesh.stats.facetCount);
        EXPECT_EQ(mesh.stats.allocatedFacetCount, mesh.stats.facetCount);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(numbersOf(mesh.facets[i]), facets[i].numbers) << "facet " << i;
            ASSERT_EQ(mesh.facets[i].attribute[0], facets[i].attribute[0]) << "facet " << i;
            ASSERT_EQ(mesh.facets[i].attribute[1], facets[i].attribute[1]) << "facet " << i;
        }
    }
}

TEST_F(StlReader, ABinaryHeaderIsCopiedAsItIs)
{
    std::string header("a\0b\xFF\r\n", 6);
    header.resize(79, 'x');
    header += 'y';
    load(binaryStl(header, differentFacets(4)));
    EXPECT_EQ(std::string(mesh.stats.header, 80), header);
    EXPECT_EQ(mesh.stats.header[80], '\0');
}

TEST_F(StlReader, AnotherCountInTheHeaderIsOnlyAWarning)
{
    for (const std::uint32_t count : {0U, 3U, 4U, 5U, 0x04000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(count);
        load(binaryStl("", count, differentFacets(4)));
        EXPECT_EQ(standardError,
                  count == 4 ? "" : "Warning: File size doesn't match number of facets in the header\n");
        EXPECT_EQ(mesh.stats.facetCount, 4);
        EXPECT_EQ(numbersOf(mesh.facets[3]), differentFacets(4)[3].numbers);
    }
}

// The facet count of an ASCII file

TEST_F(StlReader, TheFacetCountOfAnAsciiFileComesFromItsLines)
{
    const std::string five = "line\nline\nline\nline\nline\n";
    struct Row {
        const char *situation;
        std::string text;
        int facetCount;
    };
    const Row rows[] = {
        {"empty file", "", 0},
        {"label without line feed", "solid x", 0},
        {"label only", "solid x\n", 0},
        {"five lines", five, 0},
        {"six lines, since counting starts at one", five + "line\n", 1},
        {"a line of three characters does not count", five + "abc\n", 0},
        {"a line of four characters counts", five + "abcd\n", 1},
        {"a line of four blanks counts", five + "    \n", 1},
        {"blank lines do not count", five + "\n\n\n\n\n\n\n", 0},
        {"a last line without line feed does not count", five + "abcdefgh", 0},
        {"the carriage return of a line end does not count", five + "abc\r\n", 0},
        {"four characters before carriage return and line feed", five + "abcd\r\n", 1},
        {"a carriage return elsewhere counts", five + "ab\rc\n", 1},
        {"of two carriage returns the first counts", five + "abc\r\r\n", 1},
        {"a carriage return is no line end", five + "abcd\refgh\rijkl", 0},
        {"zero bytes count", five + std::string(4, '\0') + "\n", 1},
        {"twelve lines", five + five + "line\nline\n", 1},
        {"thirteen lines", five + five + "line\nline\nline\n", 2},
        {"a long line counts once", five + std::string(100000, 'x') + "\n", 1},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        initialize(row.text);
        EXPECT_EQ(mesh.stats.type, ascii);
        EXPECT_EQ(mesh.stats.facetCount, row.facetCount);
        EXPECT_EQ(mesh.stats.initialFacetCount, row.facetCount);
        EXPECT_EQ(standardError, "");
    }
}

TEST_F(StlReader, AWellFormedFileHasTwoLinesAndSevenPerFacet)
{
    std::string facets;
    for (int n = 0; n <= 9; ++n) {
        SCOPED_TRACE(n);
        std::string text = "solid  (null)\n" + facets + "endsolid\n";
        initialize(text);
        EXPECT_EQ(mesh.stats.facetCount, n);
        for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
            text.replace(at, 1, "\r\n");
        initialize(text);
        EXPECT_EQ(mesh.stats.facetCount, n);
        facets += oneToNineText;
    }
}

// The label of an ASCII file

TEST_F(StlReader, TheFirstLineOfAnAsciiFileIsItsLabel)
{
    const std::string eighty = std::string(79, 'x') + "y";
    struct Row {
        const char *situation;
        std::string text;
        std::string header;
    };
    const Row rows[] = {
        {"empty file", "", ""},
        {"a line feed only", "\n", ""},
        {"carriage return and line feed only", "\r\n", ""},
        {"line feed", "solid thing\nmore\n", "solid thing"},
        {"carriage return and line feed", "solid thing\r\nmore\r\n", "solid thing"},
        {"two carriage returns", "solid thing\r\r\n", "solid thing\r"},
        {"a carriage return within", "solid\rthing\n", "solid\rthing"},
        {"a carriage return at the end of the file", "solid thing\r", "solid thing\r"},
        {"end of file", "solid thing", "solid thing"},
        {"79 characters", eighty.substr(1) + "\nz", eighty.substr(1)},
        {"79 characters and a carriage return", eighty.substr(1) + "\r\nz", eighty.substr(1)},
        {"80 characters", eighty + "\nz", eighty},
        {"80 characters and a carriage return", eighty + "\r\nz", eighty},
        {"80 characters at the end of the file", eighty, eighty},
        {"81 characters", eighty + "z\n", eighty},
        {"many characters", eighty + std::string(5000, 'z') + "\n", eighty},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        load(row.text);
        EXPECT_EQ(std::string(mesh.stats.header), row.header);
        EXPECT_EQ(mesh.stats.header[80], '\0');
    }
}

TEST_F(StlReader, AShortLabelReplacesALongOne)
{
    load(binaryStl(std::string(80, 'x'), differentFacets(4)));
    load("ab\n");
    EXPECT_STREQ(mesh.stats.header, "ab");
}

// The facets of an ASCII file

TEST_F(StlReader, AsciiFacetsAreReadInOrder)
{
    load("solid x\n" + oneToNineText + asciiFacet({"0 1 0", "-1 -2 -3", "0x10 5 6", "7 8 9"}) + "endsolid\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(mesh.stats.allocatedFacetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[0]), oneToNine);
    EXPECT_EQ(numbersOf(mesh.facets[1]), (FacetNumbers{0, 1, 0, -1, -2, -3, 16, 5, 6, 7, 8, 9}));
}

TEST_F(StlReader, ANumberThatDoesNotConvertKeepsTheValueOfThePreviousFacet)
{
    load("solid x\n" + oneToNineText + asciiFacet({"0 1 0", "11 12 13", "14 15 16", "17 18 abc"}) +
         "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[1]), (FacetNumbers{0, 1, 0, 11, 12, 13, 14, 15, 16, 17, 18, 9}));
}

TEST_F(StlReader, BeforeTheFirstFacetEveryNumberIsZero)
{
    load(binaryStl("", differentFacets(4))); // nothing of an earlier mesh may remain
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 abc 9"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 1);
    EXPECT_EQ(numbersOf(mesh.facets[0]), (FacetNumbers{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 0, 0}));
    EXPECT_EQ(mesh.facets[0].attribute[0], 0);
    EXPECT_EQ(mesh.facets[0].attribute[1], 0);
}

TEST_F(StlReader, SurplusFacetsRepeatTheLastOne)
{
    std::string comments;
    for (int i = 0; i < 14; ++i)
        comments += "comment\n";
    load("solid x\n" + oneToNineText + "endsolid x\n" + comments);
    ASSERT_EQ(mesh.stats.facetCount, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(numbersOf(mesh.facets[i]), oneToNine) << i;
}

// Bytes that a text stream of some systems changes

std::string withCarriageReturns(std::string text)
{
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
        text.insert(at, "\r");
    return text;
}

// 26 ends a text there, and 13 and 10 are a line end.
TEST_F(StlReader, EveryByteOfABinaryFileCounts)
{
    for (const char byte : {'\x1A', '\r', '\n'}) {
        for (std::size_t offset = 84; offset < 212; ++offset) {
            SCOPED_TRACE(std::to_string(int{byte}) + " at " + std::to_string(offset));
            std::string bytes = binaryStl("", differentFacets(4));
            bytes[offset] = byte;
            load(bytes);
            ASSERT_EQ(mesh.stats.type, binary);
            ASSERT_EQ(mesh.stats.facetCount, 4);
            expectRecords(bytes);
        }
    }
    const std::vector<BinaryFacet> facets = differentFacets(1000);
    std::string bytes = binaryStl(std::string(80, '\x1A'), facets);
    for (std::size_t at = 300; at < bytes.size(); at += 7)
        bytes.replace(at, 3, "\r\n\x1A", std::min<std::size_t>(3, bytes.size() - at));
    load(bytes);
    EXPECT_EQ(std::string(mesh.stats.header), std::string(80, '\x1A'));
    ASSERT_EQ(mesh.stats.facetCount, 1000);
    expectRecords(bytes);
}

TEST_F(StlReader, Byte26IsACharacterOfAnAsciiFile)
{
    const std::string text = "solid\x1A thing\n" + oneToNineText + oneToNineText + "endsolid\n";
    std::string inAKeyword = text;
    inAKeyword.replace(inAKeyword.find("outer"), 5, "out\x1Ar");
    for (const std::string &bytes : {text, withCarriageReturns(text), inAKeyword, text + "\x1A"}) {
        load(bytes);
        EXPECT_STREQ(mesh.stats.header, "solid\x1A thing");
        ASSERT_EQ(mesh.stats.facetCount, 2);
        EXPECT_EQ(numbersOf(mesh.facets[0]), oneToNine);
        EXPECT_EQ(numbersOf(mesh.facets[1]), oneToNine);
    }
    const std::string five = "line\nline\nline\nline\nline\n";
    initialize(five + "abc\x1A\n");
    EXPECT_EQ(mesh.stats.facetCount, 1);
    initialize(five + "\x1A\n" + "line\n");
    EXPECT_EQ(mesh.stats.facetCount, 1);
}

TEST_F(StlReader, BothLineEndsGiveTheSameMesh)
{
    std::string text = "solid thing\n" + oneToNineText;
    text += asciiFacet({" 0.00000000E+00  5.00000000E-01 -1.00000000E+00",
                        " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                        " 4.00000000E+00  5.00000000E+00  6.00000000E+00",
                        " 7.00000000E+00  8.00000000E+00  9.00000000E+00"});
    text += asciiFacet({"0x1 2 x", "1e 2 3", "nan( 5 6", "7 8 inf"}) + oneToNineText + "endsolid\n";
    load(text);
    ASSERT_EQ(mesh.stats.facetCount, 4);
    std::vector<FacetNumbers> numbers;
    numbers.reserve(4);
    for (int i = 0; i < 4; ++i)
        numbers.push_back(numbersOf(mesh.facets[i]));
    load(withCarriageReturns(text));
    EXPECT_STREQ(mesh.stats.header, "solid thing");
    ASSERT_EQ(mesh.stats.facetCount, 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(sameBytes(numbersOf(mesh.facets[i]), numbers[static_cast<std::size_t>(i)])) << i;
}

// Only the lowest 32 bits of a size count.
TEST_F(StlReader, SizesBeyondTwoGiBAreTheSameOnEverySystem)
{
    const struct {
        const char *situation;
        std::string beginning;
        std::uintmax_t size;
        int facetCount;
    } rows[] = {
        {"ASCII, two GiB", "solid\n" + oneToNineText + "endsolid\n", std::uintmax_t{1} << 31U, 0},
        {"ASCII, four GiB and a facet", "solid\n" + oneToNineText, (std::uintmax_t{1} << 32U) + 200, 1},
        {"binary, four GiB and four facets", binaryStl("", differentFacets(4)),
         (std::uintmax_t{1} << 32U) + 284, 4},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        closeFile();
        writeBytes("in.stl", row.beginning);
        std::filesystem::resize_file("in.stl", row.size); // zeros, which take no space on most disks
        const StandardErrorCapture capture;
        stl_initialize(mesh, "in.stl");
        EXPECT_EQ(mesh.stats.facetCount, row.facetCount);
    }
}

// Loading in parts

TEST_F(StlReader, LoadingFromALaterFacetStillStartsAtTheFirstOfTheFile)
{
    const std::vector<BinaryFacet> facets = differentFacets(5);
    const struct {
        std::string bytes;
        FacetNumbers first;
    } files[] = {{binaryStl("", facets), facets[0].numbers},
                 {"solid x\n" + oneToNineText + oneToNineText + oneToNineText + "endsolid\n", oneToNine}};
    for (const auto &file : files) {
        initialize(file.bytes);
        SCOPED_TRACE(mesh.stats.type);
        stl_allocate_facets(mesh);
        stl_load_facets(mesh, 2, true);
        EXPECT_EQ(numbersOf(mesh.facets[0]), FacetNumbers{});
        EXPECT_EQ(numbersOf(mesh.facets[1]), FacetNumbers{});
        EXPECT_EQ(numbersOf(mesh.facets[2]), file.first);
    }
    initialize(binaryStl("", facets));
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 2, true);
    EXPECT_EQ(numbersOf(mesh.facets[4]), facets[2].numbers);
}

TEST_F(StlReader, LoadingThatIsNotTheFirstWidensTheExtents)
{
    initialize(binaryStl("", fourFacets({0, 0, -1, 5, 5, 5, 6, 6, 6, -7, 4, 4}, 5.0F)));
    stl_allocate_facets(mesh);
    mesh.stats.max = {100.0F, 0.0F, 0.0F};
    mesh.stats.min = {0.0F, -100.0F, 4.5F};
    mesh.stats.firstEdgeExtent = 42.0F;
    stl_load_facets(mesh, 0, false);
    expectVertex(mesh.stats.max, {100.0F, 6.0F, 6.0F});
    expectVertex(mesh.stats.min, {-7.0F, -100.0F, 4.0F});
    EXPECT_EQ(mesh.stats.firstEdgeExtent, 42.0F);
}

TEST_F(StlReader, TheFileStaysOpenForTheCallerToClose)
{
    initialize(binaryStl("", differentFacets(4)));
    ASSERT_NE(mesh.file, nullptr);
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    ASSERT_NE(mesh.file, nullptr);
    EXPECT_EQ(std::fseek(mesh.file, 0, SEEK_SET), 0);
}

// Statistics

TEST_F(StlReader, StatisticsOfFourFacets)
{
    struct Box {
        StlVertex min, max, size;
    };
    struct Row {
        const char *situation;
        FacetNumbers first;
        float everywhere; // all numbers of the other three facets
        Box box;
        float diameter;
    };
    const Row rows[] = {
        {"extremes in every corner, the normal left out",
         {-90, 90, 90, 1, 2, -9, 7, -5, 30, -20, 8, 6},
         1,
         {{-20, -5, -9}, {7, 8, 30}, {27, 13, 39}},
         std::sqrt(2419.0F)},
        {"extremes in the last facet",
         {0, 0, -1, 1, 2, 3, 4, 5, 6, 2, 2, 2},
         7,
         {{1, 2, 2}, {7, 7, 7}, {6, 5, 5}},
         std::sqrt(86.0F)},
        {"all coordinates below zero",
         {0, 0, 1, -1, -2, -3, -4, -5, -6, -2, -2, -2},
         -7,
         {{-7, -7, -7}, {-1, -2, -2}, {6, 5, 5}},
         std::sqrt(86.0F)},
        {"a NaN changes nothing",
         {-1, 0, 1, 1, 2, 3, notANumber, 4, 5, 3, notANumber, notANumber},
         2,
         {{1, 2, 2}, {3, 4, 5}, {2, 2, 3}},
         std::sqrt(17.0F)},
        {"a NaN in the first corner stays",
         {-1, 0, 1, notANumber, 2, 3, 1, 4, 5, 3, 4, 5},
         2,
         {{notANumber, 2, 2}, {notANumber, 4, 5}, {notANumber, 2, 3}},
         notANumber},
        {"infinite corners",
         {-1, 0, 1, infinity, 2, 3, -infinity, 4, 5, 3, 4, 5},
         2,
         {{-infinity, 2, 2}, {infinity, 4, 5}, {infinity, 2, 3}},
         infinity},
        {"a square above the range of a float",
         {-1, 0, 1, 0, 0, 0, 1e20F, 0, 0, 0, 0, 0},
         0,
         {{0, 0, 0}, {1e20F, 0, 0}, {1e20F, 0, 0}},
         infinity},
        {"a square below the range of a float",
         {-1, 0, 1, 0, 0, 0, 1e-30F, 0, 0, 0, 0, 0},
         0,
         {{0, 0, 0}, {1e-30F, 0, 0}, {1e-30F, 0, 0}},
         0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        loadFacets(fourFacets(row.first, row.everywhere));
        expectVertex(mesh.stats.min, row.box.min);
        expectVertex(mesh.stats.max, row.box.max);
        expectVertex(mesh.stats.size, row.box.size);
        EXPECT_TRUE(sameOrBothNan(mesh.stats.boundingDiameter, row.diameter)) << mesh.stats.boundingDiameter;
    }
}

TEST_F(StlReader, TheFirstEdgeExtentIsTheLargestStepFromTheFirstToTheSecondCorner)
{
    const FacetNumbers rows[] = {
        {0, 0, -1, 1, 2, 3, -8, 4, 5, 90, 90, 90},
        {0, 0, -1, 1, 2, 3, 4, 11, 5, 90, 90, 90},
        {0, 0, -1, 1, 2, 3, 4, 5, -6, 90, 90, 90},
        {0, 0, -1, -1, 2, 3, 8, 2, 3, 90, 90, 90},
    };
    for (const FacetNumbers &row : rows) {
        loadFacets(fourFacets(row, 1000.0F));
        EXPECT_EQ(mesh.stats.firstEdgeExtent, 9.0F);
    }
}

TEST_F(StlReader, AMeshWithoutFacetsLeavesTheExtentsAsTheyWere)
{
    loadFacets(fourFacets({0, 0, -1, 1, 2, 3, 4, 5, 7, 3, 3, 3}, 2.0F));
    expectVertex(mesh.stats.max, {4.0F, 5.0F, 7.0F});
    expectVertex(mesh.stats.min, {1.0F, 2.0F, 2.0F});

    mesh.stats.max = {9.0F, 5.0F, 7.0F};
    load("solid empty\nendsolid\n");
    EXPECT_EQ(mesh.stats.facetCount, 0);
    EXPECT_EQ(mesh.stats.initialFacetCount, 0);
    EXPECT_EQ(mesh.stats.allocatedFacetCount, 0);
    expectVertex(mesh.stats.max, {9.0F, 5.0F, 7.0F});
    expectVertex(mesh.stats.min, {1.0F, 2.0F, 2.0F});
    expectVertex(mesh.stats.size, {8.0F, 3.0F, 5.0F});
    EXPECT_EQ(mesh.stats.boundingDiameter, std::sqrt(98.0F));
}

// Tables

TEST_F(StlReader, AFreshTableIsZeroFilled)
{
    initialize(binaryStl("", differentFacets(4)));
    EXPECT_EQ(mesh.facets, nullptr);
    EXPECT_EQ(mesh.auxTable, nullptr);
    stl_allocate_facets(mesh);
    ASSERT_NE(mesh.facets, nullptr);
    ASSERT_NE(mesh.auxTable, nullptr);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(numbersOf(mesh.facets[i]), FacetNumbers{});
        EXPECT_EQ(mesh.facets[i].attribute[0], 0);
        EXPECT_EQ(mesh.facets[i].attribute[1], 0);
        EXPECT_EQ(mesh.auxTable[i].reserved, 0);
    }
}

TEST_F(StlReader, InitializingAgainStartsWithoutTables)
{
    // The leak check of the sanitizer shows whether the first tables were released.
    loadFacets(differentFacets(4));
    ASSERT_NE(mesh.facets, nullptr);
    initialize("solid x\n" + oneToNineText + "endsolid x\n");
    EXPECT_EQ(mesh.facets, nullptr);
    EXPECT_EQ(mesh.auxTable, nullptr);
    EXPECT_EQ(mesh.stats.facetCount, 1);
    EXPECT_EQ(mesh.stats.initialFacetCount, 1);
}

TEST_F(StlReader, ReleasedTablesAreGone)
{
    loadFacets(differentFacets(4));
    stl_release_facets(mesh);
    EXPECT_EQ(mesh.facets, nullptr);
    EXPECT_EQ(mesh.auxTable, nullptr);
    stl_release_facets(mesh);
}

TEST_F(StlReader, WithoutFacetsTheSizeIsComputedEvenWithoutTables)
{
    initialize("solid empty\nendsolid\n");
    mesh.stats.max = {9.0F, 5.0F, 7.0F};
    mesh.stats.min = {1.0F, 2.0F, 2.0F};
    stl_load_facets(mesh, 0, true);
    expectVertex(mesh.stats.size, {8.0F, 3.0F, 5.0F});
}

} // namespace
