// The files that benchmarks work on, and a run of the product over them.
#pragma once

#include "benchmarks/BenchShapes.h"
#include "transform/TransformParameters.h"

#include <string>
#include <vector>

// Writes a binary file of the ball, of any size: facet by facet, so that it is never in memory.
void writeBall(const std::string &path, int facets);

// Writes the mesh of a binary file as the program itself writes ASCII files.
void writeAsciiCopy(const std::string &binary, const std::string &ascii);

int facetsInBinary(const std::string &path);

struct BenchOptions {
    const char *name;
    TransformParameters parameters;
    int scans; // of the temporary file before it is transformed
};

// What the runs of the tables are asked for, in their order.
extern const std::vector<BenchOptions> benchOptions;
TransformParameters scaleAndOffset(); // the first of them

// Transforms the input into the output as a run does, but without log and window, and removes "_tmp_stl_" at
// the end. Returns false if that failed.
bool runEngine(const TransformParameters &parameters, const std::string &input, const std::string &output);
