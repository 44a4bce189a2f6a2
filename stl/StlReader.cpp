#include "stl/StlReader.h"

#include "stl/ByteOrder.h"
#include "stl/StlAsciiFacets.h"
#include "stl/StlBinaryFacets.h"
#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlFatal.h"
#include "stl/StlLineEnd.h"
#include "stl/StlMessages.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

constexpr int typeTestSize = 128;
constexpr int linesPerFacet = 7;
constexpr int shortestCountedLine = 4; // characters besides the line feed

// Deliberate: binary files of one, two or three facets are refused.
constexpr std::int32_t smallestBinarySize = stlBinaryPreludeSize + 4 * stlBinaryFacetSize;

// Gives the reason in errno, as the failing call left it.
[[noreturn]] void endUnreadable(const char *path)
{
    stlFatalWithSystemError(std::string("stl_initialize: Couldn't open ") + path + " for reading");
}

// `error` is that of a read, or 0. Deliberate: a directory is no error; fopen opens it, reading fails, and so
// it counts as an empty file.
void endIfUnreadable(int error, const char *path)
{
    if (error == 0 || error == EISDIR)
        return;
    errno = error;
    endUnreadable(path);
}

// Right after a call that reads.
int readError(std::FILE *file) { return std::ferror(file) != 0 ? errno : 0; }

// Binary: in a text stream of some systems byte 26 is the end. What a text stream does to line ends,
// stlNextTextCharacter and countLines do.
std::FILE *openForReading(const char *path)
{
    std::FILE *file = std::fopen(path, "rb");
    if (file == nullptr)
        endUnreadable(path);
    return file;
}

// A pipe, or another stream without positions, has no size and cannot be read twice, so it ends here. Some
// file systems refuse to seek in a directory, with EINVAL.
void seek(std::FILE *file, long offset, int origin, const char *path)
{
    if (std::fseek(file, offset, origin) != 0 && errno != EINVAL)
        endUnreadable(path);
}

// The lowest 32 bits of the size. Where a long has no more than those, ftell does not tell every position.
std::int32_t sizeOf(std::FILE *file, const char *path)
{
    seek(file, 0, SEEK_END, path);
    const long end = std::ftell(file);
    if (end >= 0)
        return static_cast<std::int32_t>(end);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(std::filesystem::u8path(path), error);
    endIfUnreadable(error.default_error_condition().value(), path);
    return static_cast<std::int32_t>(size);
}

StlType typeOf(std::FILE *file, const char *path)
{
    unsigned char bytes[typeTestSize];
    seek(file, stlBinaryPreludeSize, SEEK_SET, path);
    const std::size_t count = std::fread(bytes, 1, sizeof bytes, file);
    endIfUnreadable(readError(file), path);
    seek(file, 0, SEEK_SET, path);
    for (std::size_t i = 0; i < count; ++i) {
        if (bytes[i] > 127)
            return binary;
    }
    return ascii;
}

// The size of the facet with which the bytes start, if it has the common layout and either line end, else 0.
std::size_t sizeOfCommonFacet(std::string_view bytes)
{
    if (bytes.size() >= stlCommonFacetSize && stlHasCommonLines(bytes.data()))
        return stlCommonFacetSize;
    char shorter[stlCommonFacetSize];
    return bytes.size() >= stlLongFacetSize && stlCopyLongFacet(shorter, bytes.data()) ? stlLongFacetSize : 0;
}

