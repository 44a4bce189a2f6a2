// The object names of the form's fields and boxes, each list in tab order.
#pragma once

#include <QString>
#include <QStringList>

const QStringList &axes(); // X, Y, Z
const QStringList &fieldNames();
const QStringList &boxNames();
const QStringList &sameLengthBoxNames();

// "edt?Scale" with the axis in place of the question mark.
QString onAxis(const char *pattern, const QString &axis);

// The two boxes by which an axis takes the length of another.
QStringList sameLengthBoxesOf(const QString &axis);
