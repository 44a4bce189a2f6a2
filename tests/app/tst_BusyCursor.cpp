// The pointer while a run works, while a box of the run waits for its answer, and afterwards.
#include "app/BusyCursor.h"
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QGuiApplication>
#include <QVector>
#include <QtTest>

#include <memory>

namespace {

// No shape stands for the pointer as every window wants it.
constexpr int usual = -1;

int pointerShape()
{
    const QCursor *pointer = QGuiApplication::overrideCursor();
    return pointer ? int(pointer->shape()) : usual;
}

} // namespace

class tst_BusyCursor : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isShownWhileARunWorks();
    void pausesForEachBoxOfARun_data();
    void pausesForEachBoxOfARun();
    void staysAwayFromARefusedForm();
    void staysAwayFromBoxesOutsideARun();
    void comesBackAfterAPause();
    void pauseOutsideWorkChangesNothing();

private:
    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_BusyCursor::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_BusyCursor::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
    QCOMPARE(pointerShape(), usual);
}

void tst_BusyCursor::isShownWhileARunWorks()
{
    QVector<int> shapes;
    // The status bar is told of the success as the last deed of the run.
    connect(m->window.statusBar(), &QStatusBar::messageChanged, this,
            [&shapes] { shapes << pointerShape(); });
    m->enterFiles("in.stl", "out.stl");
    m->run();
    QCOMPARE(shapes, QVector<int>{Qt::WaitCursor});
    QCOMPARE(pointerShape(), usual);
}

void tst_BusyCursor::pausesForEachBoxOfARun_data()
{
    QTest::addColumn<QString>("folderInTheWay");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("title");
    QTest::newRow("log cannot be emptied") << "meshvane.log"
                                           << "out.stl"
                                           << "Disc Write fail";
    QTest::newRow("output cannot be opened") << "out.stl"
                                             << "out.stl"
                                             << "Error notification";
}

void tst_BusyCursor::pausesForEachBoxOfARun()
{
    QFETCH(QString, folderInTheWay);
    QFETCH(QString, output);
    QFETCH(QString, title);
    m_folder->makeFolder(folderInTheWay);
    QVector<int> shapes;
    m_boxes->whenShown([&shapes](const ShownBox &) { shapes << pointerShape(); });
    m->enterFiles("in.stl", output);
    m->run();
    QCOMPARE(m_boxes->boxes().size(), 1);
    QCOMPARE(m_boxes->boxes().constFirst().title, title);
    QCOMPARE(shapes, QVector<int>{usual});
    QCOMPARE(pointerShape(), usual);
}

void tst_BusyCursor::staysAwayFromARefusedForm()
{
    QVector<int> shapes;
    m_boxes->whenShown([&shapes](const ShownBox &) { shapes << pointerShape(); });
    m->run();
    QCOMPARE(shapes, QVector<int>{usual});
    QCOMPARE(pointerShape(), usual);
}

void tst_BusyCursor::staysAwayFromBoxesOutsideARun()
{
    QVector<int> shapes;
    m_boxes->whenShown([&shapes](const ShownBox &) { shapes << pointerShape(); });
    m->button("btnViewLog")->click();
    m->enter("edtXOffsA", "1");
    m->tick("chbXSet0");
    QCOMPARE(shapes, QVector<int>({usual, usual}));
}

void tst_BusyCursor::comesBackAfterAPause()
{
    {
        const BusyCursor busy;
        {
            const BusyCursorPause pause;
            QCOMPARE(pointerShape(), usual);
        }
        QCOMPARE(pointerShape(), int(Qt::WaitCursor));
    }
    QCOMPARE(pointerShape(), usual);
}

void tst_BusyCursor::pauseOutsideWorkChangesNothing()
{
    {
        const BusyCursorPause pause;
        QCOMPARE(pointerShape(), usual);
    }
    QCOMPARE(pointerShape(), usual);
}

MESHVANE_QTEST_MAIN(tst_BusyCursor)
#include "tst_BusyCursor.moc"
