#include "app/AccessibleNames.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/QtTestMain.h"

#include <QAccessible>
#include <QtTest>

namespace {

// What a screen reader receives about a widget.
QString spoken(QAccessible::Text part, QObject *object)
{
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(object);
    return interface ? interface->text(part) : QString("no interface");
}

QString nameOf(QObject *object) { return spoken(QAccessible::Name, object); }

QAccessible::Role roleOf(QObject *object) { return QAccessible::queryAccessibleInterface(object)->role(); }

QAccessible::State stateOf(QObject *object) { return QAccessible::queryAccessibleInterface(object)->state(); }

const struct {
    const char *object;
    const char *name;
} expectedNames[] = {
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

} // namespace

class tst_AccessibleNames : public WindowTest {
    Q_OBJECT

private slots:
    void everyFieldAndButtonHasItsName();
    void noTwoFieldsHaveTheSameName();
    void boxesHaveTheirTextAsName();
    void fieldsReportTheirTextAndWhetherTheyAreEnabled();
    void errorIconIsDescribedByItsMessage();
    void nothingElseIsSet();
};

void tst_AccessibleNames::everyFieldAndButtonHasItsName()
{
    for (const auto &row : expectedNames)
        QCOMPARE(nameOf(m->find<QWidget>(row.object)), QString(row.name));
}

void tst_AccessibleNames::noTwoFieldsHaveTheSameName()
{
    QStringList names;
    for (const QString &field : fieldNames())
        names << nameOf(m->field(field));
    QCOMPARE(names.size(), 17);
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
}

void tst_AccessibleNames::boxesHaveTheirTextAsName()
{
    for (const QString &box : boxNames()) {
        QCOMPARE(nameOf(m->box(box)), m->box(box)->text());
        QCOMPARE(roleOf(m->box(box)), QAccessible::CheckBox);
    }
}

void tst_AccessibleNames::fieldsReportTheirTextAndWhetherTheyAreEnabled()
{
    QLineEdit *angle = m->field("edtRotateX");
    QCOMPARE(roleOf(angle), QAccessible::EditableText);
    QVERIFY(stateOf(angle).disabled);
    m->tick("chbRotateX");
    QVERIFY(!stateOf(angle).disabled);
    m->enter("edtRotateX", "90");
    QCOMPARE(spoken(QAccessible::Value, angle), QString("90"));
}

void tst_AccessibleNames::errorIconIsDescribedByItsMessage()
{
    m->window.show();
    m->enter("edtXScale", "abc");
    const auto icon = m->field("edtXScale")->findChild<QLabel *>();
    QVERIFY(icon->isVisible());
    QCOMPARE(spoken(QAccessible::Description, icon),
             QString("<b>X Scale</b> field can only contain a number value."));
}

void tst_AccessibleNames::nothingElseIsSet()
{
    for (const QWidget *widget : m->window.findChildren<QWidget *>())
        QVERIFY2(widget->accessibleDescription().isEmpty(), qPrintable(widget->objectName()));
    for (const QLabel *label : m->window.findChildren<QLabel *>())
        QVERIFY2(label->buddy() == nullptr, qPrintable(label->objectName()));
}

MESHVANE_QTEST_MAIN(tst_AccessibleNames)
#include "tst_AccessibleNames.moc"
