// The bytes of a stream, read ahead in blocks.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

// Hands out the next bytes of a stream without copying them. What was read ahead and not taken is given back
// to the stream at the end, so that the stream then stands where byte-by-byte reading would have left it. A
// stream that cannot be positioned is read one line (of 999 characters at most) at a time, and only when the
// one before is taken. A null stream is empty.
class StlBlockReader {
public:
    static constexpr std::size_t blockSize = std::size_t{1024} * 1024;

    explicit StlBlockReader(std::FILE *in);
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

    // Gives back what was read ahead, so that the stream itself can be read on.
    void giveBack();

    // The stream stands elsewhere now (after giveBack and reading from it); reads less ahead for a while,
    // since who reads the stream itself may have to do so again soon.
    void continueFromStream();

    // True if the stream ended by an error and not by its end.
    bool failed() const { return m_failed; }

private:
    void fill(std::size_t wanted);
    void readAhead(std::size_t wanted);
    void readLine();
    void noteEnd();

    static constexpr std::size_t capacity =
        blockSize + 4096; // a whole block beside what is left of the one before

    std::FILE *m_in;
    bool m_canSeek;
    bool m_atEnd = false;
    bool m_failed = false;
    std::size_t m_readSize = blockSize; // how much is asked of the stream at once
    std::unique_ptr<char[]> m_block;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};
