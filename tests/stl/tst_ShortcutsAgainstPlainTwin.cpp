// The shortcuts of reader and passes, that is common facets and reading in blocks, and the ways back from
// them, against the plain twin: nothing may differ.
//
// MESHVANE_TWIN_ROUNDS=n repeats the random parts n times with other seeds, and tries all 256 values of every
// byte of a facet if n is more than one.
#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLines.h"
#include "tests/support/Amount.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/StlComparison.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <vector>

namespace {

constexpr std::size_t blockSize = StlBlockReader::blockSize;
constexpr std::size_t facetSize = stlCommonFacetSize;
constexpr std::size_t longestLine = stlLineCapacity - 1;

int rounds() { return amount("MESHVANE_TWIN_ROUNDS", 1); }

template <typename T, std::size_t n>
const T &oneOf(OddMeshText &odd, const T (&values)[n])
{
    return values[odd.below(static_cast<int>(n))];
}

const char *const oddNumbers[] = {
    " 1.00000000E+100",
    "-1.00000000E-100",
    " 9.99999999E+99",
    " 1.00000000E+99",
    "-1.00000000E-99",
    " 1.00000000E-15",
    " 1.00000000E+31",
    "-0.00000000E+00",
    " INF",
    "            NAN",
    "-NAN",
    "+1.00000000E+00",
    " 1.0000000E+000",
    " 1.000000000E+00",
    " 1.00000000e+00",
    " 1.00000000E 00",
    " 1,00000000E+00",
    "01.00000000E+00",
    " 1.00000000E+0",
    "",
    "1",
    "-2.5",
    "0x1.8p1",
    "1e",
    "1.5abc",
    " 1.00000000E+0A",
    "\t1.0000000E+00",
    " .123456789E+00",
    " 10.0000000E+00",
    " 3.40282347E+38",
    " 3.40282357E+38",
    " 1.17549435E-38",
    " 1.00000000E-45",
    "-1.40129846E-45",
    " 1.00000006E+00",
};

std::string commonNumber(OddMeshText &odd)
{
    const int exponent = odd.oneIn(6) ? odd.below(76) - 38 : odd.below(8) - 4;
    char text[40];
    std::snprintf(text, sizeof text, "%c%d.%08dE%c%02d", odd.oneIn(2) ? '-' : ' ', odd.below(10),
                  odd.below(100000000), exponent < 0 ? '-' : '+', std::abs(exponent));
    return text;
}

std::string commonPoint(OddMeshText &odd)
{
    return commonNumber(odd) + " " + commonNumber(odd) + " " + commonNumber(odd);
}

std::string commonFacet(OddMeshText &odd)
{
    const std::string points[4] = {commonPoint(odd), commonPoint(odd), commonPoint(odd), commonPoint(odd)};
    return asciiFacet({points[0], points[1], points[2], points[3]});
}

// Words and lines as free as the grammar of the passes allows.
std::string freeFacet(OddMeshText &odd)
{
    const char *const end = odd.oneIn(3) ? "\r\n" : "\n";
    const std::string gap = odd.oneIn(3) ? "  " : " ";
    std::string text = gap + "facet " + gap + "normal " + commonPoint(odd) + end + gap + "outer" + end;
    for (int corner = 0; corner < 3; ++corner)
        text += gap + "vertex " + (odd.oneIn(3) ? "1 2 3" : commonPoint(odd)) + end;
    return text + "endloop" + gap + end + "endfacet now" + end;
}

std::size_t numberStart(std::size_t point, std::size_t number)
{
    return stlCommonPointStarts[point] + number * stlCommonNumberStep;
}

std::string facetWithOddNumber(OddMeshText &odd)
{
    std::string facet = commonFacet(odd);
    const auto point = static_cast<std::size_t>(odd.below(4));
    const auto number = static_cast<std::size_t>(odd.below(3));
    return facet.replace(numberStart(point, number), stlFixedNumberSize, oneOf(odd, oddNumbers));
}

const char strayBytes[] = {'\0', '\r', '\n', ' ', '\t', '-', '+',    '0',    '9',    '/',
                           ':',  '.',  ',',  'E', 'e',  'v', '\x7F', '\x80', '\xB0', '\xFF'};

void mutateByte(OddMeshText &odd, std::string &text, std::size_t at)
{
    const char byte =
        odd.oneIn(2) ? oneOf(odd, strayBytes) : static_cast<char>(static_cast<unsigned char>(odd.below(256)));
    const int change = odd.below(4);
    if (change == 0)
        text.insert(at, 1, byte);
    else if (change == 1)
        text.erase(at, 1);
    else
        text[at] = byte;
}

std::string anyFacet(OddMeshText &odd)
{
    switch (odd.below(10)) {
    case 0:
        return freeFacet(odd);
    case 1:
        return facetWithOddNumber(odd);
    case 2:
        return withCarriageReturns(commonFacet(odd));
    case 3:
        return withCarriageReturns(facetWithOddNumber(odd));
    default:
        return commonFacet(odd);
    }
}

PassInput ofText(std::string text)
{
    PassInput input;
    input.text = std::move(text);
    return input;
}

struct Counts {
    int compared = 0;
    int accepted = 0;

