// Decimal numbers that come out correctly rounded in one floating-point operation.
//
// The functions decline by returning false and then leave `value` alone.
#pragma once

#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace stl_exact_decimal {

// The powers of ten that a double holds exactly.
inline constexpr std::array<double, 23> powersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largestExponent = static_cast<int>(powersOfTen.size()) - 1;

} // namespace stl_exact_decimal

// digits * 10^exponent, where one correctly rounded operation on two exact numbers gives it (Clinger's fast
// case). digits is at most 2^53. Declines exponents beyond 22.
inline bool stlScaleExactly(std::uint64_t digits, int exponent, double &value)
{
    using namespace stl_exact_decimal;
    if (exponent < -largestExponent || exponent > largestExponent)
        return false;
    const double exact = static_cast<double>(static_cast<std::int64_t>(digits));
    value = exponent < 0 ? exact / powersOfTen[static_cast<std::size_t>(-exponent)]
                         : exact * powersOfTen[static_cast<std::size_t>(exponent)];
    return true;
}

// The float nearest to a decimal number, from the double nearest to it. They agree unless the double lies
// exactly between two floats: then the decimal number may have been on either side of it. A float has 29 bits
// fewer, so such a double has a one and 28 zeros there. Subnormal floats have fewer bits yet and are
// declined, as are numbers beyond the largest float.
inline bool stlRoundToFloat(double exact, float &value)
{
    constexpr std::uint64_t lostBits = (std::uint64_t{1} << 29U) - 1;
    constexpr std::uint64_t middle = std::uint64_t{1} << 28U;
    const double magnitude = std::fabs(exact);
    const bool inRange =
        (magnitude >= static_cast<double>(FLT_MIN) && magnitude <= static_cast<double>(FLT_MAX)) ||
        magnitude == 0.0;
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof exact, "doubles are 64-bit numbers");
    std::memcpy(&bits, &exact, sizeof bits);
    if (!inRange || (bits & lostBits) == middle)
        return false;
    value = static_cast<float>(exact);
    return true;
}
