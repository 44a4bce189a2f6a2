// What a folder holds.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

// The names in a folder, hidden ones too, in order.
inline std::vector<std::string> entriesOf(const std::string &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
