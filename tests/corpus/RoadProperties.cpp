#include "tests/corpus/RoadProperties.h"

#include "stl/StlNumberText.h"
#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/corpus/RoadOptions.h"
#include "tests/corpus/Verdict.h"
#include "tests/support/NanSigns.h"
#include "tests/support/PlainRoad.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"
#include "transform/MeshTransformer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr const char *inputName = "in.stl";
constexpr const char *temporaryName = "_tmp_stl_"; // the name by which the transformation opens it
constexpr const char *twinTemporaryName = "twin_tmp";
constexpr const char *outputName = "out.stl";

// Standard error as the program writes it, collected while it lives. Reports of sanitizers go past it.
class CollectedErrors {
public:
    CollectedErrors()
        : m_before(stderr),
          m_collector(open_memstream(&m_text, &m_size))
    {
        stderr = m_collector;
    }
    ~CollectedErrors()
    {
        stderr = m_before;
        std::fclose(m_collector);
        std::free(m_text);
    }
    CollectedErrors(const CollectedErrors &) = delete;
    CollectedErrors &operator=(const CollectedErrors &) = delete;

    std::string text() const
    {
        std::fflush(m_collector);
        return {m_text, m_size};
    }

private:
    std::FILE *m_before;
    char *m_text = nullptr;
    std::size_t m_size = 0;
    std::FILE *m_collector;
};

// Frees what a run over one file holds, also when the file is refused.
struct ProductMesh : StlMesh {
    ProductMesh() = default;
    ~ProductMesh()
    {
        closeFile();
        stl_release_facets(*this);
    }
    ProductMesh(const ProductMesh &) = delete;
    ProductMesh &operator=(const ProductMesh &) = delete;

    void closeFile()
    {
        if (file != nullptr)
            std::fclose(file);
        file = nullptr;
    }
};

struct ReadingOutcome {
    std::string end;      // of the process, empty if it goes on
    std::string warnings; // on standard error
};

ReadingOutcome readWithProduct(ProductMesh &mesh)
{
    ReadingOutcome outcome;
    const CollectedErrors errors;
    try {
        stl_initialize(mesh, inputName);
        stl_allocate_facets(mesh);
        stl_load_facets(mesh, 0, true);
        mesh.closeFile();
        stl_write_ascii(mesh, temporaryName);
    } catch (const plain::FatalEnd &fatal) {
        outcome.end = fatal.what();
    }
    outcome.warnings = errors.text();
    return outcome;
}

ReadingOutcome readWithTwin(plain::Mesh &mesh)
{
    ReadingOutcome outcome;
    try {
        plain::initialize(mesh, inputName);
        plain::allocateFacets(mesh);
        plain::loadFacets(mesh, 0, true);
        mesh.closeFile();
        plain::writeAscii(mesh, twinTemporaryName);
    } catch (const plain::FatalEnd &fatal) {
        outcome.end = fatal.what();
    }
    outcome.warnings = mesh.warnings;
    return outcome;
}

bool identical(const StlVertex &a, const plain::Vertex &b)
{
    return sameBytes(a, b); // both are three floats
}

bool identical(const StlFacet &a, const plain::Facet &b)
{
    return identical(a.normal, b.normal) && identical(a.vertex[0], b.corner[0]) &&
           identical(a.vertex[1], b.corner[1]) && identical(a.vertex[2], b.corner[2]) &&
           sameBytes(a.attribute, b.attribute);
}

bool sameCorner(const StlVertex &a, const plain::Vertex &b)
{
    return sameOrBothNan(a.x, b.x) && sameOrBothNan(a.y, b.y) && sameOrBothNan(a.z, b.z);
}

void compareStatistics(Verdict &verdict, const StlStats &a, const plain::Stats &b)
{
    verdict.expectSame(a.type == ascii, b.isAscii, "type");
    verdict.expect(b.isAscii ? std::strcmp(a.header, b.header) == 0 : sameBytes(a.header, b.header),
                   "header");
    verdict.expectSame(a.header[80], '\0', "end of the header");
    verdict.expectSame(a.facetCount, b.facetCount, "facetCount");
    verdict.expectSame(a.initialFacetCount, b.initialFacetCount, "initialFacetCount");
    verdict.expectSame(a.allocatedFacetCount, b.allocatedFacetCount, "allocatedFacetCount");
    verdict.expect(sameCorner(a.max, b.max), "max");
    verdict.expect(sameCorner(a.min, b.min), "min");
    verdict.expect(sameCorner(a.size, b.size), "size");
    verdict.expect(sameOrBothNan(a.boundingDiameter, b.boundingDiameter), "boundingDiameter");
    verdict.expect(sameOrBothNan(a.firstEdgeExtent, b.firstEdgeExtent), "firstEdgeExtent");
}

