// Standard I/O streams.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

// What a stream passes on in one go: it reads and writes whole pages straight from and to the caller's
// memory, while a remainder goes through the stream's own buffer.
constexpr std::size_t streamPageSize = 4096;

// A stream that closes itself.
struct StreamCloser {
    void operator()(std::FILE *stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, StreamCloser>;
