// Runs from the window as a whole, and the log viewers.
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/QtTestMain.h"
#include "transform/RunLogText.h"

#include <QDialog>
#include <QPointer>
#include <QTextEdit>
#include <QtTest>

class tst_MainWindowRun : public WindowTest {
    Q_OBJECT

private slots:
    void newFormLeavesTheMeshAsItIs();
    void optionsReachOutputAndLog();

    void complaintsOfAllFieldsAreShownInOneBox();
    void refusedRunTouchesNoFile();
    void refusedRunLeavesTheLogOfThePreviousRun();
    void failedRunShowsItsMessage();
    void logThatCannotBeEmptiedIsReportedOverTheWindow();

    void viewerNeedsARunOfThisProgram();
    void viewerShowsTheLog();
    void everyCallMakesANewViewer();
    void viewerIsASnapshot();
    void viewerDecodesUtf8();
    void unreadableLogLeavesAHiddenViewer();
    void viewerAfterAFailedTransformation();
    void viewersAreDeletedWithTheWindow();

private:
    QStringList goodRun() { return messagesOfARun("in.stl", "out.stl"); }
    QDialog *openViewer() const
    {
        m->button("btnViewLog")->click();
        if (m->viewers().isEmpty())
            qFatal("no viewer");
        return m->viewers().last();
    }
    QString textOf(const QDialog *viewer) const
    {
        return viewer->findChild<QTextEdit *>("txtLog")->toPlainText();
    }
};

void tst_MainWindowRun::newFormLeavesTheMeshAsItIs()
{
    QCOMPARE(goodRun(), QStringList());
    QCOMPARE(m_folder->entries(), QStringList({"in.stl", "meshvane.log", "out.stl"}));
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
    QCOMPARE(m_folder->read("meshvane.log"), logOfARun(newForm()));
    QCOMPARE(m_folder->read("in.stl"), triangleInput());
    QCOMPARE(m->statusText(), QString("Calculation finished successfully.  Output written to: out.stl"));
}

void tst_MainWindowRun::optionsReachOutputAndLog()
{
    m->enter("edtYScale", "-0.5");
    m->enter("edtYOffsB", "0.25");
    m->enter("edtZOffsA", "1e3");
    m->box("chbXsameY")->click(); // 4 becomes 8
    m->box("chbZSetL")->click();  // 16 becomes 4
    m->enter("edtZSetL", "4");
    QCOMPARE(goodRun(), QStringList());
    QCOMPARE(m_folder->read("out.stl"),
             triangleOutput("      vertex  2.00000000E+00 -1.12500000E+00  1.00075000E+03\n"
                            "      vertex  1.00000000E+01 -1.12500000E+00  1.00075000E+03\n"
                            "      vertex  2.00000000E+00 -5.12500000E+00  1.00475000E+03\n"));
    TransformParameters parameters = newForm();
    parameters.yScl = -0.5;
    parameters.yOfsB = 0.25;
    parameters.zOfsA = 1000.0;
    parameters.xSameY = 1;
    parameters.zSetL = 1;
    parameters.zLength = 4.0;
    QCOMPARE(m_folder->read("meshvane.log"), logOfARun(parameters));
}

// The window was never shown, so all its fields are invisible.
void tst_MainWindowRun::complaintsOfAllFieldsAreShownInOneBox()
{
    m->enter("edtZScale", "abc");
    m->enter("edtYScale", "0");
    m->enter("edtXScale", "x");
    QCOMPARE(messagesOfARun("nofile.stl", "/nowhere at all/out.stl"),
             QStringList{"<b>Stl Input File</b> doesn't exist.<br>"
                         "<b>Stl Output File</b> directory doesn't exist.<br>"
                         "<b>X Scale</b> field can only contain a number value.<br>"
                         "<b>Y Scale</b> field contains invalid value \"0\"<br>"
                         "<b>Z Scale</b> field can only contain a number value.<br>"});
}

