// What runs report, recorded in order.
#pragma once

#include "transform/RunReporter.h"
#include "transform/TransformParameters.h"

#include <functional>
#include <string>
#include <vector>

// Each is "error: ", "logNotEmptied: " or "finished: ", followed by the text that the user gets.
using Reports = std::vector<std::string>;

class RecordingReporter : public RunReporter {
public:
    void error(const QString &text) override { record("error: ", text); }
    void logNotEmptied(const QString &details) override { record("logNotEmptied: ", details); }
    void finished(const QString &statusText) override { record("finished: ", statusText); }

    Reports reports;
    std::function<void(const std::string &)> whenReported; // gets each report while the run waits

protected:
    virtual void record(const char *kind, const QString &text);
};

// One run of a new pipeline. Paths are UTF-8.
Reports reportsOfRun(const TransformParameters &parameters, const std::string &inputPath,
                     const std::string &outputPath);

// Of a successful run; the name is the last part of the output path.
std::string finishedReport(const std::string &outputName);

// Each report on a line of its own.
std::string linesOf(const Reports &reports);
