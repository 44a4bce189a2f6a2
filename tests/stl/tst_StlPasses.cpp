#include "stl/StlPasses.h"
#include "tests/support/FailingStream.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/TextFile.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Scan {
    int result = 99;
    std::string message;
    std::vector<double> extents; // smallest and largest x, y, z
    long position = -1;
};

Scan scanOf(std::FILE *in)
{
    char message[stlMessageCapacity] = "before";
    std::vector<double> e(6, 7.0);
    Scan scan;
    scan.result = stl_scan_extents(message, in, &e[0], &e[1], &e[2], &e[3], &e[4], &e[5]);
    scan.message = message;
    scan.extents = e;
    return scan;
}

Scan scanOf(const std::string &text)
{
    const Stream in = streamOf(text);
    Scan scan = scanOf(in.get());
    scan.position = std::ftell(in.get());
    return scan;
}

struct Arguments {
    double xScl = 1.0, yScl = 1.0, zScl = 1.0;
    double xOfsB = 0.0, yOfsB = 0.0, zOfsB = 0.0;
    double xOfsA = 0.0, yOfsA = 0.0, zOfsA = 0.0;
    RotationMatrix rotX, rotY, rotZ;
};

int apply(char *message, std::FILE *in, std::FILE *out, const Arguments &a)
{
    return stl_apply_pass(message, in, out, a.xScl, a.yScl, a.zScl, a.xOfsB, a.yOfsB, a.zOfsB, a.xOfsA,
                          a.yOfsA, a.zOfsA, a.rotX, a.rotY, a.rotZ);
}

struct Rewrite {
    int result = 99;
    std::string message;
    std::string output;
};

Rewrite rewriteOf(std::FILE *in, const Arguments &arguments = {})
{
    const Stream out = streamOf("");
    char message[stlMessageCapacity] = "before";
    Rewrite rewrite;
    rewrite.result = apply(message, in, out.get(), arguments);
    rewrite.message = message;
    rewrite.output = bytesOf(out);
    return rewrite;
}

Rewrite rewriteOf(const std::string &text, const Arguments &arguments = {})
{
    return rewriteOf(streamOf(text).get(), arguments);
}

RotationMatrix matrixOf(const double (&rows)[3][3])
{
    RotationMatrix matrix;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            matrix[i][j] = rows[i][j];
    return matrix;
}

std::string totals(int lines, int triangles)
{
    return "\nNumber lines read from stl file = " + std::to_string(lines) +
           "\nNumber triangles read from stl file = " + std::to_string(triangles) + "\n";
}

const std::string label = "solid  (null)\n";
const std::string facetStart = "  facet normal  0.00000000E+00  0.00000000E+00  1.00000000E+00\n"
                               "    outer loop\n";
const std::string corners = "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                            "      vertex -4.00000000E+00  5.00000000E+00  6.00000000E+00\n"
                            "      vertex  7.00000000E+00  8.00000000E+00 -9.00000000E+00\n";
const std::string facetEnd = "    endloop\n"
                             "  endfacet\n";
const std::string facet = facetStart + corners + facetEnd;
const std::string endLine = "endsolid  \n";

// One facet with these three vertex lines, without their keyword, as the scan sees it.
std::string meshOf(const std::string &a, const std::string &b, const std::string &c)
{
    return label + facetStart + "vertex" + a + "\nvertex" + b + "\nvertex" + c + "\n" + facetEnd + endLine;
}

using Extents = std::vector<double>;
const Extents noExtents = {1e25, -1e25, 1e25, -1e25, 1e25, -1e25};

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
        {"endsolid without line feed, blanks kept", label + "  endsolid x ", noExtents,
         label + "  endsolid x \n", 2, 0},
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
    const std::string layout = "facet    normal\n"
                               "outer space and more\n"
                               "   vertex    1    2    3    rest\n"
                               "vertex 4 5 6\n"
                               "vertex 7 8 9\n"
                               "endloop\t\n";
    // "endloop\t" is another word than "endloop".
    EXPECT_EQ(rewriteOf(label + layout).message, "Line 7. Not endloop: endloop\t\n");

    const Rewrite rewrite = rewriteOf(label + "facet    normal\n"
                                              "outer space and more\n"
                                              "   vertex    1    2    3    rest\n"
                                              "vertex 4 5 6\n"
                                              "vertex 7 8 9\n"
                                              "   endloop rest\n"
                                              " endfacet   \n"
                                              " endsolid x\n");
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.output, label + "facet    normal\n"
                                      "outer space and more\n"
                                      "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                                      "      vertex  4.00000000E+00  5.00000000E+00  6.00000000E+00\n"
                                      "      vertex  7.00000000E+00  8.00000000E+00  9.00000000E+00\n"
                                      "   endloop rest\n"
                                      " endfacet   \n"
                                      " endsolid x\n");
}

