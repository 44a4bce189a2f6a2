// Parameters of runs, written as the few values that matter to a test.
#pragma once

#include "transform/TransformParameters.h"

#include <utility>
#include <vector>

TransformParameters scaling(double factor);
TransformParameters unchanging(); // scales of one

// Doubles the mesh with options that need both scans, and rotates it, so that the normals are rewritten.
TransformParameters usingEveryPass();

// Of x, y and z.
using AxisFlags = int TransformParameters::*[3];
using AxisNumbers = double TransformParameters::*[3];

constexpr AxisNumbers scales = {&TransformParameters::xScl, &TransformParameters::yScl,
                                &TransformParameters::zScl};
constexpr AxisNumbers offsetsBefore = {&TransformParameters::xOfsB, &TransformParameters::yOfsB,
                                       &TransformParameters::zOfsB};
constexpr AxisNumbers offsetsAfter = {&TransformParameters::xOfsA, &TransformParameters::yOfsA,
                                      &TransformParameters::zOfsA};
constexpr AxisFlags origins = {&TransformParameters::xSet0, &TransformParameters::ySet0,
                               &TransformParameters::zSet0};
constexpr AxisFlags setLengths = {&TransformParameters::xSetL, &TransformParameters::ySetL,
                                  &TransformParameters::zSetL};
constexpr AxisNumbers lengths = {&TransformParameters::xLength, &TransformParameters::yLength,
                                 &TransformParameters::zLength};
constexpr AxisFlags rotations = {&TransformParameters::xRotate, &TransformParameters::yRotate,
                                 &TransformParameters::zRotate};
constexpr AxisNumbers angles = {&TransformParameters::xAngle, &TransformParameters::yAngle,
                                &TransformParameters::zAngle};

class Setting {
public:
    Setting(int TransformParameters::*flag, int value);
    Setting(double TransformParameters::*number, double value);
    Setting(const AxisFlags &flags, int x, int y, int z);
    Setting(const AxisNumbers &numbers, double x, double y, double z);

    void applyTo(TransformParameters &parameters) const;

private:
    std::vector<std::pair<int TransformParameters::*, int>> m_flags;
    std::vector<std::pair<double TransformParameters::*, double>> m_numbers;
};

using Settings = std::vector<Setting>;

TransformParameters with(TransformParameters parameters, const Settings &settings);

struct TransformFlag {
    const char *name;
    int TransformParameters::*member;
};

constexpr TransformFlag transformFlags[] = {
    {"RotateX", &TransformParameters::xRotate}, {"RotateY", &TransformParameters::yRotate},
    {"RotateZ", &TransformParameters::zRotate}, {"LengthX", &TransformParameters::xSetL},
    {"LengthY", &TransformParameters::ySetL},   {"LengthZ", &TransformParameters::zSetL},
    {"OriginX", &TransformParameters::xSet0},   {"OriginY", &TransformParameters::ySet0},
    {"OriginZ", &TransformParameters::zSet0},   {"XSameY", &TransformParameters::xSameY},
    {"XSameZ", &TransformParameters::xSameZ},   {"YSameX", &TransformParameters::ySameX},
    {"YSameZ", &TransformParameters::ySameZ},   {"ZSameX", &TransformParameters::zSameX},
    {"ZSameY", &TransformParameters::zSameY},
};
