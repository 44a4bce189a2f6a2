// Everything is done in whole numbers, so that neither fused operations nor a compiler's idea of intermediate
// results can matter.
//
// The angle, 2^e times a mantissa of 53 bits, is taken modulo a full turn by going through the mantissa's
// bits and e zeros, doubling and subtracting, as in long division on paper. What is left is folded into the
// first eighth of a turn, and the power series of both functions are added up there.
//
// How exact that is: our full turn is off by less than 2^-1296 (see fullTurn), and less than 2^1022 of them
// are taken off in all, so the remainder is off by less than 2^-274. No double comes nearer to a multiple of
// a quarter turn than 2^-62, so neither result is smaller, and its relative error is below 2^-210. A wrong
// rounding would need a result that goes on after its 53rd bit with a one and 150 zeros, or a zero and 150
// ones. If those bits are as good as random, the longest row among all doubles has about 65, and one of 150
// is not to be expected: its odds are 1 to 2^84.
#include "stl/ExactTrigonometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace {

// A number in [0, 2^32). The first limb is its integer part, each further one has 32 bits of its fraction.
template <std::size_t limbs>
using Fixed = std::array<std::uint32_t, limbs>;

using LongFixed = Fixed<42>;  // for remainders
using ShortFixed = Fixed<10>; // for the series

template <std::size_t limbs>
constexpr void add(Fixed<limbs> &sum, const Fixed<limbs> &other)
{
    std::uint64_t carry = 0;
    for (std::size_t i = limbs; i-- > 0;) {
        carry += std::uint64_t{sum[i]} + other[i];
        sum[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32U;
    }
}

template <std::size_t limbs>
constexpr void subtract(Fixed<limbs> &difference, const Fixed<limbs> &other)
{
    std::uint64_t borrow = 0;
    for (std::size_t i = limbs; i-- > 0;) {
        const std::uint64_t limb = std::uint64_t{difference[i]} - other[i] - borrow;
        difference[i] = static_cast<std::uint32_t>(limb);
        borrow = limb >> 63U;
    }
}

template <std::size_t limbs>
constexpr void divide(Fixed<limbs> &quotient, std::uint32_t divisor)
{
    std::uint64_t remainder = 0;
    for (std::uint32_t &limb : quotient) {
        remainder = remainder << 32U | limb;
        limb = static_cast<std::uint32_t>(remainder / divisor);
        remainder %= divisor;
    }
}

template <std::size_t limbs>
constexpr bool isZero(const Fixed<limbs> &number)
{
    for (const std::uint32_t limb : number) {
        if (limb != 0)
            return false;
    }
    return true;
}

ShortFixed product(const ShortFixed &a, const ShortFixed &b)
{
    constexpr std::size_t limbs = std::tuple_size_v<ShortFixed>;
    std::array<std::uint32_t, 2 * limbs> all{}; // one limb more before the point
    for (std::size_t i = limbs; i-- > 0;) {
        std::uint64_t carry = 0;
        for (std::size_t j = limbs; j-- > 0;) {
            carry += std::uint64_t{a[i]} * b[j] + all[i + j + 1];
            all[i + j + 1] = static_cast<std::uint32_t>(carry);
            carry >>= 32U;
        }
        all[i] = static_cast<std::uint32_t>(carry);
    }
    ShortFixed result{};
    std::copy_n(all.begin() + 1, limbs, result.begin());
    return result;
}

// 1/n - 1/(3 n^3) + 1/(5 n^5) - ...
constexpr LongFixed arctangentOfReciprocal(std::uint32_t n)
{
    LongFixed power{1};
    divide(power, n);
    LongFixed sum = power;
    for (std::uint32_t k = 3; !isZero(power); k += 2) {
        divide(power, n * n);
        LongFixed term = power;
        divide(term, k);
        if (k % 4 == 3)
            subtract(sum, term);
        else
            add(sum, term);
    }
    return sum;
}

// 2 pi by Machin's formula, pi / 4 = 4 arctan(1/5) - arctan(1/239). The two series have less than 300 and 100
// terms, each off by less than two units of the last limb, and are multiplied by 32 and 8: less than 2^16
// units in all, of 2^-1312 each.
constexpr LongFixed makeFullTurn()
{
    LongFixed turn = arctangentOfReciprocal(5);
    add(turn, turn);
    add(turn, turn);
    subtract(turn, arctangentOfReciprocal(239));
    add(turn, turn);
    add(turn, turn);
    add(turn, turn);
    return turn;
}

constexpr LongFixed fullTurn = makeFullTurn();

constexpr LongFixed partOfTurn(std::uint32_t parts)
{
    LongFixed part = fullTurn;
    divide(part, parts);
    return part;
}

constexpr LongFixed quarterTurn = partOfTurn(4);
constexpr LongFixed eighthOfTurn = partOfTurn(8);

// 2^-n
LongFixed negativePowerOfTwo(int n)
{
    LongFixed power{};
    const int limb = (n + 31) / 32;
    power[static_cast<std::size_t>(limb)] = std::uint32_t{1} << static_cast<unsigned>(32 * limb - n);
    return power;
}

void takeOffTurns(LongFixed &rest)
{
    while (!(rest < fullTurn))
        subtract(rest, fullTurn);
}

// A positive number modulo a full turn.
LongFixed moduloTurn(double number)
{
    constexpr int mantissaBits = std::numeric_limits<double>::digits;
    int exponent = 0;
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(std::frexp(number, &exponent), mantissaBits));
    exponent -= mantissaBits;
    const LongFixed unit = negativePowerOfTwo(std::max(-exponent, 0));
    LongFixed rest{};
    for (int bit = mantissaBits - 1; bit >= 0; --bit) {
        add(rest, rest);
        if ((mantissa >> static_cast<unsigned>(bit) & 1U) != 0)
            add(rest, unit);
        takeOffTurns(rest);
    }
    for (; exponent > 0; --exponent) {
        add(rest, rest);
        takeOffTurns(rest);
    }
    return rest;
}

