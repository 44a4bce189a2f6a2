#include "tests/transform/Transforming.h"

TransformParameters unchanging()
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 1.0;
    return p;
}

MeshTransformer transformerFor(const TransformParameters &p)
{
    return {p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA};
}

int transform(MeshTransformer &transformer, char *message, std::FILE *input, std::FILE *output,
              const TransformParameters &p)
{
    return stl_transform(transformer, message, input, output, p.xRotate, p.yRotate, p.zRotate, p.xAngle,
                         p.yAngle, p.zAngle, p.xSetL, p.ySetL, p.zSetL, p.xLength, p.yLength, p.zLength,
                         p.xSet0, p.ySet0, p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX,
                         p.zSameY);
}