    void print(const char *what) const
    {
        std::printf("%s: %d texts compared, %d accepted\n", what, compared, accepted);
    }
};

void compare(const PassInput &input, const plain::Placement &placement, Counts &counts)
{
    Verdict verdict;
    const bool scanned = compareScan(verdict, input);
    const bool rewritten = compareRewrite(verdict, input, placement);
    EXPECT_TRUE(verdict.isEmpty()) << verdict.text();
    EXPECT_EQ(scanned, rewritten) << "both passes accept the same texts";
    ++counts.compared;
    counts.accepted += scanned ? 1 : 0;
}

bool failed() { return ::testing::Test::HasFailure(); }

plain::Placement turned()
{
    plain::Placement placement;
    placement.rotX.m[0][0] = 1.0;
    placement.rotX.m[1][1] = 0.6;
    placement.rotX.m[1][2] = -0.8;
    placement.rotX.m[2][1] = 0.8;
    placement.rotX.m[2][2] = 0.6;
    return placement;
}

plain::Placement scaled()
{
    plain::Placement placement;
    placement.scale = {2.54, -0.3, 1e-3};
    placement.offsetBefore = {1.0, -2.0, 0.5};
    return placement;
}

// Changes, inserts and removes a byte at every position of a facet between two others.
class EveryByteOfAFacet {
public:
    void run()
    {
        for (std::size_t at = 0; at < facetSize && !failed(); ++at) {
            SCOPED_TRACE("byte " + std::to_string(at));
            m_at = at;
            tryReplacing(1, "");
            if (rounds() > 1)
                tryAllBytes();
            else
                tryStrayBytes();
        }
    }

    const Counts &counts() const { return m_counts; }

private:
    void tryStrayBytes()
    {
        for (const char byte : strayBytes)
            tryByte(byte);
    }

    void tryAllBytes()
    {
        for (int byte = 0; byte < 256; ++byte)
            tryByte(static_cast<char>(static_cast<unsigned char>(byte)));
    }

    void tryByte(char byte)
    {
        tryReplacing(1, {byte});
        if (m_counts.compared % 3 == 0)
            tryReplacing(0, {byte});
    }

    void tryReplacing(std::size_t oldBytes, const std::string &newBytes)
    {
        std::string text = m_text;
        text.replace(m_start + m_at, oldBytes, newBytes);
        compare(ofText(text), m_counts.compared % 2 == 0 ? m_turned : m_scaled, m_counts);
    }

