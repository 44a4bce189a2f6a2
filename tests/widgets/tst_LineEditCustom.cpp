// The field itself: its slots, its policies, when checks run, what they leave behind, and rounding. The
// checks and their messages are tested in tst_FieldChecks and tst_LineEditChecks, the icon in
// tst_LineEditIcon.
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/widgets/FieldLists.h"
#include "tests/widgets/FieldUnderTest.h"
#include "widgets/FieldChecks.h"
#include "widgets/LineEditCustom.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

#include <type_traits>

namespace {

// The field handles changes of its size itself and leaves every other event to the line edit.
struct HandlersOfAField : LineEditCustom {
    template <typename Handler, typename Owner, typename Event>
    static constexpr bool is = std::is_same_v<Handler, void (Owner::*)(Event *)>;

    static_assert(is<decltype(&HandlersOfAField::resizeEvent), LineEditCustom, QResizeEvent>);
    static_assert(is<decltype(&HandlersOfAField::keyPressEvent), QLineEdit, QKeyEvent>);
    static_assert(is<decltype(&HandlersOfAField::changeEvent), QLineEdit, QEvent>);
    static_assert(is<decltype(&HandlersOfAField::paintEvent), QLineEdit, QPaintEvent>);
    static_assert(is<decltype(&HandlersOfAField::focusInEvent), QLineEdit, QFocusEvent>);
    static_assert(is<decltype(&HandlersOfAField::focusOutEvent), QLineEdit, QFocusEvent>);
    static_assert(is<decltype(&HandlersOfAField::mousePressEvent), QLineEdit, QMouseEvent>);
    static_assert(is<decltype(&HandlersOfAField::dropEvent), QLineEdit, QDropEvent>);
    static_assert(is<decltype(&HandlersOfAField::showEvent), QWidget, QShowEvent>);
    static_assert(is<decltype(&HandlersOfAField::hideEvent), QWidget, QHideEvent>);
    static_assert(std::is_same_v<decltype(&HandlersOfAField::event), bool (QLineEdit::*)(QEvent *)>);
    static_assert(std::is_same_v<decltype(&HandlersOfAField::sizeHint), QSize (QLineEdit::*)() const>);
    static_assert(std::is_same_v<decltype(&HandlersOfAField::minimumSizeHint), QSize (QLineEdit::*)() const>);
};

// The two ways to exclude a field from checking.
void addExclusions()
{
    QTest::addColumn<bool>("hides");
    QTest::newRow("disabled") << false;
    QTest::newRow("hidden") << true;
}

void setExcluded(LineEditCustom &field, bool hides, bool excluded)
{
    if (hides)
        field.setVisible(!excluded);
    else
        field.setEnabled(!excluded);
}

} // namespace

class tst_LineEditCustom : public QObject {
    Q_OBJECT

private slots:
    void metaObjectHasTwoSlotsInOrderAndNothingElse();
    void slotsAreConnectedByTheirNames();
    void policyCodesAreFixed();
    void policiesAreKeptAsDecimalTextsInOrderOfAddition();
    void everyPolicyButOneCanBeAdded();
    void everyCheckOfTheTableCanBeAdded();
    void invalidValuesAreKeptAsDecimalTextsEvenTwice();

    void newFieldIsEmptyAndShowsNoIcon();
    void fieldWithoutPoliciesIsAlwaysClean();
    void typingShowsAndHidesTheIcon();
    void errorTextEndsEveryMessageWithALineBreak();
    void errorTextRefreshesTheIcon();
    void toolTipOfTheField_data();
    void toolTipOfTheField();

    void excludedRunDropsMessagesAndIcon_data() { addExclusions(); }
    void excludedRunDropsMessagesAndIcon();
    void excludedRunKeepsTheRightToTheOwnName_data() { addExclusions(); }
    void excludedRunKeepsTheRightToTheOwnName();
    void exclusionAloneKeepsTheIcon_data() { addExclusions(); }
    void exclusionAloneKeepsTheIcon();
    void fieldOfAHiddenHostIsChecked();
    void parentlessFieldThatWasNeverShownCountsAsHidden();
    void errorTextOfADisabledFieldIsEmptyAndChangesNothing();
    void errorTextOfAHiddenFieldEmptiesTheMessages();

