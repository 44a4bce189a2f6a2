// Requests of every kind on odd and broken temporary files, through stl_transform and through its plain twin:
// nothing may differ.
#include "tests/support/OddMeshText.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "tests/support/TransformComparison.h"
#include "transform/RunFiles.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

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

class TransformAgainstPlainTwin : public ::testing::Test {
protected:
    // True if both succeeded.
    bool expectSameOutcome(const std::string &text, const plain::Placement &placement,
                           const plain::Request &request)
    {
        std::remove(temporaryFileName);
        writeBytes(temporaryFileName, text);
        Verdict verdict;
        const TransformOutcome outcome = compareTransformation(verdict, placement, request);
        EXPECT_TRUE(verdict.isEmpty()) << verdict.text();
        return outcome.result == 0;
    }

    TemporaryFolder folder;
};

TEST_F(TransformAgainstPlainTwin, RandomRequests)
{
    constexpr int requests = 6000;
    int succeeded = 0;
    for (int i = 0; i < requests && !HasFailure(); ++i) {
        const std::uint64_t seed = 5'000'000 + static_cast<std::uint64_t>(i);
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddMeshText odd(seed);
        const std::string text = odd.temporaryFile();
        plain::Placement placement;
        placement.scale = odd.axes();
        placement.offsetBefore = odd.axes();
        placement.offsetAfter = odd.axes();
        succeeded += expectSameOutcome(text, placement, requestOf(odd)) ? 1 : 0;
    }
    EXPECT_GT(succeeded, requests / 5);
    EXPECT_LT(succeeded, requests - requests / 5);
}

TEST_F(TransformAgainstPlainTwin, EveryPairOfOptions)
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
            EXPECT_TRUE(expectSameOutcome(text, placement, request));
        }
    }
}

} // namespace
