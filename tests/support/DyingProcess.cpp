#include "tests/support/DyingProcess.h"

#include "tests/support/StandardErrorCapture.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#ifdef MESHVANE_COUNTS_COVERAGE
extern "C" void __gcov_dump();
#endif

namespace {

// The coverage of the child counts, too.
[[noreturn]] void end(int status)
{
#ifdef MESHVANE_COUNTS_COVERAGE
    __gcov_dump();
#endif
    _exit(status);
}

[[noreturn]] void runAndEnd(const std::function<void()> &action)
{
    try {
        action();
        std::fflush(stderr);
        end(survivedStatus);
    } catch (...) {
        end(thrownStatus);
    }
}

} // namespace

ProcessOutcome outcomeOf(const std::function<void()> &action)
{
    std::fflush(nullptr); // or the child would write it, too
    const StandardErrorCapture capture;
    const pid_t child = fork();
    if (child == 0)
        runAndEnd(action);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) < 0)
        throw std::system_error(errno, std::generic_category(), "child process");
    ProcessOutcome outcome;
    outcome.exited = WIFEXITED(status);
    outcome.status = outcome.exited ? WEXITSTATUS(status) : WTERMSIG(status);
    outcome.standardError = capture.text();
    return outcome;
}
