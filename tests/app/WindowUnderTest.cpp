#include "tests/app/WindowUnderTest.h"

#include "transform/MeshvaneLog.h"

QList<QDialog *> WindowUnderTest::viewers() const
{
    QList<QDialog *> result;
    for (MeshvaneLog *viewer : window.findChildren<MeshvaneLog *>())
        result << viewer;
    return result;
}
