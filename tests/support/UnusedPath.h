// Names for temporary files and folders.
#pragma once

#include <filesystem>

// In the system's folder for temporary files, with a random name of 16 hexadecimal digits.
std::filesystem::path unusedTemporaryPath();
