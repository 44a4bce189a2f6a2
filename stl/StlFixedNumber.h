// The common form of a number in mesh text, exactly 15 characters: a blank or a minus sign, one digit, a
// point, eight digits, "E", a sign and two digits. "% .8E" and "%15.8E" both write it for zero and for every
// number whose decimal exponent has two digits.
//
// The two kernels here are fast because they may decline a number, and StlNumberText then takes the exact
// way. They never guess.
#pragma once

#include "stl/ByteOrder.h"
#include "stl/PowersOfTen.h"
#include "stl/StlExactDecimal.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

constexpr int stlFixedNumberSize = 15;
constexpr int stlFixedNumberRoom = stlFixedNumberSize + 1; // the kernels read or write one character more

namespace stl_fixed_number {

constexpr int exponentBias = 1023;
constexpr int largestBinaryExponent = 328; // from 2^-328 to below 2^329 decimal exponents have two digits
constexpr unsigned binaryExponents = 2 * largestBinaryExponent + 1;

// A binary floating-point number is m * 2^(e - 63) with m in [2^63, 2^64).
struct BinaryParts {
    std::uint64_t mantissa;
    unsigned exponentIndex; // e + largestBinaryExponent; binaryExponents or more for e beyond those
};

inline std::uint64_t bitsOf(double value)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value, "doubles are 64-bit numbers");
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline BinaryParts binaryPartsOf(std::uint64_t bits)
{
    constexpr unsigned firstExponent = exponentBias - largestBinaryExponent;
    return {bits << 11U | std::uint64_t{1} << 63U,
            (static_cast<unsigned>(bits >> 52U) & 0x7FFU) - firstExponent};
}

// What is after the digits of a number, "+dd ", as the upper four bytes of a word that goes over the last
// eight characters of its text before the digits do. (GCC would join two stores of four in a vector register,
// by way of memory.) The lowest byte has room for the exponent itself.
using ExponentText = std::uint64_t;

constexpr ExponentText makeExponentText(int exponent)
{
    const int magnitude = exponent < 0 ? -exponent : exponent;
    const int text[] = {exponent < 0 ? '-' : '+', '0' + magnitude / 10, '0' + magnitude % 10, ' '};
    ExponentText word = static_cast<unsigned>(exponent) & 0xFFU;
    for (unsigned i = 0; i < 4; ++i)
        word |= static_cast<ExponentText>(text[i]) << (32 + 8 * i);
    return word;
}

constexpr int exponentOf(ExponentText text) { return static_cast<std::int8_t>(text & 0xFFU); }

// Where the product of a number's mantissa and that of its scale has its point: in the middle of the upper
// word.
constexpr int pointOfProduct = 96;

// What all numbers of one binary and one decimal exponent E share: the power of ten 10^k, k = 8 - E, that
// gives them nine digits before the point, as a mantissa that puts this point at pointOfProduct.
struct Scale {
    std::uint64_t mantissa;    // truncated, unless it is exact
    ExponentText exponentText; // with exactScaleFlag if the mantissa is exact
};

constexpr ExponentText exactScaleFlag = 0x100;

// The number is m * 2^(e - 63) and 10^k = M * 2^(p - 63), so their product is m * M * 2^(e + p - 126). For
// its point to be at 96 instead of 126 - e - p, M loses that many bits: from 1 to 5.
constexpr int bitsToLose(int binaryExponent, int k)
{
    return 126 - binaryExponent - binaryExponentOfPowerOfTen(k) - pointOfProduct;
}

constexpr Scale makeScale(int binaryExponent, int exponent)
{
    const int k = 8 - exponent;
    const int lost = bitsToLose(binaryExponent, k);
    if (lost < 0 || lost > 63)
        return {}; // no number has this scale
    const std::uint64_t mantissa = mantissaOfPowerOfTen(k);
    const std::uint64_t kept = mantissa >> static_cast<unsigned>(lost);
    const bool isExact = isExactPowerOfTen(k) && kept << static_cast<unsigned>(lost) == mantissa;
    return {kept, makeExponentText(exponent) | (isExact ? exactScaleFlag : 0)};
}

// For each binary exponent e: the scales of the decade of 2^e and of the next one, and where in
// [2^e, 2^(e+1)) the latter begins: the mantissa of its power of ten, rounded up, or beyondAnyMantissa if it
// begins later.
struct DecadeTable {
    std::uint64_t nextBegins[binaryExponents];
    Scale scales[2 * binaryExponents];
};

