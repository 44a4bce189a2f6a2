#include "tests/support/TemporaryFolder.h"

#include "tests/support/UnusedPath.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
    : m_before(fs::current_path()),
      m_path(unusedTemporaryPath())
{
    fs::create_directory(m_path);
    fs::permissions(m_path, fs::perms::owner_all);
    fs::current_path(m_path);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::current_path(m_before, ignored);
    fs::remove_all(m_path, ignored);
}

std::vector<std::string> TemporaryFolder::entries() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
