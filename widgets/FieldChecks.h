// The rules behind the policies of LineEditCustom: text and limits in, messages out. No widget.
#pragma once

#include "widgets/LineEditPolicy.h"

#include <QString>
#include <QStringList>
#include <QVector>

// What the checks look at. usedNames is the field's own list: the unique-name checks may shorten it.
struct FieldFacts {
    QString text;
    QString fieldName; // may be empty; then a message starts with "This", "This directory" or "This file"
    float minimumValue;
    float maximumValue;
    QStringList &usedNames;
    QStringList invalidValues;
    QStringList invalidCharacters;
    bool excludeOwnName; // drop the first use of the text from usedNames before it is looked up
};

// What a check wants done to the field's standing messages.
struct FieldFinding {
    bool failed; // add the message; otherwise remove it
    QString message;
};

// No finding means: leave the messages as they are.
using FieldFindings = QVector<FieldFinding>;

struct FieldCheck {
    LineEditPolicy policy;
    FieldFindings (*run)(const FieldFacts &facts);
};

// All eleven checks in the order in which a check run calls them.
const QVector<FieldCheck> &fieldChecks();
