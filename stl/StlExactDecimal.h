// Decimal numbers that come out correctly rounded in one floating-point operation.
//
// The functions decline by returning false and then leave `value` alone.
#pragma once

#include <array>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace stl_exact_decimal {

constexpr int largestExponent = 22; // 10^22 is the largest power of ten that a double holds exactly

// 10^exponent as a quotient of two exact numbers, one of which is 1.
struct PowerOfTen {
    double multiplier = 1.0;
    double divisor = 1.0;
};

constexpr std::array<PowerOfTen, 2 * largestExponent + 1> makePowersOfTen()
{
    std::array<PowerOfTen, 2 * largestExponent + 1> powers{};
    double power = 1.0;
    for (std::size_t n = 0; n <= largestExponent; ++n) {
        powers[largestExponent + n].multiplier = power;
        powers[largestExponent - n].divisor = power;
        power *= 10.0; // exactly, but for the last one, which is not used
    }
    return powers;
}

inline constexpr std::array<PowerOfTen, 2 *largestExponent + 1> powersOfTen = makePowersOfTen();

} // namespace stl_exact_decimal

// digits * 10^exponent, where one correctly rounded operation on two exact numbers gives it (Clinger's fast
// case); the other operation, by 1, changes nothing. digits is at most 2^53. Declines exponents beyond 22.
inline bool stlScaleExactly(std::uint64_t digits, int exponent, double &value)
{
    using namespace stl_exact_decimal;
    const auto index = static_cast<unsigned>(exponent + largestExponent);
    if (index >= powersOfTen.size())
        return false;
    const PowerOfTen &power = powersOfTen[index];
    value = static_cast<double>(static_cast<std::int64_t>(digits)) * power.multiplier / power.divisor;
    return true;
}

// The float nearest to a decimal number, from the double nearest to it. They agree unless the double lies
// exactly between two floats: then the decimal number may have been on either side of it. A float has 29 bits
// fewer, so such a double has a one and 28 zeros there. Subnormal floats have even fewer bits and are
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
