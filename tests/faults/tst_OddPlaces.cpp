// Inputs and outputs that have unusual names, are in unusual places, or are not regular files.
#include "tests/support/CaseNames.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/RecordingReporter.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/RunParameters.h"
#include "tests/support/RunTexts.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunFiles.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

const std::string mesh = boxFile();
const std::string doubled = writtenMesh({box.normal, {{2, 4, 6}, {22, 44, 6}, {2, 4, 66}}});
const std::string emptyMesh = temporaryFileOf("");
const Reports success = {finishedReport("out.stl")};

Reports run(const std::string &input, const std::string &output)
{
    return reportsOfRun(scaling(2.0), input, output);
}

struct OddName {
    const char *name; // of the case
    std::string fileName;
};

class OddNames : public ::testing::TestWithParam<OddName> {};

TEST_P(OddNames, CanBeInputAndOutput)
{
    const TemporaryFolder folder;
    const std::string &name = GetParam().fileName;
    writeBytes(name, mesh);
    EXPECT_EQ(run(name, "out.stl"), success);
    EXPECT_EQ(readBytes("out.stl"), doubled);
    EXPECT_EQ(readBytes(name), mesh);

    EXPECT_EQ(run(name, name), Reports{finishedReport(name)});
    EXPECT_EQ(readBytes(name), doubled);
}

const OddName oddNames[] = {
    {"Blanks", "  two  blanks .stl "},
    {"LineFeed", "one\ntwo\r\nthree.stl"},
    {"NonAscii", "k\xC3\xB6rper \xE7\xAB\x8B\xE4\xBD\x93 \xF0\x9F\x98\x80.stl"},
    {"LongestPossible", std::string(251, 'x') + ".stl"},
    {"RichText", "<b>bold&amp;<br><img src=x>.stl"},
    {"ConversionSpecifiers", "%s%n%d%1 %L1.stl"},
    {"LeadingDash", "-in.stl"},
    {"QuotesAndBackslashes", "'\"\\$(x)`.stl"},
    {"OnlyDots", "..."},
};

INSTANTIATE_TEST_SUITE_P(, OddNames, ::testing::ValuesIn(oddNames), nameOfCase);

