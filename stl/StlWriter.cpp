#include "stl/StlWriter.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlFatal.h"
#include "stl/StlTextWriter.h"
#include "stl/Stream.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

void writePoint(StlTextWriter &out, std::string_view before, const StlVertex &point)
{
    out.writeBlankSignedPoint(before, double{point.x}, double{point.y}, double{point.z});
}

bool writeCommonFacet(StlTextWriter &out, const StlFacet &facet)
{
    double numbers[12] = {};
    double *next = numbers;
    for (const StlVertex &point : {facet.normal, facet.vertex[0], facet.vertex[1], facet.vertex[2]}) {
        *next++ = double{point.x};
        *next++ = double{point.y};
        *next++ = double{point.z};
    }
    char *const text = out.room(stlCommonFacetSize);
    std::memcpy(text, stlCommonFacetText, stlCommonFacetSize);
    if (!stlWriteCommonPoints<0, 4>(text, numbers))
        return false;
    out.keep(stlCommonFacetSize);
    return true;
}

void writeFacet(StlTextWriter &out, const StlFacet &facet)
{
    if (writeCommonFacet(out, facet))
        return;
    writePoint(out, "  facet normal ", facet.normal);
    out.write("    outer loop\n");
    for (const StlVertex &corner : facet.vertex)
        writePoint(out, "      vertex ", corner);
    out.write("    endloop\n  endfacet\n");
}

bool writeMesh(const StlMesh &mesh, std::FILE *file)
{
    StlTextWriter out(file);
    // Deliberate: the label is this text whatever the mesh's own label is, and both lines keep their two
    // blanks.
    out.write("solid  (null)\n");
    for (std::int32_t i = 0; i < mesh.stats.facetCount; ++i)
        writeFacet(out, mesh.facets[i]);
    out.write("endsolid  \n");
    return out.flush();
}

} // namespace

bool stl_write_ascii_checked(const StlMesh &mesh, const char *path)
{
    Stream file(std::fopen(path, "w"));
    if (!file)
        stlFatalWithSystemError(std::string("stl_write_ascii: Couldn't open ") + path + " for writing");
    const bool written = writeMesh(mesh, file.get());
    const bool closed = std::fclose(file.release()) == 0;
    return written && closed;
}

void stl_write_ascii(const StlMesh &mesh, const char *path) { stl_write_ascii_checked(mesh, path); }