constexpr std::uint64_t beyondAnyMantissa = 0xFFFFFFFFFFFFFFFFU; // the 53 bits of a double leave zeros below

constexpr DecadeTable makeDecadeTable()
{
    DecadeTable table{};
    for (std::size_t i = 0; i < binaryExponents; ++i) {
        const int e = static_cast<int>(i) - largestBinaryExponent;
        const int exponent = decimalExponentOfPowerOfTwo(e);
        const int next = exponent + 1;
        const bool beginsHere = binaryExponentOfPowerOfTen(next) == e;
        const std::uint64_t begin = mantissaOfPowerOfTen(next) + (isExactPowerOfTen(next) ? 0 : 1);
        table.nextBegins[i] = beginsHere ? begin : beyondAnyMantissa;
        table.scales[2 * i] = makeScale(e, exponent);
        table.scales[2 * i + 1] = makeScale(e, next);
    }
    return table;
}

// A table, because multiplications instead of it would be on the critical path of every number.
inline constexpr DecadeTable decadeTable = makeDecadeTable();

inline const Scale &scaleOf(const BinaryParts &value)
{
    const std::size_t i = value.exponentIndex;
    return decadeTable.scales[2 * i + static_cast<std::size_t>(value.mantissa >= decadeTable.nextBegins[i])];
}

struct Product128 {
    std::uint64_t high;
    std::uint64_t low;
};

inline Product128 multiply(std::uint64_t a, std::uint64_t b)
{
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return {static_cast<std::uint64_t>(product >> 64U), static_cast<std::uint64_t>(product)};
#else
    const std::uint64_t aLow = a & 0xFFFFFFFFU;
    const std::uint64_t aHigh = a >> 32U;
    const std::uint64_t bLow = b & 0xFFFFFFFFU;
    const std::uint64_t bHigh = b >> 32U;
    const std::uint64_t lowLow = aLow * bLow;
    const std::uint64_t middle = aHigh * bLow + (lowLow >> 32U);
    const std::uint64_t middle2 = aLow * bHigh + (middle & 0xFFFFFFFFU);
    return {aHigh * bHigh + (middle >> 32U) + (middle2 >> 32U), middle2 << 32U | (lowLow & 0xFFFFFFFFU)};
#endif
}

// Rounds m * 2^(e - 63) to nine significant digits, half to even: 1e8 to 1e9, the upper end included. Returns
// false where it cannot tell.
//
// With E the decimal exponent and k = 8 - E, the number times 10^k lies in [1e8, 1e9); its integer part is
// the digits and its fraction decides the rounding. In the 128-bit product these digits are the upper half of
// the upper word and the lower half is the first 32 bits of the fraction; adding one half there carries into
// the digits where they are to be rounded up.
//
// With an exact scale the product is exact: every case is certain, and it is a tie if those 32 bits are one
// half and the lower word is zero.
//
// Otherwise the true product exceeds ours, but by less than the number's mantissa, which is less than one
// unit of the upper word. So the 32 bits are right or too small by one. If they are one half, the true
// fraction is more, and is rounded up; if they are one unit less, it may be below one half or above: this
// happens once in 2^32 random numbers, and is declined.
inline bool roundToNineDigits(std::uint64_t mantissa, const Scale &scale, std::uint64_t &nineDigits)
{
    constexpr std::uint64_t half = std::uint64_t{1} << 31U;
    const Product128 product = multiply(mantissa, scale.mantissa);
    const std::uint64_t rounded = product.high + half;
    nineDigits = rounded >> 32U;
    if (static_cast<std::uint32_t>(rounded + 1) <= 1) {
        const bool wasHalf = static_cast<std::uint32_t>(rounded) == 0;
        if ((scale.exponentText & exactScaleFlag) == 0)
            return wasHalf;
        if (wasHalf && product.low == 0)
            nineDigits -= nineDigits % 2;
    }
    return true;
}

// Three digits in a row, and as the first three of a number.
struct ThreeDigits {
    char leading[4];   // "d.dd"
    char following[4]; // "dddE"
};

constexpr std::array<ThreeDigits, 1000> makeThreeDigits()
{
    std::array<ThreeDigits, 1000> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const char hundreds = static_cast<char>('0' + i / 100);
        const char tens = static_cast<char>('0' + i / 10 % 10);
        const char ones = static_cast<char>('0' + i % 10);
        all[i] = {{hundreds, '.', tens, ones}, {hundreds, tens, ones, 'E'}};
    }
    return all;
}

