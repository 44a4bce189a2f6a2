// Small meshes for the command, and what comes of them.
#pragma once

#include "tests/support/MeshFiles.h"

#include <string>

// Two facets; extents 4 x 8 x 16 from (1, 2, 3) on.
inline std::string boxMesh()
{
    return "solid box\n" + asciiFacet({"0 0 1", "1 2 3", "5 2 3", "1 10 19"}) +
           asciiFacet({"0 1 0", "1 2 3", "5 10 3", "1 10 19"}) + "endsolid box\n";
}

// All z are 3.
inline std::string flatMesh()
{
    return "solid flat\n" + asciiFacet({"0 0 1", "1 2 3", "5 2 3", "1 10 3"}) + "endsolid flat\n";
}

// The corners of the box as a run writes them, each number being twice the one above.
inline std::string doubledBox()
{
    return "solid  (null)\n" +
           asciiFacet({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                       " 2.00000000E+00  4.00000000E+00  6.00000000E+00",
                       " 1.00000000E+01  4.00000000E+00  6.00000000E+00",
                       " 2.00000000E+00  2.00000000E+01  3.80000000E+01"}) +
           asciiFacet({" 0.00000000E+00  1.00000000E+00  0.00000000E+00",
                       " 2.00000000E+00  4.00000000E+00  6.00000000E+00",
                       " 1.00000000E+01  2.00000000E+01  6.00000000E+00",
                       " 2.00000000E+00  2.00000000E+01  3.80000000E+01"}) +
           "endsolid  \n";
}
