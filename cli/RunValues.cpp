#include "cli/RunValues.h"

#include "cli/Complaints.h"

namespace {

using P = TransformParameters;

// Deliberate: the flags of Y are crossed, "ySameZ" is the one that gives Y the length of X. An option says
// what happens.
constexpr int P::*sameLengthFlags[axisCount][axisCount] = {
    {nullptr, &P::xSameY, &P::xSameZ},
    {&P::ySameZ, nullptr, &P::ySameX},
    {&P::zSameX, &P::zSameY, nullptr},
};

constexpr AxisFields axisFields[axisCount] = {
    {&P::xScl, &P::xOfsB, &P::xOfsA, &P::xSet0, &P::xSetL, &P::xLength, &P::xRotate, &P::xAngle},
    {&P::yScl, &P::yOfsB, &P::yOfsA, &P::ySet0, &P::ySetL, &P::yLength, &P::yRotate, &P::yAngle},
    {&P::zScl, &P::zOfsB, &P::zOfsA, &P::zSet0, &P::zSetL, &P::zLength, &P::zRotate, &P::zAngle},
};

void applySize(const AxisValues &values, int axis, TransformParameters &p)
{
    const AxisFields &fields = fieldsOf(axis);
    if (values.scale || values.length || values.lengthOf) {
        p.*fields.lengthIsSet = 0;
        p.*fields.length = 0.0;
    }
    if (values.scale)
        p.*fields.scale = *values.scale;
    if (values.length) {
        p.*fields.lengthIsSet = 1;
        p.*fields.length = *values.length;
    }
    if (values.lengthOf)
        p.*sameLengthFlag(axis, *values.lengthOf) = 1;
}

void applyPlace(const AxisValues &values, int axis, TransformParameters &p)
{
    const AxisFields &fields = fieldsOf(axis);
    if (values.offsetBefore) {
        p.*fields.offsetBefore = *values.offsetBefore;
        p.*fields.originIsSet = 0;
    }
    if (values.originToZero)
        p.*fields.originIsSet = 1;
    if (values.offsetAfter)
        p.*fields.offsetAfter = *values.offsetAfter;
}

void applyRotation(const AxisValues &values, int axis, TransformParameters &p)
{
    if (!values.angle)
        return;
    p.*fieldsOf(axis).isRotated = 1;
    p.*fieldsOf(axis).angle = *values.angle;
}

void apply(const RunValues &values, TransformParameters &p)
{
    for (int axis = 0; axis < axisCount; ++axis) {
        const AxisValues &ofAxis = values[static_cast<std::size_t>(axis)];
        applySize(ofAxis, axis, p);
        applyPlace(ofAxis, axis, p);
        applyRotation(ofAxis, axis, p);
    }
}

int countSameLengths(const RunValues &values)
{
    int count = 0;
    for (const AxisValues &axis : values)
        count += axis.lengthOf ? 1 : 0;
    return count;
}

void refuseUntoldSameLengths(const RunValues &values, const LoggedRun &run, const std::string &log)
{
    if (run.sameLengths == 0 || countSameLengths(values) == run.sameLengths)
        return;
    const std::string times = run.sameLengths == 1 ? "an axis" : std::to_string(run.sameLengths) + " axes";
    throw Failure(
        log, "the run gave " + times + " the length of another, but its log does not tell which (\"" +
                 "xSamey\" stands for all six); say it with --x-length-of, --y-length-of or --z-length-of");
}

void refuseZeroScales(const RunValues &values, const TransformParameters &p, const std::string &log)
{
    for (int axis = 0; axis < axisCount; ++axis) {
        const AxisFields &fields = fieldsOf(axis);
        const bool isMeasured = p.*fields.lengthIsSet != 0 || values[static_cast<std::size_t>(axis)].lengthOf;
        if (p.*fields.scale == 0.0 && !isMeasured)
            throw Failure(log, std::string(1, axisLetters[axis]) +
                                   "Scl = 0.000000: the scale was 0, or too small " +
                                   "for the six decimals of a log; say it with --" +
                                   nameOf(cliOption(OptionId::scale), axis));
    }
}

} // namespace

const AxisFields &fieldsOf(int axis) { return axisFields[axis]; }

int TransformParameters::*sameLengthFlag(int axis, int of) { return sameLengthFlags[axis][of]; }

TransformParameters parametersOf(const RunValues &values)
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 1.0;
    apply(values, p);
    return p;
}

TransformParameters parametersOf(const RunValues &values, const LoggedRun &run, const std::string &log)
{
    refuseUntoldSameLengths(values, run, log);
    TransformParameters p = run.parameters;
    apply(values, p);
    refuseZeroScales(values, p, log);
    return p;
}
