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

[[noreturn]] void becomeCommand(const char *option)
{
    unsetenv("TMPDIR");
    execl(MESHVANE_CLI, MESHVANE_CLI, "--force", option, "in.stl", "out.stl", nullptr);
    _exit(127);
}

// So that the run takes longer than a second.
void interrupt(pid_t command)
{
    std::this_thread::sleep_for(20ms);
    kill(command, SIGSTOP);
    std::this_thread::sleep_for(1100ms);
    kill(command, SIGCONT);
}

void expectSuccessOf(pid_t command)
{
    int status = 0;
    EXPECT_EQ(waitpid(command, &status, 0), command);
    EXPECT_EQ(status, 0);
}

std::string printedOnTerminal(const char *option)
{
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0)
        becomeCommand(option);
    EXPECT_GT(child, 0);
    interrupt(child);
    std::string printed;
    char block[1024];
    for (ssize_t count = read(terminal, block, sizeof block); count > 0;
         count = read(terminal, block, sizeof block))
        printed.append(block, static_cast<std::size_t>(count));
    close(terminal);
    expectSuccessOf(child);
    return printed;
}

std::string printedIntoFile()
{
    const Stream said = openStream("said", "w+");
    const pid_t child = fork();
    if (child == 0) {
        dup2(fileno(said.get()), STDERR_FILENO);
        becomeCommand("--force");
    }
    EXPECT_GT(child, 0);
    interrupt(child);
    expectSuccessOf(child);
    return bytesOf(said);
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

TEST(File, GetsNoBar)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", binaryStl("", differentFacets(200'000)));
    for (int tries = 0; tries < 3; ++tries)
        EXPECT_EQ(printedIntoFile(), "");
}

} // namespace
