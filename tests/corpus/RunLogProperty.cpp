#include "tests/corpus/RunLogProperty.h"

#include "cli/Complaints.h"
#include "cli/RunLogReader.h"
#include "tests/support/Verdict.h"
#include "transform/RunLogText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

const std::string logName = "any.log";

std::string withoutCarriageReturns(std::string_view bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes.substr(i, 2) != "\r\n")
            text += bytes[i];
    }
    return text;
}

void checkComplaint(const Failure &failure, Verdict &verdict)
{
    const std::string text = failure.what();
    verdict.expect(failure.file == logName, "the complaint names another file");
    verdict.expect(!text.empty() && text.size() < 300, "the complaint is empty or endless");
    verdict.expect(std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; }),
                   "the complaint has control characters");
}

// As a run with these values would write it.
std::string writtenAgain(const LoggedRun &run)
{
    TransformParameters p = run.parameters;
    int *const flags[] = {&p.zSameY, &p.zSameX, &p.ySameZ, &p.ySameX, &p.xSameZ, &p.xSameY};
    for (int i = 0; i < run.sameLengths; ++i)
        *flags[i] = 1;
    std::string text = runLogHeader() + runLogParameters(p);
    if (run.counts)
        text += runLogOutcome(
            "\n\nNumber lines read from stl file = " + std::to_string(run.counts->lines) +
            "\nNumber triangles read from stl file = " + std::to_string(run.counts->facets) + "\n");
    return text;
}

void checkRead(const LoggedRun &run, std::string_view bytes, Verdict &verdict)
{
    verdict.expect(run.sameLengths >= 0 && run.sameLengths <= 6, "there are six same lengths");
    if (run.sameLengths >= 0 && run.sameLengths <= 6)
        verdict.expectSameText(writtenAgain(run), withoutCarriageReturns(bytes), "written again");
}

void checkParameters(const TransformParameters &p, Verdict &verdict)
{
    for (int axis = 0; axis < axisCount; ++axis) {
        const AxisFields &fields = fieldsOf(axis);
        for (const double value : {p.*fields.scale, p.*fields.offsetBefore, p.*fields.offsetAfter,
                                   p.*fields.length, p.*fields.angle})
            verdict.expect(std::isfinite(value), "a value is infinite or undefined");
        verdict.expect(p.*fields.scale != 0.0 || p.*fields.lengthIsSet != 0, "a scale is 0");
        verdict.expect(p.*fields.length >= 0.0, "a length is negative");
    }
}

} // namespace

std::string checkRunLog(std::string_view bytes)
{
    Verdict verdict;
    try {
        const LoggedRun run = readRunLog(bytes, logName);
        checkRead(run, bytes, verdict);
        checkParameters(parametersOf(RunValues(), run, logName), verdict);
    } catch (const Failure &failure) {
        checkComplaint(failure, verdict);
    }
    return verdict.text();
}
