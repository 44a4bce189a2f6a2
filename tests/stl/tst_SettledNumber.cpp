#include "stl/SettledNumber.h"
#include "tests/support/SameBytes.h"

#include <gtest/gtest.h>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(SettledNumber, ComputesAsADoubleWhereThereIsAResult)
{
    EXPECT_EQ((SettledNumber{1.5} + SettledNumber{0.25}).value, 1.75);
    EXPECT_EQ((SettledNumber{1.5} - SettledNumber{0.25}).value, 1.25);
    EXPECT_EQ((SettledNumber{1.5} * SettledNumber{0.25}).value, 0.375);
    EXPECT_EQ((SettledNumber{1.5} / SettledNumber{0.25}).value, 6.0);
    EXPECT_EQ((SettledNumber{1.0} / SettledNumber{0.0}).value, infinity);
    EXPECT_TRUE(sameBytes((SettledNumber{-0.0} * SettledNumber{3.0}).value, -0.0));
}

TEST(SettledNumber, WhatIsUndefinedHasAMinusSign)
{
    for (const SettledNumber undefined :
         {SettledNumber{0.0} * SettledNumber{infinity}, SettledNumber{-infinity} * SettledNumber{0.0},
          SettledNumber{0.0} / SettledNumber{0.0}, SettledNumber{infinity} / SettledNumber{infinity},
          SettledNumber{infinity} - SettledNumber{infinity},
          SettledNumber{infinity} + SettledNumber{-infinity}}) {
        EXPECT_TRUE(std::isnan(undefined.value));
        EXPECT_TRUE(std::signbit(undefined.value));
    }
}

TEST(SettledNumber, TheFirstUndefinedOperandGivesTheSign)
{
    const SettledNumber minus{std::copysign(notANumber, -1.0)};
    const SettledNumber plus{notANumber};
    const SettledNumber one{1.0};
    for (const SettledNumber negative : {minus + plus, minus - plus, minus * plus, minus / plus, minus + one,
                                         one - minus, minus * one, one / minus}) {
        EXPECT_TRUE(std::isnan(negative.value));
        EXPECT_TRUE(std::signbit(negative.value));
    }
    for (const SettledNumber positive : {plus + minus, plus - minus, plus * minus, plus / minus, one + plus,
                                         plus - one, one * plus, plus / one}) {
        EXPECT_TRUE(std::isnan(positive.value));
        EXPECT_FALSE(std::signbit(positive.value));
    }
}

#ifdef __SSE2__
TEST(SettledNumber, EveryBitIsTheOneOfTheSseInstructions)
{
    const double values[] = {0.0,      -0.0,      1.0,        -1.0,
                             infinity, -infinity, notANumber, std::copysign(notANumber, -1.0)};
    for (const double a : values) {
        for (const double b : values) {
            SCOPED_TRACE(std::to_string(a) + ", " + std::to_string(b));
            const __m128d x = _mm_set_sd(a);
            const __m128d y = _mm_set_sd(b);
            EXPECT_TRUE(
                sameBytes((SettledNumber{a} + SettledNumber{b}).value, _mm_cvtsd_f64(_mm_add_sd(x, y))));
            EXPECT_TRUE(
                sameBytes((SettledNumber{a} - SettledNumber{b}).value, _mm_cvtsd_f64(_mm_sub_sd(x, y))));
            EXPECT_TRUE(
                sameBytes((SettledNumber{a} * SettledNumber{b}).value, _mm_cvtsd_f64(_mm_mul_sd(x, y))));
            EXPECT_TRUE(
                sameBytes((SettledNumber{a} / SettledNumber{b}).value, _mm_cvtsd_f64(_mm_div_sd(x, y))));
        }
    }
}
#endif

} // namespace
