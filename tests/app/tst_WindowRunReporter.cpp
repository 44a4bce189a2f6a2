#include "app/BusyCursor.h"
#include "app/WindowRunReporter.h"
#include "tests/app/PointerShape.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>
#include <QVector>
#include <QtTest>

class tst_WindowRunReporter : public QObject {
    Q_OBJECT

private slots:
    void errorShowsTheErrorBox();
    void logThatWasNotEmptiedIsReportedInABoxOfTheWindow();
    void everyBoxHasTheUsualPointer();
    void successIsShownInTheStatusBarForFiveSeconds();
};

void tst_WindowRunReporter::errorShowsTheErrorBox()
{
    QMainWindow window;
    const MessageBoxRecorder boxes;
    WindowRunReporter(window).error("Unable to open output file.");
    QCOMPARE(boxes.texts(), QStringList{"Unable to open output file."});
    QCOMPARE(window.statusBar()->currentMessage(), QString());
}

void tst_WindowRunReporter::logThatWasNotEmptiedIsReportedInABoxOfTheWindow()
{
    QMainWindow window;
    const MessageBoxRecorder boxes;
    WindowRunReporter(window).logNotEmptied("Failed to open log file.");
    QCOMPARE(boxes.texts(), QStringList{"[Disc Write fail] Failed to open log file."});
    const ShownBox &box = boxes.boxes().constFirst();
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.parent, static_cast<const QWidget *>(&window));
    QVERIFY(box.modal);
    QCOMPARE(box.buttonCount, 1);
    QCOMPARE(window.statusBar()->currentMessage(), QString());
}

void tst_WindowRunReporter::everyBoxHasTheUsualPointer()
{
    QMainWindow window;
    WindowRunReporter reporter(window);
    MessageBoxRecorder boxes;
    QVector<int> shapes;
    boxes.whenShown([&shapes](const ShownBox &) { shapes << pointerShape(); });
    const BusyCursor busy;
    reporter.error("text");
    QCOMPARE(pointerShape(), int(Qt::WaitCursor));
    reporter.logNotEmptied("text");
    QCOMPARE(pointerShape(), int(Qt::WaitCursor));
    QCOMPARE(shapes, QVector<int>({usualPointer, usualPointer}));
}

void tst_WindowRunReporter::successIsShownInTheStatusBarForFiveSeconds()
{
    QMainWindow window;
    const MessageBoxRecorder boxes;
    WindowRunReporter(window).finished("Finished.");
    QCOMPARE(window.statusBar()->currentMessage(), QString("Finished."));
    QCOMPARE(boxes.texts(), QStringList());
    const QTimer *running = nullptr;
    for (QTimer *timer : window.statusBar()->findChildren<QTimer *>()) {
        if (!timer->isActive())
            continue;
        QVERIFY(!running);
        running = timer;
        QCOMPARE(timer->interval(), 5000);
        timer->start(0);
    }
    QVERIFY(running);
    QTRY_COMPARE(window.statusBar()->currentMessage(), QString());
}

MESHVANE_QTEST_MAIN(tst_WindowRunReporter)
#include "tst_WindowRunReporter.moc"
