// Comparison of computed numbers that nothing prints, in which every NaN is alike: its sign is the
// processor's.
#pragma once

#include "tests/support/SameBytes.h"

#include <cmath>

// The two zeros differ here.
template <typename Number>
bool sameOrBothNan(Number a, Number b)
{
    return sameBytes(a, b) || (std::isnan(a) && std::isnan(b));
}
