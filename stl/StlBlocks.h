// The bytes of a stream, read ahead in blocks.
#pragma once

#include "stl/StlLineEnd.h"
#include "stl/Stream.h"

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

// Hands out the next bytes of a stream without copying them. The stream may be a binary or a text stream of
// any size; the bytes are those that fread gives, or, if its lines end in carriage return and line feed,
// those that stlNextTextCharacter gives. Bytes that were read ahead and not taken are given back to the
// stream by the destructor, so that the stream then stands where reading byte by byte would have left it; for
// that it reads up to a block of the taken ones once more. A stream without positions is read one line (of
// stlLongestLine characters at most) at a time, and only after the line before has been taken. A null stream
// is empty.
class StlBlockReader {
public:
    static constexpr std::size_t blockSize = std::size_t{1024} * 1024;

    explicit StlBlockReader(std::FILE *in, StlLineEnd lineEnd = StlLineEnd::lineFeed);
    ~StlBlockReader();
    StlBlockReader(const StlBlockReader &) = delete;
    StlBlockReader &operator=(const StlBlockReader &) = delete;

    // The bytes ahead: `wanted` of them at least (up to blockSize), fewer only where the stream or the one
    // line ends. They stay valid until the next call that is not take().
    std::string_view ahead(std::size_t wanted)
    {
        if (m_end - m_begin < wanted)
            fill(wanted);
        return {m_block.get() + m_begin, m_end - m_begin};
    }

    // Moves on over bytes that ahead() has shown.
    void take(std::size_t count) { m_begin += count; }

    // The value of errno if the stream ended by an error and not by its end, else 0.
    int error() const { return m_error; }

private:
    // A position of the stream to which it can be set back.
    struct Mark {
        std::fpos_t position;
        std::ptrdiff_t index; // in m_block; negative before it
    };

    void fill(std::size_t wanted);
    void readAhead(std::size_t wanted);
    std::size_t readBytes(char *to, std::size_t room);
    std::size_t readLongLines(char *to, std::size_t room);
    std::size_t readPiece(char *to, std::size_t room);
    void readLine();
    void noteEnd();
    void setMark();
    void giveBack();
    void readAgain(std::size_t count);
    int nextCharacter() const;

    // A whole block in addition to what is left of the previous one.
    static constexpr std::size_t capacity = blockSize + streamPageSize;

    // Small enough for a cache of the processor, large enough for few calls of the system.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;

    std::FILE *m_in;
    Mark m_mark{};      // not past the first byte that has not been taken
    Mark m_laterMark{}; // may be past it
    bool m_canSeek;
    bool m_atEnd = false;
    int m_error = 0;
    std::unique_ptr<char[]> m_block;
    std::unique_ptr<char[]> m_longLines; // a piece of the stream; null where lines end in a line feed
    bool m_holdsReturn = false; // a carriage return is the first of them, for a line feed may follow it
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};
