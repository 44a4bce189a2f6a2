// Random STL files that are odd, broken or both, and random parameters for them: inputs for comparisons and
// fuzzers. The same seed gives the same sequence.
#pragma once

#include "tests/support/PlainTwin.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

class OddMeshText {
public:
    explicit OddMeshText(std::uint64_t seed)
        : m_random(seed)
    {}

    // A binary file whose numbers are any bit patterns, sometimes with a wrong count or size.
    std::string binaryFile();

    // An ASCII file with facets in a free layout, with odd numbers and with words and lines missing or added.
    std::string asciiFile();

    // Text in the layout of the temporary file, damaged in any number of places or none.
    std::string temporaryFile();

    // A number for a scale, an offset or an angle: mostly ordinary, sometimes zero, huge, infinite or NaN.
    double parameter();
    plain::Axes axes(); // three of them

    // One that changes nothing, or any scales and offsets with up to three matrices of any elements.
    plain::Placement placement();

    bool oneIn(int n) { return below(n) == 0; }
    int below(int n);

private:
    plain::Rotation rotation();
    std::string wellFormedText();
    std::string numberWord();
    std::string ordinaryNumber();
    std::string gap();
    std::string lineEnd();
    void damage(std::string &text);
    void damageCharacter(std::string &text);
    void damageLine(std::string &text);
    void lengthenLine(std::string &text);
    std::size_t positionIn(const std::string &text);

    std::mt19937_64 m_random;
};
