#include "transform/MeshTransformer.h"

#include "stl/SettledNumber.h"
#include "stl/StlPasses.h"
#include "stl/Stream.h"
#include "transform/RunFiles.h"

#include <initializer_list>

namespace {

// Deliberate: not the full-precision pi / 180. Outputs of earlier runs are compared byte for byte.
constexpr double radiansPerDegree = 0.017453293;

// Opens the file again for the next pass, in the mode that the line ends tell of. If it is gone, the stream
// is null, which that pass treats as an empty file.
int scanExtents(MeshTransformer &t, char *message, Stream &input, StlLineEnd lineEnd)
{
    if (stl_scan_extents(message, input.get(), &t.xMin, &t.xMax, &t.yMin, &t.yMax, &t.zMin, &t.zMax,
                         lineEnd) != 0)
        return -1;
    input.reset();
    input.reset(std::fopen(temporaryFileName, lineEnd == StlLineEnd::lineFeed ? "r" : "rb"));
    return 0;
}

void buildRotation(MeshTransformer &t, RotationMatrix &matrix, RotationMatrix (*about)(double), int flag,
                   double degrees)
{
    matrix = RotationMatrix(); // not in use
    if (flag == 0)
        return;
    t.angle = degrees * radiansPerDegree;
    matrix = about(t.angle);
}

// The smallest coordinate of one axis is moved to zero before scaling.
struct OriginOption {
    int flag;
    double &offsetBefore;
    double min;
};

void applyOrigins(std::initializer_list<OriginOption> options)
{
    for (const OriginOption &option : options) {
        if (option.flag == 1)
            option.offsetBefore = -option.min;
    }
}

// The scale of one axis becomes the wanted length divided by the axis's own length.
struct LengthOption {
    int flag;
    double &scale;
    double wanted;
    double own;
};

void applyLengths(std::initializer_list<LengthOption> options)
{
    for (const LengthOption &option : options) {
        if (option.flag == 1)
            option.scale = (SettledNumber{option.wanted} / SettledNumber{option.own}).value;
    }
}

double difference(double a, double b) { return (SettledNumber{a} - SettledNumber{b}).value; }

double lengthX(const MeshTransformer &t) { return difference(t.xMax, t.xMin); }
double lengthY(const MeshTransformer &t) { return difference(t.yMax, t.yMin); }
double lengthZ(const MeshTransformer &t) { return difference(t.zMax, t.zMin); }

} // namespace

MeshTransformer::MeshTransformer(double xScl_, double yScl_, double zScl_, double xOfsB_, double yOfsB_,
                                 double zOfsB_, double xOfsA_, double yOfsA_, double zOfsA_)
    : xScl(xScl_),
      yScl(yScl_),
      zScl(zScl_),
      xOfsB(xOfsB_),
      yOfsB(yOfsB_),
      zOfsB(zOfsB_),
      xOfsA(xOfsA_),
      yOfsA(yOfsA_),
      zOfsA(zOfsA_)
{}

int stl_transform(MeshTransformer &transformer, char *message, std::FILE *input, std::FILE *output,
                  int rotateX, int rotateY, int rotateZ, double angleX, double angleY, double angleZ,
                  int setLengthX, int setLengthY, int setLengthZ, double targetX, double targetY,
                  double targetZ, int setOriginX, int setOriginY, int setOriginZ, int xSameY, int xSameZ,
                  int ySameX, int ySameZ, int zSameX, int zSameY, StlLineEnd lineEnd)
{
    if (input == nullptr || output == nullptr)
        return -1;
    Stream in(input);
    const Stream out(output);
    MeshTransformer &t = transformer;

    buildRotation(t, t.rotX, RotationMatrix::aboutX, rotateX, angleX);
    buildRotation(t, t.rotY, RotationMatrix::aboutY, rotateY, angleY);
    buildRotation(t, t.rotZ, RotationMatrix::aboutZ, rotateZ, angleZ);

    if (setOriginX + setOriginY + setOriginZ + xSameY + xSameZ + ySameX + ySameZ + zSameX + zSameY > 0) {
        if (scanExtents(t, message, in, lineEnd) != 0)
            return -1;
        applyOrigins(
            {{setOriginX, t.xOfsB, t.xMin}, {setOriginY, t.yOfsB, t.yMin}, {setOriginZ, t.zOfsB, t.zMin}});
        // A later option for the same axis wins. Deliberate: the two Y options are crossed, ySameX gives Y
        // the length of Z and ySameZ that of X; runs are repeated from logs that were made this way.
        applyLengths({{xSameY, t.xScl, lengthY(t), lengthX(t)},
                      {xSameZ, t.xScl, lengthZ(t), lengthX(t)},
                      {ySameX, t.yScl, lengthZ(t), lengthY(t)},
                      {ySameZ, t.yScl, lengthX(t), lengthY(t)},
                      {zSameX, t.zScl, lengthX(t), lengthZ(t)},
                      {zSameY, t.zScl, lengthY(t), lengthZ(t)}});
    }
    if (setLengthX != 0 || setLengthY != 0 || setLengthZ != 0) {
        if (scanExtents(t, message, in, lineEnd) != 0)
            return -1;
        applyLengths({{setLengthX, t.xScl, targetX, lengthX(t)},
                      {setLengthY, t.yScl, targetY, lengthY(t)},
                      {setLengthZ, t.zScl, targetZ, lengthZ(t)}});
    }
    return stl_apply_pass(message, in.get(), out.get(), t.xScl, t.yScl, t.zScl, t.xOfsB, t.yOfsB, t.zOfsB,
                          t.xOfsA, t.yOfsA, t.zOfsA, t.rotX, t.rotY, t.rotZ, lineEnd);
}
