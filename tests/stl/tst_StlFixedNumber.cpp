#include "stl/StlFixedNumber.h"
#include "stl/StlNumberText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr const char *nothingWritten = "################";

std::string printed(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "% .8E", value);
    return text;
}

// What the kernel writes, without the blank after it: nothing if it declines.
std::string kernelText(double value)
{
    std::string text = nothingWritten;
    const bool answered = stlWriteFixedNumber(text.data(), value);
    EXPECT_EQ(answered, text != nothingWritten) << value;
    EXPECT_TRUE(!answered || text.back() == ' ') << text;
    if (answered)
        text.pop_back();
    return text;
}

std::string fullText(double value)
{
    char text[stlMaxNumberText];
    return {text, stlWriteBlankSigned(text, value)};
}

bool isAnswered(double value) { return kernelText(value) != nothingWritten; }

// For both signs. True if the kernel answered.
bool isWrittenAsPrinted(double value)
{
    bool answered = false;
    for (const double number : {value, -value}) {
        const std::string text = kernelText(number);
        answered = text != nothingWritten;
        EXPECT_TRUE(!answered || text == printed(number)) << text << " is not " << printed(number);
        EXPECT_EQ(fullText(number), printed(number)) << number;
    }
    return answered;
}

struct WrittenNumber {
    double value;
    const char *text;
};

// The kernel declines, and the exact conversion writes what the C library does.
void expectDeclined(const WrittenNumber &number)
{
    SCOPED_TRACE(number.text);
    EXPECT_FALSE(isAnswered(number.value));
    EXPECT_EQ(fullText(number.value), number.text);
    EXPECT_EQ(printed(number.value), number.text);
}

// Within the binary exponents of the kernel's table.
bool isInRange(double value) { return std::fabs(value) >= 0x1p-328 && std::fabs(value) < 0x1p329; }

TEST(StlFixedNumber, EveryBinaryExponentIsWrittenAsPrinted)
{
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        for (const double factor :
             {1.0, 1.0 + 0x1p-52, 1.0 + 0x1p-51, 1.5, 1.25, 1.0 + 0x1p-26, 2.0 - 0x1p-51, 2.0 - 0x1p-52}) {
            const double value = power * factor;
            if (!std::isfinite(value))
                continue;
            EXPECT_EQ(isWrittenAsPrinted(value), isInRange(value)) << value;
        }
    }
}

TEST(StlFixedNumber, PowersOfTenAndTheirNeighboursAreWrittenAsPrinted)
{
    for (int exponent = -110; exponent <= 110; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        double below = power;
        double above = power;
        EXPECT_EQ(isWrittenAsPrinted(power), isInRange(power));
        for (int i = 0; i < 20; ++i) {
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, infinity);
            EXPECT_EQ(isWrittenAsPrinted(below), isInRange(below));
            EXPECT_EQ(isWrittenAsPrinted(above), isInRange(above));
        }
    }
}

TEST(StlFixedNumber, RandomNumbersAreWrittenAsPrinted)
{
    std::mt19937_64 random(815);
    int answered = 0;
    constexpr int all = 200000;
    for (int i = 0; i < all && !HasFailure(); ++i) {
        const std::uint64_t mantissa = random() >> 12U;
        const int exponent = static_cast<int>(random() % 657) - 328;
        answered +=
            isWrittenAsPrinted(std::ldexp(1.0 + std::ldexp(static_cast<double>(mantissa), -52), exponent))
                ? 1
                : 0;
    }
    EXPECT_EQ(answered, all);
}

TEST(StlFixedNumber, NumbersThatDoNotFitAreDeclined)
{
    for (const double value : {infinity, 1e100, 1e-100, 1e300, 1e-300, 0x1p329, 0x1.fffffffffffffp-329,
                               std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(),
                               std::numeric_limits<double>::max(), 0x0.fffffffffffffp-1022}) {
        SCOPED_TRACE(value);
        EXPECT_FALSE(isAnswered(value));
        EXPECT_FALSE(isAnswered(-value));
        EXPECT_EQ(fullText(value), printed(value));
        EXPECT_EQ(fullText(-value), printed(-value));
    }
    EXPECT_FALSE(isAnswered(notANumber));
    EXPECT_FALSE(isAnswered(-notANumber));
    EXPECT_EQ(fullText(notANumber), " NAN");
    EXPECT_EQ(fullText(-notANumber), "-NAN"); // not every C library prints the sign
}

