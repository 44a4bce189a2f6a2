#include "tests/support/RunParameters.h"

TransformParameters scaling(double factor) { return with({}, {{scales, factor, factor, factor}}); }

TransformParameters unchanging() { return scaling(1.0); }

TransformParameters usingEveryPass()
{
    using P = TransformParameters;
    return with(scaling(2.0),
                {{&P::xSet0, 1}, {&P::ySetL, 1}, {&P::yLength, 10.0}, {&P::zRotate, 1}, {&P::zAngle, 30.0}});
}

Setting::Setting(int TransformParameters::*flag, int value)
    : m_flags{{flag, value}}
{}

Setting::Setting(double TransformParameters::*number, double value)
    : m_numbers{{number, value}}
{}

Setting::Setting(const AxisFlags &flags, int x, int y, int z)
    : m_flags{{flags[0], x}, {flags[1], y}, {flags[2], z}}
{}

Setting::Setting(const AxisNumbers &numbers, double x, double y, double z)
    : m_numbers{{numbers[0], x}, {numbers[1], y}, {numbers[2], z}}
{}

void Setting::applyTo(TransformParameters &parameters) const
{
    for (const auto &[flag, value] : m_flags)
        parameters.*flag = value;
    for (const auto &[number, value] : m_numbers)
        parameters.*number = value;
}

TransformParameters with(TransformParameters parameters, const Settings &settings)
{
    for (const Setting &setting : settings)
        setting.applyTo(parameters);
    return parameters;
}
