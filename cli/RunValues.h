// The values of a run as the command line gives them, and how they become the parameters of the run.
#pragma once

#include "cli/OptionTable.h"
#include "transform/TransformParameters.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

struct AxisValues {
    std::optional<double> scale;
    std::optional<double> offsetBefore;
    std::optional<double> offsetAfter;
    std::optional<double> length;
    std::optional<int> lengthOf; // another axis, 0 to 2
    std::optional<double> angle; // degrees
    bool originToZero = false;
};

using RunValues = std::array<AxisValues, axisCount>;

struct RunCounts {
    long lines = 0;
    long facets = 0;
};

// What a run log tells.
struct LoggedRun {
    TransformParameters parameters;    // without the six same-length flags
    int sameLengths = 0;               // how many of them were set; the log does not tell which
    std::vector<std::string> warnings; // what the log may have lost
    std::optional<RunCounts> counts;   // of a run that succeeded
};

// The parameters of a new run: scale 1 and nothing else where no value is given.
TransformParameters parametersOf(const RunValues &values);

// Those of a run that is repeated. A value replaces what the log says of the same thing: the size of an axis
// (scale, length, length of another axis), where it begins (offset before, origin to zero), its offset after,
// its rotation. Throws Failure, in the name of the log, if something is left that the log does not tell.
TransformParameters parametersOf(const RunValues &values, const LoggedRun &run, const std::string &log);

// The fields of the parameters by axis, to loop over.
struct AxisFields {
    double TransformParameters::*scale;
    double TransformParameters::*offsetBefore;
    double TransformParameters::*offsetAfter;
    int TransformParameters::*originIsSet;
    int TransformParameters::*lengthIsSet;
    double TransformParameters::*length;
    int TransformParameters::*isRotated;
    double TransformParameters::*angle;
};
const AxisFields &fieldsOf(int axis);

// The flag that gives an axis the length of another.
int TransformParameters::*sameLengthFlag(int axis, int of);