TEST(StlFixedNumber, ZerosAreWrittenWithTheirSign)
{
    EXPECT_EQ(kernelText(0.0), " 0.00000000E+00");
    EXPECT_EQ(kernelText(-0.0), "-0.00000000E+00");
}

TEST(StlFixedNumber, ACarryGoesIntoTheExponent)
{
    const WrittenNumber rows[] = {
        {999999.9995, " 1.00000000E+06"},      {999999.9994, " 9.99999999E+05"},
        {0.9999999999, " 1.00000000E+00"},     {9.9999999999, " 1.00000000E+01"},
        {-99999.999999, "-1.00000000E+05"},    {9.9999999999e-10, " 1.00000000E-09"},
        {9.9999999999e8, " 1.00000000E+09"},   {9.9999999999e9, " 1.00000000E+10"},
        {9.9999999999e98, " 1.00000000E+99"},  {9.9999999949e98, " 9.99999999E+98"},
        {9.9999999999e-99, " 1.00000000E-98"}, {1.9999999999e-99, " 2.00000000E-99"},
    };
    for (const WrittenNumber &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(kernelText(row.value), row.text);
        EXPECT_EQ(printed(row.value), row.text);
    }
}

// Some numbers beyond the kernel's exponents still have the common form, others do not.
TEST(StlFixedNumber, NumbersBeyondTheKernelsExponentsAreWrittenExactly)
{
    const WrittenNumber rows[] = {
        {0x1.fffffffffffffp328, " 1.09362536E+99"},
        {1.2e99, " 1.20000000E+99"},
        {9.9999999949e99, " 9.99999999E+99"},
        {9.9999999951e99, " 1.00000000E+100"},
        {1e-99, " 1.00000000E-99"},
        {9.9999999951e-100, " 1.00000000E-99"},
        {9.9999999949e-100, " 9.99999999E-100"},
    };
    for (const WrittenNumber &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(printed(row.value), row.text);
        EXPECT_EQ(fullText(row.value), row.text);
    }
}

std::uint64_t powerOf(std::uint64_t base, int exponent)
{
    std::uint64_t power = 1;
    for (int i = 0; i < exponent; ++i)
        power *= base;
    return power;
}

// (digits + 1/2) * 10^-k, exactly: that is odd * 2^-(k+1), where odd * 5^k is twice the digits plus one.
void expectTie(std::uint64_t odd, int k)
{
    const std::uint64_t digits = (odd * powerOf(5, k) - 1) / 2;
    const double value = std::ldexp(static_cast<double>(odd), -(k + 1));
    std::string even = std::to_string(digits + digits % 2);
    std::string expected = " " + even.substr(0, 1) + "." + even.substr(1, 8) + "E" + (k > 8 ? "-0" : "+0") +
                           std::to_string(std::abs(8 - k));
    if (digits + digits % 2 == 1000000000)
        return;
    EXPECT_EQ(kernelText(value), expected) << value;
    EXPECT_EQ(printed(value), expected) << value;
}

// Beyond k = 13 the digits of 5^k are more than the nine of a tie.
TEST(StlFixedNumber, TiesGoToTheEvenDigit)
{
    std::mt19937_64 random(816);
    int ties = 0;
    for (int k = 0; k <= 12; ++k) {
        const std::uint64_t first = (200000001 + powerOf(5, k) - 1) / powerOf(5, k);
        const std::uint64_t last = 1999999999 / powerOf(5, k);
        for (int i = 0; i < 500; ++i) {
            const std::uint64_t odd = (first + random() % (last - first + 1)) | 1U;
            if (odd > last)
                continue;
            expectTie(odd, k);
            ++ties;
        }
    }
    EXPECT_GT(ties, 5000);
    expectTie(1, 13);
}

