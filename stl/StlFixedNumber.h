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

// A binary floating-point number is m * 2^(e - 52) with m in [2^52, 2^53).
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
    constexpr std::uint64_t implicitOne = std::uint64_t{1} << 52U;
    return {(bits & (implicitOne - 1)) | implicitOne, static_cast<int>(bits >> 52U & 0x7FFU) - exponentBias};
}

// The product of a number's mantissa, shifted to the left, and that of a power of ten has its point here.
constexpr unsigned pointOfProduct = 97;

// What all numbers of one binary and one decimal exponent E share: the power of ten 10^k, k = 8 - E, that
// brings them to nine digits before the point, and how far their mantissa is to be shifted left for that
// point to be at pointOfProduct.
struct Scale {
    std::uint64_t mantissa;
    std::uint8_t shift;
    bool isExact; // the mantissa, for 0 <= k <= 27
    std::int8_t exponent;
};

// The number is m * 2^(e - 52) and 10^k = mantissa * 2^(p - 63), so their product is
// (m << shift) * mantissa * 2^-97 with shift = e + p - 18.
constexpr Scale makeScale(int binaryExponent, int exponent)
{
    const int k = 8 - exponent;
    Scale scale{};
    scale.mantissa = mantissaOfPowerOfTen(k);
    scale.shift = static_cast<std::uint8_t>(binaryExponent - 52 + binaryExponentOfPowerOfTen(k) - 63 +
                                            static_cast<int>(pointOfProduct));
    scale.isExact = isExactPowerOfTen(k);
    scale.exponent = static_cast<std::int8_t>(exponent);
    return scale;
}

// For one binary exponent e: the decade of 2^e and the next one, and where in [2^e, 2^(e+1)) that begins: the
// mantissa of its power of ten, rounded up to 53 bits, or more than any mantissa if it begins later.
struct Decades {
    std::uint64_t nextBegins;
    Scale scales[2];
};

constexpr std::uint64_t beyondAnyMantissa = 0xFFFFFFFFFFFFFFFFU;

constexpr Decades makeDecades(int binaryExponent)
{
    const int exponent = decimalExponentOfPowerOfTwo(binaryExponent);
    const int next = exponent + 1;
    const bool beginsHere = binaryExponentOfPowerOfTen(next) == binaryExponent;
    const std::uint64_t lastBefore = mantissaOfPowerOfTen(next) - (isExactPowerOfTen(next) ? 1 : 0);
    const std::uint64_t begin = (lastBefore >> 11U) + 1;
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

// Rounds m * 2^(e - 52) to nine significant digits, half to even: 1e8 to 1e9, the upper end included. Returns
// false where it cannot tell.
//
// With E the decimal exponent and k = 8 - E, the number times 10^k lies in [1e8, 1e9); its integer part is
// the digits and its fraction decides the rounding. The 128-bit product has 97 bits of fraction, 33 of them
// in its upper word; adding one half there carries into the digits where they are to be rounded up.
//
// For 0 <= k <= 27 the mantissa of 10^k is exact, and so is the product: every case is certain, and it is a
// tie if the fraction is one half and the lower word is zero.
//
// Otherwise the true product exceeds ours, but by less than the number's shifted mantissa, which is less than
// one unit of the upper word. So the 33 bits are right or too small by one. One half of them is more than one
// half in truth, and is rounded up; one unit less may be anything from below one half to above it: this
// happens once in 2^33 random numbers, and is declined.
inline bool roundToNineDigits(std::uint64_t mantissa, const Scale &scale, std::uint32_t &nineDigits)
{
    constexpr unsigned fractionBits = pointOfProduct - 64;
    constexpr std::uint64_t half = std::uint64_t{1} << (fractionBits - 1);
    constexpr std::uint64_t fractionMask = 2 * half - 1;
    const Product128 product = multiply(mantissa << scale.shift, scale.mantissa);
    const std::uint64_t rounded = product.high + half;
    nineDigits = static_cast<std::uint32_t>(rounded >> fractionBits);
    if (((rounded + 1) & fractionMask) <= 1) {
        const bool wasHalf = (rounded & fractionMask) == 0;
        if (!scale.isExact)
            return wasHalf;
        if (wasHalf && product.low == 0)
            nineDigits -= nineDigits % 2;
    }
    return true;
}

// Three digits in a row, and as the first three of a number.
struct ThreeDigits {
    char leading[4];   // "d.dd"
    char following[4]; // "ddd" and a blank
};

constexpr std::array<ThreeDigits, 1000> makeThreeDigits()
{
    std::array<ThreeDigits, 1000> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        const char hundreds = static_cast<char>('0' + i / 100);
        const char tens = static_cast<char>('0' + i / 10 % 10);
        const char ones = static_cast<char>('0' + i % 10);
        all[i] = {{hundreds, '.', tens, ones}, {hundreds, tens, ones, ' '}};
    }
    return all;
}

