// The plain twin: everything from an STL file to the rewritten one, spelled out with plain standard input and
// output. Tests, fuzzers and benchmarks compare the product with it byte for byte, so it shares nothing
// with the product. Slow and literal on purpose.
#pragma once

#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace plain {

// Where the product ends the process. what() is the exact text for standard error.
struct FatalEnd : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Vertex {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

struct Facet {
    Vertex normal;
    Vertex corner[3];
    unsigned char attribute[2] = {0, 0};
};

struct Stats {
    char header[81] = {};
    bool isAscii = false;
    std::int32_t facetCount = 0;
    Vertex max;
    Vertex min;
    Vertex size;
    float boundingDiameter = 0.0F;
    float firstEdgeExtent = 0.0F;
    std::int32_t initialFacetCount = 0;
    std::int32_t allocatedFacetCount = 0;
};

struct Mesh {
    Mesh() = default;
    ~Mesh();
    Mesh(const Mesh &) = delete;
    Mesh &operator=(const Mesh &) = delete;

    void closeFile();

    std::FILE *file = nullptr;
    std::vector<Facet> facets;
    Stats stats;
    std::string warnings; // what the product writes to standard error when the process goes on
};

void initialize(Mesh &mesh, const std::string &path);
void allocateFacets(Mesh &mesh);
void loadFacets(Mesh &mesh, int firstFacet, bool first);
void writeAscii(const Mesh &mesh, const std::string &path);

// Sizes of the buffer for a line, as fgets takes it, and of the message buffer of both passes.
constexpr int lineCapacity = 1000;
constexpr int messageCapacity = 2048;

struct Rotation {
    double m[3][3] = {{999.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}};
    bool isOn() const { return m[0][0] <= 1.0; }
};

struct Extents {
    double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0, minZ = 0.0, maxZ = 0.0;
};

struct Axes {
    double x = 0.0, y = 0.0, z = 0.0;
};

struct Placement {
    Axes scale{1.0, 1.0, 1.0};
    Axes offsetBefore;
    Axes offsetAfter;
    Rotation rotX, rotY, rotZ;
};

int scanExtents(char *message, std::FILE *in, Extents &extents);
int applyPass(char *message, std::FILE *in, std::FILE *out, const Placement &placement);

// What stl_transform is asked for; flags as it takes them.
struct Request {
    int rotateX = 0, rotateY = 0, rotateZ = 0;
    double angleX = 0.0, angleY = 0.0, angleZ = 0.0; // degrees
    int setLengthX = 0, setLengthY = 0, setLengthZ = 0;
    double lengthX = 0.0, lengthY = 0.0, lengthZ = 0.0;
    int setOriginX = 0, setOriginY = 0, setOriginZ = 0;
    int xSameY = 0, xSameZ = 0, ySameX = 0, ySameZ = 0, zSameX = 0, zSameY = 0;
};

// Reads `in`, the file "_tmp_stl_" of the current directory; closes both streams unless one is null.
int transform(Placement &placement, Extents &extents, char *message, std::FILE *in, std::FILE *out,
              const Request &request);

} // namespace plain
