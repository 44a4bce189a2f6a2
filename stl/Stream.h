// Standard I/O streams.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>

// A stream reads and writes whole pages directly from and to the caller's memory; a remainder goes through
// its own buffer.
constexpr std::size_t streamPageSize = 4096;

// A stream that closes itself.
struct StreamCloser {
    void operator()(std::FILE *stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, StreamCloser>;
