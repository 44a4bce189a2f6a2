#include "tests/support/StlComparison.h"

#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/FailingStream.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr const char *twinWrittenName = "written-by-twin.stl";
constexpr const char *longLinesName = "written-with-carriage-returns.stl";

// What the program writes to standard error while this lives. Reports of sanitizers are not collected.
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

// A NaN here was computed, so its sign does not count.
void compareVertices(Verdict &verdict, const StlVertex &a, const plain::Vertex &b, const std::string &name)
{
    verdict.expectSameOrBothNan(double{a.x}, double{b.x}, name + ".x");
    verdict.expectSameOrBothNan(double{a.y}, double{b.y}, name + ".y");
    verdict.expectSameOrBothNan(double{a.z}, double{b.z}, name + ".z");
}

// A facet's numbers were only carried, so every bit counts.
bool identical(const StlFacet &a, const plain::Facet &b)
{
    return sameBytes(a.normal, b.normal) && sameBytes(a.vertex, b.corner) &&
           sameBytes(a.attribute, b.attribute);
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
    compareVertices(verdict, a.max, b.max, "max");
    compareVertices(verdict, a.min, b.min, "min");
    compareVertices(verdict, a.size, b.size, "size");
    verdict.expectSameOrBothNan(double{a.boundingDiameter}, double{b.boundingDiameter}, "boundingDiameter");
    verdict.expectSameOrBothNan(double{a.firstEdgeExtent}, double{b.firstEdgeExtent}, "firstEdgeExtent");
}

constexpr std::size_t pipeCapacity = 65536;

