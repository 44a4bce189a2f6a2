// The whole program without a mouse: every key goes to the widget with the keyboard focus.
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QSet>
#include <QTextEdit>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

// What the tab key reaches on a new form, in order.
const QStringList &tabStops()
{
    static const QStringList stops{"edtFileIn",  "btnBrowseIn", "edtFileOut", "btnBrowseOut", "edtXScale",
                                   "edtXOffsB",  "edtXOffsA",   "edtYScale",  "edtYOffsB",    "edtYOffsA",
                                   "edtZScale",  "edtZOffsB",   "edtZOffsA",  "chbRotateX",   "chbRotateY",
                                   "chbRotateZ", "chbXSetL",    "chbYSetL",   "chbZSetL",     "chbXSet0",
                                   "chbYSet0",   "chbZSet0",    "chbXsameY",  "chbXsameZ",    "chbYsameX",
                                   "chbYsameZ",  "chbZsameX",   "chbZsameY",  "btnViewLog"};
    return stops;
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void type(const QString &text)
{
    press(Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

// Presses the tab key until the widget has the focus.
void goTo(const QWidget *widget)
{
    for (int steps = 0; steps < 60 && QApplication::focusWidget() != widget; ++steps)
        press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), widget);
}

} // namespace

class tst_KeyboardOnly : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tabVisitsEveryStopInOrder();
    void backtabVisitsThemBackwards();
    void tickedBoxesMakeTheirFieldsStops();
    void fromAnEmptyFormToAClosedWindow();
    void menuIsUsedWithoutTheMouse();

private:
    void goTo(const QString &name) { ::goTo(m->find<QWidget>(name)); }
    void typeInto(const QString &field, const QString &text)
    {
        goTo(field);
        type(text);
    }
    void tick(const QString &box)
    {
        goTo(box);
        press(Qt::Key_Space);
        QVERIFY2(m->isTicked(box), qPrintable(box));
    }
    void pressButton(QPushButton *button)
    {
        ::goTo(button);
        press(Qt::Key_Space);
    }
    // This is the task of a window manager, which does not exist here.
    void activate(QWidget *window)
    {
        window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window);
    }
    // Presses the button, closes the box that appears with the return key, and returns its text.
    QString textOfBoxAfter(QPushButton *button);

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_KeyboardOnly::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
    m = std::make_unique<WindowUnderTest>();
    m->window.show();
    activate(&m->window);
    goTo("edtFileIn");
}

void tst_KeyboardOnly::cleanup()
{
    m.reset();
    m_folder.reset();
}

QString tst_KeyboardOnly::textOfBoxAfter(QPushButton *button)
{
    QString text;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&watch, &text] {
        const auto box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        watch.stop();
        text = box->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
    watch.start(1);
    pressButton(button);
    activate(&m->window);
    return text;
}

void tst_KeyboardOnly::tabVisitsEveryStopInOrder()
{
    QStringList visited;
    for (auto count = tabStops().size(); count > 0; --count) {
        visited << QApplication::focusWidget()->objectName();
        press(Qt::Key_Tab);
    }
    QCOMPARE(visited, tabStops());
    const QSet<QWidget *> expected{m->standardButton(QDialogButtonBox::Apply),
                                   m->standardButton(QDialogButtonBox::Reset),
                                   m->standardButton(QDialogButtonBox::Close)};
    QSet<QWidget *> buttons;
    for (int count = 3; count > 0; --count) {
        buttons << QApplication::focusWidget();
        press(Qt::Key_Tab);
    }
    QCOMPARE(buttons, expected);
    QCOMPARE(QApplication::focusWidget()->objectName(), tabStops().constFirst());
}

void tst_KeyboardOnly::backtabVisitsThemBackwards()
{
    goTo("btnViewLog");
    QStringList visited;
    for (auto count = tabStops().size(); count > 0; --count) {
        visited.prepend(QApplication::focusWidget()->objectName());
        press(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    QCOMPARE(visited, tabStops());
}

void tst_KeyboardOnly::tickedBoxesMakeTheirFieldsStops()
{
    const struct {
        const char *box;
        const char *field;
    } rows[] = {{"chbRotateX", "edtRotateX"}, {"chbRotateY", "edtRotateY"}, {"chbRotateZ", "edtRotateZ"},
                {"chbXSetL", "edtXSetL"},     {"chbYSetL", "edtYSetL"},     {"chbZSetL", "edtZSetL"}};
    for (const auto &row : rows) {
        tick(row.box);
        press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString(row.field));
    }
}

void tst_KeyboardOnly::fromAnEmptyFormToAClosedWindow()
{
    QPushButton *run = m->standardButton(QDialogButtonBox::Apply);
    QCOMPARE(textOfBoxAfter(m->button("btnViewLog")), QString("No log created yet."));
    QVERIFY(textOfBoxAfter(run).startsWith("<b>Stl Input File</b>"));

    typeInto("edtFileIn", "in.stl");
    typeInto("edtFileOut", "out.stl");
    typeInto("edtXScale", "2");
    typeInto("edtXOffsA", "0.5");
    tick("chbZSetL");
    press(Qt::Key_Tab);
    type("4");
    tick("chbYSet0");
    pressButton(run);
    QCOMPARE(m_folder->read("out.stl"),
             triangleOutput("      vertex  2.50000000E+00  0.00000000E+00  7.50000000E-01\n"
                            "      vertex  1.05000000E+01  0.00000000E+00  7.50000000E-01\n"
                            "      vertex  2.50000000E+00  8.00000000E+00  4.75000000E+00\n"));
    QCOMPARE(m->statusText(), statusAfterRun("out.stl"));

    pressButton(m->button("btnViewLog"));
    QCOMPARE(m->viewers().size(), 1);
    QDialog *viewer = m->viewers().constFirst();
    activate(viewer);
    QVERIFY(viewer->findChild<QTextEdit *>("txtLog")->toPlainText().contains("zsetL = 4.000000"));
    // In the text, the tab key enters a tab; the escape key closes the viewer.
    press(Qt::Key_Escape);
    QVERIFY(!viewer->isVisible());

    activate(&m->window);
    pressButton(m->standardButton(QDialogButtonBox::Reset));
    QCOMPARE(m->text("edtXScale"), QString("1"));
    pressButton(m->standardButton(QDialogButtonBox::Close));
    QVERIFY(!m->window.isVisible());
}

void tst_KeyboardOnly::menuIsUsedWithoutTheMouse()
{
    typeInto("edtFileIn", "in.stl");
    typeInto("edtFileOut", "out.stl");
    QTest::keyPress(&m->window, Qt::Key_Alt);
    QTest::keyRelease(&m->window, Qt::Key_Alt);
    QCOMPARE(QApplication::focusWidget()->objectName(), QString("menuBar"));
    press(Qt::Key_Down);
    const auto menu = m->find<QMenu>("menuFile");
    QCOMPARE(QApplication::activePopupWidget(), menu);
    QCOMPARE(menu->activeAction(), m->action("fileOpenAction"));
    QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QVERIFY(m_folder->has("out.stl"));
}

MESHVANE_QTEST_MAIN(tst_KeyboardOnly)
#include "tst_KeyboardOnly.moc"
