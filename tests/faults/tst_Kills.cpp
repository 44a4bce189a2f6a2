// The process is killed at random moments of a run: the input is left alone, and the next run succeeds.
// MESHVANE_KILLS is the number of kills.
#include "tests/support/Amount.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/RecordingReporter.h"
#include "tests/support/RunParameters.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunFiles.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Microseconds = std::chrono::microseconds;

const Reports success = {finishedReport("out.stl")};

Reports runOnce() { return reportsOfRun(usingEveryPass(), "in.stl", "out.stl"); }

Microseconds timeOfOneRun()
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(runOnce(), success);
    return std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - start);
}

// True if the kill came before the run was over.
bool killRunAfter(Microseconds delay)
{
    const pid_t child = fork();
    if (child == 0) {
        runOnce();
        _exit(0);
    }
    std::this_thread::sleep_for(delay);
    kill(child, SIGKILL);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFSIGNALED(status);
}

TEST(Kills, LeaveTheInputAloneAndTheNextRunSucceeds)
{
    const TemporaryFolder folder;
    const std::string mesh = binaryStl("made by hand", differentFacets(20000));
    writeBytes("in.stl", mesh);
    const Microseconds whole = timeOfOneRun();
    const std::string output = readBytes("out.stl");

    std::mt19937 random(4711);
    const int kills = amount("MESHVANE_KILLS", 20);
    int killed = 0;
    int leftovers = 0;
    for (int tries = 0; killed < kills && tries < 10 * kills && !HasFailure(); ++tries) {
        std::filesystem::remove(temporaryFileName);
        if (!killRunAfter(whole * static_cast<int>(random() % 1000) / 1000))
            continue;
        ++killed;
        leftovers += std::filesystem::exists(temporaryFileName) ? 1 : 0;
        EXPECT_TRUE(readBytes("in.stl") == mesh);
        EXPECT_EQ(runOnce(), success);
        EXPECT_TRUE(readBytes("out.stl") == output);
        EXPECT_FALSE(std::filesystem::exists(temporaryFileName));
    }
    EXPECT_EQ(killed, kills);
    EXPECT_GT(leftovers, 0) << "no kill came while the temporary file was there";
    RecordProperty("kills", killed);
}

} // namespace
