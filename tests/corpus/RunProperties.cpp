#include "tests/corpus/RunProperties.h"

#include "stl/StlLines.h"
#include "stl/StlNumberText.h"
#include "stl/StlPasses.h"
#include "tests/corpus/RunOptions.h"
#include "tests/support/SameBytes.h"
#include "tests/support/StlComparison.h"
#include "tests/support/TextFile.h"
#include "tests/support/TransformComparison.h"
#include "transform/RunFiles.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

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
    const Stream in = openStream(temporaryFileName, "r");
    char message[stlMessageCapacity] = "";
    plain::Extents e;
    verdict.expectSame(
        stl_scan_extents(message, in.get(), &e.minX, &e.maxX, &e.minY, &e.maxY, &e.minZ, &e.maxZ), 0,
        "scan of a temporary file that was just written");
    bool bracketed = true;
    for (std::int32_t i = 0; i < mesh.stats.facetCount; ++i)
        for (const StlVertex &corner : mesh.facets[i].vertex)
            bracketed = bracketed && brackets(e.minX, e.maxX, corner.x) &&
                        brackets(e.minY, e.maxY, corner.y) && brackets(e.minZ, e.maxZ, corner.z);
    verdict.expect(bracketed, "the extents do not bracket every finite coordinate");
}

long occurrences(std::string_view text, std::string_view what)
{
    long count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

// Needs lines that fit the line buffer and hold no zero byte.
void expectTotalsOfTheOutput(Verdict &verdict, const TransformOutcome &outcome)
{
    const long lines = occurrences(outcome.output, "\n");
    const long triangles = occurrences(outcome.output, "endfacet");
    const std::string totals = TransformOutcome().message +
                               "\nNumber lines read from stl file = " + std::to_string(lines) +
                               "\nNumber triangles read from stl file = " + std::to_string(triangles) + "\n";
    verdict.expectSameText(outcome.message, totals, "totals of the lines written");
}

// The number as text, against the C library.
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
                   "a written number is not read");
    verdict.expectSameOrBothNan(double{static_cast<float>(back)}, double{value},
                                "a written float comes back");
}

void checkReading(Verdict &verdict, const std::string &word)
{
    double expected = 1234.5;
    double value = 1234.5;
    const bool isNumber = std::sscanf(word.c_str(), "%lf", &expected) == 1;
    verdict.expectSame(stlReadNumber(word, value), isNumber, "a word is a number");
    verdict.expect(sameBytes(value, expected), "the value of a word");
}

// Words hold neither blanks nor zero bytes and are no longer than a line.
std::string firstWord(std::string_view bytes)
{
    constexpr std::size_t longest = stlLineCapacity - 1;
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
    Verdict verdict;
    MeshTwins meshes(ProcessEnd::asException);
    if (!meshes.compareReading(verdict, bytes))
        return verdict.text();
    std::filesystem::rename(MeshTwins::writtenName, temporaryFileName);

    expectBracketedCorners(verdict, meshes.product());
    const RunOptions options(bytes);
    const TransformOutcome outcome = compareTransformation(verdict, options.placement, options.request);
    verdict.expectSame(outcome.result, 0, "transformation of a temporary file that was just written");
    expectTotalsOfTheOutput(verdict, outcome);
    verdict.expectSameText(readBytes(MeshTwins::inputName), bytes, "input file after the transformation");
    return verdict.text();
}

std::string checkTemporaryFile(std::string_view bytes)
{
    Verdict verdict;
    PassInput input;
    input.text = bytes;
    compareScan(verdict, input);
    writeBytes(temporaryFileName, bytes);
    const RunOptions options(bytes);
    compareTransformation(verdict, options.placement, options.request);
    compareTransformation(verdict, options.placement, {});
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