void tst_MainWindowRun::refusedRunTouchesNoFile()
{
    const QStringList names{"_tmp_stl_", "meshvane.log", "out.stl"};
    for (const QString &name : names)
        m_folder->write(name, "kept");
    QCOMPARE(messagesOfARun("nofile.stl", "out.stl").size(), 1);
    m->tick("chbXSetL");
    QCOMPARE(goodRun(), QStringList{"A value must be entered for X length."});
    QCOMPARE(m_folder->entries(), QStringList({"_tmp_stl_", "in.stl", "meshvane.log", "out.stl"}));
    for (const QString &name : names)
        QCOMPARE(m_folder->read(name), QByteArray("kept"));
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowRun::refusedRunLeavesTheLogOfThePreviousRun()
{
    QCOMPARE(goodRun(), QStringList());
    m->tick("chbXSetL");
    QCOMPARE(goodRun().size(), 1);
    QCOMPARE(textOf(openViewer()), QString(logOfARun(newForm())));
}

void tst_MainWindowRun::failedRunShowsItsMessage()
{
    QCOMPARE(messagesOfARun("in.stl", "nowhere/out.stl"), QStringList{"Unable to open output file."});
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowRun::logThatCannotBeEmptiedIsReportedOverTheWindow()
{
    m_folder->makeFolder("meshvane.log");
#ifdef Q_OS_WIN
    const QString reason = "Access denied."; // Wine's words
#else
    const QString reason = "Is a directory";
#endif
    QCOMPARE(goodRun(), QStringList{"[Disc Write fail] Failed to open log file.\nError Details: " + reason});
    QCOMPARE(m_boxes->boxes().constFirst().parent, static_cast<const QWidget *>(&m->window));
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts().value(1), QString("No log created yet."));
    QCOMPARE(m->viewers().size(), 0);
}

void tst_MainWindowRun::viewerNeedsARunOfThisProgram()
{
    m_folder->write("meshvane.log", "of yesterday");
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts(), QStringList{"No log created yet."});
    QCOMPARE(m->viewers().size(), 0);
}

void tst_MainWindowRun::viewerShowsTheLog()
{
    QCOMPARE(goodRun(), QStringList());
    const QDialog *viewer = openViewer();
    QVERIFY(viewer->isVisible());
    QCOMPARE(viewer->windowModality(), Qt::NonModal);
    QCOMPARE(viewer->parentWidget(), static_cast<QWidget *>(&m->window));
    QVERIFY(viewer->isWindow());
    QCOMPARE(textOf(viewer), QString(m_folder->read("meshvane.log")));
    QCOMPARE(m_boxes->texts(), QStringList());
}

void tst_MainWindowRun::everyCallMakesANewViewer()
{
    QCOMPARE(goodRun(), QStringList());
    m->button("btnViewLog")->click();
    m->action("fileViewLogAction")->trigger();
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotViewLog"));
    QCOMPARE(m->viewers().size(), 3);
    for (const QDialog *viewer : m->viewers())
        QVERIFY(viewer->isVisible());
}

void tst_MainWindowRun::viewerIsASnapshot()
{
    QCOMPARE(goodRun(), QStringList());
    const QDialog *first = openViewer();
    const QString before = textOf(first);
    m->enter("edtXScale", "3");
    QCOMPARE(goodRun(), QStringList());
    QCOMPARE(textOf(first), before);
    QVERIFY(textOf(openViewer()).contains("xScl = 3.000000"));
}

void tst_MainWindowRun::viewerDecodesUtf8()
{
    const QString text = QStringLiteral(u"gr\u00f6\u00dfer \u2192\n");
    QCOMPARE(goodRun(), QStringList());
    m_folder->write("meshvane.log", text.toUtf8());
    QCOMPARE(textOf(openViewer()), text);
}

void tst_MainWindowRun::unreadableLogLeavesAHiddenViewer()
{
    QCOMPARE(goodRun(), QStringList());
    m_folder->remove("meshvane.log");
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts(), QStringList{"Unable to read log file."});
    QCOMPARE(m->viewers().size(), 1);
    QVERIFY(!m->viewers().constFirst()->isVisible());
}

void tst_MainWindowRun::viewerAfterAFailedTransformation()
{
#ifdef Q_OS_WIN
    QSKIP("needs a symbolic link to a file that swallows what is written");
#endif
    m_folder->link("_tmp_stl_", "/dev/null"); // whatever the run writes there is lost
    QCOMPARE(goodRun(), QStringList{"\n"});
    QCOMPARE(textOf(openViewer()), QString::fromStdString(runLogHeader() + runLogParameters(newForm())));
}

void tst_MainWindowRun::viewersAreDeletedWithTheWindow()
{
    QCOMPARE(goodRun(), QStringList());
    const QPointer<QDialog> viewer = openViewer();
    m.reset();
    QVERIFY(viewer.isNull());
}

MESHVANE_QTEST_MAIN(tst_MainWindowRun)
#include "tst_MainWindowRun.moc"
