#include "stl/StlFatal.h"
#include "stl/StlMessages.h"
#include "tests/support/StandardErrorCapture.h"

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
    {
        const StandardErrorCapture capture;
        stlWarn("100%s of it\n");
        EXPECT_EQ(capture.text(), "100%s of it\n");
    }
    const StandardErrorCapture capture;
    errno = EISDIR;
    stlWarnWithSystemError("who");
    EXPECT_EQ(capture.text(), "who: Is a directory\n");
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

} // namespace
