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
constexpr const char *nothingWritten = "###############";

std::string printed(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "% .8E", value);
    return text;
}

// What the kernel writes: nothing if it declines.
std::string kernelText(double value)
{
    std::string text = nothingWritten;
    const bool answered = stlWriteFixedNumber(text.data(), value);
    EXPECT_EQ(answered, text != nothingWritten) << value;
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

// The kernel leaves it, and the exact way writes it as the C library does.
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
    for (const double value :
         {infinity, notANumber, 1e100, 1e-100, 1e300, 1e-300, 0x1p329, 0x1.fffffffffffffp-329,
          std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(),
          std::numeric_limits<double>::max(), 0x0.fffffffffffffp-1022}) {
        SCOPED_TRACE(value);
        EXPECT_FALSE(isAnswered(value));
        EXPECT_FALSE(isAnswered(-value));
        EXPECT_EQ(fullText(value), printed(value));
        EXPECT_EQ(fullText(-value), printed(-value));
    }
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

// What lies beyond the kernel's exponents is still of the common form, or no longer.
TEST(StlFixedNumber, AtTheLastTwoDigitExponentsTheExactWayGoesOn)
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

// Ties of numbers above 1e9, where the power of ten is not exact, look like what lies just below them.
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

// The numbers of the next three tests were found by solving for the fraction of the product with the
// truncated power of ten. In all of them the tenth digit is a five and nothing but zeros (or a four and
// nothing but nines) follow for seven digits or more.

// The fraction is below one half, and by so little that the truncation hides which side the number is on.
TEST(StlFixedNumber, NumbersBelowTheTieByLessThanTheErrorAreDeclined)
{
    const WrittenNumber rows[] = {
        {0x1.7fa84e729be45p-314, " 4.49039999E-95"}, {0x1.f1f0a92c580c4p-272, " 2.56317524E-82"},
        {0x1.43fb75bf9d627p-209, " 1.53819777E-63"}, {0x1.b61e3c4a78938p-181, " 5.58369930E-55"},
        {0x1.61fbcb31ee183p-97, " 8.72636871E-30"},  {0x1.05d032504210cp-90, " 8.26137005E-28"},
        {0x1.08bb6c82ab000p+43, " 9.09612654E+12"},  {0x1.fc0a04c3caad8p+57, " 2.86000608E+17"},
        {0x1.226bbcac3b01cp+120, " 1.50795125E+36"}, {0x1.766f52a045615p+162, " 8.55058052E+48"},
        {0x1.0f13b5ac1d9e1p+225, " 5.70954782E+67"}, {0x1.52e95becd0872p+281, " 5.14369486E+84"},
    };
    for (const WrittenNumber &row : rows)
        expectDeclined(row);
}

// The fraction of the truncated product is below one half and that of the number above it: an answer would be
// wrong.
TEST(StlFixedNumber, NumbersWhoseTruncatedProductIsOnTheWrongSideAreDeclined)
{
    const WrittenNumber rows[] = {
        {0x1.d0f96d2072744p-314, " 5.44214822E-95"}, {0x1.553d87b0faf2ep-300, " 6.54367493E-91"},
        {0x1.d670d5852022cp-265, " 3.09967475E-80"}, {0x1.bc0efbb867fdfp-251, " 4.79370538E-76"},
        {0x1.d3e103b823618p-209, " 2.22138820E-63"}, {0x1.d7626a1c39cedp-202, " 2.86468020E-61"},
        {0x1.8c4e69b916d29p-195, " 3.08277521E-59"}, {0x1.1ccd672e23b24p-153, " 9.74348398E-47"},
        {0x1.68a2d1c6d6130p-118, " 4.23925597E-36"}, {0x1.c48d91ae5e0a1p-76, " 2.33964420E-23"},
        {0x1.1196fde65f312p+99, " 6.77375565E+29"},  {0x1.6e05a9871597ep+190, " 2.24370906E+57"},
        {0x1.0591065a6f97ep+225, " 5.50923358E+67"}, {0x1.feae2af0437c5p+267, " 4.73061951E+80"},
        {0x1.43f61e533ef5cp+288, " 6.29349735E+86"}, {0x1.000bcfe86ed66p+316, " 1.33523252E+95"},
    };
    for (const WrittenNumber &row : rows)
        expectDeclined(row);
}

// The borders of the doubtful fractions, from outside: these are answered, and rightly.
TEST(StlFixedNumber, NumbersJustOutsideTheDoubtAreAnswered)
{
    const WrittenNumber rows[] = {
        {0x1.2f244806da511p-237, " 5.36162923E-72"}, {0x1.0a36b2bad02bcp-216, " 9.87441362E-66"},
        {0x1.f58ae02c4e8b3p-76, " 2.59291386E-23"},  {0x1.7bb4766dad75bp+295, " 9.44180428E+88"},
        {0x1.c2f2c28c3767fp-321, " 4.12342560E-97"}, {0x1.c0b2f750b5baap-265, " 2.95642162E-80"},
        {0x1.4be07373937e7p-244, " 4.58582985E-74"}, {0x1.0558e75c5c4c4p-216, " 9.69390940E-66"},
        {0x1.fbd55d6a552bbp-188, " 5.05640858E-57"}, {0x1.9c849f5daf2ebp-181, " 5.25743344E-55"},
        {0x1.17505affa354fp-153, " 9.55571590E-47"}, {0x1.5c6fd634fa0dep-132, " 2.49991189E-40"},
        {0x1.2a58f7902a4d5p-90, " 9.41418803E-28"},  {0x1.2036df6442856p+92, " 5.57487624E+27"},
        {0x1.2754ec0a43c25p+106, " 9.35943602E+31"}, {0x1.2ed108c992a4ep+127, " 2.01256112E+38"},
        {0x1.96e62597a9a5bp+134, " 3.46151397E+40"}, {0x1.432a68e75636cp+148, " 4.50427195E+44"},
        {0x1.e1e691b368dbcp+281, " 7.31385487E+84"}, {0x1.6710b1a059699p+295, " 8.92857363E+88"},
        {0x1.153d11bc23ba4p-286, " 8.71033576E-87"}, {0x1.8075299e16d7dp-258, " 3.24242305E-78"},
        {0x1.12a40c5cedfc0p-223, " 7.95858902E-68"}, {0x1.879b8afbcd267p-181, " 4.99093506E-55"},
        {0x1.b3c38f4c0b678p-125, " 4.00185944E-38"}, {0x1.18dc8642dcdb2p+85, " 4.24425783E+25"},
        {0x1.7c97ceb58e89ap+99, " 9.42302621E+29"},  {0x1.0991faf27ff43p+148, " 3.70150884E+44"},
        {0x1.b974c785b9a6bp+183, " 2.11415503E+55"}, {0x1.206670030a130p+190, " 1.76788775E+57"},
        {0x1.fae51386b1140p+197, " 3.97728801E+59"}, {0x1.a58229926ba0ap+204, " 4.23336224E+61"},
        {0x1.a1d349a7f722ap+218, " 6.87533505E+65"}, {0x1.2c73c0b7cc91bp+274, " 3.56249428E+82"},
        {0x1.331fb81963f89p+302, " 9.77535061E+90"}, {0x1.182a3d0cbd5cep+323, " 1.87008998E+97"},
    };
    for (const WrittenNumber &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(kernelText(row.value), row.text);
        EXPECT_EQ(printed(row.value), row.text);
    }
}

// The proof of the rounding needs both: the shifted mantissa fills no more than a word, and the point of the
// product is where the rounding looks for it.
TEST(StlFixedNumber, EveryShiftFitsAWordAndBringsThePointToItsPlace)
{
    using namespace stl_fixed_number;
    for (int e = -largestBinaryExponent; e <= largestBinaryExponent; ++e) {
        SCOPED_TRACE(e);
        const Decades &decades = decadeTable[static_cast<std::size_t>(e + largestBinaryExponent)];
        for (const Scale &scale : decades.scales) {
            if (&scale == &decades.scales[1] && decades.nextBegins == beyondAnyMantissa)
                continue;
            EXPECT_GE(scale.shift, 7);
            EXPECT_LE(scale.shift, 11) << "53 bits and the shift are at most 64";
            const int k = 8 - scale.exponent;
            EXPECT_EQ(e - 52 + binaryExponentOfPowerOfTen(k) - 63, scale.shift - 97);
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
        ASSERT_EQ(text, expected + " ");
    }
}

// What sscanf makes of the 15 characters alone; true if it takes them all.
bool scanned(const std::string &text, double &value)
{
    int length = 0;
    return std::sscanf(text.c_str(), "%lf%n", &value, &length) == 1 &&
           length == static_cast<int>(text.size());
}

std::uint64_t bitsOf(double value) { return stl_fixed_number::bitsOf(value); }

// True if the kernel answered, which then must be what the C library says.
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

TEST(StlFixedNumber, RandomTextsOfTheFormAreReadAsByScanf)
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
            text[random() % 15] = static_cast<char>(static_cast<unsigned char>(random() % 256));
        ASSERT_EQ(stlIsFixedNumber(text.data()), hasForm(text)) << text;
    }
}

TEST(StlFixedNumber, TheCharacterBehindIsNotLookedAt)
{
    for (const char behind : {' ', '\n', '5', 'x', '\0'}) {
        double value = 0.0;
        EXPECT_TRUE(stlReadFixedNumber((std::string(" 1.50000000E+00") + behind).c_str(), value));
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

TEST(StlFixedNumber, MiddlesOfFloatsAreDeclined)
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

// Nine digits whose nearest double lies in the middle of two floats while the number itself does not: for
// about half of them rounding twice would give the wrong float.
TEST(StlFixedNumber, DigitsNextToTheMiddleOfTwoFloatsAreDeclined)
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
    EXPECT_GT(answered, all - all / 100) << "true middles are rare";
}

} // namespace
