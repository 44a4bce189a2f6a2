// What a facet holds.
#pragma once

#include "stl/StlMesh.h"
#include "tests/support/MeshFiles.h"

#include <array>
#include <string>

using FacetNumbers = std::array<float, 12>; // normal, then the three corners

inline FacetNumbers numbersOf(const StlFacet &facet)
{
    FacetNumbers numbers{};
    float *next = numbers.data();
    for (const StlVertex &point : {facet.normal, facet.vertex[0], facet.vertex[1], facet.vertex[2]}) {
        *next++ = point.x;
        *next++ = point.y;
        *next++ = point.z;
    }
    return numbers;
}

// As in the file: twelve little-endian numbers and two bytes.
inline std::string recordOf(const StlFacet &facet)
{
    std::string record;
    for (const StlVertex &point : {facet.normal, facet.vertex[0], facet.vertex[1], facet.vertex[2]}) {
        for (const float number : {point.x, point.y, point.z})
            appendLittleEndian(record, number);
    }
    for (const unsigned char byte : facet.attribute)
        record += static_cast<char>(byte);
    return record;
}
