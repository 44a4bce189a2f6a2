#include "tests/support/qt/QtTestMain.h"
#include "tests/widgets/FieldLists.h"
#include "tests/widgets/FieldUnderTest.h"
#include "widgets/FieldChecks.h"
#include "widgets/LineEditCustom.h"

#include <QApplication>
#include <QMetaMethod>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleFactory>
#include <QtTest>

#include <memory>
#include <type_traits>

namespace {

const QString numberMessage = "<b>X Scale</b> field can only contain a number value.";
const QString zeroMessage = "<b>X Scale</b> field contains invalid value \"0\"";

void makeScaleField(LineEditCustom &field)
{
    field.setFieldName("X Scale", true);
    field.addPolicy(PolicyInvalidValues);
    field.addPolicy(PolicyNumber);
    field.addInvalidValue(0, false);
}

QImage scaledIcon(const QString &resource, int height)
{
    return QPixmap(resource).scaled(20, height, Qt::KeepAspectRatio, Qt::FastTransformation).toImage();
}

int frameOf(const LineEditCustom &field)
{
    return field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &field);
}

QString paddingStyleSheet(const FieldUnderTest &f, int frame)
{
    const int padding = f.icon->sizeHint().width() + frame + 1;
    return "QLineEdit { padding-right: " + QString::number(padding) + "px; } ";
}

QSize leastSize(FieldUnderTest &f, int frame)
{
    // The size hints as they were before the text margins were widened.
    QLineEdit reference(&f.host);
    reference.setStyleSheet(f.field.styleSheet());
    const QSize hint = reference.minimumSizeHint();
    const int height = f.icon->sizeHint().height() + 2 * frame + 2;
    return {qMax(hint.width(), height), qMax(hint.height(), height)};
}

QPoint iconPlace(const LineEditCustom &field, const QLabel &icon, int frame)
{
    const QSize size = icon.sizeHint();
    return {field.rect().right() - frame - size.width(), (field.rect().bottom() - size.height()) / 2};
}

QPoint iconPlace(const LineEditCustom &field, const QLabel &icon)
{
    return iconPlace(field, icon, frameOf(field));
}

// While it lives, frames are seven pixels wide.
class WideFrames {
public:
    WideFrames() { QApplication::setStyle(new Style); }
    ~WideFrames() { QApplication::setStyle(QStyleFactory::create("fusion")); }
    WideFrames(const WideFrames &) = delete;
    WideFrames &operator=(const WideFrames &) = delete;

private:
    class Style : public QProxyStyle {
    public:
        Style()
            : QProxyStyle("fusion")
        {}
        int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override
        {
            return metric == PM_DefaultFrameWidth ? 7 : QProxyStyle::pixelMetric(metric, option, widget);
        }
    };
};

// While it lives, labels have a large font.
class LargeLabels {
public:
    LargeLabels()
    {
        QFont large = m_plain;
        large.setPointSize(60);
        QApplication::setFont(large, "QLabel");
    }
    ~LargeLabels() { QApplication::setFont(m_plain, "QLabel"); }
    LargeLabels(const LargeLabels &) = delete;
    LargeLabels &operator=(const LargeLabels &) = delete;

private:
    const QFont m_plain = QApplication::font("QLabel");
};

// The field follows its size and leaves every other event to the line edit.
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

// A field that warns by itself.
class WarningField : public LineEditCustom {
public:
    using LineEditCustom::LineEditCustom;
    void warn(const QString &message) { warnings << message; }
};