// Where the power of ten is not exact, above 1e9, ties look like the numbers just below them.
TEST(StlFixedNumber, TiesWithAnInexactPowerOfTenAreDeclined)
{
    std::mt19937_64 random(817);
    int ties = 0;
    for (int n = 1; n <= 9; ++n) {
        for (int i = 0; i < 100; ++i) {
            const std::uint64_t odd = 2 * (100000000 + random() % 900000000) + 1;
            if (odd > (std::uint64_t{1} << 53U) / powerOf(5, n))
                continue;
            const double value = std::ldexp(static_cast<double>(odd * powerOf(5, n)), n - 1);
            EXPECT_FALSE(isAnswered(value)) << value;
            EXPECT_FALSE(isAnswered(-value)) << value;
            EXPECT_EQ(fullText(value), printed(value));
            EXPECT_EQ(fullText(-value), printed(-value));
            ++ties;
        }
    }
    EXPECT_GT(ties, 600);
    EXPECT_FALSE(isAnswered(1000000005.0));
    EXPECT_EQ(fullText(1000000005.0), " 1.00000000E+09");
    EXPECT_EQ(fullText(1000000015.0), " 1.00000002E+09");
}

// The numbers of the next three tests were found by solving for the fraction of the product with the scale.
// In all of them the tenth digit is a five and nothing but zeros (or a four and nothing but nines) follow for
// seven digits or more.

// The first 32 bits of the fraction are one less than one half, and the true fraction is below one half.
TEST(StlFixedNumber, NumbersBelowTheTieByLessThanTheErrorAreDeclined)
{
    const WrittenNumber rows[] = {
        {0x1.5af849f6e6c67p-256, " 1.17050404E-77"}, {0x1.2f4d5137dde63p-247, " 5.23873474E-75"},
        {0x1.60597bd4c47eep-229, " 1.59538220E-69"}, {0x1.1e7826f95c08fp-148, " 3.13616447E-45"},
        {0x1.2d170ccf86630p-103, " 1.15975664E-31"}, {0x1.6b384df752e21p+79, " 8.57628834E+23"},
        {0x1.765322fec048bp+88, " 4.52530858E+26"},  {0x1.0585a5bb6713cp+115, " 4.24343803E+34"},
        {0x1.98921cda25cdfp+133, " 1.73786778E+40"}, {0x1.f453510a6ce51p+178, " 7.48775907E+53"},
        {0x1.f710a350c26e7p+187, " 3.85472428E+56"}, {0x1.6ed78a255b02dp+205, " 7.36865360E+61"},
        {0x1.b52a586a41520p+241, " 6.03440956E+72"}, {0x1.438922d576aacp+277, " 3.06895857E+83"},
        {0x1.78f84edfa7617p+286, " 1.83081950E+86"}, {0x1.fa74b79514c64p+313, " 3.30134061E+94"},
    };
    for (const WrittenNumber &row : rows)
        expectDeclined(row);
}

// The same bits, but the true fraction is above one half: an answer would be wrong.
TEST(StlFixedNumber, NumbersWhoseTruncatedProductIsOnTheWrongSideAreDeclined)
{
    const WrittenNumber rows[] = {
        {0x1.b057c882fdce9p-328, " 3.08851555E-99"}, {0x1.ec087702cf1a4p-265, " 3.24194374E-80"},
        {0x1.2decfdfa44335p-220, " 6.99940532E-67"}, {0x1.5b0f1fed5eae7p-184, " 5.52897015E-56"},
        {0x1.9ed2e1f2fe75ep-166, " 1.73238486E-50"}, {0x1.4d7ba21c50b91p-130, " 9.57049109E-40"},
        {0x1.d27242da703c6p-85, " 4.70990434E-26"},  {0x1.efb9fb7f6674ap-76, " 2.56284591E-23"},
        {0x1.2e1c6abe3380dp-67, " 7.99681169E-21"},  {0x1.8820f806e154ep+97, " 2.42715962E+29"},
        {0x1.f5cb2ff3a223bp+115, " 8.14206830E+34"}, {0x1.e6e057a17f251p+133, " 2.07094291E+40"},
        {0x1.85ae910518672p+232, " 1.05058033E+70"}, {0x1.9665640574017p+250, " 2.87215873E+75"},
        {0x1.43cdcf080e630p+286, " 1.57260961E+86"}, {0x1.ab16459f7ac5cp+295, " 1.06200145E+89"},
    };
    for (const WrittenNumber &row : rows)
        expectDeclined(row);
}

