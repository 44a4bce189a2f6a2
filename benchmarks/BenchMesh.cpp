#include "benchmarks/BenchMesh.h"

#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TransformCall.h"
#include "transform/RunFiles.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>

namespace {

void load(StlMesh &mesh, const std::string &path)
{
    stl_initialize(mesh, path.c_str());
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    std::fclose(mesh.file);
}

} // namespace

void writeBall(const std::string &path, int facets)
{
    BallFacets ball;
    std::FILE *out = std::fopen(path.c_str(), "wb");
    std::string bytes(80, 'b');
    appendLittleEndian(bytes, static_cast<std::uint32_t>(facets));
    for (int i = 0; i < facets; ++i) {
        const BinaryFacet facet = ball.next();
        for (const float number : facet.numbers)
            appendLittleEndian(bytes, number);
        bytes.append(2, '\0');
        if (bytes.size() > 1000000 || i + 1 == facets) {
            std::fwrite(bytes.data(), 1, bytes.size(), out);
            bytes.clear();
        }
    }
    std::fclose(out);
}

void writeAsciiCopy(const std::string &binary, const std::string &ascii)
{
    StlMesh mesh;
    load(mesh, binary);
    stl_write_ascii(mesh, ascii.c_str());
    stl_release_facets(mesh);
}

int facetsInBinary(const std::string &path)
{
    return static_cast<int>((std::filesystem::file_size(path) - 84) / 50);
}

bool runEngine(const TransformParameters &p, const std::string &input, const std::string &output)
{
    StlMesh mesh;
    load(mesh, input);
    stl_write_ascii(mesh, temporaryFileName);
    char message[stlMessageCapacity] = "\n";
    MeshTransformer transformer = makeTransformer(p);
    const int result = callTransform(transformer, message, std::fopen(temporaryFileName, "r"),
                                     std::fopen(output.c_str(), "w+"), p);
    stl_release_facets(mesh);
    std::remove(temporaryFileName);
    return result == 0;
}

TransformParameters scaleAndOffset()
{
    TransformParameters p;
    p.xScl = p.yScl = 2.5;
    p.zScl = 0.4;
    p.xOfsB = 1.25;
    p.yOfsB = -3.0;
    p.zOfsB = 0.1;
    p.yOfsA = 10.0;
    p.zOfsA = 0.7;
    return p;
}

namespace {

TransformParameters rotation()
{
    TransformParameters p = scaleAndOffset();
    p.xRotate = p.zRotate = 1;
    p.xAngle = 30.0;
    p.zAngle = 45.0;
    return p;
}

TransformParameters originAndLength()
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 1.0;
    p.xSet0 = p.ySet0 = p.zSet0 = 1;
    p.xSetL = 1;
    p.xLength = 100.0;
    return p;
}

} // namespace

const std::vector<BenchOptions> benchOptions = {{"scale and offset", scaleAndOffset(), 0},
                                                {"and rotation", rotation(), 0},
                                                {"origin and length", originAndLength(), 2}};
