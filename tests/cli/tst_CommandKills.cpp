// The command is ended at any moment of a run, and run many times at once: whoever looks for the output finds
// the old one, none, or the whole new one. MESHVANE_KILLS says how often it is killed.
#include "tests/cli/CommandMesh.h"
#include "tests/cli/CommandProcess.h"
#include "tests/support/Amount.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;
using Microseconds = std::chrono::microseconds;

const Arguments everyPass{"--x-scale", "2", "--x-origin-to-zero", "--z-length", "3", "--rotate-y", "30"};

Arguments operator+(Arguments first, const Arguments &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Kills : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override
    {
        fs::create_directory("results");
        writeBytes("in.stl", m_mesh);
        const auto start = std::chrono::steady_clock::now();
        ASSERT_EQ(runMeshvane(everyPass + Arguments{"in.stl", "good.stl"}).status, 0);
        m_whole = std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - start);
        m_good = readBytes("good.stl");
    }

    // True if the signal came before the run was over.
    bool endAfter(Microseconds delay, const Arguments &options) const
    {
        const pid_t process = startMeshvane(everyPass + options +
                                            Arguments{"--log", "results/log", "in.stl", "results/out.stl"});
        std::this_thread::sleep_for(delay);
        kill(process, GetParam());
        const CommandResult result = endOf(process);
        EXPECT_TRUE(result.exited || result.status == GetParam());
        return !result.exited;
    }

    void endAtRandomMoments(const std::string &before, const Arguments &options)
    {
        std::mt19937 random(4711);
        const int kills = amount("MESHVANE_KILLS", 30);
        int ended = 0;
        int old = 0;
        for (int tries = 0; ended < kills && tries < 20 * kills && !HasFailure(); ++tries) {
            fs::remove_all("results");
            fs::create_directory("results");
            if (!before.empty())
                writeBytes("results/out.stl", before);
            if (!endAfter(m_whole * static_cast<int>(random() % 1000) / 1000, options))
                continue;
            ++ended;
            old += expectWholeOrOld(before) ? 1 : 0;
            EXPECT_TRUE(readBytes("in.stl") == m_mesh);
        }
        EXPECT_EQ(ended, kills);
        EXPECT_GT(old, 0) << "no signal came before the output was there";
        RecordProperty("ended", ended);
    }

    bool expectWholeOrOld(const std::string &before) const
    {
        // Only a killed process leaves its folder.
        for (const std::string &name : entriesOf("results")) {
            EXPECT_TRUE(name == "out.stl" || name == "log" ||
                        (GetParam() == SIGKILL && name.substr(0, 10) == ".meshvane-"))
                << name;
        }
        const std::string output =
            fs::exists("results/out.stl") ? readBytes("results/out.stl") : std::string();
        EXPECT_TRUE(output == before || output == m_good) << output.size() << " bytes";
        return output == before;
    }

    const TemporaryFolder m_folder;
    const std::string m_mesh = binaryStl("made by hand", differentFacets(20000));
    std::string m_good;
    Microseconds m_whole{};
};

TEST_P(Kills, LeaveNoOutputOrTheWholeOne) { endAtRandomMoments("", {}); }

TEST_P(Kills, LeaveTheOldOutputOrTheWholeNewOne) { endAtRandomMoments("old", {"--force"}); }

INSTANTIATE_TEST_SUITE_P(, Kills, ::testing::Values(SIGKILL, SIGTERM, SIGINT, SIGHUP), [](const auto &test) {
    return std::string(test.param == SIGKILL   ? "Kill"
                       : test.param == SIGTERM ? "Terminate"
                       : test.param == SIGINT  ? "Interrupt"
                                               : "HangUp");
});

