// The window after construction: its slots, its first look, and what each signal of the form leads to.
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/PrivateMember.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"
#include "tests/widgets/FieldLists.h"
#include "transform/MeshvaneLog.h"
#include "widgets/LineEditCustom.h"

#include <QMetaMethod>
#include <QRegExp>
#include <QTimer>
#include <QtTest>

#include <memory>
#include <type_traits>

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

// How a connection was made: by the texts of signal and slot, or by pointers to the members.
enum ConnectionForm { byText, byMember };

struct Connection {
    const char *sender;
    const char *signal;
    const char *slot;
    ConnectionForm form;
};

const Connection connections[] = {
    {"chbXSet0", SIGNAL(toggled(bool)), SLOT(slotChbXSet0(bool)), byText},
    {"chbYSet0", SIGNAL(toggled(bool)), SLOT(slotChbYSet0(bool)), byText},
    {"chbZSet0", SIGNAL(toggled(bool)), SLOT(slotChbZSet0(bool)), byText},
    {"chbXsameY", SIGNAL(toggled(bool)), SLOT(slotChbXSameY(bool)), byText},
    {"chbXsameZ", SIGNAL(toggled(bool)), SLOT(slotChbXSameZ(bool)), byText},
    {"chbYsameX", SIGNAL(toggled(bool)), SLOT(slotChbYSameX(bool)), byText},
    {"chbYsameZ", SIGNAL(toggled(bool)), SLOT(slotChbYSameZ(bool)), byText},
    {"chbZsameX", SIGNAL(toggled(bool)), SLOT(slotChbZSameX(bool)), byText},
    {"chbZsameY", SIGNAL(toggled(bool)), SLOT(slotChbZSameY(bool)), byText},
    {"chbRotateX", SIGNAL(toggled(bool)), SLOT(slotChbRotateX(bool)), byText},
    {"chbRotateY", SIGNAL(toggled(bool)), SLOT(slotChbRotateY(bool)), byText},
    {"chbRotateZ", SIGNAL(toggled(bool)), SLOT(slotChbRotateZ(bool)), byText},
    {"chbXSetL", SIGNAL(toggled(bool)), SLOT(slotChbXSetL(bool)), byText},
    {"chbYSetL", SIGNAL(toggled(bool)), SLOT(slotChbYSetL(bool)), byText},
    {"chbZSetL", SIGNAL(toggled(bool)), SLOT(slotChbZSetL(bool)), byText},
    {"edtXScale", SIGNAL(textChanged(QString)), SLOT(slotEdtXScale(QString)), byText},
    {"edtYScale", SIGNAL(textChanged(QString)), SLOT(slotEdtYScale(QString)), byText},
    {"edtZScale", SIGNAL(textChanged(QString)), SLOT(slotEdtZScale(QString)), byText},
    {"btnViewLog", SIGNAL(clicked()), SLOT(slotViewLog()), byText},
    {"fileOpenAction", SIGNAL(triggered(bool)), SLOT(slotGetInputFile()), byMember},
    {"fileRunAction", SIGNAL(triggered(bool)), SLOT(slotCalc()), byMember},
    {"fileResetAction", SIGNAL(triggered(bool)), SLOT(slotClearVals()), byMember},
    {"fileViewLogAction", SIGNAL(triggered(bool)), SLOT(slotViewLog()), byMember},
    {"fileExitAction", SIGNAL(triggered(bool)), SLOT(close()), byMember},
    {"buttonBox", SIGNAL(clicked(QAbstractButton *)), SLOT(handleButtonBox(QAbstractButton *)), byMember},
    {"btnBrowseIn", SIGNAL(clicked()), SLOT(slotGetInputFile()), byText},
    {"btnBrowseOut", SIGNAL(clicked()), SLOT(slotGetOutputFile()), byText},
    {"actionAbout_Meshvane", SIGNAL(triggered(bool)), SLOT(showAbout()), byMember},
};

