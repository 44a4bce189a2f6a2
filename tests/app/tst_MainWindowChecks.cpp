// What a run asks of the form before it touches a file: the messages, their order, and which path is meant.
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QtTest>

#include <memory>

namespace {

const QString inputRequired = "<b>Stl Input File</b> field is required to be filled.<br>";
const QString outputRequired = "<b>Stl Output File</b> field is required to be filled.<br>";

// The triangle moved along x, to tell files apart.
QByteArray triangleAt(const QByteArray &x)
{
    return triangleInput().replace("vertex 1 2 3", "vertex " + x + " 2 3");
}

const QByteArray storedCorner = "7.00000000E+00";
const QByteArray typedCorner = "8.00000000E+00";

QByteArray firstCorner(const QByteArray &output) { return output.split('\n').value(3).mid(13, 16).trimmed(); }

} // namespace

class tst_MainWindowChecks : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void fieldErrorsAreShownTogetherInOrder();
    void oneFieldWithTwoErrors();
    void disabledScaleFieldIsNotAsked();
    void fieldErrorsComeBeforeLengthsAndAngles();
    void fieldErrorBoxIsAnErrorNotification();
    void runShowsTheIconsOfTheFields();
    void windowThatWasNeverShownChecksToo();

    void lengthsAndAngles_data();
    void lengthsAndAngles();
    void refusedRunTouchesNoFile();
    void refusedRunLeavesTheLogOfTheRunBefore();

    void values_data();
    void values();
    void emptyScaleIsZero();
    void numberMessageStandsWhileTheFieldIsEmpty();
    void lengthZeroIsAccepted();
    void lengthThatIsNoNumberIsNotNegative();
    void angleOfAnyValueIsAccepted();
    void untickedBoxesIgnoreTheirFields();

    void typedNameReplacesTheStoredPath();
    void nameEqualToTheLastPartKeepsTheStoredPath();
    void outputNameEqualToTheLastPartKeepsTheStoredPath();
    void typedPathIsStoredLikeAChosenOne();
    void cancelledDialogStoresTheTextOfTheField();
    void cancelledOutputDialogStoresTheTextOfTheField();
    void latinOneNameKeepsTheStoredPath();
    void nameOutsideLatinOneReplacesTheStoredPath();
    void nameIsComparedByItsLatinOneForm();
    void pathIsSynchronisedEvenIfTheFieldIsRefused();
    void outputNameOutsideLatinOneReplacesTheStoredPath();
    void outputPathIsSynchronisedEvenIfTheInputIsRefused();

private:
    void enterGoodFiles() { m->enterFiles("in.stl", "out.stl"); }
    void chooseInput(const QString &path)
    {
        FileDialogDriver driver(path);
        m->button("btnBrowseIn")->click();
    }
    // Chooses a name in the folder "sub", types a name in its place and runs: which of the two files was
    // read?
    QByteArray cornerReadFor(const QString &chosenName, const QString &typedName)
    {
        m_folder->makeFolder("sub");
        m_folder->write("sub/" + chosenName, triangleAt("7"));
        m_folder->write(typedName, triangleAt("8"));
        chooseInput(m_folder->path("sub/" + chosenName));
        m->enterFiles(typedName, "out.stl");
        const QStringList messages = messagesOfARun();
        return messages.isEmpty() ? firstCorner(m_folder->read("out.stl")) : messages.join('\n').toUtf8();
    }
    void chooseOutput(const QString &path)
    {
        FileDialogDriver driver(path);
        m->button("btnBrowseOut")->click();
    }
    QStringList messagesOfARun()
    {
        m_boxes->clear();
        m->run();
        return m_boxes->texts();
    }

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_MainWindowChecks::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_MainWindowChecks::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}

