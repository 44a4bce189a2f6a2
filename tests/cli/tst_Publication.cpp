#include "cli/Complaints.h"
#include "cli/Publication.h"
#include "tests/cli/FolderEntries.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

class Publishing : public ::testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directory("work");
        writeBytes("work/a", "new a");
        writeBytes("work/b", "new b");
    }

    static std::string here(const std::string &name) { return (fs::current_path() / name).string(); }

    // The file that is complained of when a folder has taken the second name since both results were staged.
    static std::string complaintOfTakenName(bool force)
    {
        Publication publication(force);
        publication.stage(here("work/a"), here("a"), "a");
        publication.stage(here("work/b"), here("b"), "b");
        fs::create_directory("b");
        try {
            publication.publish();
        } catch (const Failure &failure) {
            return failure.file;
        }
        return "nothing";
    }

    const TemporaryFolder m_folder;
};

TEST_F(Publishing, GivesAllResultsTheirNames)
{
    {
        Publication publication(false);
        publication.stage(here("work/a"), here("a"), "a");
        publication.stage(here("work/b"), here("b"), "b");
        EXPECT_FALSE(fs::exists("a"));
        publication.publish();
    }
    EXPECT_EQ(readBytes("a"), "new a");
    EXPECT_EQ(readBytes("b"), "new b");
    EXPECT_EQ(entriesOf("."), (Names{"a", "b", "work"}));
    EXPECT_EQ(entriesOf("work"), Names{});
}

TEST_F(Publishing, TakesBackWhatWasNewIfOneCannotHaveItsName)
{
    EXPECT_EQ(complaintOfTakenName(false), "b");
    EXPECT_EQ(entriesOf("."), (Names{"b", "work"}));
}

TEST_F(Publishing, ByForceLeavesWhatItHasReplaced)
{
    writeBytes("a", "old a");
    EXPECT_EQ(complaintOfTakenName(true), "b");
    EXPECT_EQ(readBytes("a"), "new a");
}

TEST_F(Publishing, LeavesNothingIfItIsNotDone)
{
    {
        Publication publication(false);
        publication.stage(here("work/a"), here("a"), "a");
    }
    EXPECT_EQ(entriesOf("."), Names{"work"});
}

} // namespace
