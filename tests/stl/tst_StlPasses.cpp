#include "stl/StlLimits.h"
#include "stl/StlPasses.h"
#include "tests/stl/PassCalls.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// One facet with the numbers of its three vertex lines; those of the normal are large.
std::string meshOf(const std::string &a, const std::string &b, const std::string &c)
{
    return label + "facet normal 1e30 -1e30 1e30\nouter\nvertex" + a + "\nvertex" + b + "\nvertex" + c +
           "\n" + facetEnd + endLine;
}

using Extents = std::vector<double>;
const Extents noExtents = {1e25, -1e25, 1e25, -1e25, 1e25, -1e25};

// A point as the rewriting pass writes it.
std::string point(const char *before, double x, double y, double z)
{
    char text[100];
    std::snprintf(text, sizeof text, "%s %15.8E %15.8E %15.8E\n", before, x, y, z);
    return text;
}

std::string normal(double x, double y, double z) { return point("  facet normal", x, y, z); }
std::string vertex(double x, double y, double z) { return point("      vertex", x, y, z); }

// What both passes accept

TEST(StlPasses, AWellFormedFileSucceeds)
{
    const std::string text = label + facet + facet + endLine;
    const Scan scan = scanOf(text);
    EXPECT_EQ(scan.result, 0);
    EXPECT_EQ(scan.message, "before");
    EXPECT_EQ(scan.extents, (Extents{-4, 7, 2, 8, -9, 6}));

    const Rewrite rewrite = rewriteOf(text);
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.message, "before" + totals(16, 2));
    EXPECT_EQ(rewrite.output, text);
}

TEST(StlPasses, FilesThatEndEarlyOrLateSucceed)
{
    struct Row {
        const char *situation;
        std::string text;
        Extents extents;
        std::string output;
        int lines;
        int triangles;
    };
    const Extents facetExtents = {-4, 7, 2, 8, -9, 6};
    const Row rows[] = {
        {"label only", label, noExtents, label, 1, 0},
        {"label without line feed", "solid", noExtents, "solid", 1, 0},
        {"endsolid after the label", label + endLine, noExtents, label + endLine, 2, 0},
        {"endsolid without line feed", label + "endsolid", noExtents, label + "endsolid\n", 2, 0},
        {"endsolid without line feed, blanks kept", label + "  endsolid %s%n ", noExtents,
         label + "  endsolid %s%n \n", 2, 0},
        {"no endsolid", label + facet, facetExtents, label + facet, 8, 1},
        {"two facets and no endsolid", label + facet + facet, facetExtents, label + facet + facet, 15, 2},
        {"no line feed after endfacet", label + facetStart + corners + "    endloop\n  endfacet",
         facetExtents, label + facet, 8, 1},
        {"rubbish after endsolid", label + facet + endLine + "rubbish\n" + facet, facetExtents,
         label + facet + endLine, 9, 1},
        {"a second solid after endsolid", label + endLine + label + facet, noExtents, label + endLine, 2, 0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        const Scan scan = scanOf(row.text);
        EXPECT_EQ(scan.result, 0);
        EXPECT_EQ(scan.message, "before");
        EXPECT_EQ(scan.extents, row.extents);
        const Rewrite rewrite = rewriteOf(row.text);
        EXPECT_EQ(rewrite.result, 0);
        EXPECT_EQ(rewrite.message, "before" + totals(row.lines, row.triangles));
        EXPECT_EQ(rewrite.output, row.output);
    }
}

TEST(StlPasses, OtherLayoutsOfAFacetAreAcceptedAndKept)
{
    const Rewrite rewrite = rewriteOf(label + "facet    normal\n"
                                              "outer space and more\n"
                                              "   vertex    1    2    3    rest\n"
                                              "vertex 4 5 6\n"
                                              "vertex 7 8 9\n"
                                              "   endloop rest\n"
                                              " endfacet   \n"
                                              " endsolid x\n");
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.output, label + "facet    normal\nouter space and more\n" + vertex(1, 2, 3) +
                                  vertex(4, 5, 6) + vertex(7, 8, 9) +
                                  "   endloop rest\n endfacet   \n endsolid x\n");
}

// What both passes refuse