// At most what a pipe holds, or the writing would wait for a reader.
Stream pipeOf(std::string_view bytes)
{
    int ends[2] = {-1, -1};
    if (bytes.size() > pipeCapacity || pipe(ends) != 0)
        throw std::runtime_error("no pipe for the text");
    const bool written = write(ends[1], bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    close(ends[1]);
    Stream stream(fdopen(ends[0], "r"));
    if (!written || !stream)
        throw std::runtime_error("the text did not go into the pipe");
    return stream;
}

PassInput withLongLines(const PassInput &input)
{
    PassInput longer = input;
    longer.text = withCarriageReturns(input.text);
    longer.start = static_cast<long>(
        withCarriageReturns(input.text.substr(0, static_cast<std::size_t>(input.start))).size());
    return longer;
}

bool canBeOpened(const PassInput &input) { return !input.isPipe || input.text.size() <= pipeCapacity; }

Stream open(const PassInput &input)
{
    if (input.failsAtTheEnd)
        return input.isPipe ? pipeFailingAfter(input.text) : streamFailingAfter(input.text);
    if (input.isPipe)
        return pipeOf(std::string_view(input.text).substr(static_cast<std::size_t>(input.start)));
    Stream stream = streamOf(input.text);
    std::fseek(stream.get(), input.start, SEEK_SET);
    return stream;
}

struct Outcome {
    int result = 99;
    std::string message = "before";
    std::string output;
    plain::Extents extents;
    long position = -2;
    std::string rest; // what the pass did not read
    bool failedToRead = false;
};

void noteStream(Outcome &outcome, std::FILE *in)
{
    outcome.position = std::ftell(in);
    char block[BUFSIZ];
    for (std::size_t got = 1; got > 0;) {
        got = std::fread(block, 1, sizeof block, in);
        outcome.rest.append(block, got);
    }
}

// Runs a pass with a message buffer of this size.
template <std::size_t messageCapacity, typename Pass>
Outcome outcomeOfPass(const PassInput &input, Pass &&pass)
{
    const Stream in = open(input);
    Outcome outcome;
    char message[messageCapacity] = {};
    outcome.message.copy(message, sizeof message - 1);
    outcome.result = pass(message, in.get(), outcome);
    outcome.message = message;
    if (input.failsAtTheEnd)
        outcome.failedToRead = std::ferror(in.get()) != 0;
    else
        noteStream(outcome, in.get());
    return outcome;
}

Outcome productScan(const PassInput &input, StlLineEnd lineEnd = StlLineEnd::lineFeed)
{
    return outcomeOfPass<stlMessageCapacity>(input, [lineEnd](char *message, std::FILE *in,
                                                              Outcome &outcome) {
        plain::Extents &e = outcome.extents;
        return stl_scan_extents(message, in, &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ, lineEnd);
    });
}

Outcome twinScan(const PassInput &input)
{
    return outcomeOfPass<plain::messageCapacity>(input, [](char *message, std::FILE *in, Outcome &outcome) {
        return plain::scanExtents(message, in, outcome.extents);
    });
}

// The twin cannot tell an error from the end of the file where a facet may begin.
Outcome withReadError(Outcome twin)
{
    if (twin.result == 0 && twin.failedToRead) {
        twin.result = -1;
        twin.message = stlReadErrorMessage;
    }
    return twin;
}

RotationMatrix productMatrix(const plain::Rotation &rotation)
{
    RotationMatrix matrix;
    static_assert(sizeof matrix.rows == sizeof rotation.m);
    std::memcpy(matrix.rows, rotation.m, sizeof matrix.rows);
    return matrix;
}

Outcome productRewrite(const PassInput &input, const plain::Placement &p,
                       StlLineEnd lineEnd = StlLineEnd::lineFeed)
{
    return outcomeOfPass<stlMessageCapacity>(
        input, [&p, lineEnd](char *message, std::FILE *in, Outcome &outcome) {
            const Stream out = streamOf("");
            const int result = stl_apply_pass(
                message, in, out.get(), p.scale.x, p.scale.y, p.scale.z, p.offsetBefore.x, p.offsetBefore.y,
                p.offsetBefore.z, p.offsetAfter.x, p.offsetAfter.y, p.offsetAfter.z, productMatrix(p.rotX),
                productMatrix(p.rotY), productMatrix(p.rotZ), lineEnd);
            outcome.output = bytesOf(out);
            return result;
        });
}

Outcome twinRewrite(const PassInput &input, const plain::Placement &placement)
{
    return outcomeOfPass<plain::messageCapacity>(
        input, [&placement](char *message, std::FILE *in, Outcome &outcome) {
            const Stream out = streamOf("");
            const int result = plain::applyPass(message, in, out.get(), placement);
            outcome.output = bytesOf(out);
            return result;
        });
}

void compareOutcomes(Verdict &verdict, const Outcome &product, const Outcome &twin, const std::string &pass)
{
    verdict.expectSame(product.result, twin.result, pass + ": result");
    verdict.expectSameText(product.message, twin.message, pass + ": message");
    verdict.expectSame(product.position, twin.position, pass + ": position of the stream");
    verdict.expectSameText(product.rest, twin.rest, pass + ": rest of the stream");
}

// The outcome where every line feed has a carriage return before it.
void compareLongLines(Verdict &verdict, const Outcome &product, const Outcome &shortLines,
                      const std::string &pass)
{
    verdict.expectSame(product.result, shortLines.result, pass + " with carriage returns: result");
    verdict.expectSameText(product.message, shortLines.message, pass + " with carriage returns: message");
    verdict.expectSameText(product.rest, withCarriageReturns(shortLines.rest),
                           pass + " with carriage returns: rest of the stream");
    verdict.expectSameText(product.output, withCarriageReturns(shortLines.output),
                           pass + " with carriage returns: output");
}

} // namespace

MeshTwins::~MeshTwins()
{
    closeProductFile();
    stl_release_facets(m_product);
}

void MeshTwins::closeProductFile()
{
    if (m_product.file != nullptr)
        std::fclose(m_product.file);
    m_product.file = nullptr;
}

bool MeshTwins::compareReading(Verdict &verdict, std::string_view bytes)
{
    // Some file systems write a file out when it is truncated and written again, which takes its time.
    for (const char *name : {inputName, writtenName, twinWrittenName, longLinesName})
        std::remove(name);
    writeBytes(inputName, bytes);
    const bool isRead = compareEndings(verdict);
    closeProductFile();
    m_twin.closeFile();
    verdict.expectSameText(readBytes(inputName), bytes, "input file after reading");
    if (!isRead) {
        ++m_filesRefused;
        return false;
    }
    ++m_filesRead;
    m_facetsRead += m_twin.stats.facetCount;
    compareMeshes(verdict);
    return true;
}

MeshTwins::Ending MeshTwins::readTwin()
{
    Ending ending;
    m_twin.warnings.clear();
    try {
        plain::initialize(m_twin, inputName);
        plain::allocateFacets(m_twin);
        plain::loadFacets(m_twin, 0, true);
        m_twin.closeFile();
        plain::writeAscii(m_twin, twinWrittenName);
    } catch (const plain::FatalEnd &fatal) {
        ending.text = fatal.what();
    }
    ending.warnings = m_twin.warnings;
    return ending;
}

