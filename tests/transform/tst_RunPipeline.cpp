#include "stl/StlLimits.h"
#include "tests/support/CaseNames.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/MissingMemory.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/RecordingReporter.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/RunParameters.h"
#include "tests/support/RunTexts.h"
#include "tests/support/Sanitizers.h"
#include "tests/support/StandardErrorCapture.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "tests/support/TransformCall.h"
#include "transform/RunFiles.h"
#include "transform/RunLogText.h"
#include "transform/RunPipeline.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using P = TransformParameters;
using Names = std::vector<std::string>;

// The box in the temporary file, and in the output of a run that changes nothing.
const std::string writtenBox = writtenMesh(box);
const std::string emptyMesh = temporaryFileOf("");
const Reports success = {finishedReport("out.stl")};

class RunPipelineTest : public ::testing::Test {
protected:
    void SetUp() override { writeBytes("in.stl", boxFile()); }

    // However a run ends, it leaves no stream open.
    Reports run(const std::string &inputPath = "in.stl", const std::string &outputPath = "out.stl")
    {
        const long descriptors = openDescriptors();
        Reports reports = runUnchecked(inputPath, outputPath);
        EXPECT_EQ(openDescriptors(), descriptors);
        return reports;
    }

    Reports runWithOpenFiles(int more)
    {
        const long descriptors = openDescriptors();
        openFiles = nullptr; // the sanitizer's check of the first access to a member opens a pipe
        {
            ResourceLimit limit = ResourceLimit::ofOpenFiles(more);
            openFiles = &limit;
            runUnchecked("in.stl", "out.stl");
        }
        EXPECT_EQ(openDescriptors(), descriptors);
        return reporter.reports;
    }

    void expectFilesOfASuccessfulRun()
    {
        EXPECT_EQ(folder.entries(), (Names{"in.stl", logFileName, "out.stl"}));
        EXPECT_EQ(readBytes("out.stl"), writtenBox);
        EXPECT_EQ(readBytes(logFileName), runLog(unchanging()));
    }

    TemporaryFolder folder;
    TransformParameters parameters = unchanging();
    RecordingReporter reporter;
    RunPipeline pipeline{reporter};
    ResourceLimit *openFiles = nullptr; // while runWithOpenFiles runs

private:
    Reports runUnchecked(const std::string &inputPath, const std::string &outputPath)
    {
        reporter.reports.clear();
        pipeline.run(parameters, QString::fromStdString(inputPath), QString::fromStdString(outputPath));
        return reporter.reports;
    }
};

// Users find these files, so their names are fixed.
static_assert(std::string_view(temporaryFileName) == "_tmp_stl_");
static_assert(std::string_view(logFileName) == "meshvane.log");

// ------------------------------------------------------------------------------------------ successful runs

TEST_F(RunPipelineTest, ASuccessfulRunLeavesOutputAndLogOnlyBeforeItReports)
{
    reporter.whenReported = [this](const std::string &) { expectFilesOfASuccessfulRun(); };
    EXPECT_EQ(run(), success);
    EXPECT_EQ(readBytes("in.stl"), boxFile());
}

TEST_F(RunPipelineTest, OptionsAreAppliedToTheOutputAndLoggedAsEntered)
{
    parameters = with(parameters, {{&P::xScl, 7}, {&P::xOfsB, 100}, {&P::xOfsA, 5}, {&P::xSet0, 1}});
    parameters = with(parameters, {{&P::ySameZ, 1}, {&P::xSetL, 1}, {&P::xLength, 20}, {&P::zRotate, 1}});
    EXPECT_EQ(run(), success);
    EXPECT_EQ(readBytes("out.stl"), writtenMesh({{0, 0, 1}, {{5, 1, 3}, {25, 11, 3}, {5, 1, 33}}}));
    EXPECT_EQ(readBytes(logFileName), runLog(parameters));
}

