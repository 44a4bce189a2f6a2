#include "stl/StlCommonFacet.h"
#include "stl/StlFacetGrammar.h"
#include "stl/StlLimits.h"
#include "tests/support/TextFile.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

class RecordingHandler : public StlFacetHandler {
public:
    explicit RecordingHandler(bool takesCommonFacets)
        : m_takesCommonFacets(takesCommonFacets)
    {}

    void facetLine(std::string_view line, StlWords &numbers) override
    {
        calls.push_back("facet <" + std::string(line) + "> then " + std::string(numbers.next()));
    }
    void vertexLine(StlWords &numbers) override { calls.push_back("vertex " + std::string(numbers.next())); }
    void otherLine(std::string_view line) override { calls.push_back("other <" + std::string(line) + ">"); }
    bool commonFacet(const char *text) override
    {
        const bool taken = m_takesCommonFacets && stlHasCommonLayout(text);
        if (taken)
            calls.emplace_back("common");
        return taken;
    }

    std::vector<std::string> calls;

private:
    bool m_takesCommonFacets;
};

struct Walk {
    StlWalkResult result;
    std::vector<std::string> calls;
    std::string message;
    int lastLine = 0;
};

// Adds a label line and reads it first.
Walk walked(const std::string &text, StlPassKind kind = StlPassKind::scan, bool takesCommonFacets = false)
{
    const Stream in = streamOf("label\n" + text);
    StlLineReader lines(in.get());
    EXPECT_TRUE(lines.next());
    RecordingHandler handler(takesCommonFacets);
    char message[stlMessageCapacity] = "untouched";
    Walk walk;
    walk.result = stlWalkFacets(lines, kind, handler, message);
    walk.calls = handler.calls;
    walk.message = message;
    walk.lastLine = lines.number();
    return walk;
}

TEST(StlFacetGrammar, NoFacetIsNoFailure)
{
    const Walk walk = walked("");
    EXPECT_TRUE(walk.result.ok);
    EXPECT_EQ(walk.result.facets, 0);
    EXPECT_EQ(walk.calls, std::vector<std::string>{});
    EXPECT_EQ(walk.message, "untouched");
    EXPECT_EQ(walk.lastLine, 1);
}

TEST(StlFacetGrammar, TheHandlerSeesEveryLineUpToEndsolid)
{
    const std::string facet =
        " facet   normal 1 2 3\r\nouter space\n   vertex 4 5 6\nvertex  7 8 9 rest\n vertex 10 11 12\n"
        " endloop \n endfacet rest\n";
    const std::vector<std::string> facetCalls = {"facet < facet   normal 1 2 3> then 1",
                                                 "other <outer space>",
                                                 "vertex 4",
                                                 "vertex 7",
                                                 "vertex 10",
                                                 "other < endloop >",
                                                 "other < endfacet rest>"};
    const Walk one = walked(facet);
    EXPECT_TRUE(one.result.ok);
    EXPECT_EQ(one.result.facets, 1);
    EXPECT_EQ(one.calls, facetCalls);
    EXPECT_EQ(one.lastLine, 8);

    std::vector<std::string> calls = facetCalls;
    calls.insert(calls.end(), facetCalls.begin(), facetCalls.end());
    calls.emplace_back("other < endsolid x >");
    const Walk two = walked(facet + facet + " endsolid x \r\nrubbish\n");
    EXPECT_TRUE(two.result.ok);
    EXPECT_EQ(two.result.facets, 2);
    EXPECT_EQ(two.calls, calls);
    EXPECT_EQ(two.lastLine, 16);
}

TEST(StlFacetGrammar, AFacetOfTheCommonFormMayBeTakenAsAWhole)
{
    const std::string common = stlCommonFacetText;
    const Walk walk =
        walked(common + common + "facet normal\nouter\nvertex\nvertex\nvertex\nendloop\nendfacet\n" + common +
                   "rubbish\n",
               StlPassKind::apply, true);
    EXPECT_EQ(walk.result.facets, 4);
    ASSERT_EQ(walk.calls.size(), 10U);
    for (const std::size_t i : {0U, 1U, 9U})
        EXPECT_EQ(walk.calls[i], "common");
    EXPECT_EQ(walk.message, "Line 30. Not facet: rubbish\n");
}

// Whether the message of the applying pass starts with a line feed; that of the scan always does.
enum class Lead { scanOnly, both };

