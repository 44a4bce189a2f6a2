// What the commands and boxes of the window do, step by step.
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace {

const QStringList sameLengthBoxes{"chbXsameY", "chbXsameZ", "chbYsameX",
                                  "chbYsameZ", "chbZsameX", "chbZsameY"};

QString axisName(const QString &form, const QString &axis) { return QString(form).replace('?', axis); }

} // namespace

class tst_MainWindowCommands : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void rotationFieldFollowsItsBox_data() { addAxes(); }
    void rotationFieldFollowsItsBox();
    void tickedSetLengthBox_data() { addAxes(); }
    void tickedSetLengthBox();
    void setLengthUnticksItsSameLengthBoxes_data() { addAxes(); }
    void setLengthUnticksItsSameLengthBoxes();
    void tickedSameLengthBox_data() { addSameLengthBoxes(); }
    void tickedSameLengthBox();
    void sameLengthUnticksTheSetLengthBox_data() { addSameLengthBoxes(); }
    void sameLengthUnticksTheSetLengthBox();
    void boxesEnableAndDisableInTheOrderOfTheirSteps();
    void interlocksAreNoFullExclusion();
    void scaleFieldCanStayDisabled();

    void originBox_data();
    void originBox();
    void untickedOriginBoxEnablesTheOffsets_data() { addAxes(); }
    void untickedOriginBoxEnablesTheOffsets();
    void refusalBoxIsAnErrorNotification();
    void offsetsAreStillAsTheyWereWhileTheRefusalStands();

    void everyScaleTextUnticksTheSetLengthBox_data();
    void everyScaleTextUnticksTheSetLengthBox();
    void setLengthBoxIsUntickedByTypingOne();

    void resetRestoresEveryField();
    void resetLeavesFilesStatusAndPathsAlone();
    void resetEnablesWhatTheBoxesHadDisabled();
    void resetWithAnOriginBoxTicked();
    void resetOnAFreshFormEmitsNothing();
    void resetWorksInTheOrderOfItsSteps_data();
    void resetWorksInTheOrderOfItsSteps();

    void inputDialog();
    void outputDialog();
    void chosenOutputGetsItsSuffix_data();
    void chosenOutputGetsItsSuffix();
    void cancelledDialogsKeepTheTexts();
    void choosingLeavesTheStatusBarAlone();

    void buttonBoxButtons();
    void closeButtonClosesTheWindow();
    void unknownButtonClosesTheWindow();
    void slotsCanBeCalledByName();
    void aboutBox();

private:
    static void addAxes();
    static void addSameLengthBoxes();
    QString axis() const { return QTest::currentDataTag(); }
    QString on(const QString &form) const { return axisName(form, axis()); }
    QStringList sameLengthBoxesOf(const QString &axis) const
    {
        return sameLengthBoxes.filter("chb" + axis + "same");
    }

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_MainWindowCommands::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_MainWindowCommands::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}

void tst_MainWindowCommands::addAxes()
{
    QTest::addColumn<int>("dummy");
    for (const char *axis : {"X", "Y", "Z"})
        QTest::newRow(axis) << 0;
}

void tst_MainWindowCommands::addSameLengthBoxes()
{
    QTest::addColumn<QString>("target");
    for (const QString &name : sameLengthBoxes)
        QTest::newRow(qPrintable(name)) << name.mid(3, 1);
}

void tst_MainWindowCommands::rotationFieldFollowsItsBox()
{
    m->enter(on("edtRotate?"), "12");
    m->tick(on("chbRotate?"));
    for (const QString each : {"X", "Y", "Z"})
        QCOMPARE(m->isEnabled("edtRotate" + each), each == axis());
    m->tick(on("chbRotate?"), false);
    QVERIFY(!m->isEnabled(on("edtRotate?")));
    QCOMPARE(m->text(on("edtRotate?")), QString("12"));
}

void tst_MainWindowCommands::tickedSetLengthBox()
{
    m->tick(on("chb?SetL"));
    for (const bool ticked : {true, false}) {
        m->tick(on("chb?SetL"), ticked);
        QCOMPARE(m->isEnabled(on("edt?SetL")), ticked);
        QCOMPARE(m->isEnabled(on("edt?Scale")), !ticked);
        for (const QString &box : sameLengthBoxes)
            QCOMPARE(m->isEnabled(box), !(ticked && sameLengthBoxesOf(axis()).contains(box)));
        for (const QString each : {"X", "Y", "Z"}) {
            if (each != axis()) {
                QVERIFY(m->isEnabled("edt" + each + "Scale"));
                QVERIFY(!m->isEnabled("edt" + each + "SetL"));
            }
            QVERIFY(m->isEnabled("chb" + each + "SetL"));
            QVERIFY(m->isEnabled("chb" + each + "Set0"));
        }
    }
}

