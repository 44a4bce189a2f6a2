#include "stl/ExactTrigonometry.h"
#include "tests/stl/ExactTrigonometryTable.h"
#include "tests/support/PlainAngle.h"
#include "tests/support/SameBytes.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <random>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string hexadecimal(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

void expectExactly(double value, double expected)
{
    EXPECT_TRUE(sameBytes(value, expected)) << hexadecimal(value) << " in place of " << hexadecimal(expected);
}

void expectAsOnPaper(double angle)
{
    SCOPED_TRACE(hexadecimal(angle));
    const SineAndCosine computed = exactSineAndCosine(angle);
    expectExactly(computed.sine, plain::sine(angle));
    expectExactly(computed.cosine, plain::cosine(angle));
}

double anyFinite(std::mt19937_64 &random)
{
    double angle = infinity;
    while (!std::isfinite(angle)) {
        const std::uint64_t bits = random();
        std::memcpy(&angle, &bits, sizeof angle);
    }
    return angle;
}

TEST(ExactTrigonometry, RoundsEveryTabulatedAngleAsMpfrDoes)
{
    for (const TabulatedAngle &row : tabulatedAngles) {
        SCOPED_TRACE(hexadecimal(row.angle));
        const SineAndCosine computed = exactSineAndCosine(row.angle);
        expectExactly(computed.sine, row.sine);
        expectExactly(computed.cosine, row.cosine);
    }
}

TEST(ExactTrigonometry, TheTableBeginsWithTheDegreesAsTheProgramConvertsThem)
{
    for (int degrees = 0; degrees < tabulatedDegrees; ++degrees)
        EXPECT_EQ(tabulatedAngles[degrees].angle, degrees * 0.017453293);
}

TEST(ExactTrigonometry, ThePlainTwinAgreesWithTheTable)
{
    for (const TabulatedAngle &row : tabulatedAngles) {
        SCOPED_TRACE(hexadecimal(row.angle));
        expectExactly(plain::sine(row.angle), row.sine);
        expectExactly(plain::cosine(row.angle), row.cosine);
    }
}

TEST(ExactTrigonometry, AgreesWithPaperOnAnglesOfAnySize)
{
    std::mt19937_64 random(2718);
    std::uniform_real_distribution<double> degrees(-720.0, 720.0);
    for (int i = 0; i < 1000; ++i) {
        expectAsOnPaper(anyFinite(random));
        expectAsOnPaper(degrees(random) * 0.017453293);
    }
}

TEST(ExactTrigonometry, AgreesWithPaperAroundEveryEighthOfATurn)
{
    for (int eighths = -17; eighths <= 17; ++eighths) {
        double angle = eighths * 0.78539816339744830962;
        for (int i = 0; i < 3; ++i)
            angle = std::nextafter(angle, -infinity);
        for (int i = 0; i < 7; ++i) {
            expectAsOnPaper(angle);
            angle = std::nextafter(angle, infinity);
        }
    }
}

TEST(ExactTrigonometry, AnInfiniteAngleGivesTheNegativeNan)
{
    for (const double angle : {infinity, -infinity}) {
        const SineAndCosine computed = exactSineAndCosine(angle);
        expectExactly(computed.sine, std::copysign(notANumber, -1.0));
        expectExactly(computed.cosine, std::copysign(notANumber, -1.0));
    }
}

TEST(ExactTrigonometry, AnUndefinedAngleStaysAsItIs)
{
    for (const double angle : {notANumber, std::copysign(notANumber, -1.0)}) {
        const SineAndCosine computed = exactSineAndCosine(angle);
        expectExactly(computed.sine, angle);
        expectExactly(computed.cosine, angle);
    }
}

} // namespace
