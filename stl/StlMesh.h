// The mesh in memory: records only. StlReader fills them, StlWriter writes them out.
#pragma once

#include <cstdint>
#include <cstdio>

// A point or a direction, in the file's own length unit.
struct StlVertex {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

// One triangle. The normal is the file's and is never recomputed, normalised or checked.
struct StlFacet {
    StlVertex normal;
    StlVertex vertex[3];                 // the corners, in file order
    unsigned char attribute[2] = {0, 0}; // binary files only; never written
};

enum StlType : std::int32_t { binary = 0, ascii = 1 };

struct StlStats {
    char header[81] = {}; // the label: at most 80 characters, always ended by a zero
    StlType type = binary;
    std::int32_t facetCount = 0;
    StlVertex max; // per axis, over all corners of all facets
    StlVertex min;
    StlVertex size; // max - min
    float boundingDiameter = 0.0F;
    float firstEdgeExtent = 0.0F;       // largest per-axis step from corner 0 to 1 of the first facet; unused
    std::int32_t initialFacetCount = 0; // as found by stl_initialize
    std::int32_t allocatedFacetCount = 0; // as made by stl_allocate_facets
};

// Reserved: one zero-filled entry per facet, which nothing fills or reads.
struct StlAuxEntry {
    std::int32_t reserved = 0;
};

// A plain record: copying it copies no facets, destroying it frees none (see stl_release_facets).
struct StlMesh {
    std::FILE *file = nullptr;  // open from stl_initialize until the caller closes it
    StlFacet *facets = nullptr; // stats.facetCount entries, from std::calloc
    StlAuxEntry *auxTable = nullptr;
    StlStats stats;
};
