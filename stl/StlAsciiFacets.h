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
// are read in memory; any other facet goes back to the stream and is read by fscanf from its first byte.
class StlAsciiFacetReader {
public:
    // The stream stands at its start; the label line is skipped.
    explicit StlAsciiFacetReader(std::FILE *file);

    // A number that does not convert keeps its value, as do those after it on the same line.
    void read(StlFacet &facet);

    // The value of errno if reading has failed, else 0.
    int error() const { return m_scanError != 0 ? m_scanError : m_blocks.error(); }

private:
    enum class Plainness { plain, odd, unknown }; // unknown: the text at hand ends within the facet

    void skipLabelLine();
    bool readCommon(std::string_view text, StlFacet &facet);
    Plainness readPlain(std::string_view text, StlFacet &facet);
    void readAny(StlFacet &facet);

    std::FILE *m_file;
    StlBlockReader m_blocks;
    int m_scanError = 0; // of fscanf
    StlLastPoint<StlPointText, StlVertex> m_normal;
    StlPointMemory<StlPointText, StlVertex> m_corners;
};
