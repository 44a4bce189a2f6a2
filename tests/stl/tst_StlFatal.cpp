#include "stl/StlFatal.h"
#include "tests/support/DyingProcess.h"

#include <cerrno>
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
