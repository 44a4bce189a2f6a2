// The rules of LineEditCustom's policies: text and limits in, messages out. Needs no widget.
#pragma once

#include "widgets/LineEditPolicy.h"

#include <QString>
#include <QStringList>
#include <QVector>

// What the checks look at. usedNames is the field's own list; the unique-name checks may remove a name from
// it.
struct FieldFacts {
    QString text;
    QString fieldName; // if empty, messages start with "This", "This directory" or "This file" instead
    float minimumValue;
    float maximumValue;
    QStringList &usedNames;
    QStringList invalidValues;
    QStringList invalidCharacters;
    bool excludeOwnName; // remove the first occurrence of the text from usedNames before looking it up
};

// A change to the field's standing messages.
struct FieldFinding {
    bool failed; // true: add the message; false: remove it
    QString message;
};

// No findings: the messages stay as they are.
using FieldFindings = QVector<FieldFinding>;

struct FieldCheck {
    LineEditPolicy policy;
    FieldFindings (*run)(const FieldFacts &facts);
};

// All checks in the order in which a check run calls them. A policy whose check is listed here can be added
// to a field.
const QVector<FieldCheck> &fieldChecks();
