#include "stl/StlTextWriter.h"

#include "stl/StlNumberText.h"

#include <algorithm>

namespace {

constexpr std::size_t blockSize = 64 * 1024;

} // namespace

StlTextWriter::StlTextWriter(std::FILE *out)
    : m_out(out),
      m_block(blockSize)
{}

StlTextWriter::~StlTextWriter() { handOver(); }

void StlTextWriter::handOver()
{
    m_complete = std::fwrite(m_block.data(), 1, m_used, m_out) == m_used && m_complete;
    m_used = 0;
}

void StlTextWriter::write(std::string_view text)
{
    while (!text.empty()) {
        if (m_used == m_block.size())
            handOver();
        const std::size_t count = std::min(text.size(), m_block.size() - m_used);
        std::copy_n(text.begin(), count, m_block.begin() + static_cast<std::ptrdiff_t>(m_used));
        m_used += count;
        text.remove_prefix(count);
    }
}

void StlTextWriter::writePoint(std::string_view before, double x, double y, double z,
                               NumberWriter writeNumber)
{
    char text[3 * (stlMaxNumberText + 1)];
    char *end = text;
    for (const double value : {x, y, z}) {
        end = writeNumber(end, value);
        *end++ = ' ';
    }
    end[-1] = '\n';
    write(before);
    write({text, static_cast<std::size_t>(end - text)});
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
    handOver();
    m_complete = std::fflush(m_out) == 0 && m_complete;
    return m_complete;
}