    void rounding_data();
    void rounding();
    void roundingHappensWhenEditingIsFinished();
    void roundingNeedsItsPolicy();
    void roundingStartsACheckRun();
};

void tst_LineEditCustom::metaObjectHasTwoSlotsInOrderAndNothingElse()
{
    const QMetaObject &meta = LineEditCustom::staticMetaObject;
    QCOMPARE(meta.className(), "LineEditCustom");
    QCOMPARE(meta.superClass(), &QLineEdit::staticMetaObject);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    const QMetaMethod first = meta.method(meta.methodOffset());
    const QMetaMethod second = meta.method(meta.methodOffset() + 1);
    QCOMPARE(first.methodSignature(), QByteArray("applyLineEditPolicy()"));
    QCOMPARE(second.methodSignature(), QByteArray("applyModifingPolicies()"));
    for (const QMetaMethod &method : {first, second}) {
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Public);
        QCOMPARE(method.returnType(), int(QMetaType::Void));
    }
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
    QCOMPARE(meta.constructorCount(), 0);
}

void tst_LineEditCustom::slotsAreConnectedByTheirNames()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.addPolicy(PolicyRoundToInteger);

    // Only a connection that was made by name can be found by name.
    QVERIFY(
        QObject::disconnect(&f.field, SIGNAL(textChanged(QString)), &f.field, SLOT(applyLineEditPolicy())));
    f.field.setText("abc");
    QVERIFY(!f.showsIcon());

    QVERIFY(
        QObject::disconnect(&f.field, SIGNAL(editingFinished()), &f.field, SLOT(applyModifingPolicies())));
    f.field.setText("2.5");
    QTest::keyClick(&f.field, Qt::Key_Return);
    QCOMPARE(f.field.text(), QString("2.5"));
}

void tst_LineEditCustom::policyCodesAreFixed()
{
    const QList<int> codes{PolicyNone,
                           PolicyNumber,
                           PolicyRequired,
                           PolicyUniqueName,
                           PolicyUniqueNameNoCase,
                           PolicyInvalidCharacters,
                           PolicyInvalidValues,
                           PolicyKeepFullPath,
                           PolicyDirectoryExists,
                           PolicyFileExists,
                           PolicyParentDirectoryExists,
                           PolicyRoundToInteger,
                           PolicyMinimum,
                           PolicyMaximum};
    for (int code = 0; code < codes.size(); ++code)
        QCOMPARE(codes.at(code), code);
}

void tst_LineEditCustom::policiesAreKeptAsDecimalTextsInOrderOfAddition()
{
    FieldUnderTest f;
    QCOMPARE(policiesOf(f.field), QStringList());
    for (const int code : {PolicyMaximum, PolicyNumber, PolicyInvalidValues, PolicyNumber, PolicyMaximum})
        f.field.addPolicy(code);
    QCOMPARE(policiesOf(f.field), QStringList({"13", "1", "6"}));
    for (const int refused : {int(PolicyKeepFullPath), 14, 99, 1000, -1})
        f.field.addPolicy(refused);
    QCOMPARE(policiesOf(f.field), QStringList({"13", "1", "6"}));
    f.field.addPolicy(PolicyNone);
    QCOMPARE(policiesOf(f.field), QStringList());
    f.field.addPolicy(PolicyNumber);
    QCOMPARE(policiesOf(f.field), QStringList{"1"});
}

void tst_LineEditCustom::everyPolicyButOneCanBeAdded()
{
    FieldUnderTest f;
    for (int code = PolicyNumber; code <= PolicyMaximum; ++code)
        f.field.addPolicy(code);
    QCOMPARE(policiesOf(f.field),
             QStringList({"1", "2", "3", "4", "5", "6", "8", "9", "10", "11", "12", "13"}));
}

void tst_LineEditCustom::everyCheckOfTheTableCanBeAdded()
{
    FieldUnderTest f;
    for (const FieldCheck &check : fieldChecks()) {
        f.field.addPolicy(check.policy);
        QVERIFY(policiesOf(f.field).contains(QString::number(check.policy)));
    }
}

