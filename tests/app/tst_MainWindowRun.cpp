// Whole runs from the window: the files they write, what they tell the user, and the log viewers.
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QFile>
#include <QGridLayout>
#include <QSignalSpy>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

#include <array>
#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// Lets the process open so many more files at a time, and no more.
class OpenFileLimit {
public:
    explicit OpenFileLimit(int more)
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = firstDescriptorBeyond(more);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~OpenFileLimit() { setrlimit(RLIMIT_NOFILE, &m_before); }
    OpenFileLimit(const OpenFileLimit &) = delete;
    OpenFileLimit &operator=(const OpenFileLimit &) = delete;

private:
    static rlim_t firstDescriptorBeyond(int count)
    {
        std::vector<int> opened;
        for (int index = 0; index <= count; ++index)
            opened.push_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
        for (const int descriptor : opened)
            close(descriptor);
        return rlim_t(opened.back());
    }

    rlimit m_before{};
};

int openDescriptors()
{
    int count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        count += fcntl(descriptor, F_GETFD) != -1;
    return count;
}

} // namespace

class tst_MainWindowRun : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void defaultRun();
    void runFromTheMenu();
    void statusMessageStandsForFiveSeconds();
    void statusShowsTheLastPartOfTheOutputPath_data();
    void statusShowsTheLastPartOfTheOutputPath();
    void outputReplacesAFileThatIsThere();
    void outputMayBeTheInput();

    void options_data();
    void options();
    void secondRunLeavesItsOwnLogOnly();
    void parametersAreFreshInEveryRun();
    void runLeavesNoFileOpen();
    void meshWithoutFacets();
    void fileNameInUtf8();

    void logThatCannotBeEmptied();
    void temporaryFileThatCannotBeReopened();
    void logThatCannotBeAppendedTo();
    void outputThatCannotBeOpened();
    void temporaryFileWithoutLines_data();
    void temporaryFileWithoutLines();
    void logThatCannotBeClosed();
    void runAfterAFailedRun();

    void viewerBeforeAnyRun();
    void viewerIgnoresAnOldLog();
    void viewerShowsTheLog();
    void viewerForm();
    void everyCallMakesANewViewer();
    void viewerIsASnapshot();
    void viewerDecodesUtf8();
    void exitButtonAcceptsTheViewer();
    void unreadableLog();
    void viewerAfterAFailedTransformation();
    void viewerAfterAnOutputThatCannotBeOpened();
    void viewerAfterALogThatCannotBeEmptied();
    void viewersGoWithTheWindow();

private:
    void runOn(const QString &input, const QString &output)
    {
        m_boxes->clear();
        m->enterFiles(input, output);
        m->run();
    }
    void goodRun()
    {
        runOn("in.stl", "out.stl");
        QCOMPARE(m_boxes->texts(), QStringList());
    }
    QTextEdit *textOf(QDialog *viewer) const { return viewer->findChild<QTextEdit *>("txtLog"); }

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_MainWindowRun::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_MainWindowRun::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}

void tst_MainWindowRun::defaultRun()
{
    goodRun();
    QCOMPARE(m_folder->entries(), QStringList({"in.stl", "meshvane.log", "out.stl"}));
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
    QCOMPARE(m_folder->read("meshvane.log"), logHeader() + defaultLogValues() + "\n\n" + logOutcome());
    QCOMPARE(m_folder->read("in.stl"), triangleInput());
    QCOMPARE(m->statusText(), QString("Calculation finished successfully.  Output written to: out.stl"));
}

void tst_MainWindowRun::runFromTheMenu()
{
    m->enterFiles("in.stl", "out.stl");
    m->action("fileRunAction")->trigger();
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

void tst_MainWindowRun::statusMessageStandsForFiveSeconds()
{
    goodRun();
    int running = 0;
    for (QTimer *timer : m->window.statusBar()->findChildren<QTimer *>()) {
        if (!timer->isActive())
            continue;
        ++running;
        QCOMPARE(timer->interval(), 5000);
        timer->start(0);
    }
    QCOMPARE(running, 1);
    QTRY_COMPARE(m->statusText(), QString());
}

void tst_MainWindowRun::statusShowsTheLastPartOfTheOutputPath_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("shown");
    QTest::newRow("bare name") << "out.stl"
                               << "out.stl";
    QTest::newRow("absolute path") << "@/sub/out.stl"
                                   << "out.stl";
    QTest::newRow("relative path") << "sub/out.stl"
                                   << "out.stl";
    QTest::newRow("dot") << "./other"
                         << "other";
}