TEST(StlFacetGrammar, EveryLineThatIsMissingOrWrongHasItsMessage)
{
    const std::vector<std::string> lines = {"facet normal\n", "outer loop\n", "vertex\n",  "vertex\n",
                                            "vertex\n",       "endloop\n",    "endfacet\n"};
    const std::string longest(stlLongestLine, 'x');
    const Lead scanOnly = Lead::scanOnly;
    const Lead both = Lead::both;
    struct Row {
        const char *situation;
        std::size_t before; // how many good lines come first
        std::string line;
        std::string message;
        Lead lead;
    };
    const Row rows[] = {
        {"another first word", 0, "  solid x\n", "Line 2. Not facet:   solid x\n", scanOnly},
        {"keywords are matched whole", 0, "facets normal\n", "Line 2. Not facet: facets normal\n", scanOnly},
        {"half a keyword", 0, "face normal\n", "Line 2. Not facet: face normal\n", scanOnly},
        {"keywords are case-sensitive", 0, "Facet normal\n", "Line 2. Not facet: Facet normal\n", scanOnly},
        {"endsolid is matched whole", 0, "endsolids\n", "Line 2. Not facet: endsolids\n", scanOnly},
        {"endsolid is case-sensitive", 0, "ENDSOLID\n", "Line 2. Not facet: ENDSOLID\n", scanOnly},
        {"a tab before facet", 0, "\tfacet normal\n", "Line 2. Not facet: \tfacet normal\n", scanOnly},
        {"a tab after facet", 0, "facet\tnormal\n", "Line 2. Not facet: facet\tnormal\n", scanOnly},
        {"a tab before endsolid", 0, "\tendsolid\n", "Line 2. Not facet: \tendsolid\n", scanOnly},
        {"an empty line", 0, "\n", "Line 2. Not facet: \n", scanOnly},
        {"an empty line with a carriage return", 0, "\r\n", "Line 2. Not facet: \n", scanOnly},
        {"blanks only", 0, "   \n", "Line 2. Not facet:    \n", scanOnly},
        {"no line feed at the end", 0, "rubbish", "Line 2. Not facet: rubbish\n", scanOnly},
        {"percent signs are text", 0, "%s%d%n\n", "Line 2. Not facet: %s%d%n\n", scanOnly},
        {"the longest line", 0, longest + "x\n", "Line 2. Not facet: " + longest + "\n", scanOnly},
        {"not normal", 0, "facet Normal 0\n", "Line 2. Not normal: facet Normal 0\n", scanOnly},
        {"no second word", 0, "facet\n", "Line 2. Not normal: facet\n", scanOnly},
        {"blanks but no second word", 0, " facet   \n", "Line 2. Not normal:  facet   \n", scanOnly},
        {"a tab after normal", 0, "facet normal\t0\n", "Line 2. Not normal: facet normal\t0\n", scanOnly},
        {"no outer line", 1, "", "Error at line 2\n", both},
        {"not outer", 1, "    Outer loop\n", "Line 3. Not outer:     Outer loop\n", scanOnly},
        {"outer and loop in one word", 1, "outerloop\n", "Line 3. Not outer: outerloop\n", scanOnly},
        {"an empty line for outer", 1, "\n", "Line 3. Not outer: \n", scanOnly},
        {"no first corner", 2, "", "Error at line 3\n", scanOnly},
        {"no second corner", 3, "", "Error at line 4\n", scanOnly},
        {"no third corner", 4, "", "Error at line 5\n", scanOnly},
        {"first corner not vertex", 2, "vertices 1\n", "Line 4. Not vertex: vertices 1\n", scanOnly},
        {"second corner not vertex", 3, "  endloop\n", "Line 5. Not vertex:   endloop\n", scanOnly},
        {"third corner not vertex", 4, "\n", "Line 6. Not vertex: \n", scanOnly},
        {"a tab after vertex", 2, "vertex\t1\n", "Line 4. Not vertex: vertex\t1\n", scanOnly},
        {"no endloop line", 5, "", "Error at line 6\n", scanOnly},
        {"not endloop", 5, "  vertex 1\n", "Line 7. Not endloop:   vertex 1\n", scanOnly},
        {"endloop is matched whole", 5, "endloops\n", "Line 7. Not endloop: endloops\n", scanOnly},
        {"end and loop apart", 5, "end loop\n", "Line 7. Not endloop: end loop\n", scanOnly},
        {"a tab after endloop", 5, "endloop\t\n", "Line 7. Not endloop: endloop\t\n", scanOnly},
        {"no endfacet line", 6, "", "Error at line 7\n", both},
        {"not endfacet", 6, "endsolid\n", "Line 8. Not endfacet: endsolid\n", both},
        {"endfacet is matched whole", 6, "endfacet1\n", "Line 8. Not endfacet: endfacet1\n", both},
        {"two carriage returns", 6, "endfacet\r\r\n", "Line 8. Not endfacet: endfacet\r\n", both},
        {"second facet: not facet", 7, "outer\n", "Line 9. Not facet: outer\n", scanOnly},
        {"second facet: no outer line", 8, "", "Error at line 9\n", both},
        {"second facet: not outer", 8, "inner\n", "Line 10. Not outer: inner\n", scanOnly},
        {"second facet: no first corner", 9, "", "Error at line 10\n", scanOnly},
        {"second facet: not vertex", 9, "x\n", "Line 11. Not vertex: x\n", scanOnly},
        {"second facet: no endloop line", 12, "", "Error at line 13\n", scanOnly},
        {"second facet: not endloop", 12, "x\n", "Line 14. Not endloop: x\n", scanOnly},
        {"second facet: no endfacet line", 13, "", "Error at line 14\n", both},
        {"second facet: not endfacet", 13, "x\n", "Line 15. Not endfacet: x\n", both},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.situation);
        std::string text;
        for (std::size_t i = 0; i < row.before; ++i)
            text += lines[i % lines.size()];
        for (const StlPassKind kind : {StlPassKind::scan, StlPassKind::apply}) {
            const Walk walk = walked(text + row.line, kind);
            EXPECT_FALSE(walk.result.ok);
            EXPECT_EQ(walk.result.facets, static_cast<int>(row.before / lines.size()));
            EXPECT_EQ(walk.calls.size(), row.before) << "the wrong line is not shown to the handler";
            const bool hasLead = kind == StlPassKind::scan || row.lead == both;
            EXPECT_EQ(walk.message, (hasLead ? "\n" : "") + row.message);
        }
    }
}

} // namespace
