#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "tests/transform/PipelineUnderTest.h"
#include "tests/transform/Transforming.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <vector>

// The test of a failing allocation needs a null pointer where the sanitizer would end the process.
extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options()
{
    return "allocator_may_return_null=1:max_allocation_size_mb=1024";
}

namespace {

// Names the cases of a table.
constexpr auto nameOfCase = [](const auto &instance) { return std::string(instance.param.name); };

namespace fs = std::filesystem;

#ifdef __SANITIZE_ADDRESS__
constexpr bool underAddressSanitizer = true;
#else
constexpr bool underAddressSanitizer = false;
#endif

using Texts = std::vector<std::string>;

const std::string input =
    "solid in\n" + asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"}) + "endsolid in\n";

std::string meshOf(const std::array<std::string_view, 4> &numbers)
{
    return "solid  (null)\n" + asciiFacet(numbers) + "endsolid  \n";
}

// What the input looks like in the temporary file, and in the output of a run that changes nothing.
const std::string temporaryFile = meshOf(
    {" 0.00000000E+00  0.00000000E+00  1.00000000E+00", " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
     " 1.10000000E+01  2.20000000E+01  3.00000000E+00", " 1.00000000E+00  2.00000000E+00  3.30000000E+01"});

const std::string logHeader = "\n\n"
                              "-------------------------- meshvane output --------------------------\n\n"
                              "    x = xScl * (x + xOfsB) + xOfsA\n\n"
                              "    y = yScl * (y + yOfsB) + yOfsA\n\n"
                              "    z = zScl * (z + zOfsB) + zOfsA\n\n"
                              "- Rotation about axis is done after all other scale and translation -\n\n";

const std::string unchangingBlock = "\nCalculation started with following parameters:  \n\n"
                                    "xScl = 1.000000     xOfsB = 0.000000     xOfsA = 0.000000\n\n"
                                    "yScl = 1.000000     yOfsB = 0.000000     yOfsA = 0.000000\n\n"
                                    "zScl = 1.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n"
                                    "\n\n";

const std::string outcomeOfOneFacet = "\n\nNumber lines read from stl file = 9\n"
                                      "Number triangles read from stl file = 1\n\n"
                                      "\nCalculation finished successfully.\n\n";

const std::string finishedOut = "finished: Calculation finished successfully.  Output written to: out.stl";

Texts filesHere()
{
    Texts names;
    for (const fs::directory_entry &entry : fs::directory_iterator("."))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

long openDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

// While it lives, only so many files can be opened at a time on top of those that are open.
class OpenFileLimit {
public:
    explicit OpenFileLimit(int more)
    {
        std::vector<Stream> opened;
        for (int i = 0; i <= more; ++i)
            opened.push_back(openStream("/dev/null", "r"));
        getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = static_cast<rlim_t>(fileno(opened.back().get()));
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~OpenFileLimit() { setrlimit(RLIMIT_NOFILE, &m_before); }
    OpenFileLimit(const OpenFileLimit &) = delete;
    OpenFileLimit &operator=(const OpenFileLimit &) = delete;

private:
    rlimit m_before{};
};

class RunPipelineTest : public ::testing::Test {
protected:
    void SetUp() override { writeBytes("in.stl", input); }

    // Whatever comes of a run, it leaves no stream open.
    Texts run(const std::string &inputPath = "in.stl", const std::string &outputPath = "out.stl")
    {
        const long descriptors = openDescriptors();
        Texts said = pipeline.run(parameters, inputPath, outputPath);
        EXPECT_EQ(openDescriptors(), descriptors);
        return said;
    }

    Texts runWithOpenFiles(int more)
    {
        const OpenFileLimit limit(more);
        return pipeline.run(parameters, "in.stl", "out.stl");
    }

    TemporaryFolder folder;
    TransformParameters parameters = unchanging();
    PipelineUnderTest pipeline;
};

// ------------------------------------------------------------------------------------------ successful runs

TEST_F(RunPipelineTest, ASuccessfulRunLeavesOutputAndLogOnly)
{
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("in.stl"), input);
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock + outcomeOfOneFacet);
}

TEST_F(RunPipelineTest, OptionsActOnTheOutputAndStandInTheLogAsTheyWereEntered)
{
    parameters.xScl = 7.0;
    parameters.xOfsB = 100.0;
    parameters.xOfsA = 5.0;
    parameters.xSet0 = parameters.ySameZ = parameters.xSetL = parameters.zRotate = 1;
    parameters.xLength = 20.0;
    parameters.zAngle = 0.0;
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(readBytes("out.stl"), meshOf({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                            " 5.00000000E+00  1.00000000E+00  3.00000000E+00",
                                            " 2.50000000E+01  1.10000000E+01  3.00000000E+00",
                                            " 5.00000000E+00  1.00000000E+00  3.30000000E+01"}));
    EXPECT_EQ(readBytes("meshvane.log"), logHeader +
                                             "\nCalculation started with following parameters:  \n\n"
                                             "xScl = 7.000000     xOfsB = 100.000000     xOfsA = 5.000000\n\n"
                                             "yScl = 1.000000     yOfsB = 0.000000     yOfsA = 0.000000\n\n"
                                             "zScl = 1.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n"
                                             "rotateaboutz = 0.000000     \n\n\n"
                                             "xsetL = 20.000000     \n\n\n"
                                             "Flags:  \n\n   xSet0\n\n   xSamey\n\n"
                                             "\n\n" +
                                             outcomeOfOneFacet);
}

TEST_F(RunPipelineTest, ABinaryFileTakesTheSameRoad)
{
    const BinaryFacet facet = {{0.0F, -1.0F, -0.0F, 0.5F, 1.0F, 2.0F, -3.0F, 1e-40F, 5.0F, 6.0F, 7.0F, 1e30F},
                               {255, 255}};
    writeBytes("in.stl", binaryStl("a label that is not written", {facet, facet, facet, facet}));
    EXPECT_EQ(run(), Texts{finishedOut});
    const std::string rewritten = asciiFacet({" 0.00000000E+00 -1.00000000E+00 -0.00000000E+00",
                                              " 5.00000000E-01  1.00000000E+00  2.00000000E+00",
                                              "-3.00000000E+00  9.99994610E-41  5.00000000E+00",
                                              " 6.00000000E+00  7.00000000E+00  1.00000002E+30"});
    EXPECT_EQ(readBytes("out.stl"),
              "solid  (null)\n" + rewritten + rewritten + rewritten + rewritten + "endsolid  \n");
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock +
                                             "\n\nNumber lines read from stl file = 30\n"
                                             "Number triangles read from stl file = 4\n\n"
                                             "\nCalculation finished successfully.\n\n");
}

