// Arithmetic whose undefined results have the same sign on every processor.
#pragma once

#include <cmath>
#include <limits>

// A double for which every undefined result is the one of x86's SSE instructions, as far as it can be seen in
// text: of an operand that is undefined itself it takes over the sign, of the first one if both are; what is
// undefined for another reason, such as zero times infinity, has a minus sign. ARM and s390x give that a plus
// sign.
struct SettledNumber {
    double value;
};

namespace stl_settled_number {

inline SettledNumber settled(double result, SettledNumber a, SettledNumber b)
{
    if (!std::isnan(result))
        return {result};
    if (std::isnan(a.value))
        return a;
    // Not the result with another sign: compilers take the sign of a product or quotient for known.
    constexpr double undefined = -std::numeric_limits<double>::quiet_NaN();
    return std::isnan(b.value) ? b : SettledNumber{undefined};
}

} // namespace stl_settled_number

inline SettledNumber operator+(SettledNumber a, SettledNumber b)
{
    return stl_settled_number::settled(a.value + b.value, a, b);
}

inline SettledNumber operator-(SettledNumber a, SettledNumber b)
{
    return stl_settled_number::settled(a.value - b.value, a, b);
}

inline SettledNumber operator*(SettledNumber a, SettledNumber b)
{
    return stl_settled_number::settled(a.value * b.value, a, b);
}

inline SettledNumber operator/(SettledNumber a, SettledNumber b)
{
    return stl_settled_number::settled(a.value / b.value, a, b);
}