TEST_F(RunPipelineTest, ABinaryFileTakesTheSameSteps)
{
    const BinaryFacet facet = {{0.0F, -1.0F, -0.0F, 0.5F, 1.0F, 2.0F, -3.0F, 1e-40F, 5.0F, 6.0F, 7.0F, 1e30F},
                               {255, 255}};
    writeBytes("in.stl", binaryStl("a label that is not written", {facet, facet, facet, facet}));
    EXPECT_EQ(run(), success);
    const std::string rewritten =
        writtenFacet({{0, -1, -0.0}, {{0.5, 1, 2}, {-3, double{1e-40F}, 5}, {6, 7, double{1e30F}}}});
    EXPECT_EQ(readBytes("out.stl"), temporaryFileOf(rewritten + rewritten + rewritten + rewritten));
    EXPECT_EQ(readBytes(logFileName), runLog(parameters, 30, 4));
}

TEST_F(RunPipelineTest, TheSecondRunReplacesOutputAndLogOfTheFirst)
{
    parameters.xScl = 123456.0;
    EXPECT_EQ(run(), success);
    writeBytes("in.stl", "solid empty\n");
    parameters = unchanging();
    EXPECT_EQ(run(), success);
    EXPECT_EQ(folder.entries(), (Names{"in.stl", logFileName, "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), emptyMesh);
    EXPECT_EQ(readBytes(logFileName), runLog(parameters, 2, 0));
}

TEST_F(RunPipelineTest, LeftoversOfEarlierRunsAreReplaced)
{
    for (const char *name : {temporaryFileName, "out.stl", logFileName})
        writeBytes(name, std::string(5000, 'x'));
    EXPECT_EQ(run(), success);
    expectFilesOfASuccessfulRun();
}

TEST_F(RunPipelineTest, OnlyTheLastPartOfTheOutputPathIsNamed)
{
    fs::create_directories("some/folder");
    EXPECT_EQ(run("in.stl", "some/folder/part.stl"), Reports{finishedReport("part.stl")});
    EXPECT_EQ(readBytes("some/folder/part.stl"), writtenBox);
    EXPECT_EQ(run((folder.path() / "in.stl").string(), (folder.path() / "a %1 %s.stl").string()),
              Reports{finishedReport("a %1 %s.stl")});
    EXPECT_EQ(readBytes("a %1 %s.stl"), writtenBox);
}

TEST_F(RunPipelineTest, TheProgramsOwnFilesAreInTheCurrentFolder)
{
    fs::create_directory("meshes");
    fs::rename("in.stl", "meshes/in.stl");
    EXPECT_EQ(run("meshes/in.stl", "meshes/out.stl"), success);
    EXPECT_EQ(folder.entries(), (Names{"meshes", logFileName}));
}

TEST_F(RunPipelineTest, TheInputFileMayBeTheOutputFile)
{
    parameters.xScl = 2.0;
    EXPECT_EQ(run("in.stl", "in.stl"), Reports{finishedReport("in.stl")});
    EXPECT_EQ(folder.entries(), (Names{"in.stl", logFileName}));
    EXPECT_EQ(readBytes("in.stl"), writtenMesh({{0, 0, 1}, {{2, 2, 3}, {22, 22, 3}, {2, 2, 33}}}));
}

TEST_F(RunPipelineTest, ATemporaryFileLeftBehindCanBeTheInputAndIsDeletedAfterwards)
{
    fs::rename("in.stl", temporaryFileName);
    EXPECT_EQ(run(temporaryFileName), success);
    EXPECT_EQ(folder.entries(), (Names{logFileName, "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), writtenBox);
}

TEST_F(RunPipelineTest, AnEmptyFileIsAMeshWithoutFacets)
{
    writeBytes("in.stl", "");
    EXPECT_EQ(run(), success);
    EXPECT_EQ(readBytes("out.stl"), emptyMesh);
}

TEST_F(RunPipelineTest, AWrongCountInABinaryFileIsAWarningOnStandardErrorOnly)
{
    writeBytes("in.stl", binaryStl("label", 0, differentFacets(4)));
    const StandardErrorCapture standardError;
    EXPECT_EQ(run(), success);
    EXPECT_EQ(standardError.text(), "Warning: File size doesn't match number of facets in the header\n");
}

// With all values different, and none or one of the flags set, the run does what the transformation does with
// the same parameters.
class EveryParameter : public RunPipelineTest, public ::testing::WithParamInterface<TransformFlag> {
protected:
    EveryParameter()
    {
        parameters = with({}, {{scales, 2, 3, 5},
                               {offsetsBefore, 7, 11, 13},
                               {offsetsAfter, 17, 19, 23},
                               {lengths, 29, 31, 37},
                               {angles, 41, 43, 47}});
    }

    void expectTheTransformationOfTheParameters()
    {
        EXPECT_EQ(run(), success);
        writeBytes(temporaryFileName, writtenBox);
        char message[stlMessageCapacity] = "\n";
        MeshTransformer transformer = makeTransformer(parameters);
        ASSERT_EQ(callTransform(transformer, message, openStream(temporaryFileName, "r").release(),
                                openStream("expected.stl", "w+").release(), parameters),
                  0);
        EXPECT_EQ(readBytes("out.stl"), readBytes("expected.stl"));
    }
};

TEST_P(EveryParameter, ReachesItsPlaceInTheTransformation)
{
    expectTheTransformationOfTheParameters();
    parameters.*GetParam().member = 1;
    expectTheTransformationOfTheParameters();
}

INSTANTIATE_TEST_SUITE_P(, EveryParameter, ::testing::ValuesIn(transformFlags), nameOfCase);

// --------------------------------------------------------------------------------- failures of preparation

TEST_F(RunPipelineTest, ALogThatCannotBeEmptiedIsReportedBeforeTheOutputIsCreatedOrEmptied)
{
    const Reports expected = {"logNotEmptied: Failed to open log file.\nError Details: Is a directory"};
    fs::create_directory(logFileName);
    reporter.whenReported = [](const std::string &) { EXPECT_FALSE(fs::exists("out.stl")); };
    EXPECT_EQ(run(), expected);
    EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "in.stl", logFileName, "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), "");

    writeBytes("out.stl", "old");
    reporter.whenReported = [](const std::string &) {
        EXPECT_EQ(readBytes("out.stl"), "old");
        EXPECT_EQ(readBytes(temporaryFileName), writtenBox);
    };
    EXPECT_EQ(run(), expected);
    EXPECT_EQ(readBytes("out.stl"), "");
    EXPECT_EQ(readBytes(temporaryFileName), writtenBox);
}

TEST_F(RunPipelineTest, LogAndOutputCanFailInTheSameRun)
{
    fs::create_directory(logFileName);
    EXPECT_EQ(run("in.stl", "missing/out.stl"),
              (Reports{"logNotEmptied: Failed to open log file.\nError Details: Is a directory",
                       "error: Unable to open output file."}));
    EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "in.stl", logFileName}));
}

TEST_F(RunPipelineTest, ALogThatCannotBeCreatedIsReportedInTheWordsOfTheSystem)
{
    fs::create_symlink("missing/log", logFileName);
    EXPECT_EQ(run(),
              Reports{"logNotEmptied: Failed to open log file.\nError Details: No such file or directory"});
}

TEST_F(RunPipelineTest, ATemporaryFileThatCannotBeReopenedIsInvalidInput)
{
    writeBytes("out.stl", "old");
    writeBytes(logFileName, "old");
    reporter.whenReported = [](const std::string &) {
        // The log is the one file that can be opened here, and the run holds it open.
        EXPECT_EQ(fs::file_size(logFileName), 0U);
        EXPECT_EQ(fs::file_size("out.stl"), 3U);
    };
    EXPECT_EQ(runWithOpenFiles(1), Reports{"error: Invalid input file."});
    EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "in.stl", logFileName, "out.stl"}));
    EXPECT_EQ(readBytes(temporaryFileName), writtenBox);
    EXPECT_EQ(readBytes(logFileName), "");
    EXPECT_EQ(readBytes("out.stl"), "");
}

