#include "cli/RunLogReader.h"

#include "cli/Complaints.h"
#include "cli/StrictNumber.h"
#include "transform/RunLogText.h"

#include <cmath>

namespace {

std::string withPlainLineEnds(std::string_view bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n')
            text += bytes[i];
    }
    return text;
}

constexpr const char *notALog = "is not the log of a run";

// Walks over the text of a log; throws what it was given for a text that goes on in another way.
class LogCursor {
public:
    LogCursor(std::string_view text, const std::string &log)
        : m_rest(text),
          m_log(log)
    {}

    bool skip(std::string_view expected)
    {
        if (m_rest.substr(0, expected.size()) != expected)
            return false;
        m_rest.remove_prefix(expected.size());
        return true;
    }

    void need(std::string_view expected)
    {
        if (!skip(expected))
            throw Failure(m_log, notALog);
    }

    void needEnd()
    {
        if (!m_rest.empty())
            throw Failure(m_log, notALog);
    }

    // A number after its name and in front of a text.
    double number(const std::string &name, std::string_view after, std::vector<std::string> &warnings)
    {
        need(name + " = ");
        const std::string word(m_rest.substr(0, m_rest.find_first_of(" \n")));
        m_rest.remove_prefix(word.size());
        need(after);
        const std::optional<double> value = strictNumber(word);
        if (!value)
            throw Failure(m_log, name + " = " + printable(word) + " cannot be repeated");
        warnOfDecimals(name, word, *value, warnings);
        return *value;
    }

    long count()
    {
        std::size_t size = 0;
        while (size < m_rest.size() && m_rest[size] >= '0' && m_rest[size] <= '9')
            ++size;
        const std::optional<double> value = strictNumber(m_rest.substr(0, size));
        const bool hasLeadingZero = size > 1 && m_rest.front() == '0';
        if (!value || hasLeadingZero || *value > 1e15)
            throw Failure(m_log, notALog);
        m_rest.remove_prefix(size);
        return static_cast<long>(*value);
    }

    std::string_view rest() const { return m_rest; }

private:
    // A log may hold anything, also in the place of a number.
    static std::string printable(const std::string &word)
    {
        std::string text = word.substr(0, 40);
        for (char &character : text) {
            if (character < ' ' || character > '~')
                character = '?';
        }
        return text;
    }

    static void warnOfDecimals(const std::string &name, const std::string &word, double value,
                               std::vector<std::string> &warnings)
    {
        const bool fillsAllDecimals = word.back() != '0';
        const bool isCutOff = value == 0.0 && std::signbit(value);
        if (fillsAllDecimals || isCutOff)
            warnings.push_back("Warning: " + name + " = " + word + " may have had more than six decimals");
    }

    std::string_view m_rest;
    const std::string &m_log;
};

constexpr std::string_view gap = "     ";

void readValues(LogCursor &log, LoggedRun &run)
{
    for (int axis = 0; axis < axisCount; ++axis) {
        const AxisFields &fields = fieldsOf(axis);
        const std::string letter(1, axisLetters[axis]);
        run.parameters.*fields.scale = log.number(letter + "Scl", gap, run.warnings);
        run.parameters.*fields.offsetBefore = log.number(letter + "OfsB", gap, run.warnings);
        run.parameters.*fields.offsetAfter = log.number(letter + "OfsA", "\n\n", run.warnings);
    }
}

// The blocks of rotations and of lengths: a line for each axis that has the value, and an end if there was
// one.
void readBlock(LogCursor &log, LoggedRun &run, const std::string &before, const std::string &after,
               int TransformParameters::*AxisFields::*flag, double TransformParameters::*AxisFields::*value)
{
    bool isThere = false;
    for (int axis = 0; axis < axisCount; ++axis) {
        std::string name = before;
        name.append(1, axisLetters[axis]).append(after);
        if (log.rest().substr(0, name.size() + 1) != name + " ")
            continue;
        run.parameters.*(fieldsOf(axis).*value) = log.number(name, "     \n", run.warnings);
        run.parameters.*(fieldsOf(axis).*flag) = 1;
        isThere = true;
    }
    if (isThere)
        log.need("\n\n");
}

void readFlags(LogCursor &log, LoggedRun &run)
{
    if (!log.skip("Flags:  \n\n"))
        return;
    for (int axis = 0; axis < axisCount; ++axis) {
        if (log.skip(std::string("   ") + axisLetters[axis] + "Set0\n\n"))
            run.parameters.*fieldsOf(axis).originIsSet = 1;
    }
    while (log.skip("   xSamey\n\n"))
        ++run.sameLengths;
}

// A failed run has none.
void readOutcome(LogCursor &log, LoggedRun &run)
{
    if (log.rest().empty())
        return;
    RunCounts counts;
    log.need("\n\nNumber lines read from stl file = ");
    counts.lines = log.count();
    log.need("\nNumber triangles read from stl file = ");
    counts.facets = log.count();
    log.need("\n\n\nCalculation finished successfully.\n\n");
    log.needEnd();
    run.counts = counts;
}

void refuseNegativeLengths(const LoggedRun &run, const std::string &log)
{
    for (int axis = 0; axis < axisCount; ++axis) {
        if (run.parameters.*fieldsOf(axis).length < 0.0)
            throw Failure(log, std::string(1, axisLetters[axis]) + "setL: a length cannot be negative");
    }
}

// The parameters with as many same-length flags as the log counts; all of them are written alike.
TransformParameters withSameLengths(TransformParameters p, int count)
{
    int *const flags[] = {&p.xSameY, &p.xSameZ, &p.ySameX, &p.ySameZ, &p.zSameX, &p.zSameY};
    for (int i = 0; i < count && i < 6; ++i)
        *flags[i] = 1;
    return p;
}

} // namespace

LoggedRun readRunLog(std::string_view bytes, const std::string &log)
{
    const std::string text = withPlainLineEnds(bytes);
    LogCursor cursor(text, log);
    cursor.need(runLogHeader());
    cursor.need("\nCalculation started with following parameters:  \n\n");
    LoggedRun run;
    readValues(cursor, run);
    readBlock(cursor, run, "rotateabout", "", &AxisFields::isRotated, &AxisFields::angle);
    readBlock(cursor, run, "", "setL", &AxisFields::lengthIsSet, &AxisFields::length);
    readFlags(cursor, run);
    cursor.need("\n\n");
    readOutcome(cursor, run);
    // The last word is the writer's: whatever it would write in another way was written by somebody else.
    LogCursor again(text, log);
    again.need(runLogHeader() + runLogParameters(withSameLengths(run.parameters, run.sameLengths)));
    refuseNegativeLengths(run, log);
    return run;
}
