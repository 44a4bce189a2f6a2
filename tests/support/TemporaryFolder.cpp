#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
    : m_before(fs::current_path())
{
    std::string pattern = (fs::temp_directory_path() / "meshvane-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), pattern);
    m_path = pattern;
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
