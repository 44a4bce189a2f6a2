#include "stl/RotationMatrix.h"

#include "stl/ExactTrigonometry.h"

RotationMatrix RotationMatrix::aboutX(double angle)
{
    const auto [s, c] = exactSineAndCosine(angle);
    return {{{1.0, 0.0, 0.0}, {0.0, c, -s}, {0.0, s, c}}};
}

RotationMatrix RotationMatrix::aboutY(double angle)
{
    const auto [s, c] = exactSineAndCosine(angle);
    // Deliberate: the signs of s are opposite to the usual right-handed matrix. Logs and saved part
    // orientations of users rely on the direction.
    return {{{c, 0.0, -s}, {0.0, 1.0, 0.0}, {s, 0.0, c}}};
}

RotationMatrix RotationMatrix::aboutZ(double angle)
{
    const auto [s, c] = exactSineAndCosine(angle);
    return {{{c, -s, 0.0}, {s, c, 0.0}, {0.0, 0.0, 1.0}}};
}