    const plain::Placement m_turned = turned();
    const plain::Placement m_scaled = scaled();
    OddMeshText m_odd{1};
    const std::string m_label = "solid  (null)\n";
    const std::string m_text =
        m_label + commonFacet(m_odd) + commonFacet(m_odd) + commonFacet(m_odd) + "endsolid  \n";
    const std::size_t m_start = m_label.size() + facetSize;
    std::size_t m_at = 0;
    Counts m_counts;
};

TEST(ShortcutsAgainstPlainTwin, FacetsMadeHereAreCommonOnesOfTheProduct)
{
    OddMeshText odd(0);
    const std::string facet = commonFacet(odd);
    ASSERT_EQ(facet.size(), facetSize);
    EXPECT_TRUE(stlHasCommonLayout(facet.data()));
    for (const std::size_t start : stlCommonPointStarts) {
        double numbers[3];
        EXPECT_TRUE(stlReadCommonPoint(facet.data() + start, numbers));
    }
}

TEST(ShortcutsAgainstPlainTwin, CommonFacetWithOneByteChanged)
{
    EveryByteOfAFacet places;
    places.run();
    places.counts().print("one byte changed");
    EXPECT_GT(places.counts().compared, 6000);
    EXPECT_GT(places.counts().accepted, places.counts().compared / 20);
    EXPECT_LT(places.counts().accepted, places.counts().compared);
}

// Runs the cases in turn, each with its own seed, until one fails.
template <typename Case>
void forSeeds(std::uint64_t firstSeed, int cases, Case &&runCase)
{
    const int all = cases * rounds();
    for (int i = 0; i < all && !failed(); ++i) {
        const std::uint64_t seed = firstSeed + static_cast<std::uint64_t>(i);
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddMeshText odd(seed);
        runCase(odd);
    }
}

std::string mixedText(OddMeshText &odd)
{
    std::string text = odd.oneIn(3) ? "\r\n" : "solid  (null)\n";
    for (int i = odd.below(12); i > 0; --i)
        text += anyFacet(odd);
    if (!odd.oneIn(4))
        text += "endsolid  \n";
    if (odd.oneIn(4))
        text += commonFacet(odd); // after "endsolid" it is not read
    if (odd.oneIn(3))
        mutateByte(odd, text, static_cast<std::size_t>(odd.below(static_cast<int>(text.size()))));
    if (odd.oneIn(8))
        text.resize(static_cast<std::size_t>(odd.below(static_cast<int>(text.size()) + 1)));
    return text;
}

TEST(ShortcutsAgainstPlainTwin, CommonFacetsAmongOddOnes)
{
    Counts counts;
    forSeeds(5'000'000, 8000, [&counts](OddMeshText &odd) {
        PassInput input = ofText(mixedText(odd));
        input.isPipe = odd.oneIn(4);
        if (odd.oneIn(8))
            input.start = odd.below(static_cast<int>(input.text.size()) + 1);
        compare(input, odd.placement(), counts);
    });
    counts.print("common and odd facets");
    EXPECT_GT(counts.accepted, counts.compared / 5);
    EXPECT_LT(counts.accepted, counts.compared - counts.compared / 5);
}

// Numbers that leave the common form only when they are transformed: three-digit exponents, infinities, NaN.
TEST(ShortcutsAgainstPlainTwin, CommonFacetsThatDoNotStayCommon)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double steps[] = {
        1e95,   1e-95, 1e70, 1e-70, 1e300,    1e-320,    1e99,
        -1e100, 1e-99, 0.0,  -0.0,  infinity, -infinity, std::numeric_limits<double>::quiet_NaN()};
    Counts counts;
    forSeeds(6'000'000, 3000, [&](OddMeshText &odd) {
        plain::Placement placement = odd.placement();
        placement.scale = {oneOf(odd, steps), odd.oneIn(2) ? 1.0 : oneOf(odd, steps), 1.0};
        if (odd.oneIn(2))
            placement.offsetAfter.z = oneOf(odd, steps);
        if (odd.oneIn(3))
            placement.offsetBefore.y = oneOf(odd, steps);
        std::string text = "solid\n";
        for (int i = odd.below(5); i >= 0; --i)
            text += odd.oneIn(6) ? anyFacet(odd) : commonFacet(odd);
        compare(ofText(text + "endsolid\n"), placement, counts);
    });
    counts.print("numbers that do not stay common");
    EXPECT_GT(counts.accepted, counts.compared / 2);
}

