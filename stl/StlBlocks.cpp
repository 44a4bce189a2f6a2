#include "stl/StlBlocks.h"

#include "stl/StlLimits.h"
#include "stl/StlProgress.h"
#include "stl/Stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

StlBlockReader::StlBlockReader(std::FILE *in)
    : m_in(in),
      m_canSeek(in != nullptr && std::fgetpos(in, &m_mark.position) == 0),
      m_block(new char[capacity]) // not make_unique, which would touch all of it
{
    m_laterMark = m_mark;
}

StlBlockReader::~StlBlockReader()
{
    if (m_canSeek && m_begin != m_end)
        giveBack();
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
    for (Mark *mark : {&m_mark, &m_laterMark})
        mark->index -= static_cast<std::ptrdiff_t>(m_begin);
    m_end -= m_begin;
    m_begin = 0;
    setMark();
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

// Marks where the stream stands, once every byte before the later mark has been taken. If the stream does not
// tell its position, the older marks serve, too.
void StlBlockReader::setMark()
{
    if (m_laterMark.index > 0)
        return;
    m_mark = m_laterMark;
    Mark here{};
    here.index = static_cast<std::ptrdiff_t>(m_end);
    if (std::fgetpos(m_in, &here.position) == 0)
        m_laterMark = here;
}

// A text stream can only be set to positions that it has given, so what was taken after the mark is read
// again.
void StlBlockReader::giveBack()
{
    const auto begin = static_cast<std::ptrdiff_t>(m_begin);
    const Mark &mark = m_laterMark.index <= begin ? m_laterMark : m_mark;
    if (std::fsetpos(m_in, &mark.position) != 0)
        return;
    for (auto left = static_cast<std::size_t>(begin - mark.index); left > 0;) {
        const std::size_t count = std::min(left, capacity);
        if (std::fread(m_block.get(), 1, count, m_in) != count)
            return;
        left -= count;
    }
}