TEST_F(RunPipelineTest, ALogThatCannotBeAppendedToIsReportedAndTheRunGoesOnWithoutIt)
{
    writeBytes("out.stl", "old");
    writeBytes(logFileName, "old");
    std::vector<std::uintmax_t> outputSizes;
    reporter.whenReported = [&](const std::string &) { outputSizes.push_back(fs::file_size("out.stl")); };
    EXPECT_EQ(runWithOpenFiles(2), (Reports{"error: Cannot open logfile: %s", finishedReport("out.stl")}));
    EXPECT_EQ(outputSizes, (std::vector<std::uintmax_t>{3, writtenBox.size()}));
    EXPECT_EQ(folder.entries(), (Names{"in.stl", logFileName, "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), writtenBox);
    EXPECT_EQ(readBytes(logFileName), "");
}

TEST_F(RunPipelineTest, ThreeOpenFilesAreEnoughWithAndWithoutScans)
{
    EXPECT_EQ(runWithOpenFiles(3), success);
    EXPECT_EQ(readBytes(logFileName), runLog(parameters));
    parameters = usingEveryPass();
    EXPECT_EQ(runWithOpenFiles(3), success);
    EXPECT_EQ(readBytes(logFileName), runLog(parameters));
}

// The error box of the log appears when the temporary file is open but not read yet.
TEST_F(RunPipelineTest, ABrokenLineIsReportedAndLeavesAPartialOutput)
{
    reporter.whenReported = [this](const std::string &report) {
        if (report.find("logfile") == std::string::npos)
            return;
        openFiles->lift();
        writeBytes(temporaryFileName, "label\nfacet normal 0 0 1\nouter\nvert 1\n");
    };
    EXPECT_EQ(runWithOpenFiles(2),
              (Reports{"error: Cannot open logfile: %s", "error: Line 4. Not vertex: vert 1\n"}));
    EXPECT_EQ(readBytes("out.stl"), "label\nfacet normal 0 0 1\nouter\n");
    EXPECT_TRUE(fs::exists(temporaryFileName));
}

TEST_F(RunPipelineTest, ABinaryFileIsNotOpenTwiceAtATime)
{
    writeBytes("in.stl", binaryStl("", differentFacets(4)));
    EXPECT_EQ(runWithOpenFiles(1), Reports{"error: Invalid input file."}); // got as far as the log
}

// As on a full disk. The log no longer describes the previous run. The output stays as it is, since it may be
// the input.
TEST_F(RunPipelineTest, AnIncompleteTemporaryFileEndsTheRunBeforeTheOutputIsOpened)
{
    fs::create_symlink("/dev/full", temporaryFileName);
    writeBytes("out.stl", "old output");
    writeBytes(logFileName, "old log");
    reporter.whenReported = [](const std::string &) { EXPECT_EQ(readBytes(logFileName), ""); };
    EXPECT_EQ(run(), Reports{"error: \nError writing stl file\n"});
    EXPECT_EQ(readBytes("out.stl"), "old output");
    EXPECT_EQ(readBytes(logFileName), runLogHeader());
    EXPECT_EQ(readBytes("in.stl"), boxFile());
    EXPECT_TRUE(fs::is_symlink(temporaryFileName));
    EXPECT_TRUE(pipeline.logWasOpened());

    EXPECT_EQ(run("in.stl", "in.stl"), Reports{"error: \nError writing stl file\n"});
    EXPECT_EQ(readBytes("in.stl"), boxFile());

    fs::remove(temporaryFileName);
    reporter.whenReported = nullptr;
    EXPECT_EQ(run(), success);
}

TEST_F(RunPipelineTest, AnIncompleteTemporaryFileIsReportedAfterALogThatCannotBeEmptied)
{
    fs::create_symlink("/dev/full", temporaryFileName);
    fs::create_directory(logFileName);
    EXPECT_EQ(run(), (Reports{"logNotEmptied: Failed to open log file.\nError Details: Is a directory",
                              "error: \nError writing stl file\n"}));
    EXPECT_FALSE(fs::exists("out.stl"));
}

// ------------------------------------------------------------------------------- failures after preparation

TEST_F(RunPipelineTest, AnOutputThatCannotBeOpenedEndsTheRunWithTheHeaderInTheLog)
{
    fs::create_directory("folder.stl");
    for (const char *output : {"missing/out.stl", "folder.stl"}) {
        EXPECT_EQ(run("in.stl", output), Reports{"error: Unable to open output file."});
        EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "folder.stl", "in.stl", logFileName}));
        EXPECT_EQ(readBytes(temporaryFileName), writtenBox);
        EXPECT_EQ(readBytes(logFileName), runLogHeader());
    }
}