TEST(StlPasses, ALineThatIsMissingOrWrongEndsBothPassesWithTheirMessages)
{
    struct Row {
        std::string good; // after the label line
        const char *line;
        const char *scanMessage;
        const char *applyMessage;
    };
    const Row rows[] = {
        {"", "rubbish\n", "\nLine 2. Not facet: rubbish\n", "Line 2. Not facet: rubbish\n"},
        {facetStart, "", "\nError at line 3\n", "Error at line 3\n"},
        {facet, "outer\n", "\nLine 9. Not facet: outer\n", "Line 9. Not facet: outer\n"},
        {facet + facetStart + corners + "    endloop\n", "x\n", "\nLine 15. Not endfacet: x\n",
         "\nLine 15. Not endfacet: x\n"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.applyMessage);
        const Scan scan = scanOf(label + row.good + row.line);
        EXPECT_EQ(scan.result, -1);
        EXPECT_EQ(scan.message, row.scanMessage);
        const Rewrite rewrite = rewriteOf(label + row.good + row.line);
        EXPECT_EQ(rewrite.result, -1);
        EXPECT_EQ(rewrite.message, row.applyMessage);
        EXPECT_EQ(rewrite.output, label + row.good);
    }
}

TEST(StlPasses, WithoutALabelLineOnlyTheScanHasAMessage)
{
    const Stream empty = streamOf("");
    for (std::FILE *in : {empty.get(), static_cast<std::FILE *>(nullptr)}) {
        const Scan scan = scanOf(in);
        EXPECT_EQ(scan.result, -1);
        EXPECT_EQ(scan.message, "\nError reading stl file\n");
        EXPECT_EQ(scan.extents, noExtents);
        const Rewrite rewrite = rewriteOf(in);
        EXPECT_EQ(rewrite.result, -1);
        EXPECT_EQ(rewrite.message, "before");
        EXPECT_EQ(rewrite.output, "");
    }
}

// Lines

TEST(StlPasses, TheLabelLineIsCopiedAsItIs)
{
    for (const char *anyLabel :
         {"\n", "\r\n", "facet normal\n", "endsolid\n", "100%s%n\n", "\t label\r\r\n"}) {
        SCOPED_TRACE(anyLabel);
        EXPECT_EQ(scanOf(anyLabel + endLine).result, 0);
        const Rewrite rewrite = rewriteOf(anyLabel + endLine);
        EXPECT_EQ(rewrite.output, anyLabel + endLine);
        EXPECT_EQ(rewrite.message, "before" + totals(2, 0));
    }
}

TEST(StlPasses, CarriageReturnsAtLineEndsAreDroppedExceptInTheLabel)
{
    const std::string text = "label\r\n"
                             "facet normal 0 0 1\r\nouter loop\r\nvertex 1 2 3\r\nvertex 4 5 6\r\n"
                             "vertex 7 8 9\r\nendloop\r\nendfacet\r\nendsolid  \r\n";
    EXPECT_EQ(scanOf(text).extents, (Extents{1, 7, 2, 8, 3, 9}));
    EXPECT_EQ(rewriteOf(text).output, "label\r\nfacet normal 0 0 1\nouter loop\n" + vertex(1, 2, 3) +
                                          vertex(4, 5, 6) + vertex(7, 8, 9) +
                                          "endloop\nendfacet\nendsolid  \n");
}

TEST(StlPasses, EachPieceOfALongLineCountsAsALine)
{
    const std::string longest(stlLongestLine, 'x');
    const Rewrite rewrite = rewriteOf(longest + "\n" + endLine);
    EXPECT_EQ(rewrite.message, "Line 2. Not facet: \n");
    EXPECT_EQ(rewrite.output, longest);
    EXPECT_EQ(rewriteOf(longest + "endsolid\n").output, longest + "endsolid\n");

    const std::string start = "vertex 1 2 3";
    const std::string blanks(stlLongestLine - start.size(), ' ');
    EXPECT_EQ(scanOf(label + facetStart + start + blanks + "vertex 4 5 6\nvertex 7 8 9\n" + facetEnd).extents,
              (Extents{1, 7, 2, 8, 3, 9}))
        << "the rest of the line is the next corner";
}

TEST(StlPasses, WhatFollowsAZeroByteInALineIsNotCopied)
{
    const std::string zero(1, '\0');
    EXPECT_EQ(rewriteOf("so" + zero + "lid\n" + endLine).output, "so" + endLine);
    EXPECT_EQ(rewriteOf(label + "endsolid" + zero + "rest\n").output, label + "endsolid\n");
}

// Streams

