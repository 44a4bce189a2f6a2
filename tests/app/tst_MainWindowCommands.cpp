// The commands of the window: menu actions, buttons and file dialogs.
#include "tests/app/WindowTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"

#include <QtTest>

namespace {

const QString emptyForm = "<b>Stl Input File</b> field is required to be filled.<br>"
                          "<b>Stl Output File</b> field is required to be filled.<br>";

const struct {
    const char *name;
    QString message;
} messageCases[] = {
    {"btnViewLog", "No log created yet."},
    {"fileViewLogAction", "No log created yet."},
    {"fileRunAction", emptyForm},
    {"actionAbout_Meshvane", "[About Meshvane] Meshvane version: 11.0.0.s001 <br>Quillmoret Release: 11.0.0"},
};

const struct {
    const char *name;
    const char *caption;
    QFileDialog::AcceptMode mode;
    const char *field;
} dialogCases[] = {
    {"fileOpenAction", "Open Input File", QFileDialog::AcceptOpen, "edtFileIn"},
    {"btnBrowseIn", "Open Input File", QFileDialog::AcceptOpen, "edtFileIn"},
    {"btnBrowseOut", "stl", QFileDialog::AcceptSave, "edtFileOut"},
};

const struct {
    const char *name;
    const char *chosen;
    const char *expected;
} suffixCases[] = {
    {"no suffix", "out", "out.stl"},
    {"the suffix", "out.stl", "out.stl"},
    {"the suffix in upper case", "out.STL", "out.STL.stl"},
};

} // namespace

class tst_MainWindowCommands : public WindowTest {
    Q_OBJECT

private slots:
    void commandShowsItsMessage_data() { addRows(messageCases); }
    void commandShowsItsMessage();
    void aboutBoxBelongsToTheWindow();
    void runButtonRuns();
    void resetButtonAndActionReset();
    void closeButtonAndExitActionCloseTheWindow();
    void unknownButtonClosesTheWindow();
    void slotsCanBeCalledByName();

    void fileDialog_data() { addRows(dialogCases); }
    void fileDialog();
    void chosenInputInTheCurrentFolderIsEnteredByName();
    void chosenOutputGetsItsSuffix_data() { addRows(suffixCases); }
    void chosenOutputGetsItsSuffix();

private:
    // Clicks the button or triggers the action of this name.
    void give(const QString &command) const
    {
        if (command.startsWith("btn"))
            m->button(command)->click();
        else
            m->action(command)->trigger();
    }
};

void tst_MainWindowCommands::commandShowsItsMessage()
{
    const auto &row = currentRow(messageCases);
    give(row.name);
    QCOMPARE(m_boxes->texts(), QStringList{row.message});
}

void tst_MainWindowCommands::aboutBoxBelongsToTheWindow()
{
    give("actionAbout_Meshvane");
    const ShownBox &box = m_boxes->boxes().constFirst();
    QCOMPARE(box.parent, static_cast<const QWidget *>(&m->window));
    QCOMPARE(box.icon, QMessageBox::NoIcon); // it shows the icon of the window instead
    QVERIFY(box.modal);
    QCOMPARE(box.buttonCount, 1);
}

void tst_MainWindowCommands::runButtonRuns()
{
    m->window.show();
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Apply), Qt::LeftButton);
    QCOMPARE(m_boxes->texts(), QStringList{emptyForm});
    QVERIFY(m->window.isVisible());
}

void tst_MainWindowCommands::resetButtonAndActionReset()
{
    m->window.show();
    m->window.statusBar()->showMessage("kept");
    m->enter("edtXScale", "5");
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Reset), Qt::LeftButton);
    QCOMPARE(m->text("edtXScale"), QString("1"));
    m->enter("edtYScale", "7");
    give("fileResetAction");
    QCOMPARE(m->text("edtYScale"), QString("1"));
    QCOMPARE(m->statusText(), QString("kept"));
    QCOMPARE(m_boxes->texts(), QStringList());
    QVERIFY(m->window.isVisible());
}

void tst_MainWindowCommands::closeButtonAndExitActionCloseTheWindow()
{
    m->window.show();
    QTest::mouseClick(m->standardButton(QDialogButtonBox::Close), Qt::LeftButton);
    QVERIFY(!m->window.isVisible());
    m->window.show();
    give("fileExitAction");
    QVERIFY(!m->window.isVisible());
    QCOMPARE(m_boxes->texts(), QStringList());
}

void tst_MainWindowCommands::unknownButtonClosesTheWindow()
{
    m->window.show();
    QPushButton stranger;
    QVERIFY(QMetaObject::invokeMethod(&m->window, "handleButtonBox", Q_ARG(QAbstractButton *, &stranger)));
    QVERIFY(!m->window.isVisible());
}

void tst_MainWindowCommands::slotsCanBeCalledByName()
{
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotChbRotateY", Q_ARG(bool, true)));
    QVERIFY(m->isEnabled("edtRotateY"));
    QVERIFY(!m->isTicked("chbRotateY"));
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotChbXSet0", Q_ARG(bool, true)));
    QVERIFY(!m->isEnabled("edtXOffsB"));
    m->tick("chbZSetL");
    QVERIFY(QMetaObject::invokeMethod(&m->window, "slotEdtZScale", Q_ARG(QString, "1.0")));
    QVERIFY(!m->isTicked("chbZSetL"));
    QVERIFY(QMetaObject::invokeMethod(&m->window, "handleButtonBox",
                                      Q_ARG(QAbstractButton *, m->standardButton(QDialogButtonBox::Apply))));
    QCOMPARE(m_boxes->texts(), QStringList{emptyForm});
}

// The dialog is cancelled, which leaves the text of the field alone.
void tst_MainWindowCommands::fileDialog()
{
    const auto &row = currentRow(dialogCases);
    m->enterFiles("in.stl", "out");
    const FileDialogDriver driver("");
    give(row.name);
    QCOMPARE(driver.dialogs().size(), 1);
    const ShownFileDialog &dialog = driver.dialogs().constFirst();
    QCOMPARE(dialog.caption, QString(row.caption));
    QCOMPARE(dialog.directory, m_folder->path());
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.acceptMode, row.mode);
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(m->field(row.field)));
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    QCOMPARE(m->text("edtFileOut"), QString("out"));
}

void tst_MainWindowCommands::chosenInputInTheCurrentFolderIsEnteredByName()
{
    m_folder->makeFolder("sub");
    m_folder->write("sub/in.stl", "x");
    const FileDialogDriver elsewhere(m_folder->path("sub/in.stl"));
    give("btnBrowseIn");
    QCOMPARE(m->text("edtFileIn"), m_folder->path("sub/in.stl"));
    const FileDialogDriver here(m_folder->path("in.stl"));
    give("fileOpenAction");
    QCOMPARE(m->text("edtFileIn"), m_folder->enteredFor("in.stl"));
    QCOMPARE(m->statusText(), QString("No input file selected"));
}

void tst_MainWindowCommands::chosenOutputGetsItsSuffix()
{
    const auto &row = currentRow(suffixCases);
    const FileDialogDriver driver(row.chosen);
    give("btnBrowseOut");
    QCOMPARE(m->text("edtFileOut"), m_folder->enteredFor(row.expected));
    QCOMPARE(m_folder->entries(), QStringList{"in.stl"});
}

MESHVANE_QTEST_MAIN(tst_MainWindowCommands)
#include "tst_MainWindowCommands.moc"
