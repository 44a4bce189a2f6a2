// The common form of a number in mesh text, exactly 15 characters: a blank or a minus sign, one digit, a
// point, eight digits, "E", a sign and two digits. "% .8E" and "%15.8E" both write it for zero and for every
// number whose decimal exponent has two digits.
//
// The two kernels here are fast because they may decline: then nothing is said about the number, and
// StlNumberText goes the exact way. They never guess.
#pragma once

#include "stl/PowersOfTen.h"
#include "stl/StlExactDecimal.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

constexpr int stlFixedNumberSize = 15;

namespace stl_fixed_number {

// A binary floating-point number is m * 2^(e - 63) with m in [2^63, 2^64).
struct BinaryParts {
    std::uint64_t mantissa;
    int exponent;
};

constexpr int exponentBias = 1023;
constexpr int largestBinaryExponent = 328; // from 2^-328 to below 2^329 decimal exponents have two digits

inline std::uint64_t bitsOf(double value)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value, "doubles are 64-bit numbers");
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline BinaryParts binaryPartsOf(std::uint64_t bits)
{
    return {bits << 11U | std::uint64_t{1} << 63U, static_cast<int>(bits >> 52U & 0x7FFU) - exponentBias};
}

// What all numbers of one binary and one decimal exponent E share: the power of ten 10^k, k = 8 - E, that
// brings them to nine digits before the point, how far their product with it is to be shifted right, and the
// text of E.
struct Scale {
    std::uint64_t mantissa;
    std::uint8_t shift;
    bool isExact; // the mantissa, for 0 <= k <= 27
    std::int8_t exponent;
    char exponentText[4];
};

constexpr void writeExponent(char (&text)[4], int exponent)
{
    const int magnitude = exponent < 0 ? -exponent : exponent;
    text[0] = 'E';
    text[1] = exponent < 0 ? '-' : '+';
    text[2] = static_cast<char>('0' + magnitude / 10);
    text[3] = static_cast<char>('0' + magnitude % 10);
}

constexpr Scale makeScale(int binaryExponent, int exponent)
{
    const int k = 8 - exponent;
    Scale scale{};
    scale.mantissa = mantissaOfPowerOfTen(k);
    scale.shift = static_cast<std::uint8_t>(62 - binaryExponent - binaryExponentOfPowerOfTen(k));
    scale.isExact = isExactPowerOfTen(k);
    scale.exponent = static_cast<std::int8_t>(exponent);
    writeExponent(scale.exponentText, exponent);
    return scale;
}

// For one binary exponent e: the decade of 2^e and the next one, and where in [2^e, 2^(e+1)) that begins: the
// mantissa of its power of ten, rounded up, or more than any mantissa if it begins later.
struct Decades {
    std::uint64_t nextBegins;
    Scale scales[2];
};

constexpr std::uint64_t beyondAnyMantissa = 0xFFFFFFFFFFFFFFFFU; // the 53 bits of a double leave zeros below

constexpr Decades makeDecades(int binaryExponent)
{
    const int exponent = decimalExponentOfPowerOfTwo(binaryExponent);
    const int next = exponent + 1;
    const bool beginsHere = binaryExponentOfPowerOfTen(next) == binaryExponent;
    const std::uint64_t begin = mantissaOfPowerOfTen(next) + (isExactPowerOfTen(next) ? 0 : 1);
    return {beginsHere ? begin : beyondAnyMantissa,
            {makeScale(binaryExponent, exponent), makeScale(binaryExponent, next)}};
}

using DecadeTable = std::array<Decades, 2 * largestBinaryExponent + 1>;

constexpr DecadeTable makeDecadeTable()
{
    DecadeTable table{};
    for (int e = -largestBinaryExponent; e <= largestBinaryExponent; ++e)
        table[static_cast<std::size_t>(e + largestBinaryExponent)] = makeDecades(e);
    return table;
}

// A table, because the multiplications that would give the same are on the critical path of every number.
inline constexpr DecadeTable decadeTable = makeDecadeTable();