TEST(StlPasses, TheScanReadsFromWhereTheStreamStandsToTheEndsolidLine)
{
    const std::string skipped = "rubbish\n";
    const std::string whole = skipped + label + facet + endLine;
    for (const std::size_t more : {0U, 20000U}) {
        const Stream in = streamOf(whole + std::string(more, 'x'));
        ASSERT_EQ(std::fseek(in.get(), static_cast<long>(skipped.size()), SEEK_SET), 0);
        const Scan scan = scanOf(in.get());
        EXPECT_EQ(scan.result, 0);
        EXPECT_EQ(scan.extents, (Extents{-4, 7, 2, 8, -9, 6}));
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(whole.size()));
    }
}

TEST(StlPasses, TheRewriteWritesWhereTheOutputStands)
{
    const Stream in = streamOf(label + endLine);
    const Stream out = streamOf("");
    std::fputs("kept\n", out.get());
    char message[stlMessageCapacity] = "";
    EXPECT_EQ(apply(message, in.get(), out.get(), {}), 0);
    std::fputs("more\n", out.get());
    EXPECT_EQ(bytesOf(out), "kept\n" + label + endLine + "more\n");
}

// Extents

TEST(StlPasses, ExtentsOfThreeCorners)
{
    struct Row {
        const char *situation;
        std::string first, second, third;
        Extents extents;
    };
    const Row rows[] = {
        {"every corner counts", " 1 2 3", " -4 50 6", " 7 8 -9", {-4, 7, 2, 50, -9, 6}},
        {"one point", " 5 5 5", " 5 5 5", " 5 5 5", {5, 5, 5, 5, 5, 5}},
        {"all below zero", " -1 -2 -3", " -4 -5 -6", " -7 -8 -9", {-7, -1, -8, -2, -9, -3}},
        {"doubles", " 0.1 1 1", " 0.1 1 1", " 0.1 1 1", {0.1, 0.1, 1, 1, 1, 1}},
        {"all above the initial minimum",
         " 0 1e300 1",
         " 0 1e300 1",
         " 0 1e300 1",
         {0, 0, 1e25, 1e300, 1, 1}},
        {"all below the initial maximum",
         " -1e26 1 1",
         " -1e26 1 1",
         " -1e26 1 1",
         {-1e26, -1e25, 1, 1, 1, 1}},
        {"infinities", " inf 2 3", " -INF 2 3", " 7 2 3", {-infinity, infinity, 2, 2, 3, 3}},
        {"a NaN changes nothing", " 1 2 3", " 4 nan 6", " 7 8 -NaN", {1, 7, 2, 8, 3, 6}},
        {"only NaNs", " nan nan nan", " nan nan nan", " nan nan nan", noExtents},
        {"two numbers: the third of the previous corner", " 1 2 3", " 4 5", " 1 2 3", {1, 4, 2, 5, 3, 3}},
        {"one number", " 1 2 3", " 4", " 1 2 3", {1, 4, 2, 2, 3, 3}},
        {"no number", " 1 2 3", "", " 5 5 5", {1, 5, 2, 5, 3, 5}},
        {"third fails in the last corner", " 1 2 3", " 4 5 6", " 7 8 z", {1, 7, 2, 8, 3, 6}},
        {"zero before the first corner", "", " 1 2 3", " 4 5 6", {0, 4, 0, 5, 0, 6}},
        {"zero for the rest of the first corner", " 9", " 1 2 3", " 4 5 6", {1, 9, 0, 5, 0, 6}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        const Scan scan = scanOf(meshOf(row.first, row.second, row.third));
        EXPECT_EQ(scan.result, 0);
        EXPECT_EQ(scan.message, "before");
        EXPECT_EQ(scan.extents, row.extents);
    }
}

TEST(StlPasses, ThePreviousCornerMayBeInThePreviousFacet)
{
    const std::string second =
        "facet normal 9 9 9\nouter\nvertex x\nvertex -100\nvertex\nendloop\nendfacet\n";
    EXPECT_EQ(scanOf(label + facet + second).extents, (Extents{-100, 7, 2, 8, -9, 6}));
}

TEST(StlPasses, AFailedScanKeepsTheExtentsFoundSoFar)
{
    EXPECT_EQ(scanOf(label + "rubbish\n").extents, noExtents);
    EXPECT_EQ(scanOf(label + facetStart + "vertex 1 2 3\nrubbish\n").extents, (Extents{1, 1, 2, 2, 3, 3}));
}

// Rewriting

// The three rewritten vertex lines of a file of one facet; the whole output if it has another shape.
std::string vertexLines(const Rewrite &rewrite)
{
    const std::size_t start = rewrite.output.find("      vertex");
    const std::size_t end = rewrite.output.find("    endloop");
    return start < end && end != std::string::npos ? rewrite.output.substr(start, end - start)
                                                   : rewrite.output;
}

TEST(StlPasses, CornersAreShiftedScaledAndShiftedAgain)
{
    Arguments arguments;
    arguments.xScl = 2.0;
    arguments.yScl = -3.0;
    arguments.zScl = 0.5;
    arguments.xOfsB = 10.0;
    arguments.yOfsB = 20.0;
    arguments.zOfsB = 30.0;
    arguments.xOfsA = 0.25;
    arguments.yOfsA = 0.5;
    arguments.zOfsA = 0.75;
    const Rewrite rewrite = rewriteOf(label + facet + endLine, arguments);
    EXPECT_EQ(rewrite.output, label + facetStart + vertex(22.25, -65.5, 17.25) + vertex(12.25, -74.5, 18.75) +
                                  vertex(34.25, -83.5, 11.25) + facetEnd + endLine);
    EXPECT_EQ(rewrite.message, "before" + totals(9, 1));
}

TEST(StlPasses, TheSumIsTakenBeforeTheProduct)
{
    Arguments arguments;
    arguments.xScl = 1e-308;
    arguments.xOfsB = 1e308;
    EXPECT_EQ(vertexLines(rewriteOf(meshOf(" 1e308 0 0", " -1e308 0 0", " 0 0 0"), arguments)),
              vertex(infinity, 0, 0) + vertex(0, 0, 0) + vertex(1, 0, 0));
}

TEST(StlPasses, NegativeZeroTurnsPositiveInCornersButStaysInCopiedNormals)
{
    const std::string start = label + normal(-0.0, -0.0, 1) + "    outer loop\n";
    const std::string text =
        start + vertex(-0.0, 1, -0.0) + "      vertex -0 -0 -0\n" + vertex(1, -0.0, 1) + facetEnd + endLine;
    EXPECT_EQ(rewriteOf(text).output,
              start + vertex(0, 1, 0) + vertex(0, 0, 0) + vertex(1, 0, 1) + facetEnd + endLine);
}

TEST(StlPasses, OddNumbersAreWrittenAligned)
{
    EXPECT_EQ(vertexLines(rewriteOf(meshOf(" inf -inf nan", " 1e100 -1e100 1e-100", " 0x10 .5 5."))),
              "      vertex             INF            -INF             NAN\n"
              "      vertex 1.00000000E+100 -1.00000000E+100 1.00000000E-100\n"
              "      vertex  1.60000000E+01  5.00000000E-01  5.00000000E+00\n");
}

TEST(StlPasses, ANumberThatFailsTakesTheLastWrittenOneAndTransformsItAgain)
{
    Arguments doubled;
    doubled.xScl = doubled.yScl = doubled.zScl = 2.0;
    EXPECT_EQ(vertexLines(rewriteOf(meshOf(" 1 2 3", " abc", " 5"), doubled)),
              vertex(2, 4, 6) + vertex(4, 8, 12) + vertex(10, 16, 24));

    Arguments shifted;
    shifted.xOfsA = shifted.yOfsA = shifted.zOfsA = 1.0;
    EXPECT_EQ(vertexLines(rewriteOf(meshOf("", " 5 x 5", ""), shifted)),
              vertex(1, 1, 1) + vertex(6, 2, 2) + vertex(7, 3, 3));
}

// Rotation

const RotationMatrix identity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
const RotationMatrix quarterAboutX = {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}};
const RotationMatrix quarterAboutY = {{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}};
const RotationMatrix quarterAboutZ = {{{0, -1, 0}, {1, 0, 0}, {0, 0, 1}}};

