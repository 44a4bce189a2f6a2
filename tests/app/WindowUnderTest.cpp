#include "tests/app/WindowUnderTest.h"

#include "transform/MeshvaneLog.h"

QList<QDialog *> WindowUnderTest::viewers() const
{
    QList<QDialog *> result;
    for (MeshvaneLog *viewer : window.findChildren<MeshvaneLog *>())
        result << viewer;
    return result;
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
    static const QStringList names{"chbRotateX", "chbRotateY", "chbRotateZ", "chbXSetL",  "chbYSetL",
                                   "chbZSetL",   "chbXSet0",   "chbYSet0",   "chbZSet0",  "chbXsameY",
                                   "chbXsameZ",  "chbYsameX",  "chbYsameZ",  "chbZsameX", "chbZsameY"};
    return names;
}
