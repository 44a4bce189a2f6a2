// Powers of ten as 64-bit mantissas, for the number kernels.
//
// 10^n = mantissa * 2^(exponent - 63) with the mantissa in [2^63, 2^64): exact for 0 <= n <= 27, where 5^n
// fits in 64 bits, and truncated elsewhere, so that mantissa <= true mantissa < mantissa + 1.
//
// Derivation, at compile time: positive powers by multiplying an exact big integer by ten; negative ones from
// floor(2^bits / 10^n), made by dividing by ten repeatedly, which is exact because
// floor(floor(a / 10) / 10) = floor(a / 100). The leading 64 bits of either are the truncated mantissa.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

constexpr int smallestPowerOfTen = -110;
constexpr int largestPowerOfTen = 110;
constexpr int largestExactPowerOfTen = 27;

// floor(log2(10^n)), for the table's range and a little beyond: 217706 / 2^16 exceeds log2(10) by 2e-6.
constexpr int binaryExponentOfPowerOfTen(int n) { return (n * 217706) >> 16; }

// floor(log10(2^e)), for |e| up to 500.
constexpr int decimalExponentOfPowerOfTwo(int e) { return (e * 78913) >> 18; }

namespace powers_of_ten_derivation {

// An unsigned integer of 14 * 32 bits, least significant limb first: room for 10^110 and for 2^440.
using BigInteger = std::array<std::uint32_t, 14>;

constexpr void multiplyByTen(BigInteger &number)
{
    std::uint64_t carry = 0;
    for (std::size_t i = 0; i < number.size(); ++i) {
        carry += std::uint64_t{number[i]} * 10;
        number[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32U;
    }
}

constexpr void divideByTen(BigInteger &number)
{
    std::uint64_t remainder = 0;
    for (std::size_t i = number.size(); i-- > 0;) {
        remainder = (remainder << 32U) | number[i];
        number[i] = static_cast<std::uint32_t>(remainder / 10);
        remainder %= 10;
    }
}

constexpr std::uint64_t limbOrZero(const BigInteger &number, std::size_t i)
{
    return i < number.size() ? std::uint64_t{number[i]} : 0;
}

// The 64 bits from the highest set bit down; zeros follow where the number is shorter.
constexpr std::uint64_t leadingBits(const BigInteger &number)
{
    std::size_t top = number.size() - 1;
    while (number[top] == 0)
        --top;
    // An index below the first limb wraps around, and limbOrZero returns zero for it.
    std::uint64_t bits = limbOrZero(number, top) << 32U | limbOrZero(number, top - 1);
    std::uint64_t next = limbOrZero(number, top - 2) << 32U;
    while ((bits >> 63U) == 0) {
        bits = bits << 1U | next >> 63U;
        next <<= 1U;
    }
    return bits;
}

using Mantissas = std::array<std::uint64_t, largestPowerOfTen - smallestPowerOfTen + 1>;

constexpr std::size_t indexOf(int n) { return static_cast<std::size_t>(n - smallestPowerOfTen); }

constexpr Mantissas makeMantissas()
{
    Mantissas mantissas{};
    BigInteger number{};
    number[0] = 1;
    for (int n = 0; n <= largestPowerOfTen; ++n) {
        mantissas[indexOf(n)] = leadingBits(number);
        multiplyByTen(number);
    }
    number = BigInteger{};
    number.back() = 0x80000000U;
    for (int n = -1; n >= smallestPowerOfTen; --n) {
        divideByTen(number);
        mantissas[indexOf(n)] = leadingBits(number);
    }
    return mantissas;
}

} // namespace powers_of_ten_derivation

inline constexpr powers_of_ten_derivation::Mantissas powerOfTenMantissas =
    powers_of_ten_derivation::makeMantissas();

// The truncated mantissa of 10^n.
constexpr std::uint64_t mantissaOfPowerOfTen(int n)
{
    return powerOfTenMantissas[powers_of_ten_derivation::indexOf(n)];
}

constexpr bool isExactPowerOfTen(int n) { return n >= 0 && n <= largestExactPowerOfTen; }
