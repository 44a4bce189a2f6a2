// A fresh folder to work in: the current directory while it lives, removed with all it holds afterwards.
#pragma once

#include <filesystem>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    const std::filesystem::path &path() const { return m_path; }

private:
    std::filesystem::path m_before;
    std::filesystem::path m_path;
};
