// Whole runs in which one operation of the system fails, for each operation of a run in turn: the input is
// left alone, the user is told, success is reported only with the whole output, and the next run succeeds.
#include "stl/StlReader.h"
#include "tests/faults/FaultPoints.h"
#include "tests/support/CaseNames.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/RecordingReporter.h"
#include "tests/support/RunParameters.h"
#include "tests/support/RunTexts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunFiles.h"
#include "transform/RunPipeline.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

constexpr const char *inputName = "in.stl";
constexpr const char *outputName = "out.stl";

const Reports success = {finishedReport(outputName)};
const TransformParameters everyPass = usingEveryPass();

// Recording neither fails nor counts.
class UndisturbedReporter final : public RecordingReporter {
private:
    void record(const char *kind, const QString &text) override
    {
        const FaultsPaused paused;
        RecordingReporter::record(kind, text);
    }
};

struct Program {
    UndisturbedReporter reporter;
    RunPipeline pipeline{reporter};

    // Allocates nothing itself, so that every operation that is counted is the program's.
    const Reports &run(const TransformParameters &parameters = everyPass)
    {
        reporter.reports.clear();
        pipeline.run(parameters, inputName, outputName);
        return reporter.reports;
    }
};

std::string asciiMesh()
{
    std::string text = "solid\n";
    for (int i = 1; i <= 12; ++i) {
        const std::string corner = std::to_string(i) + " " + std::to_string(i * i) + " 0.5";
        text += asciiFacet({"0 0 1", "1 2 3", corner, "-1 -2 -3"});
    }
    return text + "endsolid\n";
}

struct FaultCase {
    const char *name;
    FaultPoint point;
    int error;
    bool lasting;
};

class EveryOperation : public ::testing::TestWithParam<FaultCase> {
protected:
    // Records what a good run writes and how many operations it takes.
    void prepare(const std::string &mesh)
    {
        m_mesh = mesh;
        writeBytes(inputName, m_mesh);
        Program program;
        countOperations();
        const Reports &reports = program.run();
        disarmFaults();
        ASSERT_EQ(reports, success);
        m_operations = operationsAt(GetParam().point);
        m_output = readBytes(outputName);
        m_log = readBytes(logFileName);
    }

    void failEachInTurn()
    {
        ASSERT_GT(m_operations, 0);
        RecordProperty("faults", static_cast<int>(m_operations));
        for (long n = 1; n <= m_operations && !HasFailure(); ++n) {
            SCOPED_TRACE(std::to_string(n) + " of " + std::to_string(m_operations));
            writeBytes(outputName, "old output");
            failAt(n);
        }
    }

private:
    void failAt(long n)
    {
        const FaultCase fault = GetParam();
        const ProcessOutcome outcome = outcomeOf([&fault, n] {
            Program program;
            const long openBefore = openDescriptors();
            armFault(fault.point, n, fault.error, fault.lasting);
            const Reports &reports = program.run();
            disarmFaults();
            writeBytes("left-open", std::to_string(openDescriptors() - openBefore));
            writeBytes("reports", linesOf(reports));
            writeBytes("output-then", fileIfAny(outputName));
            writeBytes("log-then", fileIfAny(logFileName));
            writeBytes("reports-next", linesOf(program.run()));
        });
        EXPECT_TRUE(outcome.exited) << "signal " << outcome.status << '\n' << outcome.standardError;
        EXPECT_EQ(readBytes(inputName), m_mesh) << "the input is left alone";
        if (outcome.status == survivedStatus)
            expectHonestEnd();
        else
            expectFatalEnd(outcome);
        EXPECT_EQ(Program().run(), success) << "the next start of the program";
        expectFilesOfAGoodRun();
    }

    static std::string fileIfAny(const char *name)
    {
        const Stream file(std::fopen(name, "rb"));
        return file ? bytesOf(file) : std::string();
    }

    // The run has returned.
    void expectHonestEnd()
    {
        const std::string reports = readBytes("reports");
        const bool reportsSuccess = reports.find(linesOf(success)) != std::string::npos;
        const bool reportsFailure = reports.find("error: ") != std::string::npos ||
                                    reports.find("logNotEmptied: ") != std::string::npos;
        EXPECT_TRUE(reportsSuccess || reportsFailure) << "the user was told nothing";
        if (reportsSuccess) {
            EXPECT_TRUE(readBytes("output-then") == m_output) << "success without the whole output";
        }
        if (reportsSuccess && !reportsFailure) {
            EXPECT_TRUE(readBytes("log-then") == m_log) << "success without the whole log";
        }
        EXPECT_EQ(readBytes("left-open"), "0") << "files left open";
        EXPECT_EQ(readBytes("reports-next"), linesOf(success)) << "the next run of the same window";
        expectFilesOfAGoodRun();
    }

