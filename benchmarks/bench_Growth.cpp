// Shows that processor time and memory grow with the mesh and no faster: the road over meshes of growing
// size, each in a process of its own, beside a process that only moves the same bytes.
//
//   bench_Growth [largest number of facets]     up to 42949671, the largest binary file there can be
//
// Needs about 620 bytes of disc a facet in the temporary folder.

#include "benchmarks/BenchMesh.h"
#include "benchmarks/ByteMover.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

// The round that took the least processor time.
Usage leastUsageOf(int rounds, const std::function<void()> &work)
{
    Usage least;
    for (int round = 0; round < rounds; ++round) {
        const Usage usage = usageOf(work);
        if (!usage.succeeded)
            std::exit(EXIT_FAILURE);
        if (round == 0 || usage.cpuSeconds < least.cpuSeconds)
            least = usage;
    }
    return least;
}

void printRow(int facets, double bareBytes)
{
    writeBall("binary.stl", facets);
    const TransformParameters parameters = scaleAndOffset();
    const int rounds = facets > 1000000 ? 1 : 7;
    const Usage road = leastUsageOf(rounds, [&] {
        if (!engineRoad(parameters, "binary.stl", "out.stl"))
            std::abort();
    });
    const auto outputSize = std::filesystem::file_size("out.stl");
    std::filesystem::remove("out.stl");
    const Usage moving = leastUsageOf(rounds, [&] { ByteMover().move("binary.stl", 1, 0, outputSize); });
    std::filesystem::remove("moved.out");

    const auto eachFacet = [&](double seconds) { return 1e6 * seconds / facets; };
    std::printf("| %d | %.3f | %.3f | %.3f | %.3f | %.3f | %.1f |\n", facets, road.cpuSeconds,
                eachFacet(road.cpuSeconds), eachFacet(road.cpuSeconds - road.systemSeconds),
                eachFacet(road.systemSeconds), eachFacet(moving.cpuSeconds),
                (road.peakBytes - bareBytes) / facets);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const int largest = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const TemporaryFolder folder;
    const double bareBytes = usageOf([] {}).peakBytes;
    std::printf(
        "Microseconds are those of the processor, a facet; bytes are a facet's, above an empty process.\n\n"
        "| facets | CPU seconds | microseconds | in the program | in the system | moving the bytes | peak "
        "bytes |\n"
        "|---|---|---|---|---|---|---|\n");
    for (const int facets : {10000, 100000, 1000000, 10000000, 20000000, 40000000, 42949671}) {
        if (facets <= largest)
            printRow(facets, bareBytes);
    }
    return EXIT_SUCCESS;
}
