#include "stl/StlTextWriter.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(StlTextWriter, NothingReachesTheStreamBeforeItIsFlushed)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    writer.write("text");
    EXPECT_EQ(std::ftell(stream.get()), 0);
    EXPECT_TRUE(writer.flush());
    EXPECT_EQ(bytesOf(stream), "text");
}

TEST(StlTextWriter, TextOfAnySizeArrivesInOrder)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    std::string expected;
    for (std::size_t size = 0; size < 2000; ++size) {
        const std::string piece(size, static_cast<char>('a' + size % 26));
        writer.write(piece);
        expected += piece;
    }
    const std::string large(10 * StlTextWriter::largestRoom, 'L');
    writer.write(large);
    writer.write("end");
    EXPECT_TRUE(writer.flush());
    EXPECT_TRUE(bytesOf(stream) == expected + large + "end");
}

TEST(StlTextWriter, LineFeedsBecomeLineEnds)
{
    std::string text = "a\r\n\n";
    while (text.size() < 3 * StlTextWriter::largestRoom)
        text += "line " + std::to_string(text.size()) + '\n';
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get(), StlLineEnd::carriageReturnAndLineFeed);
    writer.write(text);
    writer.writePaddedPoint("", 1.0, 2.0, 3.0);
    EXPECT_TRUE(writer.flush());
    text += " 1.00000000E+00  2.00000000E+00  3.00000000E+00\n";
    EXPECT_TRUE(bytesOf(stream) == withCarriageReturns(text));
}

TEST(StlTextWriter, ZeroBytesAndPercentSignsAreText)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    writer.write(std::string_view("a\0b%s%n", 7));
    EXPECT_TRUE(writer.flush());
    EXPECT_EQ(bytesOf(stream), std::string("a\0b%s%n", 7));
}

TEST(StlTextWriter, PointsAreThreeNumbersAndALineFeed)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    writer.writeBlankSignedPoint("before ", 1.5, -2.0, infinity);
    writer.writePaddedPoint("before ", 1.5, -2.0, infinity);
    writer.writePaddedPoint("", -infinity, 1e100, -1e100);
    EXPECT_TRUE(writer.flush());
    EXPECT_EQ(bytesOf(stream), "before  1.50000000E+00 -2.00000000E+00  INF\n"
                               "before  1.50000000E+00 -2.00000000E+00             INF\n"
                               "           -INF 1.00000000E+100 -1.00000000E+100\n");
}

TEST(StlTextWriter, ManyPointsArriveInOrder)
{
    const Stream stream = streamOf("");
    StlTextWriter writer(stream.get());
    std::string expected;
    for (int i = 0; expected.size() < 4 * StlTextWriter::largestRoom; i = (i + 1) % 10) {
        writer.writePaddedPoint("      vertex ", i, -1.0, 0.0);
        expected += "      vertex  " + std::to_string(i) + ".00000000E+00 -1.00000000E+00  0.00000000E+00\n";
    }
    EXPECT_TRUE(writer.flush());
    EXPECT_TRUE(bytesOf(stream) == expected);
}

TEST(StlTextWriter, AnotherWriterCanGoOnAfterAFlush)
{
    const Stream stream = streamOf("");
    StlTextWriter first(stream.get());
    first.write("one ");
    EXPECT_TRUE(first.flush());
    StlTextWriter second(stream.get());
    second.write("two");
    EXPECT_TRUE(second.flush());
    EXPECT_EQ(bytesOf(stream), "one two");
}

} // namespace