// Opening the output empties the temporary file. It then has no first line, and the message stays as it was.
TEST_F(RunPipelineTest, TheTemporaryFileAsOutputFailsTheTransformation)
{
    fs::create_symlink(temporaryFileName, "link.stl");
    for (const std::string output : {"_tmp_stl_", "./_tmp_stl_", "link.stl"}) {
        EXPECT_EQ(run("in.stl", output), Reports{"error: \n"}) << output;
        EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "in.stl", "link.stl", logFileName}));
        EXPECT_EQ(readBytes(temporaryFileName), "");
        EXPECT_EQ(readBytes(logFileName), failedRunLog(parameters));
    }
}

TEST_F(RunPipelineTest, TheTemporaryFileAsOutputFailsTheScan)
{
    parameters.ySet0 = 1;
    EXPECT_EQ(run("in.stl", temporaryFileName), Reports{"error: \nError reading stl file\n"});
    EXPECT_EQ(readBytes(temporaryFileName), "");
    EXPECT_EQ(readBytes(logFileName), failedRunLog(parameters));
}

TEST_F(RunPipelineTest, TheLogIsAppendedToWhatAnotherProgramHasWrittenMeanwhile)
{
    const std::string foreign(1000, 'x');
    reporter.whenReported = [&](const std::string &) { writeBytes(logFileName, foreign); };
    run("in.stl", temporaryFileName);
    const std::string log = readBytes(logFileName);
    EXPECT_NE(log.find(foreign), std::string::npos) << log;
    EXPECT_NE(log.find(runLogParameters(parameters)), std::string::npos) << log;
}