void tst_MainWindowChecks::fieldErrorsAreShownTogetherInOrder()
{
    m->enter("edtZScale", "abc");
    m->enter("edtYScale", "0");
    m->enter("edtXScale", "x");
    m->enter("edtFileOut", "/nowhere at all/out.stl");
    m->enter("edtFileIn", "nofile.stl");
    QCOMPARE(messagesOfARun(), QStringList{"<b>Stl Input File</b> doesn't exist.<br>"
                                           "<b>Stl Output File</b> directory doesn't exist.<br>"
                                           "<b>X Scale</b> field can only contain a number value.<br>"
                                           "<b>Y Scale</b> field contains invalid value \"0\"<br>"
                                           "<b>Z Scale</b> field can only contain a number value.<br>"});
}

void tst_MainWindowChecks::oneFieldWithTwoErrors()
{
    enterGoodFiles();
    m->enter("edtYScale", "0");
    m->enter("edtYScale", "abc");
    m->enter("edtYScale", "");
    m->enter("edtYScale", "abc0");
    QCOMPARE(messagesOfARun(), QStringList{"<b>Y Scale</b> field can only contain a number value.<br>"});
    // A required field that is emptied keeps no other message: the empty name is the current directory.
    m->enter("edtFileIn", "nofile.stl");
    m->enter("edtFileIn", "");
    QCOMPARE(messagesOfARun(),
             QStringList{inputRequired + "<b>Y Scale</b> field can only contain a number value.<br>"});
}

void tst_MainWindowChecks::disabledScaleFieldIsNotAsked()
{
    enterGoodFiles();
    m->enter("edtXScale", "abc");
    m->tick("chbXsameY");
    QVERIFY(!m->isEnabled("edtXScale"));
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("out.stl"));
}

void tst_MainWindowChecks::fieldErrorsComeBeforeLengthsAndAngles()
{
    m->tick("chbXSetL");
    m->tick("chbRotateX");
    QCOMPARE(messagesOfARun(), QStringList{inputRequired + outputRequired});
}

void tst_MainWindowChecks::fieldErrorBoxIsAnErrorNotification()
{
    m->run();
    QCOMPARE(m_boxes->boxes().size(), 1);
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
}

void tst_MainWindowChecks::runShowsTheIconsOfTheFields()
{
    QCOMPARE(m->iconToolTip("edtFileIn"), QString());
    m->run();
    QCOMPARE(m->iconToolTip("edtFileIn"), QString("<b>Stl Input File</b> field is required to be filled."));
    QCOMPARE(m->iconToolTip("edtFileOut"), QString("<b>Stl Output File</b> field is required to be filled."));
    QCOMPARE(m->iconToolTip("edtXScale"), QString());
}

void tst_MainWindowChecks::windowThatWasNeverShownChecksToo()
{
    QVERIFY(!m->window.isVisible());
    QCOMPARE(messagesOfARun(), QStringList{inputRequired + outputRequired});
}

void tst_MainWindowChecks::lengthsAndAngles_data()
{
    // Ticked boxes with the texts of their fields, as "box=text".
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("message");
    for (const QString axis : {"X", "Y", "Z"}) {
        const QString length = "chb" + axis + "SetL=";
        const QString angle = "chbRotate" + axis + "=";
        const QString negative = axis + " Length value must be nonnegative.  Calculation interrupted.";
        const QString noLength = "A value must be entered for " + axis + " length.";
        const QString noAngle = "A value must be entered for rotation about the " + axis + " axis.";
        QTest::newRow(qPrintable(axis + ", negative length")) << QStringList{length + "-1"} << negative;
        QTest::newRow(qPrintable(axis + ", hardly negative length"))
            << QStringList{length + "-1e-300"} << negative;
        QTest::newRow(qPrintable(axis + ", negative infinite length"))
            << QStringList{length + "-inf"} << negative;
        QTest::newRow(qPrintable(axis + ", empty length")) << QStringList{length} << noLength;
        QTest::newRow(qPrintable(axis + ", blank length")) << QStringList{length + "  "} << noLength;
        QTest::newRow(qPrintable(axis + ", empty angle")) << QStringList{angle} << noAngle;
        QTest::newRow(qPrintable(axis + ", blank angle")) << QStringList{angle + " \t"} << noAngle;
        QTest::newRow(qPrintable(axis + ", length before angle")) << QStringList{angle, length} << noLength;
    }
    QTest::newRow("X before Y and Z")
        << QStringList{"chbXSetL=", "chbYSetL=-1", "chbZSetL=-1"} << "A value must be entered for X length.";
    QTest::newRow("Y before Z") << QStringList{"chbXSetL=1", "chbYSetL=-1", "chbZSetL="}
                                << "Y Length value must be nonnegative.  Calculation interrupted.";
    QTest::newRow("Z length before X angle")
        << QStringList{"chbRotateX=", "chbXSetL=1", "chbYSetL=0", "chbZSetL="}
        << "A value must be entered for Z length.";
    QTest::newRow("X angle before Y and Z") << QStringList{"chbRotateX=", "chbRotateY=", "chbRotateZ="}
                                            << "A value must be entered for rotation about the X axis.";
    QTest::newRow("Y angle before Z") << QStringList{"chbRotateX=1", "chbRotateY=", "chbRotateZ="}
                                      << "A value must be entered for rotation about the Y axis.";
}