// A user cannot tick both; a program can. Unticking the same-length box runs its slot in the middle, which
// unticks the length box again, and the scale field is left disabled.
void tst_MainWindowCommands::setLengthUnticksItsSameLengthBoxes()
{
    for (const QString &box : sameLengthBoxesOf(axis())) {
        m->tick(box);
        m->tick(on("chb?SetL"));
        QVERIFY(!m->isTicked(box));
        QVERIFY(!m->isTicked(on("chb?SetL")));
        QVERIFY(!m->isEnabled(on("edt?SetL")));
        QVERIFY(!m->isEnabled(on("edt?Scale")));
        for (const QString &each : sameLengthBoxes)
            QVERIFY(m->isEnabled(each));
        m->box(on("chb?SetL"))->click();
        m->box(on("chb?SetL"))->click();
        QVERIFY(m->isEnabled(on("edt?Scale")));
    }
}

void tst_MainWindowCommands::tickedSameLengthBox()
{
    QFETCH(QString, target);
    const QString box = QTest::currentDataTag();
    for (const bool ticked : {true, false}) {
        m->tick(box, ticked);
        for (const QString &other : sameLengthBoxes)
            QCOMPARE(m->isEnabled(other), other == box || !ticked);
        for (const QString each : {"X", "Y", "Z"}) {
            QCOMPARE(m->isEnabled("edt" + each + "Scale"), each != target || !ticked);
            QCOMPARE(m->isEnabled("chb" + each + "SetL"), each != target || !ticked);
            QVERIFY(m->isEnabled("chb" + each + "Set0"));
            QVERIFY(!m->isTicked("chb" + each + "SetL"));
        }
    }
}

void tst_MainWindowCommands::sameLengthUnticksTheSetLengthBox()
{
    QFETCH(QString, target);
    const QString box = QTest::currentDataTag();
    for (const QString each : {"X", "Y", "Z"})
        m->tick("chb" + each + "SetL");
    m->tick(box);
    for (const QString each : {"X", "Y", "Z"})
        QCOMPARE(m->isTicked("chb" + each + "SetL"), each != target);
    // Unticking the length box inside the slot has enabled what the slot had just disabled.
    QVERIFY(m->isEnabled(axisName("edt?Scale", target)));
    for (const QString &other : sameLengthBoxesOf(target))
        QVERIFY(m->isEnabled(other));
    QVERIFY(!m->isEnabled(axisName("chb?SetL", target)));
    QVERIFY(!m->isTicked(box)); // the length box's own slot unticks it again
}

void tst_MainWindowCommands::boxesEnableAndDisableInTheOrderOfTheirSteps()
{
    QStringList order;
    for (const QString &name : fieldNames() + boxNames()) {
        struct Watcher : QObject {
            Watcher(QObject *parent, QStringList &log)
                : QObject(parent),
                  order(log)
            {}
            QStringList &order;
            bool eventFilter(QObject *watched, QEvent *event) override
            {
                if (event->type() == QEvent::EnabledChange)
                    order << watched->objectName();
                return QObject::eventFilter(watched, event);
            }
        };
        QWidget *widget = m->find<QWidget>(name);
        widget->installEventFilter(new Watcher(widget, order));
    }
    const QList<QPair<QString, QStringList>> expected{
        {"chbXsameY",
         {"chbXsameZ", "chbYsameX", "chbYsameZ", "chbZsameX", "chbZsameY", "edtXScale", "chbXSetL"}},
        {"chbXsameZ",
         {"chbXsameY", "chbYsameX", "chbYsameZ", "chbZsameX", "chbZsameY", "edtXScale", "chbXSetL"}},
        {"chbYsameX",
         {"chbXsameY", "chbXsameZ", "chbYsameZ", "chbZsameX", "chbZsameY", "edtYScale", "chbYSetL"}},
        {"chbYsameZ",
         {"chbXsameY", "chbXsameZ", "chbYsameX", "chbZsameX", "chbZsameY", "edtYScale", "chbYSetL"}},
        {"chbZsameX",
         {"chbXsameY", "chbXsameZ", "chbYsameX", "chbYsameZ", "chbZsameY", "edtZScale", "chbZSetL"}},
        {"chbZsameY",
         {"chbXsameY", "chbXsameZ", "chbYsameX", "chbYsameZ", "chbZsameX", "edtZScale", "chbZSetL"}},
        {"chbXSetL", {"edtXSetL", "chbXsameY", "chbXsameZ", "edtXScale"}},
        {"chbYSetL", {"edtYSetL", "chbYsameX", "chbYsameZ", "edtYScale"}},
        {"chbZSetL", {"edtZSetL", "chbZsameX", "chbZsameY", "edtZScale"}},
        {"chbXSet0", {"edtXOffsB", "edtXOffsA"}},
        {"chbYSet0", {"edtYOffsB", "edtYOffsA"}},
        {"chbZSet0", {"edtZOffsB", "edtZOffsA"}},
    };
    for (const auto &row : expected) {
        for (const bool ticked : {true, false}) {
            order.clear();
            m->tick(row.first, ticked);
            QCOMPARE(order, row.second);
        }
    }
}