std::string turnable(const std::string &normal)
{
    return "label\nfacet normal" + normal +
           "\nouter\nvertex 1 2 3\nvertex 0 0 0\nvertex 0 0 0\nendloop\nendfacet\n";
}

TEST(StlPasses, MatricesInUseTurnCornersAndNormalsInTheOrderXYZ)
{
    struct Row {
        const char *situation;
        RotationMatrix rotX, rotY, rotZ;
        double x, y, z; // what (1, 2, 3) becomes
    };
    const RotationMatrix none;
    const Row rows[] = {
        {"about X", quarterAboutX, none, none, 1, -3, 2},
        {"about Y", none, quarterAboutY, none, -3, 2, 1},
        {"about Z", none, none, quarterAboutZ, -2, 1, 3},
        {"about all", quarterAboutX, quarterAboutY, quarterAboutZ, 3, -2, 1},
        {"about X and Z", quarterAboutX, none, quarterAboutZ, 3, 1, 2},
        {"about Y and Z", none, quarterAboutY, quarterAboutZ, -2, -3, 1},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        Arguments arguments;
        arguments.rotX = row.rotX;
        arguments.rotY = row.rotY;
        arguments.rotZ = row.rotZ;
        EXPECT_EQ(rewriteOf(turnable("  1   2 3"), arguments).output,
                  "label\n" + normal(row.x, row.y, row.z) + "outer\n" + vertex(row.x, row.y, row.z) +
                      vertex(0, 0, 0) + vertex(0, 0, 0) + "endloop\nendfacet\n");
    }
}

