// The window after construction: its slots, its first look, and what each signal of the form leads to.
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"
#include "transform/MeshvaneLog.h"
#include "widgets/LineEditCustom.h"

#include <QMetaMethod>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

struct SlotRow {
    const char *signature;
    const char *parameterName; // null: no parameter
};

const SlotRow windowSlots[] = {
    {"slotCalc()", nullptr},
    {"slotChbRotateX(bool)", "checked"},
    {"slotChbRotateY(bool)", "checked"},
    {"slotChbRotateZ(bool)", "checked"},
    {"slotChbXSameY(bool)", "checked"},
    {"slotChbXSameZ(bool)", "checked"},
    {"slotChbXSet0(bool)", "checked"},
    {"slotChbXSetL(bool)", "checked"},
    {"slotChbYSameX(bool)", "checked"},
    {"slotChbYSameZ(bool)", "checked"},
    {"slotChbYSet0(bool)", "checked"},
    {"slotChbYSetL(bool)", "checked"},
    {"slotChbZSameX(bool)", "checked"},
    {"slotChbZSameY(bool)", "checked"},
    {"slotChbZSet0(bool)", "checked"},
    {"slotChbZSetL(bool)", "checked"},
    {"slotClearVals()", nullptr},
    {"slotEdtXScale(QString)", "newText"},
    {"slotEdtYScale(QString)", "newText"},
    {"slotEdtZScale(QString)", "newText"},
    {"slotGetInputFile()", nullptr},
    {"slotGetOutputFile()", nullptr},
    {"slotViewLog()", nullptr},
    {"handleButtonBox(QAbstractButton*)", "but"},
    {"showAbout()", nullptr},
};

} // namespace

class tst_MainWindow : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void metaObjectHasTwentyFiveSlotsInOrder();
    void newWindowLooksAsItShould();
    void statusMessageHasNoTimeOut();
    void windowHasTheSizeOfItsMinimumHint();
    void runButtonIsTheApplyButton();

    void boxTogglesReachTheirSlots_data();
    void boxTogglesReachTheirSlots();
    void scaleChangesReachTheirSlots_data();
    void scaleChangesReachTheirSlots();
    void commandsShowOneBox_data();
    void commandsShowOneBox();
    void commandsShowOneFileDialog_data();
    void commandsShowOneFileDialog();
    void resetActionResets();
    void exitActionClosesTheWindow();

    void fieldMessages_data();
    void fieldMessages();
    void otherFieldsHaveNoPolicy_data();
    void otherFieldsHaveNoPolicy();

    void windowCanHaveAParent();
    void windowsAreIndependent();

private:
    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_MainWindow::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_MainWindow::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}

void tst_MainWindow::metaObjectHasTwentyFiveSlotsInOrder()
{
    const QMetaObject &meta = MeshvaneMainWindow::staticMetaObject;
    QCOMPARE(meta.className(), "MeshvaneMainWindow");
    QCOMPARE(meta.superClass(), &QMainWindow::staticMetaObject);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 25);
    for (int index = 0; index < 25; ++index) {
        const QMetaMethod method = meta.method(meta.methodOffset() + index);
        QCOMPARE(method.methodSignature(), QByteArray(windowSlots[index].signature));
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Private);
        QCOMPARE(method.returnType(), int(QMetaType::Void));
        QList<QByteArray> names;
        if (windowSlots[index].parameterName)
            names << windowSlots[index].parameterName;
        QCOMPARE(method.parameterNames(), names);
    }
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
}

void tst_MainWindow::newWindowLooksAsItShould()
{
    QCOMPARE(m->window.windowTitle(), QString("Meshvane - Quillmoret"));
    QCOMPARE(m->window.objectName(), QString("MeshvaneMainWindow"));
    QVERIFY(!m->window.isVisible());
    QCOMPARE(m->statusText(), QString("No input file selected"));
    for (const QString &name : fieldNames()) {
        const QString expected = name.endsWith("Scale") ? "1" : name.contains("Offs") ? "0" : "";
        QCOMPARE(m->text(name), expected);
        QCOMPARE(m->iconToolTip(name), QString());
    }
    QCOMPARE(m->viewers().size(), 0);
    QCOMPARE(m_boxes->boxes().size(), 0);
    QCOMPARE(m_folder->entries(), QStringList());
}

void tst_MainWindow::statusMessageHasNoTimeOut()
{
    for (const QTimer *timer : m->window.statusBar()->findChildren<QTimer *>())
        QVERIFY(!timer->isActive());
}