void tst_MainWindowCommands::interlocksAreNoFullExclusion()
{
    m->box("chbXsameY")->click();
    QVERIFY(!m->isEnabled("chbYsameX"));
    m->box("chbYSetL")->click();
    m->box("chbYSetL")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("chbYsameX"));
    QVERIFY(m->isEnabled("chbYsameZ"));
    QVERIFY(!m->isEnabled("chbXsameZ"));
    QVERIFY(!m->isEnabled("chbZsameX"));
    QVERIFY(!m->isEnabled("chbZsameY"));
    m->box("chbYsameX")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isTicked("chbYsameX"));
    QVERIFY(!m->isEnabled("chbXsameY"));
}

// With clicks alone: two same-length boxes at once, then a length box.
void tst_MainWindowCommands::scaleFieldCanStayDisabled()
{
    for (const QString name : {"chbXsameY", "chbYSetL", "chbYSetL", "chbYsameX"})
        m->box(name)->click();
    QVERIFY(!m->isEnabled("edtXScale"));
    QVERIFY(!m->isEnabled("edtYScale"));
    m->box("chbYsameX")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("chbXsameZ"));
    QVERIFY(m->isEnabled("edtYScale"));
    QVERIFY(!m->isEnabled("edtXScale"));
    m->box("chbXsameZ")->click();
    m->box("chbXsameZ")->click();
    QVERIFY(m->isTicked("chbXsameY"));
    QVERIFY(m->isEnabled("edtXScale")); // although its same-length box is ticked
    QVERIFY(m->isEnabled("chbXSetL"));
    m->box("chbXSetL")->click();
    for (const QString name : {"chbXsameY", "chbXsameZ", "chbXSetL"})
        QVERIFY(!m->isTicked(name));
    QVERIFY(!m->isEnabled("edtXScale")); // although nothing is ticked
    QVERIFY(!m->isEnabled("edtXSetL"));
}

void tst_MainWindowCommands::originBox_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<bool>("accepted");
    const QList<QPair<QString, bool>> texts{{"", true},     {"0", true},     {"-0", true},    {"0.0", true},
                                            {"abc", true},  {" ", true},     {"0,5", true},   {"0x5", true},
                                            {"0.5", false}, {"-1", false},   {"1e-9", false}, {"nan", false},
                                            {"inf", false}, {"1e400", false}};
    for (const auto &before : texts) {
        for (const auto &after : texts) {
            QTest::newRow(qPrintable('"' + before.first + "\" and \"" + after.first + '"'))
                << before.first << after.first << (before.second && after.second);
        }
    }
}

void tst_MainWindowCommands::originBox()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    QFETCH(bool, accepted);
    for (const QString each : {"X", "Y", "Z"}) {
        m_boxes->clear();
        m->enter("edt" + each + "OffsB", before);
        m->enter("edt" + each + "OffsA", after);
        m->box("chb" + each + "Set0")->click();
        QCOMPARE(m->isTicked("chb" + each + "Set0"), accepted);
        QCOMPARE(m->isEnabled("edt" + each + "OffsB"), !accepted);
        QCOMPARE(m->isEnabled("edt" + each + "OffsA"), !accepted);
        QCOMPARE(m->text("edt" + each + "OffsB"), accepted ? "0" : before);
        QCOMPARE(m->text("edt" + each + "OffsA"), accepted ? "0" : after);
        QStringList messages;
        if (!accepted)
            messages << "Unable to set " + each + " Length to zero while " + each + " offsets are nonzero.";
        QCOMPARE(m_boxes->texts(), messages);
    }
}

