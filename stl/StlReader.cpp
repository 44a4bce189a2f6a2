#include "stl/StlReader.h"

#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlFatal.h"
#include "stl/StlNumberText.h"
#include "stl/StlPlainScan.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr int labelSize = 80;
constexpr int binaryPreludeSize = 84; // label and facet count
constexpr int binaryFacetSize = 50;
constexpr int typeTestSize = 128;
constexpr int linesPerFacet = 7;
constexpr int shortestCountedLine = 4; // characters besides the line feed

// Deliberate: binary files of one, two or three facets are refused.
constexpr std::int32_t smallestBinarySize = binaryPreludeSize + 4 * binaryFacetSize;

std::FILE *openForReading(const char *path, const char *mode)
{
    std::FILE *file = std::fopen(path, mode);
    if (file == nullptr)
        stlFatalWithSystemError(std::string("stl_initialize: Couldn't open ") + path + " for reading");
    return file;
}

// Not rewind, which would forget that reading has failed.
void goToStart(std::FILE *file) { std::fseek(file, 0, SEEK_SET); }

std::int32_t sizeOf(std::FILE *file)
{
    std::fseek(file, 0, SEEK_END);
    return static_cast<std::int32_t>(std::ftell(file));
}

StlType typeOf(std::FILE *file)
{
    unsigned char bytes[typeTestSize];
    std::fseek(file, binaryPreludeSize, SEEK_SET);
    const std::size_t count = std::fread(bytes, 1, sizeof bytes, file);
    goToStart(file);
    for (std::size_t i = 0; i < count; ++i) {
        if (bytes[i] > 127)
            return binary;
    }
    return ascii;
}

// The next character of a text, with a carriage return before a line feed dropped.
int nextTextCharacter(std::FILE *file)
{
    const int character = std::getc(file);
    if (character != '\r')
        return character;
    const int following = std::getc(file);
    if (following == '\n')
        return following;
    std::ungetc(following, file);
    return character;
}

// One more than the number of line feeds that end a line of at least four characters, among the first `size`
// characters of the text. Counts as nextTextCharacter would: a carriage return before a line feed is no
// character.
std::int32_t countLines(std::FILE *file, std::int32_t size)
{
    StlBlockReader blocks(file);
    std::int32_t lines = 1;
    std::int64_t characters = 0; // of the current line
    std::int64_t total = 0;
    char last = '\0';
    for (std::string_view bytes = blocks.ahead(1); !bytes.empty(); bytes = blocks.ahead(1)) {
        const std::size_t lineFeed = bytes.find('\n');
        const std::size_t count = std::min(lineFeed, bytes.size() - 1) + 1;
        characters += static_cast<std::int64_t>(count);
        if (total + characters > std::int64_t{size} + 1) // the one may be a carriage return, which is dropped
            break;
        if (lineFeed != std::string_view::npos) {
            if ((lineFeed > 0 ? bytes[lineFeed - 1] : last) == '\r')
                --characters;
            total += characters;
            if (total > size)
                break;
            if (characters > shortestCountedLine)
                ++lines;
            characters = 0;
        }
        last = bytes[count - 1];
        blocks.take(count);
    }
    return lines;
}

void readAsciiLabel(StlMesh &mesh)
{
    for (int i = 0; i < labelSize; ++i) {
        const int character = nextTextCharacter(mesh.file);
        if (character == EOF || character == '\n')
            break;
        mesh.stats.header[i] = static_cast<char>(character);
    }
}

std::int32_t initializeAscii(StlMesh &mesh, std::int32_t size)
{
    const std::int32_t lines = countLines(mesh.file, size);
    goToStart(mesh.file);
    readAsciiLabel(mesh);
    return lines / linesPerFacet;
}