// Two less than one half in the first rows, one half in the others: these are answered correctly.
TEST(StlFixedNumber, NumbersJustOutsideTheDoubtAreAnswered)
{
    const WrittenNumber rows[] = {
        {0x1.a962a723c5a2cp-292, " 2.08825650E-88"}, {0x1.32fc18d28cee9p-283, " 7.71592626E-86"},
        {0x1.905d1f17cd827p-247, " 6.91521775E-75"}, {0x1.2110aa8381679p-193, " 8.99428272E-59"},
        {0x1.7a1ed796503a7p-184, " 6.02380673E-56"}, {0x1.61c12ac69cbdcp-130, " 1.01522579E-39"},
        {0x1.77ac4f1f234f1p-121, " 5.52001982E-37"}, {0x1.5a03bf51edc06p-112, " 2.60312481E-34"},
        {0x1.d23c76ca72703p-94, " 9.19488752E-29"},  {0x1.61fbacf212df7p-85, " 3.57431596E-26"},
        {0x1.53777b9137018p-67, " 8.98560950E-21"},  {0x1.89d3ad3a29141p+97, " 2.43767020E+29"},
        {0x1.68c42b2841f96p+124, " 2.99712902E+37"}, {0x1.1740c6cb91a2ep+223, " 1.47043884E+67"},
        {0x1.28226bb86cd5ep+232, " 7.98376914E+69"}, {0x1.220b31bb3c2b0p+313, " 1.89065442E+94"},
        {0x1.889361a872a38p-310, " 7.35164966E-94"}, {0x1.be545a617adb8p-283, " 1.12182951E-85"},
        {0x1.c2a97bbad932ap-274, " 5.79952207E-83"}, {0x1.095362a07dbf5p-256, " 8.95077216E-78"},
        {0x1.4bfc9dd851513p-229, " 1.50318289E-69"}, {0x1.9a9634c008bbdp-211, " 4.87344279E-64"},
        {0x1.1e413a8ef868cp-175, " 2.33487466E-53"}, {0x1.973f387def99ep-130, " 1.16874145E-39"},
        {0x1.4cfa177911e93p-121, " 4.89265612E-37"}, {0x1.5c6d4d4fdc2b9p-103, " 1.34209184E-31"},
        {0x1.a516acd8d9318p+97, " 2.60641204E+29"},  {0x1.560c244d9472dp+178, " 5.11900547E+53"},
        {0x1.76ded19e7f8b2p+187, " 2.87243598E+56"}, {0x1.beb9ad17bb4adp+214, " 4.59430321E+64"},
        {0x1.409ef000023f0p+241, " 4.42568756E+72"}, {0x1.87a58b866a58ep+268, " 7.25593361E+80"},
    };
    for (const WrittenNumber &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(kernelText(row.value), row.text);
        EXPECT_EQ(printed(row.value), row.text);
    }
}