void MeshTwins::readProduct()
{
    stl_initialize(m_product, inputName);
    stl_allocate_facets(m_product);
    stl_load_facets(m_product, 0, true);
    closeProductFile();
    stl_write_ascii(m_product, writtenName);
}

MeshTwins::Ending MeshTwins::readProductToItsEnd()
{
    Ending ending;
    const CollectedErrors errors;
    try {
        readProduct();
    } catch (const plain::FatalEnd &fatal) {
        ending.text = fatal.what();
    }
    ending.warnings = errors.text();
    return ending;
}

void MeshTwins::expectEndOfAChild(Verdict &verdict, const Ending &twin)
{
    const ProcessOutcome outcome = outcomeOf([this] { readProduct(); });
    verdict.expect(outcome.exited, "the process was ended by a signal");
    verdict.expectSame(outcome.status, 1, "exit status");
    verdict.expectSameText(outcome.standardError, twin.warnings + twin.text, "standard error");
}

// True if neither ended.
bool MeshTwins::compareEndings(Verdict &verdict)
{
    const Ending twin = readTwin();
    if (!twin.text.empty() && m_processEnd == ProcessEnd::inAChild) {
        expectEndOfAChild(verdict, twin);
        return false;
    }
    const Ending product = readProductToItsEnd();
    verdict.expectSameText(product.text, twin.text, "end of the process");
    verdict.expectSameText(product.warnings, twin.warnings, "warnings");
    return product.text.empty() && twin.text.empty();
}

void MeshTwins::compareMeshes(Verdict &verdict) const
{
    compareStatistics(verdict, m_product.stats, m_twin.stats);
    if (m_product.stats.facetCount != m_twin.stats.facetCount)
        return;
    for (std::size_t i = 0; i < m_twin.facets.size(); ++i) {
        if (!identical(m_product.facets[i], m_twin.facets[i])) {
            verdict.expect(false, "facet " + std::to_string(i) + " and perhaps later ones");
            break;
        }
    }
    const std::string text = readBytes(twinWrittenName);
    verdict.expectSameText(readBytes(writtenName), text, "written text");
    verdict.expect(stl_write_ascii_checked(m_product, longLinesName, StlLineEnd::carriageReturnAndLineFeed),
                   "the text is not written with carriage returns");
    verdict.expectSameText(readBytes(longLinesName), withCarriageReturns(text),
                           "written text with carriage returns");
}

bool compareScan(Verdict &verdict, const PassInput &input)
{
    const Outcome product = productScan(input);
    const Outcome twin = withReadError(twinScan(input));
    compareOutcomes(verdict, product, twin, "scan");
    compareExtents(verdict, product.extents, twin.extents);
    const PassInput longLines = withLongLines(input);
    if (canBeOpened(longLines)) {
        const Outcome other = productScan(longLines, StlLineEnd::carriageReturnAndLineFeed);
        compareLongLines(verdict, other, product, "scan");
        compareExtents(verdict, other.extents, product.extents);
    }
    return twin.result == 0;
}

bool compareRewrite(Verdict &verdict, const PassInput &input, const plain::Placement &placement)
{
    const Outcome product = productRewrite(input, placement);
    const Outcome twin = withReadError(twinRewrite(input, placement));
    compareOutcomes(verdict, product, twin, "rewriting");
    verdict.expectSameText(product.output, twin.output, "rewriting: output");
    const PassInput longLines = withLongLines(input);
    if (canBeOpened(longLines)) {
        const Outcome other = productRewrite(longLines, placement, StlLineEnd::carriageReturnAndLineFeed);
        compareLongLines(verdict, other, product, "rewriting");
    }
    return twin.result == 0;
}

void compareExtents(Verdict &verdict, const plain::Extents &product, const plain::Extents &twin)
{
    verdict.expectSameOrBothNan(product.minX, twin.minX, "minX");
    verdict.expectSameOrBothNan(product.maxX, twin.maxX, "maxX");
    verdict.expectSameOrBothNan(product.minY, twin.minY, "minY");
    verdict.expectSameOrBothNan(product.maxY, twin.maxY, "maxY");
    verdict.expectSameOrBothNan(product.minZ, twin.minZ, "minZ");
    verdict.expectSameOrBothNan(product.maxZ, twin.maxZ, "maxZ");
}
