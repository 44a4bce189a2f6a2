// The twelve numbers of a facet.
#pragma once

#include "stl/StlMesh.h"

#include <array>

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