// The proof of the rounding needs both: the point of the product is in the middle of its upper word, and an
// exact scale has lost no bit.
TEST(StlFixedNumber, EveryScalePutsThePointInItsPlace)
{
    using namespace stl_fixed_number;
    for (int e = -largestBinaryExponent; e <= largestBinaryExponent; ++e) {
        SCOPED_TRACE(e);
        const auto index = static_cast<std::size_t>(e + largestBinaryExponent);
        for (const std::size_t i : {2 * index, 2 * index + 1}) {
            if (i % 2 == 1 && decadeTable.nextBegins[index] == beyondAnyMantissa)
                continue;
            const Scale &scale = decadeTable.scales[i];
            const int k = 8 - exponentOf(scale.exponentText);
            const int lost = bitsToLose(e, k);
            EXPECT_GE(lost, 1);
            EXPECT_LE(lost, 5);
            // Of the product m * M, in powers of two: m has 63 bits of fraction, the mantissa of 10^k has 63.
            EXPECT_EQ(63 - e + 63 - binaryExponentOfPowerOfTen(k) - lost, pointOfProduct);
            const std::uint64_t whole = mantissaOfPowerOfTen(k);
            EXPECT_EQ(scale.mantissa, whole >> static_cast<unsigned>(lost));
            EXPECT_EQ((scale.exponentText & exactScaleFlag) != 0,
                      k >= 0 && k <= 27 && scale.mantissa << static_cast<unsigned>(lost) == whole);
        }
    }
}

TEST(StlFixedNumber, NineDigitsAreWrittenWithAPoint)
{
    std::mt19937_64 random(818);
    for (std::uint32_t i = 0; i < 300000; ++i) {
        const auto digits = i < 1000    ? 100000000 + i
                            : i < 2000  ? 999999999 - (i - 1000)
                            : i < 10000 ? i - 2000
                                        : static_cast<std::uint32_t>(random() % 1000000000);
        std::string expected = std::to_string(digits);
        expected.insert(0, 9 - expected.size(), '0');
        expected.insert(1, ".");
        std::string text(11, '#');
        stl_fixed_number::writeNineDigits(text.data(), digits);
        ASSERT_EQ(text, expected + "E");
    }
}

// What strtod makes of the 15 characters alone; true if it takes them all. (The sscanf of MinGW rounds
// twice.)
bool scanned(const std::string &text, double &value)
{
    char *end = nullptr;
    value = std::strtod(text.c_str(), &end);
    return end == text.c_str() + text.size();
}

std::uint64_t bitsOf(double value) { return stl_fixed_number::bitsOf(value); }

// True if the kernel answered; the answer must then be that of the C library.
bool isReadAsScanned(const std::string &text)
{
    double value = 7.25;
    if (!stlReadFixedNumber(text.data(), value)) {
        EXPECT_EQ(value, 7.25) << "declined, and yet changed";
        return false;
    }
    EXPECT_TRUE(stlIsFixedNumber(text.data())) << text;
    double expected = 0.0;
    EXPECT_TRUE(scanned(text, expected)) << text;
    EXPECT_EQ(bitsOf(value), bitsOf(expected)) << text;
    return true;
}

