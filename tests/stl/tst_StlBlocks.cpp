#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr std::size_t blockSize = StlBlockReader::blockSize;

// Bytes that differ from place to place.
std::string numberedBytes(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; bytes.size() < size; ++i)
        bytes += std::to_string(i) + (i % 9 == 0 ? '\n' : ' ');
    bytes.resize(size);
    return bytes;
}

TEST(StlBlocks, WhatIsAheadStaysAheadUntilItIsTaken)
{
    const Stream in = streamOf("abcdef");
    StlBlockReader reader(in.get());
    EXPECT_EQ(reader.ahead(2).substr(0, 2), "ab");
    EXPECT_EQ(reader.ahead(2).substr(0, 2), "ab");
    reader.take(3);
    EXPECT_EQ(reader.ahead(3), "def");
    reader.take(3);
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.error(), 0);
}

TEST(StlBlocks, FewerBytesThanWantedAreAheadOnlyAtTheEnd)
{
    const Stream in = streamOf("abc");
    StlBlockReader reader(in.get());
    EXPECT_EQ(reader.ahead(4), "abc");
    EXPECT_EQ(reader.ahead(blockSize), "abc");
    reader.take(1);
    EXPECT_EQ(reader.ahead(4), "bc");
}

TEST(StlBlocks, TheStreamIsReadFromWhereItStands)
{
    const Stream in = streamOf("abcdef");
    ASSERT_EQ(std::getc(in.get()), 'a');
    {
        StlBlockReader reader(in.get());
        EXPECT_EQ(reader.ahead(5), "bcdef");
        reader.take(2);
    }
    EXPECT_EQ(std::ftell(in.get()), 3);
    EXPECT_EQ(std::getc(in.get()), 'd');
}

// Sizes around one and more blocks, in steps that meet the borders in many ways.
TEST(StlBlocks, AllBytesComeInOrderAcrossBlockBorders)
{
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, blockSize - 1, blockSize, blockSize + 1,
                                   blockSize + streamPageSize, 2 * blockSize + 5000, 3 * blockSize}) {
        for (const std::size_t step : {stlCommonFacetSize, std::size_t{stlLongestLine}, streamPageSize,
                                       std::size_t{70001}, blockSize - 1, blockSize}) {
            SCOPED_TRACE(std::to_string(size) + " bytes by " + std::to_string(step));
            const std::string bytes = numberedBytes(size);
            const Stream in = streamOf(bytes);
            StlBlockReader reader(in.get());
            std::string got;
            for (std::string_view ahead = reader.ahead(step); !ahead.empty(); ahead = reader.ahead(step)) {
                ASSERT_TRUE(ahead.size() >= step || got.size() + ahead.size() == size);
                ahead = ahead.substr(0, step);
                got += ahead;
                reader.take(ahead.size());
            }
            EXPECT_TRUE(got == bytes);
            EXPECT_EQ(reader.error(), 0);
        }
    }
}

TEST(StlBlocks, AWholeBlockIsAheadWhateverIsLeftOfThePreviousOne)
{
    const std::string bytes = numberedBytes(3 * blockSize);
    for (const std::size_t taken : {std::size_t{1}, streamPageSize - 1, streamPageSize, streamPageSize + 1,
                                    blockSize / 2, blockSize - 1, blockSize}) {
        SCOPED_TRACE(taken);
        const Stream in = streamOf(bytes);
        StlBlockReader reader(in.get());
        ASSERT_GE(reader.ahead(1).size(), taken);
        reader.take(taken);
        const std::string_view ahead = reader.ahead(blockSize);
        ASSERT_GE(ahead.size(), blockSize);
        EXPECT_TRUE(ahead == std::string_view(bytes).substr(taken, ahead.size()));
    }
}

void take(StlBlockReader &reader, std::size_t count)
{
    while (count > 0) {
        const std::size_t piece = std::min(count, reader.ahead(1).size());
        ASSERT_GT(piece, 0U);
        reader.take(piece);
        count -= piece;
    }
}

TEST(StlBlocks, TheDestructorLeavesTheStreamAfterWhatWasTaken)
{
    const std::string bytes = numberedBytes(2 * blockSize + 10);
    const struct {
        const char *situation;
        std::size_t taken;
        std::size_t wanted; // afterwards
    } rows[] = {
        {"nothing read", 0, 0},
        {"nothing taken", 0, 1},
        {"in the first block", 1, 1},
        {"in the first block, with the second one ahead", 1, blockSize},
        {"at the end of the first block", blockSize, 0},
        {"between two blocks", blockSize, 1},
        {"in the second block", blockSize + 1, 1},
        {"in the second block, with the last one ahead", blockSize + 11, blockSize},
        {"at the end", bytes.size(), 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        const Stream in = streamOf(bytes);
        {
            StlBlockReader reader(in.get());
            take(reader, row.taken);
            reader.ahead(row.wanted);
        }
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(row.taken));
        const int expected = row.taken < bytes.size() ? static_cast<unsigned char>(bytes[row.taken]) : EOF;
        EXPECT_EQ(std::getc(in.get()), expected);
        EXPECT_EQ(std::ferror(in.get()), 0);
    }
}

// With a whole block ahead, each step reads a page or two, long before its bytes are taken.
TEST(StlBlocks, WhatIsLeftOfManyReadsIsGivenBack)
{
    const std::string bytes = numberedBytes(3 * blockSize);
    for (const std::size_t steps : {1U, 2U, 255U, 256U, 257U, 300U}) {
        SCOPED_TRACE(steps);
        const Stream in = streamOf(bytes);
        {
            StlBlockReader reader(in.get());
            for (std::size_t i = 0; i < steps; ++i) {
                ASSERT_GE(reader.ahead(blockSize).size(), blockSize);
                reader.take(streamPageSize + 1);
            }
        }
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(steps * (streamPageSize + 1)));
    }
}

