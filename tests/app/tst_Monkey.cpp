// Random clicks, keys, menu commands, runs, dialogs and sizes on the real window, from a fixed seed. After
// each step the form must agree with the model and the rest of the window be in order. MESHVANE_MONKEY_STEPS
// sets the number of steps.
#include "tests/app/Dice.h"
#include "tests/app/InterlockModel.h"
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/Amount.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QApplication>
#include <QtTest>

#include <cstdio>

namespace {

const QStringList scaleTexts{"", "0", "1", "1.0", "2", "abc", " ", "-1e3", "nan"};
const QStringList freeTexts{"", "5", "-5", "abc", " ", "1e400"};
const QStringList inputTexts{"", "in.stl", "out.stl", "/no/such/folder/x.stl", "missing.stl", "."};
const QStringList outputTexts{"", "out.stl", "/no/such/folder/x.stl", "missing.stl", "/dev/full", "."};

// The file fields take no part in the interlocks.
bool isFileField(const QString &name) { return name.startsWith("edtFile"); }

class Monkey {
public:
    explicit Monkey(const WorkingFolder &folder)
        : m_folder(folder)
    {
        m_window.window.show();
    }

    // Returns what is out of order after the step, and the step; empty if all is in order.
    QString step();

    int viewers() const { return m_viewers; }
    int runs() const { return m_runs; }
    int successes() const { return m_successes; }

private:
    void clickABox();
    void typeIntoAField();
    void enterAText();
    void pressAKey();
    void run();
    void browse();
    void viewTheLog();
    void closeAViewer();
    void resize();
    void clickAnInertPlace();
    void about();
    void reset();
    void closeAndReopen();
    void toggleWithTheSpaceBar();

    QString disorder() const;
    void syncModelText(const QString &field);
    QString anyEnabled(const QStringList &names);
    QString textFor(const QString &field);