void tst_LineEditCustom::invalidValuesAreKeptAsDecimalTextsEvenTwice()
{
    FieldUnderTest f;
    f.field.addInvalidValue(0, false);
    f.field.addInvalidValue(-12, false);
    f.field.addInvalidValue(0, false);
    QCOMPARE(invalidValuesOf(f.field), QStringList({"0", "-12", "0"}));
    f.field.addInvalidValue(7, true);
    QCOMPARE(invalidValuesOf(f.field), QStringList{"7"});
}

void tst_LineEditCustom::newFieldIsEmptyAndShowsNoIcon()
{
    FieldUnderTest f;
    QCOMPARE(f.field.findChildren<QLabel *>().size(), 1);
    QCOMPARE(f.icon->parentWidget(), &f.field);
    QVERIFY(!f.icon->isWindow());
    QVERIFY(!f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString());
    QCOMPARE(f.field.text(), QString());
    QCOMPARE(f.field.toolTip(), QString());
    QCOMPARE(f.field.errorText(), QString());
    f.host.show();
    QVERIFY(!f.icon->isVisible());
}

void tst_LineEditCustom::fieldWithoutPoliciesIsAlwaysClean()
{
    FieldUnderTest f;
    for (const QString text : {"abc", "0", "/missing/x", "", " "}) {
        f.check(text);
        QVERIFY(!f.showsIcon());
        QCOMPARE(f.field.errorText(), QString());
    }
}

void tst_LineEditCustom::typingShowsAndHidesTheIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    QTest::keyClicks(&f.field, "1x");
    QVERIFY(f.icon->isVisible());
    QCOMPARE(f.icon->toolTip(), scaleIsNoNumber);
    QTest::keyClick(&f.field, Qt::Key_Backspace);
    QCOMPARE(f.field.text(), QString("1"));
    QVERIFY(!f.icon->isVisible());
    QCOMPARE(f.icon->toolTip(), QString());
    QTest::keyClick(&f.field, Qt::Key_Backspace);
    QVERIFY(!f.icon->isVisible());
    QTest::keyClicks(&f.field, "0");
    QVERIFY(f.icon->isVisible());
    QCOMPARE(f.icon->toolTip(), scaleIsZero);
    QTest::keyClicks(&f.field, ".5");
    QVERIFY(!f.icon->isVisible());
}

void tst_LineEditCustom::errorTextEndsEveryMessageWithALineBreak()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    QCOMPARE(f.field.errorText(), scaleIsNoNumber + "<br>");
    f.field.addPolicy(PolicyInvalidCharacters);
    f.field.setInvalidCharacters({"b"});
    QCOMPARE(f.field.errorText(),
             scaleIsNoNumber + "<br><b>X Scale</b> field contains invalid character: b<br>");
    f.field.setText("7");
    QCOMPARE(f.field.errorText(), QString());
}

void tst_LineEditCustom::errorTextRefreshesTheIcon()
{
    FieldUnderTest f;
    f.field.setFieldName("X Scale", true);
    f.field.setText("abc");
    f.field.addPolicy(PolicyNumber);
    QVERIFY(!f.showsIcon());
    f.field.errorText();
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), scaleIsNoNumber);
}

const struct {
    const char *name;
    bool enabled;
    QString text;
    QString toolTip;
} toolTips[] = {
    {"run with errors keeps it", true, "abc", "own"},
    {"clean run empties it", true, "5", ""},
    {"run of a disabled field keeps it", false, "5", "own"},
};

void tst_LineEditCustom::toolTipOfTheField_data() { addRows(toolTips); }

void tst_LineEditCustom::toolTipOfTheField()
{
    const auto &row = currentRow(toolTips);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setToolTip("own");
    f.field.setEnabled(row.enabled);
    f.field.setText(row.text);
    QCOMPARE(f.field.toolTip(), row.toolTip);
}

void tst_LineEditCustom::excludedRunDropsMessagesAndIcon()
{
    QFETCH(bool, hides);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    setExcluded(f.field, hides, true);
    f.field.applyLineEditPolicy();
    QVERIFY(!f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString());
    f.field.setText("");
    setExcluded(f.field, hides, false);
    // With an empty text, a number message would still stand if the run had not dropped it.
    QCOMPARE(f.field.errorText(), QString());
}

