// Times the whole road of a run, from the STL file to the transformed file, against two others that do it in
// the same process and alternate with it: the plain standard-I/O twin, and a program that only moves the same
// bytes. Prints CPU seconds and their ratios; compares all output bytes while it is at it.
//
//   bench_Road [facets] [rounds]

#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/MeshTransformer.h"
#include "transform/TransformParameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr const char *temporaryFile = "_tmp_stl_";

double cpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// A bumpy ball: ordinary coordinates of both signs and several sizes, unit normals.
std::vector<BinaryFacet> ballFacets(int count)
{
    std::mt19937_64 random(20240917);
    std::uniform_real_distribution<float> part(-1.0F, 1.0F);
    std::vector<BinaryFacet> facets(static_cast<std::size_t>(count));
    for (BinaryFacet &facet : facets) {
        const float x = part(random);
        const float y = part(random);
        const float z = part(random);
        const float length = std::sqrt(x * x + y * y + z * z) + 1e-6F;
        facet.numbers = {x / length, y / length, z / length};
        for (std::size_t i = 3; i < 12; ++i)
            facet.numbers[i] = facet.numbers[i % 3] * 100.0F + part(random) * 0.5F;
    }
    return facets;
}

struct Case {
    const char *name;
    const char *input;
    plain::Request request;
    std::array<double, 9> values;
    int scans;
};

void productRoad(const Case &c, const std::string &output)
{
    StlMesh mesh;
    stl_initialize(mesh, c.input);
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    std::fclose(mesh.file);
    stl_write_ascii(mesh, temporaryFile);
    stl_release_facets(mesh);
    char message[stlMessageCapacity] = "\n";
    const auto &v = c.values;
    MeshTransformer transformer(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
    const plain::Request &r = c.request;
    stl_transform(transformer, message, std::fopen(temporaryFile, "r"), std::fopen(output.c_str(), "w+"),
                  r.rotateX, r.rotateY, r.rotateZ, r.angleX, r.angleY, r.angleZ, r.setLengthX, r.setLengthY,
                  r.setLengthZ, r.lengthX, r.lengthY, r.lengthZ, r.setOriginX, r.setOriginY, r.setOriginZ,
                  r.xSameY, r.xSameZ, r.ySameX, r.ySameZ, r.zSameX, r.zSameY);
}

void plainRoad(const Case &c, const std::string &output)
{
    {
        plain::Mesh mesh;
        plain::initialize(mesh, c.input);
        plain::allocateFacets(mesh);
        plain::loadFacets(mesh, 0, true);
        mesh.closeFile();
        plain::writeAscii(mesh, temporaryFile);
    }
    char message[plain::messageCapacity] = "\n";
    const auto &v = c.values;
    plain::Placement placement;
    placement.scale = {v[0], v[1], v[2]};
    placement.offsetBefore = {v[3], v[4], v[5]};
    placement.offsetAfter = {v[6], v[7], v[8]};
    plain::Extents extents;
    plain::transform(placement, extents, message, std::fopen(temporaryFile, "r"),
                     std::fopen(output.c_str(), "w+"), c.request);
}

// Reads the input, writes as much as the temporary file has, reads that as often as the passes do and writes
// it again.
class ByteMover {
public:
    void operator()(const Case &c, const std::string &output)
    {
        const std::string temporary = readBytes(temporaryFile); // left by the road before
        const std::clock_t start = std::clock();
        readAll(c.input);
        if (std::string(c.input) == "ascii.stl")
            readAll(c.input); // once more to count its lines
        writeAll(temporaryFile, temporary.size());
        for (int i = 0; i < c.scans; ++i)
            readAll(temporaryFile);
        std::FILE *in = std::fopen(temporaryFile, "r");
        std::FILE *out = std::fopen(output.c_str(), "w");
        for (std::size_t count = 1; count > 0;) {
            count = std::fread(m_block.data(), 1, m_block.size(), in);
            std::fwrite(m_block.data(), 1, count, out);
        }
        std::fclose(in);
        std::fclose(out);
        m_seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    }
    double seconds() const { return m_seconds; }

private:
    void readAll(const char *path)
    {
        std::FILE *in = std::fopen(path, "r");
        while (std::fread(m_block.data(), 1, m_block.size(), in) > 0) {
        }
        std::fclose(in);
    }

    void writeAll(const char *path, std::size_t size)
    {
        std::FILE *out = std::fopen(path, "w");
        for (std::size_t at = 0; at < size; at += m_block.size())
            std::fwrite(m_block.data(), 1, std::min(m_block.size(), size - at), out);
        std::fclose(out);
    }

    std::vector<char> m_block = std::vector<char>(std::size_t{256} * 1024, ' ');
    double m_seconds = 0.0;
};

double timed(const std::function<void()> &road)
{
    const double start = cpuSeconds();
    road();
    return cpuSeconds() - start;
}

} // namespace

int main(int argc, char **argv)
{
    const int facets = argc > 1 ? std::atoi(argv[1]) : 1000000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;
    const TemporaryFolder folder;
    writeBytes("binary.stl", binaryStl("benchmark", ballFacets(facets)));
    {
        StlMesh mesh;
        stl_initialize(mesh, "binary.stl");
        stl_allocate_facets(mesh);
        stl_load_facets(mesh, 0, true);
        std::fclose(mesh.file);
        stl_write_ascii(mesh, "ascii.stl");
        stl_release_facets(mesh);
    }

    plain::Request rotation;
    rotation.rotateX = rotation.rotateZ = 1;
    rotation.angleX = 30.0;
    rotation.angleZ = 45.0;
    plain::Request lengths;
    lengths.setOriginX = lengths.setOriginY = lengths.setOriginZ = 1;
    lengths.setLengthX = 1;
    lengths.lengthX = 100.0;
    const std::array<double, 9> scaled = {2.5, 2.5, 0.4, 1.25, -3.0, 0.1, 0.0, 10.0, 0.7};
    std::vector<Case> cases;
    for (const char *input : {"binary.stl", "ascii.stl"}) {
        cases.push_back({"scale and offset", input, {}, scaled, 0});
        cases.push_back({"rotation", input, rotation, scaled, 0});
        cases.push_back({"origin and length", input, lengths, {1, 1, 1, 0, 0, 0, 0, 0, 0}, 2});
    }

    std::printf("%d facets, %d rounds, least CPU seconds of each\n", facets, rounds);
    std::printf("%-12s %-18s %8s %8s %8s %12s %12s\n", "input", "options", "road", "plain", "move",
                "plain/road", "road/move");
    bool same = true;
    for (const Case &c : cases) {
        double road = 1e9;
        double plain = 1e9;
        double move = 1e9;
        ByteMover mover;
        for (int round = 0; round < rounds; ++round) {
            road = std::min(road, timed([&] { productRoad(c, "road.out"); }));
            mover(c, "moved.out");
            move = std::min(move, mover.seconds());
            if (round == 0 || rounds < 4)
                plain = std::min(plain, timed([&] { plainRoad(c, "plain.out"); }));
            if (round == 0)
                same = same && readBytes("road.out") == readBytes("plain.out");
        }
        std::printf("%-12s %-18s %8.3f %8.3f %8.3f %12.2f %12.2f\n", c.input, c.name, road, plain, move,
                    plain / road, road / move);
    }
    std::printf("%s\n", same ? "all outputs equal the twin's" : "OUTPUTS DIFFER");
    return same ? 0 : 1;
}
