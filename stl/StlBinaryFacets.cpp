#include "stl/StlBinaryFacets.h"

#include <algorithm>
#include <cstdint>

namespace {

// Takes what there is of a number's four bytes; the others keep theirs.
void readNumber(std::string_view &bytes, float &value)
{
    std::uint32_t bits = 0;
    static_assert(sizeof bits == sizeof value, "coordinates are 32-bit floats");
    std::memcpy(&bits, &value, sizeof bits);
    for (unsigned i = 0; i < sizeof bits && i < bytes.size(); ++i) {
        const unsigned shift = 8 * i;
        bits &= ~(0xFFU << shift);
        bits |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << shift;
    }
    std::memcpy(&value, &bits, sizeof bits);
    bytes.remove_prefix(std::min(bytes.size(), sizeof bits));
}

} // namespace

// A stream without positions may give the bytes of a facet in pieces.
void StlBinaryFacetReader::readByNumbers(StlFacet &facet)
{
    char record[stlBinaryFacetSize];
    std::size_t size = 0;
    for (std::string_view piece = m_blocks.ahead(sizeof record); size < sizeof record && !piece.empty();
         piece = m_blocks.ahead(sizeof record - size)) {
        piece = piece.substr(0, sizeof record - size);
        size += piece.copy(record + size, piece.size());
        m_blocks.take(piece.size());
    }
    std::string_view bytes(record, size);
    for (StlVertex *point : {&facet.normal, &facet.vertex[0], &facet.vertex[1], &facet.vertex[2]}) {
        for (float *value : {&point->x, &point->y, &point->z})
            readNumber(bytes, *value);
    }
    for (std::size_t i = 0; i < sizeof facet.attribute; ++i)
        facet.attribute[i] = static_cast<unsigned char>(i < bytes.size() ? bytes[i] : EOF);
}
