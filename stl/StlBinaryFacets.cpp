#include "stl/StlBinaryFacets.h"

#include <cstring>
#include <string_view>

namespace {

void readPoint(const char *&from, StlVertex &point)
{
    for (float *value : {&point.x, &point.y, &point.z}) {
        const std::uint32_t bits = stlLittleEndian(from);
        static_assert(sizeof bits == sizeof *value, "coordinates are 32-bit floats");
        std::memcpy(value, &bits, sizeof bits);
        from += sizeof bits;
    }
}

} // namespace

std::uint32_t stlLittleEndian(const char *bytes)
{
    const auto byte = [bytes](int i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    return byte(0) | byte(1) << 8U | byte(2) << 16U | byte(3) << 24U;
}

void StlBinaryFacetReader::read(StlFacet &facet)
{
    const std::string_view bytes = m_blocks.ahead(stlBinaryFacetSize).substr(0, stlBinaryFacetSize);
    bytes.copy(m_bytes, bytes.size());
    m_blocks.take(bytes.size());
    const char *from = m_bytes;
    readPoint(from, facet.normal);
    for (StlVertex &corner : facet.vertex)
        readPoint(from, corner);
    const std::size_t coordinates = static_cast<std::size_t>(from - m_bytes);
    for (std::size_t i = 0; i < sizeof facet.attribute; ++i)
        facet.attribute[i] = static_cast<unsigned char>(bytes.size() > coordinates + i ? from[i] : EOF);
}
