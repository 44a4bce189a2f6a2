#include "stl/StlLines.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Line {
    std::string asRead;
    std::string trimmed;
};

std::vector<Line> linesOf(std::string_view bytes)
{
    const Stream in = streamOf(bytes);
    StlLineReader reader(in.get());
    std::vector<Line> lines;
    while (reader.next()) {
        lines.push_back({std::string(reader.line()), std::string(reader.trimmed())});
        EXPECT_EQ(reader.number(), static_cast<int>(lines.size()));
    }
    return lines;
}

void expectLines(std::string_view bytes, const std::vector<Line> &expected)
{
    const std::vector<Line> lines = linesOf(bytes);
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].asRead, expected[i].asRead) << "line " << i + 1;
        EXPECT_EQ(lines[i].trimmed, expected[i].trimmed) << "line " << i + 1;
    }
}

TEST(StlLines, LinesEndWithALineFeedOrTheFile)
{
    expectLines("", {});
    expectLines("one", {{"one", "one"}});
    expectLines("one\n\nthree", {{"one\n", "one"}, {"\n", ""}, {"three", "three"}});
}

TEST(StlLines, AtMostTwoLineEndCharactersAreTrimmed)
{
    expectLines("a\r\n", {{"a\r\n", "a"}});
    expectLines("a\r\r\n", {{"a\r\r\n", "a\r"}});
    expectLines("a\r\r\r", {{"a\r\r\r", "a\r"}});
    expectLines("a\r", {{"a\r", "a"}});
    expectLines("a\r\rb", {{"a\r\rb", "a\r\rb"}});
    expectLines("\r\n", {{"\r\n", ""}});
}

TEST(StlLines, BlanksAndTabsAreNotTrimmed)
{
    expectLines("  a \t \n", {{"  a \t \n", "  a \t "}});
    expectLines("a \r\n", {{"a \r\n", "a "}});
}

TEST(StlLines, ALineEndsForTheCallerAtAZeroByte)
{
    expectLines(std::string_view("a\0b\nc\n", 6), {{"a", "a"}, {"c\n", "c"}});
    expectLines(std::string_view("a\r\0b\n", 5), {{"a\r", "a"}});
    expectLines(std::string_view("\0\n", 2), {{"", ""}});
}

TEST(StlLines, ALongLineComesInPieces)
{
    const std::string full(stlLongestLine, 'x');
    const std::string shorter(stlLongestLine - 1, 'x');
    expectLines(shorter + "\ny\n", {{shorter + "\n", shorter}, {"y\n", "y"}});
    expectLines(shorter + "\r\ny\n", {{shorter + "\r", shorter}, {"\n", ""}, {"y\n", "y"}});
    expectLines(full, {{full, full}});
    expectLines(full + "\ny\n", {{full, full}, {"\n", ""}, {"y\n", "y"}});
    expectLines(full + "z\ny\n", {{full, full}, {"z\n", "z"}, {"y\n", "y"}});
    expectLines(full + full + "xyz", {{full, full}, {full, full}, {"xyz", "xyz"}});
}

TEST(StlLines, AtTheEndTheLastLineStays)
{
    const Stream in = streamOf("one\ntwo\n");
    StlLineReader reader(in.get());
    EXPECT_EQ(reader.number(), 0);
    ASSERT_TRUE(reader.next());
    ASSERT_TRUE(reader.next());
    EXPECT_FALSE(reader.next());
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(reader.line(), "two\n");
    EXPECT_EQ(reader.number(), 2);
}

TEST(StlLines, ANullStreamHasNoLines)
{
    StlLineReader reader(nullptr);
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(reader.number(), 0);
}

TEST(StlLines, ReadingStartsWhereTheStreamStandsAndTakesNoMoreThanItsLines)
{
    const Stream in = streamOf("skipped\none\ntwo\n");
    ASSERT_EQ(std::fseek(in.get(), 8, SEEK_SET), 0);
    {
        StlLineReader reader(in.get());
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.trimmed(), "one");
    }
    EXPECT_EQ(std::ftell(in.get()), 12);
}

std::vector<std::string> wordsOf(std::string_view line)
{
    StlWords words(line);
    std::vector<std::string> all;
    for (std::string_view word = words.next(); !word.empty(); word = words.next())
        all.emplace_back(word);
    EXPECT_EQ(words.next(), "") << "the end is final";
    return all;
}

TEST(StlLines, OnlyBlanksSeparateWords)
{
    using Words = std::vector<std::string>;
    EXPECT_EQ(wordsOf(""), Words{});
    EXPECT_EQ(wordsOf("    "), Words{});
    EXPECT_EQ(wordsOf("facet"), Words{"facet"});
    EXPECT_EQ(wordsOf("  facet   normal 1 "), (Words{"facet", "normal", "1"}));
    EXPECT_EQ(wordsOf("\tfacet normal\r1"), (Words{"\tfacet", "normal\r1"}));
}

struct Point {
    double x = -1.0;
    double y = -2.0;
    double z = -3.0;
};

Point pointOf(std::string_view text)
{
    StlWords words(text);
    Point point;
    stlReadPoint(words, point.x, point.y, point.z);
    return point;
}

TEST(StlLines, TheFirstWordThatIsNotANumberEndsThePoint)
{
    struct Row {
        const char *text;
        double x, y, z;
    };
    const Row rows[] = {
        {"1 2 3", 1, 2, 3},    {"  1   2   3  4", 1, 2, 3}, {"", -1, -2, -3},      {"1", 1, -2, -3},
        {"1 2", 1, 2, -3},     {"a 2 3", -1, -2, -3},       {"1 b 3", 1, -2, -3},  {"1 2 c", 1, 2, -3},
        {"1a 2b 3c", 1, 2, 3}, {"1\t2 3", 1, 3, -3},        {"1 \t 3", 1, -2, -3}, {"1 2 3\r", 1, 2, 3},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        const Point point = pointOf(row.text);
        EXPECT_EQ(point.x, row.x);
        EXPECT_EQ(point.y, row.y);
        EXPECT_EQ(point.z, row.z);
    }
}

TEST(StlLines, TheEndOfAFileIsNotAFailure)
{
    for (const char *text : {"", "one", "one\n"}) {
        const Stream in = streamOf(text);
        StlLineReader reader(in.get());
        while (reader.next()) {
        }
        EXPECT_FALSE(reader.failed()) << text;
    }
}

} // namespace
