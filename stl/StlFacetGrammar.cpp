#include "stl/StlFacetGrammar.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlLimits.h"

#include <cstdio>

namespace {

enum class Role { vertex, other };

// What a message starts with in each pass: a line feed or nothing.
struct Leads {
    const char *scan;
    const char *apply;

    const char *of(StlPassKind kind) const { return kind == StlPassKind::scan ? scan : apply; }
};

struct LineRule {
    const char *keyword;
    Role role;
    Leads missing; // "Error at line"
    Leads wrong;   // "Line %d. Not <keyword>"
};

constexpr Leads facetLineWrong = {"\n", ""};

// The six lines after the facet line. Deliberate: the line feeds follow no rule; they are as users know them.
constexpr LineRule lineRules[] = {
    {"outer", Role::other, {"\n", "\n"}, {"\n", ""}}, {"vertex", Role::vertex, {"\n", ""}, {"\n", ""}},
    {"vertex", Role::vertex, {"\n", ""}, {"\n", ""}}, {"vertex", Role::vertex, {"\n", ""}, {"\n", ""}},
    {"endloop", Role::other, {"\n", ""}, {"\n", ""}}, {"endfacet", Role::other, {"\n", "\n"}, {"\n", "\n"}},
};

class FacetWalk {
public:
    FacetWalk(StlLineReader &lines, StlPassKind kind, StlFacetHandler &handler, char *message)
        : m_lines(lines),
          m_kind(kind),
          m_handler(handler),
          m_message(message)
    {}

    StlWalkResult run()
    {
        StlWalkResult result;
        for (;;) {
            result.facets += commonFacets();
            if (!m_lines.next())
                return result;
            if (StlWords(m_lines.trimmed()).next() == "endsolid") {
                m_handler.otherLine(m_lines.trimmed());
                return result;
            }
            if (!facet()) {
                result.ok = false;
                return result;
            }
            ++result.facets;
        }
    }

private:
    int commonFacets()
    {
        int facets = 0;
        const char *text = m_lines.ahead(stlCommonFacetSize);
        while (text != nullptr && m_handler.commonFacet(text)) {
            m_lines.skip(stlCommonFacetSize, stlCommonFacetLines);
            ++facets;
            text = m_lines.ahead(stlCommonFacetSize);
        }
        return facets;
    }

    bool facet()
    {
        if (!facetLine())
            return false;
        for (const LineRule &rule : lineRules) {
            if (!line(rule))
                return false;
        }
        return true;
    }

    bool facetLine()
    {
        const std::string_view text = m_lines.trimmed();
        StlWords words(text);
        for (const char *keyword : {"facet", "normal"}) {
            if (words.next() != keyword)
                return failWrong(facetLineWrong, keyword);
        }
        m_handler.facetLine(text, words);
        return true;
    }

    bool line(const LineRule &rule)
    {
        if (!m_lines.next())
            return failMissing(rule.missing);
        const std::string_view text = m_lines.trimmed();
        StlWords words(text);
        if (words.next() != rule.keyword)
            return failWrong(rule.wrong, rule.keyword);
        if (rule.role == Role::vertex)
            m_handler.vertexLine(words);
        else
            m_handler.otherLine(text);
        return true;
    }

    bool failMissing(const Leads &leads)
    {
        std::snprintf(m_message, stlMessageCapacity, "%sError at line %d\n", leads.of(m_kind),
                      m_lines.number());
        return false;
    }

    bool failWrong(const Leads &leads, const char *keyword)
    {
        const std::string_view text = m_lines.trimmed();
        std::snprintf(m_message, stlMessageCapacity, "%sLine %d. Not %s: %.*s\n", leads.of(m_kind),
                      m_lines.number(), keyword, static_cast<int>(text.size()), text.data());
        return false;
    }

    StlLineReader &m_lines;
    StlPassKind m_kind;
    StlFacetHandler &m_handler;
    char *m_message;
};

} // namespace

StlWalkResult stlWalkFacets(StlLineReader &lines, StlPassKind kind, StlFacetHandler &handler, char *message)
{
    return FacetWalk(lines, kind, handler, message).run();
}