class ResizeCounter : public QObject {
public:
    int resizes = 0;
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            ++resizes;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class tst_LineEditCustom : public QObject {
    Q_OBJECT

private slots:
    void metaObjectHasTwoSlotsInOrderAndNothingElse();
    void slotsAreConnectedByTheirNames();
    void policyCodesAreFixed();
    void policiesAreKeptAsDecimalTextsInTheOrderTheyCame();
    void everyPolicyButOneCanBeAdded();
    void everyCheckOfTheTableCanBeAdded();
    void invalidValuesAreKeptAsDecimalTextsEvenTwice();

    void newFieldIsEmptyAndShowsNoIcon();
    void newFieldHasItsStyleSheets();
    void newFieldHasItsMinimumSize();
    void iconHeightBoundsTheWidthToo();
    void frameWidthIsThatOfTheStyle();
    void newFieldKeepsTwelvePixelsAtItsRight();
    void iconHasTheArrowCursor();

    void fieldWithoutPoliciesIsAlwaysClean();
    void everyTextChangeStartsACheckRun();
    void typingShowsAndHidesTheIcon();
    void oneMessageHasNoBreak();
    void twoMessagesHaveABreakEach();
    void errorTextEndsEveryMessageWithABreak();
    void errorTextRefreshesTheIcon();
    void failingRunLeavesTheToolTipOfTheFieldAlone();
    void cleanRunEmptiesTheToolTipOfTheField();

    void errorIconIsScaledIntoTwentyByLabelHeight_data();
    void errorIconIsScaledIntoTwentyByLabelHeight();
    void iconStandsAtTheRightEnd_data();
    void iconStandsAtTheRightEnd();
    void resizingMovesAHiddenIconToo();
    void resizingNeverResizesTheIcon();

    void warningsAreShownWithTheirOwnIcon();
    void errorsHideWarnings();
    void warningsAreNoErrorText();
    void warningsOutliveADisabledRun();
    void warningKeepsTheRightToTheOwnName();

    void disabledRunDropsMessagesAndIcon();
    void hiddenRunDropsMessagesAndIcon();
    void fieldOfAHiddenHostIsChecked();
    void parentlessFieldThatWasNeverShownCountsAsHidden();
    void disablingAloneKeepsTheIcon();
    void hidingAloneKeepsTheIcon();
    void errorTextOfADisabledFieldIsEmptyAndChangesNothing();
    void errorTextOfAHiddenFieldEmptiesTheMessages();
    void disabledRunLeavesTheToolTipOfTheFieldAlone();

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

void tst_LineEditCustom::policiesAreKeptAsDecimalTextsInTheOrderTheyCame()
{
    FieldUnderTest f;
    QCOMPARE(policiesOf(f.field), QStringList());
    for (const int code : {PolicyMaximum, PolicyNumber, PolicyInvalidValues, PolicyNumber, PolicyMaximum})
        f.field.addPolicy(code);
    QCOMPARE(policiesOf(f.field), QStringList({"13", "1", "6"}));
    for (const int refused : {int(PolicyKeepFullPath), 14, -1, 1000})
        f.field.addPolicy(refused);
    QCOMPARE(policiesOf(f.field), QStringList({"13", "1", "6"}));
    f.field.addPolicy(PolicyNone);
    QCOMPARE(policiesOf(f.field), QStringList());
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

void tst_LineEditCustom::newFieldHasItsStyleSheets()
{
    FieldUnderTest f;
    QCOMPARE(f.icon->styleSheet(), QString("QLabel { border: none; padding: 0px; }"));
    QCOMPARE(f.field.styleSheet(), paddingStyleSheet(f, frameOf(f.field)));
}

void tst_LineEditCustom::newFieldHasItsMinimumSize()
{
    FieldUnderTest f;
    QCOMPARE(f.field.minimumSize(), leastSize(f, frameOf(f.field)));
}

void tst_LineEditCustom::iconHeightBoundsTheWidthToo()
{
    const LargeLabels labels;
    FieldUnderTest f;
    const int height = f.icon->sizeHint().height() + 2 * frameOf(f.field) + 2;
    QVERIFY(height > f.field.minimumSizeHint().width());
    QCOMPARE(f.field.minimumSize(), QSize(height, height));
}

void tst_LineEditCustom::frameWidthIsThatOfTheStyle()
{
    const WideFrames frames;
    const LargeLabels labels; // so that the least size is the icon's, not the text's
    FieldUnderTest f;
    QCOMPARE(frameOf(f.field), 7);
    QCOMPARE(f.field.styleSheet(), paddingStyleSheet(f, 7));
    QCOMPARE(f.field.minimumSize(), leastSize(f, 7));
    makeScaleField(f.field);
    f.field.resize(200, 150);
    f.field.setText("abc");
    QCOMPARE(f.icon->pos(), iconPlace(f.field, *f.icon, 7));
}

void tst_LineEditCustom::newFieldKeepsTwelvePixelsAtItsRight()
{
    FieldUnderTest f;
    const QMargins plain = QLineEdit().textMargins();
    QCOMPARE(f.field.textMargins(), QMargins(plain.left(), plain.top(), 12, plain.bottom()));
}

void tst_LineEditCustom::iconHasTheArrowCursor()
{
    FieldUnderTest f;
    QVERIFY(f.icon->testAttribute(Qt::WA_SetCursor));
    QCOMPARE(f.icon->cursor().shape(), Qt::ArrowCursor);
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

void tst_LineEditCustom::everyTextChangeStartsACheckRun()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    QVERIFY(!f.showsIcon());
    f.field.setText("abc");
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), numberMessage);
    f.field.setText("0");
    QCOMPARE(f.icon->toolTip(), zeroMessage);
    f.field.setText("2");
    QVERIFY(!f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString());
}

void tst_LineEditCustom::typingShowsAndHidesTheIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    QTest::keyClicks(&f.field, "1x");
    QVERIFY(f.icon->isVisible());
    QCOMPARE(f.icon->toolTip(), numberMessage);
    QTest::keyClick(&f.field, Qt::Key_Backspace);
    QCOMPARE(f.field.text(), QString("1"));
    QVERIFY(!f.icon->isVisible());
    QTest::keyClick(&f.field, Qt::Key_Backspace);
    QVERIFY(!f.icon->isVisible());
    QTest::keyClicks(&f.field, "0");
    QVERIFY(f.icon->isVisible());
    QCOMPARE(f.icon->toolTip(), zeroMessage);
    QTest::keyClicks(&f.field, ".5");
    QVERIFY(!f.icon->isVisible());
}

