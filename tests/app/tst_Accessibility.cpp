// What a screen reader is told about the window.
#include "tests/app/WindowUnderTest.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QAccessible>
#include <QtTest>

#include <memory>

namespace {

QString spoken(QAccessible::Text part, QObject *object)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(object);
    return interface ? interface->text(part) : QString("no interface");
}

QString nameOf(QObject *object) { return spoken(QAccessible::Name, object); }

QAccessible::Role roleOf(QObject *object) { return QAccessible::queryAccessibleInterface(object)->role(); }

QAccessible::State stateOf(QObject *object) { return QAccessible::queryAccessibleInterface(object)->state(); }

} // namespace

class tst_Accessibility : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void namesOfFieldsAndButtons_data();
    void namesOfFieldsAndButtons();
    void everyNameIsSaidOnceOnly();
    void boxesAreCalledByTheirText();
    void fieldsTellTheirTextAndWhetherTheyCanBeUsed();
    void errorIconTellsTheComplaint();
    void nothingButTheNamesIsSet();

private:
    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_Accessibility::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_Accessibility::cleanup()
{
    m.reset();
    m_folder.reset();
}

void tst_Accessibility::namesOfFieldsAndButtons_data()
{
    QTest::addColumn<QString>("name");
    const struct {
        const char *object;
        const char *name;
    } rows[] = {
        {"edtFileIn", "Input STL"},       {"btnBrowseIn", "Browse Input STL"},
        {"edtFileOut", "Output STL"},     {"btnBrowseOut", "Browse Output STL"},
        {"edtXScale", "X Scale"},         {"edtXOffsB", "X Offset Before"},
        {"edtXOffsA", "X Offset After"},  {"edtYScale", "Y Scale"},
        {"edtYOffsB", "Y Offset Before"}, {"edtYOffsA", "Y Offset After"},
        {"edtZScale", "Z Scale"},         {"edtZOffsB", "Z Offset Before"},
        {"edtZOffsA", "Z Offset After"},  {"edtRotateX", "Rotate about X"},
        {"edtRotateY", "Rotate about Y"}, {"edtRotateZ", "Rotate about Z"},
        {"edtXSetL", "Set X Length"},     {"edtYSetL", "Set Y Length"},
        {"edtZSetL", "Set Z Length"},     {"btnViewLog", "View Log"},
    };
    for (const auto &row : rows)
        QTest::newRow(row.object) << row.name;
}

void tst_Accessibility::namesOfFieldsAndButtons()
{
    QFETCH(QString, name);
    QCOMPARE(nameOf(m->find<QWidget>(QTest::currentDataTag())), name);
}

void tst_Accessibility::everyNameIsSaidOnceOnly()
{
    QStringList names;
    for (const QString &field : fieldNames())
        names << nameOf(m->field(field));
    QCOMPARE(names.size(), 17);
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
}

void tst_Accessibility::boxesAreCalledByTheirText()
{
    for (const QString &box : boxNames()) {
        QCOMPARE(nameOf(m->box(box)), m->box(box)->text());
        QCOMPARE(roleOf(m->box(box)), QAccessible::CheckBox);
    }
}

void tst_Accessibility::fieldsTellTheirTextAndWhetherTheyCanBeUsed()
{
    QLineEdit *angle = m->field("edtRotateX");
    QCOMPARE(roleOf(angle), QAccessible::EditableText);
    QVERIFY(stateOf(angle).disabled);
    m->tick("chbRotateX");
    QVERIFY(!stateOf(angle).disabled);
    m->enter("edtRotateX", "90");
    QCOMPARE(spoken(QAccessible::Value, angle), QString("90"));
}

void tst_Accessibility::errorIconTellsTheComplaint()
{
    m->window.show();
    m->enter("edtXScale", "abc");
    const auto icon = m->field("edtXScale")->findChild<QLabel *>();
    QVERIFY(icon->isVisible());
    QCOMPARE(spoken(QAccessible::Description, icon),
             QString("<b>X Scale</b> field can only contain a number value."));
}

void tst_Accessibility::nothingButTheNamesIsSet()
{
    for (const QWidget *widget : m->window.findChildren<QWidget *>()) {
        QVERIFY2(widget->toolTip().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(widget->statusTip().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(widget->whatsThis().isEmpty(), qPrintable(widget->objectName()));
        QVERIFY2(widget->accessibleDescription().isEmpty(), qPrintable(widget->objectName()));
    }
    for (const QLabel *label : m->window.findChildren<QLabel *>())
        QVERIFY2(label->buddy() == nullptr, qPrintable(label->objectName()));
}

MESHVANE_QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
