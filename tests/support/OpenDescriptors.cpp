#include "tests/support/OpenDescriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

bool isOpen(int descriptor) { return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF; }

// The descriptor that lists the folder counts each time.
long openDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}