void tst_MainWindowCommands::untickedOriginBoxEnablesTheOffsets()
{
    m->tick(on("chb?Set0"));
    QVERIFY(!m->isEnabled(on("edt?OffsB")));
    QVERIFY(!m->isEnabled(on("edt?OffsA")));
    for (const QString each : {"X", "Y", "Z"}) {
        if (each != axis()) {
            QVERIFY(m->isEnabled("edt" + each + "OffsB"));
            QVERIFY(m->isEnabled("edt" + each + "OffsA"));
        }
    }
    m->enter(on("edt?OffsB"), "3");
    m->tick(on("chb?Set0"), false);
    QVERIFY(m->isEnabled(on("edt?OffsB")));
    QVERIFY(m->isEnabled(on("edt?OffsA")));
    QCOMPARE(m->text(on("edt?OffsB")), QString("3"));
    QCOMPARE(m->text(on("edt?OffsA")), QString("0"));
}

void tst_MainWindowCommands::refusalBoxIsAnErrorNotification()
{
    m->enter("edtXOffsA", "0.5");
    m->box("chbXSet0")->click();
    QCOMPARE(m_boxes->boxes().size(), 1);
    QVERIFY(isErrorNotification(m_boxes->boxes().first()));
}

void tst_MainWindowCommands::offsetsAreStillAsTheyWereWhileTheRefusalStands()
{
    bool tickedMeanwhile = false;
    m_boxes->whenShown([&](const ShownBox &) { tickedMeanwhile = m->isTicked("chbXSet0"); });
    m->enter("edtXOffsB", "2");
    m->box("chbXSet0")->click();
    QVERIFY(tickedMeanwhile); // it is unticked after the box is closed
    QVERIFY(!m->isTicked("chbXSet0"));
    QCOMPARE(m->text("edtXOffsB"), QString("2"));
    QCOMPARE(m->text("edtXOffsA"), QString("0"));
}

void tst_MainWindowCommands::everyScaleTextUnticksTheSetLengthBox_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"2", "1.0", "", " ", "abc", "0", "nan"})
        QTest::newRow(qPrintable(QString("\"%1\"").arg(text))) << text;
}

void tst_MainWindowCommands::everyScaleTextUnticksTheSetLengthBox()
{
    QFETCH(QString, text);
    for (const QString each : {"X", "Y", "Z"}) {
        m->tick("chb" + each + "SetL");
        m->enter("edt" + each + "Scale", text);
        QVERIFY(!m->isTicked("chb" + each + "SetL"));
        QVERIFY(!m->isEnabled("edt" + each + "SetL"));
        QVERIFY(m->isEnabled("edt" + each + "Scale"));
    }
}

void tst_MainWindowCommands::setLengthBoxIsUntickedByTypingOne()
{
    m->enter("edtXScale", "");
    m->tick("chbXSetL");
    m->enter("edtXScale", "1");
    QVERIFY(!m->isTicked("chbXSetL"));
    m->tick("chbXSetL");
    m->enter("edtXScale", "1"); // no change, no signal
    QVERIFY(m->isTicked("chbXSetL"));
}

void tst_MainWindowCommands::resetRestoresEveryField()
{
    for (const QString &name : fieldNames())
        m->enter(name, "7");
    for (const QString &name : boxNames())
        m->tick(name);
    m->reset();
    for (const QString &name : fieldNames()) {
        QString expected;
        if (name.startsWith("edtFile"))
            expected = "7";
        else if (name.endsWith("Scale"))
            expected = "1";
        else if (name.contains("Offs"))
            expected = "0";
        QCOMPARE(m->text(name), expected);
    }
    for (const QString &name : boxNames())
        QVERIFY(!m->isTicked(name));
}

