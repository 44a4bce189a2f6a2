#include "tests/support/RecordingReporter.h"

#include "transform/RunPipeline.h"

void RecordingReporter::record(const char *kind, const QString &text)
{
    reports.push_back(kind + text.toStdString());
    if (whenReported)
        whenReported(reports.back());
}

Reports reportsOfRun(const TransformParameters &parameters, const std::string &inputPath,
                     const std::string &outputPath)
{
    RecordingReporter reporter;
    RunPipeline pipeline(reporter);
    pipeline.run(parameters, QString::fromStdString(inputPath), QString::fromStdString(outputPath));
    return reporter.reports;
}

std::string finishedReport(const std::string &outputName)
{
    return "finished: Calculation finished successfully.  Output written to: " + outputName;
}

std::string linesOf(const Reports &reports)
{
    std::string lines;
    for (const std::string &report : reports)
        lines += report + "\n";
    return lines;
}
