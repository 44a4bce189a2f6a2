#include "tests/faults/FaultPoints.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <unistd.h>

extern "C" void *__real_calloc(std::size_t count, std::size_t size);
extern "C" void *__wrap_calloc(std::size_t count, std::size_t size);
extern "C" std::FILE *__wrap_fopen(const char *path, const char *mode);
extern "C" std::FILE *__wrap_fopen64(const char *path, const char *mode);

namespace {

struct Faults {
    bool counting = false;
    FaultPoint point = FaultPoint::open;
    long n = 0; // 0: none
    int error = 0;
    bool lasting = false;
    long counts[faultPointCount] = {};
};

Faults faults;

// One for each stream that may be open at the same time.
constexpr int mostStreams = 64;
constexpr std::size_t tinyBufferSize = 256;
char tinyBuffers[mostStreams][tinyBufferSize];

// Sets errno if the operation is to fail.
bool fails(FaultPoint point)
{
    if (!faults.counting)
        return false;
    const long count = ++faults.counts[static_cast<int>(point)];
    if (point != faults.point || faults.n == 0)
        return false;
    if (count != faults.n && !(faults.lasting && count > faults.n))
        return false;
    errno = faults.error;
    return true;
}

// The device of a stream is its file descriptor, stored as a pointer.
int descriptorOf(void *device) { return static_cast<int>(reinterpret_cast<std::intptr_t>(device)); }

ssize_t readDevice(void *device, char *to, std::size_t size)
{
    return fails(FaultPoint::read) ? -1 : read(descriptorOf(device), to, std::min(size, tinyBufferSize));
}

// To a stream, zero means failure.
ssize_t writeDevice(void *device, const char *from, std::size_t size)
{
    if (fails(FaultPoint::write))
        return 0;
    const ssize_t written = write(descriptorOf(device), from, size);
    return written < 0 ? 0 : written;
}

int seekDevice(void *device, off64_t *position, int whence)
{
    if (fails(FaultPoint::seek))
        return -1;
    const off64_t reached = lseek64(descriptorOf(device), *position, whence);
    if (reached < 0)
        return -1;
    *position = reached;
    return 0;
}

// As on a real disk, the descriptor is closed even if closing fails.
int closeDevice(void *device)
{
    const bool failing = fails(FaultPoint::close);
    const int error = errno;
    const int result = close(descriptorOf(device));
    if (!failing)
        return result;
    errno = error;
    return -1;
}

int flagsOf(const char *mode)
{
    const bool both = std::strchr(mode, '+') != nullptr;
    switch (mode[0]) {
    case 'r':
        return both ? O_RDWR : O_RDONLY;
    case 'w':
        return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_TRUNC;
    default:
        return (both ? O_RDWR : O_WRONLY) | O_CREAT | O_APPEND;
    }
}

std::FILE *openFaulty(const char *path, const char *mode)
{
    if (fails(FaultPoint::open))
        return nullptr;
    const FaultsPaused paused;
    const int descriptor = open(path, flagsOf(mode), 0666);
    if (descriptor < 0)
        return nullptr;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the cookie is the descriptor itself.
    void *device = reinterpret_cast<void *>(static_cast<std::intptr_t>(descriptor));
    std::FILE *stream = fopencookie(device, mode, {readDevice, writeDevice, seekDevice, closeDevice});
    std::setvbuf(stream, tinyBuffers[descriptor % mostStreams], _IOFBF, tinyBufferSize);
    return stream;
}

// As the library's operator does, it asks the handler, which may end the process.
void *allocate(std::size_t size)
{
    if (fails(FaultPoint::allocate)) {
        const std::new_handler handler = std::get_new_handler();
        if (handler == nullptr)
            throw std::bad_alloc();
        handler();
    }
    if (void *memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

void armFault(FaultPoint point, long n, int error, bool lasting)
{
    faults = Faults();
    faults.point = point;
    faults.n = n;
    faults.error = error;
    faults.lasting = lasting;
    faults.counting = true;
}

void countOperations() { armFault(FaultPoint::open, 0, 0, false); }

void disarmFaults() { faults.counting = false; }

long operationsAt(FaultPoint point) { return faults.counts[static_cast<int>(point)]; }

FaultsPaused::FaultsPaused()
    : m_before(faults.counting)
{
    faults.counting = false;
}

FaultsPaused::~FaultsPaused() { faults.counting = m_before; }

std::FILE *__wrap_fopen(const char *path, const char *mode) { return openFaulty(path, mode); }

std::FILE *__wrap_fopen64(const char *path, const char *mode) { return openFaulty(path, mode); }

void *__wrap_calloc(std::size_t count, std::size_t size)
{
    return fails(FaultPoint::callocate) ? nullptr : __real_calloc(count, size);
}

void *operator new(std::size_t size) { return allocate(size); }
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }
