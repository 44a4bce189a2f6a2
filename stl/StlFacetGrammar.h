// The grammar of the temporary ASCII file, walked once for both passes: a label line, then seven lines
// per facet until an "endsolid" line or the end of the file.
#pragma once

#include "stl/StlLines.h"

#include <string_view>

// The passes' messages differ in their leading line feeds; users' scripts rely on both forms.
enum class StlPassKind { scan, apply };

// What a pass does with the lines, in the order of the file. Lines come without their line ends.
class StlFacetHandler {
public:
    virtual ~StlFacetHandler() = default;

    virtual void facetLine(std::string_view line, StlWords &numbers) = 0; // numbers: the words after "normal"
    virtual void vertexLine(StlWords &numbers) = 0;                       // the words after "vertex"
    virtual void otherLine(std::string_view line) = 0; // outer, endloop, endfacet, endsolid

    // Takes a facet of the common form (StlCommonFacet) as a whole, with the effect that its seven lines
    // would have, or declines and does nothing. Gets stlCommonFacetSize bytes, which may be anything.
    virtual bool commonFacet(const char *text) = 0;
};

struct StlWalkResult {
    bool ok = true;
    int facets = 0; // complete ones
};

// Walks all lines after the label line, which must have been read. Each line is checked before the handler
// sees it. On failure the reason is in `message` (stlMessageCapacity characters).
StlWalkResult stlWalkFacets(StlLineReader &lines, StlPassKind kind, StlFacetHandler &handler, char *message);
