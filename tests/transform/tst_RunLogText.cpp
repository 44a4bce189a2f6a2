#include "tests/support/CaseNames.h"
#include "tests/support/RunParameters.h"
#include "transform/RunLogText.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using P = TransformParameters;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const std::string blockStart = "\nCalculation started with following parameters:  \n\n";

TEST(RunLogHeader, HasTwoEmptyLinesTheFormulaAndTheNoteOnRotation)
{
    EXPECT_EQ(runLogHeader(), "\n\n"
                              "-------------------------- meshvane output --------------------------\n\n"
                              "    x = xScl * (x + xOfsB) + xOfsA\n\n"
                              "    y = yScl * (y + yOfsB) + yOfsA\n\n"
                              "    z = zScl * (z + zOfsB) + zOfsA\n\n"
                              "- Rotation about axis is done after all other scale and translation -\n\n");
}

TEST(RunLogParameters, WithoutOptionsAreTheThreeValueLines)
{
    const TransformParameters p = with({}, {{scales, 1, 0.1, 1e-7},
                                            {offsetsBefore, 2.5, -0.0, 0.0000005},
                                            {offsetsAfter, -3.25, 1234567.8901234, 1e-300}});
    EXPECT_EQ(runLogParameters(p), blockStart +
                                       "xScl = 1.000000     xOfsB = 2.500000     xOfsA = -3.250000\n\n"
                                       "yScl = 0.100000     yOfsB = -0.000000     yOfsA = 1234567.890123\n\n"
                                       "zScl = 0.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n"
                                       "\n\n");
}

TEST(RunLogParameters, HugeInfiniteAndUndefinedValuesAreWrittenInFull)
{
    constexpr double lowest = std::numeric_limits<double>::lowest();
    const TransformParameters p = with({}, {{scales, 1e22, infinity, lowest},
                                            {offsetsBefore, -1e22, -infinity, lowest},
                                            {offsetsAfter, 123456789012345680.0, notANumber, lowest}});
    const std::string digits = "-179769313486231570814527423731704356798070567525844996598917476803157260780"
                               "0285387605895586327668781715404589535143824642343213268894641827684675467035"
                               "3751698604991057655128207624549009038932894407586850845513394230458323690322"
                               "2948165808559332123348274797826204144723168738177180919299881250404026184124"
                               "858368.000000";
    EXPECT_EQ(runLogParameters(p), blockStart +
                                       "xScl = 10000000000000000000000.000000     "
                                       "xOfsB = -10000000000000000000000.000000     "
                                       "xOfsA = 123456789012345680.000000\n\n"
                                       "yScl = inf     yOfsB = -inf     yOfsA = nan\n\n"
                                       "zScl = " +
                                       digits + "     zOfsB = " + digits + "     zOfsA = " + digits +
                                       "\n\n"
                                       "\n\n");
}

struct OptionCase {
    const char *name;
    Settings settings;
    std::string pieces;
};

class RunLogOptions : public ::testing::TestWithParam<OptionCase> {};

TEST_P(RunLogOptions, AreLoggedAfterTheValueLines)
{
    EXPECT_EQ(runLogParameters(with({}, GetParam().settings)),
              blockStart +
                  "xScl = 0.000000     xOfsB = 0.000000     xOfsA = 0.000000\n\n"
                  "yScl = 0.000000     yOfsB = 0.000000     yOfsA = 0.000000\n\n"
                  "zScl = 0.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n" +
                  GetParam().pieces + "\n\n");
}

Settings everything()
{
    Settings settings = {{angles, 1, 2, 3}, {lengths, 4, 5, 6}};
    for (const TransformFlag &flag : transformFlags)
        settings.emplace_back(flag.member, 1);
    return settings;
}

// Deliberate: one text for all six same-length flags.
const std::string sameLengthText = "Flags:  \n\n   xSamey\n\n";

const OptionCase optionCases[] = {
    {"ValuesWithoutTheirFlags", {{lengths, 5, 5, 5}, {angles, 5, 5, 5}}, ""},
    {"RotationX",
     {{&P::xRotate, 1}, {&P::xAngle, 12.5}, {&P::yAngle, 99}},
     "rotateaboutx = 12.500000     \n\n\n"},
    {"RotationY", {{&P::yRotate, 1}, {&P::yAngle, -370}}, "rotateabouty = -370.000000     \n\n\n"},
    {"RotationZ", {{&P::zRotate, 1}, {&P::zAngle, 0}}, "rotateaboutz = 0.000000     \n\n\n"},
    {"LengthX", {{&P::xSetL, 1}, {&P::xLength, 100}, {&P::zLength, 99}}, "xsetL = 100.000000     \n\n\n"},
    {"LengthY", {{&P::ySetL, 1}, {&P::yLength, 0}}, "ysetL = 0.000000     \n\n\n"},
    {"LengthZ", {{&P::zSetL, 1}, {&P::zLength, infinity}}, "zsetL = inf     \n\n\n"},
    {"OriginX", {{&P::xSet0, 1}}, "Flags:  \n\n   xSet0\n\n"},
    {"OriginY", {{&P::ySet0, 1}}, "Flags:  \n\n   ySet0\n\n"},
    {"OriginZ", {{&P::zSet0, 1}}, "Flags:  \n\n   zSet0\n\n"},
    {"XSameY", {{&P::xSameY, 1}}, sameLengthText},
    {"XSameZ", {{&P::xSameZ, 1}}, sameLengthText},
    {"YSameX", {{&P::ySameX, 1}}, sameLengthText},
    {"YSameZ", {{&P::ySameZ, 1}}, sameLengthText},
    {"ZSameX", {{&P::zSameX, 1}}, sameLengthText},
    {"ZSameY", {{&P::zSameY, 1}}, sameLengthText},
    {"EverythingAtOnce", everything(),
     "rotateaboutx = 1.000000     \nrotateabouty = 2.000000     \nrotateaboutz = 3.000000     \n\n\n"
     "xsetL = 4.000000     \nysetL = 5.000000     \nzsetL = 6.000000     \n\n\n"
     "Flags:  \n\n   xSet0\n\n   ySet0\n\n   zSet0\n\n"
     "   xSamey\n\n   xSamey\n\n   xSamey\n\n   xSamey\n\n   xSamey\n\n   xSamey\n\n"},
};

INSTANTIATE_TEST_SUITE_P(, RunLogOptions, ::testing::ValuesIn(optionCases), nameOfCase);

TEST(RunLogOutcome, IsTheCountsAndTheClosingLine)
{
    EXPECT_EQ(
        runLogOutcome("\n\nNumber lines read from stl file = 9\nNumber triangles read from stl file = 1\n"),
        "\n\nNumber lines read from stl file = 9\nNumber triangles read from stl file = 1\n\n"
        "\nCalculation finished successfully.\n\n");
}

TEST(RunLogOutcome, TakesPercentSignsAsText)
{
    EXPECT_EQ(runLogOutcome("100%s %d"), "100%s %d\n\nCalculation finished successfully.\n\n");
}

} // namespace
