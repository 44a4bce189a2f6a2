// The meshes that benchmarks work on, and the product's road over them.
#pragma once

#include "transform/TransformParameters.h"

#include <string>

// Writes a binary file of a bumpy ball: ordinary coordinates of both signs and several sizes, unit normals.
void writeBall(const std::string &path, int facets);

// Writes the same mesh as the program itself writes ASCII files.
void convertToAscii(const std::string &binaryPath, const std::string &asciiPath);

// From the input to the output by the engine alone, as a run does it, "_tmp_stl_" removed in the end. False
// if it failed.
bool engineRoad(const TransformParameters &parameters, const std::string &input, const std::string &output);

TransformParameters scaleAndOffset();
TransformParameters rotation();
TransformParameters originAndLength();
