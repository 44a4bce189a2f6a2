#include "tests/support/UnusedPath.h"

#include <random>
#include <string>

std::filesystem::path unusedTemporaryPath()
{
    static std::random_device random;
    std::string name = "meshvane-test-";
    for (int i = 0; i < 16; ++i)
        name += "0123456789abcdef"[random() % 16];
    return std::filesystem::temp_directory_path() / name;
}
