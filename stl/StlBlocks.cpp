#include "stl/StlBlocks.h"

#include "stl/StlLimits.h"
#include "stl/StlProgress.h"
#include "stl/Stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

StlBlockReader::StlBlockReader(std::FILE *in, StlLineEnd lineEnd)
    : m_in(in),
      m_canSeek(in != nullptr && std::fgetpos(in, &m_mark.position) == 0),
      m_block(new char[capacity]) // not make_unique, which would touch all of it
{
    m_laterMark = m_mark;
    if (lineEnd != StlLineEnd::lineFeed)
        m_longLines.reset(new char[pieceSize]);
}

StlBlockReader::~StlBlockReader()
{
    if (m_canSeek && (m_begin != m_end || m_holdsReturn))
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
        char *const to = m_block.get() + m_end;
        const std::size_t count = m_longLines ? readLongLines(to, room) : readBytes(to, room);
        m_end += count;
        stlTellProgress(count);
    }
}

// Notes the end of the stream when it meets it.
std::size_t StlBlockReader::readBytes(char *to, std::size_t room)
{
    const std::size_t count = std::fread(to, 1, room, m_in);
    if (count < room)
        noteEnd();
    return count;
}

// Fills the room but for less than a piece.
std::size_t StlBlockReader::readLongLines(char *to, std::size_t room)
{
    std::size_t size = 0;
    do
        size += readPiece(to + size, room - size);
    while (!m_atEnd && room - size >= pieceSize);
    return size;
}

std::size_t StlBlockReader::readPiece(char *to, std::size_t room)
{
    char *const lines = m_longLines.get();
    const std::size_t held = m_holdsReturn ? 1 : 0;
    std::size_t size = held + readBytes(lines + held, std::min(room, pieceSize) - held);
    m_holdsReturn = !m_atEnd && lines[size - 1] == '\r';
    if (m_holdsReturn)
        --size;
    const char *const end = stlCopyWithoutCarriageReturns(to, {lines, size});
    if (m_holdsReturn)
        lines[0] = '\r';
    return static_cast<std::size_t>(end - to);
}

void StlBlockReader::readLine()
{
    m_begin = 0;
    m_end = 0;
    while (m_end < stlLongestLine) {
        const int character = nextCharacter();
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
// tell its position, or stands within a line end, the older marks serve, too.
void StlBlockReader::setMark()
{
    if (m_laterMark.index > 0 || m_holdsReturn)
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
    readAgain(static_cast<std::size_t>(begin - mark.index));
}

void StlBlockReader::readAgain(std::size_t count)
{
    if (m_longLines) {
        while (count > 0 && nextCharacter() != EOF)
            --count;
        return;
    }
    while (count > 0) {
        const std::size_t wanted = std::min(count, capacity);
        if (std::fread(m_block.get(), 1, wanted, m_in) != wanted)
            return;
        count -= wanted;
    }
}

int StlBlockReader::nextCharacter() const
{
    return m_longLines ? stlNextTextCharacter(m_in) : std::getc(m_in);
}
