#include "stl/StlReader.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <sys/resource.h>
#include <type_traits>

// The tests of failing allocations need a null pointer where the sanitizer would end the process.
extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool underAddressSanitizer = true;
#else
constexpr bool underAddressSanitizer = false;
#endif

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// Others may hand these to code that knows their layout.
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

    TemporaryFolder folder;
    StlMesh mesh;
    std::string standardError;
};

std::vector<float> numbersOf(const StlFacet &facet)
{
    std::vector<float> numbers;
    for (const StlVertex *triple : {&facet.normal, &facet.vertex[0], &facet.vertex[1], &facet.vertex[2]})
        numbers.insert(numbers.end(), {triple->x, triple->y, triple->z});
    return numbers;
}

std::vector<float> numbersOf(const BinaryFacet &facet)
{
    return {facet.numbers.begin(), facet.numbers.end()};
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void expectVertex(const StlVertex &vertex, float x, float y, float z)
{
    EXPECT_EQ(vertex.x, x);
    EXPECT_EQ(vertex.y, y);
    EXPECT_EQ(vertex.z, z);
}

// Four facets: the first corners first, the rest all corners at the given point.
std::vector<BinaryFacet> fourFacets(const std::array<float, 12> &first, float everywhere)
{
    std::vector<BinaryFacet> facets(4);
    for (BinaryFacet &facet : facets)
        facet.numbers.fill(everywhere);
    facets[0].numbers = first;
    return facets;
}

int countOf(const std::string &text, const std::string &part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
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

TEST_F(StlReader, AFileThatBeginsWithSolidCanBeBinary)
{
    initialize(binaryStl("solid not at all", differentFacets(4)));
    EXPECT_EQ(mesh.stats.type, binary);
    EXPECT_EQ(mesh.stats.facetCount, 4);
}

TEST_F(StlReader, AFileWithoutSolidCanBeAscii)
{
    initialize("a mesh\n" + asciiFacet({"0 0 1", "0 0 0", "1 0 0", "0 1 0"}));
    EXPECT_EQ(mesh.stats.type, ascii);
    EXPECT_EQ(mesh.stats.facetCount, 1);
}

TEST_F(StlReader, ABinaryFileWithoutAHighByteInTheTestedBlockIsReadAsAscii)
{
    std::vector<BinaryFacet> facets(4);
    facets[3].numbers.fill(-1.0F); // beyond offset 211
    initialize(binaryStl("", facets));
    EXPECT_EQ(mesh.stats.type, ascii);
    EXPECT_EQ(mesh.stats.facetCount, 0);
}

TEST_F(StlReader, OnlyTheBytesOfAShortFileAreTested)
{
    initialize(std::string(84, '\xFF'));
    EXPECT_EQ(mesh.stats.type, ascii);
    EXPECT_EQ(mesh.stats.facetCount, 0);

    // What an earlier file left in memory must not count.
    initialize(binaryStl("", differentFacets(4)));
    ASSERT_EQ(mesh.stats.type, binary);
    initialize(std::string(100, 'a'));
    EXPECT_EQ(mesh.stats.type, ascii);
}

// Binary files

TEST_F(StlReader, FourBinaryFacetsAreRead)
{
    const std::vector<BinaryFacet> facets = differentFacets(4);
    const std::string bytes = binaryStl("four", facets);
    ASSERT_EQ(bytes.size(), 284U);
    load(bytes);

    EXPECT_EQ(standardError, "");
    EXPECT_EQ(mesh.stats.type, binary);
    EXPECT_EQ(mesh.stats.facetCount, 4);
    EXPECT_EQ(mesh.stats.initialFacetCount, 4);
    EXPECT_EQ(mesh.stats.allocatedFacetCount, 4);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(numbersOf(mesh.facets[i]), numbersOf(facets[i])) << "facet " << i;
        EXPECT_EQ(mesh.facets[i].attribute[0], facets[i].attribute[0]) << "facet " << i;
        EXPECT_EQ(mesh.facets[i].attribute[1], facets[i].attribute[1]) << "facet " << i;
    }
    EXPECT_EQ(mesh.facets[3].attribute[1], 8);
}

TEST_F(StlReader, BinaryNumbersAreLittleEndian)
{
    std::string bytes = binaryStl("", differentFacets(4));
    bytes.replace(84, 8, std::string("\x00\x00\xC0\x3F\xCD\xCC\xCC\xBD", 8));
    load(bytes);
    EXPECT_EQ(mesh.facets[0].normal.x, 1.5F);
    EXPECT_EQ(mesh.facets[0].normal.y, -0.1F);
}

TEST_F(StlReader, EveryBitOfABinaryNumberIsKept)
{
    const std::uint32_t patterns[] = {0x7F800001U, 0xFFC12345U, 0x80000000U, 0x00000001U, 0xFF800000U};
    std::string bytes = binaryStl("", differentFacets(4));
    std::string numbers;
    for (const std::uint32_t bits : patterns)
        appendLittleEndian(numbers, bits);
    bytes.replace(84, numbers.size(), numbers);
    load(bytes);
    const StlFacet &facet = mesh.facets[0];
    const StlVertex *triples[] = {&facet.normal, &facet.vertex[0]};
    EXPECT_EQ(bitsOf(triples[0]->x), patterns[0]);
    EXPECT_EQ(bitsOf(triples[0]->y), patterns[1]);
    EXPECT_EQ(bitsOf(triples[0]->z), patterns[2]);
    EXPECT_EQ(bitsOf(triples[1]->x), patterns[3]);
    EXPECT_EQ(bitsOf(triples[1]->y), patterns[4]);
}

TEST_F(StlReader, ManyBinaryFacetsAreReadInOrder)
{
    const std::vector<BinaryFacet> facets = differentFacets(5000);
    load(binaryStl("", facets));
    ASSERT_EQ(mesh.stats.facetCount, 5000);
    for (std::size_t i = 0; i < facets.size(); ++i)
        ASSERT_EQ(numbersOf(mesh.facets[i]), numbersOf(facets[i])) << "facet " << i;
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
    struct Row {
        std::uint32_t storedCount;
        const char *standardError;
    };
    const char *const warning = "Warning: File size doesn't match number of facets in the header\n";
    const Row rows[] = {{4, ""},      {0, warning},           {3, warning},
                        {5, warning}, {0x04000000U, warning}, {0xFFFFFFFFU, warning}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.storedCount);
        load(binaryStl("", row.storedCount, differentFacets(4)));
        EXPECT_EQ(standardError, row.standardError);
        EXPECT_EQ(mesh.stats.facetCount, 4);
        EXPECT_EQ(numbersOf(mesh.facets[3]), numbersOf(differentFacets(4)[3]));
    }
}