TEST_F(RunPipelineTest, AnOutputOnAFullDiskFailsAndKeepsTheTemporaryFile)
{
    EXPECT_EQ(run("in.stl", "/dev/full"), Reports{"error: \nError writing stl file\n"});
    EXPECT_EQ(folder.entries(), (Names{temporaryFileName, "in.stl", logFileName}));
    EXPECT_EQ(readBytes(temporaryFileName), writtenBox);
    EXPECT_EQ(readBytes(logFileName), failedRunLog(parameters));
}

TEST_F(RunPipelineTest, ALogThatCannotBeClosedIsReportedAndTheRunStillSucceeds)
{
    fs::create_symlink("/dev/full", logFileName);
    int reports = 0;
    reporter.whenReported = [&](const std::string &) {
        EXPECT_EQ(fs::exists(temporaryFileName), reports == 0);
        EXPECT_EQ(readBytes("out.stl"), writtenBox);
        ++reports;
    };
    EXPECT_EQ(run(), (Reports{"error: Cannot close logfile \"meshvane.log\".\n", finishedReport("out.stl")}));
    EXPECT_EQ(folder.entries(), (Names{"in.stl", logFileName, "out.stl"}));
}

// ------------------------------------------------------------------------------------- whether a log exists

TEST_F(RunPipelineTest, BeforeTheFirstRunNoLogWasOpened)
{
    writeBytes(logFileName, "of an earlier start");
    EXPECT_FALSE(pipeline.logWasOpened());
}

TEST_F(RunPipelineTest, RunsThatCannotOpenTheLogDoNotCount)
{
    fs::create_directory(logFileName);
    run();
    EXPECT_FALSE(pipeline.logWasOpened());
    fs::remove(logFileName);
    runWithOpenFiles(1);
    EXPECT_FALSE(pipeline.logWasOpened());
    runWithOpenFiles(2);
    EXPECT_FALSE(pipeline.logWasOpened());
}

TEST_F(RunPipelineTest, AFailedRunThatOpenedTheLogCounts)
{
    run("in.stl", "missing/out.stl");
    EXPECT_TRUE(pipeline.logWasOpened());
}

