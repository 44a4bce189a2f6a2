// A run of the pipeline, for tests that look at what it says and leaves behind.
#pragma once

#include "transform/RunPipeline.h"
#include "transform/RunReporter.h"

#include <string>

// Remembers what the run said, one line each.
class Listener : public RunReporter {
public:
    void error(const QString &text) override { hear("error: ", text); }
    void logNotEmptied(const QString &details) override { hear("error: ", details); }
    void finished(const QString &) override { hear("finished", {}); }

    std::string heard;

protected:
    virtual void hear(const char *kind, const QString &text) { heard += kind + text.toStdString() + "\n"; }
};

inline TransformParameters doubling()
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 2.0;
    return p;
}

inline std::string hearRun(const TransformParameters &parameters, const std::string &input,
                           const std::string &output)
{
    Listener listener;
    RunPipeline pipeline(listener);
    pipeline.run(parameters, QString::fromStdString(input), QString::fromStdString(output));
    return listener.heard;
}
