// The transformation called with the values of one record, spelled out apart from the program's own call.
#pragma once

#include "transform/MeshTransformer.h"
#include "transform/TransformParameters.h"

#include <cstdio>

// A record that changes nothing: scales of one.
TransformParameters unchanging();

MeshTransformer transformerFor(const TransformParameters &parameters);

int transform(MeshTransformer &transformer, char *message, std::FILE *input, std::FILE *output,
              const TransformParameters &parameters);
