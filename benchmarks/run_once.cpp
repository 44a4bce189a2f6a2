// One run of the engine over a mesh, for tools that look at a whole process (valgrind, perf, time).
//
//   run_road make SHAPE FACETS PATH          writes a mesh: binary, or ASCII if PATH ends with ".txt"
//   run_road run PATH OPTIONS                OPTIONS: 0 scale and offset, 1 and rotation, 2 origin and length
#include "benchmarks/BenchMesh.h"
#include "benchmarks/BenchShapes.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int make(const std::string &shapeName, int facets, const std::string &path)
{
    for (const NamedShape &shape : benchShapes) {
        if (shape.name != shapeName)
            continue;
        const std::vector<BinaryFacet> list = facetsOf(shape.shape, facets);
        writeBinary(path, list);
        std::printf("%zu\n", list.size());
        if (path.size() > 4 && path.substr(path.size() - 4) == ".txt") {
            std::rename(path.c_str(), "binary.tmp");
            convertToAscii("binary.tmp", path);
            std::remove("binary.tmp");
        }
        return EXIT_SUCCESS;
    }
    std::fprintf(stderr, "run_road: no shape is called %s\n", shapeName.c_str());
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string what = argc > 1 ? argv[1] : "";
    if (what == "make" && argc == 5)
        return make(argv[2], std::atoi(argv[3]), argv[4]);
    if (what == "run" && argc == 4) {
        TransformParameters (*const options[])() = {scaleAndOffset, rotation, originAndLength};
        return runEngine(options[std::atoi(argv[3]) % 3](), argv[2], "road.out") ? EXIT_SUCCESS
                                                                                  : EXIT_FAILURE;
    }
    std::fputs("usage: run_road make SHAPE FACETS PATH | run PATH OPTIONS\n", stderr);
    return 2;
}