    // The run has ended the process, as it does when it cannot read the input or create the temporary file.
    void expectFatalEnd(const ProcessOutcome &outcome)
    {
        EXPECT_EQ(outcome.status, 1) << outcome.standardError;
        EXPECT_NE(outcome.standardError.find(std::strerror(GetParam().error)), std::string::npos)
            << outcome.standardError;
        EXPECT_EQ(readBytes(outputName), "old output");
    }

    void expectFilesOfAGoodRun()
    {
        EXPECT_EQ(readBytes(outputName), m_output);
        EXPECT_EQ(readBytes(logFileName), m_log);
    }

    const TemporaryFolder m_folder;
    std::string m_mesh;
    std::string m_output;
    std::string m_log;
    long m_operations = 0;
};

TEST_P(EveryOperation, CanFailInARunOnAnAsciiFile)
{
    prepare(asciiMesh());
    failEachInTurn();
}

TEST_P(EveryOperation, CanFailInARunOnABinaryFile)
{
    prepare(binaryStl("made by hand", differentFacets(12)));
    failEachInTurn();
}

// A run in which the n-th operation at a point and all after it fail. If it returns, its reports are in the
// file "reports".
ProcessOutcome outcomeOfFault(FaultPoint point, long n, int error)
{
    return outcomeOf([point, n, error] {
        Program program;
        armFault(point, n, error, true);
        const Reports &reports = program.run();
        disarmFaults();
        writeBytes("reports", linesOf(reports));
    });
}

TEST(Faults, ABinaryFileThatCannotBeOpenedAgainEndsTheProcessBeforeItsSizeIsChecked)
{
    const TemporaryFolder folder;
    writeBytes(inputName, binaryStl("", differentFacets(3))); // of the wrong size as well
    const ProcessOutcome outcome = outcomeOfFault(FaultPoint::open, 2, EMFILE);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_initialize: Couldn't open in.stl for reading: Too many open files\n");
}

struct UnreadableInput {
    const char *name;
    bool isBinary;
    FaultPoint point;
    long n;
    int error;
    const char *standardError;
};

class UnreadableInputs : public ::testing::TestWithParam<UnreadableInput> {};

TEST_P(UnreadableInputs, EndTheProcessAndTouchNoFile)
{
    const UnreadableInput &fault = GetParam();
    const TemporaryFolder folder;
    writeBytes(inputName, fault.isBinary ? binaryStl("", differentFacets(40)) : asciiMesh());
    writeBytes(outputName, "old");
    writeBytes(logFileName, "old");
    const ProcessOutcome outcome = outcomeOfFault(fault.point, fault.n, fault.error);
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, fault.standardError);
    EXPECT_EQ(readBytes(outputName), "old");
    EXPECT_EQ(readBytes(logFileName), "old");
    EXPECT_FALSE(std::filesystem::exists(temporaryFileName));
}

// Streams have buffers of 256 bytes here, so that each file takes several reads.
constexpr const char *notOpened = "stl_initialize: Couldn't open in.stl for reading: Input/output error\n";
constexpr UnreadableInput unreadableInputs[] = {
    {"AsciiInItsTypeTest", false, FaultPoint::read, 1, EIO, notOpened},
    {"AsciiInItsFirstLines", false, FaultPoint::read, 3, EIO, notOpened},
    {"AsciiInItsLastLines", false, FaultPoint::read, 7, EIO, notOpened},
    {"BinaryInItsTypeTest", true, FaultPoint::read, 1, EIO, notOpened},
    {"BinaryInItsHeader", true, FaultPoint::read, 2, EIO, notOpened},
    {"BinaryInItsFacets", true, FaultPoint::read, 4, EIO, "stl_load_facets: Input/output error\n"},
    {"AsciiBeforeItsTypeTest", false, FaultPoint::seek, 3, EIO, notOpened},
    {"AsciiAfterItsTypeTest", false, FaultPoint::seek, 4, EIO, notOpened},
    {"BinaryBeforeItsFacets", true, FaultPoint::seek, 5, EIO, "stl_load_facets: Input/output error\n"},
    {"WithoutPositions", false, FaultPoint::seek, 1, ESPIPE,
     "stl_initialize: Couldn't open in.stl for reading: Illegal seek\n"},
};

