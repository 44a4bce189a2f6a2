#include "stl/StlFatal.h"
#include "stl/StlMessages.h"
#include "tests/support/DyingProcess.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace {

std::string heard;

void hear(const std::string &lines) { heard += "heard: " + lines; }
void refuse(const std::string &lines) { throw lines; }

class StlMessages : public ::testing::Test {
protected:
    void SetUp() override { heard.clear(); }
    void TearDown() override { stlMessageHandlers = {}; }
};

TEST_F(StlMessages, WithoutAHandlerGoToStandardError)
{
    const StandardErrorCapture capture;
    stlWarn("100%s of it\n");
    errno = EISDIR;
    stlWarnWithSystemError("who");
    EXPECT_EQ(capture.text(), "100%s of it\nwho: Is a directory\n");
}

TEST_F(StlMessages, WithAHandlerGoNowhereElse)
{
    stlMessageHandlers.warning = hear;
    const StandardErrorCapture capture;
    stlWarn("100%s of it\n");
    errno = EISDIR;
    stlWarnWithSystemError("who");
    EXPECT_EQ(heard, "heard: 100%s of it\nheard: who: Is a directory\n");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(StlMessages, AFatalHandlerMayThrow)
{
    stlMessageHandlers.fatal = refuse;
    errno = EISDIR;
    EXPECT_THROW(stlFatalWithSystemError("who"), std::string);
}

TEST_F(StlMessages, AFatalHandlerThatReturnsEndsTheProcess)
{
    stlMessageHandlers.fatal = [](const std::string &lines) {
        std::fputs(("mine: " + lines).c_str(), stderr);
    };
    const ProcessOutcome outcome = outcomeOf([] { stlFatal("the end\n"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, "mine: the end\n");
}

} // namespace
