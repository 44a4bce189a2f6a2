#include "cli/Complaints.h"
#include "cli/RunValues.h"
#include "tests/cli/SameParameters.h"

#include <gtest/gtest.h>

namespace {

TransformParameters untouched()
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 1.0;
    return p;
}

// Every value different from what it would be by default.
LoggedRun loggedRun()
{
    LoggedRun run;
    TransformParameters &p = run.parameters;
    p.xScl = 2.0;
    p.yScl = 3.0;
    p.zScl = 4.0;
    p.xOfsA = 5.0;
    p.xSet0 = 1;
    p.yOfsB = 6.0;
    p.ySetL = 1;
    p.yLength = 7.0;
    p.zRotate = 1;
    p.zAngle = 8.0;
    return run;
}

std::string complaintOf(const RunValues &values, const LoggedRun &run)
{
    try {
        parametersOf(values, run, "run.log");
    } catch (const Failure &failure) {
        return failure.file + ": " + failure.what();
    }
    return {};
}

TEST(RunValues, WithoutAnyTheRunChangesNothing) { EXPECT_TRUE(parametersOf(RunValues()) == untouched()); }

TEST(RunValues, EachGoesToItsFieldOfItsAxis)
{
    RunValues values;
    values[0].scale = 2.0;
    values[0].offsetAfter = 3.0;
    values[0].originToZero = true;
    values[1].offsetBefore = 4.0;
    values[1].length = 5.0;
    values[2].scale = -6.0;
    values[2].angle = 0.0;
    TransformParameters expected = untouched();
    expected.xScl = 2.0;
    expected.xOfsA = 3.0;
    expected.xSet0 = 1;
    expected.yOfsB = 4.0;
    expected.ySetL = 1;
    expected.yLength = 5.0;
    expected.zScl = -6.0;
    expected.zRotate = 1;
    EXPECT_TRUE(parametersOf(values) == expected);
}

// Deliberate: the flags of Y are crossed, the options are not.
TEST(RunValues, ALengthOfAnotherAxisIsTheFlagThatGivesIt)
{
    const struct {
        std::size_t axis;
        int of;
        int TransformParameters::*flag;
    } rows[] = {{0, 1, &TransformParameters::xSameY}, {0, 2, &TransformParameters::xSameZ},
                {1, 0, &TransformParameters::ySameZ}, {1, 2, &TransformParameters::ySameX},
                {2, 0, &TransformParameters::zSameX}, {2, 1, &TransformParameters::zSameY}};
    for (const auto &row : rows) {
        RunValues values;
        values[row.axis].lengthOf = row.of;
        TransformParameters expected = untouched();
        expected.*row.flag = 1;
        EXPECT_TRUE(parametersOf(values) == expected) << row.axis << " of " << row.of;
    }
}

TEST(RunValues, ALogAloneIsRepeatedAsItIs)
{
    EXPECT_TRUE(parametersOf(RunValues(), loggedRun(), "") == loggedRun().parameters);
}

TEST(RunValues, AValueReplacesWhatTheLogSaysOfTheSameThing)
{
    RunValues values;
    values[0].offsetBefore = 9.0;
    values[1].scale = 10.0;
    values[2].length = 11.0;
    TransformParameters expected = loggedRun().parameters;
    expected.xOfsB = 9.0;
    expected.xSet0 = 0;
    expected.yScl = 10.0;
    expected.ySetL = 0;
    expected.yLength = 0.0;
    expected.zSetL = 1;
    expected.zLength = 11.0;
    EXPECT_TRUE(parametersOf(values, loggedRun(), "") == expected);

    values = RunValues();
    values[0].offsetAfter = 12.0;
    values[1].originToZero = true;
    values[2].angle = 13.0;
    expected = loggedRun().parameters;
    expected.xOfsA = 12.0;
    expected.ySet0 = 1;
    expected.zAngle = 13.0;
    EXPECT_TRUE(parametersOf(values, loggedRun(), "") == expected);
}

TEST(RunValues, ASameLengthOfTheLogMustBeSaidByAnOption)
{
    LoggedRun run = loggedRun();
    run.sameLengths = 1;
    EXPECT_EQ(
        complaintOf(RunValues(), run),
        "run.log: the run gave an axis the length of another, but its log does not tell which (\"xSamey\" "
        "stands for all six); say it with --x-length-of, --y-length-of or --z-length-of");
    RunValues values;
    values[1].lengthOf = 2;
    TransformParameters expected = loggedRun().parameters;
    expected.ySameX = 1;
    expected.ySetL = 0;
    expected.yLength = 0.0;
    EXPECT_TRUE(parametersOf(values, run, "") == expected);

    run.sameLengths = 2;
    EXPECT_NE(complaintOf(values, run).find("the run gave 2 axes the length of another"), std::string::npos);
}

TEST(RunValues, AScaleThatTheLogCutToZeroMustBeSaidByAnOption)
{
    LoggedRun run = loggedRun();
    run.parameters.yScl = 0.0; // its length is given
    EXPECT_EQ(complaintOf(RunValues(), run), "");
    run.parameters.zScl = 0.0;
    EXPECT_EQ(
        complaintOf(RunValues(), run),
        "run.log: zScl = 0.000000: the scale was 0, or too small for the six decimals of a log; say it with "
        "--z-scale");
    RunValues values;
    values[2].scale = 1e-9;
    EXPECT_EQ(complaintOf(values, run), "");
    values = RunValues();
    values[2].length = 5.0;
    EXPECT_EQ(complaintOf(values, run), "");
}

} // namespace
