// One run from the input file to the output file, with its log. Needs no window.
//
// Its files lie in the current directory (RunFiles.h): "_tmp_stl_", the input as ASCII STL, is deleted after
// success; "meshvane.log" tells of the latest run.
#pragma once

#include "stl/StlMesh.h"
#include "stl/Stream.h"
#include "transform/MeshTransformer.h"
#include "transform/TransformParameters.h"

#include <QString>

#include <memory>
#include <optional>

class RunReporter;

class RunPipeline {
public:
    // The reporter must outlive the pipeline.
    explicit RunPipeline(RunReporter &reporter);
    ~RunPipeline();
    RunPipeline(const RunPipeline &) = delete;
    RunPipeline &operator=(const RunPipeline &) = delete;

    // Runs to the end before it returns; everything the user must know goes to the reporter. Ends the process
    // if the input cannot be opened or has the wrong size, or if "_tmp_stl_" cannot be created.
    void run(const TransformParameters &parameters, const QString &inputPath, const QString &outputPath);

    // True from the first run that has opened its log on, whatever became of that log since.
    bool logWasOpened() const { return m_logWasOpened; }

private:
    void runToTheEnd(const TransformParameters &parameters, const QString &inputPath,
                     const QString &outputPath);

    // The temporary file open for reading, null if it or the log could not be had, or nothing at all if the
    // mesh did not get into the temporary file: then the run must end before it touches the output file,
    // which may be the input file.
    std::optional<Stream> prepareInput(const QString &inputPath);
    bool loadMesh(const QString &inputPath);
    void closeInput();
    bool writeTemporaryFile();
    Stream openTemporaryFileAndLog();
    void openLog();

    Stream openOutput(const QString &outputPath);
    bool transform(const TransformParameters &parameters, Stream input, Stream output);
    void finish(const QString &outputPath);

    void writeLog(const std::string &text);
    void closeLog();

    RunReporter &m_reporter;
    StlMesh m_mesh;
    Stream m_logFile;
    bool m_logWasOpened = false;
    std::unique_ptr<MeshTransformer> m_transformer;
    std::string m_message;
};
