#include "stl/StlAsciiFacets.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlPlainScan.h"

#include <algorithm>
#include <cerrno>

namespace {

constexpr std::size_t ordinaryFacetSize = 1024;

// Fills `point` only if all three numbers are answered.
bool readCommonPoint(const char *text, StlVertex &point)
{
    double numbers[3];
    StlVertex rounded;
    if (!stlReadCommonPoint(text, numbers) || !stlRoundToFloat(numbers[0], rounded.x) ||
        !stlRoundToFloat(numbers[1], rounded.y) || !stlRoundToFloat(numbers[2], rounded.z))
        return false;
    point = rounded;
    return true;
}

template <typename Memory>
bool takePoint(Memory &memory, const char *text, StlVertex &point)
{
    return memory.findOrMake(text, &point, [text, &point] { return readCommonPoint(text, point); });
}

bool readPoint(StlPlainScanner &scanner, StlVertex &point)
{
    return scanner.readFloat(point.x) && scanner.readFloat(point.y) && scanner.readFloat(point.z);
}

// The functions below ignore what fscanf returns: fields that do not convert keep their values.

void scanNormal(std::FILE *in, StlVertex &normal)
{
    [[maybe_unused]] const int converted =
        std::fscanf(in, "%*s %*s %f %f %f\n", &normal.x, &normal.y, &normal.z);
}

void scanCorner(std::FILE *in, StlVertex &corner)
{
    [[maybe_unused]] const int converted = std::fscanf(in, "%*s %f %f %f\n", &corner.x, &corner.y, &corner.z);
}

void skipWord(std::FILE *in) { [[maybe_unused]] const int converted = std::fscanf(in, "%*s"); }

void skipTwoWords(std::FILE *in) { [[maybe_unused]] const int converted = std::fscanf(in, "%*s %*s"); }

} // namespace

StlAsciiFacetReader::StlAsciiFacetReader(std::FILE *file)
    : m_file(file),
      m_blocks(file)
{
    skipLabelLine();
}

void StlAsciiFacetReader::read(StlFacet &facet)
{
    std::string_view text = m_blocks.ahead(ordinaryFacetSize);
    if (text.empty())
        return; // at the end nothing converts any more
    if (readCommon(text, facet))
        return;
    Plainness plainness = readPlain(text, facet);
    if (plainness == Plainness::unknown) {
        text = m_blocks.ahead(StlBlockReader::blockSize);
        plainness = readPlain(text, facet);
    }
    if (plainness != Plainness::plain)
        readAny(facet);
}

void StlAsciiFacetReader::skipLabelLine()
{
    for (std::string_view bytes = m_blocks.ahead(1); !bytes.empty(); bytes = m_blocks.ahead(1)) {
        const std::size_t lineFeed = bytes.find('\n');
        m_blocks.take(std::min(lineFeed, bytes.size() - 1) + 1);
        if (lineFeed != std::string_view::npos)
            return;
    }
}

// The form in which this program and many others write.
bool StlAsciiFacetReader::readCommon(std::string_view text, StlFacet &facet)
{
    const std::size_t lineFeed = text.front() == '\n' ? 1 : 0; // of the facet before
    text.remove_prefix(lineFeed);
    if (text.size() < stlCommonFacetSize || !stlHasCommonLayout(text.data()))
        return false;
    const auto point = [&text](std::size_t i) { return text.data() + stlCommonPointStarts[i]; };
    StlFacet read = facet;
    if (!takePoint(m_normal, point(0), read.normal) || !takePoint(m_corners, point(1), read.vertex[0]) ||
        !takePoint(m_corners, point(2), read.vertex[1]) || !takePoint(m_corners, point(3), read.vertex[2]))
        return false;
    facet = read;
    m_blocks.take(lineFeed + stlCommonFacetSize - 1); // fscanf leaves the last line feed, too
    return true;
}

StlAsciiFacetReader::Plainness StlAsciiFacetReader::readPlain(std::string_view text, StlFacet &facet)
{
    StlPlainScanner scanner(text);
    StlFacet read = facet;
    const bool isPlain = scanner.skipWord() && scanner.skipWord() && readPoint(scanner, read.normal) &&
                         scanner.skipWord() && scanner.skipWord() && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[0]) && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[1]) && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[2]) && scanner.skipWord() && scanner.skipWord();
    if (!isPlain)
        return scanner.ranOut() ? Plainness::unknown : Plainness::odd;
    facet = read;
    m_blocks.take(static_cast<std::size_t>(scanner.position() - text.data()));
    return Plainness::plain;
}

void StlAsciiFacetReader::readAny(StlFacet &facet)
{
    m_blocks.giveBack();
    scanNormal(m_file, facet.normal);
    skipTwoWords(m_file);
    for (StlVertex &corner : facet.vertex)
        scanCorner(m_file, corner);
    skipWord(m_file);
    skipWord(m_file);
    if (std::ferror(m_file) != 0)
        m_scanError = errno;
    m_blocks.continueFromStream();
}
