// What one can know of a mesh without transforming it.
#pragma once

#include "transform/TransformParameters.h"

#include <array>
#include <cstdint>
#include <string>

struct Extent {
    double min = 0.0;
    double max = 0.0;
};

struct MeshFacts {
    bool isBinary = false;
    std::int64_t facetCount = 0;
    std::array<Extent, 3> extents; // all zero if there are no facets
    std::string label;             // without blanks and zeros at its end
};

// Throws Failure in the file's name if it cannot be opened, or is larger than a run can take, or no file at
// all.
void refuseUnusableInput(const std::string &file);

// The reader's warnings go to standard error in the file's name, or to nobody, where a run gives them once
// more.
enum class Warnings { tell, leaveToTheRun };

// Reads a file as a run does. Throws Failure if refuseUnusableInput does, or if it cannot be read or is no
// mesh.
MeshFacts readMeshFacts(const std::string &file, Warnings warnings);

// Throws Failure in the file's name if the run would have an infinite or undefined scale.
void refuseDegenerateScales(const MeshFacts &mesh, const TransformParameters &parameters,
                            const std::string &file);

// The extents of an ASCII file that a run has written.
std::array<Extent, 3> extentsOfOutput(const std::string &file);
