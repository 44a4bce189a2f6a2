#include "cli/ProgressBar.h"
#include "stl/StlProgress.h"
#include "tests/cli/CommandMesh.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "transform/RunPipeline.h"
#include "transform/RunReporter.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

const ProgressBar::Clock::time_point start{};

class Bar : public ::testing::Test {
protected:
    ProgressBar::Print print()
    {
        return [this](const std::string &text) { m_printed += text; };
    }

    std::string m_printed;
};

TEST_F(Bar, IsNotDrawnInTheFirstSecond)
{
    {
        ProgressBar bar("in.stl", 100, start, print());
        for (int i = 0; i < 10; ++i)
            bar.add(10, start + 99ms * i);
    }
    EXPECT_EQ(m_printed, "");
}

TEST_F(Bar, IsDrawnTenTimesASecondAtMostAndWipedOut)
{
    {
        ProgressBar bar("in.stl", 200, start, print());
        bar.add(20, start + 999ms);
        bar.add(40, start + 1000ms);
        EXPECT_EQ(m_printed, "\rin.stl [#########.....................] 30%\x1B[K");
        m_printed.clear();
        bar.add(20, start + 1099ms);
        EXPECT_EQ(m_printed, "");
        bar.add(20, start + 1100ms);
        EXPECT_EQ(m_printed, "\rin.stl [###############...............] 50%\x1B[K");
        m_printed.clear();
    }
    EXPECT_EQ(m_printed, "\r\x1B[K");
}

TEST_F(Bar, IsNeverFull)
{
    ProgressBar bar("in.stl", 100, start, print());
    bar.add(1000, start + 2s);
    EXPECT_NE(m_printed.find("] 99%"), std::string::npos);
    ProgressBar unknown("in.stl", 0, start, print());
    unknown.add(1, start + 2s);
}

TEST_F(Bar, MakesRoomForALineAndComesBack)
{
    ProgressBar bar("in.stl", 100, start, print());
    bar.wipe();
    EXPECT_EQ(m_printed, "");
    bar.add(10, start + 2s);
    m_printed.clear();
    bar.wipe();
    bar.wipe();
    EXPECT_EQ(m_printed, "\r\x1B[K");
    bar.add(10, start + 3s);
    EXPECT_NE(m_printed.find(" 20%"), std::string::npos);
}

TEST_F(Bar, FitsALineWhateverTheName)
{
    ProgressBar bar(std::string(300, 'x') + "end.stl", 100, start, print());
    bar.add(10, start + 2s);
    EXPECT_LE(m_printed.size(), 80U + 4U);
    EXPECT_NE(m_printed.find("xend.stl ["), std::string::npos);
}

// ----------------------------------------------------------------------------------------------------- bytes

class Silent final : public RunReporter {
public:
    void error(const QString &text) override { ADD_FAILURE() << text.toStdString(); }
    void logNotEmptied(const QString &details) override { ADD_FAILURE() << details.toStdString(); }
    void finished(const QString &) override {}
};

std::uint64_t observedBytes = 0;

std::string longText()
{
    std::string text = "solid\n";
    for (int i = 0; i < 20000; ++i)
        text += asciiFacet({"0 0 1", "1 2 3", "5 2.25 3", "1 10 " + std::to_string(i)});
    return text + "endsolid\n";
}

TEST(BytesOfRun, AreWhatTheRunReadsAndWrites)
{
    const TemporaryFolder folder;
    for (const std::string &mesh : {binaryStl("", differentFacets(20000)), longText()}) {
        writeBytes("in.stl", mesh);
        for (int scans = 0; scans <= 2; ++scans) {
            TransformParameters p;
            p.xScl = p.yScl = p.zScl = 1.0;
            p.xSet0 = scans > 0 ? 1 : 0;
            p.xSetL = scans > 1 ? 1 : 0;
            p.xLength = 10.0;
            observedBytes = 0;
            stlProgressObserver = [](std::size_t bytes) { observedBytes += bytes; };
            Silent silent;
            RunPipeline(silent).run(p, "in.stl", "out.stl");
            stlProgressObserver = nullptr;
            const auto guess = static_cast<double>(bytesOfRun("in.stl", scans));
            EXPECT_NEAR(static_cast<double>(observedBytes) / guess, 1.0, 0.05) << scans;
        }
    }
}

TEST(BytesOfRun, AreSomeNumberForAnyFile)
{
    const TemporaryFolder folder;
    EXPECT_EQ(bytesOfRun("none.stl", 2), 0U);
    for (const std::string &bytes :
         {std::string(), std::string("solid"), std::string(300, '\n'), std::string(90, '\xFF')}) {
        writeBytes("in.stl", bytes);
        EXPECT_LT(bytesOfRun("in.stl", 2), 1'000'000U);
    }
}

} // namespace