void tst_MainWindowChecks::lengthsAndAngles()
{
    QFETCH(QStringList, entries);
    QFETCH(QString, message);
    enterGoodFiles();
    for (const QString &entry : entries) {
        const QString box = entry.section('=', 0, 0);
        m->tick(box);
        m->enter(QString(box).replace("chb", "edt"), entry.section('=', 1));
    }
    QCOMPARE(messagesOfARun(), QStringList{message});
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
    QCOMPARE(m_folder->entries(), QStringList{"in.stl"});
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowChecks::refusedRunTouchesNoFile()
{
    m_folder->write("out.stl", "kept");
    m_folder->write("meshvane.log", "kept");
    m_folder->write("_tmp_stl_", "kept");
    m->enterFiles("nofile.stl", "out.stl");
    m->run();
    QCOMPARE(m_boxes->boxes().size(), 1);
    QCOMPARE(m_folder->entries(), QStringList({"_tmp_stl_", "in.stl", "meshvane.log", "out.stl"}));
    for (const QString name : {"out.stl", "meshvane.log", "_tmp_stl_"})
        QCOMPARE(m_folder->read(name), QByteArray("kept"));
}

void tst_MainWindowChecks::refusedRunLeavesTheLogOfTheRunBefore()
{
    enterGoodFiles();
    QCOMPARE(messagesOfARun(), QStringList());
    const QByteArray log = m_folder->read("meshvane.log");
    m->tick("chbXSetL");
    QCOMPARE(messagesOfARun().size(), 1);
    QCOMPARE(m_folder->read("meshvane.log"), log);
}

// Every value is told by the log, which shows the parameters as they were read.
void tst_MainWindowChecks::values_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("logged");
    QTest::newRow("empty") << ""
                           << "0.000000";
    QTest::newRow("blank") << " "
                           << "0.000000";
    QTest::newRow("no number") << "abc"
                               << "0.000000";
    QTest::newRow("half a number") << "1.5abc"
                                   << "0.000000";
    QTest::newRow("comma") << "1,5"
                           << "0.000000";
    QTest::newRow("hexadecimal") << "0x10"
                                 << "0.000000";
    QTest::newRow("fraction") << "1.5"
                              << "1.500000";
    QTest::newRow("negative") << "-2.25"
                              << "-2.250000";
    QTest::newRow("blanks around") << " 2 "
                                   << "2.000000";
    QTest::newRow("exponent") << "1e3"
                              << "1000.000000";
    QTest::newRow("double precision") << "16777217.25"
                                      << "16777217.250000";
    QTest::newRow("beyond float") << "1e39"
                                  << "999999999999999939709166371603178586112.000000";
    QTest::newRow("infinite") << "inf"
                              << "inf";
    QTest::newRow("out of range is infinite") << "1e400"
                                              << "inf";
    QTest::newRow("not a number") << "nan"
                                  << "nan";
}

