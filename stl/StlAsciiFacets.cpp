#include "stl/StlAsciiFacets.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlLineEnd.h"
#include "stl/StlNumberScan.h"
#include "stl/StlPlainScan.h"

#include <algorithm>

namespace {

constexpr std::size_t ordinaryFacetSize = 1024;

// Changes `point` only if none of the three numbers is declined.
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

// Of the line end with which the text starts, if it does.
std::size_t sizeOfLineEnd(std::string_view text)
{
    if (text.substr(0, 1) == "\n")
        return 1;
    return text.substr(0, 2) == "\r\n" ? 2 : 0;
}

bool readPoint(StlPlainScanner &scanner, StlVertex &point)
{
    return scanner.readFloat(point.x) && scanner.readFloat(point.y) && scanner.readFloat(point.z);
}

// What the directives of an fscanf format do to the text ahead.
class FormattedScan {
public:
    explicit FormattedScan(StlBlockReader &blocks)
        : m_blocks(blocks)
    {}

    // "%*s", as often
    void skipWords(int count)
    {
        for (; count > 0; --count) {
            skipBlanks();
            while (peek() != EOF && !stlIsBlank(peek()))
                take();
        }
    }

    // "%f %f %f", up to the first that does not convert. The blanks that a line feed in the format stands for
    // are left to whatever comes next, which skips them, too.
    void readPoint(StlVertex &point)
    {
        static_cast<void>(readNumber(point.x) && readNumber(point.y) && readNumber(point.z));
    }

    // For stlScanNumber.
    int peek() const
    {
        const std::string_view bytes = m_blocks.ahead(1);
        return bytes.empty() ? EOF : static_cast<unsigned char>(bytes.front());
    }
    void take() { m_blocks.take(1); }

private:
    bool readNumber(float &value)
    {
        skipBlanks();
        return stlScanNumber(*this, value);
    }

    void skipBlanks()
    {
        while (stlIsBlank(peek()))
            take();
    }

    StlBlockReader &m_blocks;
};

} // namespace

StlAsciiFacetReader::StlAsciiFacetReader(std::FILE *file)
    : m_blocks(file)
{
    skipLabelLine();
}

void StlAsciiFacetReader::read(StlFacet &facet)
{
    const std::string_view text = m_blocks.ahead(ordinaryFacetSize);
    if (text.empty())
        return; // at the end nothing converts any more
    if (!readCommon(text, facet) && !readPlain(text, facet))
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

// The form that this program and many others write.
bool StlAsciiFacetReader::readCommon(std::string_view text, StlFacet &facet)
{
    const std::size_t lineEnd = sizeOfLineEnd(text); // of the facet before, since fscanf leaves the last one
    text.remove_prefix(lineEnd);
    char copy[stlCommonFacetSize];
    std::size_t size = 0;
    if (text.size() >= stlCommonFacetSize && stlHasCommonLayout(text.data())) {
        if (readCommonLines(text.data(), facet))
            size = stlCommonFacetSize - 1;
    } else if (text.size() >= stlLongFacetSize && stlCopyLongFacet(copy, text.data())) {
        if (readCommonLines(copy, facet))
            size = stlLongFacetSize - 2;
    }
    if (size == 0)
        return false;
    m_blocks.take(lineEnd + size);
    return true;
}

// Changes the facet only if no point is declined.
bool StlAsciiFacetReader::readCommonLines(const char *lines, StlFacet &facet)
{
    const auto point = [lines](std::size_t i) { return lines + stlCommonPointStarts[i]; };
    StlFacet read = facet;
    if (!takePoint(m_normal, point(0), read.normal) || !takePoint(m_corners, point(1), read.vertex[0]) ||
        !takePoint(m_corners, point(2), read.vertex[1]) || !takePoint(m_corners, point(3), read.vertex[2]))
        return false;
    facet = read;
    return true;
}

bool StlAsciiFacetReader::readPlain(std::string_view text, StlFacet &facet)
{
    StlPlainScanner scanner(text);
    StlFacet read = facet;
    const bool isPlain = scanner.skipWord() && scanner.skipWord() && readPoint(scanner, read.normal) &&
                         scanner.skipWord() && scanner.skipWord() && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[0]) && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[1]) && scanner.skipWord() &&
                         readPoint(scanner, read.vertex[2]) && scanner.skipWord() && scanner.skipWord();
    if (!isPlain)
        return false;
    // Point by point: one copy of the facet becomes a string instruction (rep movs) in GCC, which takes this
    // line for a rare one.
    facet.normal = read.normal;
    for (std::size_t i = 0; i < 3; ++i)
        facet.vertex[i] = read.vertex[i];
    m_blocks.take(static_cast<std::size_t>(scanner.position() - text.data()));
    return true;
}

void StlAsciiFacetReader::readAny(StlFacet &facet)
{
    FormattedScan scan(m_blocks);
    scan.skipWords(2);
    scan.readPoint(facet.normal);
    scan.skipWords(2);
    for (StlVertex &corner : facet.vertex) {
        scan.skipWords(1);
        scan.readPoint(corner);
    }
    scan.skipWords(2);
}