void tst_MainWindowRun::statusShowsTheLastPartOfTheOutputPath()
{
    QFETCH(QString, output);
    QFETCH(QString, shown);
    m_folder->makeFolder("sub");
    output.replace('@', m_folder->path());
    runOn("in.stl", output);
    QCOMPARE(m->statusText(), statusAfterRun(shown));
    QFile file(output);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), triangleOutput(untouchedCorners()));
}

void tst_MainWindowRun::outputReplacesAFileThatIsThere()
{
    m_folder->write("out.stl", QByteArray(5000, 'x'));
    goodRun();
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

void tst_MainWindowRun::outputMayBeTheInput()
{
    runOn("in.stl", "in.stl");
    QCOMPARE(m_folder->read("in.stl"), triangleOutput(untouchedCorners()));
}

void tst_MainWindowRun::options_data()
{
    // Fields as "edt...=text", boxes by name, in the order in which they are set.
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QByteArray>("corners");
    QTest::addColumn<QByteArray>("logged"); // between the values and the outcome
    QTest::addColumn<QByteArray>("values"); // empty: the defaults
    const QByteArray none;
    QTest::newRow("scale and offsets")
        << QStringList{"edtXScale=2",    "edtXOffsB=1",    "edtXOffsA=-3",
                       "edtYScale=-0.5", "edtYOffsB=0.25", "edtZOffsA=1e3"}
        << QByteArray("      vertex  1.00000000E+00 -1.12500000E+00  1.00300000E+03\n"
                      "      vertex  9.00000000E+00 -1.12500000E+00  1.00300000E+03\n"
                      "      vertex  1.00000000E+00 -5.12500000E+00  1.01900000E+03\n")
        << none
        << logValues("xScl = 2.000000     xOfsB = 1.000000     xOfsA = -3.000000",
                     "yScl = -0.500000     yOfsB = 0.250000     yOfsA = 0.000000",
                     "zScl = 1.000000     zOfsB = 0.000000     zOfsA = 1000.000000");
    QTest::newRow("set lengths") << QStringList{"chbXSetL", "edtXSetL=8", "chbZSetL", "edtZSetL=4"}
                                 << QByteArray(
                                        "      vertex  2.00000000E+00  2.00000000E+00  7.50000000E-01\n"
                                        "      vertex  1.00000000E+01  2.00000000E+00  7.50000000E-01\n"
                                        "      vertex  2.00000000E+00  1.00000000E+01  4.75000000E+00\n")
                                 << QByteArray("xsetL = 8.000000     \nzsetL = 4.000000     \n\n\n") << none;
    QTest::newRow("set Y length") << QStringList{"chbYSetL", "edtYSetL=4"}
                                  << QByteArray(
                                         "      vertex  1.00000000E+00  1.00000000E+00  3.00000000E+00\n"
                                         "      vertex  5.00000000E+00  1.00000000E+00  3.00000000E+00\n"
                                         "      vertex  1.00000000E+00  5.00000000E+00  1.90000000E+01\n")
                                  << QByteArray("ysetL = 4.000000     \n\n\n") << none;
    QTest::newRow("origins") << QStringList{"chbXSet0", "chbYSet0", "chbZSet0"}
                             << QByteArray("      vertex  0.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                                           "      vertex  4.00000000E+00  0.00000000E+00  0.00000000E+00\n"
                                           "      vertex  0.00000000E+00  8.00000000E+00  1.60000000E+01\n")
                             << QByteArray("Flags:  \n\n   xSet0\n\n   ySet0\n\n   zSet0\n\n") << none;
    const auto sameLength = [&](const char *box, const QByteArray &corners) {
        QTest::newRow(box) << QStringList{box} << corners << QByteArray("Flags:  \n\n   xSamey\n\n") << none;
    };
    const QByteArray doubledX("      vertex  2.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                              "      vertex  1.00000000E+01  2.00000000E+00  3.00000000E+00\n"
                              "      vertex  2.00000000E+00  1.00000000E+01  1.90000000E+01\n");
    const QByteArray fourfoldX("      vertex  4.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                               "      vertex  2.00000000E+01  2.00000000E+00  3.00000000E+00\n"
                               "      vertex  4.00000000E+00  1.00000000E+01  1.90000000E+01\n");
    const QByteArray doubledY("      vertex  1.00000000E+00  4.00000000E+00  3.00000000E+00\n"
                              "      vertex  5.00000000E+00  4.00000000E+00  3.00000000E+00\n"
                              "      vertex  1.00000000E+00  2.00000000E+01  1.90000000E+01\n");
    const QByteArray halvedY("      vertex  1.00000000E+00  1.00000000E+00  3.00000000E+00\n"
                             "      vertex  5.00000000E+00  1.00000000E+00  3.00000000E+00\n"
                             "      vertex  1.00000000E+00  5.00000000E+00  1.90000000E+01\n");
    const QByteArray quarteredZ("      vertex  1.00000000E+00  2.00000000E+00  7.50000000E-01\n"
                                "      vertex  5.00000000E+00  2.00000000E+00  7.50000000E-01\n"
                                "      vertex  1.00000000E+00  1.00000000E+01  4.75000000E+00\n");
    const QByteArray halvedZ("      vertex  1.00000000E+00  2.00000000E+00  1.50000000E+00\n"
                             "      vertex  5.00000000E+00  2.00000000E+00  1.50000000E+00\n"
                             "      vertex  1.00000000E+00  1.00000000E+01  9.50000000E+00\n");
    sameLength("chbXsameY", doubledX);
    sameLength("chbXsameZ", fourfoldX);
    sameLength("chbYsameX", doubledY); // takes the length of Z
    sameLength("chbYsameZ", halvedY);  // takes the length of X
    sameLength("chbZsameX", quarteredZ);
    sameLength("chbZsameY", halvedZ);
    QTest::newRow("set length beside a same length")
        << QStringList{"chbXsameY", "chbZSetL", "edtZSetL=4"}
        << QByteArray("      vertex  2.00000000E+00  2.00000000E+00  7.50000000E-01\n"
                      "      vertex  1.00000000E+01  2.00000000E+00  7.50000000E-01\n"
                      "      vertex  2.00000000E+00  1.00000000E+01  4.75000000E+00\n")
        << QByteArray("zsetL = 4.000000     \n\n\nFlags:  \n\n   xSamey\n\n") << none;
}

void tst_MainWindowRun::options()
{
    QFETCH(QStringList, entries);
    QFETCH(QByteArray, corners);
    QFETCH(QByteArray, logged);
    QFETCH(QByteArray, values);
    for (const QString &entry : entries) {
        if (entry.startsWith("chb"))
            m->box(entry)->click();
        else
            m->enter(entry.section('=', 0, 0), entry.section('=', 1));
    }
    goodRun();
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(corners));
    QCOMPARE(m_folder->read("meshvane.log"),
             logHeader() + (values.isEmpty() ? defaultLogValues() : values) + logged + "\n\n" + logOutcome());
    QVERIFY(!m_folder->has("_tmp_stl_"));
}

