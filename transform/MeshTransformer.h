// The geometric transformation: options become scale factors and offsets, then the temporary file is
// rewritten into the output file.
#pragma once

#include "stl/RotationMatrix.h"
#include "stl/StlLineEnd.h"

#include <cstdio>

struct MeshTransformer {
    MeshTransformer(double xScl, double yScl, double zScl, double xOfsB, double yOfsB, double zOfsB,
                    double xOfsA, double yOfsA, double zOfsA);

    // The user's values at first; stl_transform may replace the scales and the offsets before.
    double xScl, yScl, zScl;
    double xOfsB, yOfsB, zOfsB;
    double xOfsA, yOfsA, zOfsA;

    double angle = 0.0; // the latest rotation angle, in radians
    RotationMatrix rotX, rotY, rotZ;
    double xMin = 0.0, xMax = 0.0, yMin = 0.0, yMax = 0.0, zMin = 0.0, zMax = 0.0; // of the latest scan
};

// Transforms `input`, the file "_tmp_stl_" of the current directory open for reading, into `output`.
// Set-origin and same-length flags are resolved first, then the set lengths, each from a scan of its own
// after which "_tmp_stl_" is opened again; so a set length wins on its axis. Lengths are measured before
// rotation. An axis without extent gives an infinite or undefined scale, which is used as it is. Angles are
// in degrees, flags 0 or 1. `message` has stlMessageCapacity characters and holds a text already. Returns 0
// with the totals appended to `message`, or -1 with the reason in it, and closes both streams. With a null
// stream it returns -1 at once and touches neither message nor streams. `lineEnd` is what ends a line in the
// bytes of both streams: the system's line end if they are in binary mode.
int stl_transform(MeshTransformer &transformer, char *message, std::FILE *input, std::FILE *output,
                  int rotateX, int rotateY, int rotateZ, double angleX, double angleY, double angleZ,
                  int setLengthX, int setLengthY, int setLengthZ, double targetX, double targetY,
                  double targetZ, int setOriginX, int setOriginY, int setOriginZ, int xSameY, int xSameZ,
                  int ySameX, int ySameZ, int zSameX, int zSameY, StlLineEnd lineEnd = StlLineEnd::lineFeed);
