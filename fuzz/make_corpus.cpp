// Writes the seeds as files: make_corpus <folder>.
#include "tests/corpus/SeedCorpus.h"
#include "tests/support/TextFile.h"

#include <cstdio>
#include <filesystem>

namespace {

void writeSeeds(const std::filesystem::path &folder, const std::vector<Seed> &seeds)
{
    std::filesystem::create_directories(folder);
    for (const Seed &seed : seeds)
        writeBytes((folder / seed.name).string(), seed.bytes);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("make_corpus <folder>\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    writeSeeds(folder / "fuzz_StlReader", inputFileSeeds());
    writeSeeds(folder / "fuzz_StlPasses", temporaryFileSeeds());
    writeSeeds(folder / "fuzz_StlNumberText", numberTextSeeds());
    writeSeeds(folder / "fuzz_LineEditCustom", fieldSeeds());
    writeSeeds(folder / "fuzz_RunLog", runLogSeeds());
    return 0;
}