void tst_MainWindowRun::secondRunLeavesItsOwnLogOnly()
{
    m->enter("edtXScale", "3");
    goodRun();
    m->enter("edtXScale", "1");
    goodRun();
    QCOMPARE(m_folder->read("meshvane.log"), logHeader() + defaultLogValues() + "\n\n" + logOutcome());
}

void tst_MainWindowRun::parametersAreFreshInEveryRun()
{
    m->box("chbRotateX")->click();
    m->enter("edtRotateX", "90");
    m->box("chbXsameY")->click();
    goodRun();
    const QByteArray log = m_folder->read("meshvane.log");
    QCOMPARE(log, logHeader() + defaultLogValues() +
                      "rotateaboutx = 90.000000     \n\n\nFlags:  \n\n   xSamey\n\n\n\n" + logOutcome());
    // The facet line is rewritten under a rotation.
    QVERIFY(!m_folder->read("out.stl").contains("normal  0.00000000E+00  0.00000000E+00  1.00000000E+00"));
    m->reset();
    goodRun();
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
    QCOMPARE(m_folder->read("meshvane.log"), logHeader() + defaultLogValues() + "\n\n" + logOutcome());
}

void tst_MainWindowRun::runLeavesNoFileOpen()
{
    goodRun();
    const int before = openDescriptors();
    m->enter("edtXScale", "2");
    m->box("chbXSet0")->click();
    m->box("chbYSetL")->click();
    m->enter("edtYSetL", "1");
    goodRun();
    QCOMPARE(openDescriptors(), before);
}