void tst_MainWindowCommands::resetLeavesFilesStatusAndPathsAlone()
{
    m->enterFiles("in.stl", "out.stl");
    m->window.statusBar()->showMessage("kept");
    m->reset();
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    QCOMPARE(m->text("edtFileOut"), QString("out.stl"));
    QCOMPARE(m->statusText(), QString("kept"));
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void tst_MainWindowCommands::resetEnablesWhatTheBoxesHadDisabled()
{
    for (const QString name : {"chbRotateX", "chbYSetL", "chbZSet0", "chbXsameZ"})
        m->box(name)->click();
    m->action("fileResetAction")->trigger();
    for (const QString &name : fieldNames())
        QCOMPARE(m->isEnabled(name), !name.startsWith("edtRotate") && !name.endsWith("SetL"));
    for (const QString &name : boxNames())
        QVERIFY(m->isEnabled(name));
}

void tst_MainWindowCommands::resetWithAnOriginBoxTicked()
{
    m->box("chbXSet0")->click();
    m->reset();
    QVERIFY(!m->isTicked("chbXSet0"));
    QCOMPARE(m->text("edtXOffsB"), QString("0"));
    QCOMPARE(m->text("edtXOffsA"), QString("0"));
    QVERIFY(m->isEnabled("edtXOffsB"));
    QVERIFY(m->isEnabled("edtXOffsA"));
}

void tst_MainWindowCommands::resetOnAFreshFormEmitsNothing()
{
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const QString &name : fieldNames())
        spies.push_back(std::make_unique<QSignalSpy>(m->field(name), &QLineEdit::textChanged));
    for (const QString &name : boxNames())
        spies.push_back(std::make_unique<QSignalSpy>(m->box(name), &QCheckBox::toggled));
    m->reset();
    for (const auto &spy : spies)
        QCOMPARE(spy->count(), 0);
}

void tst_MainWindowCommands::resetWorksInTheOrderOfItsSteps_data()
{
    QTest::addColumn<QStringList>("entered");
    QTest::addColumn<QStringList>("ticked");
    QTest::addColumn<QStringList>("expected");
    const QStringList anglesAndLengths{"edtRotateX", "edtRotateY", "edtRotateZ",
                                       "edtXSetL",   "edtYSetL",   "edtZSetL"};
    const QStringList scalesAndOffsets{"edtXScale", "edtYScale", "edtZScale", "edtXOffsB", "edtYOffsB",
                                       "edtZOffsB", "edtXOffsA", "edtYOffsA", "edtZOffsA"};
    const QStringList angleAndLengthBoxes{"chbRotateX", "chbRotateY", "chbRotateZ",
                                          "chbXSetL",   "chbYSetL",   "chbZSetL"};
    const QStringList originBoxes{"chbXSet0", "chbYSet0", "chbZSet0"};
    QTest::newRow("angle and length boxes, their fields, origin boxes")
        << anglesAndLengths << angleAndLengthBoxes + originBoxes
        << angleAndLengthBoxes + anglesAndLengths + originBoxes;
    QTest::newRow("scales, offsets, angles and lengths")
        << scalesAndOffsets + anglesAndLengths << QStringList() << scalesAndOffsets + anglesAndLengths;
    QTest::newRow("offsets before angle boxes")
        << QStringList{"edtZOffsA"} << QStringList{"chbRotateX"} << QStringList({"edtZOffsA", "chbRotateX"});
    QTest::newRow("origin boxes before same-length boxes")
        << QStringList() << sameLengthBoxes + originBoxes << originBoxes + sameLengthBoxes;
}

void tst_MainWindowCommands::resetWorksInTheOrderOfItsSteps()
{
    QFETCH(QStringList, entered);
    QFETCH(QStringList, ticked);
    QFETCH(QStringList, expected);
    for (const QString &name : qAsConst(entered))
        m->enter(name, "7");
    for (const QString &name : qAsConst(ticked)) {
        m->tick(name);
        QVERIFY(m->isTicked(name));
    }
    QStringList order;
    const QObject listener;
    for (const QString &name : fieldNames())
        connect(m->field(name), &QLineEdit::textChanged, &listener, [&order, name] { order << name; });
    for (const QString &name : boxNames())
        connect(m->box(name), &QCheckBox::toggled, &listener, [&order, name] { order << name; });
    m->reset();
    QCOMPARE(order, expected);
}

void tst_MainWindowCommands::inputDialog()
{
    m_folder->makeFolder("sub");
    m_folder->write("in.stl", "x");
    m_folder->write("sub/in.stl", "x");
    FileDialogDriver driver(m_folder->path("sub/in.stl"));
    m->button("btnBrowseIn")->click();
    const ShownFileDialog dialog = driver.dialogs().first();
    QCOMPARE(dialog.caption, QString("Open Input File"));
    QCOMPARE(dialog.directory, m_folder->path());
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(m->field("edtFileIn")));
    QCOMPARE(m->text("edtFileIn"), m_folder->path("sub/in.stl"));
    FileDialogDriver second(m_folder->path("in.stl"));
    m->action("fileOpenAction")->trigger();
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
}

