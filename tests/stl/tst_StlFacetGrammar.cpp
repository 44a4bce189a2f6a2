#include "stl/StlFacetGrammar.h"
#include "stl/StlPasses.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

class RecordingHandler : public StlFacetHandler {
public:
    void facetLine(std::string_view line, StlWords &numbers) override
    {
        calls.push_back("facet <" + std::string(line) + "> then " + std::string(numbers.next()));
    }
    void vertexLine(StlWords &numbers) override { calls.push_back("vertex " + std::string(numbers.next())); }
    void otherLine(std::string_view line) override { calls.push_back("other <" + std::string(line) + ">"); }
    bool commonFacet(const char *) override { return false; } // so that every line comes

    std::vector<std::string> calls;
};

struct Walk {
    StlWalkResult result;
    std::vector<std::string> calls;
    std::string message;
    int lastLine = 0;
};

// The label line is added and read before.
Walk walked(const std::string &text, StlPassKind kind = StlPassKind::scan)
{
    const Stream in = streamOf("label\n" + text);
    StlLineReader lines(in.get());
    EXPECT_TRUE(lines.next());
    RecordingHandler handler;
    char message[stlMessageCapacity] = "untouched";
    Walk walk;
    walk.result = stlWalkFacets(lines, kind, handler, message);
    walk.calls = handler.calls;
    walk.message = message;
    walk.lastLine = lines.number();
    return walk;
}

const std::string facet =
    " facet normal 1 2 3\r\n outer loop\n vertex 4 5 6\n vertex 7 8 9\n vertex 10 11 12\n"
    " endloop \n endfacet\n";
const std::vector<std::string> facetCalls = {"facet < facet normal 1 2 3> then 1",
                                             "other < outer loop>",
                                             "vertex 4",
                                             "vertex 7",
                                             "vertex 10",
                                             "other < endloop >",
                                             "other < endfacet>"};

TEST(StlFacetGrammar, NoFacetIsNoFailure)
{
    const Walk walk = walked("");
    EXPECT_TRUE(walk.result.ok);
    EXPECT_EQ(walk.result.facets, 0);
    EXPECT_EQ(walk.calls, std::vector<std::string>{});
    EXPECT_EQ(walk.message, "untouched");
    EXPECT_EQ(walk.lastLine, 1);
}

TEST(StlFacetGrammar, TheHandlerSeesEveryLineOfAFacet)
{
    const Walk walk = walked(facet);
    EXPECT_TRUE(walk.result.ok);
    EXPECT_EQ(walk.result.facets, 1);
    EXPECT_EQ(walk.calls, facetCalls);
    EXPECT_EQ(walk.lastLine, 8);
}

TEST(StlFacetGrammar, NothingIsReadAfterEndsolid)
{
    const Walk walk = walked(facet + facet + "endsolid  \r\nrubbish\n");
    EXPECT_TRUE(walk.result.ok);
    EXPECT_EQ(walk.result.facets, 2);
    EXPECT_EQ(walk.calls.size(), 15U);
    EXPECT_EQ(walk.calls.back(), "other <endsolid  >");
    EXPECT_EQ(walk.lastLine, 16);
}

TEST(StlFacetGrammar, ALineThatFailsIsNotShownToTheHandler)
{
    const Walk walk = walked(facet + "facet normal\nouter\nvertex\nvertices\n");
    EXPECT_FALSE(walk.result.ok);
    EXPECT_EQ(walk.result.facets, 1);
    EXPECT_EQ(walk.calls.size(), 10U);
    EXPECT_EQ(walk.calls.back(), "vertex ");
    EXPECT_EQ(walk.message, "\nLine 12. Not vertex: vertices\n");
}

TEST(StlFacetGrammar, ThePassesDifferInTheirLeadingLineFeeds)
{
    EXPECT_EQ(walked("vertices\n", StlPassKind::scan).message, "\nLine 2. Not facet: vertices\n");
    EXPECT_EQ(walked("vertices\n", StlPassKind::apply).message, "Line 2. Not facet: vertices\n");
}

} // namespace