std::string replaced(std::string text, const std::string &old, const std::string &replacement)
{
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + replacement.size()))
        text.replace(at, old.size(), replacement);
    return text;
}

// A few corners that recur: ordinary ones, ones that the kernels decline at once or only
// when they are transformed, and ones that do not convert.
std::vector<std::string> fewPoints(OddMeshText &odd)
{
    const char *const oddPoints[] = {
        " 0.00000000E+00  0.00000000E+00  0.00000000E+00", "-0.00000000E+00  0.00000000E+00  0.00000000E+00",
        " 1.00000000E-15  2.00000000E+00  3.00000000E+00", " 9.99999999E+98 -9.99999999E+98  1.00000000E+00",
        " 1.00000000E+00            INF -1.00000000E+00",  "            NAN  1.00000000E+00  1.00000000E+00",
        " 1.00000000E+00 abcdefghijklmno  1.00000000E+00", " 1.00000000E+00  2.00000000E+00               x"};
    std::vector<std::string> points;
    for (int i = 2 + odd.below(4); i > 0; --i)
        points.push_back(commonPoint(odd));
    for (int i = odd.below(4); i > 0; --i)
        points.emplace_back(oneOf(odd, oddPoints));
    return points;
}

std::string facetsOfFewPoints(OddMeshText &odd)
{
    const std::vector<std::string> points = fewPoints(odd);
    const auto point = [&]() -> const std::string & {
        return points[static_cast<std::size_t>(odd.below(static_cast<int>(points.size())))];
    };
    std::string text;
    for (int i = 2 + odd.below(20); i > 0; --i) {
        const std::string facet = asciiFacet({point(), point(), point(), point()});
        text += odd.oneIn(10) ? withCarriageReturns(facet) : facet;
    }
    return text;
}

TEST(ShortcutsAgainstPlainTwin, CornersThatComeBackAmongOddOnes)
{
    Counts counts;
    forSeeds(9'500'000, 3000, [&counts](OddMeshText &odd) {
        plain::Placement placement = odd.placement();
        if (odd.oneIn(3))
            placement.scale = {1e90, 1.0, 1.0};
        compare(ofText("solid\n" + facetsOfFewPoints(odd) + "endsolid\n"), placement, counts);
    });
    counts.print("corners that come back");
    EXPECT_GT(counts.accepted, counts.compared / 2);
}

std::size_t nearBorder(OddMeshText &odd, std::size_t border)
{
    return border - 300 + static_cast<std::size_t>(odd.below(600));
}

constexpr std::size_t commonBytes = 4000; // of common facets before a border

// A facet of few numbers and many blanks: it fills blocks without costing the twin much time.
std::string wideFacet()
{
    const std::string end = std::string(longestLine - 30, ' ') + "\n";
    std::string text = "facet normal 0 0 1" + end + "outer loop" + end;
    for (const char *corner : {"vertex 1 2 3", "vertex 4 5 6", "vertex -7 8 -9"})
        text += corner + end;
    return text + "endloop" + end + "endfacet" + end;
}

void addCommonFacets(OddMeshText &odd, std::string &text, std::size_t end)
{
    const std::string facets[] = {commonFacet(odd), commonFacet(odd), commonFacet(odd)};
    for (std::size_t i = 0; text.size() + facetSize <= end; ++i)
        text += facets[i % std::size(facets)];
}

