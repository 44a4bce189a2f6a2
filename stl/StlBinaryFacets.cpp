#include "stl/StlBinaryFacets.h"

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

void StlBinaryFacetReader::readByNumbers(std::string_view bytes, StlFacet &facet)
{
    for (StlVertex *point : {&facet.normal, &facet.vertex[0], &facet.vertex[1], &facet.vertex[2]}) {
        for (float *value : {&point->x, &point->y, &point->z})
            readNumber(bytes, *value);
    }
    for (std::size_t i = 0; i < sizeof facet.attribute; ++i)
        facet.attribute[i] = static_cast<unsigned char>(i < bytes.size() ? bytes[i] : EOF);
}
