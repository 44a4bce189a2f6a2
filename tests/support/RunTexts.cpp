#include "tests/support/RunTexts.h"

#include "tests/support/MeshFiles.h"
#include "transform/RunLogText.h"

#include <cstdio>

namespace {

std::string written(const Point &point)
{
    char text[3 * 400];
    std::snprintf(text, sizeof text, "%15.8E %15.8E %15.8E", point.x, point.y, point.z);
    return text;
}

} // namespace

std::string boxFile()
{
    return "solid in\n" + asciiFacet({"0 0 1", "1 2 3", "11 22 3", "1 2 33"}) + "endsolid in\n";
}

std::string temporaryFileOf(const std::string &facets) { return "solid  (null)\n" + facets + "endsolid  \n"; }

std::string writtenFacet(const FacetNumbers &numbers)
{
    const auto &[normal, corners] = numbers;
    return asciiFacet(
        {written(normal), written(corners.first), written(corners.second), written(corners.third)});
}

std::string writtenMesh(const FacetNumbers &numbers) { return temporaryFileOf(writtenFacet(numbers)); }

std::string totals(int lines, int facets)
{
    return "\nNumber lines read from stl file = " + std::to_string(lines) +
           "\nNumber triangles read from stl file = " + std::to_string(facets) + "\n";
}

std::string failedRunLog(const TransformParameters &parameters)
{
    return runLogHeader() + runLogParameters(parameters);
}

std::string runLog(const TransformParameters &parameters, int lines, int facets)
{
    return failedRunLog(parameters) + runLogOutcome("\n" + totals(lines, facets));
}