void tst_MainWindowCommands::outputDialog()
{
    m->enter("edtFileIn", "in.stl");
    FileDialogDriver driver(m_folder->path("out"));
    m->button("btnBrowseOut")->click();
    const ShownFileDialog dialog = driver.dialogs().first();
    QCOMPARE(dialog.caption, QString("stl"));
    QCOMPARE(dialog.directory, m_folder->path());
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptSave);
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(m->field("edtFileOut")));
    QCOMPARE(m->text("edtFileOut"), QString("out.stl"));
    QCOMPARE(m_folder->entries(), QStringList());
}

void tst_MainWindowCommands::chosenOutputGetsItsSuffix_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << "out"
                          << "out.stl";
    QTest::newRow("there") << "out.stl"
                           << "out.stl";
    QTest::newRow("upper case") << "out.STL"
                                << "out.STL.stl";
}

void tst_MainWindowCommands::chosenOutputGetsItsSuffix()
{
    QFETCH(QString, chosen);
    QFETCH(QString, expected);
    FileDialogDriver driver(chosen);
    m->button("btnBrowseOut")->click();
    QCOMPARE(m->text("edtFileOut"), expected);
}

void tst_MainWindowCommands::cancelledDialogsKeepTheTexts()
{
    m->enterFiles("in.stl", "out");
    FileDialogDriver driver("");
    m->button("btnBrowseIn")->click();
    m->button("btnBrowseOut")->click();
    QCOMPARE(driver.dialogs().size(), 2);
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    QCOMPARE(m->text("edtFileOut"), QString("out"));
}

void tst_MainWindowCommands::choosingLeavesTheStatusBarAlone()
{
    m_folder->write("in.stl", "x");
    FileDialogDriver driver("in.stl");
    m->button("btnBrowseIn")->click();
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowCommands::buttonBoxButtons()
{
    m->window.show();
    m->enter("edtXScale", "5");
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Reset), Qt::LeftButton);
    QCOMPARE(m->text("edtXScale"), QString("1"));
    QVERIFY(m->window.isVisible());
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Apply), Qt::LeftButton);
    QCOMPARE(m_boxes->boxes().size(), 1);
    QVERIFY(m->window.isVisible());
}

void tst_MainWindowCommands::closeButtonClosesTheWindow()
{
    m->window.show();
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Close), Qt::LeftButton);
    QVERIFY(!m->window.isVisible());
    QCOMPARE(m_boxes->boxes().size(), 0);
}

void tst_MainWindowCommands::unknownButtonClosesTheWindow()
{
    m->window.show();
    QPushButton stranger;
    QVERIFY(QMetaObject::invokeMethod(&m->window, "handleButtonBox", Q_ARG(QAbstractButton *, &stranger)));
    QVERIFY(!m->window.isVisible());
}

void tst_MainWindowCommands::slotsCanBeCalledByName()
{
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotChbRotateY", Q_ARG(bool, true)));
    QVERIFY(m->isEnabled("edtRotateY"));
    QVERIFY(!m->isTicked("chbRotateY"));
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotChbXSet0", Q_ARG(bool, true)));
    QVERIFY(!m->isEnabled("edtXOffsB"));
    m->tick("chbZSetL");
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotEdtZScale", Q_ARG(QString, "1.0")));
    QVERIFY(!m->isTicked("chbZSetL"));
    QVERIFY(QMetaObject::invokeMethod(&m->window, "handleButtonBox",
                                      Q_ARG(QAbstractButton *, m->standardButton(QDialogButtonBox::Apply))));
    QCOMPARE(m_boxes->boxes().size(), 1);
}

void tst_MainWindowCommands::aboutBox()
{
    m->action("actionAbout_Meshvane")->trigger();
    QCOMPARE(m_boxes->boxes().size(), 1);
    const ShownBox &box = m_boxes->boxes().first();
    QCOMPARE(box.title, QString("About Meshvane"));
    QCOMPARE(box.text, QString("Meshvane version: 11.0.0.s001 <br>Quillmoret Release: 11.0.0"));
    QCOMPARE(box.parent, static_cast<const QWidget *>(&m->window));
    // With a picture it has none of the icons of messages.
    QCOMPARE(box.icon, QMessageBox::NoIcon);
    QVERIFY(box.modal);
    QCOMPARE(box.buttonCount, 1);
}

MESHVANE_QTEST_MAIN(tst_MainWindowCommands)
#include "tst_MainWindowCommands.moc"
