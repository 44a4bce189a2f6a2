#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "transform/MeshvaneLog.h"
#include "transform/MeshvaneLogForm.h"

#include <QGridLayout>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpacerItem>
#include <QTextEdit>
#include <QTranslator>
#include <QtTest>

#include <functional>

namespace {

// Puts the context in front of every text.
class ContextTranslator : public QTranslator {
public:
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QLatin1String(context) + '/' + text;
    }
    bool isEmpty() const override { return false; }
};

QGridLayout *gridOf(const QDialog &dialog) { return qobject_cast<QGridLayout *>(dialog.layout()); }

QTextEdit *textOf(const QDialog &dialog) { return dialog.findChild<QTextEdit *>("txtLog"); }

QPushButton *exitOf(const QDialog &dialog) { return dialog.findChild<QPushButton *>("btnExit"); }

struct Cell {
    int row = -1;
    int column = -1;
    int rowSpan = -1;
    int columnSpan = -1;

    bool operator==(const Cell &other) const
    {
        return row == other.row && column == other.column && rowSpan == other.rowSpan &&
               columnSpan == other.columnSpan;
    }
};

Cell cellOf(const QGridLayout &grid, QWidget *widget)
{
    Cell cell;
    grid.getItemPosition(grid.indexOf(widget), &cell.row, &cell.column, &cell.rowSpan, &cell.columnSpan);
    return cell;
}

// Another dialog with the viewer's form, and a slot that connectSlotsByName finds.
class FormHost : public QDialog {
    Q_OBJECT

public:
    int clicks = 0;

private slots:
    void on_btnExit_clicked() { ++clicks; }
};

} // namespace

class tst_MeshvaneLog : public QObject {
    Q_OBJECT

private slots:
    void isADialogWithDefaultFlagsAndItsParent();
    void hasNameSizeAndTitle();
    void textSpansTheFirstRow();
    void textHasPointSize11AndCanBeEdited();
    void textHasTheFocusWhenTheViewerOpens();
    void exitButtonIsInTheMiddleOfTheSecondRow();
    void spacersTakeTheRestOfTheWidth();
    void textsAreTranslatedInTheContextMeshvaneLog();
    void closeClickedIsTheOnlyOwnMethod();
    void closeClickedAcceptsAndHides();
    void exitButtonAcceptsAndHides();
    void closingTheWindowRejects();
    void showsPlainOrRichText_data();
    void showsPlainOrRichText();
    void aSecondTextReplacesTheFirst();
    void ownsItsWidgets();
    void isDeletedWithItsParent();
    void formHasLayoutTextAndButtonInThisOrder();
    void formKeepsTheNameOfANamedDialog();
    void formConnectsSlotsByName();
};

void tst_MeshvaneLog::isADialogWithDefaultFlagsAndItsParent()
{
    QWidget parent;
    const MeshvaneLog dialog(&parent);
    const QDialog plain(&parent);
    QCOMPARE(dialog.parentWidget(), &parent);
    QCOMPARE(dialog.windowFlags(), plain.windowFlags());
    QVERIFY(!dialog.isModal());
    QVERIFY(!dialog.isVisible());
    QVERIFY(!dialog.testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(MeshvaneLog().parentWidget(), nullptr);
}

void tst_MeshvaneLog::hasNameSizeAndTitle()
{
    const MeshvaneLog dialog;
    QCOMPARE(dialog.objectName(), QString("MeshvaneLog"));
    QCOMPARE(dialog.size(), QSize(596, 349));
    QCOMPARE(dialog.windowTitle(), QString("Dialog"));
    QVERIFY(gridOf(dialog) != nullptr);
    QCOMPARE(gridOf(dialog)->objectName(), QString("gridLayout"));
    QCOMPARE(gridOf(dialog)->count(), 4);
    QCOMPARE(gridOf(dialog)->rowCount(), 2);
    QCOMPARE(gridOf(dialog)->columnCount(), 3);
}

void tst_MeshvaneLog::textSpansTheFirstRow()
{
    const MeshvaneLog dialog;
    QVERIFY((cellOf(*gridOf(dialog), textOf(dialog)) == Cell{0, 0, 1, 3}));
}

void tst_MeshvaneLog::textHasPointSize11AndCanBeEdited()
{
    MeshvaneLog dialog;
    QTextEdit *text = textOf(dialog);
    QCOMPARE(text->font().pointSize(), 11);
    QCOMPARE(text->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(text->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(text->sizePolicy().horizontalStretch(), 0);
    QCOMPARE(text->sizePolicy().verticalStretch(), 0);
    QVERIFY(!text->isReadOnly());
    dialog.setLogText("log");
    QTest::keyClicks(text, "my ");
    QCOMPARE(text->toPlainText(), QString("my log"));
}

void tst_MeshvaneLog::textHasTheFocusWhenTheViewerOpens()
{
    MeshvaneLog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.focusWidget(), textOf(dialog));
}

void tst_MeshvaneLog::exitButtonIsInTheMiddleOfTheSecondRow()
{
    const MeshvaneLog dialog;
    QCOMPARE(exitOf(dialog)->text(), QString("Exit"));
    QVERIFY((cellOf(*gridOf(dialog), exitOf(dialog)) == Cell{1, 1, 1, 1}));
}

void tst_MeshvaneLog::spacersTakeTheRestOfTheWidth()
{
    const MeshvaneLog dialog;
    for (const int column : {0, 2}) {
        QLayoutItem *item = gridOf(dialog)->itemAtPosition(1, column);
        QVERIFY(item != nullptr);
        QSpacerItem *spacer = item->spacerItem();
        QVERIFY(spacer != nullptr);
        QCOMPARE(spacer->sizeHint(), QSize(240, 20));
        QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    }
}

void tst_MeshvaneLog::textsAreTranslatedInTheContextMeshvaneLog()
{
    ContextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const MeshvaneLog dialog;
    QCOMPARE(dialog.windowTitle(), QString("MeshvaneLog/Dialog"));
    QCOMPARE(exitOf(dialog)->text(), QString("MeshvaneLog/Exit"));
}

void tst_MeshvaneLog::closeClickedIsTheOnlyOwnMethod()
{
    const QMetaObject &meta = MeshvaneLog::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodSignature(), QByteArray("closeClicked()"));
    QCOMPARE(method.methodType(), QMetaMethod::Slot);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
}

void tst_MeshvaneLog::closeClickedAcceptsAndHides()
{
    MeshvaneLog dialog;
    dialog.show();
    QVERIFY(dialog.isVisible());
    const QSignalSpy finished(&dialog, &QDialog::finished);
    QVERIFY(QMetaObject::invokeMethod(&dialog, "closeClicked"));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toInt(), 1);
}

