#include "stl/StlPasses.h"

#include "stl/StlCommonFacet.h"
#include "stl/StlFacetGrammar.h"
#include "stl/StlLines.h"
#include "stl/StlTextWriter.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr double unmeasured = 1e25;

void setMessage(char *message, const char *text) { std::snprintf(message, stlMessageCapacity, "%s", text); }

void appendTotals(char *message, int lines, int facets)
{
    const std::size_t length = std::strlen(message);
    std::snprintf(message + length, stlMessageCapacity - length,
                  "\nNumber lines read from stl file = %d\nNumber triangles read from stl file = %d\n", lines,
                  facets);
}

// Comparisons with NaN are false, so a NaN widens nothing.
void widen(double &min, double &max, double value)
{
    if (value < min)
        min = value;
    if (value > max)
        max = value;
}

class ExtentScan final : public StlFacetHandler {
public:
    ExtentScan(double *const (&min)[3], double *const (&max)[3])
        : m_min(min),
          m_max(max)
    {
        for (int axis = 0; axis < 3; ++axis) {
            *m_min[axis] = unmeasured;
            *m_max[axis] = -unmeasured;
        }
    }

    void facetLine(std::string_view, StlWords &) override {}
    void otherLine(std::string_view) override {}

    void vertexLine(StlWords &numbers) override
    {
        stlReadPoint(numbers, m_corner[0], m_corner[1], m_corner[2]);
        widenByCorner();
    }

    bool commonFacet(const char *text) override
    {
        double numbers[9];
        if (!stlHasCommonLayout(text) || !stlIsCommonPoint(text + stlCommonPointStarts[0]) ||
            !stlReadCommonPoints<1, 3>(text, numbers))
            return false;
        for (const double *corner = numbers; corner != std::end(numbers); corner += 3) {
            std::copy_n(corner, 3, m_corner);
            widenByCorner();
        }
        return true;
    }

private:
    void widenByCorner()
    {
        for (int axis = 0; axis < 3; ++axis)
            widen(*m_min[axis], *m_max[axis], m_corner[axis]);
    }

    double *const (&m_min)[3];
    double *const (&m_max)[3];
    double m_corner[3] = {0.0, 0.0, 0.0}; // a number that does not convert keeps the corner before
};

struct AxisChange {
    double scale;
    double offsetBefore;
    double offsetAfter;

    double operator()(double value) const { return (value + offsetBefore) * scale + offsetAfter; }
};

class ApplyTransformation final : public StlFacetHandler {
public:
    ApplyTransformation(StlTextWriter &out, const AxisChange (&axes)[3],
                        const RotationMatrix *const (&rotations)[3])
        : m_out(out),
          m_axes(axes),
          m_rotations(rotations)
    {
        for (const RotationMatrix *rotation : rotations)
            m_turns = m_turns || rotation->inUse();
    }

    void facetLine(std::string_view line, StlWords &numbers) override
    {
        if (!m_turns) {
            otherLine(line);
            return;
        }
        stlReadPoint(numbers, m_x, m_y, m_z);
        turn(m_x, m_y, m_z);
        m_out.writePaddedPoint("  facet normal ", m_x, m_y, m_z);
    }

    void vertexLine(StlWords &numbers) override
    {
        stlReadPoint(numbers, m_x, m_y, m_z);
        transform(m_x, m_y, m_z);
        m_out.writePaddedPoint("      vertex ", m_x, m_y, m_z);
    }

    void otherLine(std::string_view line) override
    {
        m_out.write(line);
        m_out.write("\n");
    }

    bool commonFacet(const char *text) override
    {
        if (!stlHasCommonLayout(text))
            return false;
        return m_turns ? turnedFacet(text) : straightFacet(text);
    }

private:
    void turn(double &x, double &y, double &z) const
    {
        for (const RotationMatrix *rotation : m_rotations) {
            if (rotation->inUse())
                rotation->apply(x, y, z);
        }
    }

    void transform(double &x, double &y, double &z) const
    {
        x = m_axes[0](x);
        y = m_axes[1](y);
        z = m_axes[2](z);
        turn(x, y, z);
    }

    bool turnedFacet(const char *text)
    {
        double numbers[12];
        if (!stlReadCommonPoints<0, 4>(text, numbers))
            return false;
        turn(numbers[0], numbers[1], numbers[2]);
        transformCorners(numbers + 3);
        char *const out = roomForCopy(text);
        return stlWriteCommonPoints<0, 4>(out, numbers) && keepFacet(numbers + 9);
    }

    bool straightFacet(const char *text)
    {
        double numbers[9];
        if (!stlIsCommonPoint(text + stlCommonPointStarts[0]) || !stlReadCommonPoints<1, 3>(text, numbers))
            return false;
        transformCorners(numbers);
        char *const out = roomForCopy(text);
        return stlWriteCommonPoints<1, 3>(out, numbers) && keepFacet(numbers + 6);
    }

    void transformCorners(double *corners) const
    {
        for (double *corner = corners; corner != corners + 9; corner += 3)
            transform(corner[0], corner[1], corner[2]);
    }

    char *roomForCopy(const char *text)
    {
        char *const out = m_out.room(stlCommonFacetSize);
        std::memcpy(out, text, stlCommonFacetSize);
        return out;
    }

    bool keepFacet(const double *lastCorner)
    {
        m_out.keep(stlCommonFacetSize);
        m_x = lastCorner[0];
        m_y = lastCorner[1];
        m_z = lastCorner[2];
        return true;
    }

    StlTextWriter &m_out;
    const AxisChange (&m_axes)[3];
    const RotationMatrix *const (&m_rotations)[3];
    bool m_turns = false;
    // Deliberate: normals and corners share these. A number that does not convert takes the value that was
    // written last, which is then transformed once more.
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};

} // namespace

int stl_scan_extents(char *message, std::FILE *in, double *minX, double *maxX, double *minY, double *maxY,
                     double *minZ, double *maxZ)
{
    double *const min[3] = {minX, minY, minZ};
    double *const max[3] = {maxX, maxY, maxZ};
    ExtentScan scan(min, max);
    StlLineReader lines(in);
    if (!lines.next()) {
        setMessage(message, stlReadErrorMessage);
        return -1;
    }
    if (!stlWalkFacets(lines, StlPassKind::scan, scan, message).ok)
        return -1;
    if (lines.failed()) {
        setMessage(message, stlReadErrorMessage);
        return -1;
    }
    return 0;
}

int stl_apply_pass(char *message, std::FILE *in, std::FILE *out, double xScl, double yScl, double zScl,
                   double xOfsB, double yOfsB, double zOfsB, double xOfsA, double yOfsA, double zOfsA,
                   const RotationMatrix &rotX, const RotationMatrix &rotY, const RotationMatrix &rotZ)
{
    const AxisChange axes[3] = {{xScl, xOfsB, xOfsA}, {yScl, yOfsB, yOfsA}, {zScl, zOfsB, zOfsA}};
    const RotationMatrix *const rotations[3] = {&rotX, &rotY, &rotZ};
    StlLineReader lines(in);
    if (!lines.next())
        return -1;
    StlTextWriter writer(out);
    writer.write(lines.line());
    ApplyTransformation transformation(writer, axes, rotations);
    const StlWalkResult walk = stlWalkFacets(lines, StlPassKind::apply, transformation, message);
    const bool written = writer.flush();
    if (!walk.ok)
        return -1;
    if (lines.failed() || !written) {
        setMessage(message, lines.failed() ? stlReadErrorMessage : stlWriteErrorMessage);
        return -1;
    }
    appendTotals(message, lines.number(), walk.facets);
    return 0;
}
