// The process is killed at any moment of a run: the input stays what it was, and the next run succeeds.
// MESHVANE_KILLS says how often.
#include "tests/faults/SilentRun.h"
#include "tests/support/Amount.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

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

TransformParameters everyPass()
{
    TransformParameters p = doubling();
    p.xSet0 = 1;
    p.zSetL = 1;
    p.zLength = 3.0;
    return p;
}

Microseconds timeOfOneRun()
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(hearRun(everyPass(), "in.stl", "good.stl"), "finished\n");
    return std::chrono::duration_cast<Microseconds>(std::chrono::steady_clock::now() - start);
}

// True if the kill came before the run was over.
bool killRunAfter(Microseconds delay)
{
    const pid_t child = fork();
    if (child == 0) {
        hearRun(everyPass(), "in.stl", "out.stl");
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
    const std::string output = readBytes("good.stl");

    std::mt19937 random(4711);
    const int kills = amount("MESHVANE_KILLS", 20);
    int killed = 0;
    int leftovers = 0;
    for (int tries = 0; killed < kills && tries < 10 * kills && !HasFailure(); ++tries) {
        std::filesystem::remove("_tmp_stl_");
        if (!killRunAfter(whole * static_cast<int>(random() % 1000) / 1000))
            continue;
        ++killed;
        leftovers += std::filesystem::exists("_tmp_stl_") ? 1 : 0;
        EXPECT_TRUE(readBytes("in.stl") == mesh);
        EXPECT_EQ(hearRun(everyPass(), "in.stl", "out.stl"), "finished\n");
        EXPECT_TRUE(readBytes("out.stl") == output);
        EXPECT_FALSE(std::filesystem::exists("_tmp_stl_"));
    }
    EXPECT_EQ(killed, kills);
    EXPECT_GT(leftovers, 0) << "no kill came while the temporary file was there";
    RecordProperty("kills", killed);
}

} // namespace