void tst_MainWindow::windowHasTheSizeOfItsMinimumHint()
{
    QCOMPARE(m->window.size(), m->window.minimumSizeHint());
    QVERIFY(m->window.size() != QSize(460, 678));
}

void tst_MainWindow::runButtonIsTheApplyButton()
{
    QCOMPARE(m->standardButton(QDialogButtonBox::Apply)->text(), QString("Run"));
    const QDialogButtonBox plain(QDialogButtonBox::Apply | QDialogButtonBox::Reset | QDialogButtonBox::Close);
    for (const auto which : {QDialogButtonBox::Reset, QDialogButtonBox::Close})
        QCOMPARE(m->standardButton(which)->text(), plain.button(which)->text());
}

// Each row: a box, and one widget whose state shows that the box's own slot has run.
void tst_MainWindow::boxTogglesReachTheirSlots_data()
{
    QTest::addColumn<QString>("witness");
    QTest::addColumn<bool>("enabledWhileTicked");
    QTest::newRow("chbXSet0") << "edtXOffsB" << false;
    QTest::newRow("chbYSet0") << "edtYOffsB" << false;
    QTest::newRow("chbZSet0") << "edtZOffsB" << false;
    QTest::newRow("chbXsameY") << "edtXScale" << false;
    QTest::newRow("chbXsameZ") << "edtXScale" << false;
    QTest::newRow("chbYsameX") << "edtYScale" << false;
    QTest::newRow("chbYsameZ") << "edtYScale" << false;
    QTest::newRow("chbZsameX") << "edtZScale" << false;
    QTest::newRow("chbZsameY") << "edtZScale" << false;
    QTest::newRow("chbRotateX") << "edtRotateX" << true;
    QTest::newRow("chbRotateY") << "edtRotateY" << true;
    QTest::newRow("chbRotateZ") << "edtRotateZ" << true;
    QTest::newRow("chbXSetL") << "edtXSetL" << true;
    QTest::newRow("chbYSetL") << "edtYSetL" << true;
    QTest::newRow("chbZSetL") << "edtZSetL" << true;
}

void tst_MainWindow::boxTogglesReachTheirSlots()
{
    QFETCH(QString, witness);
    QFETCH(bool, enabledWhileTicked);
    QCOMPARE(m->isEnabled(witness), !enabledWhileTicked);
    m->box(QTest::currentDataTag())->click();
    QVERIFY(m->isTicked(QTest::currentDataTag()));
    QCOMPARE(m->isEnabled(witness), enabledWhileTicked);
    m->box(QTest::currentDataTag())->click();
    QVERIFY(!m->isTicked(QTest::currentDataTag()));
    QCOMPARE(m->isEnabled(witness), !enabledWhileTicked);
}

void tst_MainWindow::scaleChangesReachTheirSlots_data()
{
    QTest::addColumn<QString>("box");
    QTest::newRow("edtXScale") << "chbXSetL";
    QTest::newRow("edtYScale") << "chbYSetL";
    QTest::newRow("edtZScale") << "chbZSetL";
}

void tst_MainWindow::scaleChangesReachTheirSlots()
{
    QFETCH(QString, box);
    for (const QString name : {"chbXSetL", "chbYSetL", "chbZSetL"})
        m->tick(name);
    m->enter(QTest::currentDataTag(), "2");
    for (const QString name : {"chbXSetL", "chbYSetL", "chbZSetL"})
        QCOMPARE(m->isTicked(name), name != box);
}

void tst_MainWindow::commandsShowOneBox_data()
{
    QTest::addColumn<QString>("text");
    const QString empty = "<b>Stl Input File</b> field is required to be filled.<br>"
                          "<b>Stl Output File</b> field is required to be filled.<br>";
    QTest::newRow("btnViewLog") << "No log created yet.";
    QTest::newRow("fileViewLogAction") << "No log created yet.";
    QTest::newRow("fileRunAction") << empty;
    QTest::newRow("Apply") << empty;
    QTest::newRow("actionAbout_Meshvane") << "Meshvane version: 11.0.0.s001 <br>Quillmoret Release: 11.0.0";
}

void tst_MainWindow::commandsShowOneBox()
{
    QFETCH(QString, text);
    const QString name = QTest::currentDataTag();
    if (name == "Apply")
        m->run();
    else if (name == "btnViewLog")
        m->button(name)->click();
    else
        m->action(name)->trigger();
    QCOMPARE(m_boxes->texts(), QStringList{text});
}

