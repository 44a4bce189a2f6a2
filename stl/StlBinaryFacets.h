// The facets of a binary STL file.
#pragma once

#include "stl/StlBlocks.h"
#include "stl/StlMesh.h"

#include <cstdint>
#include <cstdio>

constexpr int stlBinaryLabelSize = 80;
constexpr int stlBinaryPreludeSize = 84; // label and facet count
constexpr int stlBinaryFacetSize = 50;

// The format's 32-bit numbers have their lowest byte first.
std::uint32_t stlLittleEndian(const char *bytes);

// Reads one facet after another from where the stream stands, as twelve 4-byte reads and two fgetc would.
class StlBinaryFacetReader {
public:
    explicit StlBinaryFacetReader(std::FILE *file)
        : m_blocks(file)
    {}

    // Past the end of the file the numbers keep their values; an attribute byte becomes 255, fgetc's end of
    // file cut to a byte.
    void read(StlFacet &facet);

    // The value of errno if reading has failed, else 0.
    int error() const { return m_blocks.error(); }

private:
    StlBlockReader m_blocks;
    char m_bytes[stlBinaryFacetSize] = {}; // of the latest facet; a cut one replaces only its first bytes
};