TEST_F(RunPipelineTest, WhenItSaysFinishedAllFilesAreComplete)
{
    int times = 0;
    pipeline.whenSaid([&](const std::string &) {
        ++times;
        EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
        EXPECT_EQ(readBytes("out.stl"), temporaryFile);
        EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock + outcomeOfOneFacet);
    });
    run();
    EXPECT_EQ(times, 1);
}

TEST_F(RunPipelineTest, TheSecondRunReplacesOutputAndLogOfTheFirst)
{
    parameters.xScl = 123456.0;
    EXPECT_EQ(run(), Texts{finishedOut});
    writeBytes("in.stl", "solid empty\n");
    parameters = unchanging();
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock +
                                             "\n\nNumber lines read from stl file = 2\n"
                                             "Number triangles read from stl file = 0\n\n"
                                             "\nCalculation finished successfully.\n\n");
}

TEST_F(RunPipelineTest, LeftoversOfEarlierRunsAreReplaced)
{
    writeBytes("_tmp_stl_", std::string(5000, 'x'));
    writeBytes("out.stl", std::string(5000, 'y'));
    writeBytes("meshvane.log", std::string(5000, 'z'));
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock + outcomeOfOneFacet);
}

TEST_F(RunPipelineTest, OnlyTheLastPartOfTheOutputPathIsNamed)
{
    fs::create_directories("some/folder");
    EXPECT_EQ(run("in.stl", "some/folder/part.stl"),
              Texts{"finished: Calculation finished successfully.  Output written to: part.stl"});
    EXPECT_EQ(readBytes("some/folder/part.stl"), temporaryFile);
    EXPECT_EQ(run((folder.path() / "in.stl").string(), (folder.path() / "a %1 %s.stl").string()),
              Texts{"finished: Calculation finished successfully.  Output written to: a %1 %s.stl"});
    EXPECT_EQ(readBytes("a %1 %s.stl"), temporaryFile);
}