TEST(StlPasses, ScalesAndOffsetsComeBeforeTheRotationAndLeaveTheNormalAlone)
{
    Arguments arguments;
    arguments.xScl = 10.0;
    arguments.xOfsB = 1.0;
    arguments.xOfsA = 5.0;
    arguments.rotZ = quarterAboutZ;
    EXPECT_EQ(rewriteOf(turnable(" 1 2 3"), arguments).output, "label\n" + normal(-2, 1, 3) + "outer\n" +
                                                                   vertex(-2, 25, 3) + vertex(0, 15, 0) +
                                                                   vertex(0, 15, 0) + "endloop\nendfacet\n");
}

TEST(StlPasses, ARotationByZeroDegreesStillRewritesNormals)
{
    for (int axis = 0; axis < 3; ++axis) {
        SCOPED_TRACE(axis);
        Arguments arguments;
        (axis == 0 ? arguments.rotX : axis == 1 ? arguments.rotY : arguments.rotZ) = identity;
        const std::string output = rewriteOf(turnable("   -0 1.5abc 0x2 more"), arguments).output;
        EXPECT_EQ(output.substr(0, output.find("outer")), "label\n" + normal(0, 1.5, 2));
    }
}

TEST(StlPasses, WithoutAMatrixInUseNormalsAreNotEvenRead)
{
    Arguments arguments;
    arguments.rotX[0][0] = 1.5;
    arguments.rotY[0][0] = std::numeric_limits<double>::quiet_NaN();
    arguments.rotZ[0][0] = infinity;
    EXPECT_EQ(
        rewriteOf("label\nfacet normal 7 8 9 \nouter\nvertex\nvertex\nvertex\nendloop\nendfacet\n", arguments)
            .output,
        "label\nfacet normal 7 8 9 \nouter\n" + vertex(0, 0, 0) + vertex(0, 0, 0) + vertex(0, 0, 0) +
            "endloop\nendfacet\n");
}

TEST(StlPasses, NormalAndCornersShareTheirWorkingNumbers)
{
    Arguments arguments;
    arguments.xOfsA = 10.0;
    arguments.rotZ = quarterAboutZ;
    const std::string broken = "facet normal x\nouter\nvertex\nvertex 1\nvertex\nendloop\nendfacet\n";
    const std::string end = "endloop\nendfacet\n";
    EXPECT_EQ(rewriteOf("label\n" + broken + broken, arguments).output,
              "label\n" + normal(0, 0, 0) + "outer\n" + vertex(0, 10, 0) + vertex(-10, 11, 0) +
                  vertex(-11, 0, 0) + end + normal(0, -11, 0) + "outer\n" + vertex(11, 10, 0) +
                  vertex(-10, 11, 0) + vertex(-11, 0, 0) + end);
}

TEST(StlPasses, TheNumbersWrittenLastMayBeThoseOfThePreviousFacet)
{
    Arguments arguments;
    arguments.xOfsA = 1.0;
    const std::string text =
        label + facet + "facet normal x\nouter\nvertex x\nvertex 0\nvertex 0\nendloop\nendfacet\n";
    const std::string shifted = rewriteOf(text, arguments).output;
    EXPECT_NE(shifted.find("facet normal x\nouter\n" + vertex(9, 8, -9)), std::string::npos) << shifted;
    arguments.rotZ = quarterAboutZ;
    const std::string turned = rewriteOf(text, arguments).output;
    EXPECT_NE(turned.find(normal(-8, -8, -9) + "outer\n" + vertex(8, -7, -9)), std::string::npos) << turned;
}

TEST(StlPasses, ManyFacetsAreRewrittenAndCounted)
{
    const std::string text = largeMesh();
    const Rewrite rewrite = rewriteOf(text);
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.message, "before" + totals(7 * manyFacets + 2, manyFacets));
    EXPECT_TRUE(rewrite.output == text);
}

} // namespace
