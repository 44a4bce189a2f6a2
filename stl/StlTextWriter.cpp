#include "stl/StlTextWriter.h"

#include "stl/StlNumberText.h"
#include "stl/StlProgress.h"
#include "stl/Stream.h"

#include <algorithm>
#include <cstring>

StlTextWriter::StlTextWriter(std::FILE *out, StlLineEnd lineEnd)
    : m_out(out),
      m_block(new char[blockSize]) // not make_unique, which would touch all of it
{
    if (lineEnd != StlLineEnd::lineFeed)
        m_longLines.reset(new char[2 * pieceSize]);
}

StlTextWriter::~StlTextWriter() { handOver(m_used); }

void StlTextWriter::handOver(std::size_t count)
{
    if (m_longLines)
        putLongLines({m_block.get(), count});
    else
        put({m_block.get(), count});
    stlTellProgress(count);
    m_used -= count;
    std::memmove(m_block.get(), m_block.get() + count, m_used);
}

void StlTextWriter::put(std::string_view bytes)
{
    m_complete = std::fwrite(bytes.data(), 1, bytes.size(), m_out) == bytes.size() && m_complete;
}

void StlTextWriter::putLongLines(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, pieceSize);
        const char *const end = stlCopyWithCarriageReturns(m_longLines.get(), piece);
        put({m_longLines.get(), static_cast<std::size_t>(end - m_longLines.get())});
        text.remove_prefix(piece.size());
    }
}

void StlTextWriter::makeRoom() { handOver(m_used / streamPageSize * streamPageSize); }

void StlTextWriter::write(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, largestRoom);
        std::copy(piece.begin(), piece.end(), room(piece.size()));
        keep(piece.size());
        text.remove_prefix(piece.size());
    }
}

void StlTextWriter::writePoint(std::string_view before, double x, double y, double z,
                               NumberWriter writeNumber)
{
    write(before);
    char *const start = room(std::size_t{3} * (stlMaxNumberText + 1));
    char *end = start;
    for (const double value : {x, y, z}) {
        end = writeNumber(end, value);
        *end++ = ' ';
    }
    end[-1] = '\n';
    keep(static_cast<std::size_t>(end - start));
}

void StlTextWriter::writeBlankSignedPoint(std::string_view before, double x, double y, double z)
{
    writePoint(before, x, y, z, stlWriteBlankSigned);
}

void StlTextWriter::writePaddedPoint(std::string_view before, double x, double y, double z)
{
    writePoint(before, x, y, z, stlWritePadded);
}

bool StlTextWriter::flush()
{
    handOver(m_used);
    m_complete = std::fflush(m_out) == 0 && m_complete;
    return m_complete;
}
