#include "transform/TransformParameters.h"

#include <gtest/gtest.h>
#include <new>

TEST(TransformParameters, AFreshRecordIsZeroThroughout)
{
    // Whatever lay in the memory before.
    alignas(TransformParameters) unsigned char memory[sizeof(TransformParameters)];
    for (unsigned char &byte : memory)
        byte = 0xA5;
    const TransformParameters &p = *new (memory) TransformParameters;

    for (const double value : {p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA,
                               p.xLength, p.yLength, p.zLength, p.xAngle, p.yAngle, p.zAngle})
        EXPECT_EQ(value, 0.0);
    for (const int flag : {p.xSet0, p.ySet0, p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX,
                           p.zSameY, p.xSetL, p.ySetL, p.zSetL, p.xRotate, p.yRotate, p.zRotate})
        EXPECT_EQ(flag, 0);
}
