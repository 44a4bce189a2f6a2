// Times a whole run, from the STL file to the transformed file, alternating with two others: the plain
// standard-I/O twin, and code that only moves the same bytes. Compares the outputs of run and twin.
//
//   bench_Run [facets [rounds]]

#include "benchmarks/BenchMesh.h"
#include "benchmarks/ByteMover.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunFiles.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

struct Case {
    const char *options;
    TransformParameters parameters;
    int scans; // of the temporary file before it is transformed
};

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

class RunBenchmark {
public:
    RunBenchmark(int rounds, std::uintmax_t temporarySize)
        : m_rounds(rounds),
          m_temporarySize(temporarySize)
    {}

    // False if the outputs differ.
    bool run(const std::string &input, int readings, const Case &c)
    {
        double engine = 1e9;
        double plain = 1e9;
        double move = 1e9;
        for (int round = 0; round < m_rounds; ++round) {
            engine = std::min(engine, cpuSecondsOf([&] { runEngine(c.parameters, input, "engine.out"); }));
            move = std::min(move,
                            cpuSecondsOf([&] { m_mover.move(input, readings, c.scans, m_temporarySize); }));
            if (round % 4 == 0) // slow, and steady enough to be timed less often
                plain =
                    std::min(plain, cpuSecondsOf([&] { runPlainTwin(c.parameters, input, "plain.out"); }));
        }
        const bool same = readBytes("engine.out") == readBytes("plain.out");
        std::printf("| %s | %s | %.3f | %.2f | %.3f | %.1f | %.2f |%s\n", input.c_str(), c.options, engine,
                    plain, move, plain / engine, engine / move, same ? "" : " OUTPUTS DIFFER");
        return same;
    }

private:
    int m_rounds;
    std::uintmax_t m_temporarySize;
    ByteMover m_mover;
};

} // namespace

int main(int argc, char **argv)
{
    const int facets = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
    const TemporaryFolder folder;
    writeBall("binary.stl", facets);
    convertToAscii("binary.stl", "ascii.stl");

    const Case cases[] = {{"scale and offset", scaleAndOffset(), 0},
                          {"and rotation", rotation(), 0},
                          {"origin and length", originAndLength(), 2}};
    std::printf("%d facets; CPU seconds, least of %d alternating rounds.\n\n", facets, rounds);
    std::printf("| input | options | run | plain twin | moving bytes | plain / run | run / moving "
                "|\n|---|---|---|---|---|---|---|\n");
    RunBenchmark benchmark(rounds,
                           std::filesystem::file_size("ascii.stl")); // as large as the temporary file
    bool same = true;
    for (const Case &c : cases)
        same = benchmark.run("binary.stl", 1, c) && same;
    for (const Case &c : cases)
        same = benchmark.run("ascii.stl", 2, c) && same;
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}
