#include "cli/Reports.h"

#include "cli/Complaints.h"
#include "cli/StandardError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

std::string shortNumber(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.7g", value);
    return text;
}

std::string range(const Extent &extent) { return shortNumber(extent.min) + ".." + shortNumber(extent.max); }

std::string padded(std::string text, std::size_t width)
{
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

QString jsonText(const std::string &bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

QJsonArray jsonRange(const Extent &extent) { return {extent.min, extent.max}; }

QJsonObject jsonExtents(const std::array<Extent, 3> &extents)
{
    return {{"x", jsonRange(extents[0])}, {"y", jsonRange(extents[1])}, {"z", jsonRange(extents[2])}};
}

std::string line(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

} // namespace

std::string summaryLine(const RunSummary &s)
{
    std::string text = visibleName(s.input) + " -> " + visibleName(s.output) + ": " +
                       std::to_string(s.counts.facets) + " facets, " + std::to_string(s.counts.lines) +
                       " lines";
    for (int axis = 0; axis < axisCount && s.counts.facets > 0; ++axis) {
        const auto i = static_cast<std::size_t>(axis);
        text += std::string(", ") + axisLetters[axis] + " " + range(s.before[i]) + " -> " + range(s.after[i]);
    }
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.3f", s.seconds);
    return text + ", " + seconds + " s\n";
}

std::string summaryJson(const RunSummary &s)
{
    QJsonObject object{{"input", jsonText(s.input)},
                       {"output", jsonText(s.output)},
                       {"facets", static_cast<double>(s.counts.facets)},
                       {"lines", static_cast<double>(s.counts.lines)},
                       {"seconds", s.seconds}};
    if (s.counts.facets > 0) {
        object["before"] = jsonExtents(s.before);
        object["after"] = jsonExtents(s.after);
    }
    return line(object);
}

std::string factsText(const std::string &file, const MeshFacts &facts)
{
    std::string text = visibleName(file) + "\n  type    " + (facts.isBinary ? "binary" : "ASCII") +
                       "\n  facets  " + std::to_string(facts.facetCount) + "\n";
    for (int axis = 0; axis < axisCount && facts.facetCount > 0; ++axis) {
        const Extent &extent = facts.extents[static_cast<std::size_t>(axis)];
        text += std::string("  ") + axisLetters[axis] + "       " + padded(range(extent), 24) + "  length " +
                shortNumber(extent.max - extent.min) + "\n";
    }
    return text + "  label   " + visibleName(facts.label) + "\n";
}

std::string factsJson(const std::string &file, const MeshFacts &facts)
{
    QJsonObject object{{"file", jsonText(file)},
                       {"type", facts.isBinary ? "binary" : "ASCII"},
                       {"facets", static_cast<double>(facts.facetCount)},
                       {"label", jsonText(facts.label)}};
    if (facts.facetCount > 0) {
        object["extents"] = jsonExtents(facts.extents);
        QJsonObject lengths;
        for (int axis = 0; axis < axisCount; ++axis) {
            const Extent &extent = facts.extents[static_cast<std::size_t>(axis)];
            lengths[QString(QLatin1Char(axisLetters[axis]))] = extent.max - extent.min;
        }
        object["lengths"] = lengths;
    }
    return line(object);
}

void printToStandardOutput(const std::string &text)
{
    const bool isWritten = std::fputs(text.c_str(), stdout) >= 0;
    if (std::fflush(stdout) != 0 || !isWritten)
        throw Failure("standard output", std::strerror(errno));
}
