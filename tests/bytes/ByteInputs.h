// Inputs for the table of hashes, made with whole numbers only, so that they are the same everywhere.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct NamedText {
    std::string name;
    std::string bytes;
};

// STL files of both formats. The reader accepts all of them.
std::vector<NamedText> byteTableMeshes();

// Temporary files, some of which the passes refuse.
std::vector<NamedText> byteTableTemporaryFiles();