std::uint32_t littleEndian(const char *bytes)
{
    const auto byte = [bytes](int i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
    return byte(0) | byte(1) << 8U | byte(2) << 16U | byte(3) << 24U;
}

std::int32_t initializeBinary(StlMesh &mesh, std::int32_t size, const char *path)
{
    std::fclose(mesh.file);
    mesh.file = nullptr; // whoever catches what opening throws may close what is open
    mesh.file = openForReading(path, "rb");
    if (size < smallestBinarySize || (size - binaryPreludeSize) % binaryFacetSize != 0)
        stlFatal(std::string("The file ") + path + " has the wrong size.\n");
    const std::int32_t facets = (size - binaryPreludeSize) / binaryFacetSize;

    char storedCount[4] = {};
    [[maybe_unused]] std::size_t count = std::fread(mesh.stats.header, 1, labelSize, mesh.file);
    count = std::fread(storedCount, 1, sizeof storedCount, mesh.file);
    if (littleEndian(storedCount) != static_cast<std::uint32_t>(facets))
        std::fputs("Warning: File size doesn't match number of facets in the header\n", stderr);
    return facets;
}

// A facet read as raw bytes: what a file that ends too early leaves unread keeps the facet before.
class BinaryFacetReader {
public:
    explicit BinaryFacetReader(std::FILE *file)
        : m_blocks(file)
    {}

    void operator()(StlFacet &facet)
    {
        const std::string_view bytes = m_blocks.ahead(binaryFacetSize).substr(0, binaryFacetSize);
        bytes.copy(m_bytes, bytes.size());
        m_blocks.take(bytes.size());
        const char *from = m_bytes;
        readPoint(from, facet.normal);
        for (StlVertex &corner : facet.vertex)
            readPoint(from, corner);
        // Behind the end of a file that has shrunk, fgetc gives its sign for that, and nobody looks.
        const std::size_t coordinates = static_cast<std::size_t>(from - m_bytes);
        for (std::size_t i = 0; i < sizeof facet.attribute; ++i)
            facet.attribute[i] = static_cast<unsigned char>(bytes.size() > coordinates + i ? from[i] : EOF);
    }

private:
    static void readPoint(const char *&from, StlVertex &point)
    {
        for (float *value : {&point.x, &point.y, &point.z}) {
            const std::uint32_t bits = littleEndian(from);
            static_assert(sizeof bits == sizeof *value, "coordinates are 32-bit floats");
            std::memcpy(value, &bits, sizeof bits);
            from += sizeof bits;
        }
    }

    StlBlockReader m_blocks;
    char m_bytes[binaryFacetSize] = {};
};

// Facets as fscanf reads them. Plain text is read without it; a facet that is not plain goes back to the
// stream and is read by fscanf from its first byte.
class AsciiFacetReader {
public:
    explicit AsciiFacetReader(std::FILE *file)
        : m_file(file),
          m_blocks(file)
    {
        skipLabelLine();
    }

    void operator()(StlFacet &facet)
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

private:
    static constexpr std::size_t ordinaryFacetSize = 1024;

    enum class Plainness { plain, odd, unknown }; // unknown: the text at hand ends within the facet

    void skipLabelLine()
    {
        for (std::string_view bytes = m_blocks.ahead(1); !bytes.empty(); bytes = m_blocks.ahead(1)) {
            const std::size_t lineFeed = bytes.find('\n');
            m_blocks.take(std::min(lineFeed, bytes.size() - 1) + 1);
            if (lineFeed != std::string_view::npos)
                return;
        }
    }

    // The form in which this program and many others write.
    bool readCommon(std::string_view text, StlFacet &facet)
    {
        const std::size_t lineFeed = text.front() == '\n' ? 1 : 0; // of the facet before
        text.remove_prefix(lineFeed);
        if (text.size() < stlCommonFacetSize || !stlHasCommonLayout(text.data()))
            return false;
        double numbers[12];
        StlFacet read = facet;
        if (!stlReadCommonPoints<0, 4>(text.data(), numbers) || !roundToPoint(numbers, read.normal) ||
            !roundToPoint(numbers + 3, read.vertex[0]) || !roundToPoint(numbers + 6, read.vertex[1]) ||
            !roundToPoint(numbers + 9, read.vertex[2]))
            return false;
        facet = read;
        m_blocks.take(lineFeed + stlCommonFacetSize - 1); // fscanf leaves the last line feed, too
        return true;
    }

    static bool roundToPoint(const double *numbers, StlVertex &point)
    {
        return stlRoundToFloat(numbers[0], point.x) && stlRoundToFloat(numbers[1], point.y) &&
               stlRoundToFloat(numbers[2], point.z);
    }

    Plainness readPlain(std::string_view text, StlFacet &facet)
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

    static bool readPoint(StlPlainScanner &scanner, StlVertex &point)
    {
        return scanner.readFloat(point.x) && scanner.readFloat(point.y) && scanner.readFloat(point.z);
    }

    void readAny(StlFacet &facet)
    {
        m_blocks.giveBack();
        stlScanNormal(m_file, facet.normal.x, facet.normal.y, facet.normal.z);
        stlSkipTwoWords(m_file);
        for (StlVertex &corner : facet.vertex)
            stlScanCorner(m_file, corner.x, corner.y, corner.z);
        stlSkipWord(m_file);
        stlSkipWord(m_file);
        m_blocks.continueFromStream();
    }

    std::FILE *m_file;
    StlBlockReader m_blocks;
};

float largerOf(float a, float b) { return b > a ? b : a; }

float largestStep(const StlVertex &from, const StlVertex &to)
{
    return largerOf(largerOf(std::fabs(from.x - to.x), std::fabs(from.y - to.y)), std::fabs(from.z - to.z));
}

// Comparisons with NaN are false, so a NaN corner widens nothing.
void widen(float &min, float &max, float value)
{
    if (value > max)
        max = value;
    if (value < min)
        min = value;
}

void addToStatistics(StlStats &stats, const StlFacet &facet, bool first)
{
    if (first) {
        stats.max = facet.vertex[0];
        stats.min = facet.vertex[0];
        stats.firstEdgeExtent = largestStep(facet.vertex[0], facet.vertex[1]);
    }
    for (const StlVertex &corner : facet.vertex) {
        widen(stats.min.x, stats.max.x, corner.x);
        widen(stats.min.y, stats.max.y, corner.y);
        widen(stats.min.z, stats.max.z, corner.z);
    }
}

void finishStatistics(StlStats &stats)
{
    StlVertex &size = stats.size;
    size.x = stats.max.x - stats.min.x;
    size.y = stats.max.y - stats.min.y;
    size.z = stats.max.z - stats.min.z;
    stats.boundingDiameter = std::sqrt(size.x * size.x + size.y * size.y + size.z * size.z);
}

template <typename FacetReader>
void loadFacets(StlMesh &mesh, FacetReader &&readFacet, int firstFacet, bool first)
{
    StlFacet working; // persists: a number that does not convert keeps the facet before
    for (std::int32_t i = firstFacet; i < mesh.stats.facetCount; ++i) {
        readFacet(working);
        mesh.facets[i] = working;
        addToStatistics(mesh.stats, working, first);
        first = false;
    }
}

template <typename Entry>
Entry *allocateTable(std::int32_t count)
{
    // An empty table is a table, too: null always means failure.
    const auto entries = static_cast<std::size_t>(count > 0 ? count : 1);
    return static_cast<Entry *>(std::calloc(entries, sizeof(Entry)));
}

void reportMissingFacets(const StlMesh &mesh)
{
    if (mesh.facets == nullptr)
        std::perror("stl_initialize");
}

} // namespace

