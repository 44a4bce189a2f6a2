// For Windows, whose tmpfile may create files in the root folder, which few users may.
#include "tests/support/ScratchStream.h"
#include "tests/support/UnusedPath.h"

#include <cerrno>
#include <system_error>

Stream scratchStream()
{
    const std::string path = unusedTemporaryPath().string();
    Stream stream(std::fopen(path.c_str(), "w+bTD")); // T and D: short-lived, deleted when it is closed
    if (!stream)
        throw std::system_error(errno, std::generic_category(), path);
    return stream;
}
