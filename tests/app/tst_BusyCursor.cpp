#include "app/BusyCursor.h"
#include "tests/app/PointerShape.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/QtTestMain.h"

#include <QVector>
#include <QtTest>

class tst_BusyCursor : public WindowTest {
    Q_OBJECT

private slots:
    void pauseShowsTheUsualPointerUntilItEnds();
    void pauseWithoutABusyPointerChangesNothing();
    void isShownDuringARunOnly();
    void isNotShownInBoxesOutsideARun();
};

void tst_BusyCursor::pauseShowsTheUsualPointerUntilItEnds()
{
    {
        const BusyCursor busy;
        QCOMPARE(pointerShape(), int(Qt::WaitCursor));
        {
            const BusyCursorPause pause;
            QCOMPARE(pointerShape(), usualPointer);
        }
        QCOMPARE(pointerShape(), int(Qt::WaitCursor));
    }
    QCOMPARE(pointerShape(), usualPointer);
}

void tst_BusyCursor::pauseWithoutABusyPointerChangesNothing()
{
    {
        const BusyCursorPause pause;
        QCOMPARE(pointerShape(), usualPointer);
    }
    QCOMPARE(pointerShape(), usualPointer);
}

void tst_BusyCursor::isShownDuringARunOnly()
{
    QVector<int> shapes;
    // The last step of a run writes to the status bar.
    connect(m->window.statusBar(), &QStatusBar::messageChanged, this,
            [&shapes] { shapes << pointerShape(); });
    QCOMPARE(messagesOfARun("in.stl", "out.stl"), QStringList());
    QCOMPARE(shapes, QVector<int>{Qt::WaitCursor});
    QCOMPARE(pointerShape(), usualPointer);
}

void tst_BusyCursor::isNotShownInBoxesOutsideARun()
{
    QVector<int> shapes;
    m_boxes->whenShown([&shapes](const ShownBox &) { shapes << pointerShape(); });
    m->run(); // an empty form is refused
    m->button("btnViewLog")->click();
    m->enter("edtXOffsA", "1");
    m->tick("chbXSet0");
    QCOMPARE(shapes, QVector<int>({usualPointer, usualPointer, usualPointer}));
    QCOMPARE(pointerShape(), usualPointer);
}

MESHVANE_QTEST_MAIN(tst_BusyCursor)
#include "tst_BusyCursor.moc"