// x - x^3/3! + x^5/5! - ... from k = 1, 1 - x^2/2! + x^4/4! - ... from k = 0; `first` is the first term.
ShortFixed alternatingSeries(const ShortFixed &first, const ShortFixed &square, std::uint32_t k)
{
    ShortFixed sum = first;
    ShortFixed term = first;
    for (bool isMinus = true; !isZero(term); isMinus = !isMinus) {
        term = product(term, square);
        divide(term, (k + 1) * (k + 2));
        k += 2;
        if (isMinus)
            subtract(sum, term);
        else
            add(sum, term);
    }
    return sum;
}

// To nearest. Sines and cosines of doubles other than zero are transcendental, so there are no ties.
double nearestDouble(const ShortFixed &number)
{
    std::size_t top = 0;
    while (number[top] == 0)
        ++top;
    std::uint64_t bits = std::uint64_t{number[top]} << 32U | number[top + 1];
    std::uint64_t next = std::uint64_t{number[top + 2]} << 32U;
    int exponent = -32 * (static_cast<int>(top) + 1);
    for (; bits >> 63U == 0; --exponent) {
        bits = bits << 1U | next >> 63U;
        next <<= 1U;
    }
    constexpr unsigned lostBits = 64 - std::numeric_limits<double>::digits;
    const std::uint64_t mantissa = (bits >> lostBits) + (bits >> (lostBits - 1) & 1U);
    return std::ldexp(static_cast<double>(mantissa), exponent + static_cast<int>(lostBits));
}

ShortFixed leadingLimbs(const LongFixed &number)
{
    ShortFixed leading{};
    std::copy_n(number.begin(), leading.size(), leading.begin());
    return leading;
}

// Of an angle in the first quarter turn, not too close to its ends for a ShortFixed.
SineAndCosine ofFirstQuarter(LongFixed angle)
{
    const bool isFolded = eighthOfTurn < angle;
    if (isFolded) {
        LongFixed rest = quarterTurn;
        subtract(rest, angle);
        angle = rest;
    }
    const ShortFixed x = leadingLimbs(angle);
    const ShortFixed square = product(x, x);
    const double sine = nearestDouble(alternatingSeries(x, square, 1));
    const double cosine = nearestDouble(alternatingSeries({1}, square, 0));
    return isFolded ? SineAndCosine{cosine, sine} : SineAndCosine{sine, cosine};
}

} // namespace

SineAndCosine exactSineAndCosine(double angle)
{
    // Up to here x - sin(x) < x^3 / 6 and 1 - cos(x) <= x^2 / 2 are less than half of the last bit.
    constexpr double tiny = 0x1p-27;
    if (std::fabs(angle) < tiny)
        return {angle, 1.0};
    if (!std::isfinite(angle)) {
        const double none =
            std::isnan(angle) ? angle : std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0);
        return {none, none};
    }

    LongFixed rest = moduloTurn(std::fabs(angle));
    int quarters = 0;
    for (; !(rest < quarterTurn); ++quarters)
        subtract(rest, quarterTurn);
    const SineAndCosine own = ofFirstQuarter(rest);
    const double sign = angle < 0.0 ? -1.0 : 1.0;
    switch (quarters) {
    case 0:
        return {sign * own.sine, own.cosine};
    case 1:
        return {sign * own.cosine, -own.sine};
    case 2:
        return {sign * -own.sine, -own.cosine};
    default:
        return {sign * -own.cosine, own.sine};
    }
}