void tst_MainWindowChecks::values()
{
    QFETCH(QString, text);
    QFETCH(QString, logged);
    for (const QString field : {"OffsB", "OffsA"}) {
        for (const QString axis : {"X", "Y", "Z"}) {
            m->reset();
            enterGoodFiles();
            m->enter("edt" + axis + field, text);
            QCOMPARE(messagesOfARun(), QStringList());
            const QString item = axis.toLower() + (field == "OffsB" ? "OfsB" : "OfsA");
            const QString log = m_folder->read("meshvane.log");
            QVERIFY2(log.contains(item + " = " + logged + (field == "OffsB" ? "     " : "\n")),
                     qPrintable(log));
            QCOMPARE(log.count(" = 0.000000"), logged == "0.000000" ? 6 : 5);
            QCOMPARE(log.count(" = 1.000000"), 3);
        }
    }
}

void tst_MainWindowChecks::emptyScaleIsZero()
{
    for (const QString axis : {"X", "Y", "Z"}) {
        m->reset();
        enterGoodFiles();
        m->enter("edt" + axis + "Scale", "");
        QCOMPARE(messagesOfARun(), QStringList());
        QVERIFY(QString(m_folder->read("meshvane.log")).contains(axis.toLower() + "Scl = 0.000000 "));
    }
}

void tst_MainWindowChecks::numberMessageStandsWhileTheFieldIsEmpty()
{
    enterGoodFiles();
    m->enter("edtXScale", "abc");
    m->enter("edtXScale", "");
    QCOMPARE(messagesOfARun(), QStringList{"<b>X Scale</b> field can only contain a number value.<br>"});
    QVERIFY(!m_folder->has("out.stl"));
    m->enter("edtXScale", "5");
    m->enter("edtXScale", "");
    QCOMPARE(messagesOfARun(), QStringList());
}

void tst_MainWindowChecks::lengthZeroIsAccepted()
{
    enterGoodFiles();
    const QVector<QPair<QString, QByteArray>> lengths{
        {"0", "0.000000"}, {"-0", "-0.000000"}, {"abc", "0.000000"}};
    for (const auto &[text, logged] : lengths) {
        m->tick("chbYSetL");
        m->enter("edtYSetL", text);
        QCOMPARE(messagesOfARun(), QStringList());
        QVERIFY(m_folder->read("meshvane.log").contains("ysetL = " + logged + "     \n"));
        QVERIFY(m_folder->read("out.stl").contains("vertex  1.00000000E+00 "));
    }
}

void tst_MainWindowChecks::lengthThatIsNoNumberIsNotNegative()
{
    enterGoodFiles();
    m->tick("chbXSetL");
    m->enter("edtXSetL", "nan");
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->read("meshvane.log").contains("xsetL = nan     \n"));
}

void tst_MainWindowChecks::angleOfAnyValueIsAccepted()
{
    enterGoodFiles();
    const QVector<QPair<QString, QByteArray>> angles{{"-90", "-90.000000"},   {"0", "0.000000"},
                                                     {"720.5", "720.500000"}, {"abc", "0.000000"},
                                                     {"nan", "nan"},          {"inf", "inf"}};
    for (const auto &[text, logged] : angles) {
        m->tick("chbRotateY");
        m->enter("edtRotateY", text);
        QCOMPARE(messagesOfARun(), QStringList());
        QVERIFY(m_folder->read("meshvane.log").contains("rotateabouty = " + logged + "     \n"));
    }
}

void tst_MainWindowChecks::untickedBoxesIgnoreTheirFields()
{
    enterGoodFiles();
    m->enter("edtXSetL", "-5");
    m->enter("edtRotateX", "90");
    QCOMPARE(messagesOfARun(), QStringList());
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

void tst_MainWindowChecks::typedNameReplacesTheStoredPath()
{
    QCOMPARE(cornerReadFor("in.stl", "other.stl"), typedCorner);
}

void tst_MainWindowChecks::nameEqualToTheLastPartKeepsTheStoredPath()
{
    QCOMPARE(cornerReadFor("in.stl", "in.stl"), storedCorner);
}

void tst_MainWindowChecks::outputNameEqualToTheLastPartKeepsTheStoredPath()
{
    m_folder->makeFolder("sub");
    chooseOutput(m_folder->path("sub/out.stl"));
    QCOMPARE(m->text("edtFileOut"), m_folder->path("sub/out.stl"));
    enterGoodFiles();
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("sub/out.stl"));
    QVERIFY(!m_folder->has("out.stl"));
    QCOMPARE(m->statusText(), statusAfterRun("out.stl"));
}

