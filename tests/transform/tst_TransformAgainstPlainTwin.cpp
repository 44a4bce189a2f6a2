// Requests of every kind on odd and broken temporary files, through stl_transform and through a plain twin of
// it: nothing may differ.
#include "stl/StlPasses.h"
#include "tests/support/NanSigns.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/MeshTransformer.h"

#include <gtest/gtest.h>

namespace {

int call(MeshTransformer &transformer, char *message, std::FILE *in, std::FILE *out, const plain::Request &r)
{
    return stl_transform(transformer, message, in, out, r.rotateX, r.rotateY, r.rotateZ, r.angleX, r.angleY,
                         r.angleZ, r.setLengthX, r.setLengthY, r.setLengthZ, r.lengthX, r.lengthY, r.lengthZ,
                         r.setOriginX, r.setOriginY, r.setOriginZ, r.xSameY, r.xSameZ, r.ySameX, r.ySameZ,
                         r.zSameX, r.zSameY);
}

plain::Request requestOf(OddMeshText &odd)
{
    plain::Request r;
    const int rarity = 2 + odd.below(12);
    for (int *flag :
         {&r.rotateX, &r.rotateY, &r.rotateZ, &r.setLengthX, &r.setLengthY, &r.setLengthZ, &r.setOriginX,
          &r.setOriginY, &r.setOriginZ, &r.xSameY, &r.xSameZ, &r.ySameX, &r.ySameZ, &r.zSameX, &r.zSameY})
        *flag = odd.oneIn(rarity) ? 1 : 0;
    for (double *value : {&r.angleX, &r.angleY, &r.angleZ, &r.lengthX, &r.lengthY, &r.lengthZ})
        *value = odd.parameter();
    return r;
}

plain::Axes axesOf(OddMeshText &odd) { return {odd.parameter(), odd.parameter(), odd.parameter()}; }

void expectSameFields(const MeshTransformer &product, const plain::Placement &p, const plain::Extents &e)
{
    const struct {
        const char *name;
        double product;
        double twin;
    } fields[] = {
        {"xScl", product.xScl, p.scale.x},
        {"yScl", product.yScl, p.scale.y},
        {"zScl", product.zScl, p.scale.z},
        {"xOfsB", product.xOfsB, p.offsetBefore.x},
        {"yOfsB", product.yOfsB, p.offsetBefore.y},
        {"zOfsB", product.zOfsB, p.offsetBefore.z},
        {"xOfsA", product.xOfsA, p.offsetAfter.x},
        {"yOfsA", product.yOfsA, p.offsetAfter.y},
        {"zOfsA", product.zOfsA, p.offsetAfter.z},
        {"xMin", product.xMin, e.minX},
        {"xMax", product.xMax, e.maxX},
        {"yMin", product.yMin, e.minY},
        {"yMax", product.yMax, e.maxY},
        {"zMin", product.zMin, e.minZ},
        {"zMax", product.zMax, e.maxZ},
    };
    for (const auto &field : fields)
        EXPECT_TRUE(sameOrBothNan(field.product, field.twin))
            << field.name << ' ' << field.product << ' ' << field.twin;
}

class TransformAgainstPlainTwin : public ::testing::Test {
protected:
    bool compare(const std::string &text, plain::Placement placement, const plain::Request &request)
    {
        writeBytes("_tmp_stl_", text);
        MeshTransformer transformer(placement.scale.x, placement.scale.y, placement.scale.z,
                                    placement.offsetBefore.x, placement.offsetBefore.y,
                                    placement.offsetBefore.z, placement.offsetAfter.x,
                                    placement.offsetAfter.y, placement.offsetAfter.z);
        char message[stlMessageCapacity] = "before";
        const int result = call(transformer, message, std::fopen("_tmp_stl_", "r"),
                                std::fopen("product.stl", "w+"), request);

        plain::Extents extents;
        char twinMessage[plain::messageCapacity] = "before";
        const int twinResult = plain::transform(placement, extents, twinMessage, std::fopen("_tmp_stl_", "r"),
                                                std::fopen("twin.stl", "w+"), request);
        EXPECT_EQ(result, twinResult);
        EXPECT_STREQ(message, twinMessage);
        EXPECT_EQ(withoutSignsOfNaNs(readBytes("product.stl")), withoutSignsOfNaNs(readBytes("twin.stl")));
        expectSameFields(transformer, placement, extents);
        return twinResult == 0;
    }

    TemporaryFolder folder;
};

TEST_F(TransformAgainstPlainTwin, EveryRequestHasTheSameOutcome)
{
    constexpr int requests = 6000;
    int succeeded = 0;
    for (int i = 0; i < requests && !HasFailure(); ++i) {
        const std::uint64_t seed = 5'000'000 + static_cast<std::uint64_t>(i);
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddMeshText odd(seed);
        const std::string text = odd.temporaryFile();
        plain::Placement placement;
        placement.scale = axesOf(odd);
        placement.offsetBefore = axesOf(odd);
        placement.offsetAfter = axesOf(odd);
        succeeded += compare(text, placement, requestOf(odd)) ? 1 : 0;
    }
    EXPECT_GT(succeeded, requests / 5);
    EXPECT_LT(succeeded, requests - requests / 5);
}

TEST_F(TransformAgainstPlainTwin, EveryPairOfOptionsHasTheSameOutcome)
{
    const std::string text = "solid  (null)\n"
                             "  facet normal -0.00000000E+00  0.00000000E+00  1.00000000E+00\n"
                             "    outer loop\n"
                             "      vertex  1.00000000E+00 -2.00000000E+00  3.00000000E+00\n"
                             "      vertex  1.10000000E+01  1.80000000E+01 -2.70000000E+01\n"
                             "      vertex  7.00000000E+00  7.70000000E+00  7.77000000E+00\n"
                             "    endloop\n"
                             "  endfacet\n"
                             "endsolid  \n";
    int plain::Request::*const flags[] = {
        &plain::Request::rotateX,    &plain::Request::rotateY,    &plain::Request::rotateZ,
        &plain::Request::setLengthX, &plain::Request::setLengthY, &plain::Request::setLengthZ,
        &plain::Request::setOriginX, &plain::Request::setOriginY, &plain::Request::setOriginZ,
        &plain::Request::xSameY,     &plain::Request::xSameZ,     &plain::Request::ySameX,
        &plain::Request::ySameZ,     &plain::Request::zSameX,     &plain::Request::zSameY};
    for (const auto first : flags) {
        for (const auto second : flags) {
            plain::Request request;
            request.angleX = 30.0;
            request.angleY = -45.0;
            request.angleZ = 400.0;
            request.lengthX = 100.0;
            request.lengthY = 0.5;
            request.lengthZ = -3.0;
            request.*first = 1;
            request.*second = 1;
            plain::Placement placement;
            placement.offsetBefore = {1.0, -2.0, 3.5};
            placement.offsetAfter = {5.0, 6.0, -7.0};
            EXPECT_TRUE(compare(text, placement, request));
        }
    }
}

} // namespace