inline const Scale &scaleOf(const BinaryParts &value)
{
    const Decades &decades = decadeTable[static_cast<std::size_t>(value.exponent + largestBinaryExponent)];
    return decades.scales[static_cast<std::size_t>(value.mantissa >= decades.nextBegins)];
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
// the digits and its fraction decides the rounding. The product of the two 64-bit mantissas is that times
// 2^(64 + s), with s from 33 to 37, so the fraction has 64 + s bits, of which we look at the upper 64.
//
// For 0 <= k <= 27 the mantissa of 10^k is exact, and so is the product: every case is certain, ties
// included.
//
// Otherwise the true product exceeds ours by less than 2^64 (the number's mantissa times an error below one),
// which is less than 2^(64 - s) < 2^32 in the upper 64 bits of the fraction; leaving out the lower bits adds
// less than one. So only a fraction less than 2^32 below one half, or one half itself, can be on the other
// side of it or on it: this happens once in 2^32 random numbers, and is declined. Carrying over the top of
// the fraction is harmless: a fraction just below one is rounded up, and one just above zero of the next
// integer is rounded down to the same integer.
inline bool roundToNineDigits(std::uint64_t mantissa, const Scale &scale, std::uint32_t &nineDigits)
{
    constexpr std::uint64_t half = std::uint64_t{1} << 63U;
    constexpr std::uint64_t doubtful = std::uint64_t{1} << 32U;
    const Product128 product = multiply(mantissa, scale.mantissa);
    const unsigned s = scale.shift;
    const std::uint64_t fraction = product.high << (64U - s) | product.low >> s;
    const std::uint32_t digits = static_cast<std::uint32_t>(product.high >> s);
    bool roundUp = fraction >= half;
    if (fraction - (half - doubtful) <= doubtful) {
        if (!scale.isExact)
            return false;
        const bool isTie = fraction == half && product.low << (64U - s) == 0;
        roundUp = isTie ? digits % 2 == 1 : fraction >= half;
    }
    nineDigits = digits + static_cast<std::uint32_t>(roundUp);
    return true;
}

constexpr std::array<char, 200> makeDigitPairs()
{
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}

inline constexpr std::array<char, 200> digitPairs = makeDigitPairs();

// Writes "d.dddddddd". The digits are made a fraction of 2^57, of which each multiplication brings two more
// before the point: 2^57 / 10^8, rounded up, is off by less than one, so the fraction by less than 2^30, and
// times 10^8 that is still less than 2^57, one unit of the last digit.
inline void writeNineDigits(char *out, std::uint32_t digits)
{
    constexpr unsigned fractionBits = 57;
    constexpr std::uint64_t fractionMask = (std::uint64_t{1} << fractionBits) - 1;
    constexpr std::uint64_t unit = (fractionMask + 1) / 100000000U + 1;
    std::uint64_t number = digits * unit;
    out[0] = static_cast<char>('0' + (number >> fractionBits));
    out[1] = '.';
    for (std::size_t at = 2; at < 10; at += 2) {
        number = (number & fractionMask) * 100U;
        std::memcpy(out + at, &digitPairs[2 * (number >> fractionBits)], 2);
    }
}

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool isBigEndian = true;
#else
constexpr bool isBigEndian = false;
#endif

inline std::uint64_t swapBytes(std::uint64_t word)
{
    std::uint64_t swapped = 0;
    for (unsigned i = 0; i < 8; ++i)
        swapped |= (word >> (8U * i) & 0xFFU) << (56U - 8U * i);
    return swapped;
}

// The first character is the lowest byte of the word.
inline std::uint64_t load64(const char *text)
{
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return isBigEndian ? swapBytes(word) : word;
}

// What eight characters must be: a byte that must be a digit has 0x30 in `expected`, 0x06 in `slack` and 0xF0
// in `mask`; one that must be a certain character has that character, 0x7F and 0x80; any other byte has
// `mask` zero and 0xFF in `ignored`. The exclusive or leaves 0 to 9 of a digit and 0 of the certain
// character, and adding the slack to that leaves the bits of the mask clear, while anything else sets one of
// them, with or without the addition. A carry into the next byte comes only from a byte that has failed
// already.
struct WordForm {
    std::uint64_t expected;
    std::uint64_t slack;
    std::uint64_t mask;
    std::uint64_t ignored;

    constexpr bool matches(std::uint64_t word) const
    {
        const std::uint64_t difference = (word ^ expected) & ~ignored;
        return (((difference + slack) | difference) & mask) == 0;
    }
};

// "?d.ddddd" and "ddddE?dd", which overlap by one digit; first character in the lowest byte.
constexpr WordForm headForm = {0x30303030302E3000U, 0x06060606067F0600U, 0xF0F0F0F0F080F000U,
                               0x00000000000000FFU};
constexpr WordForm tailForm = {0x3030004530303030U, 0x0606007F06060606U, 0xF0F00080F0F0F0F0U,
                               0x0000FF0000000000U};

// The number that eight digits make. Neighbours are joined: pairs, then fours, then all eight.
inline std::uint32_t eightDigits(std::uint64_t word)
{
    std::uint64_t digits = word & 0x0F0F0F0F0F0F0F0FU;
    digits = digits * 10U + (digits >> 8U);
    const std::uint64_t pairs = 0x000000FF000000FFU;
    digits = ((digits & pairs) * (100U + (std::uint64_t{1000000} << 32U)) +
              ((digits >> 16U) & pairs) * (1U + (std::uint64_t{10000} << 32U))) >>
             32U;
    return static_cast<std::uint32_t>(digits);
}

} // namespace stl_fixed_number