void stl_initialize(StlMesh &mesh, const char *path)
{
    stl_release_facets(mesh);
    mesh.stats.initialFacetCount = 0;
    mesh.stats.facetCount = 0;
    std::memset(mesh.stats.header, 0, sizeof mesh.stats.header);

    mesh.file = openForReading(path, "r");
    const std::int32_t size = sizeOf(mesh.file);
    mesh.stats.type = typeOf(mesh.file);
    mesh.stats.facetCount +=
        mesh.stats.type == ascii ? initializeAscii(mesh, size) : initializeBinary(mesh, size, path);
    mesh.stats.initialFacetCount = mesh.stats.facetCount;
}

void stl_allocate_facets(StlMesh &mesh)
{
    mesh.facets = allocateTable<StlFacet>(mesh.stats.facetCount);
    reportMissingFacets(mesh);
    mesh.stats.allocatedFacetCount = mesh.stats.facetCount;
    mesh.auxTable = allocateTable<StlAuxEntry>(mesh.stats.facetCount);
    // Deliberate: the facets once more. Nothing needs the reserved table, so a run goes on without it.
    reportMissingFacets(mesh);
}

void stl_load_facets(StlMesh &mesh, int firstFacet, bool first)
{
    if (firstFacet >= mesh.stats.facetCount) {
        finishStatistics(mesh.stats); // a device without end has no label line, and no size
        return;
    }
    if (mesh.facets == nullptr)
        return;
    if (mesh.stats.type == binary) {
        std::fseek(mesh.file, binaryPreludeSize, SEEK_SET);
        loadFacets(mesh, BinaryFacetReader(mesh.file), firstFacet, first);
    } else {
        goToStart(mesh.file);
        loadFacets(mesh, AsciiFacetReader(mesh.file), firstFacet, first);
    }
    finishStatistics(mesh.stats);
}

void stl_release_facets(StlMesh &mesh)
{
    std::free(mesh.facets);
    std::free(mesh.auxTable);
    mesh.facets = nullptr;
    mesh.auxTable = nullptr;
}
