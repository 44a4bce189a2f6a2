// Odd and broken files through reader, writer and passes, and through their plain twin: nothing may differ.
#include "stl/StlLines.h"
#include "stl/StlPasses.h"
#include "tests/support/MeshFiles.h"
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

// A line cut short by the error counts as not read.
TEST(PassesAgainstPlainTwin, TemporaryFileThatFailsAtAnyByte)
{
    const std::string first = asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"});
    const std::string second = asciiFacet({" 0.00000000E+00 -0.00000000E+00  1.00000000E+00",
                                           " 1.00000000E+00 -2.00000000E+00  3.00000000E+00",
                                           " 1.10000000E+01  1.80000000E+01 -2.70000000E+01",
                                           " 7.00000000E+00  7.70000000E+00  7.77000000E+00"});
    const std::string text = "solid  (null)\n" + second + first + second + "endsolid  \n" + first;
    const std::string longLine = "solid" + std::string(std::size_t{3} * stlLineCapacity, ' ') + "\n";
    for (const std::string &whole : {text, longLine}) {
        for (std::size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
            for (const bool isPipe : {false, true}) {
                PassInput input;
                input.text = whole.substr(0, size);
                input.isPipe = isPipe;
                input.failsAtTheEnd = true;
                Verdict verdict;
                compareScan(verdict, input);
                compareRewrite(verdict, input, plain::Placement());
                EXPECT_TRUE(verdict.isEmpty())
                    << verdict.text() << "after " << size << " bytes" << (isPipe ? " of a pipe" : "");
            }
        }
    }
}

} // namespace
