#include "stl/StlBlocks.h"

#include "stl/StlLimits.h"
#include "stl/StlProgress.h"
#include "stl/Stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

bool canSeek(std::FILE *in) { return in != nullptr && std::ftell(in) >= 0; }

} // namespace

StlBlockReader::StlBlockReader(std::FILE *in)
    : m_in(in),
      m_canSeek(canSeek(in)),
      m_block(new char[capacity]) // not make_unique, which would touch all of it
{}

StlBlockReader::~StlBlockReader()
{
    if (m_begin != m_end)
        std::fseek(m_in, -static_cast<long>(m_end - m_begin), SEEK_CUR);
}

void StlBlockReader::fill(std::size_t wanted)
{
    if (m_in == nullptr || m_atEnd)
        return;
    if (m_canSeek)
        readAhead(std::min(wanted, blockSize));
    else if (m_begin == m_end)
        readLine();
}

void StlBlockReader::readAhead(std::size_t wanted)
{
    std::memmove(m_block.get(), m_block.get() + m_begin, m_end - m_begin);
    m_end -= m_begin;
    m_begin = 0;
    while (m_end < wanted && !m_atEnd) {
        const std::size_t room = std::min(blockSize, (capacity - m_end) / streamPageSize * streamPageSize);
        const std::size_t count = std::fread(m_block.get() + m_end, 1, room, m_in);
        m_end += count;
        stlTellProgress(count);
        if (count < room)
            noteEnd();
    }
}

void StlBlockReader::readLine()
{
    m_begin = 0;
    m_end = 0;
    while (m_end < stlLongestLine) {
        const int character = std::getc(m_in);
        if (character == EOF) {
            noteEnd();
            return;
        }
        m_block[m_end++] = static_cast<char>(character);
        if (character == '\n')
            return;
    }
}

void StlBlockReader::noteEnd()
{
    m_atEnd = true;
    m_error = std::feof(m_in) != 0 ? 0 : errno != 0 ? errno : EIO;
}
