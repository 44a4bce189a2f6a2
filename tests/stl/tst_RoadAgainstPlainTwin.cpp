// Odd and broken files through reader, writer and passes, and through their plain twin: nothing may differ.
#include "stl/StlLines.h"
#include "stl/StlPasses.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/StlComparison.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

// The twin spells its sizes out, and the generators of texts use them.
TEST(PlainTwin, HasTheSizesOfTheProduct)
{
    EXPECT_EQ(plain::lineCapacity, stlLineCapacity);
    EXPECT_EQ(plain::messageCapacity, stlMessageCapacity);
}

class ReadingAgainstPlainTwin : public ::testing::Test {
protected:
    void compareFiles(std::uint64_t firstSeed, int files, std::string (OddMeshText::*make)())
    {
        const TemporaryFolder folder;
        for (int i = 0; i < files && !HasFailure(); ++i) {
            const std::uint64_t seed = firstSeed + static_cast<std::uint64_t>(i);
            OddMeshText odd(seed);
            Verdict verdict;
            twins.compareReading(verdict, (odd.*make)());
            EXPECT_TRUE(verdict.isEmpty()) << verdict.text() << "seed " << seed;
        }
    }

    MeshTwins twins{ProcessEnd::inAChild};
};

TEST_F(ReadingAgainstPlainTwin, BinaryFiles)
{
    compareFiles(1'000'000, 2000, &OddMeshText::binaryFile);
    EXPECT_GT(twins.filesRead(), 500);
    EXPECT_GT(twins.filesRefused(), 50);
}

TEST_F(ReadingAgainstPlainTwin, AsciiFiles)
{
    compareFiles(2'000'000, 4000, &OddMeshText::asciiFile);
    EXPECT_GT(twins.filesRead(), 3000);
}

TEST_F(ReadingAgainstPlainTwin, DamagedTemporaryFiles)
{
    compareFiles(3'000'000, 2000, &OddMeshText::temporaryFile);
    EXPECT_GT(twins.filesRead(), 1500);
}

TEST(PassesAgainstPlainTwin, DamagedTemporaryFiles)
{
    constexpr int texts = 10000;
    int scanned = 0;
    int rewritten = 0;
    for (int i = 0; i < texts && !HasFailure(); ++i) {
        const std::uint64_t seed = 4'000'000 + static_cast<std::uint64_t>(i);
        OddMeshText odd(seed);
        PassInput input;
        input.text = odd.oneIn(20) ? odd.asciiFile() : odd.temporaryFile();
        input.isPipe = i % 4 == 0;
        Verdict verdict;
        scanned += compareScan(verdict, input) ? 1 : 0;
        rewritten += compareRewrite(verdict, input, odd.placement()) ? 1 : 0;
        EXPECT_TRUE(verdict.isEmpty()) << verdict.text() << "seed " << seed;
    }
    EXPECT_GT(scanned, texts / 5);
    EXPECT_LT(scanned, texts - texts / 5);
    EXPECT_EQ(rewritten, scanned) << "both passes accept the same texts";
}

} // namespace
