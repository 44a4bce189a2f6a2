// Comparison of computed values and texts regardless of the signs of NaNs: where two NaNs meet in a sum, the
// compiler's order of the operands decides whose sign the result has.
#pragma once

#include "tests/support/SameBytes.h"

#include <cmath>
#include <string>

// The two zeros differ here.
template <typename Number>
bool sameOrBothNan(Number a, Number b)
{
    return sameBytes(a, b) || (std::isnan(a) && std::isnan(b));
}

inline std::string withoutSignsOfNaNs(std::string text)
{
    for (std::size_t at = text.find("-NAN"); at != std::string::npos; at = text.find("-NAN", at))
        text.replace(at, 4, " NAN");
    return text;
}