INSTANTIATE_TEST_SUITE_P(, UnreadableInputs, ::testing::ValuesIn(unreadableInputs), nameOfCase);

void expectEmptyMeshAfter(FaultPoint point, long n, int error, bool lasting = false)
{
    Program program;
    armFault(point, n, error, lasting);
    const Reports &reports = program.run();
    disarmFaults();
    EXPECT_EQ(reports, success);
    EXPECT_EQ(readBytes(outputName), temporaryFileOf(""));
}

// File systems differ in the size they give a directory and in whether they let a stream seek in it.
TEST(Faults, ADirectoryWithoutPositionsIsAnEmptyMesh)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(inputName);
    for (const bool lasting : {false, true})
        expectEmptyMeshAfter(FaultPoint::seek, 1, EINVAL, lasting);
}

TEST(Faults, ADirectoryWithASizeIsAnEmptyMesh)
{
    const TemporaryFolder folder;
    writeBytes(inputName, "a size for the directory\n");
    expectEmptyMeshAfter(FaultPoint::read, 2, EISDIR); // where the lines are counted
}

TEST(Faults, TheLinesOfAFileWithoutSizeAreNotRead)
{
    const TemporaryFolder folder;
    writeBytes(inputName, "");
    countOperations();
    {
        char bytes[128];
        const Stream in(std::fopen(inputName, "r"));
        std::fseek(in.get(), 0, SEEK_END);
        std::fseek(in.get(), 84, SEEK_SET);
        EXPECT_EQ(std::fread(bytes, 1, sizeof bytes, in.get()), 0U);
        std::rewind(in.get());
        EXPECT_EQ(std::getc(in.get()), EOF);
    }
    const long readsOfTypeTestAndLabel = operationsAt(FaultPoint::read);

    StlMesh mesh;
    countOperations();
    stl_initialize(mesh, inputName);
    disarmFaults();
    std::fclose(mesh.file);
    EXPECT_EQ(operationsAt(FaultPoint::read), readsOfTypeTestAndLabel);
}

TEST(Faults, ExhaustedMemoryIsReportedOnStandardErrorToo)
{
    const TemporaryFolder folder;
    writeBytes(inputName, asciiMesh());
    const ProcessOutcome outcome = outcomeOfFault(FaultPoint::allocate, 1, ENOMEM);
    EXPECT_EQ(outcome.standardError, "stl_initialize: Cannot allocate memory\n");
    EXPECT_EQ(readBytes("reports"), "error: stl_initialize: Cannot allocate memory\n");
}

constexpr FaultCase faultCases[] = {
    {"NoMoreFiles", FaultPoint::open, EMFILE, false},
    {"NoMoreFilesFromThenOn", FaultPoint::open, EMFILE, true},
    {"OpeningFails", FaultPoint::open, EIO, false},
    {"NoSpaceToOpen", FaultPoint::open, ENOSPC, true},
    {"NoMemoryToOpen", FaultPoint::open, ENOMEM, false},
    {"ReadingFailsOnce", FaultPoint::read, EIO, false},
    {"ReadingFailsFromThenOn", FaultPoint::read, EIO, true},
    {"DiscFullOnce", FaultPoint::write, ENOSPC, false},
    {"DiscFullFromThenOn", FaultPoint::write, ENOSPC, true},
    {"WritingFailsOnce", FaultPoint::write, EIO, false},
    {"SeekingFailsOnce", FaultPoint::seek, EIO, false},
    {"SeekingFailsFromThenOn", FaultPoint::seek, EIO, true},
    {"ClosingFailsOnce", FaultPoint::close, EIO, false},
    {"ClosingFailsForLackOfSpace", FaultPoint::close, ENOSPC, true},
    {"NoMemoryForATable", FaultPoint::callocate, ENOMEM, false},
    {"NoMemoryForTables", FaultPoint::callocate, ENOMEM, true},
    {"NoMemoryOnce", FaultPoint::allocate, ENOMEM, false},
    {"NoMemoryFromThenOn", FaultPoint::allocate, ENOMEM, true},
};

INSTANTIATE_TEST_SUITE_P(, EveryOperation, ::testing::ValuesIn(faultCases), nameOfCase);

} // namespace