bool compareMeshes(Verdict &verdict, const StlMesh &product, const plain::Mesh &twin)
{
    compareStatistics(verdict, product.stats, twin.stats);
    if (product.stats.facetCount != twin.stats.facetCount)
        return false;
    for (std::size_t i = 0; i < twin.facets.size(); ++i)
        verdict.expect(identical(product.facets[i], twin.facets[i]), "facet " + std::to_string(i));
    verdict.expectSameText(readBytes(temporaryName), readBytes(twinTemporaryName), "temporary file");
    return true;
}

// A coordinate as the passes see it: through its text.
double throughText(float value)
{
    char text[64];
    std::snprintf(text, sizeof text, "% .8E", static_cast<double>(value));
    return std::strtod(text, nullptr);
}

bool brackets(double min, double max, float coordinate)
{
    const double value = throughText(coordinate);
    return !std::isfinite(value) || (min <= value && value <= max);
}

void expectBracketedCorners(Verdict &verdict, const StlMesh &mesh)
{
    const Stream in = openStream(temporaryName, "r");
    char message[stlMessageCapacity] = "";
    plain::Extents e;
    verdict.expectSame(
        stl_scan_extents(message, in.get(), &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ), 0,
        "the temporary file is accepted");
    bool bracketed = true;
    for (std::int32_t i = 0; i < mesh.stats.facetCount; ++i)
        for (const StlVertex &corner : mesh.facets[i].vertex)
            bracketed = bracketed && brackets(e.minX, e.maxX, corner.x) &&
                        brackets(e.minY, e.maxY, corner.y) && brackets(e.minZ, e.maxZ, corner.z);
    verdict.expect(bracketed, "the extents bracket every finite coordinate");
}

// What a pass or a transformation leaves behind.
struct Outcome {
    int result = 99;
    std::string message;
    std::string output;
    plain::Extents extents;
};

void compare(Verdict &verdict, const Outcome &product, const Outcome &twin, const std::string &what)
{
    verdict.expectSame(product.result, twin.result, what + ": result");
    verdict.expectSameText(product.message, twin.message, what + ": message");
    verdict.expectSameText(withoutSignsOfNaNs(product.output), withoutSignsOfNaNs(twin.output),
                           what + ": output");
    const plain::Extents &p = product.extents;
    const plain::Extents &t = twin.extents;
    verdict.expect(sameOrBothNan(p.minX, t.minX) && sameOrBothNan(p.maxX, t.maxX) &&
                       sameOrBothNan(p.minY, t.minY) && sameOrBothNan(p.maxY, t.maxY) &&
                       sameOrBothNan(p.minZ, t.minZ) && sameOrBothNan(p.maxZ, t.maxZ),
                   what + ": extents");
}

Outcome transformWithProduct(const RoadOptions &options)
{
    const plain::Placement &p = options.placement;
    const plain::Request &r = options.request;
    MeshTransformer t(p.scale.x, p.scale.y, p.scale.z, p.offsetBefore.x, p.offsetBefore.y, p.offsetBefore.z,
                      p.offsetAfter.x, p.offsetAfter.y, p.offsetAfter.z);
    char message[stlMessageCapacity] = "\n";
    Outcome outcome;
    outcome.result =
        stl_transform(t, message, std::fopen(temporaryName, "r"), std::fopen(outputName, "w+"), r.rotateX,
                      r.rotateY, r.rotateZ, r.angleX, r.angleY, r.angleZ, r.setLengthX, r.setLengthY,
                      r.setLengthZ, r.lengthX, r.lengthY, r.lengthZ, r.setOriginX, r.setOriginY, r.setOriginZ,
                      r.xSameY, r.xSameZ, r.ySameX, r.ySameZ, r.zSameX, r.zSameY);
    outcome.message = message;
    outcome.output = readBytes(outputName);
    outcome.extents = {t.xMin, t.xMax, t.yMin, t.yMax, t.zMin, t.zMax};
    return outcome;
}

Outcome transformWithTwin(const RoadOptions &options)
{
    plain::Placement placement = options.placement;
    char message[plain::messageCapacity] = "\n";
    Outcome outcome;
    outcome.result = plain::transform(placement, outcome.extents, message, std::fopen(temporaryName, "r"),
                                      std::fopen(outputName, "w+"), options.request);
    outcome.message = message;
    outcome.output = readBytes(outputName);
    return outcome;
}