TEST(StlFixedNumber, TheFormIsRead)
{
    struct Row {
        const char *text;
        double value;
    };
    const Row rows[] = {
        {" 1.50000000E+00", 1.5},           {"-2.50000000E-01", -0.25},
        {" 0.00000000E+00", 0.0},           {" 1.23456789E+08", 123456789.0},
        {" 9.99999999E+30", 9.99999999e30}, {"-9.99999999E-14", -9.99999999e-14},
        {" 0.12345678E+00", 0.12345678},    {" 1.00000000E-00", 1.0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        double value = 7.25;
        EXPECT_TRUE(stlReadFixedNumber(row.text, value));
        EXPECT_EQ(value, row.value);
    }
    double value = 7.25;
    EXPECT_TRUE(stlReadFixedNumber("-0.00000000E+00", value));
    EXPECT_EQ(bitsOf(value), bitsOf(-0.0));
}

TEST(StlFixedNumber, ExponentsBeyondTheExactOnesAreDeclined)
{
    for (int exponent = -99; exponent <= 99; ++exponent) {
        for (const char *digits : {" 1.23456789E", "-9.99999999E", " 0.00000000E", " 1.00000001E"}) {
            char text[32];
            std::snprintf(text, sizeof text, "%s%+03d", digits, exponent);
            SCOPED_TRACE(text);
            EXPECT_TRUE(stlIsFixedNumber(text));
            EXPECT_EQ(isReadAsScanned(text), exponent >= -14 && exponent <= 30);
        }
    }
}

TEST(StlFixedNumber, RandomTextsOfTheFormAreReadAsByStrtod)
{
    std::mt19937_64 random(819);
    for (int i = 0; i < 300000 && !HasFailure(); ++i) {
        char text[32];
        std::snprintf(text, sizeof text, "%c%d.%08dE%+03d", random() % 2 == 0 ? ' ' : '-',
                      static_cast<int>(random() % 10), static_cast<int>(random() % 100000000),
                      static_cast<int>(random() % 45) - 14);
        ASSERT_TRUE(isReadAsScanned(text));
    }
}

bool hasForm(const std::string &text)
{
    const std::string form = "sd.ddddddddE+dd";
    for (std::size_t i = 0; i < form.size(); ++i) {
        const char c = text[i];
        const bool fits = form[i] == 's'   ? c == ' ' || c == '-'
                          : form[i] == 'd' ? c >= '0' && c <= '9'
                          : form[i] == '+' ? c == '+' || c == '-'
                                           : c == form[i];
        if (!fits)
            return false;
    }
    return true;
}

TEST(StlFixedNumber, EveryCharacterAtEveryPlaceIsReadAsByScanfOrDeclined)
{
    for (const char *valid : {" 1.23456789E+05", "-0.00000000E-00", " 9.99999999E+09", "-9.09090909E-10"}) {
        int answered = 0;
        for (std::size_t at = 0; at < 15; ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = valid;
                text[at] = static_cast<char>(static_cast<unsigned char>(byte));
                SCOPED_TRACE(text);
                ASSERT_EQ(stlIsFixedNumber(text.data()), hasForm(text));
                answered += isReadAsScanned(text) ? 1 : 0;
            }
        }
        EXPECT_GT(answered, 100);
    }
}

// A wrong byte must not be hidden by the carry of another one.
TEST(StlFixedNumber, SeveralWrongCharactersAreSeenAsWell)
{
    std::mt19937_64 random(820);
    for (int i = 0; i < 2000000; ++i) {
        std::string text = " 1.23456789E+05";
        for (std::uint64_t changes = 1 + random() % 4; changes > 0; --changes)
            text[static_cast<unsigned>(random() % 15)] =
                static_cast<char>(static_cast<unsigned char>(random() % 256));
        ASSERT_EQ(stlIsFixedNumber(text.data()), hasForm(text)) << text;
    }
}

TEST(StlFixedNumber, TheCharacterAfterTheNumberIsIgnored)
{
    for (const char next : {' ', '\n', '5', 'x', '\0'}) {
        double value = 0.0;
        EXPECT_TRUE(stlReadFixedNumber((std::string(" 1.50000000E+00") + next).c_str(), value));
        EXPECT_EQ(value, 1.5);
    }
}

bool roundsToFloat(double exact, float expected)
{
    float value = 7.25F;
    if (!stlRoundToFloat(exact, value)) {
        EXPECT_EQ(value, 7.25F) << "declined, and yet changed";
        return false;
    }
    EXPECT_EQ(value, expected);
    return true;
}

TEST(StlFixedNumber, DoublesAreRoundedToTheNearestFloat)
{
    EXPECT_TRUE(roundsToFloat(0.0, 0.0F));
    EXPECT_TRUE(roundsToFloat(1.5, 1.5F));
    EXPECT_TRUE(roundsToFloat(0.1, 0.1F));
    EXPECT_TRUE(roundsToFloat(-0.1, -0.1F));
    EXPECT_TRUE(roundsToFloat(1.0 + 0x1p-24 + 0x1p-52, 1.0F + 0x1p-23F));
    EXPECT_TRUE(roundsToFloat(1.0 + 0x1p-24 - 0x1p-52, 1.0F));
    EXPECT_TRUE(roundsToFloat(0x1.fffffep127, 0x1.fffffep127F));
    EXPECT_TRUE(roundsToFloat(0x1p-126, 0x1p-126F));
    float value = 7.25F;
    EXPECT_TRUE(stlRoundToFloat(-0.0, value));
    EXPECT_TRUE(std::signbit(value));
}

