#include "tests/cli/CommandMesh.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

// Everything that the command prints on a terminal while it is stopped for longer than a second.
std::string printedOnTerminal(const char *option)
{
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        unsetenv("TMPDIR");
        execl(MESHVANE_CLI, MESHVANE_CLI, "--force", option, "in.stl", "out.stl", nullptr);
        _exit(127);
    }
    EXPECT_GT(child, 0);
    std::this_thread::sleep_for(20ms);
    kill(child, SIGSTOP);
    std::this_thread::sleep_for(1100ms);
    kill(child, SIGCONT);
    std::string printed;
    char block[1024];
    for (ssize_t count = read(terminal, block, sizeof block); count > 0;
         count = read(terminal, block, sizeof block))
        printed.append(block, static_cast<std::size_t>(count));
    close(terminal);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << printed;
    return printed;
}

TEST(Terminal, ShowsABarForALongRunUnlessAskedToBeQuiet)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("", differentFacets(200'000)));
    // The run may be over before it is stopped; then it was a short one.
    std::string printed;
    for (int tries = 0; tries < 20 && printed.empty(); ++tries)
        printed = printedOnTerminal("--force");
    EXPECT_EQ(printed.find("\rin.stl ["), 0U) << printed;
    EXPECT_EQ(printed.substr(printed.size() - 4), "\r\x1B[K") << printed;
    for (int tries = 0; tries < 3; ++tries)
        EXPECT_EQ(printedOnTerminal("--quiet"), "");
}

} // namespace