TEST_F(RunPipelineTest, TheProgramsOwnFilesLieInTheCurrentFolder)
{
    fs::create_directory("meshes");
    fs::rename("in.stl", "meshes/in.stl");
    EXPECT_EQ(run("meshes/in.stl", "meshes/out.stl"), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"meshes", "meshvane.log"}));
}

TEST_F(RunPipelineTest, FileNamesAreUtf8)
{
    fs::rename("in.stl", "Größe ✓ 模型.stl");
    EXPECT_EQ(run("Größe ✓ 模型.stl", "Ausgabe €.stl"),
              Texts{"finished: Calculation finished successfully.  Output written to: Ausgabe €.stl"});
    EXPECT_EQ(readBytes("Ausgabe €.stl"), temporaryFile);
}

TEST_F(RunPipelineTest, TheInputFileMayBeTheOutputFile)
{
    parameters.xScl = 2.0;
    EXPECT_EQ(run("in.stl", "in.stl"),
              Texts{"finished: Calculation finished successfully.  Output written to: in.stl"});
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log"}));
    EXPECT_EQ(readBytes("in.stl"), meshOf({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                           " 2.00000000E+00  2.00000000E+00  3.00000000E+00",
                                           " 2.20000000E+01  2.20000000E+01  3.00000000E+00",
                                           " 2.00000000E+00  2.00000000E+00  3.30000000E+01"}));
}

TEST_F(RunPipelineTest, ALeftTemporaryFileCanBeTheInputAndIsGoneAfterwards)
{
    fs::rename("in.stl", "_tmp_stl_");
    EXPECT_EQ(run("_tmp_stl_"), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
}

TEST_F(RunPipelineTest, AnEmptyFileIsAMeshWithoutFacets)
{
    writeBytes("in.stl", "");
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
}

TEST_F(RunPipelineTest, AFolderAsInputIsAMeshWithoutFacets)
{
    fs::create_directory("folder.stl");
    EXPECT_EQ(run("folder.stl"), Texts{finishedOut});
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
}

TEST_F(RunPipelineTest, AWrongCountInABinaryFileIsAWarningOnStandardErrorOnly)
{
    writeBytes("in.stl", binaryStl("label", 0, differentFacets(4)));
    const StandardErrorCapture standardError;
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(standardError.text(), "Warning: File size doesn't match number of facets in the header\n");
}

struct ParameterCase {
    const char *name;
    void (*set)(TransformParameters &);
};

class EveryParameter : public RunPipelineTest, public ::testing::WithParamInterface<ParameterCase> {};

TEST_P(EveryParameter, ReachesItsPlaceInTheTransformation)
{
    parameters.xScl = 2.0;
    parameters.yScl = 3.0;
    parameters.zScl = 5.0;
    parameters.xOfsB = 7.0;
    parameters.yOfsB = 11.0;
    parameters.zOfsB = 13.0;
    parameters.xOfsA = 17.0;
    parameters.yOfsA = 19.0;
    parameters.zOfsA = 23.0;
    parameters.xLength = 29.0;
    parameters.yLength = 31.0;
    parameters.zLength = 37.0;
    parameters.xAngle = 41.0;
    parameters.yAngle = 43.0;
    parameters.zAngle = 47.0;
    GetParam().set(parameters);
    EXPECT_EQ(run(), Texts{finishedOut});

    writeBytes("_tmp_stl_", temporaryFile);
    char message[2048] = "\n";
    MeshTransformer transformer = transformerFor(parameters);
    ASSERT_EQ(transform(transformer, message, openStream("_tmp_stl_", "r").release(),
                        openStream("expected.stl", "w+").release(), parameters),
              0);
    EXPECT_EQ(readBytes("out.stl"), readBytes("expected.stl"));
}

const ParameterCase parameterCases[] = {
    {"NoFlag", [](TransformParameters &) {}},
    {"RotateX", [](TransformParameters &p) { p.xRotate = 1; }},
    {"RotateY", [](TransformParameters &p) { p.yRotate = 1; }},
    {"RotateZ", [](TransformParameters &p) { p.zRotate = 1; }},
    {"LengthX", [](TransformParameters &p) { p.xSetL = 1; }},
    {"LengthY", [](TransformParameters &p) { p.ySetL = 1; }},
    {"LengthZ", [](TransformParameters &p) { p.zSetL = 1; }},
    {"OriginX", [](TransformParameters &p) { p.xSet0 = 1; }},
    {"OriginY", [](TransformParameters &p) { p.ySet0 = 1; }},
    {"OriginZ", [](TransformParameters &p) { p.zSet0 = 1; }},
    {"XSameY", [](TransformParameters &p) { p.xSameY = 1; }},
    {"XSameZ", [](TransformParameters &p) { p.xSameZ = 1; }},
    {"YSameX", [](TransformParameters &p) { p.ySameX = 1; }},
    {"YSameZ", [](TransformParameters &p) { p.ySameZ = 1; }},
    {"ZSameX", [](TransformParameters &p) { p.zSameX = 1; }},
    {"ZSameY", [](TransformParameters &p) { p.zSameY = 1; }},
};

INSTANTIATE_TEST_SUITE_P(, EveryParameter, ::testing::ValuesIn(parameterCases), nameOfCase);

// --------------------------------------------------------------------------------- failures of preparation

TEST_F(RunPipelineTest, ALogThatCannotBeEmptiedIsToldAndTheOutputIsEmptiedAllTheSame)
{
    fs::create_directory("meshvane.log");
    writeBytes("out.stl", "old");
    pipeline.whenSaid([](const std::string &) {
        EXPECT_EQ(readBytes("out.stl"), "old");
        EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
    });
    EXPECT_EQ(run(), Texts{"logNotEmptied: Failed to open log file.\nError Details: Is a directory"});
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), "");
    EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
}

