// The command on a failing system: one operation of a run fails, once for each operation that the run has.
// Afterwards the output is the old one or the whole new one, the exit status says which, standard error says
// why, and nothing else is left.
#include "cli/Command.h"
#include "cli/PrivateFolder.h"
#include "tests/cli/CommandMesh.h"
#include "tests/faults/FaultPoints.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

struct FaultCase {
    const char *name;
    FaultPoint point;
    int error;
    bool lasting;
};

std::ostream &operator<<(std::ostream &out, const FaultCase &fault) { return out << fault.name; }

// Both scans, both loads, every file there can be.
const Arguments everyRoad{"--force",          "--x-scale",    "2",          "--x-origin-to-zero",
                          "--y-length",       "10",           "--rotate-z", "30",
                          "--repeat",         "repeated.log", "--log",      "out.log",
                          "--keep-temporary", "--json",       "in.stl",     "out.stl"};

// The status of the command as the process would end with it.
ProcessOutcome outcomeOfCommand(const FaultCase &fault, long n)
{
    return outcomeOf([&fault, n] {
        removePrivateFoldersAtTheEnd();
        const Arguments arguments = everyRoad;
        if (std::freopen("said", "w", stdout) == nullptr)
            return;
        armFault(fault.point, n, fault.error, fault.lasting);
        const int status = meshvaneCommand(arguments);
        disarmFaults();
        std::exit(status);
    });
}

class EveryOperation : public ::testing::TestWithParam<FaultCase> {
protected:
    void prepare(const std::string &mesh)
    {
        unsetenv("TMPDIR");
        const QFile used; // what Qt sets up with its first object cannot fail without a crash
        m_mesh = mesh;
        writeBytes("in.stl", m_mesh);
        const ProcessOutcome first = outcomeOf([] {
            std::exit(meshvaneCommand({"--z-scale", "3", "--log", "repeated.log", "in.stl", "first.stl"}));
        });
        ASSERT_EQ(first.status, 0) << first.standardError;
        fs::remove("first.stl");
        const ProcessOutcome good = outcomeOf([] {
            if (std::freopen("said", "w", stdout) == nullptr)
                return;
            const fs::path here = fs::current_path(); // the command leaves it
            countOperations();
            const int status = meshvaneCommand(everyRoad);
            disarmFaults();
            fs::current_path(here);
            writeBytes("counted", std::to_string(operationsAt(GetParam().point)));
            std::exit(status);
        });
        ASSERT_EQ(good.status, 0) << good.standardError;
        m_operations = std::stol(readBytes("counted"));
        fs::remove("counted");
        m_output = readBytes("out.stl");
        m_log = readBytes("out.log");
        m_text = readBytes("out.stl._tmp_stl_");
    }

    void failOneAfterTheOther()
    {
        ASSERT_GT(m_operations, 0);
        RecordProperty("faults", static_cast<int>(m_operations));
        int failures = 0;
        for (long n = 1; n <= m_operations && !HasFailure(); ++n) {
            SCOPED_TRACE(std::to_string(n) + " of " + std::to_string(m_operations));
            for (const char *file : {"out.stl", "out.log", "out.stl._tmp_stl_"})
                writeBytes(file, "old");
            failures += failAt(n) ? 1 : 0;
        }
        EXPECT_GT(failures, 0);
    }

private:
    // True if the run has failed.
    bool failAt(long n)
    {
        const ProcessOutcome outcome = outcomeOfCommand(GetParam(), n);
        EXPECT_TRUE(outcome.exited) << "signal " << outcome.status << '\n' << outcome.standardError;
        EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << outcome.status;
        EXPECT_EQ(readBytes("in.stl"), m_mesh);
        expectNoRemains();
        if (outcome.status == 0)
            expectEverything(outcome.standardError);
        else
            expectNothingNew(outcome.standardError);
        return outcome.status != 0;
    }

    static void expectNoRemains()
    {
        for (const auto &entry : fs::directory_iterator("."))
            EXPECT_NE(entry.path().filename().string()[0], '.') << entry.path();
    }

    void expectEverything(const std::string &standardError) const
    {
        EXPECT_EQ(standardError, "");
        EXPECT_TRUE(readBytes("out.stl") == m_output);
        EXPECT_TRUE(readBytes("out.log") == m_log);
        EXPECT_TRUE(readBytes("out.stl._tmp_stl_") == m_text);
        EXPECT_NE(readBytes("said").find("\"facets\""), std::string::npos);
    }

    // The text is kept after a failure, too, but only a whole one.
    void expectNothingNew(const std::string &standardError) const
    {
        EXPECT_EQ(readBytes("out.stl"), "old");
        EXPECT_EQ(readBytes("out.log"), "old");
        const std::string text = readBytes("out.stl._tmp_stl_");
        EXPECT_TRUE(text == "old" || text == m_text);
        EXPECT_EQ(readBytes("said"), "");
        EXPECT_FALSE(standardError.empty());
        EXPECT_EQ(standardError.find("bad_alloc"), std::string::npos) << standardError;
        std::istringstream lines(standardError);
        for (std::string line; std::getline(lines, line);)
            EXPECT_EQ(line.find("meshvane-cli: "), 0U) << line;
    }

    const TemporaryFolder m_folder;
    std::string m_mesh;
    std::string m_output;
    std::string m_log;
    std::string m_text;
    long m_operations = 0;
};

TEST_P(EveryOperation, InARunOverAnAsciiFile)
{
    prepare(boxMesh());
    failOneAfterTheOther();
}

TEST_P(EveryOperation, InARunOverABinaryFile)
{
    prepare(binaryStl("made by hand", differentFacets(12)));
    failOneAfterTheOther();
}

const FaultCase faultCases[] = {
    {"Opening", FaultPoint::open, EMFILE, false},
    {"OpeningFromNowOn", FaultPoint::open, EMFILE, true},
    {"Reading", FaultPoint::read, EIO, false},
    {"Writing", FaultPoint::write, ENOSPC, false},
    {"WritingFromNowOn", FaultPoint::write, ENOSPC, true},
    {"Closing", FaultPoint::close, EIO, false},
    {"TheTables", FaultPoint::callocate, ENOMEM, false},
    {"TheTablesFromNowOn", FaultPoint::callocate, ENOMEM, true},
    {"Memory", FaultPoint::allocate, ENOMEM, false},
};

INSTANTIATE_TEST_SUITE_P(, EveryOperation, ::testing::ValuesIn(faultCases),
                         [](const auto &test) { return std::string(test.param.name); });

} // namespace
