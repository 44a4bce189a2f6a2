#include "stl/StlWriter.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlFatal.h"
#include "stl/StlPointMemory.h"
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

struct PointLine {
    char text[stlCommonPointSize];
};

class FacetWriter {
public:
    explicit FacetWriter(StlTextWriter &out)
        : m_out(out)
    {}

    void write(const StlFacet &facet)
    {
        if (writeCommon(facet))
            return;
        writePoint(m_out, "  facet normal ", facet.normal);
        m_out.write("    outer loop\n");
        for (const StlVertex &corner : facet.vertex)
            writePoint(m_out, "      vertex ", corner);
        m_out.write("    endloop\n  endfacet\n");
    }

private:
    // Writes nothing if a number does not have the common form.
    bool writeCommon(const StlFacet &facet)
    {
        char *const text = m_out.room(stlCommonFacetSize);
        stlPutCommonLayout(text);
        if (!putPoint(m_normal, facet.normal, text + stlCommonPointStarts[0]))
            return false;
        for (std::size_t i = 0; i < 3; ++i) {
            if (!putPoint(m_corners, facet.vertex[i], text + stlCommonPointStarts[i + 1]))
                return false;
        }
        m_out.keep(stlCommonFacetSize);
        return true;
    }

    template <typename Memory>
    static bool putPoint(Memory &memory, const StlVertex &point, char *out)
    {
        return memory.findOrMake(point, out, [&point, out] {
            return stlWriteCommonPoint(out, {double{point.x}, double{point.y}, double{point.z}});
        });
    }

    StlTextWriter &m_out;
    StlLastPoint<StlPointBits, PointLine> m_normal;
    StlPointMemory<StlPointBits, PointLine> m_corners;
};

bool writeMesh(const StlMesh &mesh, std::FILE *file, StlLineEnd lineEnd)
{
    StlTextWriter out(file, lineEnd);
    // Deliberate: the label is this text whatever the mesh's own label is, and both lines keep their two
    // blanks.
    out.write("solid  (null)\n");
    FacetWriter facets(out);
    for (std::int32_t i = 0; i < mesh.stats.facetCount; ++i)
        facets.write(mesh.facets[i]);
    out.write("endsolid  \n");
    return out.flush();
}

} // namespace

bool stl_write_ascii_checked(const StlMesh &mesh, const char *path, StlLineEnd lineEnd)
{
    Stream file(std::fopen(path, "wb"));
    if (!file)
        stlFatalWithSystemError(std::string("stl_write_ascii: Couldn't open ") + path + " for writing");
    const bool written = writeMesh(mesh, file.get(), lineEnd);
    const bool closed = std::fclose(file.release()) == 0;
    return written && closed;
}

void stl_write_ascii(const StlMesh &mesh, const char *path) { stl_write_ascii_checked(mesh, path); }
