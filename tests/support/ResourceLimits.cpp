#include "tests/support/ResourceLimits.h"

#include "tests/support/Sanitizers.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <sys/mman.h>
#include <system_error>
#include <vector>

namespace {

void check(int result)
{
    if (result != 0)
        throw std::system_error(errno, std::generic_category(), "limit of a resource");
}

// New descriptors are the smallest free ones.
int firstDescriptorBeyond(int count)
{
    std::vector<Stream> opened;
    for (int i = 0; i <= count; ++i)
        opened.push_back(openStream("/dev/null", "r"));
    return fileno(opened.back().get());
}

} // namespace

ResourceLimit ResourceLimit::ofOpenFiles(int more)
{
    return {RLIMIT_NOFILE, static_cast<rlim_t>(firstDescriptorBeyond(more))};
}

ResourceLimit ResourceLimit::ofFileSize(std::size_t bytes) { return {RLIMIT_FSIZE, bytes}; }

ResourceLimit ResourceLimit::ofMemory(std::size_t bytes)
{
    return {RLIMIT_AS, underAddressSanitizer ? RLIM_INFINITY : bytes};
}

bool ResourceLimit::memoryCanBeLimited()
{
    constexpr std::size_t bytes = std::size_t{16} << 20;
    const ResourceLimit limit = ofMemory(bytes);
    // The code of this process takes some of it already.
    void *const granted = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (granted == MAP_FAILED)
        return true;
    munmap(granted, bytes);
    return false;
}

ResourceLimit::ResourceLimit(Resource resource, rlim_t limit)
    : m_resource(resource)
{
    check(getrlimit(m_resource, &m_before));
    const rlimit lowered = {std::min(limit, m_before.rlim_max), m_before.rlim_max};
    check(setrlimit(m_resource, &lowered));
}

void ResourceLimit::lift() { setrlimit(m_resource, &m_before); }
