// Streams of unusual kinds: without positions, that cannot be read, and one that counts what is read.
#include "stl/StlBinaryFacets.h"
#include "stl/StlBlocks.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"
#include "tests/stl/FacetNumbers.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

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
TEST(StlPipes, ALineOfAPipeIsReadWithoutWaitingForTheNext)
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

TEST(StlPipes, NothingAfterTheLineOfAPipeIsTaken)
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

TEST(StlPipes, ALongLineOfAPipeComesInPieces)
{
    Pipe pipe;
    std::string line;
    for (int i = 0; line.size() < 2500; ++i)
        line += std::to_string(i) + ' ';
    ASSERT_TRUE(pipe.write(line + "\nend"));
    pipe.closeOut();
    StlBlockReader reader(pipe.in.get());
    for (const std::string &piece :
         {line.substr(0, stlLongestLine), line.substr(stlLongestLine, stlLongestLine),
          line.substr(std::size_t{2} * stlLongestLine) + "\n", std::string("end")}) {
        EXPECT_EQ(reader.ahead(StlBlockReader::blockSize), piece);
        reader.take(piece.size());
    }
    EXPECT_EQ(reader.ahead(1), "");
}

TEST(StlPipes, AStreamThatCannotBeReadGivesTheSystemsError)
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

// To the block reader, 10 is a line feed.
TEST(StlPipes, ABinaryFacetMayComeInPieces)
{
    std::vector<BinaryFacet> facets = differentFacets(4);
    for (BinaryFacet &facet : facets)
        facet.attribute = {10, 10};
    facets[1].numbers[0] = 1.40129846e-44F; // the bytes 10, 0, 0, 0
    const std::string records = binaryStl("", facets).substr(stlBinaryPreludeSize);
    Pipe pipe;
    ASSERT_TRUE(pipe.write(records));
    pipe.closeOut();
    StlBinaryFacetReader reader(pipe.in.get());
    for (const BinaryFacet &expected : facets) {
        StlFacet facet;
        reader.read(facet);
        EXPECT_EQ(numbersOf(facet), expected.numbers);
        EXPECT_EQ(facet.attribute[1], 10);
    }
    EXPECT_EQ(reader.error(), 0);
}

struct CountedDevice {
    static constexpr off64_t size = off64_t{10} * StlBlockReader::blockSize;

    static ssize_t read(void *cookie, char *to, std::size_t wanted)
    {
        auto &device = *static_cast<CountedDevice *>(cookie);
        const auto count = std::min(wanted, static_cast<std::size_t>(size - device.position));
        std::fill_n(to, count, 'x');
        device.position += static_cast<off64_t>(count);
        device.bytesRead += count;
        return static_cast<ssize_t>(count);
    }

    static int seek(void *cookie, off64_t *offset, int origin)
    {
        auto &device = *static_cast<CountedDevice *>(cookie);
        const off64_t from = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? device.position : size;
        *offset += from;
        device.position = *offset;
        return 0;
    }

    off64_t position = 0;
    std::size_t bytesRead = 0;
};

TEST(StlPipes, GivingBackReadsNoMoreThanABlockAgain)
{
    CountedDevice device;
    const Stream in(fopencookie(&device, "r", {CountedDevice::read, nullptr, CountedDevice::seek, nullptr}));
    ASSERT_TRUE(in);
    std::size_t taken = 0;
    {
        StlBlockReader reader(in.get());
        for (; taken < 8 * StlBlockReader::blockSize; taken += 1000) {
            ASSERT_GE(reader.ahead(1000).size(), 1000U);
            reader.take(1000);
        }
        reader.ahead(StlBlockReader::blockSize); // another block, while the one before is not used up
        device.bytesRead = 0;
    }
    EXPECT_EQ(std::ftell(in.get()), static_cast<long>(taken));
    EXPECT_LE(device.bytesRead, StlBlockReader::blockSize + 4 * streamPageSize);
}

} // namespace
