// Buffered text output on a stream.
#pragma once

#include "stl/StlLineEnd.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

// Collects text in a block of its own and hands full blocks to the stream, where each line feed of the text
// becomes a line end. The stream stays the caller's: it is never closed, and flushed only by flush().
class StlTextWriter {
public:
    explicit StlTextWriter(std::FILE *out, StlLineEnd lineEnd = StlLineEnd::lineFeed);
    ~StlTextWriter();
    StlTextWriter(const StlTextWriter &) = delete;
    StlTextWriter &operator=(const StlTextWriter &) = delete;

    void write(std::string_view text);

    // Room for `size` bytes (up to largestRoom) for the caller to fill, valid until the next call; keep()
    // adds the first of them to the text.
    static constexpr std::size_t largestRoom = std::size_t{512} * 1024;
    char *room(std::size_t size)
    {
        if (blockSize - m_used < size)
            makeRoom();
        return m_block.get() + m_used;
    }
    void keep(std::size_t size) { m_used += size; }

    // Write "<before>x y z\n", with each number as "% .8E" or as "%15.8E".
    void writeBlankSignedPoint(std::string_view before, double x, double y, double z);
    void writePaddedPoint(std::string_view before, double x, double y, double z);

    // Hands everything to the stream and flushes it. True if all bytes since the start went out.
    bool flush();

private:
    using NumberWriter = char *(*)(char *, double);
    void writePoint(std::string_view before, double x, double y, double z, NumberWriter writeNumber);
    void handOver(std::size_t count);
    void put(std::string_view bytes);
    void putLongLines(std::string_view text);
    void makeRoom();

    static constexpr std::size_t blockSize = 2 * largestRoom;
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;

    std::FILE *m_out;
    std::unique_ptr<char[]> m_block;
    std::unique_ptr<char[]> m_longLines; // a piece of the text with both characters of each line end
    std::size_t m_used = 0;
    bool m_complete = true;
};