void tst_LineEditCustom::oneMessageHasNoBreak()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    QCOMPARE(f.icon->toolTip(), QString("<b>X Scale</b> field can only contain a number value."));
}

void tst_LineEditCustom::twoMessagesHaveABreakEach()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.addPolicy(PolicyInvalidCharacters);
    f.field.setInvalidCharacters({"b"});
    f.field.setText("abc");
    QCOMPARE(f.icon->toolTip(), QString("<b>X Scale</b> field can only contain a number value.<br>"
                                        "<b>X Scale</b> field contains invalid character: b<br>"));
}

void tst_LineEditCustom::errorTextEndsEveryMessageWithABreak()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    QCOMPARE(f.field.errorText(), numberMessage + "<br>");
    f.field.addPolicy(PolicyInvalidCharacters);
    f.field.setInvalidCharacters({"b"});
    QCOMPARE(f.field.errorText(),
             numberMessage + "<br><b>X Scale</b> field contains invalid character: b<br>");
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
    QCOMPARE(f.icon->toolTip(), numberMessage);
}

void tst_LineEditCustom::failingRunLeavesTheToolTipOfTheFieldAlone()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setToolTip("own");
    f.field.setText("abc");
    QCOMPARE(f.field.toolTip(), QString("own"));
}

void tst_LineEditCustom::cleanRunEmptiesTheToolTipOfTheField()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setToolTip("own");
    f.field.setText("5");
    QCOMPARE(f.field.toolTip(), QString());
}

void tst_LineEditCustom::errorIconIsScaledIntoTwentyByLabelHeight_data()
{
    QTest::addColumn<int>("labelHeight");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("lower than wide") << 9 << QSize(9, 9);
    QTest::newRow("as high as wide") << 20 << QSize(20, 20);
    QTest::newRow("higher than wide") << 64 << QSize(20, 20);
}

void tst_LineEditCustom::errorIconIsScaledIntoTwentyByLabelHeight()
{
    QFETCH(int, labelHeight);
    QFETCH(QSize, expected);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.icon->resize(70, labelHeight);
    f.field.setText("abc");
    const QPixmap shown = f.icon->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.size(), expected);
    QCOMPARE(shown.toImage(), scaledIcon(":/pixmaps/dialog-error22x22.png", labelHeight));
    QVERIFY(shown.toImage() != scaledIcon(":/pixmaps/dialog-warning22x22.png", labelHeight));
    QCOMPARE(f.icon->size(), QSize(70, labelHeight));
}