TEST_F(RunPipelineTest, ALogThatCannotBeEmptiedLeavesANewOutputEmpty)
{
    fs::create_directory("meshvane.log");
    run();
    EXPECT_EQ(readBytes("out.stl"), "");
}

TEST_F(RunPipelineTest, LogAndOutputFailOneAfterTheOther)
{
    fs::create_directory("meshvane.log");
    EXPECT_EQ(run("in.stl", "missing/out.stl"),
              (Texts{"logNotEmptied: Failed to open log file.\nError Details: Is a directory",
                     "error: Unable to open output file."}));
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log"}));
}

TEST_F(RunPipelineTest, ALogFolderThatIsMissingIsToldInTheSystemsWords)
{
    fs::create_symlink("missing/meshvane.log", "meshvane.log");
    EXPECT_EQ(run(),
              Texts{"logNotEmptied: Failed to open log file.\nError Details: No such file or directory"});
}

TEST_F(RunPipelineTest, ATemporaryFileThatCannotBeReopenedIsInvalidInput)
{
    writeBytes("out.stl", "old");
    writeBytes("meshvane.log", "old");
    pipeline.whenSaid([](const std::string &) {
        // The one file that may be opened here is the log, and the run holds it.
        EXPECT_EQ(fs::file_size("meshvane.log"), 0U);
        EXPECT_EQ(fs::file_size("out.stl"), 3U);
    });
    EXPECT_EQ(runWithOpenFiles(1), Texts{"error: Invalid input file."});
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), "");
    EXPECT_EQ(readBytes("out.stl"), "");
}

TEST_F(RunPipelineTest, ALogThatCannotBeAppendedToIsToldAndTheRunGoesOnWithoutIt)
{
    writeBytes("out.stl", "old");
    writeBytes("meshvane.log", "old");
    Texts outputSizes;
    pipeline.whenSaid(
        [&](const std::string &) { outputSizes.push_back(std::to_string(fs::file_size("out.stl"))); });
    EXPECT_EQ(runWithOpenFiles(2), (Texts{"error: Cannot open logfile: %s", finishedOut}));
    EXPECT_EQ(outputSizes, (Texts{"3", std::to_string(temporaryFile.size())}));
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), "");
}

TEST_F(RunPipelineTest, ThreeOpenFilesAreEnough)
{
    EXPECT_EQ(runWithOpenFiles(3), Texts{finishedOut});
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock + outcomeOfOneFacet);
}

