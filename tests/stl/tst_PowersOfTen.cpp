// Checks the table with decimal arithmetic as done on paper.
#include "stl/PowersOfTen.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

// A natural number as its decimal digits, the last one first.
class Digits {
public:
    explicit Digits(std::uint64_t number)
    {
        do {
            m_digits += static_cast<char>('0' + number % 10);
            number /= 10;
        } while (number != 0);
    }

    static Digits powerOfTen(int n) { return Digits(1).timesPowerOfTen(n); }

    Digits timesPowerOfTen(int n) const
    {
        Digits product = *this;
        product.m_digits.insert(0, static_cast<std::size_t>(n), '0');
        return product;
    }

    Digits timesPowerOfTwo(int n) const
    {
        Digits product = *this;
        for (int i = 0; i < n; ++i)
            product.makeDouble();
        return product;
    }

    int size() const { return static_cast<int>(m_digits.size()); }

    // Negative, zero or positive: this number is less than, equal to or greater than the other.
    int compare(const Digits &other) const
    {
        if (size() != other.size())
            return size() < other.size() ? -1 : 1;
        return std::string(m_digits.rbegin(), m_digits.rend())
            .compare(std::string(other.m_digits.rbegin(), other.m_digits.rend()));
    }

private:
    void makeDouble()
    {
        int carry = 0;
        for (char &digit : m_digits) {
            const int twice = 2 * (digit - '0') + carry;
            digit = static_cast<char>('0' + twice % 10);
            carry = twice / 10;
        }
        if (carry != 0)
            m_digits += '1';
    }

    std::string m_digits;
};

// Compares mantissa * 2^(exponent - 63) with 10^n, both brought to whole numbers.
int compareWithPowerOfTen(std::uint64_t mantissa, int exponent, int n)
{
    const int shift = exponent - 63;
    const Digits left = Digits(mantissa).timesPowerOfTen(std::max(-n, 0)).timesPowerOfTwo(std::max(shift, 0));
    const Digits right = Digits::powerOfTen(std::max(n, 0)).timesPowerOfTwo(std::max(-shift, 0));
    return left.compare(right);
}

TEST(PowersOfTen, EveryMantissaIsTruncatedToItsLastBit)
{
    for (int n = smallestPowerOfTen; n <= largestPowerOfTen; ++n) {
        SCOPED_TRACE(n);
        const std::uint64_t mantissa = mantissaOfPowerOfTen(n);
        const int exponent = binaryExponentOfPowerOfTen(n);
        EXPECT_EQ(mantissa >> 63U, 1U);
        EXPECT_LE(compareWithPowerOfTen(mantissa, exponent, n), 0);
        // The largest mantissa is followed by the smallest one of the next exponent.
        const bool isLargest = mantissa + 1 == 0;
        const std::uint64_t following = isLargest ? std::uint64_t{1} << 63U : mantissa + 1;
        EXPECT_GT(compareWithPowerOfTen(following, exponent + (isLargest ? 1 : 0), n), 0);
    }
}

TEST(PowersOfTen, PowersCountAsExactIfTheirMantissasAre)
{
    for (int n = smallestPowerOfTen; n <= largestPowerOfTen; ++n) {
        SCOPED_TRACE(n);
        const bool isExact =
            compareWithPowerOfTen(mantissaOfPowerOfTen(n), binaryExponentOfPowerOfTen(n), n) == 0;
        EXPECT_EQ(isExactPowerOfTen(n), isExact);
    }
}

TEST(PowersOfTen, WellKnownEntriesAreThere)
{
    EXPECT_EQ(mantissaOfPowerOfTen(0), 0x8000000000000000U);
    EXPECT_EQ(mantissaOfPowerOfTen(1), 0xA000000000000000U);
    EXPECT_EQ(mantissaOfPowerOfTen(3), 0xFA00000000000000U);
    EXPECT_EQ(mantissaOfPowerOfTen(-1), 0xCCCCCCCCCCCCCCCCU);
    EXPECT_EQ(mantissaOfPowerOfTen(-2), 0xA3D70A3D70A3D70AU);
}

TEST(PowersOfTen, DecimalExponentsOfPowersOfTwo)
{
    Digits power(1);
    for (int e = 0; e <= 1650; ++e) {
        SCOPED_TRACE(e);
        EXPECT_EQ(decimalExponentOfPowerOfTwo(e), power.size() - 1);
        if (e > 0) { // 2^-e lies between two powers of ten
            EXPECT_EQ(decimalExponentOfPowerOfTwo(-e), -power.size());
        }
        power = power.timesPowerOfTwo(1);
    }
    EXPECT_NE(decimalExponentOfPowerOfTwo(-1651), -Digits(1).timesPowerOfTwo(1651).size())
        << "the formula is exact up to here only";
}

// 10^n lies above all powers of two with at most n digits.
TEST(PowersOfTen, BinaryExponentsOfPowersOfTen)
{
    Digits power(2);
    int exponent = 1; // of `power`
    EXPECT_EQ(binaryExponentOfPowerOfTen(0), 0);
    for (int n = 1; n <= 642; ++n) {
        SCOPED_TRACE(n);
        while (power.size() <= n) {
            power = power.timesPowerOfTwo(1);
            ++exponent;
        }
        EXPECT_EQ(binaryExponentOfPowerOfTen(n), exponent - 1);
        EXPECT_EQ(binaryExponentOfPowerOfTen(-n), -exponent);
    }
    EXPECT_LE(largestPowerOfTen, 642);
    EXPECT_GE(smallestPowerOfTen, -642);
}

} // namespace