long occurrences(std::string_view text, std::string_view what)
{
    long count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

// Holds where lines are lines: none too long for the line buffer, none with a zero byte in it.
void expectTotalsOfTheOutput(Verdict &verdict, const Outcome &outcome)
{
    const long lines = occurrences(outcome.output, "\n");
    const long triangles = occurrences(outcome.output, "endfacet");
    const std::string totals = "\n\nNumber lines read from stl file = " + std::to_string(lines) +
                               "\nNumber triangles read from stl file = " + std::to_string(triangles) + "\n";
    verdict.expectSameText(outcome.message, totals, "totals of the lines written");
}

Outcome scanWithProduct(std::string_view bytes)
{
    const Stream in = streamOf(bytes);
    char message[stlMessageCapacity] = "before";
    Outcome outcome;
    plain::Extents &e = outcome.extents;
    outcome.result =
        stl_scan_extents(message, in.get(), &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ);
    outcome.message = message;
    return outcome;
}

Outcome scanWithTwin(std::string_view bytes)
{
    const Stream in = streamOf(bytes);
    char message[plain::messageCapacity] = "before";
    Outcome outcome;
    outcome.result = plain::scanExtents(message, in.get(), outcome.extents);
    outcome.message = message;
    return outcome;
}

// The numbers and their text, as the C library writes them.
void checkWriting(Verdict &verdict, double value)
{
    char expected[64];
    char text[stlMaxNumberText];
    std::snprintf(expected, sizeof expected, "% .8E", value);
    verdict.expectSameText({text, static_cast<std::size_t>(stlWriteBlankSigned(text, value) - text)},
                           expected, "blank-signed number");
    std::snprintf(expected, sizeof expected, "%15.8E", value);
    verdict.expectSameText({text, static_cast<std::size_t>(stlWritePadded(text, value) - text)}, expected,
                           "padded number");
}

void checkReturn(Verdict &verdict, float value)
{
    char text[stlMaxNumberText];
    const char *end = stlWriteBlankSigned(text, double{value});
    double back = 0.0;
    verdict.expect(stlReadNumber({text, static_cast<std::size_t>(end - text)}, back),
                   "a written number is read");
    verdict.expect(sameOrBothNan(static_cast<float>(back), value), "a written float comes back");
}

void checkReading(Verdict &verdict, const std::string &word)
{
    double expected = 1234.5;
    double value = 1234.5;
    const bool isNumber = std::sscanf(word.c_str(), "%lf", &expected) == 1;
    verdict.expectSame(stlReadNumber(word, value), isNumber, "a word is a number");
    verdict.expect(sameBytes(value, expected) || (std::isnan(value) && std::isnan(expected)),
                   "the value of a word");
}

// Words hold neither blanks nor zero bytes and are shorter than a line.
std::string firstWord(std::string_view bytes)
{
    constexpr std::size_t longest = 999;
    return std::string(bytes.substr(0, std::min(bytes.find_first_of(std::string_view("\0 ", 2)), longest)));
}

template <typename Number>
Number numberAt(std::string_view bytes)
{
    Number number;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

} // namespace

std::string checkInputFile(std::string_view bytes)
{
    writeBytes(inputName, bytes);
    Verdict verdict;
    ProductMesh product;
    plain::Mesh twin;
    const ReadingOutcome outcome = readWithProduct(product);
    const ReadingOutcome expected = readWithTwin(twin);
    verdict.expectSameText(outcome.end, expected.end, "end of the process");
    verdict.expectSameText(outcome.warnings, expected.warnings, "warnings");
    if (!expected.end.empty() || !outcome.end.empty() || !compareMeshes(verdict, product, twin))
        return verdict.text();

    expectBracketedCorners(verdict, product);
    const RoadOptions options(bytes);
    const Outcome transformed = transformWithProduct(options);
    verdict.expectSame(transformed.result, 0, "a temporary file that was just written is transformed");
    compare(verdict, transformed, transformWithTwin(options), "transformation");
    expectTotalsOfTheOutput(verdict, transformed);
    verdict.expectSameText(readBytes(inputName), bytes, "the input file is left alone");
    return verdict.text();
}

std::string checkTemporaryFile(std::string_view bytes)
{
    Verdict verdict;
    compare(verdict, scanWithProduct(bytes), scanWithTwin(bytes), "scan");
    writeBytes(temporaryName, bytes);
    RoadOptions options(bytes);
    compare(verdict, transformWithProduct(options), transformWithTwin(options), "transformation");
    options.request = {};
    compare(verdict, transformWithProduct(options), transformWithTwin(options), "rewriting");
    return verdict.text();
}

std::string checkNumberText(std::string_view bytes)
{
    Verdict verdict;
    checkReading(verdict, firstWord(bytes));
    for (; bytes.size() >= sizeof(double); bytes.remove_prefix(1)) {
        checkWriting(verdict, numberAt<double>(bytes));
        checkWriting(verdict, static_cast<double>(numberAt<float>(bytes)));
        checkReturn(verdict, numberAt<float>(bytes));
    }
    return verdict.text();
}
