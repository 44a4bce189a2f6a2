// Whole runs in which one operation of the system fails, once for each operation that a run has: afterwards
// the input is what it was, the user was told, no success was claimed without the whole output, and the next
// run succeeds.
#include "stl/StlReader.h"
#include "tests/faults/FaultPoints.h"
#include "tests/faults/SilentRun.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

constexpr const char *inputName = "in.stl";
constexpr const char *outputName = "out.stl";

class UndisturbedListener final : public Listener {
private:
    void hear(const char *kind, const QString &text) override
    {
        const FaultsPaused paused;
        Listener::hear(kind, text);
    }
};

// A run that needs both scans and turns the normals, so that every stream of the program is used.
TransformParameters everyRoad()
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 2.0;
    p.xSet0 = 1;
    p.ySetL = 1;
    p.yLength = 10.0;
    p.zRotate = 1;
    p.zAngle = 30.0;
    return p;
}

void runOnce(RunPipeline &pipeline) { pipeline.run(everyRoad(), inputName, outputName); }

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

std::ostream &operator<<(std::ostream &out, const FaultCase &fault) { return out << fault.name; }

class EveryOperation : public ::testing::TestWithParam<FaultCase> {
protected:
    // Finds out what a good run does and how many operations it takes.
    void prepare(const std::string &mesh)
    {
        m_mesh = mesh;
        writeBytes(inputName, m_mesh);
        UndisturbedListener listener;
        RunPipeline pipeline(listener);
        countOperations();
        runOnce(pipeline);
        disarmFaults();
        ASSERT_EQ(listener.heard, "finished\n");
        m_operations = operationsAt(GetParam().point);
        m_output = readBytes(outputName);
        m_log = readBytes("meshvane.log");
    }

    void failOneAfterTheOther()
    {
        ASSERT_GT(m_operations, 0);
        RecordProperty("faults", static_cast<int>(m_operations));
        for (long n = 1; n <= m_operations && !HasFailure(); ++n) {
            SCOPED_TRACE(std::to_string(n) + " of " + std::to_string(m_operations));
            writeBytes(outputName, "what an earlier run has written");
            failAt(n);
        }
    }

private:
    static long openFiles()
    {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    }

    void failAt(long n)
    {
        const FaultCase fault = GetParam();
        const ProcessOutcome outcome = outcomeOf([&fault, n] {
            UndisturbedListener listener;
            RunPipeline pipeline(listener);
            const long openBefore = openFiles();
            armFault(fault.point, n, fault.error, fault.lasting);
            runOnce(pipeline);
            disarmFaults();
            writeBytes("open-then", std::to_string(openFiles() - openBefore));
            writeBytes("heard", listener.heard);
            writeBytes("output-then", fileIfAny(outputName));
            writeBytes("log-then", fileIfAny("meshvane.log"));
            listener.heard.clear();
            runOnce(pipeline);
            writeBytes("heard-next", listener.heard);
        });
        EXPECT_TRUE(outcome.exited) << "signal " << outcome.status << '\n' << outcome.standardError;
        EXPECT_EQ(readBytes(inputName), m_mesh) << "the input is left alone";
        if (outcome.status == survivedStatus)
            expectHonestEnd();
        else
            expectFatalEnd(outcome);
        expectSuccess();
    }

    static std::string fileIfAny(const char *name)
    {
        const Stream file(std::fopen(name, "rb"));
        return file ? bytesOf(file) : std::string();
    }

    // The run came back.
    void expectHonestEnd()
    {
        const std::string heard = readBytes("heard");
        const bool claimsSuccess = heard.find("finished\n") != std::string::npos;
        const bool tellsOfAFailure = heard.find("error: ") != std::string::npos;
        EXPECT_TRUE(claimsSuccess || tellsOfAFailure) << "the user was told nothing";
        if (claimsSuccess) {
            EXPECT_TRUE(readBytes("output-then") == m_output) << "success without the whole output";
        }
        if (claimsSuccess && !tellsOfAFailure) {
            EXPECT_TRUE(readBytes("log-then") == m_log) << "success without the whole log";
        }
        EXPECT_EQ(readBytes("open-then"), "0") << "files left open";
        EXPECT_EQ(readBytes("heard-next"), "finished\n") << "the next run of the same window";
        EXPECT_EQ(readBytes(outputName), m_output);
    }

    // The run has ended the process, as it does if it cannot read the input or create the temporary file.
    void expectFatalEnd(const ProcessOutcome &outcome)
    {
        EXPECT_EQ(outcome.status, 1) << outcome.standardError;
        EXPECT_NE(outcome.standardError.find(std::strerror(GetParam().error)), std::string::npos)
            << outcome.standardError;
        EXPECT_EQ(readBytes(outputName), "what an earlier run has written");
    }

    void expectSuccess()
    {
        UndisturbedListener listener;
        RunPipeline pipeline(listener);
        runOnce(pipeline);
        EXPECT_EQ(listener.heard, "finished\n") << "the next start of the program";
        EXPECT_EQ(readBytes(outputName), m_output);
    }

    const TemporaryFolder m_folder;
    std::string m_mesh;
    std::string m_output;
    std::string m_log;
    long m_operations = 0;
};

TEST_P(EveryOperation, InARunOverAnAsciiFile)
{
    prepare(asciiMesh());
    failOneAfterTheOther();
}

