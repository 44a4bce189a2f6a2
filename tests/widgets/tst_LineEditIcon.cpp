// The icon of the field: its tool tip, picture, size and place, and the room that the field leaves for it.
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/widgets/FieldUnderTest.h"

#include <QApplication>
#include <QProxyStyle>
#include <QStyle>
#include <QStyleFactory>
#include <QtTest>

namespace {

QImage scaledIcon(const QString &resource, int height)
{
    return QPixmap(resource).scaled(20, height, Qt::KeepAspectRatio, Qt::FastTransformation).toImage();
}

int frameOf(const LineEditCustom &field)
{
    return field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &field);
}

QString paddingStyleSheet(const FieldUnderTest &f)
{
    const int padding = f.icon->sizeHint().width() + frameOf(f.field) + 1;
    return "QLineEdit { padding-right: " + QString::number(padding) + "px; } ";
}

int leastHeight(const FieldUnderTest &f) { return f.icon->sizeHint().height() + 2 * frameOf(f.field) + 2; }

QSize leastSize(FieldUnderTest &f)
{
    // The size hint as it was before the text margins were widened.
    QLineEdit reference(&f.host);
    reference.setStyleSheet(f.field.styleSheet());
    const QSize hint = reference.minimumSizeHint();
    return {qMax(hint.width(), leastHeight(f)), qMax(hint.height(), leastHeight(f))};
}

template <typename Field>
QPoint iconPlace(const HostedField<Field> &f)
{
    const QSize size = f.icon->sizeHint();
    const QRect rect = f.field.rect();
    return {rect.right() - frameOf(f.field) - size.width(), (rect.bottom() - size.height()) / 2};
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

// A field that warns.
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

class tst_LineEditIcon : public QObject {
    Q_OBJECT

private slots:
    void newFieldHasItsTwoStyleSheets();
    void newFieldHasRoomForTextAndIcon();
    void iconHeightIsALowerBoundForTheWidthToo();
    void frameWidthComesFromTheStyle();
    void newFieldHasARightMarginOfTwelvePixels();
    void iconHasTheArrowCursor();
    void eachOfTwoMessagesIsFollowedByALineBreak();
    void errorIconFitsIntoTwentyPixelsByTheLabelsHeight_data();
    void errorIconFitsIntoTwentyPixelsByTheLabelsHeight();
    void iconIsAtTheRightEnd_data();
    void iconIsAtTheRightEnd();
    void resizingMovesAHiddenIconToo();
    void resizingNeverResizesTheIcon();
    void warningsHaveAnIconOfTheirOwn();
    void errorsHideWarnings();
    void warningsAreNotPartOfTheErrorText();
    void warningsOutliveADisabledRun();
    void warningKeepsTheRightToTheOwnName();
};

void tst_LineEditIcon::newFieldHasItsTwoStyleSheets()
{
    FieldUnderTest f;
    QCOMPARE(f.icon->styleSheet(), QString("QLabel { border: none; padding: 0px; }"));
    QCOMPARE(f.field.styleSheet(), paddingStyleSheet(f));
}

void tst_LineEditIcon::newFieldHasRoomForTextAndIcon()
{
    FieldUnderTest f;
    QCOMPARE(f.field.minimumSize(), leastSize(f));
}

void tst_LineEditIcon::iconHeightIsALowerBoundForTheWidthToo()
{
    const LargeLabels labels;
    FieldUnderTest f;
#ifdef Q_OS_WIN
    if (leastHeight(f) <= f.field.minimumSizeHint().width())
        QSKIP("the platform \"offscreen\" has no such large letters here");
#endif
    QVERIFY(leastHeight(f) > f.field.minimumSizeHint().width());
    QCOMPARE(f.field.minimumSize(), QSize(leastHeight(f), leastHeight(f)));
}

void tst_LineEditIcon::frameWidthComesFromTheStyle()
{
    const WideFrames frames;
    const LargeLabels labels; // so that the icon sets the minimum size, not the text
    FieldUnderTest f;
    QCOMPARE(frameOf(f.field), 7);
    QCOMPARE(f.field.styleSheet(), paddingStyleSheet(f));
    QCOMPARE(f.field.minimumSize(), leastSize(f));
    makeScaleField(f.field);
    f.field.resize(200, 150);
    f.field.setText("abc");
    QCOMPARE(f.icon->pos(), iconPlace(f));
}

void tst_LineEditIcon::newFieldHasARightMarginOfTwelvePixels()
{
    FieldUnderTest f;
    const QMargins plain = QLineEdit().textMargins();
    QCOMPARE(f.field.textMargins(), QMargins(plain.left(), plain.top(), 12, plain.bottom()));
}

void tst_LineEditIcon::iconHasTheArrowCursor()
{
    FieldUnderTest f;
    QVERIFY(f.icon->testAttribute(Qt::WA_SetCursor));
    QCOMPARE(f.icon->cursor().shape(), Qt::ArrowCursor);
}

void tst_LineEditIcon::eachOfTwoMessagesIsFollowedByALineBreak()
{
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.addPolicy(PolicyInvalidCharacters);
    f.field.setInvalidCharacters({"b"});
    f.field.setText("abc");
    QCOMPARE(f.icon->toolTip(),
             scaleIsNoNumber + "<br><b>X Scale</b> field contains invalid character: b<br>");
}

void tst_LineEditIcon::errorIconFitsIntoTwentyPixelsByTheLabelsHeight_data()
{
    QTest::addColumn<int>("labelHeight");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("label lower than twenty") << 9 << QSize(9, 9);
    QTest::newRow("label of height twenty") << 20 << QSize(20, 20);
    QTest::newRow("label higher than twenty") << 64 << QSize(20, 20);
}

void tst_LineEditIcon::errorIconFitsIntoTwentyPixelsByTheLabelsHeight()
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

const struct {
    const char *name;
    QSize size;
} fieldSizes[] = {
    {"usual size", {140, 26}},
    {"odd width and height", {141, 27}},
    {"high", {80, 90}},
    {"lower than the icon, even difference", {60, 5}},
    {"lower than the icon, odd difference", {60, 6}},
    {"narrower than the icon", {7, 30}},
};

void tst_LineEditIcon::iconIsAtTheRightEnd_data() { addRows(fieldSizes); }

void tst_LineEditIcon::iconIsAtTheRightEnd()
{
    const auto &row = currentRow(fieldSizes);
    FieldUnderTest f;
    makeScaleField(f.field);
    f.field.setMinimumSize(0, 0);
    f.field.resize(row.size);
    f.field.setText("abc");
    QCOMPARE(f.icon->pos(), iconPlace(f));
    f.host.resize(400, 200);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    f.field.resize(row.size + QSize(3, 5));
    QCOMPARE(f.icon->pos(), iconPlace(f));
    f.field.resize(row.size);
    QCOMPARE(f.icon->pos(), iconPlace(f));
}

void tst_LineEditIcon::resizingMovesAHiddenIconToo()
{
    FieldUnderTest f;
    f.host.resize(400, 200);
    f.host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&f.host));
    f.field.resize(200, 40);
    const QPoint before = f.icon->pos();
    QCOMPARE(before, iconPlace(f));
    f.field.resize(300, 60);
    QVERIFY(!f.showsIcon());
    QVERIFY(f.icon->pos() != before);
    QCOMPARE(f.icon->pos(), iconPlace(f));
}

