// The fuzzers' seeds, among them what fuzzers have found, checked for the same properties.
#include "tests/corpus/RunProperties.h"
#include "tests/corpus/SeedCorpus.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

void expectToHold(const std::vector<Seed> &seeds, std::string (*check)(std::string_view))
{
    ASSERT_FALSE(seeds.empty());
    const TemporaryFolder folder;
    for (const Seed &seed : seeds)
        EXPECT_EQ(check(seed.bytes), "") << seed.name;
}

TEST(RunCorpus, PropertiesHoldForInputFiles) { expectToHold(inputFileSeeds(), checkInputFile); }

TEST(RunCorpus, PropertiesHoldForTemporaryFiles) { expectToHold(temporaryFileSeeds(), checkTemporaryFile); }

TEST(RunCorpus, PropertiesHoldForNumberTexts) { expectToHold(numberTextSeeds(), checkNumberText); }

} // namespace