void tst_MeshvaneLog::exitButtonAcceptsAndHides()
{
    MeshvaneLog dialog;
    dialog.show();
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    QTest::mouseClick(exitOf(dialog), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), 1);
    QCOMPARE(accepted.count(), 1);
}

void tst_MeshvaneLog::closingTheWindowRejects()
{
    MeshvaneLog dialog;
    dialog.show();
    dialog.close();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), 0);
}

struct ShownText {
    const char *name;
    const char *text;
    const char *shown;
};

constexpr ShownText shownTexts[] = {
    {"plain text", "a\n\n  b   c\n", "a\n\n  b   c\n"},
    {"rich text", "<b>bold</b> and <i>slanted</i>", "bold and slanted"},
    // The first line that is not empty decides; in a log it has no tags.
    {"tags after the first line of a log", "\n\n---- meshvane output ----\n\n<b>not bold</b>\n",
     "\n\n---- meshvane output ----\n\n<b>not bold</b>\n"},
    {"text beyond Latin-1", "\nGröße 模型\n", "\nGröße 模型\n"},
    {"nothing", "", ""},
};

void tst_MeshvaneLog::showsPlainOrRichText_data() { addRows(shownTexts); }

void tst_MeshvaneLog::showsPlainOrRichText()
{
    const auto &row = currentRow(shownTexts);
    MeshvaneLog dialog;
    dialog.setLogText(row.text);
    QCOMPARE(textOf(dialog)->toPlainText(), QString(row.shown));
}

void tst_MeshvaneLog::aSecondTextReplacesTheFirst()
{
    MeshvaneLog dialog;
    dialog.setLogText("first");
    dialog.setLogText("second");
    QCOMPARE(textOf(dialog)->toPlainText(), QString("second"));
}

void tst_MeshvaneLog::ownsItsWidgets()
{
    auto dialog = std::make_unique<MeshvaneLog>();
    const QPointer<QTextEdit> text = textOf(*dialog);
    const QPointer<QPushButton> button = exitOf(*dialog);
    const QPointer<QGridLayout> grid = gridOf(*dialog);
    QCOMPARE(text->parent(), dialog.get());
    QCOMPARE(button->parent(), dialog.get());
    QCOMPARE(grid->parent(), dialog.get());
    dialog.reset();
    QVERIFY(text.isNull());
    QVERIFY(button.isNull());
    QVERIFY(grid.isNull());
}

void tst_MeshvaneLog::isDeletedWithItsParent()
{
    auto parent = std::make_unique<QWidget>();
    const QPointer<MeshvaneLog> first = new MeshvaneLog(parent.get());
    const QPointer<MeshvaneLog> second = new MeshvaneLog(parent.get());
    parent.reset();
    QVERIFY(first.isNull());
    QVERIFY(second.isNull());
}

void tst_MeshvaneLog::formHasLayoutTextAndButtonInThisOrder()
{
    QDialog dialog;
    MeshvaneLogForm form;
    form.setupUi(&dialog);
    QCOMPARE(form.gridLayout, gridOf(dialog));
    QCOMPARE(form.txtLog, textOf(dialog));
    QCOMPARE(form.btnExit, exitOf(dialog));
    const std::less<const void *> before;
    QVERIFY(before(&form.gridLayout, &form.txtLog));
    QVERIFY(before(&form.txtLog, &form.btnExit));
    QCOMPARE(dialog.objectName(), QString("MeshvaneLog"));
}

void tst_MeshvaneLog::formKeepsTheNameOfANamedDialog()
{
    QDialog dialog;
    dialog.setObjectName("named");
    MeshvaneLogForm form;
    form.setupUi(&dialog);
    QCOMPARE(dialog.objectName(), QString("named"));
}

void tst_MeshvaneLog::formConnectsSlotsByName()
{
    FormHost host;
    MeshvaneLogForm form;
    form.setupUi(&host);
    form.btnExit->click();
    QCOMPARE(host.clicks, 1);
}

MESHVANE_QTEST_MAIN(tst_MeshvaneLog)

#include "tst_MeshvaneLog.moc"
