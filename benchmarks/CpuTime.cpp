#include "benchmarks/CpuTime.h"

#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

double cpuSecondsIn(const rusage &usage) { return seconds(usage.ru_utime) + seconds(usage.ru_stime); }

} // namespace

double cpuSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return cpuSecondsIn(usage);
}

double cpuSecondsOf(const std::function<void()> &work)
{
    const double start = cpuSeconds();
    work();
    return cpuSeconds() - start;
}

Usage usageOf(const std::function<void()> &work)
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::fflush(nullptr);
        _exit(0);
    }
    int status = 0;
    rusage usage{};
    Usage result;
    result.succeeded =
        wait4(child, &status, 0, &usage) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    result.cpuSeconds = cpuSecondsIn(usage);
    result.systemSeconds = seconds(usage.ru_stime);
    result.peakBytes = 1024.0 * static_cast<double>(usage.ru_maxrss);
    return result;
}

double userSeconds(const Usage &usage) { return usage.cpuSeconds - usage.systemSeconds; }

std::string secondsPerMillion(const Usage &usage, double millions)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.3f + %.3f", userSeconds(usage) / millions,
                  usage.systemSeconds / millions);
    return text;
}

void measureInTurn(std::vector<Contestant> &contestants, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        for (Contestant &contestant : contestants) {
            if (round % contestant.step != 0)
                continue;
            const Usage usage = usageOf(contestant.work);
            if (!usage.succeeded) {
                std::fputs("A measured process failed.\n", stderr);
                std::exit(EXIT_FAILURE);
            }
            if (round == 0 || usage.cpuSeconds < contestant.least.cpuSeconds)
                contestant.least = usage;
        }
    }
}
