// A mesh of one triangle for tests of whole runs, and what a run makes of it.
#pragma once

#include "transform/TransformParameters.h"

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

// The output with these three lines of corners.
inline QByteArray triangleOutput(const QByteArray &corners)
{
    return "solid  (null)\n"
           "  facet normal  0.00000000E+00  0.00000000E+00  1.00000000E+00\n"
           "    outer loop\n" +
           corners + "    endloop\n  endfacet\nendsolid  \n";
}

// The corners of the input.
inline QByteArray untouchedCorners()
{
    return "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
           "      vertex  5.00000000E+00  2.00000000E+00  3.00000000E+00\n"
           "      vertex  1.00000000E+00  1.00000000E+01  1.90000000E+01\n";
}

// The values of a new form.
TransformParameters newForm();

// The whole log of a successful run over the triangle.
QByteArray logOfARun(const TransformParameters &parameters);

QString statusAfterRun(const QString &outputName);
