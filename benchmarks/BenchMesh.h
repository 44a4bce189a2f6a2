// The meshes that benchmarks work on, and a run of the product over them.
#pragma once

#include "transform/TransformParameters.h"

#include <string>

// Writes a binary file of a bumpy ball: ordinary coordinates of both signs and various magnitudes, unit
// normals.
void writeBall(const std::string &path, int facets);

// Writes the same mesh as the program itself writes ASCII files.
void convertToAscii(const std::string &binaryPath, const std::string &asciiPath);

// Transforms the input into the output as a run does, but without log and window, and removes "_tmp_stl_" at
// the end. Returns false if that failed.
bool runEngine(const TransformParameters &parameters, const std::string &input, const std::string &output);

TransformParameters scaleAndOffset();
TransformParameters rotation();
TransformParameters originAndLength();