TEST(Signals, ThatAreIgnoredStayIgnored)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("", differentFacets(100'000)));
    const auto before = std::signal(SIGHUP, SIG_IGN); // as nohup does
    const pid_t process = startMeshvane({"in.stl", "out.stl"});
    for (int i = 0; i < 10; ++i) {
        kill(process, SIGHUP);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    std::signal(SIGHUP, before);
    EXPECT_EQ(endOf(process).status, 0);
    EXPECT_EQ(entriesOf("."), (Arguments{"in.stl", "out.stl"}));
}

TEST(Signals, ThatSeldomEndAProcessLeaveNoPrivateFolderEither)
{
    const TemporaryFolder folder;
    fs::create_directory("results");
    writeBytes("in.stl", binaryStl("", differentFacets(100'000)));
    for (const int signal : {SIGQUIT, SIGPIPE, SIGXCPU}) {
        const pid_t process = startMeshvane({"in.stl", "results/out.stl"});
        for (int tries = 0; tries < 5000 && entriesOf("results").empty(); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_FALSE(entriesOf("results").empty()) << "there is no private folder";
        kill(process, signal);
        const CommandResult result = endOf(process);
        EXPECT_FALSE(result.exited);
        EXPECT_EQ(result.status, signal);
        EXPECT_EQ(entriesOf("results"), Arguments{});
    }
}

// --------------------------------------------------------------------------------------------------- at once

constexpr int many = 200;

TEST(AtOnce, TwoHundredRunsInOneFolderDoNotMeet)
{
    const TemporaryFolder folder;
    const std::string mesh = binaryStl("made by hand", differentFacets(500));
    writeBytes("in.stl", mesh);
    std::vector<std::string> expected;
    for (int scale = 1; scale <= 4; ++scale) {
        const std::string text = std::to_string(scale);
        ASSERT_EQ(runMeshvane({"--x-scale", text, "in.stl", "expected.stl"}).status, 0);
        expected.push_back(readBytes("expected.stl"));
        fs::remove("expected.stl");
    }
    std::vector<pid_t> processes;
    processes.reserve(many);
    for (int i = 0; i < many; ++i)
        processes.push_back(
            startMeshvane({"--x-scale", std::to_string(i % 4 + 1), "--log", std::to_string(i) + ".log",
                           "in.stl", std::to_string(i) + ".stl"}));
    for (const pid_t process : processes)
        EXPECT_EQ(endOf(process).status, 0);
    for (int i = 0; i < many; ++i) {
        EXPECT_TRUE(readBytes(std::to_string(i) + ".stl") == expected[static_cast<std::size_t>(i % 4)]) << i;
        EXPECT_NE(
            readBytes(std::to_string(i) + ".log").find("xScl = " + std::to_string(i % 4 + 1) + ".000000"),
            std::string::npos);
    }
    EXPECT_EQ(entriesOf(".").size(), 2U * many + 1U);
}

TEST(AtOnce, OfRunsWithOneOutputWithoutForceOneWins)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("made by hand", differentFacets(2000)));
    for (int round = 0; round < 5; ++round) {
        std::vector<pid_t> processes;
        processes.reserve(20);
        for (int i = 0; i < 20; ++i)
            processes.push_back(startMeshvane({"in.stl", "out.stl"}));
        int done = 0;
        for (const pid_t process : processes) {
            const int status = endOf(process).status;
            EXPECT_TRUE(status == 0 || status == 1);
            done += status == 0 ? 1 : 0;
        }
        EXPECT_EQ(done, 1);
        EXPECT_EQ(entriesOf("."), (Arguments{"in.stl", "out.stl"}));
        fs::remove("out.stl");
    }
}

TEST(AtOnce, RunsWithOneOutputAndForceAllLeaveAWholeOne)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("made by hand", differentFacets(2000)));
    ASSERT_EQ(runMeshvane({"in.stl", "out.stl"}).status, 0);
    const std::string whole = readBytes("out.stl");
    std::vector<pid_t> processes;
    processes.reserve(40);
    for (int i = 0; i < 40; ++i)
        processes.push_back(startMeshvane({"--force", "in.stl", "out.stl"}));
    for (const pid_t process : processes) {
        EXPECT_TRUE(readBytes("out.stl") == whole);
        EXPECT_EQ(endOf(process).status, 0);
    }
    EXPECT_EQ(entriesOf("."), (Arguments{"in.stl", "out.stl"}));
}

} // namespace