// The box about the log comes up when the temporary file is open and not yet read.
TEST_F(RunPipelineTest, ABrokenLineIsToldAndKeepsThePartialOutput)
{
    pipeline.whenSaid([](const std::string &text) {
        if (text.find("logfile") == std::string::npos)
            return;
        rlimit limit{};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
        writeBytes("_tmp_stl_", "label\nfacet normal 0 0 1\nouter\nvert 1\n");
    });
    const Texts expected{"error: Cannot open logfile: %s", "error: Line 4. Not vertex: vert 1\n"};
    EXPECT_EQ(runWithOpenFiles(2), expected);
    EXPECT_EQ(readBytes("out.stl"), "label\nfacet normal 0 0 1\nouter\n");
    EXPECT_TRUE(fs::exists("_tmp_stl_"));
}

TEST_F(RunPipelineTest, ThreeOpenFilesAreEnoughForBothScans)
{
    parameters.xSet0 = parameters.ySetL = 1;
    parameters.yLength = 20.0;
    EXPECT_EQ(runWithOpenFiles(3), Texts{finishedOut});
}

TEST_F(RunPipelineTest, ABinaryFileIsNotOpenTwiceAtATime)
{
    writeBytes("in.stl", binaryStl("", differentFacets(4)));
    EXPECT_EQ(runWithOpenFiles(1), Texts{"error: Invalid input file."}); // got as far as the log
}

// A disc that is full while the temporary file is written. The log no longer describes the run before; the
// output is not touched, since it may be the input.
TEST_F(RunPipelineTest, AnIncompleteTemporaryFileEndsTheRunBeforeTheOutputIsOpened)
{
    fs::create_symlink("/dev/full", "_tmp_stl_");
    writeBytes("out.stl", "old output");
    writeBytes("meshvane.log", "old log");
    pipeline.whenSaid([](const std::string &) { EXPECT_EQ(readBytes("meshvane.log"), ""); });
    EXPECT_EQ(run(), Texts{"error: \nError writing stl file\n"});
    EXPECT_EQ(readBytes("out.stl"), "old output");
    EXPECT_EQ(readBytes("meshvane.log"), logHeader);
    EXPECT_EQ(readBytes("in.stl"), input);
    EXPECT_TRUE(fs::is_symlink("_tmp_stl_"));
    EXPECT_TRUE(pipeline.logWasOpened());

    EXPECT_EQ(run("in.stl", "in.stl"), Texts{"error: \nError writing stl file\n"});
    EXPECT_EQ(readBytes("in.stl"), input);

    fs::remove("_tmp_stl_");
    pipeline.whenSaid(nullptr);
    EXPECT_EQ(run(), Texts{finishedOut});
}

TEST_F(RunPipelineTest, AnIncompleteTemporaryFileIsReportedAfterALogThatCannotBeEmptied)
{
    fs::create_symlink("/dev/full", "_tmp_stl_");
    fs::create_directory("meshvane.log");
    EXPECT_EQ(run(), (Texts{"logNotEmptied: Failed to open log file.\nError Details: Is a directory",
                            "error: \nError writing stl file\n"}));
    EXPECT_FALSE(fs::exists("out.stl"));
}

// -------------------------------------------------------------------------------------- failures afterwards

TEST_F(RunPipelineTest, AnOutputThatCannotBeOpenedEndsTheRunWithTheHeaderInTheLog)
{
    EXPECT_EQ(run("in.stl", "missing/out.stl"), Texts{"error: Unable to open output file."});
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log"}));
    EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), logHeader);
}

TEST_F(RunPipelineTest, AFolderCannotBeTheOutput)
{
    fs::create_directory("out.stl");
    EXPECT_EQ(run(), Texts{"error: Unable to open output file."});
    EXPECT_EQ(readBytes("meshvane.log"), logHeader);
}

// Opening the output empties the temporary file: it has no first line then, and the message stays as it was.
TEST_F(RunPipelineTest, TheTemporaryFileAsOutputFailsTheTransformation)
{
    EXPECT_EQ(run("in.stl", "_tmp_stl_"), Texts{"error: \n"});
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log"}));
    EXPECT_EQ(readBytes("_tmp_stl_"), "");
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock);
}