void tst_MainWindowRun::meshWithoutFacets()
{
    m_folder->write("empty.stl", "");
    runOn("empty.stl", "out.stl");
    QCOMPARE(m_boxes->texts(), QStringList());
    QCOMPARE(m_folder->read("out.stl"), QByteArray("solid  (null)\nendsolid  \n"));
    QVERIFY(m_folder->read("meshvane.log")
                .contains("Number lines read from stl file = 2\n"
                          "Number triangles read from stl file = 0\n"));
}

void tst_MainWindowRun::fileNameInUtf8()
{
    const QString input = QString::fromUtf8("gr\xc3\xb6\xc3\x9f"
                                            "e \xce\xa9.stl");
    const QString output = QString::fromUtf8("\xe2\x86\x92.stl");
    m_folder->write(input, triangleInput());
    runOn(input, output);
    QCOMPARE(m_boxes->texts(), QStringList());
    QCOMPARE(m_folder->read(output), triangleOutput(untouchedCorners()));
    QCOMPARE(m->statusText(), statusAfterRun(output));
}

void tst_MainWindowRun::logThatCannotBeEmptied()
{
    m_folder->makeFolder("meshvane.log");
    QFile probe("meshvane.log");
    QVERIFY(!probe.open(QIODevice::WriteOnly));
    m_folder->write("out.stl", "old");
    runOn("in.stl", "out.stl");
    QCOMPARE(m_boxes->boxes().size(), 1);
    const ShownBox &box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString("Disc Write fail"));
    QCOMPARE(box.text, "Failed to open log file.\nError Details: " + probe.errorString());
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.parent, static_cast<const QWidget *>(&m->window));
    QVERIFY(box.modal);
    QCOMPARE(m_folder->read("out.stl"), QByteArray());
    QCOMPARE(m_folder->read("_tmp_stl_"), triangleOutput(untouchedCorners()));
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowRun::temporaryFileThatCannotBeReopened()
{
    m->run(); // a first box, so that Qt has what it needs
    m_boxes->clear();
    {
        const OpenFileLimit limit(1);
        runOn("in.stl", "out.stl");
    }
    QCOMPARE(m_boxes->texts(), QStringList{"Invalid input file."});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QCOMPARE(m_folder->read("out.stl"), QByteArray());
    QCOMPARE(m_folder->read("meshvane.log"), QByteArray());
    QCOMPARE(m_folder->read("_tmp_stl_"), triangleOutput(untouchedCorners()));
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts().value(1), QString("No log created yet."));
}

void tst_MainWindowRun::logThatCannotBeAppendedTo()
{
    m->run();
    m_boxes->clear();
    {
        const OpenFileLimit limit(2);
        runOn("in.stl", "out.stl");
    }
    QCOMPARE(m_boxes->texts(), QStringList{"Cannot open logfile: %s"});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    // The run goes on without a log.
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
    QCOMPARE(m_folder->read("meshvane.log"), QByteArray());
    QVERIFY(!m_folder->has("_tmp_stl_"));
    QCOMPARE(m->statusText(), statusAfterRun("out.stl"));
}

void tst_MainWindowRun::outputThatCannotBeOpened()
{
    runOn("in.stl", "nowhere/out.stl");
    QCOMPARE(m_boxes->texts(), QStringList{"Unable to open output file."});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QCOMPARE(m_folder->entries(), QStringList({"_tmp_stl_", "in.stl", "meshvane.log"}));
    QCOMPARE(m_folder->read("meshvane.log"), logHeader());
    QCOMPARE(m_folder->read("_tmp_stl_"), triangleOutput(untouchedCorners()));
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowRun::temporaryFileWithoutLines_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QByteArray>("logged");
    QTest::newRow("rewriting") << ""
                               << "\n"
                               << QByteArray();
    QTest::newRow("scanning for an origin") << "chbXSet0"
                                            << "\nError reading stl file\n"
                                            << QByteArray("Flags:  \n\n   xSet0\n\n");
    QTest::newRow("scanning for a length") << "chbXSetL"
                                           << "\nError reading stl file\n"
                                           << QByteArray("xsetL = 1.000000     \n\n\n");
}

