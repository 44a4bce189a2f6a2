// The facets of an ASCII STL file, read as the fscanf formats "%*s %*s %f %f %f\n" (the facet line),
// "%*s %*s" (outer loop), "%*s %f %f %f\n" (three times, a vertex line) and "%*s" (twice: endloop, endfacet)
// read them. Keywords are skipped by position and not checked.
#pragma once

#include "stl/StlBlocks.h"
#include "stl/StlMesh.h"
#include "stl/StlPointMemory.h"

#include <cstddef>
#include <cstdio>
#include <string_view>

// Reads one facet after another. Facets in the form that this program writes, and plain text of any layout,
// are tried first; any other facet is then read character by character from its first byte. The destructor
// leaves the stream where fscanf would have.
class StlAsciiFacetReader {
public:
    // Skips the label line. The stream must be at its start.
    explicit StlAsciiFacetReader(std::FILE *file);

    // A number that does not convert keeps its value, as do those after it on the same line.
    void read(StlFacet &facet);

    // The value of errno if reading has failed, else 0.
    int error() const { return m_blocks.error(); }

private:
    void skipLabelLine();
    bool readCommon(std::string_view text, StlFacet &facet);
    bool readCommonLines(const char *lines, StlFacet &facet);
    bool readPlain(std::string_view text, StlFacet &facet);
    void readAny(StlFacet &facet);

    StlBlockReader m_blocks;
    StlLastPoint<StlPointText, StlVertex> m_normal;
    StlPointMemory<StlPointText, StlVertex> m_corners;
};
