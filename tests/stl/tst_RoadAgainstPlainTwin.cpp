// Odd and broken files through reader, writer and passes, and through a plain twin of them: nothing may
// differ.
#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>

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
        EXPECT_EQ(std::memcmp(a.header, b.header, sizeof a.header), 0);
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

// One product mesh and one twin, used for file after file as the window's mesh is.
class Meshes {
public:
    ~Meshes() { stl_release_facets(m_product); }

    void readAndCompare(const std::string &path)
    {
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

    int filesRead() const { return m_filesRead; }
    int filesRefused() const { return m_filesRefused; }

private:
    void expectEnd(const std::string &path, const std::string &end)
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

    void loadAndCompare(const std::string &path)
    {
        ++m_filesRead;
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
        EXPECT_EQ(readBytes("product.stl"), readBytes("twin.stl"));
    }

    StlMesh m_product;
    plain::Mesh m_twin;
    int m_filesRead = 0;
    int m_filesRefused = 0;
};

void compareReading(std::uint64_t firstSeed, int files, std::string (OddMeshText::*make)(), Meshes &meshes)
{
    const TemporaryFolder folder;
    for (int i = 0; i < files && !::testing::Test::HasFailure(); ++i) {
        const std::uint64_t seed = firstSeed + static_cast<std::uint64_t>(i);
        OddMeshText odd(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        writeBytes("in.stl", (odd.*make)());
        meshes.readAndCompare("in.stl");
    }
}

TEST(RoadAgainstPlainTwin, BinaryFilesAreReadAlike)
{
    Meshes meshes;
    compareReading(1'000'000, 2000, &OddMeshText::binaryFile, meshes);
    EXPECT_GT(meshes.filesRead(), 500);
    EXPECT_GT(meshes.filesRefused(), 50);
}

TEST(RoadAgainstPlainTwin, AsciiFilesAreReadAlike)
{
    Meshes meshes;
    compareReading(2'000'000, 4000, &OddMeshText::asciiFile, meshes);
    EXPECT_GT(meshes.filesRead(), 3000);
}

TEST(RoadAgainstPlainTwin, DamagedTemporaryFilesAreReadAlike)
{
    Meshes meshes;
    compareReading(3'000'000, 2000, &OddMeshText::temporaryFile, meshes);
    EXPECT_GT(meshes.filesRead(), 1500);
}

struct Outcome {
    int result = 99;
    std::string message;
    std::string output;
    plain::Extents extents;
    long position = -1;
};

Outcome productScan(const std::string &text)
{
    const Stream in = streamOf(text);
    char message[stlMessageCapacity] = "before";
    Outcome outcome;
    plain::Extents &e = outcome.extents;
    outcome.result =
        stl_scan_extents(message, in.get(), &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ);
    outcome.message = message;
    outcome.position = std::ftell(in.get());
    return outcome;
}

Outcome twinScan(const std::string &text)
{
    const Stream in = streamOf(text);
    char message[plain::messageCapacity] = "before";
    Outcome outcome;
    outcome.result = plain::scanExtents(message, in.get(), outcome.extents);
    outcome.message = message;
    outcome.position = std::ftell(in.get());
    return outcome;
}

bool compareScans(const std::string &text)
{
    const Outcome product = productScan(text);
    const Outcome twin = twinScan(text);
    EXPECT_EQ(product.result, twin.result);
    EXPECT_EQ(product.message, twin.message);
    EXPECT_EQ(product.position, twin.position);
    EXPECT_EQ(product.extents.minX, twin.extents.minX);
    EXPECT_EQ(product.extents.maxX, twin.extents.maxX);
    EXPECT_EQ(product.extents.minY, twin.extents.minY);
    EXPECT_EQ(product.extents.maxY, twin.extents.maxY);
    EXPECT_EQ(product.extents.minZ, twin.extents.minZ);
    EXPECT_EQ(product.extents.maxZ, twin.extents.maxZ);
    return twin.result == 0;
}

RotationMatrix productMatrix(const plain::Rotation &rotation)
{
    RotationMatrix matrix;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            matrix[i][j] = rotation.m[i][j];
    return matrix;
}

Outcome productRewrite(const std::string &text, const plain::Placement &p)
{
    const Stream in = streamOf(text);
    const Stream out = streamOf("");
    char message[stlMessageCapacity] = "before";
    Outcome outcome;
    outcome.result =
        stl_apply_pass(message, in.get(), out.get(), p.scale.x, p.scale.y, p.scale.z, p.offsetBefore.x,
                       p.offsetBefore.y, p.offsetBefore.z, p.offsetAfter.x, p.offsetAfter.y, p.offsetAfter.z,
                       productMatrix(p.rotX), productMatrix(p.rotY), productMatrix(p.rotZ));
    outcome.message = message;
    outcome.output = bytesOf(out);
    return outcome;
}

Outcome twinRewrite(const std::string &text, const plain::Placement &placement)
{
    const Stream in = streamOf(text);
    const Stream out = streamOf("");
    char message[plain::messageCapacity] = "before";
    Outcome outcome;
    outcome.result = plain::applyPass(message, in.get(), out.get(), placement);
    outcome.message = message;
    outcome.output = bytesOf(out);
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

std::string withoutSignsOfNaNs(std::string text)
{
    for (std::size_t at = text.find("-NAN"); at != std::string::npos; at = text.find("-NAN", at))
        text.replace(at, 4, " NAN");
    return text;
}

bool compareRewrites(const std::string &text, const plain::Placement &placement)
{
    Outcome product = productRewrite(text, placement);
    Outcome twin = twinRewrite(text, placement);
    if (signsOfNaNsAreOpen(placement)) {
        product.output = withoutSignsOfNaNs(product.output);
        twin.output = withoutSignsOfNaNs(twin.output);
    }
    EXPECT_EQ(product.result, twin.result);
    EXPECT_EQ(product.message, twin.message);
    EXPECT_EQ(product.output, twin.output);
    return twin.result == 0;
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

TEST(RoadAgainstPlainTwin, TemporaryFilesPassAlike)
{
    constexpr int texts = 10000;
    int scanned = 0;
    int rewritten = 0;
    for (int i = 0; i < texts && !HasFailure(); ++i) {
        const std::uint64_t seed = 4'000'000 + static_cast<std::uint64_t>(i);
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddMeshText odd(seed);
        const std::string text = odd.oneIn(20) ? odd.asciiFile() : odd.temporaryFile();
        scanned += compareScans(text) ? 1 : 0;
        rewritten += compareRewrites(text, placementOf(odd)) ? 1 : 0;
    }
    EXPECT_GT(scanned, texts / 5);
    EXPECT_LT(scanned, texts - texts / 5);
    EXPECT_EQ(rewritten, scanned) << "both passes accept the same texts";
}

} // namespace
