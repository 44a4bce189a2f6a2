#include "cli/Complaints.h"
#include "cli/RunLogReader.h"
#include "tests/cli/SameParameters.h"
#include "transform/RunLogText.h"

#include <gtest/gtest.h>
#include <random>

namespace {

TransformParameters everything()
{
    TransformParameters p;
    p.xScl = 25.4;
    p.yScl = -1.0;
    p.zScl = 1e22;
    p.xOfsB = -0.5;
    p.yOfsB = 123456.75;
    p.zOfsA = 7.0;
    p.xSet0 = p.zSet0 = 1;
    p.xSetL = p.ySetL = p.zSetL = 1;
    p.yLength = 100.0;
    p.xRotate = p.zRotate = 1;
    p.xAngle = -90.0;
    return p;
}

const std::string counts =
    "\n\nNumber lines read from stl file = 16\nNumber triangles read from stl file = 2\n";

std::string logOf(const TransformParameters &p)
{
    return runLogHeader() + runLogParameters(p) + runLogOutcome(counts);
}

std::string complaintOf(const std::string &bytes)
{
    try {
        readRunLog(bytes, "run.log");
    } catch (const Failure &failure) {
        return failure.file + ": " + failure.what();
    }
    return {};
}

std::string replaced(std::string text, const std::string &old, const std::string &replacement)
{
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return text.replace(at, old.size(), replacement);
}

TEST(RunLogReader, ReadsWhatTheWriterWrites)
{
    const LoggedRun run = readRunLog(logOf(everything()), "");
    EXPECT_TRUE(run.parameters == everything());
    EXPECT_EQ(run.sameLengths, 0);
    EXPECT_EQ(run.counts->lines, 16);
    EXPECT_EQ(run.counts->facets, 2);
    EXPECT_TRUE(run.warnings.empty());
}

TEST(RunLogReader, ReadsEveryCombinationOfBlocks)
{
    for (unsigned bits = 0; bits < 512; ++bits) {
        TransformParameters p;
        p.xScl = p.yScl = p.zScl = 1.0;
        int *const flags[] = {&p.xSet0, &p.ySet0,   &p.zSet0,   &p.xSetL,  &p.ySetL,
                              &p.zSetL, &p.xRotate, &p.yRotate, &p.zRotate};
        double *const values[] = {&p.xLength, &p.yLength, &p.zLength, &p.xAngle, &p.yAngle, &p.zAngle};
        for (unsigned i = 0; i < 9; ++i) {
            *flags[i] = static_cast<int>(bits >> i & 1U);
            if (i >= 3 && *flags[i] == 1)
                *values[i - 3] = i + 0.25;
        }
        EXPECT_TRUE(readRunLog(logOf(p), "").parameters == p) << bits;
    }
}

TEST(RunLogReader, ReadsTheLogOfAFailedRun)
{
    const LoggedRun run = readRunLog(runLogHeader() + runLogParameters(everything()), "");
    EXPECT_TRUE(run.parameters == everything());
    EXPECT_FALSE(run.counts);
}

TEST(RunLogReader, ReadsLineEndsOfEitherKind)
{
    std::string text;
    for (const char character : logOf(everything()))
        text += character == '\n' ? std::string("\r\n") : std::string(1, character);
    EXPECT_TRUE(readRunLog(text, "").parameters == everything());
}

TEST(RunLogReader, CountsSameLengthsWithoutGuessingWhich)
{
    TransformParameters p = everything();
    p.ySameZ = 1;
    EXPECT_EQ(readRunLog(logOf(p), "").sameLengths, 1);
    EXPECT_TRUE(readRunLog(logOf(p), "").parameters == everything());
    p.xSameY = p.xSameZ = p.ySameX = p.zSameX = p.zSameY = 1;
    EXPECT_EQ(readRunLog(logOf(p), "").sameLengths, 6);
}

TEST(RunLogReader, WarnsOfValuesThatFillAllDecimals)
{
    TransformParameters p = everything();
    p.yScl = 1.0 / 3.0;
    p.xOfsA = -1e-9;
    p.xAngle = 0.000001;
    EXPECT_EQ(
        readRunLog(logOf(p), "").warnings,
        (std::vector<std::string>{"Warning: xOfsA = -0.000000 may have had more than six decimals",
                                  "Warning: yScl = 0.333333 may have had more than six decimals",
                                  "Warning: rotateaboutx = 0.000001 may have had more than six decimals"}));
}

TEST(RunLogReader, RefusesWhatNoRunCanBeGiven)
{
    const std::string log = logOf(everything());
    EXPECT_EQ(complaintOf(replaced(log, "xScl = 25.400000", "xScl = inf")),
              "run.log: xScl = inf cannot be repeated");
    EXPECT_EQ(complaintOf(replaced(log, "yOfsB = 123456.750000", "yOfsB = -nan")),
              "run.log: yOfsB = -nan cannot be repeated");
    EXPECT_EQ(complaintOf(replaced(log, "ysetL = 100", "ysetL = -100")),
              "run.log: ysetL: a length cannot be negative");
    EXPECT_EQ(complaintOf(replaced(log, "xScl = 25.400000", "xScl = 25\x1B[31m")),
              "run.log: xScl = 25?[31m cannot be repeated");
}

TEST(RunLogReader, RefusesWhateverTheWriterDoesNotWrite)
{
    const std::string log = logOf(everything());
    const char *const complaint = "run.log: is not the log of a run";
    EXPECT_EQ(complaintOf(""), complaint);
    EXPECT_EQ(complaintOf("solid\n"), complaint);
    EXPECT_EQ(complaintOf(runLogHeader()), complaint);
    EXPECT_EQ(complaintOf(log + "\n"), complaint);
    EXPECT_EQ(complaintOf(log + log), complaint);
    EXPECT_EQ(complaintOf(replaced(log, "25.400000", "25.4")), complaint);
    EXPECT_EQ(complaintOf(replaced(log, "25.400000", "+25.400000")), complaint);
    EXPECT_EQ(complaintOf(replaced(log, "25.400000", "025.400000")), complaint);
    EXPECT_EQ(complaintOf(replaced(log, "   xSet0\n\n   zSet0", "   zSet0\n\n   xSet0")), complaint);
    EXPECT_EQ(complaintOf(replaced(log, "   xSet0\n\n   zSet0\n\n", std::string())), complaint);
    EXPECT_EQ(complaintOf(replaced(log, " = 16\n", " = \n")), complaint);
    EXPECT_EQ(complaintOf(replaced(log, " = 16\n", " = 99999999999999999999\n")), complaint);
    std::string seven = log;
    for (int i = 0; i < 7; ++i)
        seven = replaced(seven, "   zSet0\n\n", "   zSet0\n\n   xSamey\n\n");
    EXPECT_EQ(complaintOf(seven), complaint);
}

TEST(RunLogReader, RefusesALogCutAnywhereButBeforeItsOutcome)
{
    const std::string log = logOf(everything());
    const std::size_t outcome = (runLogHeader() + runLogParameters(everything())).size();
    for (std::size_t size = 0; size < log.size(); ++size)
        EXPECT_EQ(complaintOf(log.substr(0, size)).empty(), size == outcome) << size;
}

} // namespace
