// The seeds of the log's fuzzer, and what it has found, held against the same property; then thousands of
// damaged logs.
#include "tests/corpus/RunLogProperty.h"
#include "tests/corpus/SeedCorpus.h"

#include <gtest/gtest.h>
#include <random>

namespace {

class RunLogCorpus : public ::testing::TestWithParam<Seed> {};

TEST_P(RunLogCorpus, HoldsTheProperty) { EXPECT_EQ(checkRunLog(GetParam().bytes), ""); }

INSTANTIATE_TEST_SUITE_P(, RunLogCorpus, ::testing::ValuesIn(runLogSeeds()), [](const auto &test) {
    std::string name = test.param.name;
    for (char &character : name) {
        if (character == '-')
            character = '_';
    }
    return name;
});

TEST(DamagedRunLogs, HoldTheProperty)
{
    std::mt19937 random(7);
    const std::vector<Seed> seeds = runLogSeeds();
    constexpr std::string_view replacements = "0123456789.-+e \n\rSaxyznif";
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        std::string log = seeds[random() % seeds.size()].bytes;
        for (int damages = 0; damages < 2 && !log.empty(); ++damages) {
            const std::size_t at = random() % log.size();
            switch (random() % 3) {
            case 0:
                log[at] = replacements[random() % replacements.size()];
                break;
            case 1:
                log.erase(at, random() % 12);
                break;
            default:
                log.insert(at, 1, replacements[random() % replacements.size()]);
            }
        }
        EXPECT_EQ(checkRunLog(log), "") << log;
    }
}

} // namespace
