// Limits on what this process may use of the system.
#pragma once

#include <cstddef>
#include <sys/resource.h>

// A limit holds while its object lives, or until it is lifted.
class ResourceLimit {
public:
    // This many files can be opened at a time in addition to those that are open.
    static ResourceLimit ofOpenFiles(int more);

    // No file can grow beyond this size. The system raises SIGXFSZ, which must be ignored before.
    static ResourceLimit ofFileSize(std::size_t bytes);

    // The address space. AddressSanitizer needs more than any limit allows, so under it there is none; link
    // meshvane_failing_allocations, then it refuses single allocations above 1 GiB.
    static ResourceLimit ofMemory(std::size_t bytes);

    // False where ofMemory() limits nothing: under AddressSanitizer, and in an emulated process, whose
    // emulator accepts the limit and does not keep it.
    static bool memoryCanBeLimited();

    ~ResourceLimit() { lift(); }
    ResourceLimit(const ResourceLimit &) = delete;
    ResourceLimit &operator=(const ResourceLimit &) = delete;

    void lift();

private:
    using Resource = decltype(RLIMIT_AS);

    ResourceLimit(Resource resource, rlim_t limit);

    Resource m_resource;
    rlimit m_before{};
};