// What both passes refuse

struct Refusal {
    const char *situation;
    std::string text; // after the label line
    std::string scanMessage;
    std::string applyMessage;
    std::string output; // after the label line
};

const std::string lead = "\n";

std::vector<Refusal> refusals()
{
    const std::string oneCorner = corners.substr(0, corners.find('\n') + 1);
    const std::string twoCorners = corners.substr(0, corners.find('\n', oneCorner.size()) + 1);
    const std::string outer = facetStart + corners;
    const std::string loop = outer + "    endloop\n";
    const std::string justFacet = facetStart.substr(0, facetStart.find('\n') + 1);
    // Where both passes say the same.
    const auto both = [](const char *situation, const std::string &text, const std::string &message,
                         const std::string &output) {
        return Refusal{situation, text, message, message, output};
    };
    // Where only the scan starts with a line feed.
    const auto differ = [](const char *situation, const std::string &text, const std::string &message,
                           const std::string &output) {
        return Refusal{situation, text, lead + message, message, output};
    };
    return {
        differ("another first word", "  solid x\n", "Line 2. Not facet:   solid x\n", ""),
        differ("keywords are matched whole", "facets normal\n", "Line 2. Not facet: facets normal\n", ""),
        differ("half a keyword", "face normal\n", "Line 2. Not facet: face normal\n", ""),
        differ("keywords are case-sensitive", "Facet normal\n", "Line 2. Not facet: Facet normal\n", ""),
        differ("endsolid is matched whole", "endsolids\n", "Line 2. Not facet: endsolids\n", ""),
        differ("endsolid is case-sensitive", "ENDSOLID\n", "Line 2. Not facet: ENDSOLID\n", ""),
        differ("a tab before the keyword", "\tfacet normal\n", "Line 2. Not facet: \tfacet normal\n", ""),
        differ("a tab between the keywords", "facet\tnormal\n", "Line 2. Not facet: facet\tnormal\n", ""),
        differ("a tab before endsolid", "\tendsolid\n", "Line 2. Not facet: \tendsolid\n", ""),
        differ("an empty line", "\n", "Line 2. Not facet: \n", ""),
        differ("an empty line with a carriage return", "\r\n", "Line 2. Not facet: \n", ""),
        differ("blanks only", "   \n", "Line 2. Not facet:    \n", ""),
        differ("no line feed at the end", "rubbish", "Line 2. Not facet: rubbish\n", ""),
        differ("the second word is not normal", "facet Normal 0 0 1\n",
               "Line 2. Not normal: facet Normal 0 0 1\n", ""),
        differ("no second word", "facet\n", "Line 2. Not normal: facet\n", ""),
        differ("no second word but blanks", " facet   \n", "Line 2. Not normal:  facet   \n", ""),
        differ("a tab after normal", "facet normal\t0 0 1\n", "Line 2. Not normal: facet normal\t0 0 1\n",
               ""),
        both("no outer line", justFacet, "\nError at line 2\n", justFacet),
        differ("not outer", justFacet + "    Outer loop\n", "Line 3. Not outer:     Outer loop\n", justFacet),
        differ("outer and loop in one word", justFacet + "outerloop\n", "Line 3. Not outer: outerloop\n",
               justFacet),
        differ("an empty line for outer", justFacet + "\n", "Line 3. Not outer: \n", justFacet),
        differ("no first corner", facetStart, "Error at line 3\n", facetStart),
        differ("no second corner", facetStart + oneCorner, "Error at line 4\n", facetStart + oneCorner),
        differ("no third corner", facetStart + twoCorners, "Error at line 5\n", facetStart + twoCorners),
        differ("first corner not vertex", facetStart + "vertices 1 2 3\n",
               "Line 4. Not vertex: vertices 1 2 3\n", facetStart),
        differ("second corner not vertex", facetStart + oneCorner + "    endloop\n",
               "Line 5. Not vertex:     endloop\n", facetStart + oneCorner),
        differ("third corner not vertex", facetStart + twoCorners + "\n", "Line 6. Not vertex: \n",
               facetStart + twoCorners),
        differ("a tab after vertex", facetStart + "vertex\t1 2 3\n", "Line 4. Not vertex: vertex\t1 2 3\n",
               facetStart),
        differ("no endloop line", outer, "Error at line 6\n", outer),
        differ("not endloop", outer + "      vertex 1 2 3\n", "Line 7. Not endloop:       vertex 1 2 3\n",
               outer),
        differ("endloop is matched whole", outer + "endloops\n", "Line 7. Not endloop: endloops\n", outer),
        differ("end and loop apart", outer + "end loop\n", "Line 7. Not endloop: end loop\n", outer),
        both("no endfacet line", loop, "\nError at line 7\n", loop),
        both("not endfacet", loop + "endsolid\n", "\nLine 8. Not endfacet: endsolid\n", loop),
        both("endfacet is matched whole", loop + "endfacet1\n", "\nLine 8. Not endfacet: endfacet1\n", loop),
        both("two carriage returns before the line feed", loop + "endfacet\r\r\n",
             "\nLine 8. Not endfacet: endfacet\r\n", loop),
        differ("second facet: not facet", facet + "outer\n", "Line 9. Not facet: outer\n", facet),
        both("second facet: no outer line", facet + justFacet, "\nError at line 9\n", facet + justFacet),
        differ("second facet: not outer", facet + justFacet + "inner\n", "Line 10. Not outer: inner\n",
               facet + justFacet),
        differ("second facet: no first corner", facet + facetStart, "Error at line 10\n", facet + facetStart),
        differ("second facet: not vertex", facet + facetStart + "x\n", "Line 11. Not vertex: x\n",
               facet + facetStart),
        differ("second facet: no endloop line", facet + outer, "Error at line 13\n", facet + outer),
        differ("second facet: not endloop", facet + outer + "x\n", "Line 14. Not endloop: x\n",
               facet + outer),
        both("second facet: no endfacet line", facet + loop, "\nError at line 14\n", facet + loop),
        both("second facet: not endfacet", facet + loop + "x\n", "\nLine 15. Not endfacet: x\n",
             facet + loop),
    };
}

