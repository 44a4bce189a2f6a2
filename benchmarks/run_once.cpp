// One run of the engine in a process of its own, for tools that look at a whole process (valgrind, perf) and
// for comparing two versions of the program.
//
//   run_once make SHAPE FACETS BINARY [ASCII]     writes a mesh of benchShapes as one file or two
//   run_once run INPUT OPTIONS OUTPUT             OPTIONS: the index of a row of benchOptions

#include "benchmarks/BenchMesh.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char **argv)
{
    const std::string what = argc > 1 ? argv[1] : "";
    if (what == "make" && (argc == 5 || argc == 6)) {
        for (const NamedShape &shape : benchShapes) {
            if (shape.name == std::string(argv[2])) {
                writeBinary(argv[4], facetsOf(shape.shape, std::atoi(argv[3])));
                if (argc == 6)
                    writeAsciiCopy(argv[4], argv[5]);
                return EXIT_SUCCESS;
            }
        }
    }
    if (what == "run" && argc == 5) {
        const auto options = static_cast<std::size_t>(std::atoi(argv[3]));
        return runEngine(benchOptions.at(options).parameters, argv[2], argv[4]) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    std::fputs("usage: run_once make SHAPE FACETS BINARY [ASCII] | run INPUT OPTIONS OUTPUT\n", stderr);
    return 2;
}