    const WorkingFolder &m_folder;
    WindowUnderTest m_window;
    InterlockModel m_model;
    MessageBoxRecorder m_boxes;
    Dice m_dice{8128};
    QString m_step;
    QString m_fault; // found by the step itself
    int m_viewers = 0;
    int m_runs = 0;
    int m_successes = 0;
    QStringList::size_type m_refusalsBefore = 0; // of the model, before the step
};

QString Monkey::step()
{
    const struct {
        int weight;
        void (Monkey::*act)();
    } actions[] = {
        {30, &Monkey::clickABox},
        {10, &Monkey::toggleWithTheSpaceBar},
        {15, &Monkey::enterAText},
        {10, &Monkey::typeIntoAField},
        {8, &Monkey::pressAKey},
        {8, &Monkey::run},
        {3, &Monkey::browse},
        {2, &Monkey::viewTheLog},
        {2, &Monkey::closeAViewer},
        {4, &Monkey::resize},
        {4, &Monkey::clickAnInertPlace},
        {1, &Monkey::about},
        {2, &Monkey::reset},
        {1, &Monkey::closeAndReopen},
    };
    int all = 0;
    for (const auto &action : actions)
        all += action.weight;
    int choice = m_dice.below(all);
    for (const auto &action : actions) {
        choice -= action.weight;
        if (choice < 0) {
            m_boxes.clear();
            m_refusalsBefore = m_model.messages().size();
            (this->*action.act)();
            break;
        }
    }
    QCoreApplication::processEvents();
    const QString found = disorder();
    return found.isEmpty() ? QString() : m_step + ": " + found;
}

QString Monkey::anyEnabled(const QStringList &names)
{
    QStringList enabled;
    for (const QString &name : names) {
        if (m_window.isEnabled(name))
            enabled << name;
    }
    return m_dice.oneOf(enabled);
}

void Monkey::clickABox()
{
    const QString name = anyEnabled(boxNames());
    m_step = "click " + name;
    m_model.setTicked(name, !m_model.boxes()[name].ticked);
    QCheckBox *box = m_window.box(name);
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
}

void Monkey::toggleWithTheSpaceBar()
{
    const QString name = anyEnabled(boxNames());
    m_step = "space on " + name;
    m_model.setTicked(name, !m_model.boxes()[name].ticked);
    QTest::keyClick(m_window.box(name), Qt::Key_Space);
}

QString Monkey::textFor(const QString &field)
{
    if (isFileField(field))
        return m_dice.oneOf(field == "edtFileIn" ? inputTexts : outputTexts);
    if (field.endsWith("Scale"))
        return m_dice.oneOf(scaleTexts);
    return field.contains("Offs") ? m_dice.oneOf(knownOffsetTexts().keys()) : m_dice.oneOf(freeTexts);
}

void Monkey::syncModelText(const QString &field)
{
    if (!isFileField(field))
        m_model.setText(field, m_window.text(field));
}

void Monkey::enterAText()
{
    const QString name = anyEnabled(fieldNames());
    const QString text = textFor(name);
    m_step = "enter \"" + text + "\" into " + name;
    m_window.enter(name, text);
    syncModelText(name);
}

void Monkey::typeIntoAField()
{
    const QString name = anyEnabled(fieldNames());
    const QString text = textFor(name);
    m_step = "type \"" + text + "\" into " + name;
    QLineEdit *field = m_window.field(name);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    syncModelText(name);
    for (const QChar key : text) {
        QTest::keyClick(field, key.toLatin1());
        if (name.contains("Scale"))
            syncModelText(name); // each key is an edit
    }
    syncModelText(name);
    QTest::keyClick(field, Qt::Key_Tab);
}

void Monkey::pressAKey()
{
    const Qt::Key keys[] = {Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_F1,
                            Qt::Key_PageDown, Qt::Key_End,     Qt::Key_Shift};
    const Qt::Key key = keys[m_dice.below(6)];
    m_step = "key " + QString::number(key);
    QWidget *focus = m_window.window.focusWidget();
    QTest::keyClick(focus ? focus : &m_window.window, key);
}

void Monkey::run()
{
    ++m_runs;
    // None of the names ends the process: problems with folders and devices are shown in boxes.
    if (m_dice.below(2) == 0)
        m_window.enterFiles("in.stl", m_dice.oneOf({"out.stl", "/dev/full"}));
    m_step = "run from " + m_window.text("edtFileIn") + " to " + m_window.text("edtFileOut");
    m_folder.write("in.stl", triangleInput());
    m_window.window.statusBar()->clearMessage();
    if (m_dice.below(2) == 0)
        m_window.run();
    else
        m_window.action("fileRunAction")->trigger();
    if (!m_window.statusText().isEmpty())
        ++m_successes;
}

void Monkey::browse()
{
    m_step = "browse";
    const QStringList buttons{"btnBrowseIn", "btnBrowseOut"};
    const FileDialogDriver cancel("");
    const QString in = m_window.text("edtFileIn");
    const QString out = m_window.text("edtFileOut");
    if (m_dice.below(3) == 0)
        m_window.action("fileOpenAction")->trigger();
    else
        m_window.button(m_dice.oneOf(buttons))->click();
    if (m_window.text("edtFileIn") != in || m_window.text("edtFileOut") != out ||
        cancel.dialogs().size() != 1)
        m_fault = "a cancelled dialog has changed a name";
}

void Monkey::viewTheLog()
{
    m_step = "view log";
    if (m_dice.below(2) == 0)
        m_window.button("btnViewLog")->click();
    else
        m_window.action("fileViewLogAction")->trigger();
    if (m_boxes.boxes().isEmpty())
        ++m_viewers;
}

void Monkey::closeAViewer()
{
    m_step = "close a viewer";
    for (QDialog *viewer : m_window.viewers()) {
        if (viewer->isVisible()) {
            viewer->findChild<QPushButton *>("btnExit")->click();
            return;
        }
    }
}

void Monkey::resize()
{
    const QSize size{m_dice.below(1600), m_dice.below(1200)};
    m_step = QString("resize to %1 x %2").arg(size.width()).arg(size.height());
    m_window.window.resize(size);
}

// A label, a group box or the background.
void Monkey::clickAnInertPlace()
{
    const QPoint at{m_dice.below(m_window.window.width()), m_dice.below(m_window.window.height())};
    m_step = QString("click at %1, %2").arg(at.x()).arg(at.y());
    QWidget *hit = m_window.window.childAt(at);
    const bool inert = !hit || qobject_cast<QLabel *>(hit) || hit->objectName().startsWith("grp");
    if (inert)
        QTest::mouseClick(hit ? hit : &m_window.window,
                          m_dice.below(2) == 0 ? Qt::LeftButton : Qt::MiddleButton);
}

void Monkey::about()
{
    m_step = "about";
    m_window.action("actionAbout_Meshvane")->trigger();
}

void Monkey::reset()
{
    m_step = "reset";
    m_model.reset();
    if (m_dice.below(2) == 0)
        m_window.reset();
    else
        m_window.action("fileResetAction")->trigger();
}

void Monkey::closeAndReopen()
{
    m_step = "close";
    if (m_dice.below(2) == 0)
        m_window.standardButton(QDialogButtonBox::Close)->click();
    else
        m_window.action("fileExitAction")->trigger();
    if (m_window.window.isVisible())
        m_fault = "the window does not close";
    m_window.window.show();
}

QString Monkey::disorder() const
{
    QStringList found = differences(m_model, m_window);
    const auto require = [&found](bool holds, const QString &otherwise) {
        if (!holds)
            found << otherwise;
    };
    for (const QString name : {"edtFileIn", "edtFileOut", "btnViewLog"})
        require(m_window.isEnabled(name), name + " is disabled");
    require(m_fault.isEmpty(), m_fault);
    require(m_window.window.isVisible(), "the window has disappeared");
    require(!QApplication::activeModalWidget() && !QApplication::activePopupWidget(),
            "a dialog is still open");
    require(m_window.viewers().size() == m_viewers, "wrong number of viewers");
    require(m_folder.read("in.stl") == triangleInput(), "the input has changed");
    if (m_step.startsWith("run"))
        require(m_window.statusText().isEmpty() != m_boxes.boxes().isEmpty(),
                "a run must either succeed or show a message");
    else if (!m_step.startsWith("about") && !m_step.startsWith("view log"))
        require(m_boxes.texts() == m_model.messages().mid(m_refusalsBefore),
                "boxes: " + m_boxes.texts().join('|'));
    return found.join("; ");
}

} // namespace

class tst_Monkey : public QObject {
    Q_OBJECT

private slots:
    void everyStepLeavesTheFormInOrder();
};

void tst_Monkey::everyStepLeavesTheFormInOrder()
{
    const WorkingFolder folder;
    folder.write("in.stl", triangleInput());
    Monkey monkey(folder);
    const int steps = amount("MESHVANE_MONKEY_STEPS", 2000);
    for (int step = 1; step <= steps; ++step) {
        const QString disorder = monkey.step();
        QVERIFY2(disorder.isEmpty(), qPrintable(QString("step %1, ").arg(step) + disorder));
    }
    std::printf("%d steps, %d runs, %d of them successful, %d viewers\n", steps, monkey.runs(),
                monkey.successes(), monkey.viewers());
    QVERIFY(monkey.successes() > 0);
    QVERIFY(monkey.successes() < monkey.runs());
}

MESHVANE_QTEST_MAIN(tst_Monkey)
#include "tst_Monkey.moc"
