// Writes an StlMesh as ASCII STL, in the exact layout that StlPasses reads back.
#pragma once

#include "stl/StlLineEnd.h"
#include "stl/StlMesh.h"

// Creates or truncates the file and writes all facets, numbers as "% .8E". The label of the mesh is not
// written: the first line is always "solid  (null)". Lines end as in other text files of the system. Ends the
// process with status 1 and a line on standard error if the file cannot be opened. A failed write is not
// reported; see stl_write_ascii_checked.
void stl_write_ascii(const StlMesh &mesh, const char *path);

// The same with any line ends, but returns whether every byte reached the file.
bool stl_write_ascii_checked(const StlMesh &mesh, const char *path, StlLineEnd lineEnd = stlSystemLineEnd);
