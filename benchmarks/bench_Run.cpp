// Times whole runs, from the STL file to the transformed file, over each mesh as a binary and as an ASCII
// file. They alternate with two others: a process that only moves the same bytes, and, over the ordered
// meshes, the plain standard-I/O twin. The outputs of run and twin must be equal.
//
//   bench_Run [facets [rounds]]

#include "benchmarks/BenchMesh.h"
#include "benchmarks/ByteMover.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/PlainTwin.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunFiles.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int twinStep = 4; // the twin is slow, and steady enough to be timed less often

struct Input {
    const char *kind;
    const char *path;
    int readings; // of the file: the lines of ASCII are counted first
};

constexpr Input inputs[] = {{"binary", "binary.stl", 1}, {"ASCII", "ascii.stl", 2}};

void runPlainTwin(const TransformParameters &p, const std::string &input, const std::string &output)
{
    plain::Mesh mesh;
    plain::initialize(mesh, input);
    plain::allocateFacets(mesh);
    plain::loadFacets(mesh, 0, true);
    mesh.closeFile();
    plain::writeAscii(mesh, temporaryFileName);

    plain::Placement placement;
    placement.scale = {p.xScl, p.yScl, p.zScl};
    placement.offsetBefore = {p.xOfsB, p.yOfsB, p.zOfsB};
    placement.offsetAfter = {p.xOfsA, p.yOfsA, p.zOfsA};
    plain::Request request;
    request.rotateX = p.xRotate;
    request.rotateZ = p.zRotate;
    request.angleX = p.xAngle;
    request.angleZ = p.zAngle;
    request.setOriginX = p.xSet0;
    request.setOriginY = p.ySet0;
    request.setOriginZ = p.zSet0;
    request.setLengthX = p.xSetL;
    request.lengthX = p.xLength;
    plain::Extents extents;
    char message[plain::messageCapacity] = "\n";
    plain::transform(placement, extents, message, std::fopen(temporaryFileName, "r"),
                     std::fopen(output.c_str(), "w+"), request);
    std::remove(temporaryFileName);
}

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "bench_Run: %s\n", what);
    std::exit(EXIT_FAILURE);
}

void makeMesh(const NamedShape &shape, int facets)
{
    // In a process of its own, so that the heap of this one stays what it is for each process that is
    // measured.
    const Usage usage = usageOf([&] {
        writeBinary(inputs[0].path, facetsOf(shape.shape, facets));
        writeAsciiCopy(inputs[0].path, inputs[1].path);
    });
    require(usage.succeeded, "no mesh was written");
}

bool haveEqualBytes(const char *one, const char *other)
{
    return usageOf([&] {
               if (readBytes(one) != readBytes(other))
                   std::_Exit(EXIT_FAILURE);
           })
        .succeeded;
}

void printRow(const NamedShape &shape, const Input &input, const BenchOptions &options, int rounds)
{
    // As large as the temporary file, which is written as an ASCII file is.
    const auto temporarySize = std::filesystem::file_size(inputs[1].path);
    std::vector<Contestant> contestants(2);
    contestants[0].work = [&] {
        if (!runEngine(options.parameters, input.path, "run.out"))
            std::_Exit(EXIT_FAILURE);
    };
    contestants[1].work = [&] { ByteMover().move(input.path, input.readings, options.scans, temporarySize); };
    if (shape.isOrdered)
        contestants.push_back(
            {[&] { runPlainTwin(options.parameters, input.path, "plain.out"); }, twinStep, {}});
    measureInTurn(contestants, rounds);
    require(std::filesystem::file_size("run.out") == std::filesystem::file_size("moved.out"),
            "not as many bytes were moved as the run wrote");
    require(!shape.isOrdered || haveEqualBytes("run.out", "plain.out"), "run and plain twin differ");

    const double millions = 1e-6 * facetsInBinary(inputs[0].path);
    const double run = contestants[0].least.cpuSeconds;
    std::printf("| %s | %s | %s | %s | %s | %.2f ", shape.name, input.kind, options.name,
                secondsPerMillion(contestants[0].least, millions).c_str(),
                secondsPerMillion(contestants[1].least, millions).c_str(),
                run / contestants[1].least.cpuSeconds);
    if (shape.isOrdered) {
        const double plain = contestants[2].least.cpuSeconds;
        std::printf("| %.2f | %.1f |\n", plain / millions, plain / run);
    } else {
        std::printf("| | |\n");
    }
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const int facets = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    const TemporaryFolder folder;
    std::printf("CPU seconds per million facets, user + system; meshes of %d facets; least of %d alternating "
                "rounds, of %d for the plain twin.\n\n"
                "| mesh | input | options | run | moving bytes | run / moving | plain twin | plain / run |\n"
                "|---|---|---|---|---|---|---|---|\n",
                facets, rounds, (rounds + twinStep - 1) / twinStep);
    for (const NamedShape &shape : benchShapes) {
        makeMesh(shape, facets);
        for (const Input &input : inputs) {
            for (const BenchOptions &options : benchOptions)
                printRow(shape, input, options, rounds);
        }
    }
    return EXIT_SUCCESS;
}