TEST(StlPasses, EveryBrokenLineHasItsMessageInTheScan)
{
    for (const Refusal &row : refusals()) {
        SCOPED_TRACE(row.situation);
        const Scan scan = scanOf(label + row.text);
        EXPECT_EQ(scan.result, -1);
        EXPECT_EQ(scan.message, row.scanMessage);
    }
}

TEST(StlPasses, EveryBrokenLineHasItsMessageInTheRewriteAndTheOutputUpToThere)
{
    for (const Refusal &row : refusals()) {
        SCOPED_TRACE(row.situation);
        const Rewrite rewrite = rewriteOf(label + row.text);
        EXPECT_EQ(rewrite.result, -1);
        EXPECT_EQ(rewrite.message, row.applyMessage);
        EXPECT_EQ(rewrite.output, label + row.output);
    }
}

TEST(StlPasses, WithoutALabelLineOnlyTheScanSaysSo)
{
    const Scan scan = scanOf(std::string());
    EXPECT_EQ(scan.result, -1);
    EXPECT_EQ(scan.message, "\nError reading stl file\n");
    const Rewrite rewrite = rewriteOf(std::string());
    EXPECT_EQ(rewrite.result, -1);
    EXPECT_EQ(rewrite.message, "before");
    EXPECT_EQ(rewrite.output, "");
}