// What is written to "_tmp_stl_" vanishes, as on a broken disc.
void tst_MainWindowRun::temporaryFileWithoutLines()
{
    QFETCH(QString, box);
    QFETCH(QString, message);
    QFETCH(QByteArray, logged);
    m_folder->link("_tmp_stl_", "/dev/null");
    m_folder->write("out.stl", "old");
    m->enter("edtXSetL", "1");
    if (!box.isEmpty())
        m->box(box)->click();
    runOn("in.stl", "out.stl");
    QCOMPARE(m_boxes->texts(), QStringList{message});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QVERIFY(m_folder->has("_tmp_stl_"));
    QCOMPARE(m_folder->read("out.stl"), QByteArray());
    QCOMPARE(m_folder->read("meshvane.log"), logHeader() + defaultLogValues() + logged + "\n\n");
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowRun::logThatCannotBeClosed()
{
    m_folder->link("meshvane.log", "/dev/full");
    runOn("in.stl", "out.stl");
    QCOMPARE(m_boxes->texts(), QStringList{"Cannot close logfile \"meshvane.log\".\n"});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    // The run counts as done.
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
    QVERIFY(!m_folder->has("_tmp_stl_"));
    QCOMPARE(m->statusText(), statusAfterRun("out.stl"));
}

void tst_MainWindowRun::runAfterAFailedRun()
{
    runOn("in.stl", "nowhere/failed.stl");
    QVERIFY(m_folder->has("_tmp_stl_"));
    goodRun();
    QVERIFY(!m_folder->has("_tmp_stl_"));
    QCOMPARE(m_folder->read("meshvane.log"), logHeader() + defaultLogValues() + "\n\n" + logOutcome());
}

void tst_MainWindowRun::viewerBeforeAnyRun()
{
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts(), QStringList{"No log created yet."});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QCOMPARE(m->viewers().size(), 0);
}

void tst_MainWindowRun::viewerIgnoresAnOldLog()
{
    m_folder->write("meshvane.log", "of yesterday");
    m->action("fileViewLogAction")->trigger();
    QCOMPARE(m_boxes->texts(), QStringList{"No log created yet."});
    QCOMPARE(m->viewers().size(), 0);
}

void tst_MainWindowRun::viewerShowsTheLog()
{
    goodRun();
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QDialog *viewer = m->viewers().first();
    QVERIFY(viewer->isVisible());
    QVERIFY(!viewer->isModal());
    QCOMPARE(viewer->windowModality(), Qt::NonModal);
    QCOMPARE(viewer->parentWidget(), static_cast<QWidget *>(&m->window));
    QVERIFY(viewer->isWindow());
    QCOMPARE(textOf(viewer)->toPlainText(), QString(m_folder->read("meshvane.log")));
    QCOMPARE(m_boxes->texts(), QStringList());
}