inline constexpr std::array<ThreeDigits, 1000> threeDigits = makeThreeDigits();

// Writes "d.ddddddddE": eleven characters, in pieces of four that overlap. All are read before one is
// written, or the compiler would keep their addresses instead.
inline void writeNineDigits(char *out, std::uint32_t digits)
{
    const std::uint32_t six = digits / 1000;
    const std::uint32_t three = six / 1000;
    const ThreeDigits first = threeDigits[three];
    const ThreeDigits second = threeDigits[six - three * 1000];
    const ThreeDigits third = threeDigits[digits - six * 1000];
    std::memcpy(out, first.leading, 4);
    std::memcpy(out + 4, second.following, 4);
    std::memcpy(out + 7, third.following, 4);
}

// Sixteen characters at a time, in a vector register where there is one.
using Characters = unsigned char __attribute__((vector_size(16)));

inline Characters charactersAt(const char *text)
{
    Characters characters;
    std::memcpy(&characters, text, sizeof characters);
    return characters;
}

// In each place.
inline Characters lesserOf(Characters a, Characters b) { return a < b ? a : b; }

inline Characters greaterOf(Characters a, Characters b) { return a > b ? a : b; }

inline bool isNowhere(Characters mismatches)
{
    std::uint64_t words[2];
    std::memcpy(words, &mismatches, sizeof words);
    return (words[0] | words[1]) == 0;
}

// The characters of a number and the one after it, as their exclusive or with those of zero and `after`: the
// value of a digit, and nothing for any other character that has the form, except for minus signs.
inline Characters differencesOf(const char *text, unsigned char after)
{
    const Characters zero = {' ', '0', '.', '0', '0', '0', '0', '0',
                             '0', '0', '0', 'E', '+', '0', '0', after};
    return charactersAt(text) ^ zero;
}

// For a number alone, whatever is after it.
inline Characters differencesOf(const char *text)
{
    constexpr Characters number = {255, 255, 255, 255, 255, 255, 255, 255,
                                   255, 255, 255, 255, 255, 255, 255, 0};
    return differencesOf(text, 0) & number;
}

// The same with nothing for a minus sign, too. Without branches, since the signs of coordinates change too
// often to be predicted.
inline Characters withoutSigns(Characters differences)
{
    constexpr Characters minusSigns = {' ' ^ '-', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '+' ^ '-', 0, 0, 0};
    return differences == minusSigns ? Characters{} : differences;
}

// True if the characters have the form of a number.
inline bool areOfNumber(Characters differencesWithoutSigns)
{
    constexpr Characters most = {0, 9, 0, 9, 9, 9, 9, 9, 9, 9, 9, 0, 0, 9, 9, 0};
    return isNowhere(differencesWithoutSigns > most);
}

// The digits of a number, nine as an integer, and its exponent with a code for the sign.
struct DecimalParts {
    std::uint32_t digits;
    std::uint32_t exponentCode; // the exponent, or minusCode more than its magnitude
};

constexpr std::uint32_t minusCode = 120;

// From the differences of a number of the form. Neighbours are joined: characters to pairs, pairs to fours,
// and these to the two numbers.
inline DecimalParts decimalPartsOf(Characters differences)
{
    using Pairs = std::uint16_t __attribute__((vector_size(16)));
    using Fours = std::uint32_t __attribute__((vector_size(16)));
    constexpr bool big = hostIsBigEndian; // then the first of two neighbours is in the upper half

    constexpr std::uint16_t minus = minusCode / 10 / ('+' ^ '-');
    //                                blank d, point d,  d d,  d d,  d d, d E, + d, d
    constexpr Pairs weightsOfFirst = {0, 0, 10, 10, 10, 1, minus, 1};
    const auto characters = reinterpret_cast<Pairs>(differences);
    const Pairs upper = characters >> 8;
    const Pairs lower = characters & 0xFF;
    const Pairs pairs = (big ? upper : lower) * weightsOfFirst + (big ? lower : upper);

    constexpr Pairs weights = {10, 1, 100, 1, 10, 1, 10, 1};
    const auto weighed = reinterpret_cast<Fours>(pairs * weights);
    const Fours fours = (weighed >> 16) + (weighed & 0xFFFF);

    std::uint64_t words[2];
    std::memcpy(words, &fours, sizeof words);
    const auto first = [](std::uint64_t word) {
        return static_cast<std::uint32_t>(big ? word >> 32U : word);
    };
    const auto second = [](std::uint64_t word) {
        return static_cast<std::uint32_t>(big ? word : word >> 32U);
    };
    return {first(words[0]) * 10000000U + second(words[0]) * 1000U + first(words[1]), second(words[1])};
}

