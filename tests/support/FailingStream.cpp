#include "tests/support/FailingStream.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <system_error>

namespace {

struct Device {
    std::string bytes;
    std::size_t position = 0;
};

ssize_t readDevice(void *cookie, char *to, std::size_t size)
{
    auto &device = *static_cast<Device *>(cookie);
    if (device.position >= device.bytes.size()) {
        errno = EIO;
        return -1;
    }
    const std::size_t count = std::min(size, device.bytes.size() - device.position);
    std::copy_n(device.bytes.data() + device.position, count, to);
    device.position += count;
    return static_cast<ssize_t>(count);
}

int seekDevice(void *cookie, off64_t *offset, int whence)
{
    auto &device = *static_cast<Device *>(cookie);
    const off64_t from = whence == SEEK_SET   ? 0
                         : whence == SEEK_CUR ? static_cast<off64_t>(device.position)
                                              : static_cast<off64_t>(device.bytes.size());
    if (from + *offset < 0)
        return -1;
    device.position = static_cast<std::size_t>(from + *offset);
    *offset = from + *offset;
    return 0;
}

int closeDevice(void *cookie)
{
    const std::unique_ptr<Device> device(static_cast<Device *>(cookie));
    return 0;
}

Stream streamOn(std::string_view bytes, cookie_io_functions_t operations)
{
    auto device = std::make_unique<Device>(Device{std::string(bytes), 0});
    Stream stream(fopencookie(device.get(), "r", operations));
    if (!stream)
        throw std::system_error(errno, std::generic_category(), "no stream with a bad spot");
    static_cast<void>(device.release()); // the stream's now
    return stream;
}

} // namespace

Stream streamFailingAfter(std::string_view bytes)
{
    return streamOn(bytes, {readDevice, nullptr, seekDevice, closeDevice});
}

Stream pipeFailingAfter(std::string_view bytes)
{
    return streamOn(bytes, {readDevice, nullptr, nullptr, closeDevice});
}
