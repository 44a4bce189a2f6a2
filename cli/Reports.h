// What the command tells of meshes and runs on standard output.
#pragma once

#include "cli/MeshFacts.h"
#include "cli/RunValues.h"

#include <array>
#include <string>

struct RunSummary {
    std::string input;
    std::string output;
    RunCounts counts;
    std::array<Extent, 3> before;
    std::array<Extent, 3> after;
    double seconds = 0.0;
};

// One line each, with its line feed. Numbers have seven digits; JSON has all of them, and null for what is
// infinite or undefined.
std::string summaryLine(const RunSummary &summary);
std::string summaryJson(const RunSummary &summary);

// Several lines, or one.
std::string factsText(const std::string &file, const MeshFacts &facts);
std::string factsJson(const std::string &file, const MeshFacts &facts);

// Throws Failure if not all of it can be written.
void printToStandardOutput(const std::string &text);
