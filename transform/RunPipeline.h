// One run from the input file to the output file, with its log. Needs no window.
//
// Its own files are in the current directory (RunFiles.h): "_tmp_stl_", the input as ASCII STL, is deleted
// after success; "meshvane.log" describes the latest run.
#pragma once

#include "stl/StlMesh.h"
#include "stl/Stream.h"
#include "transform/MeshTransformer.h"
#include "transform/TransformParameters.h"

#include <QString>

#include <memory>
#include <string>

class RunReporter;

class RunPipeline {
public:
    // The reporter must outlive the pipeline.
    explicit RunPipeline(RunReporter &reporter);
    ~RunPipeline();
    RunPipeline(const RunPipeline &) = delete;
    RunPipeline &operator=(const RunPipeline &) = delete;

    // Returns when the run is over; everything the user must know goes to the reporter. Ends the process if
    // the input cannot be read or has the wrong size, or if "_tmp_stl_" cannot be created.
    void run(const TransformParameters &parameters, const QString &inputPath, const QString &outputPath);

    // True once any run has opened its log, whatever has become of the log since.
    bool logWasOpened() const { return m_logWasOpened; }

private:
    void runToTheEnd(const TransformParameters &parameters, const QString &inputPath,
                     const QString &outputPath);

    // The steps of a run, in their order. Each reports its failure and then returns false or null.
    bool loadMesh(const QString &inputPath);
    Stream prepare(); // empties the log, opens the temporary file for reading, opens the log and heads it
    Stream openOutput(const QString &outputPath);
    bool transform(const TransformParameters &parameters, Stream input, Stream output);
    void finish(const QString &outputPath);

    void closeInput();
    void reportMissingMemory();
    void openLog();

    void writeLog(const std::string &text);
    void closeLog();

    RunReporter &m_reporter;
    StlMesh m_mesh;
    Stream m_logFile;
    bool m_logWasOpened = false;
    std::unique_ptr<MeshTransformer> m_transformer;
    std::string m_message;
};
