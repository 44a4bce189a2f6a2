// A small mesh for tests of runs, and the texts that a run makes of a mesh.
#pragma once

#include "transform/TransformParameters.h"

#include <string>

struct Point {
    double x, y, z;
};

struct Corners {
    Point first, second, third;
};

struct FacetNumbers {
    Point normal;
    Corners corners;
};

// Ten long, twenty wide, thirty high.
constexpr FacetNumbers box = {{0, 0, 1}, {{1, 2, 3}, {11, 22, 3}, {1, 2, 33}}};
std::string boxFile(); // as a user's ASCII file

// Facets between the first and the last line that the temporary file has; the output takes them over.
std::string temporaryFileOf(const std::string &facets);

// One facet in the layout of the temporary file, the numbers printed by the C library.
std::string writtenFacet(const FacetNumbers &numbers);
std::string writtenMesh(const FacetNumbers &numbers); // with this facet only

// What a successful transformation appends to its message.
std::string totals(int lines, int facets);

// The log of a run whose transformation failed, and of one that went well. They are put together from the
// program's own pieces, whose bytes tst_RunLogText proves.
std::string failedRunLog(const TransformParameters &parameters);
std::string runLog(const TransformParameters &parameters, int lines = 9, int facets = 1);
