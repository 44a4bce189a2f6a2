// One run's values as the user gave them, after the form's checks.
#pragma once

// Flags are 0 or 1. x' = xScl * (x + xOfsB) + xOfsA, likewise y and z; lengths and offsets are in the mesh's
// unit, angles in degrees.
struct TransformParameters {
    double xScl = 0.0, yScl = 0.0, zScl = 0.0;
    double xOfsB = 0.0, yOfsB = 0.0, zOfsB = 0.0;
    double xOfsA = 0.0, yOfsA = 0.0, zOfsA = 0.0;

    int xSet0 = 0, ySet0 = 0, zSet0 = 0; // smallest coordinate to zero before scaling

    // The axis named first takes the length of the other; see stl_transform for the crossed Y options.
    int xSameY = 0, xSameZ = 0, ySameX = 0, ySameZ = 0, zSameX = 0, zSameY = 0;

    int xSetL = 0, ySetL = 0, zSetL = 0;
    double xLength = 0.0, yLength = 0.0, zLength = 0.0; // meaningful where the flag is set

    int xRotate = 0, yRotate = 0, zRotate = 0;
    double xAngle = 0.0, yAngle = 0.0, zAngle = 0.0; // meaningful where the flag is set
};
