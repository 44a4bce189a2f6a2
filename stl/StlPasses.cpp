#include "stl/StlPasses.h"

#include "stl/SettledNumber.h"
#include "stl/StlCommonFacet.h"
#include "stl/StlFacetGrammar.h"
#include "stl/StlLines.h"
#include "stl/StlPointMemory.h"
#include "stl/StlTextWriter.h"

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
    min = value < min ? value : min;
    max = value > max ? value : max;
}

// The last corner of the latest facet of the common form, as text. Only a line outside that form asks for its
// numbers, so they are read then.
class LastCommonCorner {
public:
    void keep(const char *corner)
    {
        std::memcpy(m_text, corner, sizeof m_text);
        m_isNew = true;
    }

    // Sets the numbers and returns true if a corner was kept since the last call.
    bool readInto(double (&numbers)[3])
    {
        const bool wasNew = m_isNew;
        m_isNew = false;
        return wasNew && stlReadCommonPoint(m_text, numbers);
    }

private:
    char m_text[stlCommonPointSize];
    bool m_isNew = false;
};

class ExtentScan final : public StlFacetHandler {
public:
    double min(int axis) const { return m_min[axis]; }
    double max(int axis) const { return m_max[axis]; }

    void facetLine(std::string_view, StlWords &) override {}
    void otherLine(std::string_view) override {}

    void vertexLine(StlWords &numbers) override
    {
        m_lastCommon.readInto(m_corner);
        stlReadPoint(numbers, m_corner[0], m_corner[1], m_corner[2]);
        widenBy(m_corner);
    }

    bool commonFacet(const char *text) override
    {
        if (!stlHasCommonLayout(text) || !stlIsWithinLine(text + stlCommonPointStarts[0]))
            return false;
        for (std::size_t i = 1; i < 4; ++i) {
            const char *const corner = text + stlCommonPointStarts[i];
            if (!m_seen.findOrMake(corner, &m_nothing, [this, corner] { return widenByText(corner); }))
                return false;
        }
        m_lastCommon.keep(text + stlCommonPointStarts[3]);
        return true;
    }

private:
    struct Nothing {};

    bool widenByText(const char *corner)
    {
        double numbers[3];
        if (!stlReadCommonPoint(corner, numbers))
            return false;
        widenBy(numbers);
        return true;
    }

    void widenBy(const double (&corner)[3])
    {
        for (int axis = 0; axis < 3; ++axis)
            widen(m_min[axis], m_max[axis], corner[axis]);
    }

    double m_min[3] = {unmeasured, unmeasured, unmeasured};
    double m_max[3] = {-unmeasured, -unmeasured, -unmeasured};
    double m_corner[3] = {0.0, 0.0, 0.0}; // a number that does not convert keeps that of the previous corner
    LastCommonCorner m_lastCommon;
    StlPointMemory<StlPointText, Nothing> m_seen; // a corner seen before widens nothing
    Nothing m_nothing;
};

struct AxisChange {
    double scale;
    double offsetBefore;
    double offsetAfter;

    template <typename Number>
    Number operator()(Number value) const
    {
        return (value + Number{offsetBefore}) * Number{scale} + Number{offsetAfter};
    }
};

class ApplyTransformation final : public StlFacetHandler {
public:
    ApplyTransformation(StlTextWriter &out, const AxisChange (&axes)[3],
                        const RotationMatrix *const (&rotations)[3])
        : m_out(out),
          m_axes(axes)
    {
        for (const RotationMatrix *rotation : rotations) {
            if (rotation->inUse())
                m_rotations[m_rotationCount++] = *rotation;
        }
    }

    void facetLine(std::string_view line, StlWords &numbers) override
    {
        if (m_rotationCount == 0) {
            otherLine(line);
            return;
        }
        readAfterLast(numbers);
        settle(&ApplyTransformation::turn<SettledNumber>);
        m_out.writePaddedPoint("  facet normal ", m_last[0], m_last[1], m_last[2]);
    }

    void vertexLine(StlWords &numbers) override
    {
        readAfterLast(numbers);
        settle(&ApplyTransformation::transform<SettledNumber>);
        m_out.writePaddedPoint("      vertex ", m_last[0], m_last[1], m_last[2]);
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
        char *const out = m_out.room(stlCommonFacetSize);
        stlPutCommonLayout(out);
        if (!putNormal(text + stlCommonPointStarts[0], out + stlCommonPointStarts[0]))
            return false;
        for (std::size_t i = 1; i < 4; ++i) {
            if (!putCorner(text + stlCommonPointStarts[i], out + stlCommonPointStarts[i]))
                return false;
        }
        m_out.keep(stlCommonFacetSize);
        m_lastCommon.keep(text + stlCommonPointStarts[3]);
        return true;
    }

private:
    struct PointLine {
        char text[stlCommonPointSize];
    };

