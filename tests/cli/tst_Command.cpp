// The real command: what it prints, what it leaves behind, how it ends.
#include "tests/cli/CommandMesh.h"
#include "tests/cli/CommandProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;
using Names = std::vector<std::string>;

const Arguments doubling{"--x-scale", "2", "--y-scale", "2", "--z-scale", "2"};

Arguments operator+(Arguments first, const Arguments &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class Command : public ::testing::Test {
protected:
    void SetUp() override { writeBytes("in.stl", boxMesh()); }

    static void expectSilentSuccess(const CommandResult &result)
    {
        EXPECT_TRUE(result.exited);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.standardOutput, "");
        EXPECT_EQ(result.standardError, "");
    }

    static void expectFailure(const CommandResult &result, const std::string &complaint, int status = 1)
    {
        EXPECT_TRUE(result.exited);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.standardOutput, "");
        EXPECT_EQ(result.standardError, complaint);
    }

    // As the log of a run over the box ends.
    static bool isWholeLog(const std::string &log)
    {
        const std::string end =
            "\n\nNumber lines read from stl file = 16\nNumber triangles read from stl file = 2\n\n\n"
            "Calculation finished successfully.\n\n";
        return log.size() > end.size() && log.substr(log.size() - end.size()) == end;
    }

    const TemporaryFolder m_folder;
};

// ----------------------------------------------------------------------------------------- what stays behind