inline constexpr std::array<ThreeDigits, 1000> threeDigits = makeThreeDigits();

// Writes "d.dddddddd" and a blank: eleven characters, in pieces of four that overlap. The digits are made a
// fraction of 2^54, of which each multiplication brings three more before the point: 2^54 / 10^6, rounded up,
// is off by less than one, so the fraction by less than 2^30, and times 10^6 that is still less than 2^54,
// one unit of the last digit.
inline void writeNineDigits(char *out, std::uint32_t digits)
{
    constexpr unsigned fractionBits = 54;
    constexpr std::uint64_t fractionMask = (std::uint64_t{1} << fractionBits) - 1;
    constexpr std::uint64_t unit = (fractionMask + 1) / 1000000U + 1;
    std::uint64_t number = digits * unit;
    std::memcpy(out, threeDigits[number >> fractionBits].leading, 4);
    number = (number & fractionMask) * 1000U;
    std::memcpy(out + 4, threeDigits[number >> fractionBits].following, 4);
    number = (number & fractionMask) * 1000U;
    std::memcpy(out + 7, threeDigits[number >> fractionBits].following, 4);
}

struct ExponentText {
    char text[4]; // "E+dd"
};

constexpr int largestExponent = 99;

constexpr std::array<ExponentText, 2 * largestExponent + 1> makeExponentTexts()
{
    std::array<ExponentText, 2 * largestExponent + 1> texts{};
    for (int exponent = -largestExponent; exponent <= largestExponent; ++exponent) {
        const int magnitude = exponent < 0 ? -exponent : exponent;
        texts[static_cast<std::size_t>(exponent + largestExponent)] = {
            {'E', exponent < 0 ? '-' : '+', static_cast<char>('0' + magnitude / 10),
             static_cast<char>('0' + magnitude % 10)}};
    }
    return texts;
}

inline constexpr std::array<ExponentText, 2 *largestExponent + 1> exponentTexts = makeExponentTexts();

inline const ExponentText &textOfExponent(int exponent)
{
    return exponentTexts[static_cast<std::size_t>(exponent + largestExponent)];
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

    // Zero if the word matches.
    constexpr std::uint64_t mismatches(std::uint64_t word) const
    {
        const std::uint64_t difference = (word ^ expected) & ~ignored;
        return ((difference + slack) | difference) & mask;
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

// True if the 15 characters have the form. One branch for all of it, since the signs of coordinates change
// too often to be predicted.
inline bool stlIsFixedNumber(const char *text)
{
    using namespace stl_fixed_number;
    // ' ' or '-' in front and '+' or '-' in the exponent: the factors are zero for the one or the other.
    const unsigned sign = static_cast<unsigned char>(text[0]);
    const unsigned exponentSign = static_cast<unsigned char>(text[12]);
    const unsigned wrongSigns =
        ((sign ^ unsigned{' '}) * (sign ^ unsigned{'-'})) | ((exponentSign - unsigned{'+'}) & ~2U);
    return (headForm.mismatches(load64(text)) | tailForm.mismatches(load64(text + 7)) | wrongSigns) == 0;
}

// A number rounded to what the form can hold. Rounding and writing are two steps so that the numbers of a
// point can be rounded all and then written all: their long chains of operations then overlap.
struct StlFixedDigits {
    std::uint32_t digits; // nine, as an integer
    std::int32_t exponent;
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
    if (parts.exponent < -largestBinaryExponent || parts.exponent > largestBinaryExponent) {
        rounded.digits = 0;
        rounded.exponent = 0;
        return bits << 1U == 0;
    }
    const Scale &scale = scaleOf(parts);
    rounded.exponent = scale.exponent;
    if (!roundToNineDigits(parts.mantissa, scale, rounded.digits))
        return false;
    if (rounded.digits == 1000000000U) {
        rounded.digits = 100000000U;
        ++rounded.exponent;
    }
    return true;
}

inline void stlPutFixedNumber(char *out, const StlFixedDigits &rounded)
{
    using namespace stl_fixed_number;
    out[0] = rounded.sign;
    writeNineDigits(out + 1, rounded.digits);
    std::memcpy(out + 11, textOfExponent(rounded.exponent).text, sizeof(ExponentText));
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
    // Signs of coordinates change too often for a branch.
    const std::uint64_t bits = bitsOf(magnitude) | static_cast<std::uint64_t>(text[0] == '-') << 63U;
    std::memcpy(&value, &bits, sizeof value);
    return true;
}