// True if the 15 characters have the form.
inline bool stlIsFixedNumber(const char *text)
{
    using namespace stl_fixed_number;
    const bool signs = (text[0] == ' ' || text[0] == '-') && (text[12] == '+' || text[12] == '-');
    return headForm.matches(load64(text)) && tailForm.matches(load64(text + 7)) && signs;
}

// A number rounded to what the form can hold. Rounding and writing are two steps so that the numbers of a
// facet can be rounded all and then written all: their long chains of operations then overlap, which saves a
// quarter of the time.
struct StlFixedDigits {
    std::uint32_t digits; // nine, as an integer
    char sign;
    char exponentText[4];
};

// Returns true, or declines: infinities, NaN, subnormals, three-digit exponents and the undecided case of
// roundToNineDigits.
inline bool stlRoundFixedNumber(double value, StlFixedDigits &rounded)
{
    using namespace stl_fixed_number;
    const std::uint64_t bits = bitsOf(value);
    rounded.sign = (bits >> 63U) != 0 ? '-' : ' ';
    const BinaryParts parts = binaryPartsOf(bits);
    if (parts.exponent < -largestBinaryExponent || parts.exponent > largestBinaryExponent) {
        rounded.digits = 0;
        std::memcpy(rounded.exponentText, "E+00", 4);
        return bits << 1U == 0;
    }
    const Scale &scale = scaleOf(parts);
    std::memcpy(rounded.exponentText, scale.exponentText, 4);
    if (!roundToNineDigits(parts.mantissa, scale, rounded.digits))
        return false;
    if (rounded.digits == 1000000000U) {
        rounded.digits = 100000000U;
        writeExponent(rounded.exponentText, scale.exponent + 1);
    }
    return true;
}

inline void stlPutFixedNumber(char *out, const StlFixedDigits &rounded)
{
    out[0] = rounded.sign;
    stl_fixed_number::writeNineDigits(out + 1, rounded.digits);
    std::memcpy(out + 11, rounded.exponentText, 4);
}

// Writes the number and returns true, or declines and writes nothing.
inline bool stlWriteFixedNumber(char *out, double value)
{
    StlFixedDigits rounded;
    if (!stlRoundFixedNumber(value, rounded))
        return false;
    stlPutFixedNumber(out, rounded);
    return true;
}

// Reads the number, correctly rounded, or declines: another form, or an exponent outside -14 to 30.
inline bool stlReadFixedNumber(const char *text, double &value)
{
    using namespace stl_fixed_number;
    if (!stlIsFixedNumber(text))
        return false;
    const auto digit = [text](int at) { return text[at] - '0'; };
    const std::uint64_t digits =
        static_cast<std::uint64_t>(digit(1)) * 100000000U + eightDigits(load64(text + 3));
    const int exponent = 10 * digit(13) + digit(14);
    double magnitude = 0.0;
    if (!stlScaleExactly(digits, (text[12] == '-' ? -exponent : exponent) - 8, magnitude))
        return false;
    constexpr double signs[2] = {1.0, -1.0}; // coordinates change sign too often for a branch
    value = signs[static_cast<int>(text[0] == '-')] * magnitude;
    return true;
}
