// Files that cannot be read, and memory that is missing.
#include "stl/StlReader.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/MissingMemory.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class StlReaderFailures : public ::testing::Test {
public:
    ~StlReaderFailures() override
    {
        if (mesh.file != nullptr)
            std::fclose(mesh.file);
        stl_release_facets(mesh);
    }

protected:
    void initialize(std::string_view bytes)
    {
        writeBytes("in.stl", bytes);
        stl_initialize(mesh, "in.stl");
    }

    ProcessOutcome outcomeOfInitializing(const std::string &path)
    {
        return outcomeOf([this, &path] {
            alarm(10); // a reader that waits for a pipe would wait forever
            stl_initialize(mesh, path.c_str());
        });
    }

    TemporaryFolder folder;
    StlMesh mesh;
};

TEST_F(StlReaderFailures, ABinaryFileOfTheWrongSizeEndsTheProcess)
{
    const std::string fiveFacets = binaryStl("", differentFacets(5));
    std::vector<std::string> files = {"solid " + std::string(100, 'x') + "\xC3\xBC\nendsolid\n"}; // ASCII
    for (const std::size_t size : {88U, 134U, 184U, 234U, 235U, 283U, 285U, 300U, 333U})
        files.push_back(fiveFacets.substr(0, size));
    for (const std::string &bytes : files) {
        SCOPED_TRACE(bytes.size());
        writeBytes("wrong size.stl", bytes);
        const ProcessOutcome outcome = outcomeOfInitializing("wrong size.stl");
        EXPECT_TRUE(outcome.exited);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.standardError, "The file wrong size.stl has the wrong size.\n");
    }
}

TEST_F(StlReaderFailures, AFileThatCannotBeReadEndsTheProcess)
{
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const Stream writer = openStream("pipe", "r+"); // or opening the pipe for reading would wait
    const std::string longPath(5000, 'p');
    const std::pair<std::string, std::string> rows[] = {
        {"missing.stl", "No such file or directory"},
        {"", "No such file or directory"},
        {"no folder/in.stl", "No such file or directory"},
        {"100%s%n.stl", "No such file or directory"},
        {longPath, "File name too long"},
        {"pipe", "Illegal seek"},
    };
    for (const auto &[path, reason] : rows) {
        SCOPED_TRACE(path);
        const ProcessOutcome outcome = outcomeOfInitializing(path);
        EXPECT_TRUE(outcome.exited);
        EXPECT_EQ(outcome.status, 1);
        std::string line = "stl_initialize: Couldn't open ";
        line.append(path).append(" for reading: ").append(reason).append("\n");
        EXPECT_EQ(outcome.standardError, line);
    }
}

TEST_F(StlReaderFailures, ADirectoryIsAMeshWithoutFacets)
{
    std::filesystem::create_directory("folder");
    stl_initialize(mesh, "folder");
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    EXPECT_EQ(mesh.stats.type, ascii);
    EXPECT_EQ(mesh.stats.facetCount, 0);
    EXPECT_STREQ(mesh.stats.header, "");
}

TEST_F(StlReaderFailures, AFailedAllocationIsReportedTwiceAndThenNothingIsLoaded)
{
    const ProcessOutcome outcome = outcomeOf([this] {
        initialize(binaryStl("", differentFacets(4)));
        const ResourceLimit limit = ResourceLimit::ofMemory(std::size_t{1} << 30);
        mesh.stats.facetCount = std::numeric_limits<std::int32_t>::max();
        mesh.stats.max = {1.0F, 2.0F, 3.0F};
        mesh.stats.boundingDiameter = 4.0F;
        stl_allocate_facets(mesh);
        if (mesh.facets != nullptr || mesh.stats.allocatedFacetCount != mesh.stats.facetCount)
            throw std::runtime_error("allocated");
        stl_load_facets(mesh, 0, true);
        if (mesh.stats.max.x != 1.0F || mesh.stats.boundingDiameter != 4.0F)
            throw std::runtime_error("loaded");
    });
    EXPECT_EQ(verdictOnMissingMemory(outcome).text(), "");
}

std::size_t addressSpaceInUse()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

TEST_F(StlReaderFailures, AMissingSecondTableIsNotReported)
{
    if (!ResourceLimit::memoryCanBeLimited())
        GTEST_SKIP() << "the address space cannot be limited here";
    constexpr std::int32_t facetCount = 10'000'000;
    const ProcessOutcome outcome = outcomeOf([this] {
        initialize(binaryStl("", differentFacets(4)));
        const ResourceLimit limit = ResourceLimit::ofMemory(
            addressSpaceInUse() + facetCount * sizeof(StlFacet) + (std::size_t{20} << 20));
        mesh.stats.facetCount = facetCount;
        stl_allocate_facets(mesh);
        if (mesh.facets == nullptr || mesh.auxTable != nullptr)
            throw std::runtime_error("the limit does not separate the tables");
    });
    EXPECT_EQ(outcome.status, survivedStatus);
    EXPECT_EQ(outcome.standardError, "");
}

} // namespace
