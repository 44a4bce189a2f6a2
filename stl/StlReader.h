// Reads an STL file into an StlMesh. Call stl_initialize, stl_allocate_facets and stl_load_facets in this
// order, then fclose(mesh.file).
//
// The binary format is little-endian: 80 header bytes, an unsigned 32-bit facet count, then 50 bytes per
// facet (normal and three corners as three 32-bit floats each, two attribute bytes). The ASCII format is a
// label line, then per facet "facet normal x y z", "outer loop", three times "vertex x y z", "endloop" and
// "endfacet"; keywords are skipped by position here, StlPasses checks them.
//
// A file that cannot be opened, positioned or read to its end ends the process with status 1 and a line on
// standard error that gives the system's reason; so does a stream without positions, such as a pipe. A
// directory counts as an empty file, where the system opens it.
#pragma once

#include "stl/StlMesh.h"

// Opens the file, tells binary from ASCII, reads the label and finds the facet count. Deliberate: the file is
// binary if one of the bytes 84 to 211 is above 127, and ASCII otherwise; neither "solid" nor the size is
// consulted. Releases the tables of an earlier mesh. Sizes are signed 32-bit numbers: 2 GiB and more is not
// supported.
// Ends the process with status 1 and a line on standard error if the file is binary and its size is not
// 84 + 50 n bytes with n of at least 4. If the facet count in the header differs from the one that the size
// gives, a warning goes to standard error and the size wins. ASCII facets are counted by their lines: those
// of at least four characters, plus one, divided by seven.
void stl_initialize(StlMesh &mesh, const char *path);

// Allocates stats.facetCount zero-filled facets and reserved entries. If the facets cannot be had, reports it
// with perror and leaves mesh.facets null.
void stl_allocate_facets(StlMesh &mesh);

// Fills the facets from firstFacet on with those of the file from its first one on, and updates extents, size
// and bounding diameter; with `first` set the extents start over from the first corner read. An ASCII number
// that does not convert keeps the value of the previous facet, without a report. Does nothing if the facets
// could not be allocated.
void stl_load_facets(StlMesh &mesh, int firstFacet, bool first);

// Frees the two tables, as stl_initialize does before it reads the next file.
void stl_release_facets(StlMesh &mesh);