TEST_F(RunPipelineTest, TheTemporaryFileAsOutputFailsTheScan)
{
    parameters.ySet0 = 1;
    EXPECT_EQ(run("in.stl", "_tmp_stl_"), Texts{"error: \nError reading stl file\n"});
    EXPECT_EQ(readBytes("_tmp_stl_"), "");
    EXPECT_EQ(readBytes("meshvane.log"), logHeader +
                                             "\nCalculation started with following parameters:  \n\n"
                                             "xScl = 1.000000     xOfsB = 0.000000     xOfsA = 0.000000\n\n"
                                             "yScl = 1.000000     yOfsB = 0.000000     yOfsA = 0.000000\n\n"
                                             "zScl = 1.000000     zOfsB = 0.000000     zOfsA = 0.000000\n\n"
                                             "Flags:  \n\n   ySet0\n\n"
                                             "\n\n");
}

TEST_F(RunPipelineTest, TheLogIsAppendedToWhatAnotherProgramWroteThereMeanwhile)
{
    const std::string foreign(1000, 'x');
    pipeline.whenSaid([&](const std::string &) { writeBytes("meshvane.log", foreign); });
    run("in.stl", "_tmp_stl_");
    const std::string log = readBytes("meshvane.log");
    EXPECT_NE(log.find(foreign), std::string::npos) << log;
    EXPECT_NE(log.find(unchangingBlock), std::string::npos) << log;
}

TEST_F(RunPipelineTest, AnOutputOnAFullDiscFailsAndKeepsTheTemporaryFile)
{
    EXPECT_EQ(run("in.stl", "/dev/full"), Texts{"error: \nError writing stl file\n"});
    EXPECT_EQ(filesHere(), (Texts{"_tmp_stl_", "in.stl", "meshvane.log"}));
    EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock);
}

TEST_F(RunPipelineTest, AfterAFailedRunTheNextSucceeds)
{
    run("in.stl", "_tmp_stl_");
    EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
    EXPECT_EQ(readBytes("meshvane.log"), logHeader + unchangingBlock + outcomeOfOneFacet);
}

TEST_F(RunPipelineTest, ALogThatCannotBeClosedIsToldAndTheRunCountsAsDone)
{
    fs::create_symlink("/dev/full", "meshvane.log");
    int times = 0;
    pipeline.whenSaid([&](const std::string &) {
        EXPECT_EQ(fs::exists("_tmp_stl_"), times == 0);
        EXPECT_EQ(readBytes("out.stl"), temporaryFile);
        ++times;
    });
    EXPECT_EQ(run(), (Texts{"error: Cannot close logfile \"meshvane.log\".\n", finishedOut}));
    EXPECT_EQ(times, 2);
    EXPECT_EQ(filesHere(), (Texts{"in.stl", "meshvane.log", "out.stl"}));
}

// ------------------------------------------------------------------------------------- whether a log exists

TEST_F(RunPipelineTest, BeforeTheFirstRunNoLogWasOpened)
{
    writeBytes("meshvane.log", "of an earlier start");
    EXPECT_FALSE(pipeline.logWasOpened());
}

TEST_F(RunPipelineTest, RunsThatDidNotOpenTheLogLeaveItAtThat)
{
    fs::create_directory("meshvane.log");
    run();
    EXPECT_FALSE(pipeline.logWasOpened());
    fs::remove("meshvane.log");
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

TEST_F(RunPipelineTest, OnceOpenedTheLogCountsForEver)
{
    run();
    EXPECT_TRUE(pipeline.logWasOpened());
    runWithOpenFiles(2);
    EXPECT_TRUE(pipeline.logWasOpened());
    fs::remove("meshvane.log");
    fs::create_directory("meshvane.log");
    run();
    EXPECT_TRUE(pipeline.logWasOpened());
}

// ----------------------------------------------------------------------------------- ends of the process

struct EndCase {
    const char *name;
    void (*arrange)();
    std::string standardError;
};

class EndOfTheProcess : public RunPipelineTest, public ::testing::WithParamInterface<EndCase> {};

TEST_P(EndOfTheProcess, LeavesOutputAndLogAsTheyWere)
{
    writeBytes("out.stl", "old output");
    writeBytes("meshvane.log", "old log");
    GetParam().arrange();
    const ProcessOutcome outcome = outcomeOf([this] { run(); });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError, GetParam().standardError);
    EXPECT_EQ(readBytes("out.stl"), "old output");
    EXPECT_EQ(readBytes("meshvane.log"), "old log");
}

