// For Linux.
#include "tests/support/ScratchStream.h"

#include <cerrno>
#include <sys/mman.h>
#include <system_error>

Stream scratchStream()
{
    Stream stream(fdopen(memfd_create("stream", 0), "w+b"));
    if (!stream)
        throw std::system_error(errno, std::generic_category(), "scratch stream");
    return stream;
}
