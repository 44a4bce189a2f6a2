// A new folder, the current directory while its object lives, removed with its contents afterwards.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    const std::filesystem::path &path() const { return m_path; }
    std::vector<std::string> entries() const; // names, sorted

private:
    std::filesystem::path m_before;
    std::filesystem::path m_path;
};
