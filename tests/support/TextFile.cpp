#include "tests/support/TextFile.h"

#include "tests/support/ScratchStream.h"

#include <cerrno>
#include <system_error>

namespace {

std::system_error systemError(const std::string &what)
{
    return std::system_error(errno, std::generic_category(), what);
}

void write(const Stream &stream, std::string_view bytes, const std::string &name)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stream.get()) != bytes.size() ||
        std::fflush(stream.get()) != 0)
        throw systemError(name);
}

} // namespace

Stream openStream(const std::string &path, const char *mode)
{
    Stream stream(std::fopen(path.c_str(), mode));
    if (!stream)
        throw systemError(path);
    return stream;
}

std::string readBytes(const std::string &path) { return bytesOf(openStream(path, "rb")); }

std::string readText(const std::string &path) { return bytesOf(openStream(path, "r")); }

void writeBytes(const std::string &path, std::string_view bytes)
{
    write(openStream(path, "wb"), bytes, path);
}

Stream streamOf(std::string_view bytes)
{
    Stream stream = scratchStream();
    write(stream, bytes, "scratch stream");
    std::rewind(stream.get());
    return stream;
}

std::string withCarriageReturns(std::string_view text)
{
    std::string longer;
    for (const char character : text) {
        if (character == '\n')
            longer += '\r';
        longer += character;
    }
    return longer;
}

std::string bytesOf(const Stream &stream)
{
    std::rewind(stream.get());
    std::string bytes;
    char block[65536];
    for (std::size_t got = 1; got > 0;) {
        got = std::fread(block, 1, sizeof block, stream.get());
        bytes.append(block, got);
    }
    if (std::ferror(stream.get()) != 0)
        throw systemError("reading");
    return bytes;
}