TEST_P(EveryOperation, InARunOverABinaryFile)
{
    prepare(binaryStl("made by hand", differentFacets(12)));
    failOneAfterTheOther();
}

TEST(Faults, ABinaryFileThatCannotBeOpenedAgainIsToldBeforeItsSize)
{
    const TemporaryFolder folder;
    writeBytes(inputName, binaryStl("", differentFacets(3))); // of the wrong size as well
    const ProcessOutcome outcome = outcomeOf([] {
        UndisturbedListener listener;
        RunPipeline pipeline(listener);
        armFault(FaultPoint::open, 2, EMFILE, false);
        runOnce(pipeline);
    });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_initialize: Couldn't open in.stl for reading: Too many open files\n");
}

// What a run does whose n-th operation at a point fails, and all after it.
ProcessOutcome outcomeOfFault(FaultPoint point, long n, int error)
{
    return outcomeOf([point, n, error] {
        UndisturbedListener listener;
        RunPipeline pipeline(listener);
        armFault(point, n, error, true);
        runOnce(pipeline);
        disarmFaults();
        writeBytes("heard", listener.heard);
    });
}

struct UnreadableInput {
    const char *name;
    bool isBinary;
    FaultPoint point;
    long n;
    int error;
    const char *standardError;
};

class Input : public ::testing::TestWithParam<UnreadableInput> {};

TEST_P(Input, ThatCannotBeReadToItsEndEndsTheProcessAndNothingElse)
{
    const UnreadableInput &fault = GetParam();
    const TemporaryFolder folder;
    writeBytes(inputName, fault.isBinary ? binaryStl("", differentFacets(40)) : asciiMesh());
    writeBytes(outputName, "old");
    writeBytes("meshvane.log", "old");
    const ProcessOutcome outcome = outcomeOfFault(fault.point, fault.n, fault.error);
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, fault.standardError);
    EXPECT_EQ(readBytes(outputName), "old");
    EXPECT_EQ(readBytes("meshvane.log"), "old");
    EXPECT_FALSE(std::filesystem::exists("_tmp_stl_"));
}

// Streams have buffers of 256 bytes here, so each file takes many reads.
constexpr const char *notOpened = "stl_initialize: Couldn't open in.stl for reading: Input/output error\n";
constexpr UnreadableInput unreadableInputs[] = {
    {"AsciiInItsTypeTest", false, FaultPoint::read, 1, EIO, notOpened},
    {"AsciiInItsFirstLines", false, FaultPoint::read, 3, EIO, notOpened},
    {"AsciiInItsLastLines", false, FaultPoint::read, 7, EIO, notOpened},
    {"BinaryInItsTypeTest", true, FaultPoint::read, 1, EIO, notOpened},
    {"BinaryInItsHeader", true, FaultPoint::read, 2, EIO, notOpened},
    {"BinaryInItsFacets", true, FaultPoint::read, 4, EIO, "stl_load_facets: Input/output error\n"},
    {"WithoutPositions", false, FaultPoint::seek, 1, ESPIPE,
     "stl_initialize: Couldn't open in.stl for reading: Illegal seek\n"},
};

INSTANTIATE_TEST_SUITE_P(, Input, ::testing::ValuesIn(unreadableInputs),
                         [](const auto &test) { return std::string(test.param.name); });

void expectEmptyMeshAfter(FaultPoint point, long n, int error)
{
    UndisturbedListener listener;
    RunPipeline pipeline(listener);
    armFault(point, n, error, false);
    pipeline.run(doubling(), inputName, outputName);
    disarmFaults();
    EXPECT_EQ(listener.heard, "finished\n");
    EXPECT_EQ(readBytes(outputName), "solid  (null)\nendsolid  \n");
}

// File systems differ in the size they give a directory and in whether they let a stream seek in it.
TEST(Faults, ADirectoryInWhichNobodyCanSeekIsAnEmptyMesh)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(inputName);
    expectEmptyMeshAfter(FaultPoint::seek, 1, EINVAL);
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

TEST(Faults, MemoryThatRunsOutIsReportedOnStandardErrorToo)
{
    const TemporaryFolder folder;
    writeBytes(inputName, asciiMesh());
    const ProcessOutcome outcome = outcomeOfFault(FaultPoint::allocate, 1, ENOMEM);
    EXPECT_EQ(outcome.standardError, "stl_initialize: Cannot allocate memory\n");
    EXPECT_EQ(readBytes("heard"), "error: stl_initialize: Cannot allocate memory\n");
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
    {"ClosingFailsOnce", FaultPoint::close, EIO, false},
    {"ClosingFailsForLackOfSpace", FaultPoint::close, ENOSPC, true},
    {"NoMemoryForATable", FaultPoint::callocate, ENOMEM, false},
    {"NoMemoryForTables", FaultPoint::callocate, ENOMEM, true},
    {"NoMemoryOnce", FaultPoint::allocate, ENOMEM, false},
    {"NoMemoryFromThenOn", FaultPoint::allocate, ENOMEM, true},
};

INSTANTIATE_TEST_SUITE_P(, EveryOperation, ::testing::ValuesIn(faultCases),
                         [](const auto &test) { return std::string(test.param.name); });

} // namespace
