// Inputs and outputs with odd names and in odd places, and places that are no files at all.
#include "tests/faults/SilentRun.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const std::string mesh = "solid in\n" + asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"}) + "endsolid in\n";

const std::string temporaryFile = "solid  (null)\n" +
                                  asciiFacet({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                              " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                                              " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
                                              " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}) +
                                  "endsolid  \n";

const std::string doubled = "solid  (null)\n" +
                            asciiFacet({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                        " 2.00000000E+00  4.00000000E+00  6.00000000E+00",
                                        " 2.20000000E+01  4.40000000E+01  6.00000000E+00",
                                        " 2.00000000E+00  4.00000000E+00  6.60000000E+01"}) +
                            "endsolid  \n";

struct OddName {
    const char *situation;
    std::string name;
};

class OddNames : public ::testing::TestWithParam<OddName> {};

TEST_P(OddNames, CanBeInputAndOutput)
{
    const TemporaryFolder folder;
    const std::string &name = GetParam().name;
    writeBytes(name, mesh);
    EXPECT_EQ(hearRun(doubling(), name, "out.stl"), "finished\n");
    EXPECT_EQ(readBytes("out.stl"), doubled);
    EXPECT_EQ(readBytes(name), mesh);

    writeBytes("in.stl", mesh);
    EXPECT_EQ(hearRun(doubling(), "in.stl", name), "finished\n");
    EXPECT_EQ(readBytes(name), doubled);

    writeBytes(name, mesh);
    EXPECT_EQ(hearRun(doubling(), name, name), "finished\n");
    EXPECT_EQ(readBytes(name), doubled);
}

const OddName oddNames[] = {
    {"Blanks", "  two  blanks .stl "},
    {"LineFeed", "one\ntwo\r\nthree.stl"},
    {"NonAscii", "k\xC3\xB6rper \xE7\xAB\x8B\xE4\xBD\x93 \xF0\x9F\x98\x80.stl"},
    {"AsLongAsNamesGet", std::string(251, 'x') + ".stl"},
    {"RichText", "<b>bold&amp;<br><img src=x>.stl"},
    {"ConversionSpecifiers", "%s%n%d%1 %L1.stl"},
    {"LeadingDash", "-in.stl"},
    {"QuotesAndBackslashes", "'\"\\$(x)`.stl"},
    {"OnlyDots", "..."},
};

INSTANTIATE_TEST_SUITE_P(, OddNames, ::testing::ValuesIn(oddNames),
                         [](const auto &test) { return std::string(test.param.situation); });

TEST(OddPlaces, ANameLongerThanNamesGetEndsTheProcess)
{
    const TemporaryFolder folder;
    const std::string name(256, 'x');
    const ProcessOutcome outcome = outcomeOf([&name] { hearRun(doubling(), name, "out.stl"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_initialize: Couldn't open " + name + " for reading: File name too long\n");
}

TEST(OddPlaces, AnInputOfTheTemporaryFilesNameIsConsumed)
{
    const TemporaryFolder folder;
    writeBytes("_tmp_stl_", mesh);
    EXPECT_EQ(hearRun(doubling(), "_tmp_stl_", "out.stl"), "finished\n");
    EXPECT_EQ(readBytes("out.stl"), doubled);
    EXPECT_FALSE(fs::exists("_tmp_stl_"));
}

TEST(OddPlaces, AnOutputOfTheTemporaryFilesNameIsNoSuccess)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", mesh);
    for (const char *name : {"_tmp_stl_", "./_tmp_stl_"}) {
        EXPECT_EQ(hearRun(doubling(), "in.stl", name), "error: \n\n") << name;
        EXPECT_EQ(readBytes("in.stl"), mesh);
    }
    fs::create_symlink("_tmp_stl_", "link.stl");
    EXPECT_EQ(hearRun(doubling(), "in.stl", "link.stl"), "error: \n\n");
    EXPECT_EQ(hearRun(doubling(), "in.stl", "out.stl"), "finished\n");
}

// The log is emptied when the input is already in the temporary file.
TEST(OddPlaces, AnInputOfTheLogsNameIsTransformedAndLost)
{
    const TemporaryFolder folder;
    writeBytes("meshvane.log", mesh);
    EXPECT_EQ(hearRun(doubling(), "meshvane.log", "out.stl"), "finished\n");
    EXPECT_EQ(readBytes("out.stl"), doubled);
    EXPECT_EQ(readBytes("meshvane.log").substr(0, 4), "\n\n--");
}

// What the log says comes after the mesh, since it is appended when the log is closed.
TEST(OddPlaces, AnOutputOfTheLogsNameHoldsBoth)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", mesh);
    EXPECT_EQ(hearRun(doubling(), "in.stl", "meshvane.log"), "finished\n");
    EXPECT_EQ(readBytes("meshvane.log").substr(0, doubled.size() + 4), doubled + "\n\n--");
}

TEST(OddPlaces, DevicesAreReadAsTheFilesTheyLookLike)
{
    const TemporaryFolder folder;
    EXPECT_EQ(hearRun(doubling(), "/dev/null", "out.stl"), "finished\n");
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
    EXPECT_EQ(hearRun(doubling(), "/dev/zero", "out.stl"), "finished\n"); // without end, and of no size
    EXPECT_EQ(readBytes("out.stl"), "solid  (null)\nendsolid  \n");
    writeBytes("in.stl", mesh);
    EXPECT_EQ(hearRun(doubling(), "in.stl", "/dev/null"), "finished\n");
    EXPECT_EQ(hearRun(doubling(), "in.stl", "/dev/full"), "error: \nError writing stl file\n\n");
    EXPECT_EQ(readBytes("_tmp_stl_"), temporaryFile);
    EXPECT_EQ(readBytes("in.stl"), mesh);
}

// A run in a process of its own, which is ended if it takes too long.
class RunElsewhere {
public:
    RunElsewhere(const std::string &input, const std::string &output)
        : m_child(fork())
    {
        if (m_child == 0) {
            writeBytes("heard", "");
            if (std::freopen("standard-error", "w", stderr) == nullptr)
                _exit(2);
            writeBytes("heard", hearRun(doubling(), input, output));
            _exit(0);
        }
    }
    ~RunElsewhere()
    {
        if (m_ended)
            return;
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
    }
    RunElsewhere(const RunElsewhere &) = delete;
    RunElsewhere &operator=(const RunElsewhere &) = delete;

    bool endsWithin(std::chrono::milliseconds limit)
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!m_ended && std::chrono::steady_clock::now() < end) {
            m_ended = waitpid(m_child, &m_status, WNOHANG) == m_child;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return m_ended;
    }

    // Of a run that has ended; -1 for one that a signal ended.
    int exitStatus() const { return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }

private:
    pid_t m_child;
    int m_status = 0;
    bool m_ended = false;
};

constexpr std::chrono::milliseconds awhile(300);
constexpr std::chrono::seconds patience(30);

// The system lets nobody open such a pipe for reading before somebody opens it for writing.
TEST(OddPlaces, APipeWithoutWriterAsInputKeepsTheProgramWaiting)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    RunElsewhere run("pipe.stl", "out.stl");
    EXPECT_FALSE(run.endsWithin(awhile));
    EXPECT_FALSE(fs::exists("_tmp_stl_"));
    EXPECT_FALSE(fs::exists("out.stl"));
    EXPECT_FALSE(fs::exists("meshvane.log"));
}

TEST(OddPlaces, APipeWithAWriterAsInputEndsTheProcess)
{
    for (const std::string &bytes : {mesh, binaryStl("", differentFacets(4))}) {
        const TemporaryFolder folder;
        ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
        RunElsewhere run("pipe.stl", "out.stl");
        std::signal(SIGPIPE, SIG_IGN); // the program reads none of it
        {
            const Stream pipe(std::fopen("pipe.stl", "w"));
            std::fwrite(bytes.data(), 1, bytes.size(), pipe.get());
        }
        std::signal(SIGPIPE, SIG_DFL);
        ASSERT_TRUE(run.endsWithin(patience));
        EXPECT_EQ(run.exitStatus(), 1);
        EXPECT_EQ(readBytes("heard"), "");
        EXPECT_EQ(readBytes("standard-error"),
                  "stl_initialize: Couldn't open pipe.stl for reading: Illegal seek\n");
        EXPECT_FALSE(fs::exists("_tmp_stl_"));
        EXPECT_FALSE(fs::exists("out.stl"));
        EXPECT_FALSE(fs::exists("meshvane.log"));
    }
}

// "w+" opens both ends. What is in the pipe when the last end is closed is gone.
TEST(OddPlaces, APipeWithoutReaderAsOutputSwallowsASmallMesh)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    writeBytes("in.stl", mesh);
    RunElsewhere run("in.stl", "pipe.stl");
    ASSERT_TRUE(run.endsWithin(patience));
    EXPECT_EQ(readBytes("heard"), "finished\n");
}

