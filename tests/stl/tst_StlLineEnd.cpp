#include "stl/StlCommonFacet.h"
#include "stl/StlLineEnd.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>

namespace {

const std::string facet = stlCommonFacetText;

std::string lengthened(std::string_view text)
{
    std::string copy(2 * text.size(), '?');
    copy.resize(static_cast<std::size_t>(stlCopyWithCarriageReturns(copy.data(), text) - copy.data()));
    return copy;
}

std::string shortened(std::string_view text)
{
    std::string copy(text.size(), '?');
    copy.resize(static_cast<std::size_t>(stlCopyWithoutCarriageReturns(copy.data(), text) - copy.data()));
    return copy;
}

TEST(StlLineEnd, EachLineFeedGetsACarriageReturn)
{
    EXPECT_EQ(lengthened(""), "");
    EXPECT_EQ(lengthened("ab"), "ab");
    EXPECT_EQ(lengthened("\n"), "\r\n");
    EXPECT_EQ(lengthened("a\n\nb"), "a\r\n\r\nb");
    EXPECT_EQ(lengthened("a\r\nb\r"), "a\r\r\nb\r");
    EXPECT_EQ(lengthened(std::string_view("a\0\nb", 4)), std::string("a\0\r\nb", 5));
}

TEST(StlLineEnd, OnlyCarriageReturnsBeforeLineFeedsAreDropped)
{
    EXPECT_EQ(shortened(""), "");
    EXPECT_EQ(shortened("ab"), "ab");
    EXPECT_EQ(shortened("\r\n"), "\n");
    EXPECT_EQ(shortened("a\r\n\r\nb"), "a\n\nb");
    EXPECT_EQ(shortened("a\nb\n"), "a\nb\n");
    EXPECT_EQ(shortened("a\r\r\nb\rc\r"), "a\r\nb\rc\r");
    EXPECT_EQ(shortened(std::string_view("a\0\r\nb", 5)), std::string("a\0\nb", 4));
}

// Whole facets are copied at once, so each place in one is tried, with every character that matters.
TEST(StlLineEnd, AFacetOfAnyFormIsCopiedLikeItsLines)
{
    std::string threeFacets = facet + facet;
    threeFacets += facet;
    for (std::size_t at = 0; at <= facet.size(); ++at) {
        for (const char *stray : {"", "\n", "\r", "\r\n", "x"}) {
            for (const std::size_t replaced : {0U, 1U, 2U}) {
                if (at + replaced > facet.size())
                    continue;
                std::string between = threeFacets;
                between.replace(facet.size() + at, replaced, stray);
                const std::string odd = between.substr(facet.size(), between.size() - 2 * facet.size());
                for (const std::string &text : {odd, between, odd.substr(0, at), odd.substr(at)}) {
                    SCOPED_TRACE(text);
                    ASSERT_EQ(lengthened(text), withCarriageReturns(text));
                    ASSERT_EQ(shortened(withCarriageReturns(text)), text);
                }
            }
        }
    }
}

// The carriage return of one of the seven line ends is missing.
TEST(StlLineEnd, LinesWithEitherLineEndMayBeMixed)
{
    const std::string longer = withCarriageReturns(facet);
    for (std::size_t at = longer.find('\r'); at != std::string::npos; at = longer.find('\r', at + 1)) {
        std::string mixed = longer;
        mixed.erase(at, 1);
        EXPECT_EQ(shortened(mixed + longer), facet + facet);
        mixed = longer;
        mixed[at] = 'x';
        std::string expected = facet;
        expected.insert(shortened(longer.substr(0, at)).size(), "x");
        EXPECT_EQ(shortened(mixed), expected);
    }
}

TEST(StlLineEnd, TheNextTextCharacterSkipsACarriageReturnBeforeALineFeed)
{
    const Stream in = streamOf("a\r\n\r\r\nb\r");
    std::string got;
    for (int character = stlNextTextCharacter(in.get()); character != EOF;
         character = stlNextTextCharacter(in.get()))
        got += static_cast<char>(character);
    EXPECT_EQ(got, "a\n\r\nb\r");
}

TEST(StlLineEnd, TheSystemsLineEndIsThatOfTextMode)
{
    const TemporaryFolder folder;
    std::fputs("\n", openStream("text", "w").get());
    EXPECT_EQ(readBytes("text"), stlSystemLineEnd == StlLineEnd::lineFeed ? "\n" : "\r\n");
}

} // namespace
