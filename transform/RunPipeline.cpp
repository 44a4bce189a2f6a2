#include "transform/RunPipeline.h"

#include "stl/StlPasses.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "transform/PathText.h"
#include "transform/RunFiles.h"
#include "transform/RunLogText.h"
#include "transform/RunReporter.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <new>

namespace {

QString systemText(int error) { return QString::fromLocal8Bit(std::strerror(error)); }

} // namespace

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
        m_reporter.error("stl_initialize: " + systemText(ENOMEM));
    }
    closeInput();
    m_logFile.reset();
}

void RunPipeline::runToTheEnd(const TransformParameters &parameters, const QString &inputPath,
                              const QString &outputPath)
{
    std::optional<Stream> input = prepareInput(inputPath);
    if (!input)
        return;
    // The output is created or emptied even if the preparation has failed.
    Stream output = openOutput(outputPath);
    if (*input && output && transform(parameters, std::move(*input), std::move(output)))
        finish(outputPath);
}

std::optional<Stream> RunPipeline::prepareInput(const QString &inputPath)
{
    if (!loadMesh(inputPath) || !writeTemporaryFile())
        return std::nullopt;
    return openTemporaryFileAndLog();
}

bool RunPipeline::loadMesh(const QString &inputPath)
{
    stl_initialize(m_mesh, inputPath.toUtf8().constData());
    errno = 0;
    // A pipe has no size, so it would count as an empty mesh.
    if (std::fseek(m_mesh.file, 0, SEEK_CUR) != 0) {
        m_reporter.error("stl_initialize: " + systemText(errno));
        return false;
    }
    errno = 0;
    stl_allocate_facets(m_mesh);
    const int allocationError = errno;
    stl_load_facets(m_mesh, 0, true);
    const bool readFailed = std::ferror(m_mesh.file) != 0;
    closeInput();
    if (m_mesh.facets == nullptr) {
        m_reporter.error("stl_initialize: " + systemText(allocationError));
        return false;
    }
    // A directory can be opened but not read, and counts as an empty mesh.
    if (readFailed && !QFileInfo(inputPath).isDir()) {
        m_reporter.error(QStringLiteral("\nError reading stl file\n"));
        return false;
    }
    return true;
}

void RunPipeline::closeInput()
{
    if (m_mesh.file != nullptr)
        std::fclose(m_mesh.file);
    m_mesh.file = nullptr;
}

bool RunPipeline::writeTemporaryFile()
{
    if (stl_write_ascii_checked(m_mesh, temporaryFileName))
        return true;
    m_reporter.error(QStringLiteral("\nError writing stl file\n"));
    return false;
}

Stream RunPipeline::openTemporaryFileAndLog()
{
    QFile emptied(logFileName);
    if (!emptied.open(QIODevice::WriteOnly)) {
        m_reporter.logNotEmptied(QStringLiteral("Failed to open log file.\nError Details: ") +
                                 emptied.errorString());
        return nullptr;
    }
    Stream input(std::fopen(temporaryFileName, "r"));
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
    else // Deliberate: the placeholder stands in the text as users know it. The run goes on without a log.
        m_reporter.error(QStringLiteral("Cannot open logfile: %s"));
}

Stream RunPipeline::openOutput(const QString &outputPath)
{
    Stream output(std::fopen(outputPath.toUtf8().constData(), "w+"));
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
    const int result = stl_transform(*m_transformer, message, input.release(), output.release(), p.xRotate,
                                     p.yRotate, p.zRotate, p.xAngle, p.yAngle, p.zAngle, p.xSetL, p.ySetL,
                                     p.zSetL, p.xLength, p.yLength, p.zLength, p.xSet0, p.ySet0, p.zSet0,
                                     p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX, p.zSameY);
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
    // What got lost before the end is not told by closing.
    const bool complete = std::ferror(m_logFile.get()) == 0;
    if (std::fclose(m_logFile.release()) != 0 || !complete)
        m_reporter.error(QStringLiteral("Cannot close logfile \"%1\".\n").arg(logFileName));
}