void tst_LineEditIcon::resizingNeverResizesTheIcon()
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

void tst_LineEditIcon::warningsHaveAnIconOfTheirOwn()
{
    HostedField<WarningField> f;
    f.field.setToolTip("own");
    f.field.warn("first");
    f.field.warn("first");
    f.field.applyLineEditPolicy();
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString("first"));
    QCOMPARE(f.icon->pixmap(Qt::ReturnByValue).toImage(),
             scaledIcon(":/pixmaps/dialog-warning22x22.png", f.icon->height()));
    QCOMPARE(f.icon->pos(), iconPlace(f));
    QCOMPARE(f.field.toolTip(), QString());
    f.field.warn("second");
    f.field.setText("x");
    QCOMPARE(f.icon->toolTip(), QString("first<br>second<br>"));
}

void tst_LineEditIcon::errorsHideWarnings()
{
    HostedField<WarningField> f;
    makeScaleField(f.field);
    f.field.warn("warning");
    f.field.setText("abc");
    QCOMPARE(f.icon->toolTip(), scaleIsNoNumber);
    f.field.setText("1");
    QVERIFY(f.showsIcon());
    QCOMPARE(f.icon->toolTip(), QString("warning"));
}

void tst_LineEditIcon::warningsAreNotPartOfTheErrorText()
{
    HostedField<WarningField> f;
    f.field.warn("warning");
    QCOMPARE(f.field.errorText(), QString());
}

void tst_LineEditIcon::warningsOutliveADisabledRun()
{
    HostedField<WarningField> f;
    f.field.warn("warning");
    f.field.setEnabled(false);
    f.field.applyLineEditPolicy();
    QVERIFY(!f.showsIcon());
    f.field.setEnabled(true);
    f.field.applyLineEditPolicy();
    QCOMPARE(f.icon->toolTip(), QString("warning"));
}

void tst_LineEditIcon::warningKeepsTheRightToTheOwnName()
{
    HostedField<WarningField> f;
    f.field.addPolicy(PolicyUniqueName);
    f.field.setUsedNames({"a"});
    f.field.warn("warning");
    f.field.setText("b");
    f.field.setText("a");
    // After a run without errors and warnings, "a" would have counted as taken.
    QCOMPARE(f.field.errorText(), QString());
}

MESHVANE_QTEST_MAIN(tst_LineEditIcon)
#include "tst_LineEditIcon.moc"
