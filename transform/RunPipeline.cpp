#include "transform/RunPipeline.h"

#include "stl/StlMessages.h"
#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "transform/PathText.h"
#include "transform/RunFiles.h"
#include "transform/RunLogText.h"
#include "transform/RunReporter.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>

RunPipeline::RunPipeline(RunReporter &reporter)
    : m_reporter(reporter)
{}

RunPipeline::~RunPipeline() { stl_release_facets(m_mesh); }

void RunPipeline::run(const TransformParameters &parameters, const QString &inputPath,
                      const QString &outputPath)
{
    try {
        runToTheEnd(parameters, inputPath, outputPath);
    } catch (const std::bad_alloc &) {
        errno = ENOMEM;
        stlWarnWithSystemError("stl_initialize");
        reportMissingMemory();
    }
    closeInput();
    m_logFile.reset();
}

void RunPipeline::runToTheEnd(const TransformParameters &parameters, const QString &inputPath,
                              const QString &outputPath)
{
    if (!loadMesh(inputPath))
        return;
    const bool written = stl_write_ascii_checked(m_mesh, temporaryFileName);
    Stream input = prepare();
    if (!written) { // The output may be the input, so it must not be opened.
        m_reporter.error(stlWriteErrorMessage);
        return;
    }
    // Deliberate: the output is created or emptied even if the preparation has failed.
    Stream output = openOutput(outputPath);
    if (input && output && transform(parameters, std::move(input), std::move(output)))
        finish(outputPath);
}

bool RunPipeline::loadMesh(const QString &inputPath)
{
    stl_initialize(m_mesh, inputPath.toUtf8().constData());
    stl_allocate_facets(m_mesh);
    stl_load_facets(m_mesh, 0, true);
    closeInput();
    if (m_mesh.facets != nullptr)
        return true;
    reportMissingMemory();
    return false;
}

void RunPipeline::closeInput()
{
    if (m_mesh.file != nullptr)
        std::fclose(m_mesh.file);
    m_mesh.file = nullptr;
}

void RunPipeline::reportMissingMemory()
{
    m_reporter.error(QStringLiteral("stl_initialize: ") + QString::fromLocal8Bit(std::strerror(ENOMEM)));
}

Stream RunPipeline::prepare()
{
    QFile emptied(logFileName);
    if (!emptied.open(QIODevice::WriteOnly)) {
        m_reporter.logNotEmptied(QStringLiteral("Failed to open log file.\nError Details: ") +
                                 emptied.errorString());
        return nullptr;
    }
    Stream input(std::fopen(temporaryFileName, "rb"));
    if (!input) {
        m_reporter.error(QStringLiteral("Invalid input file."));
        return nullptr;
    }
    openLog();
    writeLog(runLogHeader());
    return input;
}

void RunPipeline::openLog()
{
    m_logFile.reset(std::fopen(logFileName, "a"));
    if (m_logFile)
        m_logWasOpened = true;
    else // Deliberate: users know the text with its placeholder. The run goes on without a log.
        m_reporter.error(QStringLiteral("Cannot open logfile: %s"));
}

Stream RunPipeline::openOutput(const QString &outputPath)
{
    Stream output(std::fopen(outputPath.toUtf8().constData(), "w+b"));
    if (!output)
        m_reporter.error(QStringLiteral("Unable to open output file."));
    return output;
}

bool RunPipeline::transform(const TransformParameters &p, Stream input, Stream output)
{
    writeLog(runLogParameters(p));
    char message[stlMessageCapacity] = "\n";
    m_transformer = std::make_unique<MeshTransformer>(p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB,
                                                      p.xOfsA, p.yOfsA, p.zOfsA);
    // Both streams are in binary mode, so the line ends are ours to make.
    const int result = stl_transform(
        *m_transformer, message, input.release(), output.release(), p.xRotate, p.yRotate, p.zRotate, p.xAngle,
        p.yAngle, p.zAngle, p.xSetL, p.ySetL, p.zSetL, p.xLength, p.yLength, p.zLength, p.xSet0, p.ySet0,
        p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX, p.zSameY, stlSystemLineEnd);
    m_message = message;
    if (result != 0)
        m_reporter.error(QString::fromUtf8(message));
    return result == 0;
}

void RunPipeline::finish(const QString &outputPath)
{
    writeLog(runLogOutcome(m_message));
    closeLog();
    QFile::remove(temporaryFileName);
    m_reporter.finished(QStringLiteral("Calculation finished successfully.  Output written to: ") +
                        lastPathPart(outputPath));
}

void RunPipeline::writeLog(const std::string &text)
{
    if (m_logFile)
        std::fputs(text.c_str(), m_logFile.get());
}

void RunPipeline::closeLog()
{
    if (!m_logFile)
        return;
    // fclose does not report an earlier failed write.
    const bool complete = std::ferror(m_logFile.get()) == 0;
    if (std::fclose(m_logFile.release()) != 0 || !complete)
        m_reporter.error(QStringLiteral("Cannot close logfile \"%1\".\n").arg(logFileName));
}
