#include "stl/StlFatal.h"
#include "stl/StlMessages.h"
#include "tests/support/DyingProcess.h"

#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>

TEST(StlFatal, PrintsTheLineAsItStands)
{
    const ProcessOutcome outcome = outcomeOf([] { stlFatal("100%s of it\nis wrong.\n"); });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, "100%s of it\nis wrong.\n");
}

TEST(StlFatal, AddsTheWordsForTheSystemError)
{
    const ProcessOutcome outcome = outcomeOf([] {
        errno = EISDIR;
        stlFatalWithSystemError("who: Couldn't open %d");
    });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, "who: Couldn't open %d: Is a directory\n");
}

TEST(StlFatal, AHandlerThatReturnsEndsTheProcess)
{
    stlMessageHandlers.fatal = [](const std::string &lines) {
        std::fputs(("mine: " + lines).c_str(), stderr);
    };
    const ProcessOutcome outcome = outcomeOf([] { stlFatal("the end\n"); });
    stlMessageHandlers = {};
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, "mine: the end\n");
}