    template <typename Number>
    void turn(Number (&point)[3]) const
    {
        for (std::size_t i = 0; i < m_rotationCount; ++i)
            m_rotations[i].apply(point[0], point[1], point[2]);
    }

    template <typename Number>
    void transform(Number (&point)[3]) const
    {
        for (int axis = 0; axis < 3; ++axis)
            point[axis] = m_axes[axis](point[axis]);
        turn(point);
    }

    // The common form has no NaN, so only lines that are written one by one need settled signs.
    void settle(void (ApplyTransformation::*change)(SettledNumber (&)[3]) const)
    {
        SettledNumber point[3] = {{m_last[0]}, {m_last[1]}, {m_last[2]}};
        (this->*change)(point);
        for (int axis = 0; axis < 3; ++axis)
            m_last[axis] = point[axis].value;
    }

    void readAfterLast(StlWords &numbers)
    {
        if (m_lastCommon.readInto(m_last))
            transform(m_last);
        stlReadPoint(numbers, m_last[0], m_last[1], m_last[2]);
    }

    bool putCorner(const char *corner, char *out)
    {
        return m_corners.findOrMake(corner, out, [this, corner, out] {
            double numbers[3];
            if (!stlReadCommonPoint(corner, numbers))
                return false;
            transform(numbers);
            return stlWriteCommonPoint(out, numbers);
        });
    }

    bool putNormal(const char *normal, char *out)
    {
        if (m_rotationCount > 0)
            return putTurnedNormal(normal, out);
        std::memcpy(out, normal, stlCommonPointSize);
        return stlIsWithinLine(normal);
    }

    bool putTurnedNormal(const char *normal, char *out)
    {
        return m_normal.findOrMake(normal, out, [this, normal, out] {
            double numbers[3];
            if (!stlReadCommonPoint(normal, numbers))
                return false;
            turn(numbers);
            return stlWriteCommonPoint(out, numbers);
        });
    }

    StlTextWriter &m_out;
    const AxisChange (&m_axes)[3];
    RotationMatrix m_rotations[3]; // those in use
    std::size_t m_rotationCount = 0;
    // Deliberate: normals and corners share it. A number that does not convert takes the value that was
    // written last, which is then transformed once more.
    double m_last[3] = {0.0, 0.0, 0.0};
    LastCommonCorner m_lastCommon;                  // written since, but not yet transformed into m_last
    StlLastPoint<StlPointText, PointLine> m_normal; // turned
    StlPointMemory<StlPointText, PointLine> m_corners;
};

bool scanLines(char *message, std::FILE *in, ExtentScan &scan, StlLineEnd lineEnd)
{
    StlLineReader lines(in, lineEnd);
    if (!lines.next()) {
        setMessage(message, stlReadErrorMessage);
        return false;
    }
    if (!stlWalkFacets(lines, StlPassKind::scan, scan, message).ok)
        return false;
    if (lines.failed())
        setMessage(message, stlReadErrorMessage);
    return !lines.failed();
}

} // namespace

int stl_scan_extents(char *message, std::FILE *in, double *minX, double *maxX, double *minY, double *maxY,
                     double *minZ, double *maxZ, StlLineEnd lineEnd)
{
    ExtentScan scan;
    const bool ok = scanLines(message, in, scan, lineEnd);
    double *const min[3] = {minX, minY, minZ};
    double *const max[3] = {maxX, maxY, maxZ};
    for (int axis = 0; axis < 3; ++axis) {
        *min[axis] = scan.min(axis);
        *max[axis] = scan.max(axis);
    }
    return ok ? 0 : -1;
}

int stl_apply_pass(char *message, std::FILE *in, std::FILE *out, double xScl, double yScl, double zScl,
                   double xOfsB, double yOfsB, double zOfsB, double xOfsA, double yOfsA, double zOfsA,
                   const RotationMatrix &rotX, const RotationMatrix &rotY, const RotationMatrix &rotZ,
                   StlLineEnd lineEnd)
{
    const AxisChange axes[3] = {{xScl, xOfsB, xOfsA}, {yScl, yOfsB, yOfsA}, {zScl, zOfsB, zOfsA}};
    const RotationMatrix *const rotations[3] = {&rotX, &rotY, &rotZ};
    StlLineReader lines(in, lineEnd);
    if (!lines.next())
        return -1;
    StlTextWriter writer(out, lineEnd);
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