void tst_LineEditCustom::excludedRunKeepsTheRightToTheOwnName()
{
    QFETCH(bool, hides);
    FieldUnderTest f;
    f.field.addPolicy(PolicyUniqueName);
    f.field.setUsedNames({"a"});
    setExcluded(f.field, hides, true);
    f.check("a");
    setExcluded(f.field, hides, false);
    f.check("a");
    QVERIFY(!f.showsIcon());
}

void tst_LineEditCustom::exclusionAloneKeepsTheIcon()
{
    QFETCH(bool, hides);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    setExcluded(f.field, hides, true);
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), scaleIsNoNumber);
}

void tst_LineEditCustom::fieldOfAHiddenHostIsChecked()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.host.show();
    f.host.hide();
    QVERIFY(!f.field.isVisible());
    f.field.setText("abc");
    QVERIFY(f.showsIcon());
    QCOMPARE(f.field.errorText(), scaleIsNoNumber + "<br>");
}

void tst_LineEditCustom::parentlessFieldThatWasNeverShownCountsAsHidden()
{
    LineEditCustom field(nullptr);
    makeScaleField(field);
    field.setText("abc");
    QCOMPARE(field.errorText(), QString());
    field.show();
    QCOMPARE(field.errorText(), scaleIsNoNumber + "<br>");
}

void tst_LineEditCustom::errorTextOfADisabledFieldIsEmptyAndChangesNothing()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    f.field.addPolicy(PolicyNone);
    f.field.setEnabled(false);
    QCOMPARE(f.field.errorText(), QString());
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), scaleIsNoNumber);
    f.field.setEnabled(true);
    // No check is left that could have added the message again.
    QCOMPARE(f.field.errorText(), scaleIsNoNumber + "<br>");
}

void tst_LineEditCustom::errorTextOfAHiddenFieldEmptiesTheMessages()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    f.field.addPolicy(PolicyNone);
    f.field.hide();
    QCOMPARE(f.field.errorText(), QString());
    QVERIFY(!f.showsIcon());
    f.field.show();
    QCOMPARE(f.field.errorText(), QString());
}

const struct {
    const char *name;
    QString text;
    QString rounded;
} roundedTexts[] = {
    {"half", "2.5", "3"},
    {"negative half", "-2.5", "-3"},
    {"exponent is dropped", "0.000015", "2"},
    {"blanks around", " 2.5 ", "3"},
    {"no number", "abc", "0"},
    {"decimal comma", "2,5", "0"},
    {"blank only", " ", "0"},
    {"out of range", "1e400", "0"},
    {"infinite", "inf", "0"},
    {"not a number", "nan", "0"},
    {"empty stays empty", "", ""},
};

void tst_LineEditCustom::rounding_data() { addRows(roundedTexts); }

void tst_LineEditCustom::rounding()
{
    const auto &row = currentRow(roundedTexts);
    FieldUnderTest f;
    f.field.addPolicy(PolicyRoundToInteger);
    f.field.setText(row.text);
    QCOMPARE(f.field.text(), row.text);
    f.field.applyModifingPolicies();
    QCOMPARE(f.field.text(), row.rounded);
}

void tst_LineEditCustom::roundingHappensWhenEditingIsFinished()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyRoundToInteger);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    QTest::keyClicks(&f.field, "2.5");
    QCOMPARE(f.field.text(), QString("2.5"));
    QTest::keyClick(&f.field, Qt::Key_Return);
    QCOMPARE(f.field.text(), QString("3"));
}

void tst_LineEditCustom::roundingNeedsItsPolicy()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyNumber);
    f.field.setText("2.5");
    f.field.applyModifingPolicies();
    QCOMPARE(f.field.text(), QString("2.5"));
}

void tst_LineEditCustom::roundingStartsACheckRun()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyRoundToInteger);
    f.field.addPolicy(PolicyNumber);
    f.field.setText("abc");
    QVERIFY(f.showsIcon());
    const QSignalSpy changes(&f.field, &QLineEdit::textChanged);
    f.field.applyModifingPolicies();
    QCOMPARE(f.field.text(), QString("0"));
    QCOMPARE(changes.count(), 1);
    QVERIFY(!f.showsIcon());
}

MESHVANE_QTEST_MAIN(tst_LineEditCustom)
#include "tst_LineEditCustom.moc"