TEST(StlFixedNumber, MidpointsOfFloatsAreDeclined)
{
    EXPECT_FALSE(roundsToFloat(1.0 + 0x1p-24, 0.0F));
    EXPECT_FALSE(roundsToFloat(-1.0 - 0x1p-24, 0.0F));
    EXPECT_FALSE(roundsToFloat(16777217.0, 0.0F));
    EXPECT_FALSE(roundsToFloat(16777219.0, 0.0F));
    EXPECT_FALSE(roundsToFloat(0x1.000001p-126, 0.0F));
}

TEST(StlFixedNumber, WhatIsSubnormalOrTooLargeForAFloatIsDeclined)
{
    for (const double value :
         {0x1.fffffep127 + 0x1p75, 0x1p128, 1e39, 1e300, infinity, notANumber, 0x1.fffffffffffffp-127,
          0x1p-127, 0x1p-149, 0x1p-150, 1e-300, std::numeric_limits<double>::denorm_min()}) {
        SCOPED_TRACE(value);
        EXPECT_FALSE(roundsToFloat(value, 0.0F));
        EXPECT_FALSE(roundsToFloat(-value, 0.0F));
    }
}

// Nine digits whose nearest double is halfway between two floats while the number itself is not: for about
// half of them rounding twice would give the wrong float.
TEST(StlFixedNumber, DigitsNextToTheMidpointOfTwoFloatsAreDeclined)
{
    const char *const texts[] = {
        " 2.48237791E-12", " 4.96475582E-12", " 7.02990899E-12", " 9.92951164E-12", " 9.67498269E-11",
        " 5.44286477E-10", " 9.39430711E-09", " 6.82972221E-08", " 4.77805429E-06", " 9.55610858E-06",
        " 2.65092267E-05", " 5.30184534E-05", " 3.26026891E+19", " 6.52053782E+19", " 8.16824655E+20",
        " 1.63364931E+21", " 3.26729862E+21", " 5.85052973E+21", " 6.53459724E+21", " 7.21866475E+21",
        " 1.44373295E+22", " 2.88746590E+22", " 5.09086429E+22", " 5.77493180E+22", " 1.15498636E+23",
        " 2.30997272E+23", " 4.61994544E+23", " 9.23989088E+23", " 9.49766107E+23", " 3.74751039E+24",
        " 7.49502078E+24", " 3.16694311E+26", " 6.33388622E+26", " 8.04624287E+26", " 8.96981543E+28",
    };
    int wrongIfRoundedTwice = 0;
    for (const char *text : texts) {
        SCOPED_TRACE(text);
        double exact = 0.0;
        ASSERT_TRUE(stlReadFixedNumber(text, exact));
        EXPECT_FALSE(roundsToFloat(exact, 0.0F));
        wrongIfRoundedTwice += static_cast<float>(exact) != std::strtof(text, nullptr) ? 1 : 0;
    }
    EXPECT_GE(wrongIfRoundedTwice, 5);
}

TEST(StlFixedNumber, ReadAndRoundedTextsAreTheFloatsOfTheCLibrary)
{
    std::mt19937_64 random(821);
    int answered = 0;
    constexpr int all = 300000;
    for (int i = 0; i < all && !HasFailure(); ++i) {
        char text[32];
        std::snprintf(text, sizeof text, " %d.%08dE%+03d", static_cast<int>(random() % 10),
                      static_cast<int>(random() % 100000000), static_cast<int>(random() % 45) - 14);
        double exact = 0.0;
        ASSERT_TRUE(stlReadFixedNumber(text, exact));
        answered += roundsToFloat(exact, std::strtof(text, nullptr)) ? 1 : 0;
    }
    EXPECT_GT(answered, all - all / 100) << "true midpoints are rare";
}

} // namespace
