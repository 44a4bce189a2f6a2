// Shows that processor time and memory grow in proportion to the mesh: a run over meshes of growing size,
// each in a process of its own, compared with a process that only moves the same bytes.
//
//   bench_Growth [largest number of facets]     up to 42949671, the largest binary file there can be
//
// Needs about 620 bytes of disk space per facet in the temporary folder. Rows of more than a million facets
// are measured with warm memory, and the run once more with memory as found.

#include "benchmarks/BenchMesh.h"
#include "benchmarks/ByteMover.h"
#include "benchmarks/CpuTime.h"
#include "benchmarks/WarmMemory.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>

namespace {

enum class Memory { AsFound, Warm };

// The round that took the least processor time. Each round creates its output files.
Usage leastUsageOf(int rounds, Memory memory, const std::function<void()> &work)
{
    Usage least;
    for (int round = 0; round < rounds; ++round) {
        for (const char *output : {"out.stl", "moved.out"})
            std::filesystem::remove(output);
        std::optional<WarmMemory> warm;
        if (memory == Memory::Warm)
            warm.emplace();
        const Usage usage = usageOf(work);
        if (!usage.succeeded)
            std::exit(EXIT_FAILURE);
        if (round == 0 || usage.cpuSeconds < least.cpuSeconds)
            least = usage;
    }
    return least;
}

void runOnce()
{
    if (!runEngine(scaleAndOffset(), "binary.stl", "out.stl"))
        std::abort();
}

void printRow(int facets, double bareBytes)
{
    writeBall("binary.stl", facets);
    const bool isLarge = facets > 1000000;
    const int rounds = isLarge ? 1 : 7;
    const Usage asFound = leastUsageOf(rounds, Memory::AsFound, runOnce);
    const auto outputSize = std::filesystem::file_size("out.stl");
    const auto moveBytes = [outputSize] { ByteMover().move("binary.stl", 1, 0, outputSize); };
    const Usage run = isLarge ? leastUsageOf(2, Memory::Warm, runOnce) : asFound;
    const Usage moving =
        isLarge ? leastUsageOf(2, Memory::Warm, moveBytes) : leastUsageOf(rounds, Memory::AsFound, moveBytes);

    const auto perFacet = [&](double seconds) { return 1e6 * seconds / facets; };
    std::printf("| %d | %.3f | %.3f | %.3f | %.3f | %.3f | %.3f | %.1f |\n", facets, run.cpuSeconds,
                perFacet(run.cpuSeconds), perFacet(run.cpuSeconds - run.systemSeconds),
                perFacet(run.systemSeconds), perFacet(moving.cpuSeconds), perFacet(asFound.cpuSeconds),
                (run.peakBytes - bareBytes) / facets);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const int largest = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const TemporaryFolder folder;
    const double bareBytes = usageOf([] {}).peakBytes;
    std::printf("From a binary file, without rotation; least of two rounds, of seven up to a million facets. "
                "Microseconds of "
                "processor time and bytes of memory are per facet; memory is counted above that of an empty "
                "process.\n\n"
                "| facets | CPU seconds | microseconds | user | system | moving the bytes | memory as found "
                "| peak bytes |\n"
                "|---|---|---|---|---|---|---|---|\n");
    for (const int facets : {10000, 100000, 1000000, 10000000, 20000000, 40000000, 42949671}) {
        if (facets <= largest)
            printRow(facets, bareBytes);
    }
    return EXIT_SUCCESS;
}
