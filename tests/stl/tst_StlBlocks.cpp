#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

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

TEST(StlBlocks, TheDestructorLeavesTheStreamAfterWhatWasTaken)
{
    const std::string bytes = numberedBytes(2 * blockSize + 10);
    for (const std::size_t taken : {std::size_t{0}, std::size_t{1}, blockSize, blockSize + 1, bytes.size()}) {
        SCOPED_TRACE(taken);
        const Stream in = streamOf(bytes);
        {
            StlBlockReader reader(in.get());
            std::size_t left = taken;
            while (left > 0) {
                const std::size_t count = std::min(left, reader.ahead(1).size());
                reader.take(count);
                left -= count;
            }
            reader.ahead(1);
        }
        EXPECT_EQ(std::ftell(in.get()), static_cast<long>(taken));
        const int expected = taken < bytes.size() ? static_cast<unsigned char>(bytes[taken]) : EOF;
        EXPECT_EQ(std::getc(in.get()), expected);
    }
}

TEST(StlBlocks, ANullStreamIsEmpty)
{
    StlBlockReader reader(nullptr);
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.ahead(blockSize), "");
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.error(), 0);
}

struct Pipe {
    Pipe()
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) == 0) {
            out = ends[1];
            in.reset(fdopen(ends[0], "r"));
        }
    }
    ~Pipe() { closeOut(); }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;

    bool write(std::string_view bytes) const
    {
        return ::write(out, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    }
    void closeOut()
    {
        if (out >= 0)
            close(out);
        out = -1;
    }

    Stream in;
    int out = -1;
};

// The writing end is still open: asking for more than the line would wait.
TEST(StlBlocks, ALineOfAPipeIsReadWithoutWaitingForTheNext)
{
    Pipe pipe;
    ASSERT_TRUE(pipe.write("one\n"));
    StlBlockReader reader(pipe.in.get());
    EXPECT_EQ(reader.ahead(stlCommonFacetSize), "one\n");
    EXPECT_EQ(reader.ahead(stlLongestLine), "one\n");
    reader.take(4);
    ASSERT_TRUE(pipe.write("two\nthree"));
    pipe.closeOut();
    EXPECT_EQ(reader.ahead(1), "two\n");
    reader.take(4);
    EXPECT_EQ(reader.ahead(1), "three");
    reader.take(5);
    EXPECT_EQ(reader.ahead(1), "");
    EXPECT_EQ(reader.error(), 0);
}

TEST(StlBlocks, NothingAfterTheLineOfAPipeIsTaken)
{
    Pipe pipe;
    ASSERT_TRUE(pipe.write("one\ntwo\nthree\n"));
    {
        StlBlockReader reader(pipe.in.get());
        reader.take(reader.ahead(stlCommonFacetSize).size());
        reader.take(reader.ahead(stlCommonFacetSize).size());
    }
    char rest[20] = {};
    ASSERT_NE(std::fgets(rest, sizeof rest, pipe.in.get()), nullptr);
    EXPECT_STREQ(rest, "three\n");
}

TEST(StlBlocks, ALongLineOfAPipeComesInPieces)
{
    Pipe pipe;
    std::string line = numberedBytes(2500);
    std::replace(line.begin(), line.end(), '\n', ' ');
    ASSERT_TRUE(pipe.write(line + "\nend"));
    pipe.closeOut();
    StlBlockReader reader(pipe.in.get());
    for (const std::string &piece :
         {line.substr(0, stlLongestLine), line.substr(stlLongestLine, stlLongestLine),
          line.substr(std::size_t{2} * stlLongestLine) + "\n", std::string("end")}) {
        EXPECT_EQ(reader.ahead(blockSize), piece);
        reader.take(piece.size());
    }
    EXPECT_EQ(reader.ahead(1), "");
}

TEST(StlBlocks, AStreamThatCannotBeReadGivesTheSystemsError)
{
    const TemporaryFolder folder;
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    close(ends[0]);
    const struct {
        const char *situation;
        Stream in;
        int error;
    } rows[] = {{"a directory", openStream(".", "r"), EISDIR},
                {"a file open for writing", openStream("out", "w"), EBADF},
                {"the writing end of a pipe", Stream(fdopen(ends[1], "w")), EBADF}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.situation);
        StlBlockReader reader(row.in.get());
        EXPECT_EQ(reader.error(), 0);
        EXPECT_EQ(reader.ahead(1), "");
        EXPECT_EQ(reader.error(), row.error);
        EXPECT_NE(std::ferror(row.in.get()), 0);
    }
}

} // namespace
