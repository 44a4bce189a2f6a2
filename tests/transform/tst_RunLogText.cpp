#include "transform/RunLogText.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

// Names the cases of a table.
constexpr auto nameOfCase = [](const auto &instance) { return std::string(instance.param.name); };

const std::string zeroValueLines = "xScl = 0.000000     xOfsB = 0.000000     xOfsA = 0.000000\n\n"
                                   "yScl = 0.000000     yOfsB = 0.000000     yOfsA = 0.000000\n\n"
                                   "zScl = 0.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n";

const std::string blockStart = "\nCalculation started with following parameters:  \n\n";

// The block of a record whose nine values are zero, with the given pieces between values and end.
std::string blockWith(const std::string &pieces) { return blockStart + zeroValueLines + pieces + "\n\n"; }

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
    TransformParameters p;
    p.xScl = 1.0;
    p.xOfsB = 2.5;
    p.xOfsA = -3.25;
    p.yScl = 0.1;
    p.yOfsB = -0.0;
    p.yOfsA = 1234567.8901234;
    p.zScl = 1e-7;
    p.zOfsB = 0.0000005;
    p.zOfsA = 1e-300;
    EXPECT_EQ(runLogParameters(p), "\nCalculation started with following parameters:  \n\n"
                                   "xScl = 1.000000     xOfsB = 2.500000     xOfsA = -3.250000\n\n"
                                   "yScl = 0.100000     yOfsB = -0.000000     yOfsA = 1234567.890123\n\n"
                                   "zScl = 0.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n"
                                   "\n\n");
}

TEST(RunLogParameters, OfAHugeInfiniteOrUndefinedValueAreWrittenInFull)
{
    TransformParameters p;
    p.xScl = 1e22;
    p.xOfsB = -1e22;
    p.xOfsA = 123456789012345680.0;
    p.yScl = std::numeric_limits<double>::infinity();
    p.yOfsB = -std::numeric_limits<double>::infinity();
    p.yOfsA = std::numeric_limits<double>::quiet_NaN();
    p.zScl = p.zOfsB = p.zOfsA = -std::numeric_limits<double>::max();
    const std::string largest = "-179769313486231570814527423731704356798070567525844996598917476803157260780"
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
                                       largest + "     zOfsB = " + largest + "     zOfsA = " + largest +
                                       "\n\n"
                                       "\n\n");
}

struct OptionCase {
    const char *name;
    void (*set)(TransformParameters &);
    std::string pieces;
};

class RunLogOptions : public ::testing::TestWithParam<OptionCase> {};

TEST_P(RunLogOptions, FollowTheValueLines)
{
    TransformParameters p;
    GetParam().set(p);
    EXPECT_EQ(runLogParameters(p), blockWith(GetParam().pieces));
}

const std::vector<OptionCase> optionCases = {
    {"ValuesWithoutTheirFlags",
     [](TransformParameters &p) { p.xLength = p.yLength = p.zLength = p.xAngle = p.yAngle = p.zAngle = 5.0; },
     ""},
    {"RotationX",
     [](TransformParameters &p) {
         p.xRotate = 1;
         p.xAngle = 12.5;
         p.yAngle = 99.0;
     },
     "rotateaboutx = 12.500000     \n\n\n"},
    {"RotationY",
     [](TransformParameters &p) {
         p.yRotate = 1;
         p.yAngle = -370.0;
     },
     "rotateabouty = -370.000000     \n\n\n"},
    {"RotationZ",
     [](TransformParameters &p) {
         p.zRotate = 1;
         p.zAngle = 0.0;
     },
     "rotateaboutz = 0.000000     \n\n\n"},
    {"AllRotations",
     [](TransformParameters &p) {
         p.xRotate = p.yRotate = p.zRotate = 1;
         p.xAngle = 1.0;
         p.yAngle = 2.0;
         p.zAngle = 3.0;
     },
     "rotateaboutx = 1.000000     \nrotateabouty = 2.000000     \nrotateaboutz = 3.000000     \n\n\n"},
    {"LengthX",
     [](TransformParameters &p) {
         p.xSetL = 1;
         p.xLength = 100.0;
         p.zLength = 99.0;
     },
     "xsetL = 100.000000     \n\n\n"},
    {"LengthY",
     [](TransformParameters &p) {
         p.ySetL = 1;
         p.yLength = 0.0;
     },
     "ysetL = 0.000000     \n\n\n"},
    {"LengthZ",
     [](TransformParameters &p) {
         p.zSetL = 1;
         p.zLength = std::numeric_limits<double>::infinity();
     },
     "zsetL = inf     \n\n\n"},
    {"AllLengths",
     [](TransformParameters &p) {
         p.xSetL = p.ySetL = p.zSetL = 1;
         p.xLength = 4.0;
         p.yLength = 5.0;
         p.zLength = 6.0;
     },
     "xsetL = 4.000000     \nysetL = 5.000000     \nzsetL = 6.000000     \n\n\n"},
    {"OriginX", [](TransformParameters &p) { p.xSet0 = 1; }, "Flags:  \n\n   xSet0\n\n"},
    {"OriginY", [](TransformParameters &p) { p.ySet0 = 1; }, "Flags:  \n\n   ySet0\n\n"},
    {"OriginZ", [](TransformParameters &p) { p.zSet0 = 1; }, "Flags:  \n\n   zSet0\n\n"},
    // One text for all six, whichever it is.
    {"XSameY", [](TransformParameters &p) { p.xSameY = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"XSameZ", [](TransformParameters &p) { p.xSameZ = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"YSameX", [](TransformParameters &p) { p.ySameX = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"YSameZ", [](TransformParameters &p) { p.ySameZ = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"ZSameX", [](TransformParameters &p) { p.zSameX = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"ZSameY", [](TransformParameters &p) { p.zSameY = 1; }, "Flags:  \n\n   xSamey\n\n"},
    {"EverythingAtOnce",
     [](TransformParameters &p) {
         p.xRotate = p.yRotate = p.zRotate = p.xSetL = p.ySetL = p.zSetL = 1;
         p.xSet0 = p.ySet0 = p.zSet0 = 1;
         p.xSameY = p.xSameZ = p.ySameX = p.ySameZ = p.zSameX = p.zSameY = 1;
         p.xAngle = p.yAngle = p.zAngle = 90.0;
         p.xLength = p.yLength = p.zLength = 7.0;
     },
     "rotateaboutx = 90.000000     \nrotateabouty = 90.000000     \nrotateaboutz = 90.000000     \n\n\n"
     "xsetL = 7.000000     \nysetL = 7.000000     \nzsetL = 7.000000     \n\n\n"
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

TEST(RunLogOutcome, TakesThePercentSignsOfItsTextAsTheyAre)
{
    EXPECT_EQ(runLogOutcome("100%s %d"), "100%s %d\n\nCalculation finished successfully.\n\n");
}

} // namespace
