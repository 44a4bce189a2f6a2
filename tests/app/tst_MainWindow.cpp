// The new window: its slots, its connections, its initial state and the checks of its fields.
#include "app/MeshvaneMainWindow.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/PrivateMember.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/widgets/FieldLists.h"
#include "widgets/LineEditCustom.h"

#include <QMetaMethod>
#include <QRegExp>
#include <QRegularExpression>
#include <QTimer>
#include <QtTest>

#include <type_traits>
#include <vector>

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

// How a connection was made: by the text of signal and slot, or by pointers to member functions.
enum ConnectionForm { byText, byMember };

struct Connection {
    const char *name; // of the sender
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

struct MessageCase {
    QString name;
    QString field;
    QString text;
    QString message; // empty: the text is accepted
};

const std::vector<MessageCase> &messageCases()
{
    static const std::vector<MessageCase> all = [] {
        const std::vector<MessageCase> ofOneScale{
            {"? scale, no number", "edt?Scale", "abc",
             "<b>? Scale</b> field can only contain a number value."},
            {"? scale, zero", "edt?Scale", "0", "<b>? Scale</b> field contains invalid value \"0\""},
            {"? scale, zero written differently", "edt?Scale", "0.0", ""},
            {"? scale, empty", "edt?Scale", "", ""},
            {"? scale, negative", "edt?Scale", "-2", ""},
        };
        std::vector<MessageCase> result{
            {"missing input", "edtFileIn", "nofile.stl", "<b>Stl Input File</b> doesn't exist."},
            {"existing input", "edtFileIn", "in.stl", ""},
            {"empty input", "edtFileIn", "", "<b>Stl Input File</b> field is required to be filled."},
            {"output in a missing folder", "edtFileOut", "/nowhere at all/out.stl",
             "<b>Stl Output File</b> directory doesn't exist."},
            {"output in a missing relative folder", "edtFileOut", "nowhere/out.stl", ""},
            {"empty output", "edtFileOut", "", "<b>Stl Output File</b> field is required to be filled."},
        };
        for (const QString &axis : axes()) {
            for (MessageCase each : ofOneScale) {
                for (QString *text : {&each.name, &each.field, &each.message})
                    text->replace('?', axis);
                result.push_back(each);
            }
        }
        return result;
    }();
    return all;
}

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

class tst_MainWindow : public WindowTest {
    Q_OBJECT

private slots:
    void metaObjectHasTwentyFiveSlotsInOrder();
    void newWindowHasTitleStatusAndNothingElse();
    void statusMessageHasNoTimeOut();
    void windowHasTheSizeOfItsMinimumHint();
    void runButtonIsTheApplyButton();
    void numberExpressionIsUnchanged();

    void connectionsHaveTheirForm_data() { addRows(connections); }
    void connectionsHaveTheirForm();
    void fieldMessages_data() { addRows(messageCases()); }
    void fieldMessages();
    void fieldChecks_data() { addNamedRows(fieldNames()); }
    void fieldChecks();
    void otherFieldsHaveNoName();

    void windowCanHaveAParent();
    void windowsAreIndependent();
};

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

void tst_MainWindow::newWindowHasTitleStatusAndNothingElse()
{
    QCOMPARE(m->window.windowTitle(), QString("Meshvane - Quillmoret"));
    QCOMPARE(m->window.objectName(), QString("MeshvaneMainWindow"));
    QVERIFY(!m->window.isVisible());
    QCOMPARE(m->statusText(), QString("No input file selected"));
    for (const QString &name : fieldNames())
        QCOMPARE(m->iconToolTip(name), QString());
    QCOMPARE(m->viewers().size(), 0);
    QCOMPARE(m_boxes->boxes().size(), 0);
    QCOMPARE(m_folder->entries(), QStringList{"in.stl"});
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

void tst_MainWindow::numberExpressionIsUnchanged()
{
    const QRegExp *expression = m->window.*pointerTo(NumberRegExp{});
    QVERIFY(expression);
    QCOMPARE(expression->pattern(), QString("/-?/d* | /-?/d*//.//d+ | /-?/d+//.//d*"));
    QCOMPARE(expression->caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(expression->patternSyntax(), QRegExp::RegExp);
    QVERIFY(!expression->isMinimal());
}

void tst_MainWindow::connectionsHaveTheirForm()
{
    const Connection &connection = currentRow(connections);
    const QByteArray slot = QMetaObject::normalizedSignature(connection.slot + 1);
    QVERIFY(m->window.metaObject()->indexOfSlot(slot) >= 0);
    QObject *sender = m->find<QObject>(connection.name);
    // The text of a slot does not find a connection made by member.
    QCOMPARE(QObject::disconnect(sender, connection.signal, &m->window, connection.slot),
             connection.form == byText);
    QCOMPARE(QObject::disconnect(sender, connection.signal, &m->window, nullptr),
             connection.form == byMember);
}

void tst_MainWindow::fieldMessages()
{
    const MessageCase &row = currentRow(messageCases());
    m->enter(row.field, "other");
    m->enter(row.field, "1");
    m->enter(row.field, row.text);
    QCOMPARE(m->iconToolTip(row.field), row.message);
}

void tst_MainWindow::fieldChecks()
{
    const LineEditCustom *field = m->find<LineEditCustom>(currentName());
    QStringList policies;
    QStringList invalidValues;
    if (currentName() == "edtFileIn") {
        policies << QString::number(PolicyFileExists) << QString::number(PolicyRequired);
    } else if (currentName() == "edtFileOut") {
        policies << QString::number(PolicyParentDirectoryExists) << QString::number(PolicyRequired);
    } else if (currentName().endsWith("Scale")) {
        policies << QString::number(PolicyInvalidValues) << QString::number(PolicyNumber);
        invalidValues << "0";
    }
    QCOMPARE(policiesOf(*field), policies);
    QCOMPARE(invalidValuesOf(*field), invalidValues);
}

// A file dialog without a caption of its own has the name of its field in the caption.
void tst_MainWindow::otherFieldsHaveNoName()
{
    const FileDialogDriver driver("");
    for (const QString &name : fieldNames().filter(QRegularExpression("Offs|Rotate|SetL")))
        m->find<LineEditCustom>(name)->browseOpenFile("*", "");
    QCOMPARE(driver.dialogs().size(), 12);
    for (const ShownFileDialog &dialog : driver.dialogs())
        QCOMPARE(dialog.caption, QString(" Save As"));
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
