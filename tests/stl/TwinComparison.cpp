#include "tests/stl/TwinComparison.h"

#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/NanSigns.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

namespace {

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Computed values: a NaN is a NaN, whichever sign the processor gives it.
bool same(float a, float b) { return bitsOf(a) == bitsOf(b) || (std::isnan(a) && std::isnan(b)); }
bool same(const StlVertex &a, const plain::Vertex &b)
{
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

// Values that were only carried: every bit counts.
bool identical(const StlVertex &a, const plain::Vertex &b)
{
    return bitsOf(a.x) == bitsOf(b.x) && bitsOf(a.y) == bitsOf(b.y) && bitsOf(a.z) == bitsOf(b.z);
}

bool identical(const StlFacet &a, const plain::Facet &b)
{
    return identical(a.normal, b.normal) && identical(a.vertex[0], b.corner[0]) &&
           identical(a.vertex[1], b.corner[1]) && identical(a.vertex[2], b.corner[2]) &&
           a.attribute[0] == b.attribute[0] && a.attribute[1] == b.attribute[1];
}

void expectSameStatistics(const StlStats &a, const plain::Stats &b)
{
    EXPECT_EQ(a.type == ascii, b.isAscii);
    if (b.isAscii)
        EXPECT_STREQ(a.header, b.header);
    else
        EXPECT_TRUE(sameBytes(a.header, b.header));
    EXPECT_EQ(a.header[80], '\0');
    EXPECT_EQ(a.facetCount, b.facetCount);
    EXPECT_EQ(a.initialFacetCount, b.initialFacetCount);
    EXPECT_EQ(a.allocatedFacetCount, b.allocatedFacetCount);
    EXPECT_TRUE(same(a.max, b.max));
    EXPECT_TRUE(same(a.min, b.min));
    EXPECT_TRUE(same(a.size, b.size));
    EXPECT_TRUE(same(a.boundingDiameter, b.boundingDiameter));
    EXPECT_TRUE(same(a.firstEdgeExtent, b.firstEdgeExtent));
}

// At most what a pipe holds, or the writing would wait for a reader.
Stream pipeOf(std::string_view bytes)
{
    constexpr std::size_t capacity = 65536;
    int ends[2] = {-1, -1};
    if (bytes.size() > capacity || pipe(ends) != 0)
        throw std::runtime_error("no pipe for the text");
    const bool written = write(ends[1], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    close(ends[1]);
    Stream stream(fdopen(ends[0], "r"));
    if (!written || !stream)
        throw std::runtime_error("the text did not go into the pipe");
    return stream;
}

Stream open(const PassInput &input)
{
    if (input.isPipe)
        return pipeOf(std::string_view(input.text).substr(static_cast<std::size_t>(input.start)));
    Stream stream = streamOf(input.text);
    std::fseek(stream.get(), input.start, SEEK_SET);
    return stream;
}

struct Outcome {
    int result = 99;
    std::string message;
    std::string output;
    plain::Extents extents;
    long position = -2;
    std::string rest; // what the pass did not read
};

void noteStream(Outcome &outcome, std::FILE *in)
{
    outcome.position = std::ftell(in);
    char block[4096];
    for (std::size_t got = 1; got > 0;) {
        got = std::fread(block, 1, sizeof block, in);
        outcome.rest.append(block, got);
    }
}

Outcome productScan(const PassInput &input)
{
    const Stream in = open(input);
    char message[stlMessageCapacity] = "before";
    Outcome outcome;
    plain::Extents &e = outcome.extents;
    outcome.result =
        stl_scan_extents(message, in.get(), &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ);
    outcome.message = message;
    noteStream(outcome, in.get());
    return outcome;
}

Outcome twinScan(const PassInput &input)
{
    const Stream in = open(input);
    char message[plain::messageCapacity] = "before";
    Outcome outcome;
    outcome.result = plain::scanExtents(message, in.get(), outcome.extents);
    outcome.message = message;
    noteStream(outcome, in.get());
    return outcome;
}

RotationMatrix productMatrix(const plain::Rotation &rotation)
{
    RotationMatrix matrix;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            matrix[i][j] = rotation.m[i][j];
    return matrix;
}

Outcome productRewrite(const PassInput &input, const plain::Placement &p)
{
    const Stream in = open(input);
    const Stream out = streamOf("");
    char message[stlMessageCapacity] = "before";
    Outcome outcome;
    outcome.result =
        stl_apply_pass(message, in.get(), out.get(), p.scale.x, p.scale.y, p.scale.z, p.offsetBefore.x,
                       p.offsetBefore.y, p.offsetBefore.z, p.offsetAfter.x, p.offsetAfter.y, p.offsetAfter.z,
                       productMatrix(p.rotX), productMatrix(p.rotY), productMatrix(p.rotZ));
    outcome.message = message;
    outcome.output = bytesOf(out);
    noteStream(outcome, in.get());
    return outcome;
}

Outcome twinRewrite(const PassInput &input, const plain::Placement &placement)
{
    const Stream in = open(input);
    const Stream out = streamOf("");
    char message[plain::messageCapacity] = "before";
    Outcome outcome;
    outcome.result = plain::applyPass(message, in.get(), out.get(), placement);
    outcome.message = message;
    outcome.output = bytesOf(out);
    noteStream(outcome, in.get());
    return outcome;
}

// Where two NaNs meet in a sum, the compiler's order of the operands decides whose sign the result has. That
// takes a rotation, which adds coordinates, or a parameter that is none.
bool signsOfNaNsAreOpen(const plain::Placement &p)
{
    bool open = p.rotX.isOn() || p.rotY.isOn() || p.rotZ.isOn();
    for (const plain::Axes *axes : {&p.scale, &p.offsetBefore, &p.offsetAfter})
        for (const double value : {axes->x, axes->y, axes->z})
            open = open || std::isnan(value);
    return open;
}

void expectSame(const Outcome &product, const Outcome &twin)
{
    EXPECT_EQ(product.result, twin.result);
    EXPECT_EQ(product.message, twin.message);
    EXPECT_EQ(product.position, twin.position);
    EXPECT_TRUE(product.rest == twin.rest) << "the stream does not stand where the twin's does";
}

// The first difference only: the whole texts may be long.
void expectSameText(const std::string &product, const std::string &twin)
{
    if (product == twin)
        return;
    std::size_t at = 0;
    while (at < product.size() && at < twin.size() && product[at] == twin[at])
        ++at;
    const std::size_t from = at < 80 ? 0 : at - 80;
    ADD_FAILURE() << "differs at byte " << at << ":\n"
                  << product.substr(from, 160) << "\nand the twin:\n"
                  << twin.substr(from, 160);
}

plain::Rotation rotationOf(OddMeshText &odd)
{
    plain::Rotation rotation;
    if (odd.oneIn(2))
        return rotation;
    for (auto &row : rotation.m)
        for (double &element : row)
            element = odd.oneIn(3) ? 0.0 : std::sin(odd.parameter());
    return rotation;
}

} // namespace

TwinMeshes::~TwinMeshes() { stl_release_facets(m_product); }

void TwinMeshes::readAndCompare(const std::string &bytes)
{
    const std::string path = "in.stl";
    std::remove(path.c_str());
    writeBytes(path, bytes);
    std::string end;
    try {
        plain::initialize(m_twin, path);
    } catch (const plain::FatalEnd &fatal) {
        end = fatal.what();
    }
    if (end.empty())
        loadAndCompare(path);
    else
        expectEnd(path, end);
    m_twin.closeFile();
    m_twin.warnings.clear();
}

void TwinMeshes::expectEnd(const std::string &path, const std::string &end)
{
    ++m_filesRefused;
    const ProcessOutcome outcome = outcomeOf([&path] {
        StlMesh mesh;
        stl_initialize(mesh, path.c_str());
    });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, end);
}

void TwinMeshes::loadAndCompare(const std::string &path)
{
    ++m_filesRead;
    // Some file systems write a file out that is truncated and written anew, which takes its time.
    std::remove("product.stl");
    std::remove("twin.stl");
    m_facetsRead += m_twin.stats.facetCount;
    plain::allocateFacets(m_twin);
    plain::loadFacets(m_twin, 0, true);
    plain::writeAscii(m_twin, "twin.stl");

    {
        const StandardErrorCapture capture;
        stl_initialize(m_product, path.c_str());
        EXPECT_EQ(capture.text(), m_twin.warnings);
    }
    stl_allocate_facets(m_product);
    stl_load_facets(m_product, 0, true);
    std::fclose(m_product.file);
    m_product.file = nullptr;
    stl_write_ascii(m_product, "product.stl");

    expectSameStatistics(m_product.stats, m_twin.stats);
    ASSERT_EQ(m_product.stats.facetCount, m_twin.stats.facetCount);
    for (std::size_t i = 0; i < m_twin.facets.size(); ++i)
        EXPECT_TRUE(identical(m_product.facets[i], m_twin.facets[i])) << "facet " << i;
    expectSameText(readBytes("product.stl"), readBytes("twin.stl"));
}

bool expectSameScan(const PassInput &input)
{
    const Outcome product = productScan(input);
    const Outcome twin = twinScan(input);
    expectSame(product, twin);
    EXPECT_EQ(product.extents.minX, twin.extents.minX);
    EXPECT_EQ(product.extents.maxX, twin.extents.maxX);
    EXPECT_EQ(product.extents.minY, twin.extents.minY);
    EXPECT_EQ(product.extents.maxY, twin.extents.maxY);
    EXPECT_EQ(product.extents.minZ, twin.extents.minZ);
    EXPECT_EQ(product.extents.maxZ, twin.extents.maxZ);
    return twin.result == 0;
}

bool expectSameRewrite(const PassInput &input, const plain::Placement &placement)
{
    Outcome product = productRewrite(input, placement);
    Outcome twin = twinRewrite(input, placement);
    if (signsOfNaNsAreOpen(placement)) {
        product.output = withoutSignsOfNaNs(product.output);
        twin.output = withoutSignsOfNaNs(twin.output);
    }
    expectSame(product, twin);
    expectSameText(product.output, twin.output);
    return twin.result == 0;
}

plain::Placement placementOf(OddMeshText &odd)
{
    plain::Placement placement;
    if (odd.oneIn(4))
        return placement;
    for (plain::Axes *axes : {&placement.scale, &placement.offsetBefore, &placement.offsetAfter})
        *axes = {odd.parameter(), odd.parameter(), odd.parameter()};
    placement.rotX = rotationOf(odd);
    placement.rotY = rotationOf(odd);
    placement.rotZ = rotationOf(odd);
    return placement;
}
