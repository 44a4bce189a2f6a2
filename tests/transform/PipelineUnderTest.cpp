#include "tests/transform/PipelineUnderTest.h"

#include "transform/RunPipeline.h"
#include "transform/RunReporter.h"

#include <utility>

class RecordingReporter final : public RunReporter {
public:
    void error(const QString &text) override { say("error: ", text); }
    void logNotEmptied(const QString &details) override { say("logNotEmptied: ", details); }
    void finished(const QString &statusText) override { say("finished: ", statusText); }

    std::vector<std::string> said;
    std::function<void(const std::string &)> listener;

private:
    void say(const std::string &kind, const QString &text)
    {
        said.push_back(kind + text.toStdString());
        if (listener)
            listener(said.back());
    }
};

PipelineUnderTest::PipelineUnderTest()
    : m_reporter(std::make_unique<RecordingReporter>()),
      m_pipeline(std::make_unique<RunPipeline>(*m_reporter))
{}

PipelineUnderTest::~PipelineUnderTest() = default;

std::vector<std::string> PipelineUnderTest::run(const TransformParameters &parameters,
                                                const std::string &inputPath, const std::string &outputPath)
{
    m_reporter->said.clear();
    m_pipeline->run(parameters, QString::fromStdString(inputPath), QString::fromStdString(outputPath));
    return m_reporter->said;
}

void PipelineUnderTest::whenSaid(std::function<void(const std::string &)> listener)
{
    m_reporter->listener = std::move(listener);
}

bool PipelineUnderTest::logWasOpened() const { return m_pipeline->logWasOpened(); }