std::string textToBorder(OddMeshText &odd, std::size_t border)
{
    std::string text(static_cast<std::size_t>(odd.below(300)), 's');
    text += "\n";
    const std::string wide = odd.oneIn(10) ? commonFacet(odd) + anyFacet(odd) : wideFacet();
    while (text.size() + wide.size() + commonBytes < border)
        text += wide;
    addCommonFacets(odd, text, nearBorder(odd, border));
    return text;
}

// What is near the border: an odd facet, a long line, a changed byte or the end.
std::string textAroundBorder(OddMeshText &odd)
{
    const int oddity = odd.below(5);
    const bool ends = oddity == 4;
    const std::size_t border = blockSize * (ends || odd.oneIn(10) ? 2U : 1U);
    std::string text = textToBorder(odd, border);
    if (ends && odd.oneIn(2))
        text.resize(border - 1 + static_cast<std::size_t>(odd.below(3)), ' ');
    if (ends)
        return text + (odd.oneIn(3) ? "endsolid\nfacet" : "");
    if (oddity == 0)
        text += facetWithOddNumber(odd);
    else if (oddity == 1)
        text += freeFacet(odd);
    else if (oddity == 2)
        text += "facet normal 1 2 3" + std::string(static_cast<std::size_t>(odd.below(1100)), ' ') + "\n";
    for (int i = 0; i < 4; ++i)
        text += anyFacet(odd);
    text += "endsolid  \n";
    if (odd.oneIn(2))
        mutateByte(odd, text, std::min(nearBorder(odd, border), text.size() - 1));
    return text;
}

// How often a block reader reads on with bytes left over if its bytes are taken line by line.
std::size_t refillsWithBytesLeft(const std::string &text)
{
    const Stream in = streamOf(text);
    StlBlockReader blocks(in.get());
    std::size_t refills = 0;
    std::size_t left = 0; // bytes seen and not taken
    for (std::string_view bytes = blocks.ahead(longestLine); !bytes.empty();
         bytes = blocks.ahead(longestLine)) {
        refills += left > 0 && bytes.size() > left ? 1U : 0U;
        const std::size_t line = std::min({bytes.find('\n'), bytes.size() - 1, longestLine - 1}) + 1;
        blocks.take(line);
        left = bytes.size() - line;
    }
    return refills;
}

void expectBlockBorders(const std::string &text)
{
    EXPECT_GT(text.size(), StlBlockReader::blockSize);
    EXPECT_EQ(refillsWithBytesLeft(text), (text.size() - 1) / StlBlockReader::blockSize);
}

TEST(ShortcutsAgainstPlainTwin, TemporaryFilesWithBlockBorders)
{
    Counts counts;
    forSeeds(7'000'000, 200, [&counts](OddMeshText &odd) {
        const std::string text = textAroundBorder(odd);
        expectBlockBorders(text);
        compare(ofText(text), odd.placement(), counts);
    });
    counts.print("block borders");
    EXPECT_GT(counts.accepted, counts.compared / 10);
    EXPECT_LT(counts.accepted, counts.compared);
}

// The reader of ASCII files gets the number of facets from the number of lines, wherever these are; so they
// may all follow the facets.
std::string linesFor(std::size_t facets)
{
    std::string text;
    for (std::size_t i = 0; i < facets; ++i)
        text += "line\nline\nline\nline\nline\nline\nline\n";
    return text;
}

// A facet for the reader of ASCII files, which takes any white space.
std::string asciiInputFacet(OddMeshText &odd)
{
    const std::string facet = odd.oneIn(8) ? facetWithOddNumber(odd) : commonFacet(odd);
    switch (odd.below(12)) {
    case 0:
        return withCarriageReturns(facet);
    case 1:
        return replaced(facet, "\n", " ");
    case 2:
        return replaced(facet, " ", "\t");
    case 3:
        return replaced(facet, "  ", " ");
    case 4:
        return replaced(facet, "endfacet", "endfacet\nendsolid a\nsolid b");
    case 5:
        return replaced(facet, "endfacet\n", "endfacet");
    case 6:
        return replaced(facet, "normal", std::string(static_cast<std::size_t>(odd.below(1500)), 'n'));
    case 7:
        return replaced(facet, "\n", "\n\n  ");
    default:
        return facet;
    }
}