void tst_MainWindowChecks::typedPathIsStoredLikeAChosenOne()
{
    m_folder->makeFolder("sub");
    m->enterFiles("in.stl", "sub/out.stl");
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("sub/out.stl"));
    // The bare name now means the path of the run before.
    m->enter("edtFileOut", "out.stl");
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(!m_folder->has("out.stl"));
    m->enter("edtFileOut", "./out.stl");
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("out.stl"));
}

void tst_MainWindowChecks::cancelledDialogStoresTheTextOfTheField()
{
    m_folder->makeFolder("sub");
    m_folder->write("sub/in.stl", triangleAt("7"));
    chooseInput(m_folder->path("sub/in.stl"));
    enterGoodFiles();
    chooseInput("");
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    m->run();
    QCOMPARE(firstCorner(m_folder->read("out.stl")), QByteArray("1.00000000E+00"));
}

void tst_MainWindowChecks::cancelledOutputDialogStoresTheTextOfTheField()
{
    m_folder->makeFolder("sub");
    chooseOutput(m_folder->path("sub/out.stl"));
    enterGoodFiles();
    chooseOutput("");
    QCOMPARE(m->text("edtFileOut"), QString("out.stl"));
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("out.stl"));
    QVERIFY(!m_folder->has("sub/out.stl"));
}

void tst_MainWindowChecks::latinOneNameKeepsTheStoredPath()
{
    const QString name = QString::fromUtf8("\xc3\xa9t\xc3\xa9.stl");
    QCOMPARE(cornerReadFor(name, name), storedCorner);
}

void tst_MainWindowChecks::nameOutsideLatinOneReplacesTheStoredPath()
{
    const QString name = QString::fromUtf8("\xce\xa9.stl");
    QCOMPARE(cornerReadFor(name, name), typedCorner);
}

// A stored "?.stl" equals the Latin-1 form of any name of one such letter.
void tst_MainWindowChecks::nameIsComparedByItsLatinOneForm()
{
    QCOMPARE(cornerReadFor("?.stl", QString::fromUtf8("\xce\xa9.stl")), storedCorner);
}

void tst_MainWindowChecks::outputNameOutsideLatinOneReplacesTheStoredPath()
{
    const QString name = QString::fromUtf8("\xce\xa9.stl");
    m_folder->makeFolder("sub");
    chooseOutput(m_folder->path("sub/" + name));
    m->enterFiles("in.stl", name);
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has(name));
    QVERIFY(!m_folder->has("sub/" + name));
}

void tst_MainWindowChecks::outputPathIsSynchronisedEvenIfTheInputIsRefused()
{
    m_folder->makeFolder("sub");
    chooseOutput(m_folder->path("sub/out.stl"));
    m->enterFiles("nofile.stl", "other.stl");
    QCOMPARE(messagesOfARun().size(), 1);
    m->enterFiles("in.stl", "out.stl");
    QCOMPARE(messagesOfARun(), QStringList());
    QVERIFY(m_folder->has("out.stl"));
    QVERIFY(!m_folder->has("sub/out.stl"));
}

void tst_MainWindowChecks::pathIsSynchronisedEvenIfTheFieldIsRefused()
{
    m_folder->makeFolder("sub");
    m_folder->write("sub/in.stl", triangleAt("7"));
    chooseInput(m_folder->path("sub/in.stl"));
    m->enterFiles("nofile.stl", "out.stl");
    QCOMPARE(messagesOfARun().size(), 1);
    enterGoodFiles();
    QCOMPARE(messagesOfARun(), QStringList());
    // The refused name had already replaced the chosen path.
    QCOMPARE(firstCorner(m_folder->read("out.stl")), QByteArray("1.00000000E+00"));
}

MESHVANE_QTEST_MAIN(tst_MainWindowChecks)
#include "tst_MainWindowChecks.moc"
