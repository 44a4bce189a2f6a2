// Small inputs for the properties of this folder, each named after what is odd about it. The fuzzers start
// with them; whatever a fuzzer finds is added here under the name of its fault.
#pragma once

#include <string>
#include <vector>

struct Seed {
    std::string name; // a file name
    std::string bytes;
};

std::vector<Seed> inputFileSeeds();
std::vector<Seed> temporaryFileSeeds();
std::vector<Seed> numberTextSeeds();
std::vector<Seed> fieldSeeds();
std::vector<Seed> runLogSeeds();
