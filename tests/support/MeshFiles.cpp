#include "tests/support/MeshFiles.h"

#include <cstring>

void appendLittleEndian(std::string &bytes, std::uint32_t bits)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> shift & 0xFFU));
}

void appendLittleEndian(std::string &bytes, float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    appendLittleEndian(bytes, bits);
}

std::string binaryStl(std::string_view header, std::uint32_t storedCount,
                      const std::vector<BinaryFacet> &facets)
{
    std::string bytes(header);
    bytes.resize(80, ' ');
    appendLittleEndian(bytes, storedCount);
    for (const BinaryFacet &facet : facets) {
        for (const float number : facet.numbers)
            appendLittleEndian(bytes, number);
        for (const unsigned char byte : facet.attribute)
            bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::string binaryStl(std::string_view header, const std::vector<BinaryFacet> &facets)
{
    const std::uint64_t count = facets.size();
    return binaryStl(header, static_cast<std::uint32_t>(count), facets);
}

std::vector<BinaryFacet> differentFacets(int n)
{
    std::vector<BinaryFacet> facets(static_cast<std::size_t>(n));
    float value = -1.0F;
    unsigned char byte = 1;
    for (BinaryFacet &facet : facets) {
        for (float &number : facet.numbers)
            number = value -= 0.25F;
        for (unsigned char &attribute : facet.attribute)
            attribute = byte++;
    }
    return facets;
}

std::string asciiFacet(const std::array<std::string_view, 4> &numbers)
{
    std::string text = "  facet normal ";
    text.append(numbers[0]).append("\n    outer loop\n");
    for (std::size_t corner = 1; corner < numbers.size(); ++corner)
        text.append("      vertex ").append(numbers[corner]).append("\n");
    return text + "    endloop\n  endfacet\n";
}