// For each exponent code what scales nine digits as an integer.
using CodedPowers = std::array<stl_exact_decimal::PowerOfTen, minusCode + 100>;

constexpr CodedPowers makeCodedPowers()
{
    CodedPowers powers{};
    for (int code = 0; code < static_cast<int>(powers.size()); ++code) {
        const int minus = static_cast<int>(minusCode);
        const int index = (code < minus ? code : minus - code) - 8 + stl_exact_decimal::largestExponent;
        const bool isExact = index >= 0 && index < static_cast<int>(stl_exact_decimal::powersOfTen.size());
        powers[static_cast<std::size_t>(code)] =
            isExact ? stl_exact_decimal::powersOfTen[static_cast<std::size_t>(index)]
                    : stl_exact_decimal::PowerOfTen{std::numeric_limits<double>::quiet_NaN(), 1.0};
    }
    return powers;
}

inline constexpr CodedPowers codedPowers = makeCodedPowers();

// Correctly rounded, since it is one operation on two exact numbers (see stlScaleExactly). NaN for an
// exponent outside -14 to 30.
inline double numberFrom(const char *text, Characters differences)
{
    const DecimalParts parts = decimalPartsOf(differences);
    const stl_exact_decimal::PowerOfTen &power = codedPowers[parts.exponentCode];
    const double magnitude =
        static_cast<double>(static_cast<std::int32_t>(parts.digits)) * power.multiplier / power.divisor;
    // Signs change too often for a branch.
    const std::uint64_t bits = bitsOf(magnitude) | static_cast<std::uint64_t>(text[0]) << 63U;
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace stl_fixed_number

// True if the 15 characters have the form. Needs stlFixedNumberRoom readable ones.
inline bool stlIsFixedNumber(const char *text)
{
    using namespace stl_fixed_number;
    return areOfNumber(withoutSigns(differencesOf(text)));
}

// A number rounded to what the form can hold. Rounding and writing are two steps so that the numbers of a
// point can be rounded all and then written all: their long chains of operations then overlap.
struct StlFixedDigits {
    std::uint64_t digits; // nine, as an integer; in a word, which saves narrowing
    stl_fixed_number::ExponentText exponentText;
    char sign;
};

// Returns true, or declines: infinities, NaN, subnormals, three-digit exponents and the undecided case of
// roundToNineDigits.
inline bool stlRoundFixedNumber(double value, StlFixedDigits &rounded)
{
    using namespace stl_fixed_number;
    const std::uint64_t bits = bitsOf(value);
    rounded.sign = (bits >> 63U) != 0 ? '-' : ' ';
    const BinaryParts parts = binaryPartsOf(bits);
    if (parts.exponentIndex >= binaryExponents) {
        rounded.digits = 0;
        rounded.exponentText = makeExponentText(0);
        return bits << 1U == 0;
    }
    const Scale &scale = scaleOf(parts);
    rounded.exponentText = scale.exponentText;
    if (!roundToNineDigits(parts.mantissa, scale, rounded.digits))
        return false;
    if (rounded.digits == 1000000000U) {
        rounded.digits = 100000000U;
        rounded.exponentText = makeExponentText(exponentOf(scale.exponentText) + 1);
    }
    return true;
}

// Writes the number and a blank after it.
inline void stlPutFixedNumber(char *out, const StlFixedDigits &rounded)
{
    using namespace stl_fixed_number;
    out[0] = rounded.sign;
    storeLittleEndian(out + 8, rounded.exponentText);
    writeNineDigits(out + 1, static_cast<std::uint32_t>(rounded.digits));
}

// Writes the number and a blank after it and returns true, or declines and writes nothing.
inline bool stlWriteFixedNumber(char *out, double value)
{
    StlFixedDigits rounded;
    if (!stlRoundFixedNumber(value, rounded))
        return false;
    stlPutFixedNumber(out, rounded);
    return true;
}

// Reads the number, correctly rounded, or declines: another form, or an exponent outside -14 to 30. Needs
// stlFixedNumberRoom readable characters.
inline bool stlReadFixedNumber(const char *text, double &value)
{
    using namespace stl_fixed_number;
    const Characters differences = differencesOf(text);
    if (!areOfNumber(withoutSigns(differences)))
        return false;
    const double number = numberFrom(text, differences);
    if (std::isnan(number))
        return false;
    value = number;
    return true;
}