TEST_F(StlReader, ABinaryFileOfTheWrongSizeEndsTheProcess)
{
    const std::string fiveFacets = binaryStl("", differentFacets(5));
    for (const std::size_t size : {88U, 134U, 184U, 234U, 235U, 283U, 285U, 300U, 333U}) {
        SCOPED_TRACE(size);
        writeBytes("wrong size.stl", std::string_view(fiveFacets).substr(0, size));
        const ProcessOutcome outcome = outcomeOf([this] { stl_initialize(mesh, "wrong size.stl"); });
        EXPECT_TRUE(outcome.exited);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.standardError, "The file wrong size.stl has the wrong size.\n");
    }
}

TEST_F(StlReader, AnAsciiFileWithAnUmlautInItsLongLabelIsRefusedAsABinaryOne)
{
    writeBytes("umlaut.stl", "solid " + std::string(100, 'x') + "\xC3\xBC\nendsolid\n");
    const ProcessOutcome outcome = outcomeOf([this] { stl_initialize(mesh, "umlaut.stl"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, "The file umlaut.stl has the wrong size.\n");
}

// Files that cannot be opened

TEST_F(StlReader, AFileThatCannotBeOpenedEndsTheProcess)
{
    const std::string longPath(5000, 'p');
    const std::pair<std::string, std::string> rows[] = {
        {"missing.stl", "No such file or directory"},
        {"", "No such file or directory"},
        {"no folder/in.stl", "No such file or directory"},
        {"100%s%n.stl", "No such file or directory"},
        {longPath, "File name too long"},
    };
    for (const auto &[path, reason] : rows) {
        SCOPED_TRACE(path);
        const ProcessOutcome outcome =
            outcomeOf([this, &path = path] { stl_initialize(mesh, path.c_str()); });
        EXPECT_TRUE(outcome.exited);
        EXPECT_EQ(outcome.status, 1);
        std::string line = "stl_initialize: Couldn't open ";
        line.append(path).append(" for reading: ").append(reason).append("\n");
        EXPECT_EQ(outcome.standardError, line);
    }
}

TEST_F(StlReader, ADirectoryIsAMeshWithoutFacets)
{
    std::filesystem::create_directory("folder");
    stl_initialize(mesh, "folder");
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    EXPECT_EQ(mesh.stats.type, ascii);
    EXPECT_EQ(mesh.stats.facetCount, 0);
    EXPECT_STREQ(mesh.stats.header, "");
}

// The facet count of an ASCII file

TEST_F(StlReader, TheLinesOfAnAsciiFileTellItsFacetCount)
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
        {"no carriage return of a line end counts", five + "abc\r\n", 0},
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

TEST_F(StlReader, AWellFormedFileHasTwoLinesAndSevenForEachFacet)
{
    for (const char *lineEnd : {"\n", "\r\n"}) {
        for (int n = 0; n <= 9; ++n) {
            SCOPED_TRACE(n);
            std::string text = "solid  (null)\n";
            for (int i = 0; i < n; ++i)
                text += asciiFacet({"0 0 1", "0 0 0", "1 0 0", "0 1 0"});
            text += "endsolid\n";
            for (std::size_t at = text.find('\n'); at != std::string::npos;
                 at = text.find('\n', at + std::strlen(lineEnd)))
                text.replace(at, 1, lineEnd);
            initialize(text);
            EXPECT_EQ(mesh.stats.facetCount, n);
        }
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

TEST_F(StlReader, AShortLabelHidesTheLongOneBefore)
{
    load(binaryStl(std::string(80, 'x'), differentFacets(4)));
    load("ab\n");
    EXPECT_STREQ(mesh.stats.header, "ab");
}

// The facets of an ASCII file

TEST_F(StlReader, AsciiFacetsAreRead)
{
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) +
         asciiFacet({"-1 -0 .5", "1.25e2 +2 0x10", "inf -INF 1e-40", "3. 1E+2 1e39"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[0]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(numbersOf(mesh.facets[1]),
              (std::vector<float>{-1, 0, 0.5F, 125, 2, 16, infinity, -infinity, 1e-40F, 3, 100, infinity}));
    EXPECT_TRUE(std::signbit(mesh.facets[1].normal.y));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(mesh.facets[i].attribute[0], 0);
        EXPECT_EQ(mesh.facets[i].attribute[1], 0);
    }
    EXPECT_EQ(mesh.stats.allocatedFacetCount, 2);
}

TEST_F(StlReader, NotANumberIsANumberInAsciiToo)
{
    load("solid x\n" + asciiFacet({"nan 0 1", "1 2 3", "4 5 6", "7 8 -NaN"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 1);
    EXPECT_TRUE(std::isnan(mesh.facets[0].normal.x));
    EXPECT_TRUE(std::isnan(mesh.facets[0].vertex[2].z));
    EXPECT_EQ(mesh.facets[0].vertex[2].y, 8.0F);
}

TEST_F(StlReader, KeywordsAreSkippedUnread)
{
    load("label\n"
         "a b 0 0 1\n"
         "c d\n"
         "1 1 2 3\n"
         "e 4 5 6\n"
         "f 7 8 9\n"
         "1\n2\n"
         "3 4 10 11 12\nlong line\nlong line\n");
    ASSERT_EQ(mesh.stats.facetCount, 1);
    EXPECT_EQ(numbersOf(mesh.facets[0]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(StlReader, AnAsciiFacetMayBeSpreadOverLinesInAnyWay)
{
    load("label\r\n"
         "facet\r\n\tnormal 0\r\n0 1 outer\r\n\r\nloop vertex 1 2 3 vertex\v4 5\f6 vertex\r\n"
         "7\r\n8\r\n9\r\nendloop\r\nendfacet\r\n"
         "long line\r\n");
    ASSERT_EQ(mesh.stats.facetCount, 1);
    EXPECT_EQ(numbersOf(mesh.facets[0]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(StlReader, AFieldThatDoesNotConvertKeepsTheValueOfTheFacetBefore)
{
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) +
         asciiFacet({"0 1 0", "11 12 13", "14 15 16", "17 18 abc"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[1]), (std::vector<float>{0, 1, 0, 11, 12, 13, 14, 15, 16, 17, 18, 9}));
}

TEST_F(StlReader, WhatFollowsTheNumberInAFieldFailsAsTheNextField)
{
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) +
         asciiFacet({"0 1 0", "11 12 13", "14 15 16", "1.5abc 18 19"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[1]), (std::vector<float>{0, 1, 0, 11, 12, 13, 14, 15, 16, 1.5F, 8, 9}));
}

TEST_F(StlReader, AFailedFieldShiftsTheKeywordsThatFollow)
{
    // "x" passes for the keyword of the third corner and 16 for its x.
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) +
         asciiFacet({"0 1 0", "11 12 13", "14 x 16", "17 18 19"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 2);
    EXPECT_EQ(numbersOf(mesh.facets[1]), (std::vector<float>{0, 1, 0, 11, 12, 13, 14, 5, 6, 16, 8, 9}));
}

TEST_F(StlReader, BeforeTheFirstFacetEveryFieldIsZero)
{
    load(binaryStl("", differentFacets(4))); // nothing of an earlier mesh shows through
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 abc 9"}) + "endsolid x\n");
    ASSERT_EQ(mesh.stats.facetCount, 1);
    EXPECT_EQ(numbersOf(mesh.facets[0]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 0, 0}));
    EXPECT_EQ(mesh.facets[0].attribute[0], 0);
    EXPECT_EQ(mesh.facets[0].attribute[1], 0);
}

TEST_F(StlReader, SurplusFacetsRepeatTheLastOne)
{
    std::string comments;
    for (int i = 0; i < 14; ++i)
        comments += "comment\n";
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) + "endsolid x\n" + comments);
    ASSERT_EQ(mesh.stats.facetCount, 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(numbersOf(mesh.facets[i]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9})) << i;
}

TEST_F(StlReader, LinesThatAreNotCountedLoseFacets)
{
    load("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) + "a\nb\nc\nd\ne\nf\ng\n");
    EXPECT_EQ(mesh.stats.facetCount, 1);
}

// Loading in parts

TEST_F(StlReader, LoadingFromALaterFacetStillStartsAtTheFirstOfTheFile)
{
    const std::vector<BinaryFacet> facets = differentFacets(5);
    initialize(binaryStl("", facets));
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 2, true);
    EXPECT_EQ(numbersOf(mesh.facets[0]), std::vector<float>(12, 0.0F));
    EXPECT_EQ(numbersOf(mesh.facets[1]), std::vector<float>(12, 0.0F));
    EXPECT_EQ(numbersOf(mesh.facets[2]), numbersOf(facets[0]));
    EXPECT_EQ(numbersOf(mesh.facets[4]), numbersOf(facets[2]));
}

TEST_F(StlReader, LoadingAsciiFromALaterFacetSkipsOnlyTheLabel)
{
    initialize("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) +
               asciiFacet({"0 1 0", "11 12 13", "14 15 16", "17 18 19"}) + "endsolid x\n");
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 1, true);
    EXPECT_EQ(numbersOf(mesh.facets[0]), std::vector<float>(12, 0.0F));
    EXPECT_EQ(numbersOf(mesh.facets[1]), (std::vector<float>{0, 0, 1, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_F(StlReader, LoadingThatIsNotTheFirstWidensTheExtents)
{
    initialize(binaryStl("", fourFacets({0, 0, -1, 5, 5, 5, 6, 6, 6, -7, 4, 4}, 5.0F)));
    stl_allocate_facets(mesh);
    mesh.stats.max = {100.0F, 0.0F, 0.0F};
    mesh.stats.min = {0.0F, -100.0F, 4.5F};
    mesh.stats.firstEdgeExtent = 42.0F;
    stl_load_facets(mesh, 0, false);
    expectVertex(mesh.stats.max, 100.0F, 6.0F, 6.0F);
    expectVertex(mesh.stats.min, -7.0F, -100.0F, 4.0F);
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

TEST_F(StlReader, TheExtentsAreTheSmallestAndLargestCornersOfAllFacets)
{
    std::vector<BinaryFacet> facets = fourFacets({-90, 90, 90, 1, 2, 3, 4, -5, 6, 7, 8, -9}, 1.0F);
    facets[3].numbers = {0, 0, 0, 1, 1, 1, -20, 1, 1, 1, 1, 30};
    loadFacets(facets);
    expectVertex(mesh.stats.max, 7.0F, 8.0F, 30.0F);
    expectVertex(mesh.stats.min, -20.0F, -5.0F, -9.0F);
    expectVertex(mesh.stats.size, 27.0F, 13.0F, 39.0F);
    EXPECT_EQ(mesh.stats.boundingDiameter, std::sqrt(2419.0F)); // 729 + 169 + 1521
}

TEST_F(StlReader, AMeshAwayFromTheOriginDoesNotReachIt)
{
    loadFacets(fourFacets({0, 0, -1, 10, -10, 10, 11, -11, 11, 12, -12, 12}, -10.5F));
    EXPECT_EQ(mesh.stats.max.y, -10.0F);
    load("solid x\n" + asciiFacet({"0 0 1", "11 12 13", "14 15 16", "17 18 19"}) + "endsolid x\n");
    expectVertex(mesh.stats.min, 11.0F, 12.0F, 13.0F);
    expectVertex(mesh.stats.max, 17.0F, 18.0F, 19.0F);
}

TEST_F(StlReader, NotANumberChangesNoExtent)
{
    loadFacets(fourFacets({-1, 0, 1, 1, 2, 3, notANumber, 4, 5, 3, notANumber, notANumber}, 2.0F));
    expectVertex(mesh.stats.max, 3.0F, 4.0F, 5.0F);
    expectVertex(mesh.stats.min, 1.0F, 2.0F, 2.0F);
}

TEST_F(StlReader, NotANumberInTheFirstCornerStays)
{
    loadFacets(fourFacets({-1, 0, 1, notANumber, 2, 3, 1, 4, 5, 3, 4, 5}, 2.0F));
    EXPECT_TRUE(std::isnan(mesh.stats.max.x));
    EXPECT_TRUE(std::isnan(mesh.stats.min.x));
    EXPECT_TRUE(std::isnan(mesh.stats.size.x));
    EXPECT_TRUE(std::isnan(mesh.stats.boundingDiameter));
    EXPECT_EQ(mesh.stats.max.y, 4.0F);
    EXPECT_EQ(mesh.stats.min.z, 2.0F);
}

TEST_F(StlReader, InfiniteCornersMakeInfiniteExtents)
{
    loadFacets(fourFacets({-1, 0, 1, infinity, 2, 3, -infinity, 4, 5, 3, 4, 5}, 2.0F));
    EXPECT_EQ(mesh.stats.max.x, infinity);
    EXPECT_EQ(mesh.stats.min.x, -infinity);
    EXPECT_EQ(mesh.stats.size.x, infinity);
    EXPECT_EQ(mesh.stats.boundingDiameter, infinity);
}

TEST_F(StlReader, TheBoundingDiameterIsComputedInSinglePrecision)
{
    loadFacets(fourFacets({-1, 0, 1, 0, 0, 0, 1e20F, 0, 0, 0, 0, 0}, 0.0F));
    EXPECT_EQ(mesh.stats.size.x, 1e20F);
    EXPECT_EQ(mesh.stats.boundingDiameter, infinity); // the square leaves the range of a float

    loadFacets(fourFacets({-1, 0, 1, 0, 0, 0, 1e-30F, 0, 0, 0, 0, 0}, 0.0F));
    EXPECT_EQ(mesh.stats.size.x, 1e-30F);
    EXPECT_EQ(mesh.stats.boundingDiameter, 0.0F);
}

TEST_F(StlReader, TheFirstEdgeExtentIsTheLargestStepFromTheFirstToTheSecondCorner)
{
    const std::array<float, 12> rows[] = {
        {0, 0, -1, 1, 2, 3, -8, 4, 5, 90, 90, 90},
        {0, 0, -1, 1, 2, 3, 4, 11, 5, 90, 90, 90},
        {0, 0, -1, 1, 2, 3, 4, 5, -6, 90, 90, 90},
        {0, 0, -1, -1, 2, 3, 8, 2, 3, 90, 90, 90},
    };
    for (const auto &row : rows) {
        loadFacets(fourFacets(row, 1000.0F));
        EXPECT_EQ(mesh.stats.firstEdgeExtent, 9.0F);
    }
}

TEST_F(StlReader, AMeshWithoutFacetsLeavesTheExtentsAsTheyWere)
{
    loadFacets(fourFacets({0, 0, -1, 1, 2, 3, 4, 5, 7, 3, 3, 3}, 2.0F));
    expectVertex(mesh.stats.max, 4.0F, 5.0F, 7.0F);
    expectVertex(mesh.stats.min, 1.0F, 2.0F, 2.0F);

    mesh.stats.max = {9.0F, 5.0F, 7.0F};
    load("solid empty\nendsolid\n");
    EXPECT_EQ(mesh.stats.facetCount, 0);
    EXPECT_EQ(mesh.stats.initialFacetCount, 0);
    EXPECT_EQ(mesh.stats.allocatedFacetCount, 0);
    expectVertex(mesh.stats.max, 9.0F, 5.0F, 7.0F);
    expectVertex(mesh.stats.min, 1.0F, 2.0F, 2.0F);
    expectVertex(mesh.stats.size, 8.0F, 3.0F, 5.0F);
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
        EXPECT_EQ(numbersOf(mesh.facets[i]), std::vector<float>(12, 0.0F));
        EXPECT_EQ(mesh.facets[i].attribute[0], 0);
        EXPECT_EQ(mesh.facets[i].attribute[1], 0);
        EXPECT_EQ(mesh.auxTable[i].reserved, 0);
    }
}

TEST_F(StlReader, InitializingAgainStartsWithoutTables)
{
    // The sanitizer's leak check tells whether the first tables were released.
    loadFacets(differentFacets(4));
    ASSERT_NE(mesh.facets, nullptr);
    initialize("solid x\n" + asciiFacet({"0 0 1", "1 2 3", "4 5 6", "7 8 9"}) + "endsolid x\n");
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

void limitMemory(std::size_t bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_AS, &limit);
}

TEST_F(StlReader, AFailedAllocationIsReportedTwiceAndThenNothingIsLoaded)
{
    const ProcessOutcome outcome = outcomeOf([this] {
        initialize(binaryStl("", differentFacets(4)));
        limitMemory(std::size_t{1} << 30);
        mesh.stats.facetCount = std::numeric_limits<std::int32_t>::max();
        mesh.stats.max = {1.0F, 2.0F, 3.0F};
        mesh.stats.boundingDiameter = 4.0F;
        stl_allocate_facets(mesh);
        if (mesh.facets != nullptr || mesh.stats.allocatedFacetCount != mesh.stats.facetCount)
            throw std::runtime_error("allocated");
        stl_load_facets(mesh, 0, true);
        if (mesh.stats.max.x != 1.0F || mesh.stats.boundingDiameter != 4.0F)
            throw std::runtime_error("loaded");
    });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, survivedStatus) << outcome.standardError;
    const std::string report = "stl_initialize: Cannot allocate memory\n";
    EXPECT_EQ(countOf(outcome.standardError, report), 2) << outcome.standardError;
    if (!underAddressSanitizer) {
        EXPECT_EQ(outcome.standardError, report + report);
    }
}

std::size_t addressSpaceInUse()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * 4096;
}

TEST_F(StlReader, AMissingSecondTableIsNotReported)
{
    if (underAddressSanitizer)
        GTEST_SKIP() << "the sanitizer's own memory makes the limit meaningless";
    constexpr std::int32_t facetCount = 10'000'000;
    const ProcessOutcome outcome = outcomeOf([this] {
        initialize(binaryStl("", differentFacets(4)));
        limitMemory(addressSpaceInUse() + facetCount * sizeof(StlFacet) + (std::size_t{20} << 20));
        mesh.stats.facetCount = facetCount;
        stl_allocate_facets(mesh);
        if (mesh.facets == nullptr || mesh.auxTable != nullptr)
            throw std::runtime_error("the limit does not separate the tables");
    });
    EXPECT_EQ(outcome.status, survivedStatus);
    EXPECT_EQ(outcome.standardError, "");
}

TEST_F(StlReader, WithoutFacetsTheSizeIsComputedEvenWithoutTables)
{
    initialize("solid empty\nendsolid\n");
    mesh.stats.max = {9.0F, 5.0F, 7.0F};
    mesh.stats.min = {1.0F, 2.0F, 2.0F};
    stl_load_facets(mesh, 0, true);
    expectVertex(mesh.stats.size, 8.0F, 3.0F, 5.0F);
}

} // namespace
