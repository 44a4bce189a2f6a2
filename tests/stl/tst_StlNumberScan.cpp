#include "stl/StlNumberScan.h"
#include "tests/stl/ScannedText.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string_view>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(StlNumberScan, WordsThatAreNoOrdinaryNumbersHaveOneMeaning)
{
    const struct {
        std::string_view text;
        bool isNumber;
        double value;
        std::string_view rest;
    } rows[] = {
        {"1e", true, 1.0, ""},
        {"1e+", true, 1.0, ""},
        {"1e-x", true, 1.0, "x"},
        {"1e+-5", true, 1.0, "-5"},
        {"1.5e3.5", true, 1500.0, ".5"},
        {"100ergs", true, 100.0, "rgs"},
        {"0x10", true, 16.0, ""},
        {"-0X1.8P1", true, -3.0, ""},
        {"0x.8p-3", true, 0.0625, ""},
        {"0x1p", true, 1.0, ""},
        {"0x1p+", true, 1.0, ""},
        {"0x1p2p", true, 4.0, "p"},
        {"0x1e2", true, 482.0, ""},
        {"0x.", true, 0.0, ""},
        {"0x.p1", true, 0.0, "p1"},
        {"0x", false, 0.0, ""},
        {"0xg", false, 0.0, "g"},
        {"1..2", true, 1.0, ".2"},
        {".", false, 0.0, ""},
        {"-.", false, 0.0, ""},
        {".e5", false, 0.0, "e5"},
        {"+", false, 0.0, ""},
        {"- 1", false, 0.0, " 1"},
        {"--1", false, 0.0, "-1"},
        {"e5", false, 0.0, "e5"},
        {"abc", false, 0.0, "abc"},
        {"", false, 0.0, ""},
        {"inf", true, infinity, ""},
        {"-Infinity", true, -infinity, ""},
        {"infx", true, infinity, "x"},
        {"infinit", false, 0.0, ""},
        {"infinitx5", false, 0.0, "5"},
        {"infi ", false, 0.0, ""},
        {"ix5", false, 0.0, "5"},
        {"n", false, 0.0, ""},
        {"nax5", false, 0.0, "5"},
        {"1e39", true, 1e39, ""},
        {"1e309", true, infinity, ""},
        {"-1e99999999999999999999", true, -infinity, ""},
        {"1e-99999999999999999999", true, 0.0, ""},
        {"0e99999999999999999999", true, 0.0, ""},
        {"0x1p1024", true, infinity, ""},
        {"0x1p-1074", true, 0x1p-1074, ""},
        {"4.9406564584124654e-324", true, 0x1p-1074, ""},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        ScannedText source(row.text);
        double value = 7.0;
        EXPECT_EQ(stlScanNumber(source, value), row.isNumber);
        EXPECT_EQ(value, row.isNumber ? row.value : 7.0);
        EXPECT_EQ(row.text.substr(source.position()), row.rest);
    }
}

TEST(StlNumberScan, AFloatIsRoundedOnceAndHasItsOwnRange)
{
    const struct {
        std::string_view text;
        float value;
    } rows[] = {
        {"16777217.0000000000000000000001", 16777218.0F},
        {"0x1000001.00000000000000001p0", 16777218.0F},
        {"3.4028235677973367e38", static_cast<float>(infinity)},
        {"3.4028235677973366e38", std::numeric_limits<float>::max()},
        {"-1e39", -static_cast<float>(infinity)},
        {"1e-45", std::numeric_limits<float>::denorm_min()},
        {"7e-46", 0.0F},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        ScannedText source(row.text);
        float value = 7.0F;
        EXPECT_TRUE(stlScanNumber(source, value));
        EXPECT_EQ(value, row.value);
    }
}

TEST(StlNumberScan, TheSignOfANanIsTheOneThatIsWritten)
{
    const struct {
        std::string_view text;
        bool isNegative;
        std::string_view rest;
    } rows[] = {{"nan", false, ""},           {"-NaN", true, ""},   {"+nan", false, ""},
                {"nan(abc)", false, "(abc)"}, {"nan(", false, "("}, {"-nanx", true, "x"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        ScannedText source(row.text);
        double value = 7.0;
        EXPECT_TRUE(stlScanNumber(source, value));
        EXPECT_TRUE(std::isnan(value));
        EXPECT_EQ(std::signbit(value), row.isNegative);
        EXPECT_EQ(row.text.substr(source.position()), row.rest);
    }
}

TEST(StlNumberScan, OnlyWholeNumbersWithoutAPlusSignAreReadWhole)
{
    double value = 7.0;
    for (const std::string_view text :
         {"", "+1", " 1", "1 ", "1x", "1e", "0x1", "1e400", "-", ".", "inf", "nan", "nan(1)"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(stlReadWholeNumber(text, value));
        EXPECT_EQ(value, 7.0);
    }
}

} // namespace