void tst_MainWindow::commandsShowOneFileDialog_data()
{
    QTest::addColumn<bool>("isAction");
    QTest::addColumn<QString>("caption");
    QTest::newRow("fileOpenAction") << true << "Open Input File";
    QTest::newRow("btnBrowseIn") << false << "Open Input File";
    QTest::newRow("btnBrowseOut") << false << "stl";
}

void tst_MainWindow::commandsShowOneFileDialog()
{
    QFETCH(bool, isAction);
    QFETCH(QString, caption);
    FileDialogDriver driver("");
    if (isAction)
        m->action(QTest::currentDataTag())->trigger();
    else
        m->button(QTest::currentDataTag())->click();
    QCOMPARE(driver.dialogs().size(), 1);
    QCOMPARE(driver.dialogs().first().caption, caption);
}

void tst_MainWindow::resetActionResets()
{
    m->enter("edtYScale", "7");
    m->action("fileResetAction")->trigger();
    QCOMPARE(m->text("edtYScale"), QString("1"));
}

void tst_MainWindow::exitActionClosesTheWindow()
{
    m->window.show();
    QVERIFY(m->window.isVisible());
    m->action("fileExitAction")->trigger();
    QVERIFY(!m->window.isVisible());
}

void tst_MainWindow::fieldMessages_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tip");
    QTest::newRow("input missing") << "edtFileIn"
                                   << "nofile.stl"
                                   << "<b>Stl Input File</b> doesn't exist.";
    QTest::newRow("input there") << "edtFileIn"
                                 << "file.stl"
                                 << "";
    QTest::newRow("input empty") << "edtFileIn"
                                 << ""
                                 << "<b>Stl Input File</b> field is required to be filled.";
    QTest::newRow("output in a missing folder") << "edtFileOut"
                                                << "/nowhere at all/out.stl"
                                                << "<b>Stl Output File</b> directory doesn't exist.";
    QTest::newRow("output, relative folder is not tested") << "edtFileOut"
                                                           << "nowhere/out.stl"
                                                           << "";
    QTest::newRow("output empty") << "edtFileOut"
                                  << ""
                                  << "<b>Stl Output File</b> field is required to be filled.";
    for (const QString axis : {"X", "Y", "Z"}) {
        const QString field = "edt" + axis + "Scale";
        QTest::newRow(qPrintable(field + ", no number"))
            << field << "abc"
            << "<b>" + axis + " Scale</b> field can only contain a number value.";
        QTest::newRow(qPrintable(field + ", zero"))
            << field << "0"
            << "<b>" + axis + " Scale</b> field contains invalid value \"0\"";
        QTest::newRow(qPrintable(field + ", zero in other words")) << field << "0.0"
                                                                   << "";
        QTest::newRow(qPrintable(field + ", empty is allowed")) << field << ""
                                                                << "";
        QTest::newRow(qPrintable(field + ", negative")) << field << "-2"
                                                        << "";
    }
}

void tst_MainWindow::fieldMessages()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, tip);
    m_folder->write("file.stl", "x");
    m->enter(field, "other");
    m->enter(field, "1");
    m->enter(field, text);
    QCOMPARE(m->iconToolTip(field), tip);
}

void tst_MainWindow::otherFieldsHaveNoPolicy_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : fieldNames()) {
        if (!name.startsWith("edtFile") && !name.endsWith("Scale"))
            QTest::newRow(qPrintable(name)) << name;
    }
}

void tst_MainWindow::otherFieldsHaveNoPolicy()
{
    QFETCH(QString, name);
    LineEditCustom *field = m->find<LineEditCustom>(name);
    field->setEnabled(true);
    for (const QString text : {"abc", "0", "-1", "/nowhere at all/x", ""}) {
        field->setText(text);
        QCOMPARE(m->iconToolTip(name), QString());
        QCOMPARE(field->errorText(), QString());
    }
    // The caption of a file dialog would tell a field's name.
    FileDialogDriver driver("");
    field->browseOpenFile("*", "");
    QCOMPARE(driver.dialogs().first().caption, QString(" Save As"));
}

void tst_MainWindow::windowCanHaveAParent()
{
    QWidget parent;
    const MeshvaneMainWindow *child = new MeshvaneMainWindow(&parent);
    QCOMPARE(child->parentWidget(), &parent);
    QVERIFY(child->isWindow());
}

void tst_MainWindow::windowsAreIndependent()
{
    const WindowUnderTest other;
    m->tick("chbXsameY");
    m->enter("edtXScale", "5");
    QVERIFY(!other.isTicked("chbXsameY"));
    QCOMPARE(other.text("edtXScale"), QString("1"));
    QVERIFY(other.isEnabled("edtXScale"));
}

MESHVANE_QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