const EndCase endCases[] = {
    {"AMissingInput", [] { fs::remove("in.stl"); },
     "stl_initialize: Couldn't open in.stl for reading: No such file or directory\n"},
    {"ABinaryFileOfThreeFacets", [] { writeBytes("in.stl", binaryStl("", differentFacets(3))); },
     "The file in.stl has the wrong size.\n"},
    {"ABinaryFileCutShort", [] { writeBytes("in.stl", binaryStl("", differentFacets(6)).substr(0, 383)); },
     "The file in.stl has the wrong size.\n"},
    {"ATemporaryFileThatCannotBeCreated", [] { fs::create_directory("_tmp_stl_"); },
     "stl_write_ascii: Couldn't open _tmp_stl_ for writing: Is a directory\n"},
};

INSTANTIATE_TEST_SUITE_P(, EndOfTheProcess, ::testing::ValuesIn(endCases), nameOfCase);

TEST_F(RunPipelineTest, TheEndOfTheProcessNamesTheInputInUtf8)
{
    const ProcessOutcome outcome = outcomeOf([this] { run("fehlt/Größe 模型.stl"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_initialize: Couldn't open fehlt/Größe 模型.stl for reading: No such file or directory\n");
    EXPECT_EQ(filesHere(), Texts{"in.stl"});
}

// ----------------------------------------------------------------------------------------------- memory

// Forty million facets, nearly all of them a hole in the file.
void writeHugeMesh(const std::string &path)
{
    constexpr std::uint32_t facets = 40'000'000;
    std::string start(80, ' ');
    appendLittleEndian(start, facets);
    writeBytes(path, start + std::string(128, '\xff'));
    fs::resize_file(path, 84 + 50 * std::uintmax_t{facets});
}

// The sanitizer has a limit of its own, set above.
void limitMemory()
{
    if (underAddressSanitizer)
        return;
    rlimit limit{};
    getrlimit(RLIMIT_AS, &limit);
    limit.rlim_cur = rlim_t{1} << 30;
    setrlimit(RLIMIT_AS, &limit);
}

int countOf(const std::string &text, const std::string &part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(RunPipelineTest, AMeshThatDoesNotFitIntoMemoryEndsTheRunAndNotTheProcess)
{
    writeHugeMesh("huge.stl");
    writeBytes("out.stl", "old output");
    writeBytes("meshvane.log", "old log");
    const ProcessOutcome outcome = outcomeOf([this] {
        limitMemory();
        if (run("huge.stl") != Texts{"error: stl_initialize: Cannot allocate memory"})
            throw std::runtime_error("said something else");
        if (readBytes("out.stl") != "old output" || readBytes("meshvane.log") != "old log")
            throw std::runtime_error("touched a file");
        if (fs::exists("_tmp_stl_") || pipeline.logWasOpened())
            throw std::runtime_error("went on");
        if (run() != Texts{finishedOut})
            throw std::runtime_error("the next run failed");
    });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, survivedStatus) << outcome.standardError;
    const std::string report = "stl_initialize: Cannot allocate memory\n";
    EXPECT_EQ(countOf(outcome.standardError, report), 2) << outcome.standardError;
    if (!underAddressSanitizer) {
        EXPECT_EQ(outcome.standardError, report + report);
    }
    EXPECT_EQ(readBytes("out.stl"), temporaryFile);
}

std::size_t allocatedBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Two tables of at least 50 and 4 bytes a facet. Under the sanitizer its leak check tells the same.
TEST_F(RunPipelineTest, TheMeshOfTheRunBeforeIsReleased)
{
    constexpr int facets = 10'000;
    writeBytes("in.stl", binaryStl("", differentFacets(facets)));
    EXPECT_EQ(run(), Texts{finishedOut});
    const std::size_t afterTheFirst = allocatedBytes();
    if (!underAddressSanitizer) {
        EXPECT_GT(afterTheFirst, facets * std::size_t{50});
    }
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(run(), Texts{finishedOut});
    EXPECT_LT(allocatedBytes(), afterTheFirst + facets * std::size_t{4});
}

} // namespace
