// Comparison of all parameters of a run.
#pragma once

#include "transform/TransformParameters.h"

#include <tuple>

inline auto allOf(const TransformParameters &p)
{
    return std::tuple_cat(
        std::tie(p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA),
        std::tie(p.xSet0, p.ySet0, p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX, p.zSameY),
        std::tie(p.xSetL, p.ySetL, p.zSetL, p.xLength, p.yLength, p.zLength),
        std::tie(p.xRotate, p.yRotate, p.zRotate, p.xAngle, p.yAngle, p.zAngle));
}

inline bool operator==(const TransformParameters &a, const TransformParameters &b)
{
    return allOf(a) == allOf(b);
}
