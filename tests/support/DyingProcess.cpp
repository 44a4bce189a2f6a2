#include "tests/support/DyingProcess.h"

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

int checked(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

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

StandardErrorCapture::StandardErrorCapture()
    : m_before(dup(STDERR_FILENO)),
      m_collector(streamOf(""))
{
    std::fflush(stderr);
    checked(m_before, "dup");
    checked(dup2(fileno(m_collector.get()), STDERR_FILENO), "dup2");
}

StandardErrorCapture::~StandardErrorCapture()
{
    std::fflush(stderr);
    dup2(m_before, STDERR_FILENO);
    close(m_before);
}

std::string StandardErrorCapture::text() const
{
    std::fflush(stderr);
    return bytesOf(m_collector);
}

ProcessOutcome outcomeOf(const std::function<void()> &action)
{
    std::fflush(nullptr); // or the child would write it, too
    const StandardErrorCapture capture;
    const pid_t child = checked(fork(), "fork");
    if (child == 0)
        runAndEnd(action);
    int status = 0;
    checked(waitpid(child, &status, 0), "waitpid");
    ProcessOutcome outcome;
    outcome.exited = WIFEXITED(status);
    outcome.status = outcome.exited ? WEXITSTATUS(status) : WTERMSIG(status);
    outcome.standardError = capture.text();
    return outcome;
}