std::string asciiInput(OddMeshText &odd)
{
    std::string text = odd.oneIn(5) ? "\n" : "solid\n";
    const int facets = 1 + odd.below(10);
    for (int i = 0; i < facets; ++i)
        text += asciiInputFacet(odd);
    if (odd.oneIn(2))
        text += "endsolid\n";
    if (odd.oneIn(3)) {
        const std::size_t at = static_cast<std::size_t>(odd.below(static_cast<int>(text.size())));
        // A byte above 127 near the start would make the file a binary one.
        odd.oneIn(2) ? text.insert(at, 1, static_cast<char>(oneOf(odd, strayBytes) & 0x7F))
                     : text.erase(at, 1);
    }
    return text + (odd.oneIn(2) ? linesFor(static_cast<std::size_t>(odd.below(4))) : "");
}

void expectSameReading(MeshTwins &meshes, const std::string &bytes)
{
    Verdict verdict;
    meshes.compareReading(verdict, bytes);
    EXPECT_TRUE(verdict.isEmpty()) << verdict.text();
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesWithCommonFacets)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    forSeeds(8'000'000, 2500, [&meshes](OddMeshText &odd) { expectSameReading(meshes, asciiInput(odd)); });
    std::printf("ASCII files: %d read, %d facets\n", meshes.filesRead(), meshes.facetsRead());
    EXPECT_GT(meshes.filesRead(), 2400);
    EXPECT_GT(meshes.facetsRead(), 10000);
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesWithCornersThatComeBack)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    forSeeds(9'600'000, 1500, [&meshes](OddMeshText &odd) {
        expectSameReading(meshes, "solid\n" + facetsOfFewPoints(odd) + "endsolid\n");
    });
    EXPECT_GT(meshes.facetsRead(), 10000);
}

// A binary file with the bits of a few corners, of which some do not have the common form.
TEST(ShortcutsAgainstPlainTwin, BinaryFilesWithCornersThatComeBack)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float numbers[] = {
        0.0F,  -0.0F,     1.5F,     -2.25F,  1e-40F,
        3e38F, -infinity, infinity, -1e-30F, std::numeric_limits<float>::quiet_NaN()};
    forSeeds(9'700'000, 600, [&](OddMeshText &odd) {
        std::vector<BinaryFacet> facets = differentFacets(4 + odd.below(30));
        const int few = odd.oneIn(2) ? 5 : 10;
        for (std::size_t i = 1; i < facets.size(); ++i) {
            for (float &number : facets[i].numbers)
                number = numbers[odd.below(few)];
        }
        expectSameReading(meshes, binaryStl("", facets));
    });
    EXPECT_GT(meshes.filesRead(), 500);
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesWithOneByteOfAFacetChanged)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    OddMeshText odd(2);
    const std::string before = "solid\n" + commonFacet(odd);
    const std::string facet = commonFacet(odd);
    const std::string after = commonFacet(odd) + "endsolid\n";
    constexpr char fewBytes[] = {'\0', '\r', '\n', ' ', '.', '7', 'E', '-', '+', 'x'};
    for (std::size_t at = 0; at < facet.size() && !failed(); ++at) {
        for (const char byte : fewBytes) {
            SCOPED_TRACE("byte " + std::to_string(at));
            std::string text = before;
            text.append(facet).append(after)[before.size() + at] = byte;
            expectSameReading(meshes, text);
        }
    }
    EXPECT_EQ(meshes.filesRead(), 2840);
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesWithOneNumberBeyondTheFloats)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    OddMeshText odd(3);
    const std::string before = "solid\n" + commonFacet(odd);
    const std::string facet = commonFacet(odd);
    const std::string after = commonFacet(odd) + "endsolid\n";
    for (std::size_t point = 0; point < 4; ++point) {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t at = numberStart(point, i);
            for (const char *number : {" 9.00000000E+38", "-1.00000000E-39", " 1.00000000E-46"}) {
                SCOPED_TRACE(number + (" at " + std::to_string(at)));
                std::string text = before + facet;
                text.replace(before.size() + at, stlFixedNumberSize, number).append(after);
                expectSameReading(meshes, text);
            }
        }
    }
    EXPECT_EQ(meshes.filesRead(), 36);
    EXPECT_EQ(meshes.facetsRead(), 3 * 36);
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesCutAtAnyByte)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    OddMeshText odd(4);
    // Lines of blanks count but hold nothing, so both facets are read wherever the text ends.
    const std::string before = "solid\n" + replaced(linesFor(2), "line", "    ");
    const std::string text = commonFacet(odd) + commonFacet(odd) + "endsolid\n";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        SCOPED_TRACE(size);
        expectSameReading(meshes, before + text.substr(0, size));
    }
    EXPECT_GE(meshes.facetsRead(), 2 * static_cast<int>(text.size()));
}

