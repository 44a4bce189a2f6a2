// Odd and broken files through reader, writer and passes, and through a plain twin of them: nothing may
// differ.
#include "tests/stl/TwinComparison.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

void compareReading(std::uint64_t firstSeed, int files, std::string (OddMeshText::*make)(),
                    TwinMeshes &meshes)
{
    const TemporaryFolder folder;
    for (int i = 0; i < files && !::testing::Test::HasFailure(); ++i) {
        const std::uint64_t seed = firstSeed + static_cast<std::uint64_t>(i);
        OddMeshText odd(seed);
        SCOPED_TRACE("seed " + std::to_string(seed));
        meshes.readAndCompare((odd.*make)());
    }
}

TEST(RoadAgainstPlainTwin, BinaryFilesAreReadAlike)
{
    TwinMeshes meshes;
    compareReading(1'000'000, 2000, &OddMeshText::binaryFile, meshes);
    EXPECT_GT(meshes.filesRead(), 500);
    EXPECT_GT(meshes.filesRefused(), 50);
}

TEST(RoadAgainstPlainTwin, AsciiFilesAreReadAlike)
{
    TwinMeshes meshes;
    compareReading(2'000'000, 4000, &OddMeshText::asciiFile, meshes);
    EXPECT_GT(meshes.filesRead(), 3000);
}

TEST(RoadAgainstPlainTwin, DamagedTemporaryFilesAreReadAlike)
{
    TwinMeshes meshes;
    compareReading(3'000'000, 2000, &OddMeshText::temporaryFile, meshes);
    EXPECT_GT(meshes.filesRead(), 1500);
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
        const PassInput input{odd.oneIn(20) ? odd.asciiFile() : odd.temporaryFile()};
        scanned += expectSameScan(input) ? 1 : 0;
        rewritten += expectSameRewrite(input, placementOf(odd)) ? 1 : 0;
    }
    EXPECT_GT(scanned, texts / 5);
    EXPECT_LT(scanned, texts - texts / 5);
    EXPECT_EQ(rewritten, scanned) << "both passes accept the same texts";
}

} // namespace
