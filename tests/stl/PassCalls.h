// Calls of the two passes, and text for them.
#pragma once

#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"
#include "stl/StlPasses.h"
#include "tests/support/TextFile.h"

#include <string>
#include <vector>

struct Scan {
    int result = 99;
    std::string message;
    std::vector<double> extents; // smallest and largest x, y, z
};

inline Scan scanOf(std::FILE *in)
{
    char message[stlMessageCapacity] = "before";
    std::vector<double> e(6, 7.0);
    Scan scan;
    scan.result = stl_scan_extents(message, in, &e[0], &e[1], &e[2], &e[3], &e[4], &e[5]);
    scan.message = message;
    scan.extents = e;
    return scan;
}

inline Scan scanOf(const std::string &text) { return scanOf(streamOf(text).get()); }

struct Arguments {
    double xScl = 1.0, yScl = 1.0, zScl = 1.0;
    double xOfsB = 0.0, yOfsB = 0.0, zOfsB = 0.0;
    double xOfsA = 0.0, yOfsA = 0.0, zOfsA = 0.0;
    RotationMatrix rotX, rotY, rotZ;
};

inline int apply(char *message, std::FILE *in, std::FILE *out, const Arguments &a)
{
    return stl_apply_pass(message, in, out, a.xScl, a.yScl, a.zScl, a.xOfsB, a.yOfsB, a.zOfsB, a.xOfsA,
                          a.yOfsA, a.zOfsA, a.rotX, a.rotY, a.rotZ);
}

struct Rewrite {
    int result = 99;
    std::string message;
    std::string output;
};

inline Rewrite rewriteOf(std::FILE *in, const Arguments &arguments = {})
{
    const Stream out = streamOf("");
    char message[stlMessageCapacity] = "before";
    Rewrite rewrite;
    rewrite.result = apply(message, in, out.get(), arguments);
    rewrite.message = message;
    rewrite.output = bytesOf(out);
    return rewrite;
}

inline Rewrite rewriteOf(const std::string &text, const Arguments &arguments = {})
{
    return rewriteOf(streamOf(text).get(), arguments);
}

inline std::string totals(int lines, int triangles)
{
    return "\nNumber lines read from stl file = " + std::to_string(lines) +
           "\nNumber triangles read from stl file = " + std::to_string(triangles) + "\n";
}

inline const std::string label = "solid  (null)\n";
inline const std::string facetStart = "  facet normal  0.00000000E+00  0.00000000E+00  1.00000000E+00\n"
                                      "    outer loop\n";
inline const std::string corners = "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                                   "      vertex -4.00000000E+00  5.00000000E+00  6.00000000E+00\n"
                                   "      vertex  7.00000000E+00  8.00000000E+00 -9.00000000E+00\n";
inline const std::string facetEnd = "    endloop\n"
                                    "  endfacet\n";
inline const std::string facet = facetStart + corners + facetEnd;
inline const std::string endLine = "endsolid  \n";

// Several blocks of the reader and of the writer.
constexpr int manyFacets = 3 * StlBlockReader::blockSize / stlCommonFacetSize;

inline std::string largeMesh()
{
    std::string text = label;
    for (int i = 0; i < manyFacets; ++i)
        text += facet;
    return text + endLine;
}
