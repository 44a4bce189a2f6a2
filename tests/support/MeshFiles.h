// The bytes of small STL files.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Appends a number as the binary format stores it, lowest byte first.
void appendLittleEndian(std::string &bytes, std::uint32_t bits);
void appendLittleEndian(std::string &bytes, float value);

struct BinaryFacet {
    std::array<float, 12> numbers{}; // normal, then the three corners
    std::array<unsigned char, 2> attribute{};
};

// A binary file with the right count; the header is padded with blanks or cut to 80 bytes.
std::string binaryStl(std::string_view header, const std::vector<BinaryFacet> &facets);

// The same with any stored count.
std::string binaryStl(std::string_view header, std::uint32_t storedCount,
                      const std::vector<BinaryFacet> &facets);

// n facets that differ in every number. All numbers are negative, so that the file counts as binary.
std::vector<BinaryFacet> differentFacets(int n);

// Seven lines; `numbers` are the texts of the normal and the corners.
std::string asciiFacet(const std::array<std::string_view, 4> &numbers);