TEST(OddPlaces, APipeWithoutReaderAsOutputKeepsTheProgramWaitingOnceItIsFull)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    const std::string large = binaryStl("large", differentFacets(2000));
    writeBytes("in.stl", large);
    RunElsewhere run("in.stl", "pipe.stl");
    EXPECT_FALSE(run.endsWithin(awhile));
    EXPECT_EQ(readBytes("in.stl"), large);
}

TEST(OddPlaces, ADeletedWorkingFolderEndsTheProcess)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", mesh);
    const std::string input = (folder.path() / "in.stl").string();
    fs::create_directory("gone");
    const ProcessOutcome outcome = outcomeOf([&input] {
        fs::current_path("gone");
        fs::remove(fs::current_path());
        hearRun(doubling(), input, "out.stl");
    });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_write_ascii: Couldn't open _tmp_stl_ for writing: No such file or directory\n");
    EXPECT_EQ(readBytes("in.stl"), mesh);
}

TEST(OddPlaces, AReadOnlyWorkingFolderEndsTheProcess)
{
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms{0755});
    writeBytes("in.stl", mesh);
    fs::create_directory("read-only");
    fs::permissions("read-only", fs::perms{0555});
    const ProcessOutcome outcome = outcomeOf([] {
        fs::current_path("read-only");
        if (geteuid() == 0 && seteuid(65534) != 0) // permissions do not bind the superuser
            throw std::runtime_error("nobody");
        hearRun(doubling(), "../in.stl", "../out.stl");
    });
    EXPECT_EQ(outcome.status, 1);
    // A sanitizer may have to add that it cannot do its work as nobody.
    EXPECT_EQ(outcome.standardError.substr(0, outcome.standardError.find('\n')),
              "stl_write_ascii: Couldn't open _tmp_stl_ for writing: Permission denied");
    EXPECT_EQ(readBytes("in.stl"), mesh);
    EXPECT_FALSE(fs::exists("out.stl"));
}

