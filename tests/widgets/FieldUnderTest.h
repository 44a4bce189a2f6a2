// A validating field in a host widget, with its icon at hand.
#pragma once

#include "widgets/LineEditCustom.h"

#include <QLabel>
#include <QStringList>
#include <QWidget>

// The host is not shown unless a test shows it: a field in it still counts as not hidden.
struct FieldUnderTest {
    QWidget host;
    LineEditCustom field{&host};
    QLabel *icon = field.findChild<QLabel *>();

    bool showsIcon() const { return !icon->isHidden(); }

    // The messages of the icon's tool tip, which tell the last check run without starting another.
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
