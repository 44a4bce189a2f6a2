// A pipeline together with a reporter that remembers what the run said.
#pragma once

#include "transform/TransformParameters.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class RunPipeline;
class RecordingReporter;

class PipelineUnderTest {
public:
    PipelineUnderTest();
    ~PipelineUnderTest();
    PipelineUnderTest(const PipelineUnderTest &) = delete;
    PipelineUnderTest &operator=(const PipelineUnderTest &) = delete;

    // Paths are UTF-8. Returns what was said: "error: ", "logNotEmptied: " or "finished: " and the text.
    std::vector<std::string> run(const TransformParameters &parameters, const std::string &inputPath,
                                 const std::string &outputPath);

    // Is called while something is being said.
    void whenSaid(std::function<void(const std::string &)> listener);

    bool logWasOpened() const;

private:
    std::unique_ptr<RecordingReporter> m_reporter;
    std::unique_ptr<RunPipeline> m_pipeline;
};
