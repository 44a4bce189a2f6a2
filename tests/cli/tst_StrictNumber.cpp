#include "cli/StrictNumber.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

TEST(StrictNumber, TakesDecimalNumbersWithAPoint)
{
    const struct {
        const char *text;
        double value;
    } rows[] = {{"25.4", 25.4},
                {"-3", -3.0},
                {"+3", 3.0},
                {".5", 0.5},
                {"5.", 5.0},
                {"1e-3", 1e-3},
                {"1E+3", 1e3},
                {"007", 7.0},
                {"0", 0.0},
                {"1e308", 1e308},
                {"5e-324", 5e-324},
                {"0.1", 0.1},
                {"9007199254740993", 9007199254740992.0}};
    for (const auto &row : rows) {
        const std::optional<double> value = strictNumber(row.text);
        ASSERT_TRUE(value) << row.text;
        EXPECT_EQ(*value, row.value) << row.text;
    }
    EXPECT_TRUE(std::signbit(*strictNumber("-0")));
}

TEST(StrictNumber, RefusesEverythingElse)
{
    for (const char *text : {"",
                             " ",
                             "abc",
                             "1,5",
                             "1 5",
                             " 5",
                             "5 ",
                             "5\n",
                             "\t5",
                             "0x10",
                             "1e",
                             "1e+",
                             "e5",
                             ".",
                             "-",
                             "+",
                             "--1",
                             "+-1",
                             "-+1",
                             "++1",
                             "1.2.3",
                             "inf",
                             "-inf",
                             "nan",
                             "infinity",
                             "1e309",
                             "-1e400",
                             "1e-400",
                             "1_000",
                             "1'000",
                             "5mm",
                             "50%",
                             "\xE2\x88\x92\x35", // a minus sign that is no hyphen, and 5
                             "\xD9\xA3"})
        EXPECT_FALSE(strictNumber(text)) << text;
    EXPECT_FALSE(strictNumber(std::string_view("5\0", 2)));
}

} // namespace