TEST(OddPlaces, ATooLongInputNameEndsTheProcess)
{
    const TemporaryFolder folder;
    const std::string name(256, 'x');
    const ProcessOutcome outcome = outcomeOf([&name] { run(name, "out.stl"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.standardError,
              "stl_initialize: Couldn't open " + name + " for reading: File name too long\n");
}

// The log is emptied after the input was read.
TEST(OddPlaces, TheLogAsInputIsTransformedAndOverwritten)
{
    const TemporaryFolder folder;
    writeBytes(logFileName, mesh);
    EXPECT_EQ(run(logFileName, "out.stl"), success);
    EXPECT_EQ(readBytes("out.stl"), doubled);
    EXPECT_EQ(readBytes(logFileName), runLog(scaling(2.0)));
}

// The text of the log is appended when the log is closed.
TEST(OddPlaces, TheLogAsOutputHoldsTheMeshAndThenTheLog)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", mesh);
    EXPECT_EQ(run("in.stl", logFileName), Reports{finishedReport(logFileName)});
    EXPECT_EQ(readBytes(logFileName), doubled + runLog(scaling(2.0)));
}

TEST(OddPlaces, InputsThatAreNotRegularFilesAreMeshesWithoutFacets)
{
    const TemporaryFolder folder;
    fs::create_directory("folder.stl");
    for (const char *input : {"folder.stl", "/dev/null", "/dev/zero"}) { // the last is endless and has size 0
        EXPECT_EQ(run(input, "out.stl"), success);
        EXPECT_EQ(readBytes("out.stl"), emptyMesh);
        fs::remove("out.stl");
    }
}

TEST(OddPlaces, TheNullDeviceCanBeTheOutput)
{
    const TemporaryFolder folder;
    writeBytes("in.stl", mesh);
    EXPECT_EQ(run("in.stl", "/dev/null"), Reports{finishedReport("null")});
}

// A run in a child process, which is killed if it has not ended when its object is destroyed.
class RunElsewhere {
public:
    RunElsewhere(const std::string &input, const std::string &output)
        : m_child(fork())
    {
        if (m_child == 0) {
            writeBytes("reports", "");
            if (std::freopen("standard-error", "w", stderr) == nullptr)
                _exit(2);
            writeBytes("reports", linesOf(run(input, output)));
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

    // Of a run that has ended; -1 if a signal ended it.
    int exitStatus() const { return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1; }

private:
    pid_t m_child;
    int m_status = 0;
    bool m_ended = false;
};

constexpr std::chrono::milliseconds shortTime(300);
constexpr std::chrono::seconds longTime(30);

// Opening it for reading waits until another process opens it for writing.
TEST(OddPlaces, APipeWithoutWriterAsInputKeepsTheProgramWaiting)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    RunElsewhere child("pipe.stl", "out.stl");
    EXPECT_FALSE(child.endsWithin(shortTime));
    EXPECT_FALSE(fs::exists(temporaryFileName));
    EXPECT_FALSE(fs::exists("out.stl"));
    EXPECT_FALSE(fs::exists(logFileName));
}

TEST(OddPlaces, APipeWithAWriterAsInputEndsTheProcess)
{
    for (const std::string &bytes : {mesh, binaryStl("", differentFacets(4))}) {
        const TemporaryFolder folder;
        ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
        RunElsewhere child("pipe.stl", "out.stl");
        std::signal(SIGPIPE, SIG_IGN); // the program reads none of it
        {
            const Stream pipe(std::fopen("pipe.stl", "w"));
            std::fwrite(bytes.data(), 1, bytes.size(), pipe.get());
        }
        std::signal(SIGPIPE, SIG_DFL);
        ASSERT_TRUE(child.endsWithin(longTime));
        EXPECT_EQ(child.exitStatus(), 1);
        EXPECT_EQ(readBytes("reports"), "");
        EXPECT_EQ(readBytes("standard-error"),
                  "stl_initialize: Couldn't open pipe.stl for reading: Illegal seek\n");
        EXPECT_FALSE(fs::exists(temporaryFileName));
        EXPECT_FALSE(fs::exists("out.stl"));
        EXPECT_FALSE(fs::exists(logFileName));
    }
}

// The run itself opens both ends. What is in the pipe when they are closed is lost.
TEST(OddPlaces, ASmallMeshIsLostInAPipeWithoutReaderAsOutput)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    writeBytes("in.stl", mesh);
    RunElsewhere child("in.stl", "pipe.stl");
    ASSERT_TRUE(child.endsWithin(longTime));
    EXPECT_EQ(readBytes("reports"), linesOf({finishedReport("pipe.stl")}));
}

TEST(OddPlaces, APipeWithoutReaderAsOutputKeepsTheProgramWaitingOnceItIsFull)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo("pipe.stl", 0600), 0);
    const std::string large = binaryStl("large", differentFacets(2000));
    writeBytes("in.stl", large);
    RunElsewhere child("in.stl", "pipe.stl");
    EXPECT_FALSE(child.endsWithin(shortTime));
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
        run(input, "out.stl");
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
        if (geteuid() == 0 && seteuid(65534) != 0) // the superuser may write anywhere
            throw std::runtime_error("cannot become nobody");
        run("../in.stl", "../out.stl");
    });
    EXPECT_EQ(outcome.status, 1);
    // A sanitizer may add that it lacks permissions, too.
    EXPECT_EQ(outcome.standardError.substr(0, outcome.standardError.find('\n')),
              "stl_write_ascii: Couldn't open _tmp_stl_ for writing: Permission denied");
    EXPECT_EQ(readBytes("in.stl"), mesh);
    EXPECT_FALSE(fs::exists("out.stl"));
}

// No file can grow beyond the limit, whether it is the temporary file, the log or the output.
TEST(OddPlaces, AnyLimitOfFileSizeGivesTheWholeOutputOrAnError)
{
    const TemporaryFolder folder;
    const std::string facet = asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"});
    const std::string twoFacets = "solid in\n" + facet + facet + "endsolid in\n";
    writeBytes("in.stl", twoFacets);
    ASSERT_EQ(run("in.stl", "out.stl"), success);
    const std::string output = readBytes("out.stl");
    const std::string log = readBytes(logFileName);
    const std::size_t largest = std::max(output.size(), log.size());
    int failures = 0;
    for (std::size_t limit = 0; limit <= largest; limit += limit + 7 < largest ? 7 : 1) {
        writeBytes("out.stl", "before");
        const ProcessOutcome outcome = outcomeOf([limit] {
            std::signal(SIGXFSZ, SIG_IGN);
            ResourceLimit fileSize = ResourceLimit::ofFileSize(limit);
            const Reports reports = run("in.stl", "out.stl");
            fileSize.lift();
            writeBytes("reports", linesOf(reports));
        });
        ASSERT_EQ(outcome.status, survivedStatus);
        const std::string reports = readBytes("reports");
        const bool isFlawless = reports == linesOf(success);
        if (reports.find(success[0]) == std::string::npos) {
            EXPECT_NE(reports.find("error: \nError writing stl file\n"), std::string::npos) << reports;
        } else {
            EXPECT_EQ(readBytes("out.stl"), output);
            EXPECT_EQ(isFlawless, readBytes(logFileName) == log) << reports;
        }
        failures += isFlawless ? 0 : 1;
        EXPECT_EQ(readBytes("in.stl"), twoFacets);
        EXPECT_EQ(run("in.stl", "out.stl"), success);
    }
    EXPECT_GT(failures, 50);
}

} // namespace
