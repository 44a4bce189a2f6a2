#include "stl/StlBlocks.h"
#include "stl/StlProgress.h"
#include "stl/StlTextWriter.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<std::size_t> told;

class StlProgress : public ::testing::Test {
protected:
    void SetUp() override
    {
        told.clear();
        stlProgressObserver = [](std::size_t bytes) { told.push_back(bytes); };
    }
    void TearDown() override { stlProgressObserver = nullptr; }
};

std::size_t sum(const std::vector<std::size_t> &numbers)
{
    std::size_t result = 0;
    for (const std::size_t number : numbers)
        result += number;
    return result;
}

constexpr std::size_t size = 5 * StlBlockReader::blockSize + 1234;

TEST_F(StlProgress, TellsOfEveryByteReadInAFewBlocks)
{
    const Stream stream = streamOf(std::string(size, 'x'));
    StlBlockReader blocks(stream.get());
    while (!blocks.ahead(1).empty())
        blocks.take(blocks.ahead(1).size());
    EXPECT_EQ(sum(told), size);
    EXPECT_LT(told.size(), 10U);
}

TEST_F(StlProgress, TellsOfEveryByteWrittenInAFewBlocks)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    for (std::size_t i = 0; i < size; ++i)
        writer.write("x");
    EXPECT_TRUE(writer.flush());
    EXPECT_EQ(sum(told), size);
    EXPECT_LT(told.size(), 10U);
}

} // namespace
