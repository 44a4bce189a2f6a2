// A validating field in a host widget, with access to its icon.
#pragma once

#include "widgets/LineEditCustom.h"

#include <QLabel>
#include <QStringList>
#include <QWidget>

// Field is LineEditCustom or derived from it. The host is not shown unless a test shows it; a field in it
// counts as not hidden all the same.
template <typename Field>
struct HostedField {
    QWidget host;
    Field field{&host};
    QLabel *icon = static_cast<QWidget &>(field).findChild<QLabel *>();

    bool showsIcon() const { return !icon->isHidden(); }

    // The messages in the icon's tool tip: the result of the latest check run, read without starting another.
    QStringList shownMessages() const
    {
        return icon->toolTip().isEmpty() ? QStringList() : icon->toolTip().split("<br>", Qt::SkipEmptyParts);
    }

    // Exactly one check run on the text.
    void check(const QString &text)
    {
        if (field.text() == text)
            field.applyLineEditPolicy();
        else
            field.setText(text);
    }
};

using FieldUnderTest = HostedField<LineEditCustom>;

// A scale field as the main window has it, and the messages it shows.
inline void makeScaleField(LineEditCustom &field)
{
    field.setFieldName("X Scale", true);
    field.addPolicy(PolicyInvalidValues);
    field.addPolicy(PolicyNumber);
    field.addInvalidValue(0, false);
}
inline const QString scaleIsNoNumber = "<b>X Scale</b> field can only contain a number value.";
inline const QString scaleIsZero = "<b>X Scale</b> field contains invalid value \"0\"";
