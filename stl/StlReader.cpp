#include "stl/StlReader.h"

#include "stl/StlFatal.h"
#include "stl/StlNumberText.h"

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
    std::rewind(file);
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

// One more than the number of line feeds that end a line of at least four characters.
std::int32_t countLines(std::FILE *file, std::int32_t size)
{
    std::int32_t lines = 1;
    std::int32_t characters = 0;
    for (std::int32_t i = 0; i < size; ++i) {
        const int character = nextTextCharacter(file);
        if (character == EOF)
            break; // only dropped carriage returns are left of the size
        ++characters;
        if (character == '\n') {
            if (characters > shortestCountedLine)
                ++lines;
            characters = 0;
        }
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
    std::rewind(mesh.file);
    readAsciiLabel(mesh);
    return lines / linesPerFacet;
}

std::uint32_t littleEndian(const unsigned char *bytes)
{
    return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8U | std::uint32_t{bytes[2]} << 16U |
           std::uint32_t{bytes[3]} << 24U;
}

std::int32_t initializeBinary(StlMesh &mesh, std::int32_t size, const char *path)
{
    std::fclose(mesh.file);
    mesh.file = openForReading(path, "rb");
    if ((size - binaryPreludeSize) % binaryFacetSize != 0 || size < smallestBinarySize)
        stlFatal(std::string("The file ") + path + " has the wrong size.\n");
    const std::int32_t facets = (size - binaryPreludeSize) / binaryFacetSize;

    unsigned char storedCount[4] = {};
    static_cast<void>(std::fread(mesh.stats.header, 1, labelSize, mesh.file));
    static_cast<void>(std::fread(storedCount, 1, sizeof storedCount, mesh.file));
    if (littleEndian(storedCount) != static_cast<std::uint32_t>(facets))
        std::fputs("Warning: File size doesn't match number of facets in the header\n", stderr);
    return facets;
}

void skipLabelLine(std::FILE *file)
{
    int character = 0;
    do
        character = std::getc(file);
    while (character != '\n' && character != EOF);
}

// A facet read as raw bytes: what a file that ends too early leaves unread keeps the facet before.
class BinaryFacetReader {
public:
    explicit BinaryFacetReader(std::FILE *file)
        : m_file(file)
    {}

    void operator()(StlFacet &facet)
    {
        static_cast<void>(std::fread(m_bytes, 1, sizeof m_bytes, m_file));
        const unsigned char *from = m_bytes;
        readPoint(from, facet.normal);
        for (StlVertex &corner : facet.vertex)
            readPoint(from, corner);
        facet.attribute[0] = from[0];
        facet.attribute[1] = from[1];
    }

private:
    static void readPoint(const unsigned char *&from, StlVertex &point)
    {
        for (float *value : {&point.x, &point.y, &point.z}) {
            const std::uint32_t bits = littleEndian(from);
            static_assert(sizeof bits == sizeof *value, "coordinates are 32-bit floats");
            std::memcpy(value, &bits, sizeof bits);
            from += sizeof bits;
        }
    }

    std::FILE *m_file;
    unsigned char m_bytes[binaryFacetSize] = {};
};

class AsciiFacetReader {
public:
    explicit AsciiFacetReader(std::FILE *file)
        : m_file(file)
    {}

    void operator()(StlFacet &facet)
    {
        stlScanNormal(m_file, facet.normal.x, facet.normal.y, facet.normal.z);
        stlSkipTwoWords(m_file);
        for (StlVertex &corner : facet.vertex)
            stlScanCorner(m_file, corner.x, corner.y, corner.z);
        stlSkipWord(m_file);
        stlSkipWord(m_file);
    }

private:
    std::FILE *m_file;
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
void loadFacets(StlMesh &mesh, FacetReader readFacet, int firstFacet, bool first)
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
    if (mesh.facets == nullptr)
        return;
    if (mesh.stats.type == binary) {
        std::fseek(mesh.file, binaryPreludeSize, SEEK_SET);
        loadFacets(mesh, BinaryFacetReader(mesh.file), firstFacet, first);
    } else {
        std::rewind(mesh.file);
        skipLabelLine(mesh.file);
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