// The blanks in the label line only bring the facets near the border.
std::string bigAsciiInput(OddMeshText &odd)
{
    const std::size_t border = blockSize * (odd.oneIn(8) ? 2U : 1U);
    std::string text(odd.oneIn(10) ? 0 : border - commonBytes, ' ');
    text += "\n";
    const std::size_t labelSize = text.size();
    addCommonFacets(odd, text, nearBorder(odd, border));
    const std::size_t facets = (text.size() - labelSize) / facetSize;
    const bool oneLine = odd.oneIn(4);
    if (oneLine)
        std::replace(text.begin() + static_cast<std::ptrdiff_t>(labelSize), text.end(), '\n', ' ');
    if (odd.oneIn(3))
        text += "facet " + std::string(static_cast<std::size_t>(odd.below(3000)), 'n') + " 1 2 3\n";
    else if (odd.oneIn(3)) // a number longer than a block
        text += "facet normal " + std::string(odd.oneIn(2) ? blockSize + 10 : 10000, '0') + " 2 3\n";
    for (int i = 0; i < 6; ++i)
        text += asciiInputFacet(odd);
    return text + linesFor(2 + (oneLine ? facets : 0));
}

TEST(ShortcutsAgainstPlainTwin, AsciiFilesWithBlockBorders)
{
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    forSeeds(9'000'000, 100, [&meshes](OddMeshText &odd) {
        const std::string bytes = bigAsciiInput(odd);
        expectBlockBorders(bytes);
        expectSameReading(meshes, bytes);
    });
    std::printf("big ASCII files: %d read, %d facets\n", meshes.filesRead(), meshes.facetsRead());
    EXPECT_GT(meshes.filesRead(), 95);
    EXPECT_GT(meshes.facetsRead(), 2000);
}

TEST(ShortcutsAgainstPlainTwin, BinaryFilesWithBlockBorders)
{
    constexpr std::size_t binaryFacetSize = 50;
    static_assert(blockSize % binaryFacetSize != 0, "no facet ends at the first border");
    const TemporaryFolder folder;
    MeshTwins meshes(ProcessEnd::inAChild);
    for (const std::size_t blocks : {1U, 2U}) {
        const std::size_t facets = blocks * blockSize / binaryFacetSize + 10;
        expectSameReading(meshes, binaryStl("", differentFacets(static_cast<int>(facets))));
        EXPECT_GT(static_cast<std::size_t>(meshes.product().stats.facetCount) * binaryFacetSize,
                  blocks * blockSize);
    }
    EXPECT_EQ(meshes.filesRead(), 2);
}

} // namespace
