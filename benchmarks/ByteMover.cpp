#include "benchmarks/ByteMover.h"

#include "stl/Stream.h"

#include <algorithm>
#include <cstdio>

void ByteMover::move(const std::string &input, int readings, int scans, std::uintmax_t temporarySize)
{
    for (int i = 0; i < readings; ++i)
        read(input);
    write("moved_tmp", temporarySize);
    for (int i = 0; i < scans; ++i)
        read("moved_tmp");
    copy("moved_tmp", "moved.out");
    std::remove("moved_tmp");
}

void ByteMover::read(const std::string &path)
{
    const Stream in(std::fopen(path.c_str(), "r"));
    while (std::fread(m_block.data(), 1, m_block.size(), in.get()) > 0) {
    }
}

void ByteMover::write(const std::string &path, std::uintmax_t size)
{
    const Stream out(std::fopen(path.c_str(), "w"));
    for (std::uintmax_t rest = size; rest > 0;) {
        const auto count = std::min<std::uintmax_t>(rest, m_block.size());
        std::fwrite(m_block.data(), 1, count, out.get());
        rest -= count;
    }
}

void ByteMover::copy(const std::string &from, const std::string &to)
{
    const Stream in(std::fopen(from.c_str(), "r"));
    const Stream out(std::fopen(to.c_str(), "w+"));
    for (std::size_t count = 1; count > 0;) {
        count = std::fread(m_block.data(), 1, m_block.size(), in.get());
        std::fwrite(m_block.data(), 1, count, out.get());
    }
}
