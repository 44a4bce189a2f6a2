#include "stl/StlLimits.h"
#include "stl/StlNumberText.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::string blankSigned(double value)
{
    char text[stlMaxNumberText];
    return {text, stlWriteBlankSigned(text, value)};
}

std::string padded(double value)
{
    char text[stlMaxNumberText];
    return {text, stlWritePadded(text, value)};
}

TEST(StlNumberText, NumbersAreWrittenWithEightDecimals)
{
    struct Row {
        double value;
        const char *blankSigned;
        const char *padded;
    };
    const Row rows[] = {
        {0.0, " 0.00000000E+00", " 0.00000000E+00"},
        {-0.0, "-0.00000000E+00", "-0.00000000E+00"},
        {1.5, " 1.50000000E+00", " 1.50000000E+00"},
        {-0.25, "-2.50000000E-01", "-2.50000000E-01"},
        {123456789.0, " 1.23456789E+08", " 1.23456789E+08"},
        {1.234567885, " 1.23456788E+00", " 1.23456788E+00"}, // below the tie
        {1.000000005, " 1.00000000E+00", " 1.00000000E+00"}, // likewise
        {100000000.5, " 1.00000000E+08", " 1.00000000E+08"}, // a true tie goes to the even digit
        {100000001.5, " 1.00000002E+08", " 1.00000002E+08"},
        {9.999999999, " 1.00000000E+01", " 1.00000000E+01"},
        {99999999999.0, " 1.00000000E+11", " 1.00000000E+11"},
        {1e99, " 1.00000000E+99", " 1.00000000E+99"},
        {1e100, " 1.00000000E+100", "1.00000000E+100"},
        {-1e100, "-1.00000000E+100", "-1.00000000E+100"},
        {9.9999999999e99, " 1.00000000E+100", "1.00000000E+100"},
        {1e-100, " 1.00000000E-100", "1.00000000E-100"},
        {1.7976931348623157e308, " 1.79769313E+308", "1.79769313E+308"},
        {-4.9406564584124654e-324, "-4.94065646E-324", "-4.94065646E-324"},
        {infinity, " INF", "            INF"},
        {-infinity, "-INF", "           -INF"},
        {notANumber, " NAN", "            NAN"},
        {std::copysign(notANumber, -1.0), "-NAN", "           -NAN"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(blankSigned(row.value), row.blankSigned);
        EXPECT_EQ(padded(row.value), row.padded);
    }
}

TEST(StlNumberText, NumbersAreReadFromTheStartOfAWord)
{
    struct Row {
        const char *word;
        double value;
    };
    const Row rows[] = {
        {"0", 0.0},        {"1.5", 1.5},          {"-1.5", -1.5},         {"+1.5", 1.5},
        {".5", 0.5},       {"5.", 5.0},           {"1e5", 1e5},           {"1E+5", 1e5},
        {"-25e-1", -2.5},  {"1.5abc", 1.5},       {"1,5", 1.0},           {"1_0", 1.0},
        {"1.5.5", 1.5},    {"-0x10", -16.0},      {"0x10", 16.0},         {"0X1.8p1", 3.0},
        {"inf", infinity}, {"-INF", -infinity},   {"InFiNiTy", infinity}, {"1e400", infinity},
        {"1e-400", 0.0},   {"-1e400", -infinity}, {"\t5", 5.0},           {"5\t6", 5.0},
        {"\r\v\f5", 5.0},  {"5\r", 5.0},          {"1d5", 1.0},           {"007", 7.0},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.word);
        double value = 7.0;
        EXPECT_TRUE(stlReadNumber(row.word, value));
        EXPECT_EQ(value, row.value);
    }
}

TEST(StlNumberText, TheNearestDoubleIsRead)
{
    double value = 0.0;
    ASSERT_TRUE(stlReadNumber("0.1", value));
    EXPECT_EQ(value, 0.1);
    ASSERT_TRUE(stlReadNumber("9007199254740993", value));
    EXPECT_EQ(value, 9007199254740992.0);
    ASSERT_TRUE(stlReadNumber("9007199254740993.00000000000000000000000000000000000000001", value));
    EXPECT_EQ(value, 9007199254740994.0);
    ASSERT_TRUE(stlReadNumber("4.9406564584124654e-324", value));
    EXPECT_EQ(value, std::numeric_limits<double>::denorm_min());
    ASSERT_TRUE(stlReadNumber("1" + std::string(900, '0') + "e-900", value));
    EXPECT_EQ(value, 1.0);
}

TEST(StlNumberText, NotANumberIsRead)
{
    for (const char *word : {"nan", "NaN", "-nan", "nan(123)", "nano"}) {
        SCOPED_TRACE(word);
        double value = 7.0;
        EXPECT_TRUE(stlReadNumber(word, value));
        EXPECT_TRUE(std::isnan(value));
    }
    double value = 0.0;
    ASSERT_TRUE(stlReadNumber("-nan", value));
    EXPECT_TRUE(std::signbit(value));
}

TEST(StlNumberText, AWordThatDoesNotStartWithANumberLeavesTheValueAlone)
{
    for (const char *word :
         {"", "abc", "-", "+", ".", "e5", "\t", "-.", "(1)", ",5", "in", "n", "x10", "--5"}) {
        SCOPED_TRACE(word);
        double value = 7.0;
        EXPECT_FALSE(stlReadNumber(word, value));
        EXPECT_EQ(value, 7.0);
    }
}

TEST(StlNumberText, OnlyTheCharactersOfTheWordAreRead)
{
    const std::string_view text = "12345";
    double value = 0.0;
    ASSERT_TRUE(stlReadNumber(text.substr(1, 2), value));
    EXPECT_EQ(value, 23.0);
}

TEST(StlNumberText, TheLongestWordIsRead)
{
    double value = 0.0;
    ASSERT_TRUE(stlReadNumber(std::string(stlLongestLine - 1, '0') + "5", value));
    EXPECT_EQ(value, 5.0);
}

} // namespace
