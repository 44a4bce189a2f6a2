// Times meshvane-cli on many files, one and two processes at a time; the start of its process against the run
// in it; and a run that is watched by an observer of its progress against one that nobody watches.
//
//   bench_Command [files [facets [rounds]]]

#include "benchmarks/BenchMesh.h"
#include "benchmarks/CpuTime.h"
#include "stl/StlProgress.h"
#include "tests/support/TemporaryFolder.h"
#include "transform/RunPipeline.h"
#include "transform/RunReporter.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

double wallSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Of all processes that have ended so far.
double cpuSecondsOfChildren()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void startCommand(Arguments arguments)
{
    arguments.insert(arguments.begin(), MESHVANE_CLI);
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawn(&process, MESHVANE_CLI, nullptr, nullptr, pointers.data(), environ) != 0)
        throw std::runtime_error("cannot start " MESHVANE_CLI);
}

void waitForOne()
{
    int status = 0;
    if (wait(&status) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error("the command has failed");
}

struct Times {
    double wall = 0.0;
    double cpu = 0.0;
};

Times timesOf(const std::function<void()> &work, double (*cpu)())
{
    const double wallBefore = wallSeconds();
    const double cpuBefore = cpu();
    work();
    return {wallSeconds() - wallBefore, cpu() - cpuBefore};
}

void keepLeast(Times &least, const Times &times, int round)
{
    least.wall = round == 0 ? times.wall : std::min(least.wall, times.wall);
    least.cpu = round == 0 ? times.cpu : std::min(least.cpu, times.cpu);
}

Arguments runOf(const std::string &output)
{
    return {"--force", "--x-scale", "25.4", "--y-scale", "25.4", "--z-scale", "25.4", "in.stl", output};
}

void runMany(int files, int atATime)
{
    int running = 0;
    for (int i = 0; i < files; ++i) {
        if (running == atATime) {
            waitForOne();
            --running;
        }
        startCommand(runOf("out" + std::to_string(i) + ".stl"));
        ++running;
    }
    for (; running > 0; --running)
        waitForOne();
}

void printManyFiles(int files, int facets)
{
    std::printf("%d files of %d facets, a process for each\n\n", files, facets);
    std::printf("| at a time | seconds | files per second | CPU seconds |\n|---|---|---|---|\n");
    for (const int atATime : {1, 2}) {
        const Times times = timesOf([files, atATime] { runMany(files, atATime); }, cpuSecondsOfChildren);
        std::printf("| %d | %.2f | %.0f | %.2f |\n", atATime, times.wall, files / times.wall, times.cpu);
    }
}

class Silent final : public RunReporter {
public:
    void error(const QString &text) override { throw std::runtime_error(text.toStdString()); }
    void logNotEmptied(const QString &details) override { throw std::runtime_error(details.toStdString()); }
    void finished(const QString &) override {}
};

void runHere()
{
    Silent silent;
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 25.4;
    RunPipeline(silent).run(p, "in.stl", "out.stl");
}

void runCommandOnce(const Arguments &arguments)
{
    startCommand(arguments);
    waitForOne();
}

void printStart(int facets, int rounds)
{
    struct Row {
        std::string what;
        std::function<void()> work;
        double (*cpu)();
        Times least;
    } rows[] = {
        {"the process alone (`info` of an empty file)",
         [] {
             runCommandOnce({"info", "empty.stl"});
         },
         cpuSecondsOfChildren,
         {}},
        {"the process and its run", [] { runCommandOnce(runOf("out.stl")); }, cpuSecondsOfChildren, {}},
        {"the run, in a process that is there already", runHere, cpuSeconds, {}},
    };
    // Nobody needs what info prints.
    std::fflush(stdout);
    const int standardOutput = dup(STDOUT_FILENO);
    if (std::freopen("/dev/null", "w", stdout) == nullptr)
        throw std::runtime_error("/dev/null");
    for (int round = 0; round < rounds; ++round) {
        for (Row &row : rows)
            keepLeast(row.least, timesOf(row.work, row.cpu), round);
    }
    std::fflush(stdout);
    dup2(standardOutput, STDOUT_FILENO);
    close(standardOutput);
    std::printf("\nOne run of %d facets, least of %d alternating rounds\n\n", facets, rounds);
    std::printf("| what | milliseconds | CPU milliseconds |\n|---|---|---|\n");
    for (const Row &row : rows)
        std::printf("| %s | %.2f | %.2f |\n", row.what.c_str(), row.least.wall * 1e3, row.least.cpu * 1e3);
}

std::size_t observedBytes = 0;

void printObserver(int facets, int rounds)
{
    Times without;
    Times with;
    for (int round = 0; round < rounds; ++round) {
        stlProgressObserver = nullptr;
        keepLeast(without, timesOf(runHere, cpuSeconds), round);
        stlProgressObserver = [](std::size_t bytes) { observedBytes += bytes; };
        keepLeast(with, timesOf(runHere, cpuSeconds), round);
    }
    stlProgressObserver = nullptr;
    std::printf("\nA run of %d facets, least of %d alternating rounds\n\n", facets, rounds);
    std::printf("| progress | CPU seconds | ratio |\n|---|---|---|\n");
    std::printf("| nobody watches | %.3f | |\n| every block is counted | %.3f | %.3f |\n", without.cpu,
                with.cpu, with.cpu / without.cpu);
}

int numberFrom(int argc, char **argv, int index, int ordinary)
{
    return argc > index ? std::max(1, std::atoi(argv[index])) : ordinary;
}

} // namespace

int main(int argc, char **argv)
{
    const int files = numberFrom(argc, argv, 1, 1000);
    const int facets = numberFrom(argc, argv, 2, 10000);
    const int rounds = numberFrom(argc, argv, 3, 50);
    try {
        unsetenv("TMPDIR");
        const TemporaryFolder folder;
        writeBall("in.stl", facets);
        std::fclose(std::fopen("empty.stl", "w"));
        printManyFiles(files, facets);
        printStart(facets, rounds);
        writeBall("in.stl", 100 * facets);
        printObserver(100 * facets, 7);
        return EXIT_SUCCESS;
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "bench_Command: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
