// Reads an STL file into an StlMesh. Call stl_initialize, stl_allocate_facets and stl_load_facets in this
// order, then fclose(mesh.file).
//
// The binary format is little-endian: 80 header bytes, an unsigned 32-bit facet count, then 50 bytes per
// facet (normal and three corners as three 32-bit floats each, two attribute bytes). The ASCII format is a
// label line, then per facet "facet normal x y z", "outer loop", three times "vertex x y z", "endloop" and
// "endfacet"; keywords are skipped by position here, StlPasses checks them.
//
// A file that cannot be opened, or not read to its end, ends the process with status 1 and a line on standard
// error that has the system's words; so does a stream without positions, such as a pipe. A directory counts
// as an empty file.
#pragma once

#include "stl/StlMesh.h"

// Opens the file, tells binary from ASCII, reads the label and finds the facet count. The file is binary if
// one of the bytes 84 to 211 is above 127, and ASCII otherwise: neither "solid" nor the size is consulted.
// Releases the tables of an earlier mesh. Sizes are signed 32-bit numbers: 2 GiB and more is not supported.
// Ends the process with status 1 and a line on standard error if the file is binary and its size is not
// 84 + 50 n bytes with n of at least 4. A facet count in the header that differs from the one that the size
// gives is a warning on standard error; the size wins.
void stl_initialize(StlMesh &mesh, const char *path);

// Makes room for stats.facetCount facets, zero-filled. Reports a failure with perror and leaves
// mesh.facets null.
void stl_allocate_facets(StlMesh &mesh);

// Reads the facets from firstFacet on and updates extents, size and bounding diameter; with `first` set the
// extents start over from the first corner read. An ASCII number that does not convert keeps the value of the
// facet before, without a report. Does nothing if the facets could not be allocated.
void stl_load_facets(StlMesh &mesh, int firstFacet, bool first);

// Frees the two tables. stl_initialize does this too; call it when the mesh will not be read again.
void stl_release_facets(StlMesh &mesh);
