// The two passes over the temporary ASCII file: one measures it, one rewrites it. Both check the facet
// grammar line by line (StlFacetGrammar) and number the label line 1.
#pragma once

#include "stl/RotationMatrix.h"
#include "stl/StlLimits.h"
#include "stl/StlLineEnd.h"

#include <cstdio>

// Messages that are given in several places.
inline constexpr char stlReadErrorMessage[] = "\nError reading stl file\n";
inline constexpr char stlWriteErrorMessage[] = "\nError writing stl file\n";

// Finds the smallest and largest coordinate of each axis over all vertex lines, from the stream's position up
// to an "endsolid" line or the end of the file. Without a vertex the extents are 1e25 and -1e25.
// `lineEnd` is what ends a line in the bytes of the stream.
// `in` is neither closed nor rewound; a null stream counts as an empty one.
// Returns 0, or -1 with the reason in `message` (stlMessageCapacity characters). A read error is a failure
// everywhere; the end of the stream is none where a facet may begin.
int stl_scan_extents(char *message, std::FILE *in, double *minX, double *maxX, double *minY, double *maxY,
                     double *minZ, double *maxZ, StlLineEnd lineEnd = StlLineEnd::lineFeed);

// Copies `in` to `out`, replacing every corner by (corner + OfsB) * Scl + OfsA turned by the matrices in use,
// in the order rotX, rotY, rotZ. Facet normals are only turned; if no matrix is in use their lines are
// copied. Appends the line and triangle totals to `message`, which must hold a text already. Returns 0, or -1
// with the reason in `message` (overwritten; left alone if there is no label line). `out` then holds what was
// written so far. An output that could not be written whole is a failure.
// `lineEnd` is what ends a line in the bytes of both streams.
int stl_apply_pass(char *message, std::FILE *in, std::FILE *out, double xScl, double yScl, double zScl,
                   double xOfsB, double yOfsB, double zOfsB, double xOfsA, double yOfsA, double zOfsA,
                   const RotationMatrix &rotX, const RotationMatrix &rotY, const RotationMatrix &rotZ,
                   StlLineEnd lineEnd = StlLineEnd::lineFeed);