void tst_LineEditCustom::iconStandsAtTheRightEnd_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("usual") << QSize(140, 26);
    QTest::newRow("odd") << QSize(141, 27);
    QTest::newRow("high") << QSize(80, 90);
    QTest::newRow("lower than the icon, even difference") << QSize(60, 5);
    QTest::newRow("lower than the icon, odd difference") << QSize(60, 6);
    QTest::newRow("narrower than the icon") << QSize(7, 30);
}

void tst_LineEditCustom::iconStandsAtTheRightEnd()
{
    QFETCH(QSize, size);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setMinimumSize(0, 0);
    f.field.resize(size);
    f.field.setText("abc");
    QCOMPARE(f.icon->pos(), iconPlace(f.field, *f.icon));
    f.host.resize(400, 200);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    f.field.resize(size + QSize(3, 5));
    QCOMPARE(f.icon->pos(), iconPlace(f.field, *f.icon));
    f.field.resize(size);
    QCOMPARE(f.icon->pos(), iconPlace(f.field, *f.icon));
}

void tst_LineEditCustom::resizingMovesAHiddenIconToo()
{
    FieldUnderTest f;
    f.host.resize(400, 200);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    f.field.resize(200, 40);
    const QPoint before = f.icon->pos();
    QCOMPARE(before, iconPlace(f.field, *f.icon));
    f.field.resize(300, 60);
    QVERIFY(!f.showsIcon());
    QVERIFY(f.icon->pos() != before);
    QCOMPARE(f.icon->pos(), iconPlace(f.field, *f.icon));
}

void tst_LineEditCustom::resizingNeverResizesTheIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.host.resize(400, 200);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    f.field.setText("abc");
    const QSize before = f.icon->size();
    ResizeCounter counter;
    f.icon->installEventFilter(&counter);
    for (int step = 0; step < 40; ++step)
        f.field.resize(100 + 5 * step, 30 + step);
    QCOMPARE(counter.resizes, 0);
    QCOMPARE(f.icon->size(), before);
}

void tst_LineEditCustom::warningsAreShownWithTheirOwnIcon()
{
    QWidget host;
    WarningField field(&host);
    const QLabel *icon = field.findChild<QLabel *>();
    field.setToolTip("own");
    field.warn("first");
    field.warn("first");
    field.applyLineEditPolicy();
    QVERIFY(!icon->isHidden());
    QCOMPARE(icon->toolTip(), QString("first"));
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).toImage(),
             scaledIcon(":/pixmaps/dialog-warning22x22.png", icon->height()));
    QCOMPARE(icon->pos(), iconPlace(field, *icon));
    QCOMPARE(field.toolTip(), QString());
    field.warn("second");
    field.setText("x");
    QCOMPARE(icon->toolTip(), QString("first<br>second<br>"));
}

void tst_LineEditCustom::errorsHideWarnings()
{
    QWidget host;
    WarningField field(&host);
    const QLabel *icon = field.findChild<QLabel *>();
    makeScaleField(field);
    field.warn("warning");
    field.setText("abc");
    QCOMPARE(icon->toolTip(), numberMessage);
    field.setText("1");
    QVERIFY(!icon->isHidden());
    QCOMPARE(icon->toolTip(), QString("warning"));
}

void tst_LineEditCustom::warningsAreNoErrorText()
{
    QWidget host;
    WarningField field(&host);
    field.warn("warning");
    QCOMPARE(field.errorText(), QString());
}

void tst_LineEditCustom::warningsOutliveADisabledRun()
{
    QWidget host;
    WarningField field(&host);
    const QLabel *icon = field.findChild<QLabel *>();
    field.warn("warning");
    field.setEnabled(false);
    field.applyLineEditPolicy();
    QVERIFY(icon->isHidden());
    field.setEnabled(true);
    field.applyLineEditPolicy();
    QCOMPARE(icon->toolTip(), QString("warning"));
}

void tst_LineEditCustom::warningKeepsTheRightToTheOwnName()
{
    QWidget host;
    WarningField field(&host);
    field.addPolicy(PolicyUniqueName);
    field.setUsedNames({"a"});
    field.warn("warning");
    field.setText("b");
    field.setText("a");
    // Only a run without errors and warnings would have made "a" a used name like any other.
    QCOMPARE(field.errorText(), QString());
}