// The window handles no event itself.
struct HandlersOfTheWindow : MeshvaneMainWindow {
    template <typename Handler, typename Event>
    static constexpr bool isPlain = std::is_same_v<Handler, void (QWidget::*)(Event *)>;

    static_assert(isPlain<decltype(&HandlersOfTheWindow::closeEvent), QCloseEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::keyPressEvent), QKeyEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::keyReleaseEvent), QKeyEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::resizeEvent), QResizeEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::moveEvent), QMoveEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::showEvent), QShowEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::hideEvent), QHideEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::changeEvent), QEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::mousePressEvent), QMouseEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::dragEnterEvent), QDragEnterEvent>);
    static_assert(isPlain<decltype(&HandlersOfTheWindow::dropEvent), QDropEvent>);
    static_assert(std::is_same_v<decltype(&HandlersOfTheWindow::event), bool (QMainWindow::*)(QEvent *)>);
    static_assert(
        std::is_same_v<decltype(&HandlersOfTheWindow::eventFilter), bool (QObject::*)(QObject *, QEvent *)>);
};

} // namespace

struct NumberRegExp {
    using Pointer = QRegExp *MeshvaneMainWindow::*;
    friend Pointer pointerTo(NumberRegExp);
};
template struct PrivateMember<NumberRegExp, &MeshvaneMainWindow::numberRegExp>;

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
    void numberExpressionIsKeptAsItWasWritten();

    void connectionsHaveTheirForm_data();
    void connectionsHaveTheirForm();
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
    void fieldChecks_data();
    void fieldChecks();
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

void tst_MainWindow::numberExpressionIsKeptAsItWasWritten()
{
    const QRegExp *expression = m->window.*pointerTo(NumberRegExp{});
    QVERIFY(expression);
    QCOMPARE(expression->pattern(), QString("/-?/d* | /-?/d*//.//d+ | /-?/d+//.//d*"));
    QCOMPARE(expression->caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(expression->patternSyntax(), QRegExp::RegExp);
    QVERIFY(!expression->isMinimal());
}

void tst_MainWindow::connectionsHaveTheirForm_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(std::size(connections)); ++index)
        QTest::newRow(connections[index].sender) << index;
}

void tst_MainWindow::connectionsHaveTheirForm()
{
    QFETCH(int, index);
    const Connection &connection = connections[index];
    const QByteArray slot = QMetaObject::normalizedSignature(connection.slot + 1);
    QVERIFY(m->window.metaObject()->indexOfSlot(slot) >= 0);
    QObject *sender = m->find<QObject>(connection.sender);
    // The text of a slot finds no connection that was made by member.
    QCOMPARE(QObject::disconnect(sender, connection.signal, &m->window, connection.slot),
             connection.form == byText);
    QCOMPARE(QObject::disconnect(sender, connection.signal, &m->window, nullptr),
             connection.form == byMember);
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

void tst_MainWindow::fieldChecks_data()
{
    QTest::addColumn<QStringList>("policies");
    QTest::addColumn<QStringList>("invalidValues");
    for (const QString &name : fieldNames()) {
        QTestData &row = QTest::newRow(qPrintable(name));
        if (name == "edtFileIn")
            row << QStringList{"9", "2"} << QStringList();
        else if (name == "edtFileOut")
            row << QStringList{"10", "2"} << QStringList();
        else if (name.endsWith("Scale"))
            row << QStringList{"6", "1"} << QStringList{"0"};
        else
            row << QStringList() << QStringList();
    }
}

void tst_MainWindow::fieldChecks()
{
    QFETCH(QStringList, policies);
    QFETCH(QStringList, invalidValues);
    const LineEditCustom *field = m->find<LineEditCustom>(QTest::currentDataTag());
    QCOMPARE(policiesOf(*field), policies);
    QCOMPARE(invalidValuesOf(*field), invalidValues);
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
