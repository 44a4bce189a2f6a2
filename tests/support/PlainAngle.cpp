#include "tests/support/PlainAngle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

namespace plain {

namespace {

// A whole number before the decimal point, and nine digits after it in each further place. A remainder by pi
// loses up to 309 of 405 digits, and the closest that a double comes to a multiple of pi / 2 costs 19 more;
// what is left is enough for the series.
template <std::size_t places>
using Number = std::array<std::uint64_t, places>;
using LongNumber = Number<46>;
using ShortNumber = Number<10>;

constexpr std::uint64_t base = 1000000000;

constexpr LongNumber pi = {3,         141592653, 589793238, 462643383, 279502884, 197169399, 375105820,
                           974944592, 307816406, 286208998, 628034825, 342117067, 982148086, 513282306,
                           647093844, 609550582, 231725359, 408128481, 117450284, 102701938, 521105559,
                           644622948, 954930381, 964428810, 975665933, 446128475, 648233786, 783165271,
                           201909145, 648566923, 460348610, 454326648, 213393607, 260249141, 273724587,
                           6606315,   588174881, 520920962, 829254091, 715364367, 892590360, 11330530,
                           548820466, 521384146, 951941511, 609433057};

template <std::size_t places>
void add(Number<places> &a, const Number<places> &b)
{
    std::uint64_t carry = 0;
    for (std::size_t i = places; i-- > 0;) {
        carry += a[i] + b[i];
        a[i] = i == 0 ? carry : carry % base;
        carry /= base;
    }
}

template <std::size_t places>
void subtract(Number<places> &a, const Number<places> &b)
{
    std::uint64_t borrow = 0;
    for (std::size_t i = places; i-- > 0;) {
        const std::uint64_t taken = b[i] + borrow;
        borrow = a[i] < taken ? 1 : 0;
        a[i] = a[i] + borrow * base - taken;
    }
}

void multiplyByTen(LongNumber &a)
{
    std::uint64_t carry = 0;
    for (std::size_t i = a.size(); i-- > 0;) {
        carry += a[i] * 10;
        a[i] = i == 0 ? carry : carry % base;
        carry /= base;
    }
}

template <std::size_t places>
void divide(Number<places> &a, std::uint64_t divisor)
{
    std::uint64_t rest = 0;
    for (std::uint64_t &place : a) {
        rest = rest * base + place;
        place = rest / divisor;
        rest %= divisor;
    }
}

ShortNumber product(const ShortNumber &a, const ShortNumber &b)
{
    constexpr std::size_t places = std::tuple_size_v<ShortNumber>;
    ShortNumber result{};
    for (std::size_t i = places; i-- > 0;) {
        std::uint64_t carry = 0;
        for (std::size_t j = places; j-- > 0;) {
            carry += a[i] * b[j];
            if (i + j < places) {
                carry += result[i + j];
                result[i + j] = i + j == 0 ? carry : carry % base;
            }
            carry /= base;
        }
        if (i > 0)
            result[i - 1] += carry;
    }
    return result;
}

double rounded(const ShortNumber &number)
{
    std::string text = std::to_string(number[0]) + ".";
    for (std::size_t i = 1; i < number.size(); ++i) {
        char digits[24];
        std::snprintf(digits, sizeof digits, "%09llu", static_cast<unsigned long long>(number[i]));
        text += digits;
    }
    return std::strtod(text.c_str(), nullptr);
}

// What is left of the angle after taking off pi as often as it fits, and whether that was an odd number.
struct Remainder {
    ShortNumber number{};
    bool isOdd = false;
};

bool takeOffPi(LongNumber &number)
{
    bool isOdd = false;
    for (; !(number < pi); isOdd = !isOdd)
        subtract(number, pi);
    return isOdd;
}

Remainder remainderByPi(double angle)
{
    char text[800];
    std::snprintf(text, sizeof text, "%.405f", angle);
    LongNumber rest{};
    const char *at = text;
    for (; *at != '.'; ++at) {
        multiplyByTen(rest);
        add(rest, LongNumber{static_cast<std::uint64_t>(*at - '0')});
        if (at[1] != '.')
            takeOffPi(rest); // ten times whatever number, so an even one
    }
    LongNumber fraction{};
    for (std::size_t i = 1; i < fraction.size(); ++i)
        for (int digit = 0; digit < 9; ++digit)
            fraction[i] = fraction[i] * 10 + static_cast<std::uint64_t>(*++at - '0');
    add(rest, fraction);
    Remainder remainder;
    remainder.isOdd = takeOffPi(rest);
    std::copy_n(rest.begin(), remainder.number.size(), remainder.number.begin());
    return remainder;
}

// The sum of first, -first x^2 / ((n+1)(n+2)) and so on, n rising by two. Terms of either sign have a sum of
// their own.
double series(const ShortNumber &first, const ShortNumber &x, std::uint64_t n, bool negated)
{
    const ShortNumber square = product(x, x);
    ShortNumber term = first;
    ShortNumber positive = first;
    ShortNumber negative{};
    for (bool isNegative = true; term != ShortNumber{}; isNegative = !isNegative) {
        term = product(term, square);
        divide(term, (n + 1) * (n + 2));
        n += 2;
        add(isNegative ? negative : positive, term);
    }
    if (positive < negative) {
        subtract(negative, positive);
        return negated ? rounded(negative) : -rounded(negative);
    }
    subtract(positive, negative);
    return negated ? -rounded(positive) : rounded(positive);
}

// Up to here the second terms of the series, x^3 / 6 and x^2 / 2, are too small to be seen.
bool isTiny(double angle) { return std::fabs(angle) < 1e-9; }

double withoutValue(double angle)
{
    return std::isnan(angle) ? angle : std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0);
}

} // namespace

double sine(double angle)
{
    if (!std::isfinite(angle))
        return withoutValue(angle);
    if (isTiny(angle))
        return angle;
    const Remainder rest = remainderByPi(std::fabs(angle));
    return series(rest.number, rest.number, 1, rest.isOdd != std::signbit(angle));
}

double cosine(double angle)
{
    if (!std::isfinite(angle))
        return withoutValue(angle);
    if (isTiny(angle))
        return 1.0;
    const Remainder rest = remainderByPi(std::fabs(angle));
    return series({1}, rest.number, 0, rest.isOdd);
}

} // namespace plain
