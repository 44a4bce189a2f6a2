#include "stl/RotationMatrix.h"

#include "stl/ExactTrigonometry.h"

namespace {

template <typename Number>
void multiply(const double (&rows)[3][3], Number &x, Number &y, Number &z)
{
    const Number newX = Number{rows[0][0]} * x + Number{rows[0][1]} * y + Number{rows[0][2]} * z;
    const Number newY = Number{rows[1][0]} * x + Number{rows[1][1]} * y + Number{rows[1][2]} * z;
    const Number newZ = Number{rows[2][0]} * x + Number{rows[2][1]} * y + Number{rows[2][2]} * z;
    x = newX;
    y = newY;
    z = newZ;
}

} // namespace

void RotationMatrix::apply(double &x, double &y, double &z) const { multiply(rows, x, y, z); }

void RotationMatrix::apply(SettledNumber &x, SettledNumber &y, SettledNumber &z) const
{
    multiply(rows, x, y, z);
}

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
