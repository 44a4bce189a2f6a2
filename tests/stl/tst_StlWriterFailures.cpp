// Files that cannot be opened or are too large for the disk.
#include "stl/StlCommonFacet.h"
#include "stl/StlTextWriter.h"
#include "stl/StlWriter.h"
#include "tests/support/DyingProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

// A mesh of that many facets.
class FacetsOf : public StlMesh {
public:
    explicit FacetsOf(std::size_t count)
        : m_facets(count)
    {
        facets = m_facets.data();
        stats.facetCount = static_cast<std::int32_t>(count);
    }

private:
    std::vector<StlFacet> m_facets;
};

// More than the text writer holds back.
constexpr std::size_t manyFacets = 4 * StlTextWriter::largestRoom / stlCommonFacetSize;

TEST(StlWriterFailures, AFileThatCannotBeOpenedEndsTheProcess)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory("folder");
    const std::string longPath(5000, 'p');
    const std::pair<std::string, std::string> rows[] = {
        {"missing/out.stl", "No such file or directory"},
        {"", "No such file or directory"},
        {"missing/100%s%n.stl", "No such file or directory"},
        {"folder", "Is a directory"},
        {longPath, "File name too long"},
    };
    for (const auto &[path, reason] : rows) {
        SCOPED_TRACE(path);
        const FacetsOf mesh(1);
        const ProcessOutcome outcome =
            outcomeOf([&mesh, &name = path] { stl_write_ascii(mesh, name.c_str()); });
        EXPECT_TRUE(outcome.exited);
        EXPECT_EQ(outcome.status, 1);
        std::string line = "stl_write_ascii: Couldn't open ";
        line.append(path).append(" for writing: ").append(reason).append("\n");
        EXPECT_EQ(outcome.standardError, line);
    }
}

TEST(StlWriterFailures, AFullDiskIsNotReported)
{
    const FacetsOf mesh(manyFacets);
    const ProcessOutcome outcome = outcomeOf([&mesh] { stl_write_ascii(mesh, "/dev/full"); });
    EXPECT_TRUE(outcome.exited);
    EXPECT_EQ(outcome.status, survivedStatus);
    EXPECT_EQ(outcome.standardError, "");
}

TEST(StlWriterFailures, TheCheckedWriterReportsAFullDisk)
{
    for (const std::size_t count : {std::size_t{0}, std::size_t{1}, manyFacets}) {
        SCOPED_TRACE(count);
        EXPECT_FALSE(stl_write_ascii_checked(FacetsOf(count), "/dev/full"));
    }
}

} // namespace