// No file may grow beyond the limit: the temporary file, the log and the output each meet it.
TEST(OddPlaces, AnyLimitOfFileSizeGivesTheWholeOutputOrAnError)
{
    const TemporaryFolder folder;
    const std::string facets = "solid in\n" + asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"}) +
                               asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"}) + "endsolid in\n";
    writeBytes("in.stl", facets);
    ASSERT_EQ(hearRun(doubling(), "in.stl", "out.stl"), "finished\n");
    const std::string output = readBytes("out.stl");
    const std::string log = readBytes("meshvane.log");
    const rlim_t largest = std::max(output.size(), log.size());
    int failures = 0;
    for (rlim_t limit = 0; limit <= largest; limit += limit + 7 < largest ? 7 : 1) {
        writeBytes("out.stl", "before");
        const ProcessOutcome outcome = outcomeOf([limit] {
            std::signal(SIGXFSZ, SIG_IGN);
            rlimit sizes{};
            getrlimit(RLIMIT_FSIZE, &sizes);
            const rlimit before = sizes;
            sizes.rlim_cur = limit;
            setrlimit(RLIMIT_FSIZE, &sizes);
            const std::string heard = hearRun(doubling(), "in.stl", "out.stl");
            setrlimit(RLIMIT_FSIZE, &before);
            writeBytes("heard", heard);
        });
        ASSERT_EQ(outcome.status, survivedStatus);
        const std::string heard = readBytes("heard");
        if (heard.find("finished\n") == std::string::npos) {
            EXPECT_NE(heard.find("error: \nError writing stl file\n"), std::string::npos) << heard;
        } else {
            EXPECT_EQ(readBytes("out.stl"), output);
            EXPECT_EQ(heard == "finished\n", readBytes("meshvane.log") == log) << heard;
        }
        failures += heard == "finished\n" ? 0 : 1;
        EXPECT_EQ(readBytes("in.stl"), facets);
        EXPECT_EQ(hearRun(doubling(), "in.stl", "out.stl"), "finished\n");
    }
    EXPECT_GT(failures, 50);
}

} // namespace
