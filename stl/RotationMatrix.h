// A rotation about one coordinate axis, or the marker that there is none.
#pragma once

#include "stl/SettledNumber.h"

// Three rows of three. The top-left element is the only switch: up to 1.0 the matrix is applied, unusedMarker
// says that it is not in use. Deliberate: a NaN there (from an angle that is infinite or not a number)
// compares false, so it switches the rotation off, too.
struct RotationMatrix {
    static constexpr double unusedMarker = 999.0;

    double rows[3][3] = {{unusedMarker, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}};

    const double *operator[](int row) const { return rows[row]; }
    double *operator[](int row) { return rows[row]; }

    bool inUse() const { return rows[0][0] <= 1.0; }

    // Replaces the point by matrix times point (a column vector). A number is a double or a SettledNumber.
    template <typename Number>
    void apply(Number &x, Number &y, Number &z) const
    {
        const Number newX = Number{rows[0][0]} * x + Number{rows[0][1]} * y + Number{rows[0][2]} * z;
        const Number newY = Number{rows[1][0]} * x + Number{rows[1][1]} * y + Number{rows[1][2]} * z;
        const Number newZ = Number{rows[2][0]} * x + Number{rows[2][1]} * y + Number{rows[2][2]} * z;
        x = newX;
        y = newY;
        z = newZ;
    }

    // Angles are in radians. Every finite angle gives a matrix that is in use.
    static RotationMatrix aboutX(double angle);
    static RotationMatrix aboutY(double angle); // positive angles turn +X towards +Z
    static RotationMatrix aboutZ(double angle);
};