TEST_F(RunPipelineTest, ALogOnceOpenedCountsWhateverHappensLater)
{
    run();
    EXPECT_TRUE(pipeline.logWasOpened());
    runWithOpenFiles(2);
    EXPECT_TRUE(pipeline.logWasOpened());
    fs::remove(logFileName);
    fs::create_directory(logFileName);
    run();
    EXPECT_TRUE(pipeline.logWasOpened());
}

// ----------------------------------------------------------------------------------- ends of the process

struct EndCase {
    const char *name;
    void (*arrange)();
    const char *inputPath;
    const char *standardError;
};

class EndOfTheProcess : public RunPipelineTest, public ::testing::WithParamInterface<EndCase> {};

TEST_P(EndOfTheProcess, LeavesOutputAndLogAsTheyWere)
{
    writeBytes("out.stl", "old output");
    writeBytes(logFileName, "old log");
    GetParam().arrange();
    const ProcessOutcome outcome = outcomeOf([this] { run(GetParam().inputPath); });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, GetParam().standardError);
    EXPECT_EQ(readBytes("out.stl"), "old output");
    EXPECT_EQ(readBytes(logFileName), "old log");
}

constexpr EndCase endCases[] = {
    {"AMissingInput", [] {}, "fehlt/Größe 模型.stl",
     "stl_initialize: Couldn't open fehlt/Größe 模型.stl for reading: No such file or directory\n"},
    {"ABinaryFileOfTheWrongSize", [] { writeBytes("in.stl", binaryStl("", differentFacets(3))); }, "in.stl",
     "The file in.stl has the wrong size.\n"},
    {"ATemporaryFileThatCannotBeCreated", [] { fs::create_directory(temporaryFileName); }, "in.stl",
     "stl_write_ascii: Couldn't open _tmp_stl_ for writing: Is a directory\n"},
};

INSTANTIATE_TEST_SUITE_P(, EndOfTheProcess, ::testing::ValuesIn(endCases), nameOfCase);

// ----------------------------------------------------------------------------------------------- memory

// Forty million facets, nearly all of them in a hole of the file.
void writeHugeMesh(const std::string &path)
{
    constexpr std::uint32_t facets = 40'000'000;
    std::string start(80, ' ');
    appendLittleEndian(start, facets);
    writeBytes(path, start + std::string(128, '\xff'));
    fs::resize_file(path, 84 + 50 * std::uintmax_t{facets});
}

TEST_F(RunPipelineTest, AMeshThatDoesNotFitIntoMemoryEndsTheRunAndNotTheProcess)
{
    writeHugeMesh("huge.stl");
    writeBytes("out.stl", "old output");
    writeBytes(logFileName, "old log");
    const ProcessOutcome outcome = outcomeOf([this] {
        const ResourceLimit limit = ResourceLimit::ofMemory(std::size_t{1} << 30U);
        if (run("huge.stl") != Reports{"error: stl_initialize: Cannot allocate memory"})
            throw std::runtime_error("reported something else");
        if (readBytes("out.stl") != "old output" || readBytes(logFileName) != "old log")
            throw std::runtime_error("touched a file");
        if (fs::exists(temporaryFileName) || pipeline.logWasOpened())
            throw std::runtime_error("went on");
        if (run() != success)
            throw std::runtime_error("the next run failed");
    });
    EXPECT_EQ(verdictOnMissingMemory(outcome).text(), "");
    EXPECT_EQ(readBytes("out.stl"), writtenBox);
}

std::size_t allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// A mesh takes at least 50 and 4 bytes per facet. Under the sanitizer only its leak check notices.
TEST_F(RunPipelineTest, TheMeshOfThePreviousRunIsReleased)
{
    constexpr int facets = 10'000;
    writeBytes("in.stl", binaryStl("", differentFacets(facets)));
    EXPECT_EQ(run(), success);
    const std::size_t afterTheFirst = allocatedBytes();
    if (!underAddressSanitizer) {
        EXPECT_GT(afterTheFirst, facets * std::size_t{50});
    }
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(run(), success);
    EXPECT_LT(allocatedBytes(), afterTheFirst + facets * std::size_t{4});
}

} // namespace
