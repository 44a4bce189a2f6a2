#include "tests/support/RunParameters.h"

#include <gtest/gtest.h>
#include <new>

TEST(TransformParameters, ANewRecordIsZeroThroughout)
{
    // In memory that is not zero.
    alignas(TransformParameters) unsigned char memory[sizeof(TransformParameters)];
    for (unsigned char &byte : memory)
        byte = 0xA5;
    const TransformParameters &p = *new (memory) TransformParameters;

    for (const double value : {p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA,
                               p.xLength, p.yLength, p.zLength, p.xAngle, p.yAngle, p.zAngle})
        EXPECT_EQ(value, 0.0);
    for (const TransformFlag &flag : transformFlags)
        EXPECT_EQ(p.*flag.member, 0) << flag.name;
}
