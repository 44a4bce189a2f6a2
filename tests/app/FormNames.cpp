#include "tests/app/FormNames.h"

const QStringList &axes()
{
    static const QStringList letters{"X", "Y", "Z"};
    return letters;
}

const QStringList &fieldNames()
{
    static const QStringList names{"edtFileIn", "edtFileOut", "edtXScale",  "edtXOffsB",  "edtXOffsA",
                                   "edtYScale", "edtYOffsB",  "edtYOffsA",  "edtZScale",  "edtZOffsB",
                                   "edtZOffsA", "edtRotateX", "edtRotateY", "edtRotateZ", "edtXSetL",
                                   "edtYSetL",  "edtZSetL"};
    return names;
}

const QStringList &boxNames()
{
    static const QStringList names =
        QStringList{"chbRotateX", "chbRotateY", "chbRotateZ", "chbXSetL", "chbYSetL",
                    "chbZSetL",   "chbXSet0",   "chbYSet0",   "chbZSet0"} +
        sameLengthBoxNames();
    return names;
}

const QStringList &sameLengthBoxNames()
{
    static const QStringList names{"chbXsameY", "chbXsameZ", "chbYsameX",
                                   "chbYsameZ", "chbZsameX", "chbZsameY"};
    return names;
}

QString onAxis(const char *pattern, const QString &axis) { return QString(pattern).replace('?', axis); }

QStringList sameLengthBoxesOf(const QString &axis)
{
    return sameLengthBoxNames().filter("chb" + axis + "same");
}
