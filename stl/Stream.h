// A standard I/O stream that closes itself.
#pragma once

#include <cstdio>
#include <memory>

struct StreamCloser {
    void operator()(std::FILE *stream) const { std::fclose(stream); }
};

using Stream = std::unique_ptr<std::FILE, StreamCloser>;