// The stream reads whole buffers, so its own position is past the line.
TEST(StlBlocks, ATextStreamIsLeftAfterWhatWasTaken)
{
    const TemporaryFolder folder;
    std::string text;
    for (int i = 0; text.size() < 2 * blockSize; ++i)
        text += "line " + std::to_string(i) + "\n";
    std::fputs(text.c_str(), openStream("text", "w").get());
    for (const std::size_t near : {std::size_t{0}, std::size_t{5000}, blockSize, 2 * blockSize}) {
        for (std::size_t taken = near; taken < near + 12 && taken <= text.size(); ++taken) {
            for (const std::size_t wanted : {std::size_t{1}, blockSize}) {
                SCOPED_TRACE(std::to_string(taken) + " and then " + std::to_string(wanted));
                const Stream in = openStream("text", "r");
                {
                    StlBlockReader reader(in.get());
                    take(reader, taken);
                    reader.ahead(wanted);
                }
                std::string rest(20, '\0');
                rest.resize(std::fread(rest.data(), 1, rest.size(), in.get()));
                EXPECT_EQ(rest, text.substr(taken, 20));
            }
        }
    }
}

// Lines of such lengths that the border between two reads comes at every place in a line end.
std::string linesOfAllLengths(std::size_t size)
{
    std::string text;
    for (std::size_t length = 0; text.size() < size; length = (length + 1) % 100)
        text += std::string(length, 'x') + (length % 7 == 3 ? "\r\n" : "\n");
    return text;
}

TEST(StlBlocks, CarriageReturnsBeforeLineFeedsAreDropped)
{
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{1000}, blockSize, 3 * blockSize}) {
        const std::string text = linesOfAllLengths(size) + "end\r";
        for (const std::size_t step : {stlCommonFacetSize, std::size_t{70001}, blockSize}) {
            SCOPED_TRACE(std::to_string(size) + " bytes by " + std::to_string(step));
            const Stream in = streamOf(withCarriageReturns(text));
            StlBlockReader reader(in.get(), StlLineEnd::carriageReturnAndLineFeed);
            std::string got;
            for (std::string_view ahead = reader.ahead(step); !ahead.empty(); ahead = reader.ahead(step)) {
                ASSERT_TRUE(ahead.size() >= step || got.size() + ahead.size() == text.size());
                got += ahead.substr(0, step);
                reader.take(std::min(step, ahead.size()));
            }
            EXPECT_TRUE(got == text);
            EXPECT_EQ(reader.error(), 0);
        }
    }
}

TEST(StlBlocks, AStreamWithCarriageReturnsIsLeftAfterWhatWasTaken)
{
    const std::string text = linesOfAllLengths(2 * blockSize);
    const Stream in = streamOf(withCarriageReturns(text));
    for (const std::size_t near : {std::size_t{0}, std::size_t{65500}, blockSize, 2 * blockSize - 100}) {
        for (std::size_t taken = near; taken < near + 100; ++taken) {
            for (const std::size_t wanted : {std::size_t{0}, std::size_t{1}, blockSize}) {
                std::rewind(in.get());
                {
                    StlBlockReader reader(in.get(), StlLineEnd::carriageReturnAndLineFeed);
                    take(reader, taken);
                    reader.ahead(wanted);
                }
                const std::string before = withCarriageReturns(text.substr(0, taken));
                ASSERT_EQ(std::ftell(in.get()), static_cast<long>(before.size())) << taken << ", " << wanted;
            }
        }
    }
}

// The first block of the stream ends between the two characters of a line end.
TEST(StlBlocks, ALineEndThatWasReadHalfIsGivenBackWhole)
{
    const std::string text = std::string(blockSize - 1, 'x') + "\nmore";
    const Stream in = streamOf(withCarriageReturns(text));
    for (const std::size_t wanted : {0U, 1U}) { // and then the other half is read, too
        std::rewind(in.get());
        {
            StlBlockReader reader(in.get(), StlLineEnd::carriageReturnAndLineFeed);
            ASSERT_EQ(reader.ahead(1).size(), blockSize - 1);
            reader.take(blockSize - 1);
            reader.ahead(wanted);
        }
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(blockSize - 1));
    }
    StlBlockReader reader(in.get(), StlLineEnd::carriageReturnAndLineFeed);
    EXPECT_EQ(reader.ahead(1), "\nmore");
}

TEST(StlBlocks, BeyondTwoGiBTheStreamIsLeftAfterWhatWasTaken)
{
    const TemporaryFolder folder;
    constexpr std::uintmax_t beginning = (std::uintmax_t{1} << 31U) + 5;
    writeBytes("large", "");
    std::filesystem::resize_file("large", beginning); // zeros, which take no space on the disk
    const std::string end = numberedBytes(1000);
    std::fputs(end.c_str(), openStream("large", "ab").get());

    const Stream in = openStream("large", "rb");
    ASSERT_EQ(std::fseek(in.get(), -static_cast<long>(end.size()), SEEK_END), 0);
    {
        StlBlockReader reader(in.get());
        EXPECT_EQ(reader.ahead(1), end);
        reader.take(100);
    }
    StlBlockReader reader(in.get());
    EXPECT_EQ(reader.ahead(1), end.substr(100));
}

TEST(StlBlocks, ANullStreamIsEmpty)
{
    StlBlockReader reader(nullptr);
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.ahead(blockSize), "");
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.error(), 0);
}

} // namespace
