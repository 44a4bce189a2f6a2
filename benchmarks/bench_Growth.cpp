// Shows that processor time and memory grow with the mesh and no faster: the road over meshes of growing
// size, each in a process of its own.
//
//   bench_Growth [largest number of facets]     up to 42949671, the largest binary file there can be
//
// Needs about 620 bytes of disc a facet in the temporary folder.

#include "benchmarks/BenchMesh.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

int main(int argc, char **argv)
{
    const int largest = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const TemporaryFolder folder;
    const double bare = usageOf([] {}).peakBytes;
    std::printf("| facets | CPU seconds | microseconds a facet | peak bytes a facet above an empty process "
                "|\n|---|---|---|---|\n");
    for (const int facets : {10000, 100000, 1000000, 10000000, 42949671}) {
        if (facets > largest)
            break;
        writeBall("binary.stl", facets);
        const TransformParameters parameters = scaleAndOffset();
        double seconds = 1e9;
        double peak = 0.0;
        for (int round = 0; round < (facets > 1000000 ? 1 : 7); ++round) {
            const Usage usage = usageOf([&] {
                if (!engineRoad(parameters, "binary.stl", "out.stl"))
                    std::abort();
            });
            if (!usage.succeeded)
                return EXIT_FAILURE;
            seconds = std::min(seconds, usage.cpuSeconds);
            peak = std::max(peak, usage.peakBytes);
        }
        std::printf("| %d | %.3f | %.3f | %.1f |\n", facets, seconds, 1e6 * seconds / facets,
                    (peak - bare) / facets);
        std::fflush(stdout);
    }
    return EXIT_SUCCESS;
}