// One more than the number of line feeds that end a line of at least four characters, among the first `size`
// characters of the text. Characters are those that stlNextTextCharacter returns: a carriage return before a
// line feed does not count.
std::int32_t countLines(std::FILE *file, std::int32_t size, const char *path)
{
    if (size <= 0)
        return 1;
    StlBlockReader blocks(file);
    std::int32_t lines = 1;
    std::int64_t characters = 0; // of the current line
    std::int64_t total = 0;
    char last = '\0';
    for (std::string_view bytes = blocks.ahead(stlLongFacetSize); !bytes.empty();
         bytes = blocks.ahead(stlLongFacetSize)) {
        if (characters == 0 && total + std::int64_t{stlCommonFacetSize} <= size) {
            if (const std::size_t facet = sizeOfCommonFacet(bytes); facet != 0) {
                total += std::int64_t{stlCommonFacetSize};
                lines += stlCommonFacetLines; // all of them are long enough
                last = '\n';
                blocks.take(facet);
                continue;
            }
        }
        const std::size_t lineFeed = bytes.find('\n');
        const std::size_t count = std::min(lineFeed, bytes.size() - 1) + 1;
        characters += static_cast<std::int64_t>(count);
        if (total + characters > std::int64_t{size} + 1) // + 1: a carriage return, which may be dropped
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
    endIfUnreadable(blocks.error(), path);
    return lines;
}

void readAsciiLabel(StlMesh &mesh, const char *path)
{
    for (int i = 0; i < stlBinaryLabelSize; ++i) {
        const int character = stlNextTextCharacter(mesh.file);
        if (character == EOF || character == '\n')
            break;
        mesh.stats.header[i] = static_cast<char>(character);
    }
    endIfUnreadable(readError(mesh.file), path);
}

std::int32_t initializeAscii(StlMesh &mesh, std::int32_t size, const char *path)
{
    const std::int32_t lines = countLines(mesh.file, size, path);
    seek(mesh.file, 0, SEEK_SET, path);
    readAsciiLabel(mesh, path);
    return lines / linesPerFacet;
}

std::int32_t initializeBinary(StlMesh &mesh, std::int32_t size, const char *path)
{
    std::fclose(mesh.file);
    mesh.file = nullptr; // if opening throws, no caller may close the old stream again
    mesh.file = openForReading(path);
    if (size < smallestBinarySize || (size - stlBinaryPreludeSize) % stlBinaryFacetSize != 0)
        stlFatal(std::string("The file ") + path + " has the wrong size.\n");
    const std::int32_t facets = (size - stlBinaryPreludeSize) / stlBinaryFacetSize;

    char storedCount[4] = {};
    [[maybe_unused]] std::size_t count = std::fread(mesh.stats.header, 1, stlBinaryLabelSize, mesh.file);
    count = std::fread(storedCount, 1, sizeof storedCount, mesh.file);
    endIfUnreadable(readError(mesh.file), path);
    if (loadLittleEndian<std::uint32_t>(storedCount) != static_cast<std::uint32_t>(facets))
        stlWarn("Warning: File size doesn't match number of facets in the header\n");
    return facets;
}

float largerOf(float a, float b) { return b > a ? b : a; }

float largestStep(const StlVertex &from, const StlVertex &to)
{
    return largerOf(largerOf(std::fabs(from.x - to.x), std::fabs(from.y - to.y)), std::fabs(from.z - to.z));
}

// Comparisons with NaN are false, so a NaN corner widens nothing.
float smallerOf(float a, float b) { return b < a ? b : a; }

struct Extents {
    StlVertex min;
    StlVertex max;

    void widen(const StlVertex &corner)
    {
        max = {largerOf(max.x, corner.x), largerOf(max.y, corner.y), largerOf(max.z, corner.z)};
        min = {smallerOf(min.x, corner.x), smallerOf(min.y, corner.y), smallerOf(min.z, corner.z)};
    }
};

void finishStatistics(StlStats &stats)
{
    StlVertex &size = stats.size;
    size.x = stats.max.x - stats.min.x;
    size.y = stats.max.y - stats.min.y;
    size.z = stats.max.z - stats.min.z;
    stats.boundingDiameter = std::sqrt(size.x * size.x + size.y * size.y + size.z * size.z);
}

// Gives the reason in errno.
[[noreturn]] void endUnloadable() { stlFatalWithSystemError("stl_load_facets"); }

template <typename FacetReader>
void loadFacets(StlMesh &mesh, FacetReader &&reader, int firstFacet, bool first)
{
    StlFacet working; // persists: a number that does not convert keeps the value of the facet before
    Extents extents = {mesh.stats.min, mesh.stats.max};
    for (std::int32_t i = firstFacet; i < mesh.stats.facetCount; ++i) {
        reader.read(working);
        mesh.facets[i] = working;
        if (first) {
            extents = {working.vertex[0], working.vertex[0]};
            mesh.stats.firstEdgeExtent = largestStep(working.vertex[0], working.vertex[1]);
            first = false;
        }
        for (const StlVertex &corner : working.vertex)
            extents.widen(corner);
    }
    mesh.stats.min = extents.min;
    mesh.stats.max = extents.max;
    if (reader.error() != 0) {
        errno = reader.error();
        endUnloadable();
    }
}

void seekFacets(std::FILE *file, long offset)
{
    if (std::fseek(file, offset, SEEK_SET) != 0)
        endUnloadable();
}

template <typename Entry>
Entry *allocateTable(std::int32_t count)
{
    // At least one entry: null always means failure.
    const auto entries = static_cast<std::size_t>(count > 0 ? count : 1);
    return static_cast<Entry *>(std::calloc(entries, sizeof(Entry)));
}

void reportMissingFacets(const StlMesh &mesh)
{
    if (mesh.facets == nullptr)
        stlWarnWithSystemError("stl_initialize");
}

} // namespace

void stl_initialize(StlMesh &mesh, const char *path)
{
    stl_release_facets(mesh);
    mesh.stats.initialFacetCount = 0;
    mesh.stats.facetCount = 0;
    std::memset(mesh.stats.header, 0, sizeof mesh.stats.header);

    mesh.file = openForReading(path);
    const std::int32_t size = sizeOf(mesh.file, path);
    mesh.stats.type = typeOf(mesh.file, path);
    mesh.stats.facetCount +=
        mesh.stats.type == ascii ? initializeAscii(mesh, size, path) : initializeBinary(mesh, size, path);
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
        finishStatistics(mesh.stats); // without reading: an endless device has an endless label line
        return;
    }
    if (mesh.facets == nullptr)
        return;
    if (mesh.stats.type == binary) {
        seekFacets(mesh.file, stlBinaryPreludeSize);
        loadFacets(mesh, StlBinaryFacetReader(mesh.file), firstFacet, first);
    } else {
        seekFacets(mesh.file, 0);
        loadFacets(mesh, StlAsciiFacetReader(mesh.file), firstFacet, first);
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