void tst_LineEditCustom::disabledRunDropsMessagesAndIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    f.field.setEnabled(false);
    f.field.applyLineEditPolicy();
    QVERIFY(!f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString());
    f.field.setText("");
    f.field.setEnabled(true);
    // An empty text would leave a number message standing; so there was none.
    QCOMPARE(f.field.errorText(), QString());
}

void tst_LineEditCustom::hiddenRunDropsMessagesAndIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.host.show();
    f.field.setText("abc");
    f.field.hide();
    f.field.applyLineEditPolicy();
    QVERIFY(!f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString());
    f.field.setText("");
    f.field.show();
    QCOMPARE(f.field.errorText(), QString());
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
    QCOMPARE(f.field.errorText(), numberMessage + "<br>");
}

void tst_LineEditCustom::parentlessFieldThatWasNeverShownCountsAsHidden()
{
    LineEditCustom field(nullptr);
    makeScaleField(field);
    field.setText("abc");
    QCOMPARE(field.errorText(), QString());
    field.show();
    QCOMPARE(field.errorText(), numberMessage + "<br>");
}

void tst_LineEditCustom::disablingAloneKeepsTheIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    f.field.setEnabled(false);
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), numberMessage);
}

void tst_LineEditCustom::hidingAloneKeepsTheIcon()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setText("abc");
    f.field.hide();
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), numberMessage);
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
    QCOMPARE(f.icon->toolTip(), numberMessage);
    f.field.setEnabled(true);
    // No check is left that could have made the message anew.
    QCOMPARE(f.field.errorText(), numberMessage + "<br>");
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

void tst_LineEditCustom::disabledRunLeavesTheToolTipOfTheFieldAlone()
{
    FieldUnderTest f;
    f.field.setToolTip("own");
    f.field.setEnabled(false);
    f.field.setText("abc");
    QCOMPARE(f.field.toolTip(), QString("own"));
}

void tst_LineEditCustom::rounding_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("rounded");
    QTest::newRow("half goes up") << "2.5"
                                  << "3";
    QTest::newRow("negative half goes down") << "-2.5"
                                             << "-3";
    QTest::newRow("negative half below one") << "-0.5"
                                             << "-1";
    QTest::newRow("below half") << "2.49"
                                << "2";
    QTest::newRow("negative below half") << "-0.4"
                                         << "0";
    QTest::newRow("only the first decimal counts") << "2.4999999"
                                                   << "3";
    QTest::newRow("second decimal is ignored") << "1.09"
                                               << "1";
    QTest::newRow("carry") << "9.5"
                           << "10";
    QTest::newRow("integer") << "7"
                             << "7";
    QTest::newRow("negative integer") << "-7"
                                      << "-7";
    QTest::newRow("no number") << "abc"
                               << "0";
    QTest::newRow("seven digits keep the first") << "1234567"
                                                 << "1";
    QTest::newRow("seven digits, first decimal above half") << "1734567"
                                                            << "2";
    QTest::newRow("exponent is dropped") << "0.000015"
                                         << "2";
    QTest::newRow("negative exponent form") << "-0.000015"
                                            << "-2";
    QTest::newRow("exponent form without a point") << "1000000"
                                                   << "0";
    QTest::newRow("small exponent form without a point") << "0.00001"
                                                         << "0";
    QTest::newRow("six digits hide the decimal") << "123456.7"
                                                 << "123457";
    QTest::newRow("blanks around") << " 2.5 "
                                   << "3";
    QTest::newRow("blank only") << " "
                                << "0";
    QTest::newRow("infinite") << "inf"
                              << "0";
    QTest::newRow("out of range") << "1e400"
                                  << "0";
    QTest::newRow("not a number") << "nan"
                                  << "0";
    QTest::newRow("comma") << "2,5"
                           << "0";
    QTest::newRow("empty stays empty") << ""
                                       << "";
}

void tst_LineEditCustom::rounding()
{
    QFETCH(QString, text);
    QFETCH(QString, rounded);
    FieldUnderTest f;
    f.field.addPolicy(PolicyRoundToInteger);
    f.field.setText(text);
    QCOMPARE(f.field.text(), text);
    f.field.applyModifingPolicies();
    QCOMPARE(f.field.text(), rounded);
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
