// The transformation called with one record of parameters. Spelled out apart from the program's own call, so
// that a run can be compared with it.
#pragma once

#include "transform/MeshTransformer.h"
#include "transform/TransformParameters.h"

#include <cstdio>

inline MeshTransformer makeTransformer(const TransformParameters &p)
{
    return {p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA};
}

// `lineEnd`: what ends a line in the streams, or nothing. It has no type here, since benchmarks call versions
// of the engine that have none.
template <typename... LineEnd>
int callTransform(MeshTransformer &transformer, char *message, std::FILE *input, std::FILE *output,
                  const TransformParameters &p, LineEnd... lineEnd)
{
    return stl_transform(transformer, message, input, output, p.xRotate, p.yRotate, p.zRotate, p.xAngle,
                         p.yAngle, p.zAngle, p.xSetL, p.ySetL, p.zSetL, p.xLength, p.yLength, p.zLength,
                         p.xSet0, p.ySet0, p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX,
                         p.zSameY, lineEnd...);
}
