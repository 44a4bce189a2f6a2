// The facets of a binary STL file.
#pragma once

#include "stl/ByteOrder.h"
#include "stl/StlBlocks.h"
#include "stl/StlMesh.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

constexpr int stlBinaryLabelSize = 80;
constexpr int stlBinaryPreludeSize = 84; // label and facet count
constexpr int stlBinaryFacetSize = 50;

// Reads one facet after another from where the stream stands, as twelve 4-byte reads and two fgetc would.
class StlBinaryFacetReader {
public:
    explicit StlBinaryFacetReader(std::FILE *file)
        : m_blocks(file)
    {}

    // `facet` holds the facet before. Past the end of the file its numbers keep their values; an attribute
    // byte becomes 255, fgetc's end of file cut to a byte.
    void read(StlFacet &facet)
    {
        const std::string_view bytes = m_blocks.ahead(stlBinaryFacetSize);
        if (hostIsBigEndian || bytes.size() < stlBinaryFacetSize) {
            readByNumbers(facet);
            return;
        }
        std::memcpy(static_cast<void *>(&facet), bytes.data(), stlBinaryFacetSize);
        m_blocks.take(stlBinaryFacetSize);
    }

    // The value of errno if reading has failed, else 0.
    int error() const { return m_blocks.error(); }

private:
    static_assert(offsetof(StlFacet, attribute) + sizeof(StlFacet::attribute) == stlBinaryFacetSize,
                  "a facet lies in memory as in the file");

    void readByNumbers(StlFacet &facet);

    StlBlockReader m_blocks;
};