void tst_MainWindowRun::viewerForm()
{
    goodRun();
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QDialog *viewer = m->viewers().first();
    QCOMPARE(viewer->metaObject()->className(), "MeshvaneLog");
    QCOMPARE(viewer->objectName(), QString("MeshvaneLog"));
    QCOMPARE(viewer->size(), QSize(596, 349));
    QCOMPARE(viewer->windowTitle(), QString("Dialog"));
    QCOMPARE(viewer->windowFlags() & Qt::WindowType_Mask, Qt::WindowFlags(Qt::Dialog));

    QGridLayout *grid = viewer->findChild<QGridLayout *>("gridLayout");
    QCOMPARE(viewer->layout(), static_cast<QLayout *>(grid));
    QCOMPARE(grid->count(), 4);
    QTextEdit *text = textOf(viewer);
    int row = -1, column = -1, rowSpan = -1, columnSpan = -1;
    grid->getItemPosition(grid->indexOf(text), &row, &column, &rowSpan, &columnSpan);
    const std::array<int, 4> wide{0, 0, 1, 3};
    QCOMPARE((std::array<int, 4>{row, column, rowSpan, columnSpan}), wide);
    QCOMPARE(text->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(text->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(text->sizePolicy().horizontalStretch(), 0);
    QCOMPARE(text->sizePolicy().verticalStretch(), 0);
    QCOMPARE(text->font().pointSize(), 11);
    QVERIFY(!text->isReadOnly());

    QPushButton *exit = viewer->findChild<QPushButton *>("btnExit");
    QCOMPARE(exit->text(), QString("Exit"));
    QCOMPARE(grid->itemAtPosition(1, 1)->widget(), static_cast<QWidget *>(exit));
    for (const int spacerColumn : {0, 2}) {
        const QSpacerItem *spacer = grid->itemAtPosition(1, spacerColumn)->spacerItem();
        QVERIFY(spacer);
        QCOMPARE(spacer->sizeHint(), QSize(240, 20));
        QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    }
    QStringList children;
    for (const QObject *child : viewer->children()) {
        if (!child->objectName().startsWith("qt_") && !child->objectName().isEmpty())
            children << child->objectName();
    }
    QCOMPARE(children, QStringList({"gridLayout", "txtLog", "btnExit"}));

    const QMetaObject *meta = viewer->metaObject();
    QCOMPARE(meta->methodCount() - meta->methodOffset(), 1);
    QCOMPARE(meta->method(meta->methodOffset()).methodSignature(), QByteArray("closeClicked()"));
    QCOMPARE(meta->method(meta->methodOffset()).methodType(), QMetaMethod::Slot);
}

void tst_MainWindowRun::everyCallMakesANewViewer()
{
    goodRun();
    m->button("btnViewLog")->click();
    m->action("fileViewLogAction")->trigger();
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotViewLog"));
    QCOMPARE(m->viewers().size(), 3);
    for (const QDialog *viewer : m->viewers())
        QVERIFY(viewer->isVisible());
}

void tst_MainWindowRun::viewerIsASnapshot()
{
    goodRun();
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QDialog *first = m->viewers().first();
    const QString before = textOf(first)->toPlainText();
    m->enter("edtXScale", "3");
    goodRun();
    QCOMPARE(textOf(first)->toPlainText(), before);
    m->button("btnViewLog")->click();
    QVERIFY(textOf(m->viewers().last())->toPlainText().contains("xScl = 3.000000"));
}

void tst_MainWindowRun::viewerDecodesUtf8()
{
    goodRun();
    m_folder->write("meshvane.log", "gr\xc3\xb6\xc3\x9f"
                                    "er \xe2\x86\x92\n");
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QCOMPARE(textOf(m->viewers().first())->toPlainText(), QString::fromUtf8("gr\xc3\xb6\xc3\x9f"
                                                                            "er \xe2\x86\x92\n"));
}

void tst_MainWindowRun::exitButtonAcceptsTheViewer()
{
    goodRun();
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QDialog *viewer = m->viewers().first();
    const QSignalSpy finished(viewer, &QDialog::finished);
    const QSignalSpy accepted(viewer, &QDialog::accepted);
    QTest::mouseClick(viewer->findChild<QPushButton *>("btnExit"), Qt::LeftButton);
    QVERIFY(!viewer->isVisible());
    QCOMPARE(viewer->result(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 1);
    QCOMPARE(accepted.count(), 1);
}

void tst_MainWindowRun::unreadableLog()
{
    goodRun();
    m_folder->remove("meshvane.log");
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts(), QStringList{"Unable to read log file."});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QCOMPARE(m->viewers().size(), 1);
    QVERIFY(!m->viewers().first()->isVisible());
}

void tst_MainWindowRun::viewerAfterAFailedTransformation()
{
    m_folder->link("_tmp_stl_", "/dev/null");
    runOn("in.stl", "out.stl");
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QCOMPARE(textOf(m->viewers().first())->toPlainText(), QString(logHeader() + defaultLogValues() + "\n\n"));
}

void tst_MainWindowRun::viewerAfterAnOutputThatCannotBeOpened()
{
    runOn("in.stl", "nowhere/out.stl");
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    QCOMPARE(textOf(m->viewers().first())->toPlainText(), QString(logHeader()));
}

void tst_MainWindowRun::viewerAfterALogThatCannotBeEmptied()
{
    m_folder->makeFolder("meshvane.log");
    runOn("in.stl", "out.stl");
    m->button("btnViewLog")->click();
    QCOMPARE(m_boxes->texts().value(1), QString("No log created yet."));
    QCOMPARE(m->viewers().size(), 0);
}

void tst_MainWindowRun::viewersGoWithTheWindow()
{
    goodRun();
    m->button("btnViewLog")->click();
    QCOMPARE(m->viewers().size(), 1);
    const QPointer<QDialog> viewer = m->viewers().first();
    m.reset();
    QVERIFY(viewer.isNull());
}

MESHVANE_QTEST_MAIN(tst_MainWindowRun)
#include "tst_MainWindowRun.moc"