TEST(StlPasses, ANullStreamIsAnEmptyOne)
{
    const Scan scan = scanOf(nullptr);
    EXPECT_EQ(scan.result, -1);
    EXPECT_EQ(scan.message, "\nError reading stl file\n");
    const Rewrite rewrite = rewriteOf(nullptr);
    EXPECT_EQ(rewrite.result, -1);
    EXPECT_EQ(rewrite.message, "before");
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

TEST(StlPasses, CarriageReturnsAtLineEndsGoExceptInTheLabel)
{
    const std::string text = "label\r\n"
                             "facet normal 0 0 1\r\nouter loop\r\nvertex 1 2 3\r\nvertex 4 5 6\r\n"
                             "vertex 7 8 9\r\nendloop\r\nendfacet\r\nendsolid  \r\n";
    EXPECT_EQ(scanOf(text).extents, (Extents{1, 7, 2, 8, 3, 9}));
    EXPECT_EQ(rewriteOf(text).output, "label\r\n"
                                      "facet normal 0 0 1\nouter loop\n"
                                      "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                                      "      vertex  4.00000000E+00  5.00000000E+00  6.00000000E+00\n"
                                      "      vertex  7.00000000E+00  8.00000000E+00  9.00000000E+00\n"
                                      "endloop\nendfacet\nendsolid  \n");
}

TEST(StlPasses, ALineFeedAfter999CharactersIsALineOfItsOwn)
{
    const std::string x998(998, 'x');
    EXPECT_EQ(rewriteOf(x998 + "\n" + endLine).output, x998 + "\n" + endLine);

    const Rewrite full = rewriteOf(x998 + "x\n" + endLine);
    EXPECT_EQ(full.result, -1);
    EXPECT_EQ(full.message, "Line 2. Not facet: \n");
    EXPECT_EQ(full.output, x998 + "x");
    EXPECT_EQ(scanOf(x998 + "x\n" + endLine).message, "\nLine 2. Not facet: \n");

    const Rewrite alone = rewriteOf(x998 + "x");
    EXPECT_EQ(alone.result, 0);
    EXPECT_EQ(alone.message, "before" + totals(1, 0));
}

TEST(StlPasses, ALongLineIsSeveralLines)
{
    const std::string x999(999, 'x');
    EXPECT_EQ(rewriteOf(x999 + "tail\n" + endLine).message, "Line 2. Not facet: tail\n");
    EXPECT_EQ(rewriteOf(x999 + "facet normal\n").message, "\nError at line 2\n");
    EXPECT_EQ(rewriteOf(x999 + "endsolid\n").output, x999 + "endsolid\n");

    const std::string blanks(999 - 12, ' ');
    const Scan scan = scanOf(label + facetStart + "vertex 1 2 3" + blanks + "\n" + corners);
    EXPECT_EQ(scan.message, "\nLine 5. Not vertex: \n");
    EXPECT_EQ(scanOf(label + facetStart + "vertex 1 2 3" + blanks + "vertex 4 5 6\nvertex 7 8 9\n" + facetEnd)
                  .extents,
              (Extents{1, 7, 2, 8, 3, 9}))
        << "the rest of the line is the next corner";
}

TEST(StlPasses, TheLongestLineFitsIntoTheMessages)
{
    const std::string x999(999, 'x');
    EXPECT_EQ(scanOf(label + x999 + x999).message, "\nLine 2. Not facet: " + x999 + "\n");
    EXPECT_EQ(rewriteOf(label + x999 + x999).message, "Line 2. Not facet: " + x999 + "\n");
}

TEST(StlPasses, APercentSignInALineIsText)
{
    EXPECT_EQ(scanOf(label + "%s%d%n\n").message, "\nLine 2. Not facet: %s%d%n\n");
    EXPECT_EQ(rewriteOf(label + "endsolid %s%d%n\n").output, label + "endsolid %s%d%n\n");
}

TEST(StlPasses, AZeroByteEndsWhatIsSeenOfALine)
{
    const std::string zero(1, '\0');
    const Rewrite labelled = rewriteOf("so" + zero + "lid\n" + endLine);
    EXPECT_EQ(labelled.result, 0);
    EXPECT_EQ(labelled.output, "so" + endLine);
    EXPECT_EQ(rewriteOf(label + "endsolid" + zero + "rest\n").output, label + "endsolid\n");
    EXPECT_EQ(rewriteOf(label + zero + "facet normal\n").message, "Line 2. Not facet: \n");
    EXPECT_EQ(rewriteOf(label + "rub" + zero + "bish\n").message, "Line 2. Not facet: rub\n");
    EXPECT_EQ(scanOf(meshOf(" 1 2 3", " 4 5" + zero + " 6", " 7 8 9")).extents, (Extents{1, 7, 2, 8, 3, 9}));
}

// Stream positions

TEST(StlPasses, TheScanReadsNothingBeyondTheEndsolidLine)
{
    const std::string upToEnd = label + facet + endLine;
    EXPECT_EQ(scanOf(upToEnd + std::string(20000, 'x')).position, static_cast<long>(upToEnd.size()));
    EXPECT_EQ(scanOf(upToEnd).position, static_cast<long>(upToEnd.size()));
}

TEST(StlPasses, TheScanStartsWhereTheStreamStands)
{
    const Stream in = streamOf("rubbish\n" + label + facet + endLine);
    ASSERT_EQ(std::fseek(in.get(), 8, SEEK_SET), 0);
    const Scan scan = scanOf(in.get());
    EXPECT_EQ(scan.result, 0);
    EXPECT_EQ(scan.extents, (Extents{-4, 7, 2, 8, -9, 6}));
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

TEST(StlPasses, AnOutputThatIsFullIsAFailure)
{
    std::string large = label;
    for (int i = 0; i < 10000; ++i)
        large += facet;
    const std::string small = label + facet + endLine;
    for (const std::string &text : {small, label, large}) {
        SCOPED_TRACE(text.size());
        const Stream in = streamOf(text);
        const Stream out = openStream("/dev/full", "w");
        char message[stlMessageCapacity] = "before";
        EXPECT_EQ(apply(message, in.get(), out.get(), {}), -1);
        EXPECT_STREQ(message, "\nError writing stl file\n");
    }
}

TEST(StlPasses, AReadErrorWhereAFacetMayBeginIsAFailure)
{
    const std::string start = label + facet;
    for (const std::string &text : {label, start, start + "endsolid", start + "endso", start + "vert"}) {
        SCOPED_TRACE(text);
        const Scan scan = scanOf(streamFailingAfter(text).get());
        EXPECT_EQ(scan.result, -1);
        EXPECT_EQ(scan.message, "\nError reading stl file\n");
        const Rewrite rewrite = rewriteOf(streamFailingAfter(text).get());
        EXPECT_EQ(rewrite.result, -1);
        EXPECT_EQ(rewrite.message, "\nError reading stl file\n");
    }
}

// The plain passes read with fgets, which drops a line that an error cuts short. They take a read error
// between two facets for the end of the file; there our passes report it instead.
TEST(StlPasses, AReadErrorAtAnyByteEndsBothPassesAsFgetsWould)
{
    const std::string odd = "facet normal 0 0 1\nouter loop\nvertex 1 2 3\nvertex 4 5 6\nvertex 7 8 9\n"
                            "endloop\nendfacet\n";
    const std::string text = label + facet + odd + facet + endLine;
    int betweenFacets = 0;
    for (const auto open : {streamFailingAfter, pipeFailingAfter}) {
        for (std::size_t size = 0; size < text.size(); ++size) {
            SCOPED_TRACE(size);
            const std::string_view readable = std::string_view(text).substr(0, size);

            char message[plain::messageCapacity] = "before";
            plain::Extents extents;
            const int plainScan = plain::scanExtents(message, open(readable).get(), extents);
            const Scan scan = scanOf(open(readable).get());
            EXPECT_EQ(scan.result, -1);
            EXPECT_EQ(scan.message, plainScan == 0 ? "\nError reading stl file\n" : std::string(message));

            char rewriteMessage[plain::messageCapacity] = "before";
            const Stream out = streamOf("");
            const int plainRewrite = plain::applyPass(rewriteMessage, open(readable).get(), out.get(), {});
            const Rewrite rewrite = rewriteOf(open(readable).get());
            EXPECT_EQ(rewrite.result, -1);
            EXPECT_EQ(rewrite.message,
                      plainRewrite == 0 ? "\nError reading stl file\n" : std::string(rewriteMessage));
            EXPECT_EQ(rewrite.output, bytesOf(out));
            betweenFacets += plainRewrite == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(betweenFacets, 0);
    EXPECT_LT(betweenFacets, static_cast<int>(text.size()));
}

TEST(StlPasses, WhatCannotBeReadAfterTheEndsolidLineDoesNotMatter)
{
    const std::string whole = label + facet + endLine;
    for (const char *rest : {"", "more\n", "mo"}) {
        SCOPED_TRACE(rest);
        const std::string text = whole + rest;
        EXPECT_EQ(scanOf(streamFailingAfter(text).get()).result, 0);
        const Rewrite rewrite = rewriteOf(streamFailingAfter(text).get());
        EXPECT_EQ(rewrite.result, 0);
        EXPECT_EQ(rewrite.output, rewriteOf(whole).output);
    }
}

// Extents

TEST(StlPasses, EveryCornerWidensTheExtents)
{
    EXPECT_EQ(scanOf(meshOf(" 1 2 3", " -4 50 6", " 7 8 -9")).extents, (Extents{-4, 7, 2, 50, -9, 6}));
    EXPECT_EQ(scanOf(meshOf(" 5 5 5", " 5 5 5", " 5 5 5")).extents, (Extents{5, 5, 5, 5, 5, 5}));
    EXPECT_EQ(scanOf(meshOf(" -1 -2 -3", " -4 -5 -6", " -7 -8 -9")).extents,
              (Extents{-7, -1, -8, -2, -9, -3}));
}

TEST(StlPasses, NormalsDoNotCountForTheExtents)
{
    const std::string text =
        "label\nfacet normal 100 -100 100\nouter\nvertex 1 1 1\nvertex 1 1 1\nvertex 1 1 1\n"
        "endloop\nendfacet\n";
    EXPECT_EQ(scanOf(text).extents, (Extents{1, 1, 1, 1, 1, 1}));
}

TEST(StlPasses, CoordinatesAreReadAsDoubles)
{
    EXPECT_EQ(scanOf(meshOf(" 0.1 1e300 1", " 0.1 1e300 1", " 0.1 1e300 1")).extents,
              (Extents{0.1, 0.1, 1e25, 1e300, 1, 1}))
        << "the start value 1e25 stands where all coordinates are larger";
    EXPECT_EQ(scanOf(meshOf(" -1e26 1 1", " -1e26 1 1", " -1e26 1 1")).extents,
              (Extents{-1e26, -1e25, 1, 1, 1, 1}));
}

TEST(StlPasses, InfinitiesWidenAndNotANumberChangesNothing)
{
    EXPECT_EQ(scanOf(meshOf(" inf 2 3", " -INF nan 6", " 7 8 -NaN")).extents,
              (Extents{-infinity, infinity, 2, 8, 3, 6}));
    EXPECT_EQ(scanOf(meshOf(" nan nan nan", " nan nan nan", " nan nan nan")).extents, noExtents);
}

TEST(StlPasses, ANumberThatFailsKeepsItselfAndTheRestOfTheCornerBefore)
{
    struct Row {
        const char *situation;
        std::string first, second, third;
        Extents extents;
    };
    const Row rows[] = {
        {"two numbers", " 1 2 3", " 4 5", " 1 2 3", {1, 4, 2, 5, 3, 3}},
        {"one number", " 1 2 3", " 4", " 1 2 3", {1, 4, 2, 2, 3, 3}},
        {"no number", " 1 2 3", "", " 5 5 5", {1, 5, 2, 5, 3, 5}},
        {"second fails, third is not looked at", " 1 2 3", " 4 x 9", " 1 2 3", {1, 4, 2, 2, 3, 3}},
        {"first fails, the others are not looked at", " 1 2 3", " x 9 9", " 1 2 3", {1, 1, 2, 2, 3, 3}},
        {"the value before the last corner's failure", " 1 2 3", " 4 5 6", " 7 8 z", {1, 7, 2, 8, 3, 6}},
        {"zero before the first corner", "", " 1 2 3", " 4 5 6", {0, 4, 0, 5, 0, 6}},
        {"zero for the rest of the first corner", " 9", " 1 2 3", " 4 5 6", {1, 9, 0, 5, 0, 6}},
        {"a number and more in a word", " 1.5abc 2 3", " 1 2 3", " 1 2 3", {1, 1.5, 2, 2, 3, 3}},
        {"a tab keeps two numbers in one word", " 1\t7 2 3", " 1 2 3", " 1 2 3", {1, 1, 2, 2, 3, 3}},
        {"hexadecimal", " 0x10 2 3", " 0x.8p1 2 3", " 1 2 3", {1, 16, 2, 2, 3, 3}},
        {"four numbers", " 1 2 3 99", " 1 2 3", " 1 2 3", {1, 1, 2, 2, 3, 3}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        const Scan scan = scanOf(meshOf(row.first, row.second, row.third));
        EXPECT_EQ(scan.result, 0);
        EXPECT_EQ(scan.message, "before");
        EXPECT_EQ(scan.extents, row.extents);
    }
}

TEST(StlPasses, TheCornerBeforeMayBeInTheFacetBefore)
{
    const std::string second =
        "facet normal 9 9 9\nouter\nvertex x\nvertex -100\nvertex\nendloop\nendfacet\n";
    EXPECT_EQ(scanOf(label + facet + second).extents, (Extents{-100, 7, 2, 8, -9, 6}));
}

TEST(StlPasses, AFailedScanKeepsTheExtentsFoundSoFar)
{
    EXPECT_EQ(scanOf(std::string()).extents, noExtents);
    EXPECT_EQ(scanOf(label + "rubbish\n").extents, noExtents);
    EXPECT_EQ(scanOf(label + facetStart + "vertex 1 2 3\nrubbish\n").extents, (Extents{1, 1, 2, 2, 3, 3}));
}

// Rewriting

// The three rewritten vertex lines of a file of one facet, or the whole output if it has another shape.
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
    EXPECT_EQ(rewrite.output, label + facetStart +
                                  "      vertex  2.22500000E+01 -6.55000000E+01  1.72500000E+01\n"
                                  "      vertex  1.22500000E+01 -7.45000000E+01  1.87500000E+01\n"
                                  "      vertex  3.42500000E+01 -8.35000000E+01  1.12500000E+01\n" +
                                  facetEnd + endLine);
    EXPECT_EQ(rewrite.message, "before" + totals(9, 1));
}

TEST(StlPasses, TheSumIsTakenBeforeTheProduct)
{
    Arguments arguments;
    arguments.xScl = 1e-308;
    arguments.xOfsB = 1e308;
    EXPECT_EQ(vertexLines(rewriteOf(meshOf(" 1e308 0 0", " -1e308 0 0", " 0 0 0"), arguments)),
              "      vertex             INF  0.00000000E+00  0.00000000E+00\n"
              "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
              "      vertex  1.00000000E+00  0.00000000E+00  0.00000000E+00\n");
}

TEST(StlPasses, NegativeZeroTurnsPositiveInCornersButStaysInCopiedNormals)
{
    const std::string text = label +
                             "  facet normal -0.00000000E+00 -0.00000000E+00  1.00000000E+00\n"
                             "    outer loop\n"
                             "      vertex -0.00000000E+00  1.00000000E+00 -0.00000000E+00\n"
                             "      vertex -0 -0 -0\n"
                             "      vertex  1.00000000E+00 -0.00000000E+00  1.00000000E+00\n" +
                             facetEnd + endLine;
    EXPECT_EQ(rewriteOf(text).output, label +
                                          "  facet normal -0.00000000E+00 -0.00000000E+00  1.00000000E+00\n"
                                          "    outer loop\n"
                                          "      vertex  0.00000000E+00  1.00000000E+00  0.00000000E+00\n"
                                          "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                                          "      vertex  1.00000000E+00  0.00000000E+00  1.00000000E+00\n" +
                                          facetEnd + endLine);
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
              "      vertex  2.00000000E+00  4.00000000E+00  6.00000000E+00\n"
              "      vertex  4.00000000E+00  8.00000000E+00  1.20000000E+01\n"
              "      vertex  1.00000000E+01  1.60000000E+01  2.40000000E+01\n");

    Arguments shifted;
    shifted.xOfsA = shifted.yOfsA = shifted.zOfsA = 1.0;
    EXPECT_EQ(vertexLines(rewriteOf(meshOf("", " 5 x 5", ""), shifted)),
              "      vertex  1.00000000E+00  1.00000000E+00  1.00000000E+00\n"
              "      vertex  6.00000000E+00  2.00000000E+00  2.00000000E+00\n"
              "      vertex  7.00000000E+00  3.00000000E+00  3.00000000E+00\n");
}

// Rotation

const RotationMatrix identity = matrixOf({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
const RotationMatrix quarterAboutX = matrixOf({{1, 0, 0}, {0, 0, -1}, {0, 1, 0}});
const RotationMatrix quarterAboutY = matrixOf({{0, 0, -1}, {0, 1, 0}, {1, 0, 0}});
const RotationMatrix quarterAboutZ = matrixOf({{0, -1, 0}, {1, 0, 0}, {0, 0, 1}});

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
        const char *point; // what (1, 2, 3) becomes
    };
    const RotationMatrix none;
    const Row rows[] = {
        {"about X", quarterAboutX, none, none, " 1.00000000E+00 -3.00000000E+00  2.00000000E+00\n"},
        {"about Y", none, quarterAboutY, none, "-3.00000000E+00  2.00000000E+00  1.00000000E+00\n"},
        {"about Z", none, none, quarterAboutZ, "-2.00000000E+00  1.00000000E+00  3.00000000E+00\n"},
        {"about all", quarterAboutX, quarterAboutY, quarterAboutZ,
         " 3.00000000E+00 -2.00000000E+00  1.00000000E+00\n"},
        {"about X and Z", quarterAboutX, none, quarterAboutZ,
         " 3.00000000E+00  1.00000000E+00  2.00000000E+00\n"},
        {"about Y and Z", none, quarterAboutY, quarterAboutZ,
         "-2.00000000E+00 -3.00000000E+00  1.00000000E+00\n"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        Arguments arguments;
        arguments.rotX = row.rotX;
        arguments.rotY = row.rotY;
        arguments.rotZ = row.rotZ;
        const std::string zeros = "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n";
        std::string expected = "label\n  facet normal ";
        expected.append(row.point).append("outer\n      vertex ").append(row.point);
        expected.append(zeros).append(zeros).append("endloop\nendfacet\n");
        EXPECT_EQ(rewriteOf(turnable("  1   2 3"), arguments).output, expected);
    }
}

TEST(StlPasses, ScalesAndOffsetsComeBeforeTheRotationAndSpareTheNormal)
{
    Arguments arguments;
    arguments.xScl = 10.0;
    arguments.xOfsB = 1.0;
    arguments.xOfsA = 5.0;
    arguments.rotZ = quarterAboutZ;
    EXPECT_EQ(rewriteOf(turnable(" 1 2 3"), arguments).output,
              "label\n  facet normal -2.00000000E+00  1.00000000E+00  3.00000000E+00\n"
              "outer\n"
              "      vertex -2.00000000E+00  2.50000000E+01  3.00000000E+00\n"
              "      vertex  0.00000000E+00  1.50000000E+01  0.00000000E+00\n"
              "      vertex  0.00000000E+00  1.50000000E+01  0.00000000E+00\n"
              "endloop\nendfacet\n");
}

TEST(StlPasses, ARotationByNothingStillRewritesNormals)
{
    for (int axis = 0; axis < 3; ++axis) {
        SCOPED_TRACE(axis);
        Arguments arguments;
        (axis == 0 ? arguments.rotX : axis == 1 ? arguments.rotY : arguments.rotZ) = identity;
        EXPECT_EQ(rewriteOf(turnable("   -0 1.5abc 0x2 more"), arguments).output.substr(0, 69),
                  "label\n  facet normal  0.00000000E+00  1.50000000E+00  2.00000000E+00\n");
    }
}

TEST(StlPasses, WithoutAMatrixInUseNormalsAreNotEvenRead)
{
    Arguments arguments;
    arguments.rotX[0][0] = 1.5;
    arguments.rotY[0][0] = std::numeric_limits<double>::quiet_NaN();
    arguments.rotZ[0][0] = infinity;
    const Rewrite rewrite = rewriteOf(turnable("   not numbers  "), arguments);
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.output.substr(0, 35), "label\nfacet normal   not numbers  \n");
    EXPECT_EQ(vertexLines(rewriteOf(
                  label + "facet normal 7 8 9\nouter\nvertex\nvertex\nvertex\n    endloop\nendfacet\n")),
              "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
              "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
              "      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n");
}

TEST(StlPasses, NormalAndCornersShareTheirWorkingNumbers)
{
    Arguments arguments;
    arguments.xOfsA = 10.0;
    arguments.rotZ = quarterAboutZ;
    const std::string broken = "facet normal x\nouter\nvertex\nvertex 1\nvertex\nendloop\nendfacet\n";
    const Rewrite rewrite = rewriteOf("label\n" + broken + broken, arguments);
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.output, "label\n"
                              "  facet normal  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                              "outer\n"
                              "      vertex  0.00000000E+00  1.00000000E+01  0.00000000E+00\n"
                              "      vertex -1.00000000E+01  1.10000000E+01  0.00000000E+00\n"
                              "      vertex -1.10000000E+01  0.00000000E+00  0.00000000E+00\n"
                              "endloop\nendfacet\n"
                              "  facet normal  0.00000000E+00 -1.10000000E+01  0.00000000E+00\n"
                              "outer\n"
                              "      vertex  1.10000000E+01  1.00000000E+01  0.00000000E+00\n"
                              "      vertex -1.00000000E+01  1.10000000E+01  0.00000000E+00\n"
                              "      vertex -1.10000000E+01  0.00000000E+00  0.00000000E+00\n"
                              "endloop\nendfacet\n");
}

TEST(StlPasses, ManyFacetsAreRewrittenAndCounted)
{
    std::string text = label;
    for (int i = 0; i < 20000; ++i)
        text += facet;
    text += endLine;
    const Rewrite rewrite = rewriteOf(text);
    EXPECT_EQ(rewrite.result, 0);
    EXPECT_EQ(rewrite.message, "before" + totals(140002, 20000));
    EXPECT_TRUE(rewrite.output == text);
}

} // namespace
