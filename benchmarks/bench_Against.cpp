// Times runs of two versions of the program over each mesh, alternating. Both are given as their programs
// run_once, and their outputs must be equal.
//
//   bench_Against RUN_ONCE OLDER_RUN_ONCE [facets [rounds]]

#include "benchmarks/BenchMesh.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

struct Version {
    std::string program;
    const char *output;
};

bool printRow(const NamedShape &shape, const char *input, std::size_t options, const Version (&versions)[2],
              int rounds)
{
    const std::string row = std::to_string(options);
    std::vector<Contestant> contestants;
    for (const Version &version : versions) {
        contestants.push_back({[&] {
                                   execl(version.program.c_str(), version.program.c_str(), "run", input,
                                         row.c_str(), version.output, nullptr);
                                   std::_Exit(EXIT_FAILURE);
                               },
                               1,
                               {}});
    }
    measureInTurn(contestants, rounds);
    const double millions = 1e-6 * facetsInBinary("binary.stl");
    const Usage &now = contestants[0].least;
    const Usage &before = contestants[1].least;
    const bool same = readBytes(versions[0].output) == readBytes(versions[1].output);
    std::printf("| %s | %s | %s | %s | %s | %.2f | %.2f |%s\n", shape.name,
                input == std::string("binary.stl") ? "binary" : "ASCII", benchOptions[options].name,
                secondsPerMillion(now, millions).c_str(), secondsPerMillion(before, millions).c_str(),
                now.cpuSeconds / before.cpuSeconds, userSeconds(now) / userSeconds(before),
                same ? "" : " OUTPUTS DIFFER");
    std::fflush(stdout);
    return same;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fputs("usage: bench_Against RUN_ONCE OLDER_RUN_ONCE [facets [rounds]]\n", stderr);
        return 2;
    }
    const Version versions[2] = {{std::filesystem::absolute(argv[1]), "now.out"},
                                 {std::filesystem::absolute(argv[2]), "before.out"}};
    const int facets = argc > 3 ? std::atoi(argv[3]) : 1000000;
    const int rounds = argc > 4 ? std::atoi(argv[4]) : 5;
    const TemporaryFolder folder;
    std::printf("CPU seconds per million facets, user + system; meshes of %d facets; least of %d alternating "
                "rounds.\n\n"
                "| mesh | input | options | this version | older | this / older | user alone |\n"
                "|---|---|---|---|---|---|---|\n",
                facets, rounds);
    bool same = true;
    for (const NamedShape &shape : benchShapes) {
        writeBinary("binary.stl", facetsOf(shape.shape, facets));
        writeAsciiCopy("binary.stl", "ascii.stl");
        for (const char *input : {"binary.stl", "ascii.stl"}) {
            for (std::size_t options = 0; options < benchOptions.size(); ++options)
                same = printRow(shape, input, options, versions, rounds) && same;
        }
    }
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}
