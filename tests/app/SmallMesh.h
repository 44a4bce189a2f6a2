// One triangle as the tests of whole runs use it, and the texts that come out of it.
#pragma once

#include <QByteArray>
#include <QString>

// Normal (0, 0, 1), corners (1, 2, 3), (5, 2, 3), (1, 10, 19): extents 4 x 8 x 16.
inline QByteArray triangleInput()
{
    return "solid triangle\n"
           "  facet normal 0 0 1\n"
           "    outer loop\n"
           "      vertex 1 2 3\n"
           "      vertex 5 2 3\n"
           "      vertex 1 10 19\n"
           "    endloop\n"
           "  endfacet\n"
           "endsolid triangle\n";
}

// The output with three lines of corners, and a facet line if it is not the input's.
inline QByteArray triangleOutput(const QByteArray &corners,
                                 const QByteArray &facet = "  facet normal  0.00000000E+00  0.00000000E+00  "
                                                           "1.00000000E+00\n")
{
    return "solid  (null)\n" + facet + "    outer loop\n" + corners + "    endloop\n  endfacet\nendsolid  \n";
}

// The corners as they are.
inline QByteArray untouchedCorners()
{
    return "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
           "      vertex  5.00000000E+00  2.00000000E+00  3.00000000E+00\n"
           "      vertex  1.00000000E+00  1.00000000E+01  1.90000000E+01\n";
}

inline QByteArray logHeader()
{
    return "\n\n"
           "-------------------------- meshvane output --------------------------\n\n"
           "    x = xScl * (x + xOfsB) + xOfsA\n\n"
           "    y = yScl * (y + yOfsB) + yOfsA\n\n"
           "    z = zScl * (z + zOfsB) + zOfsA\n\n"
           "- Rotation about axis is done after all other scale and translation -\n\n";
}

inline QByteArray logValues(const QByteArray &x, const QByteArray &y, const QByteArray &z)
{
    return "\nCalculation started with following parameters:  \n\n" + x + "\n\n" + y + "\n\n" + z + "\n\n";
}

inline QByteArray defaultLogValues()
{
    return logValues("xScl = 1.000000     xOfsB = 0.000000     xOfsA = 0.000000",
                     "yScl = 1.000000     yOfsB = 0.000000     yOfsA = 0.000000",
                     "zScl = 1.000000     zOfsB = 0.000000     zOfsA = 0.000000");
}

// The end of the log of a run over the triangle.
inline QByteArray logOutcome()
{
    return "\n\nNumber lines read from stl file = 9\n"
           "Number triangles read from stl file = 1\n\n"
           "\nCalculation finished successfully.\n\n";
}

inline QString statusAfterRun(const QString &outputName)
{
    return "Calculation finished successfully.  Output written to: " + outputName;
}