TEST_F(Command, LeavesTheOutputAndNothingElse)
{
    expectSilentSuccess(runMeshvane(doubling + Arguments{"in.stl", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), doubledBox());
    EXPECT_EQ(readBytes("in.stl"), boxMesh());
    EXPECT_EQ(entriesOf("."), (Names{"in.stl", "out.stl"}));
}

TEST_F(Command, KeepsLogAndTextIfAskedTo)
{
    fs::create_directory("logs");
    expectSilentSuccess(runMeshvane({"--log", "logs/run.log", "--keep-temporary", "in.stl", "out.stl"}));
    EXPECT_EQ(entriesOf("."), (Names{"in.stl", "logs", "out.stl", "out.stl._tmp_stl_"}));
    EXPECT_EQ(entriesOf("logs"), Names{"run.log"});
    EXPECT_TRUE(isWholeLog(readBytes("logs/run.log")));
    EXPECT_FALSE(fs::is_symlink("out.stl._tmp_stl_"));
    EXPECT_EQ(readBytes("out.stl._tmp_stl_"), readBytes("out.stl"));
}

TEST_F(Command, AnExistingFileIsReplacedByForceOnly)
{
    for (const char *file : {"out.stl", "run.log", "out.stl._tmp_stl_"}) {
        writeBytes(file, "old");
        const Arguments arguments{"--log", "run.log", "--keep-temporary", "in.stl", "out.stl"};
        expectFailure(runMeshvane(arguments),
                      "meshvane-cli: " + std::string(file) + ": exists already; --force replaces it\n");
        EXPECT_EQ(readBytes(file), "old");
        EXPECT_EQ(entriesOf(".").size(), 2U);
        expectSilentSuccess(runMeshvane(Arguments{"--force"} + arguments));
        EXPECT_EQ(entriesOf("."), (Names{"in.stl", "out.stl", "out.stl._tmp_stl_", "run.log"}));
        EXPECT_NE(readBytes(file), "old");
        for (const char *made : {"out.stl", "run.log", "out.stl._tmp_stl_"})
            fs::remove(made);
    }
}

TEST_F(Command, AReplacedFileKeepsItsPermissionsAndALinkStaysALink)
{
    writeBytes("real.stl", "old");
    fs::permissions("real.stl", fs::perms{0600});
    fs::create_symlink("real.stl", "out.stl");
    expectSilentSuccess(runMeshvane(doubling + Arguments{"--force", "in.stl", "out.stl"}));
    EXPECT_TRUE(fs::is_symlink("out.stl"));
    EXPECT_EQ(readBytes("real.stl"), doubledBox());
    EXPECT_EQ(fs::status("real.stl").permissions(), fs::perms{0600});
}

TEST_F(Command, ANewOutputHasThePermissionsOfAnyNewFile)
{
    const mode_t before = umask(0027);
    expectSilentSuccess(runMeshvane({"in.stl", "out.stl"}));
    umask(before);
    EXPECT_EQ(fs::status("out.stl").permissions(), fs::perms{0640});
}

TEST_F(Command, TheInputCanBeReplacedByForce)
{
    expectFailure(runMeshvane({"in.stl", "in.stl"}),
                  "meshvane-cli: in.stl: exists already; --force replaces it\n");
    expectSilentSuccess(runMeshvane(doubling + Arguments{"--force", "in.stl", "in.stl"}));
    EXPECT_EQ(readBytes("in.stl"), doubledBox());
}

TEST_F(Command, LogAndTextCannotTakeTheNameOfAnotherFile)
{
    expectFailure(runMeshvane({"--force", "--log", "./in.stl", "in.stl", "out.stl"}),
                  "meshvane-cli: ./in.stl is the input or the output as well; give it another name\n", 2);
    expectFailure(runMeshvane({"--log", "out.stl", "in.stl", "./out.stl"}),
                  "meshvane-cli: out.stl is the input or the output as well; give it another name\n", 2);
    expectFailure(runMeshvane({"--log", "o._tmp_stl_", "--keep-temporary", "in.stl", "o"}),
                  "meshvane-cli: o._tmp_stl_ is also where the text is kept; give it another name\n", 2);
    fs::rename("in.stl", "o._tmp_stl_");
    expectFailure(runMeshvane({"--force", "--keep-temporary", "o._tmp_stl_", "o"}),
                  "meshvane-cli: o._tmp_stl_ is the input or the output as well; give it another name\n", 2);
    EXPECT_EQ(entriesOf("."), Names{"o._tmp_stl_"});
    EXPECT_EQ(readBytes("o._tmp_stl_"), boxMesh());
}

// ---------------------------------------------------------------------------------------- the private folder

// Its maker sees the folder only while the run works, so the run is made to fail in it.
std::string triedFolder(const Arguments &options, const Variables &variables)
{
    const std::string complaint =
        runMeshvane(options + Arguments{"in.stl", "results/out.stl"}, variables).standardError;
    const std::string end = ": no folder can be made in it: No such file or directory\n";
    return complaint.size() > end.size() && complaint.substr(complaint.size() - end.size()) == end
               ? complaint.substr(14, complaint.size() - end.size() - 14)
               : complaint;
}

TEST_F(Command, ThePrivateFolderIsWhereOneSays)
{
    fs::create_directory("results");
    EXPECT_EQ(triedFolder({}, {}), "");
    fs::remove("results/out.stl");
    const std::string here = fs::current_path().string();
    EXPECT_EQ(triedFolder({}, {{"TMPDIR", "/no/such"}}), "/no/such");
    EXPECT_EQ(triedFolder({"--temporary-folder", "none"}, {{"TMPDIR", "/no/such"}}), here + "/none");
    EXPECT_EQ(triedFolder({}, {{"TMPDIR", ""}}), "");
    EXPECT_EQ(entriesOf("results"), Names{"out.stl"});
}

TEST_F(Command, WorksInAnotherFolder)
{
    fs::create_directory("tmp");
    fs::create_directory("results");
    expectSilentSuccess(runMeshvane(doubling + Arguments{"--temporary-folder", "tmp", "--log", "run.log",
                                                         "--keep-temporary", "in.stl", "results/out.stl"}));
    EXPECT_EQ(readBytes("results/out.stl"), doubledBox());
    EXPECT_EQ(entriesOf("results"), (Names{"out.stl", "out.stl._tmp_stl_"}));
    EXPECT_EQ(entriesOf("tmp"), Names{});
    EXPECT_TRUE(isWholeLog(readBytes("run.log")));
}

TEST_F(Command, WorksOnAnotherFileSystem)
{
    struct stat here {};
    struct stat there {};
    if (stat(".", &here) != 0 || stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev)
        GTEST_SKIP() << "there is no other file system at hand";
    expectSilentSuccess(runMeshvane(doubling + Arguments{"--temporary-folder", "/dev/shm", "--log", "run.log",
                                                         "--keep-temporary", "in.stl", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), doubledBox());
    EXPECT_TRUE(isWholeLog(readBytes("run.log")));
    EXPECT_EQ(entriesOf("."), (Names{"in.stl", "out.stl", "out.stl._tmp_stl_", "run.log"}));
}

// ------------------------------------------------------------------------------------------- what is refused

TEST_F(Command, RefusesWrongUseWithStatusTwo)
{
    expectFailure(runMeshvane({}), "meshvane-cli: give one INPUT and one OUTPUT; see meshvane-cli --help\n",
                  2);
    expectFailure(
        runMeshvane({"--x-scale", "1,5", "in.stl", "out.stl"}),
        "meshvane-cli: --x-scale: \"1,5\" is not a number that can be used; write 25.4, -3 or 1e-3\n", 2);
    EXPECT_EQ(entriesOf("."), Names{"in.stl"});
}

TEST_F(Command, RefusesAnInputThatCannotBeRead)
{
    fs::create_directory("folder");
    mkfifo("pipe", 0666);
    writeBytes("three.stl", binaryStl("three facets are too few", differentFacets(3)));
    writeBytes("large.stl", boxMesh());
    fs::resize_file("large.stl", std::uintmax_t{1} << 31U);
    const struct {
        const char *input;
        const char *complaint;
    } rows[] = {
        {"none.stl", "none.stl: No such file or directory"},
        {"in.stl/x", "in.stl/x: Not a directory"},
        {"folder", "folder: is a folder"},
        {"pipe", "pipe: is a pipe, and a mesh is read twice"},
        {"large.stl", "large.stl: has 2 GiB or more, which no run can read"},
        {"three.stl", "three.stl: The file three.stl has the wrong size."},
    };
    const Names before = entriesOf(".");
    for (const auto &row : rows) {
        for (const Arguments &options : {Arguments{}, Arguments{"--x-length", "5"}, Arguments{"--summary"}}) {
            expectFailure(runMeshvane(options + Arguments{row.input, "out.stl"}),
                          std::string("meshvane-cli: ") + row.complaint + "\n");
            EXPECT_EQ(entriesOf("."), before);
        }
    }
}

TEST_F(Command, RefusesAnOutputThatCannotBe)
{
    fs::create_directory("folder");
    const struct {
        const char *output;
        const char *complaint;
    } rows[] = {
        {"folder", "folder: is a folder"},
        {"folder/", "folder/: is a folder"},
        {"none/out.stl", "none/out.stl: there is no such folder"},
        {"in.stl/out.stl", "in.stl/out.stl: there is no such folder"},
        {"/dev/null", "/dev/null: is no file that could be replaced"},
        {"/dev/full", "/dev/full: is no file that could be replaced"},
    };
    for (const auto &row : rows) {
        expectFailure(runMeshvane({"--force", "in.stl", row.output}),
                      std::string("meshvane-cli: ") + row.complaint + "\n");
        EXPECT_EQ(entriesOf("."), (Names{"folder", "in.stl"}));
    }
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(Command, RefusesAReadOnlyFolder)
{
    fs::create_directory("read-only");
    fs::permissions("read-only", fs::perms{0555});
    if (geteuid() ==
        0) { // permissions do not bind the superuser, so a file system that cannot be written does
        expectFailure(runMeshvane({"in.stl", "/proc/out.stl"}),
                      "meshvane-cli: /proc: no folder can be made in it: No such file or directory\n");
    } else {
        expectFailure(runMeshvane({"in.stl", "read-only/out.stl"}),
                      "meshvane-cli: " + (fs::current_path() / "read-only").string() +
                          ": no folder can be made in it: Permission denied\n");
    }
    EXPECT_EQ(entriesOf("read-only"), Names{});
}

// A full disc, as the limit of a file's size that any number of bytes runs into.
TEST_F(Command, RefusesADiscWithoutRoomForTheWholeOutput)
{
    writeBytes("out.stl", "old");
    const rlim_t whole = doubledBox().size();
    for (rlim_t limit = 0; limit < whole; limit += 97) {
        rlimit sizes{};
        getrlimit(RLIMIT_FSIZE, &sizes);
        const rlimit before = sizes;
        // Of the process to come; its standard error is a file as well.
        sizes.rlim_cur = limit;
        setrlimit(RLIMIT_FSIZE, &sizes);
        const pid_t process = startMeshvane(doubling + Arguments{"--force", "in.stl", "out.stl"});
        setrlimit(RLIMIT_FSIZE, &before);
        const CommandResult result = endOf(process);
        EXPECT_TRUE(result.exited) << result.status;
        EXPECT_EQ(result.status, 1) << limit;
        EXPECT_EQ(readBytes("out.stl"), "old");
        EXPECT_EQ(entriesOf("."), (Names{"in.stl", "out.stl"}));
    }
}

TEST_F(Command, AFlatAxisCannotHaveALength)
{
    writeBytes("flat.stl", flatMesh());
    writeBytes("empty.stl", "solid\nendsolid\n");
    const struct {
        Arguments arguments;
        const char *complaint;
    } rows[] = {
        {{"--z-length", "5", "flat.stl"},
         "flat.stl: --z-length: no scale can do that, for the mesh has an extent of 0 on z"},
        {{"--z-length", "0", "flat.stl"},
         "flat.stl: --z-length: no scale can do that, for the mesh has an extent of 0 on z"},
        {{"--z-length-of", "y", "flat.stl"},
         "flat.stl: --z-length-of: no scale can do that, for the mesh has an extent of 0 on z"},
        {{"--y-length-of", "x", "empty.stl"},
         "empty.stl: --y-length-of: no scale can do that, for the mesh has an extent of 0 on y"},
        {{"--x-length", "1e308", "--y-length-of", "x", "tiny.stl"},
         "tiny.stl: --x-length: no scale can do that, for the mesh has an extent of 1.0005e-40 on x"},
    };
    writeBytes("tiny.stl",
               "solid\n" + asciiFacet({"0 0 1", "0 0 0", "1.0005e-40 0 0", "0 1 1"}) + "endsolid\n");
    for (const auto &row : rows) {
        expectFailure(runMeshvane(row.arguments + Arguments{"out.stl"}),
                      std::string("meshvane-cli: ") + row.complaint +
                          "; --allow-degenerate does what the window does\n");
        EXPECT_FALSE(fs::exists("out.stl"));
    }
    expectSilentSuccess(runMeshvane({"--allow-degenerate", "--z-length", "5", "flat.stl", "out.stl"}));
    EXPECT_NE(readBytes("out.stl").find("INF"), std::string::npos);
    expectSilentSuccess(
        runMeshvane({"--force", "--y-length-of", "z", "--x-length", "0", "flat.stl", "out.stl"}));
}

// -------------------------------------------------------------------------------------------------- warnings

TEST_F(Command, WarnsInTheNameOfTheFile)
{
    writeBytes("count.stl", binaryStl("the count is wrong", 7, differentFacets(4)));
    for (const Arguments &options : {Arguments{}, Arguments{"--x-length", "5"}}) {
        const CommandResult result = runMeshvane(options + Arguments{"--force", "count.stl", "out.stl"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(
            result.standardError,
            "meshvane-cli: count.stl: Warning: File size doesn't match number of facets in the header\n");
    }
    writeBytes("words.stl", "no mesh at all\n");
    const CommandResult result = runMeshvane({"--force", "words.stl", "out.stl"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "meshvane-cli: words.stl: Warning: no facets were found\n");
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
}

TEST_F(Command, WithoutStandardStreamsWritesIntoNoFile)
{
    writeBytes("count.stl", binaryStl("the count is wrong", 7, differentFacets(4)));
    ASSERT_EQ(runMeshvane({"count.stl", "good.stl"}).status, 0);
    const struct {
        const char *arguments;
        int status;
    } rows[] = {{"--force count.stl out.stl <&- >&- 2>&-", 0},
                {"--force count.stl out.stl 2>&-", 0},
                {"--force --summary count.stl out.stl >&- 2>&-", 1},
                {"info count.stl >&- 2>&-", 1}};
    for (const auto &row : rows) {
        const int status = std::system((std::string(MESHVANE_CLI) + " " + row.arguments).c_str());
        EXPECT_EQ(WEXITSTATUS(status), row.status) << row.arguments;
        EXPECT_EQ(readBytes("count.stl").size(), 284U);
    }
    EXPECT_EQ(readBytes("out.stl"), readBytes("good.stl"));
}

// The reader of the pipe is gone before the report comes, which is after the output has its name.
TEST_F(Command, AReportThatNobodyReadsLeavesTheOutputAndNothingElse)
{
    const std::string line = std::string("(sleep 0.3; ") + MESHVANE_CLI + " --summary in.stl out.stl) | true";
    EXPECT_EQ(std::system(line.c_str()), 0);
    EXPECT_EQ(entriesOf("."), (Names{"in.stl", "out.stl"}));
}

// ---------------------------------------------------------------------------------------------------- repeat

TEST_F(Command, RepeatsItsOwnLog)
{
    expectSilentSuccess(runMeshvane(
        doubling + Arguments{"--rotate-y", "30", "--z-origin-to-zero", "--log", "a.log", "in.stl", "a.stl"}));
    expectSilentSuccess(runMeshvane({"--repeat", "a.log", "--log", "b.log", "in.stl", "b.stl"}));
    EXPECT_EQ(readBytes("b.stl"), readBytes("a.stl"));
    EXPECT_EQ(readBytes("b.log"), readBytes("a.log"));
    expectSilentSuccess(runMeshvane({"--repeat", "a.log", "--force", "--log", "a.log", "in.stl", "b.stl"}));
}

TEST_F(Command, RefusesALogThatDoesNotTellAll)
{
    expectSilentSuccess(runMeshvane({"--y-length-of", "x", "--log", "a.log", "in.stl", "a.stl"}));
    const CommandResult refused = runMeshvane({"--repeat", "a.log", "in.stl", "b.stl"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.standardError.find("meshvane-cli: a.log: the run gave an axis the length of another"),
              0U);
    EXPECT_FALSE(fs::exists("b.stl"));
    expectSilentSuccess(runMeshvane({"--repeat", "a.log", "--y-length-of", "x", "in.stl", "b.stl"}));
    EXPECT_EQ(readBytes("b.stl"), readBytes("a.stl"));
    expectFailure(runMeshvane({"--repeat", "none.log", "in.stl", "c.stl"}),
                  "meshvane-cli: none.log: No such file or directory\n");
    expectFailure(runMeshvane({"--repeat", "in.stl", "in.stl", "c.stl"}),
                  "meshvane-cli: in.stl: is not the log of a run\n");
}

TEST_F(Command, WarnsOfDecimalsThatTheLogMayHaveLost)
{
    expectSilentSuccess(runMeshvane({"--x-scale", "0.33333333", "--log", "a.log", "in.stl", "a.stl"}));
    const CommandResult result = runMeshvane({"--repeat", "a.log", "in.stl", "b.stl"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError,
              "meshvane-cli: a.log: Warning: xScl = 0.333333 may have had more than six decimals\n");
}

// --------------------------------------------------------------------------------------------------- reports

QJsonObject objectOf(const std::string &line)
{
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    return QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
}

TEST_F(Command, SumsUpTheRunOnOneLine)
{
    const CommandResult result =
        runMeshvane(doubling + Arguments{"--y-origin-to-zero", "--summary", "in.stl", "out.stl"});
    EXPECT_EQ(result.status, 0);
    const std::string expected = "in.stl -> out.stl: 2 facets, 16 lines, x 1..5 -> 2..10, y 2..10 -> 0..16, "
                                 "z 3..19 -> 6..38, ";
    EXPECT_EQ(result.standardOutput.substr(0, expected.size()), expected);
    EXPECT_EQ(result.standardOutput.substr(result.standardOutput.size() - 3), " s\n");
}

TEST_F(Command, SumsUpTheRunAsJson)
{
    const CommandResult result =
        runMeshvane(doubling + Arguments{"--json", "in.stl", "k\xC3\xB6rper \"1\".stl"});
    EXPECT_EQ(result.status, 0);
    const QJsonObject object = objectOf(result.standardOutput);
    EXPECT_EQ(object["input"].toString(), "in.stl");
    EXPECT_EQ(object["output"].toString(), QString::fromUtf8("k\xC3\xB6rper \"1\".stl"));
    EXPECT_EQ(object["facets"].toInt(), 2);
    EXPECT_EQ(object["lines"].toInt(), 16);
    EXPECT_EQ(object["before"].toObject()["x"].toArray(), (QJsonArray{1, 5}));
    EXPECT_EQ(object["after"].toObject()["z"].toArray(), (QJsonArray{6, 38}));
    EXPECT_GT(object["seconds"].toDouble(), 0.0);
    EXPECT_LT(object["seconds"].toDouble(), 100.0);
}

TEST_F(Command, TellsWhatMeshesAre)
{
    std::vector<BinaryFacet> facets = differentFacets(4);
    facets[0].numbers[3] = 0.1F;
    writeBytes("b.stl", binaryStl("made by hand", facets));
    writeBytes("empty.stl", "solid\nendsolid\n");
    const CommandResult text = runMeshvane({"info", "in.stl", "empty.stl", "b.stl"});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.standardOutput.substr(0, text.standardOutput.find("b.stl")),
              "in.stl\n"
              "  type    ASCII\n"
              "  facets  2\n"
              "  x       1..5                      length 4\n"
              "  y       2..10                     length 8\n"
              "  z       3..19                     length 16\n"
              "  label   solid box\n"
              "empty.stl\n"
              "  type    ASCII\n"
              "  facets  0\n"
              "  label   solid\n");
    EXPECT_NE(text.standardOutput.find("..0.1 "), std::string::npos) << text.standardOutput;

    const CommandResult json = runMeshvane({"info", "--json", "b.stl"});
    const QJsonObject object = objectOf(json.standardOutput);
    EXPECT_EQ(object["file"].toString(), "b.stl");
    EXPECT_EQ(object["type"].toString(), "binary");
    EXPECT_EQ(object["facets"].toInt(), 4);
    EXPECT_EQ(object["label"].toString(), "made by hand");
    EXPECT_EQ(object["extents"].toObject()["x"].toArray()[1].toDouble(), 0.1);
    EXPECT_EQ(object["lengths"].toObject()["z"].toDouble(),
              object["extents"].toObject()["z"].toArray()[1].toDouble() -
                  object["extents"].toObject()["z"].toArray()[0].toDouble());
}

TEST_F(Command, InfoGoesOnAfterAFileThatCannotBeRead)
{
    writeBytes("three.stl", binaryStl("", differentFacets(3)));
    const CommandResult result = runMeshvane({"info", "none.stl", "three.stl", "in.stl"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standardError, "meshvane-cli: none.stl: No such file or directory\n"
                                    "meshvane-cli: three.stl: The file three.stl has the wrong size.\n");
    EXPECT_EQ(result.standardOutput.find("in.stl\n  type    ASCII\n"), 0U);
}

TEST_F(Command, InfiniteAndUndefinedExtentsAreNullInJson)
{
    writeBytes("odd.stl", "solid\n" + asciiFacet({"0 0 1", "inf nan 0", "0 0 0", "0 1 1"}) + "endsolid\n");
    const QJsonObject object = objectOf(runMeshvane({"info", "--json", "odd.stl"}).standardOutput);
    EXPECT_TRUE(object["extents"].toObject()["x"].toArray()[1].isNull());
    EXPECT_TRUE(object["extents"].toObject()["y"].toArray()[0].isNull());
}

TEST_F(Command, AReportThatCannotBePrintedIsAFailure)
{
    for (const char *arguments : {"info in.stl", "--help", "--version", "--summary in.stl out.stl"}) {
        const std::string line = std::string(MESHVANE_CLI) + " " + arguments + " >/dev/full 2>said";
        EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), 1) << arguments;
        EXPECT_EQ(readBytes("said"), "meshvane-cli: standard output: No space left on device\n");
    }
}

TEST_F(Command, PrintsHelpAndVersion)
{
    const CommandResult help = runMeshvane({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.standardOutput.find("Usage: meshvane-cli [options] INPUT OUTPUT"), 0U);
    EXPECT_EQ(runMeshvane({"--version", "ignored"}).standardOutput, "meshvane-cli " MESHVANE_VERSION "\n");
}

// ------------------------------------------------------------------------------------------------- odd names

struct OddName {
    const char *situation;
    std::string name;
};

class OddNames : public Command, public ::testing::WithParamInterface<OddName> {};

TEST_P(OddNames, CanBeInputOutputLogAndFolder)
{
    const std::string &name = GetParam().name;
    fs::create_directory(name);
    const std::string inFolder = fs::path(name) / name;
    writeBytes(inFolder, boxMesh());
    const std::string log = name.size() > 200 ? "log" : name + ".log";
    for (const char *temporary : {".", ""}) {
        const Variables variables{{"TMPDIR", temporary}, {"LC_ALL", "C"}};
        const CommandResult result =
            runMeshvane(doubling + Arguments{"--log", log, "--", inFolder, name + "/out.stl"}, variables);
        expectSilentSuccess(result);
        EXPECT_EQ(readBytes(name + "/out.stl"), doubledBox());
        EXPECT_TRUE(isWholeLog(readBytes(log)));
        fs::current_path(name);
        expectSilentSuccess(runMeshvane(doubling + Arguments{"--force", "--", name, name}, variables));
        EXPECT_EQ(readBytes(name), doubledBox());
        writeBytes(name, boxMesh());
        EXPECT_EQ(entriesOf("."), (name < "out.stl" ? Names{name, "out.stl"} : Names{"out.stl", name}));
        fs::remove("out.stl");
        fs::current_path("..");
        fs::remove(log);
    }
}

TEST_P(OddNames, AreToldInOneLine)
{
    const std::string &name = GetParam().name;
    const CommandResult result = runMeshvane({"--", name, "out.stl"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standardError.find('\n'), result.standardError.size() - 1);
    EXPECT_EQ(result.standardError.find('\r'), std::string::npos);
    EXPECT_EQ(result.standardError.find('\x1B'), std::string::npos);
}

const OddName oddNames[] = {
    {"Blanks", "  two  blanks .stl "},
    {"LineFeed", "one\ntwo\r\nthree.stl"},
    {"EscapeSequence", "red\x1B[31m.stl"},
    {"NonAscii", "k\xC3\xB6rper \xE7\xAB\x8B\xE4\xBD\x93 \xF0\x9F\x98\x80.stl"},
    {"NotUtf8", "k\xF6rper \xFF\xFE.stl"},
    {"AsLongAsNamesGet", std::string(251, 'x') + ".stl"},
    {"ConversionSpecifiers", "%s%n%d%1 %L1.stl"},
    {"LeadingDash", "--x-scale"},
    {"QuotesAndBackslashes", "'\"\\$(x)`.stl"},
    {"OnlyDots", "..."},
    {"TheTemporaryFile", "_tmp_stl_"},
    {"TheLog", "meshvane.log"},
};

INSTANTIATE_TEST_SUITE_P(, OddNames, ::testing::ValuesIn(oddNames),
                         [](const auto &test) { return std::string(test.param.situation); });

TEST_F(Command, AMeshNamedInfoIsReachedThroughItsFolder)
{
    fs::rename("in.stl", "info");
    expectSilentSuccess(runMeshvane(doubling + Arguments{"./info", "out.stl"}));
    EXPECT_EQ(readBytes("out.stl"), doubledBox());
}

} // namespace
