// The policies and invalid values that a field holds. Include it in only one source file of a program.
#pragma once

#include "tests/support/qt/PrivateMember.h"
#include "widgets/LineEditCustom.h"

#include <QStringList>

struct FieldPolicies {
    using Pointer = QStringList LineEditCustom::*;
    friend Pointer pointerTo(FieldPolicies);
};
template struct PrivateMember<FieldPolicies, &LineEditCustom::policies>;

struct FieldInvalidValues {
    using Pointer = QStringList LineEditCustom::*;
    friend Pointer pointerTo(FieldInvalidValues);
};
template struct PrivateMember<FieldInvalidValues, &LineEditCustom::invalidValues>;

inline QStringList policiesOf(const LineEditCustom &field) { return field.*pointerTo(FieldPolicies{}); }

inline QStringList invalidValuesOf(const LineEditCustom &field)
{
    return field.*pointerTo(FieldInvalidValues{});
}
