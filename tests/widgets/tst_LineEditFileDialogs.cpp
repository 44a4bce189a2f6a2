// The file dialogs of a field: what they ask for, and what part of the answer goes into the field.
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/support/qt/WorkingFolder.h"
#include "tests/widgets/FieldUnderTest.h"

#include <QDir>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {

const QString filter = "STL files (*.stl *.Stl *.STL *.stl2d);;All files (*.*)";

void open(LineEditCustom &field, const QString &caption = "Open Input File")
{
    field.browseOpenFile(filter, caption);
}

void save(LineEditCustom &field, const QString &caption = "stl", const QString &suffix = ".stl")
{
    field.browseSaveFile(suffix, filter, caption);
}

} // namespace

class tst_LineEditFileDialogs : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatTheDialogsAskFor_data();
    void whatTheDialogsAskFor();
    void captionIsMadeFromTheFieldName_data();
    void captionIsMadeFromTheFieldName();

    void chosenFile_data();
    void chosenFile();
    void suffix_data();
    void suffix();
    void existingFileCanBeChosenForSaving();
    void currentDirectoryReachedByAnotherPathGivesTheBareName();
    void refusedPolicyForFullPathsChangesNothing();

    void cancelledDialogPutsTheTextBack_data();
    void cancelledDialogPutsTheTextBack();
    void choiceStartsACheckRun();

private:
    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
};

void tst_LineEditFileDialogs::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m_folder->makeFolder("here/below");
    m_folder->makeFolder("there");
    for (const QString name : {"here/in.stl", "here/below/in.stl", "there/in.stl"})
        m_folder->write(name, "x");
    QDir::setCurrent(m_folder->path("here"));
}

void tst_LineEditFileDialogs::cleanup()
{
    m_boxes.reset();
    m_folder.reset();
}

void tst_LineEditFileDialogs::whatTheDialogsAskFor_data()
{
    QTest::addColumn<bool>("saves");
    QTest::newRow("open: an existing file") << false;
    QTest::newRow("save: any file") << true;
}

void tst_LineEditFileDialogs::whatTheDialogsAskFor()
{
    QFETCH(bool, saves);
    FieldUnderTest f;
    FileDialogDriver driver("");
    saves ? save(f.field) : open(f.field);
    QCOMPARE(driver.dialogs().size(), 1);
    const ShownFileDialog &dialog = driver.dialogs().first();
    QCOMPARE(dialog.caption, QString(saves ? "stl" : "Open Input File"));
    QCOMPARE(dialog.acceptMode, saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    QCOMPARE(dialog.fileMode, saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    QCOMPARE(dialog.directory, m_folder->path("here"));
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.selectedNameFilter, QString("STL files (*.stl *.Stl *.STL *.stl2d)"));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.defaultSuffix, QString());
    QCOMPARE(dialog.options, QFileDialog::Options());
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(&f.field));
    QVERIFY(dialog.modal);
}

const struct {
    const char *name;
    QString fieldName;
    bool bold;
    QString caption;
} captions[] = {
    {"bold name", "Stl Output File", true, "Stl Output File Save As"},
    {"name without mark-up", "Stl Output File", false, " Save As"},
    {"no name", "", false, " Save As"},
    {"empty bold name", "", true, " Save As"},
    {"white space is simplified", "Stl \n  Output\tFile", true, "Stl Output File Save As"},
    {"blanks within the mark-up stay", " A ", true, " A  Save As"},
    {"nested mark-up", "A <i>B</i> C", true, "A B C Save As"},
    {"entity", "A &lt; B", true, "A < B Save As"},
    {"comment is left out", "A<!-- x -->B", true, "AB Save As"},
};

void tst_LineEditFileDialogs::captionIsMadeFromTheFieldName_data() { addRows(captions); }

void tst_LineEditFileDialogs::captionIsMadeFromTheFieldName()
{
    const auto &row = currentRow(captions);
    FieldUnderTest f;
    f.field.setFieldName(row.fieldName, row.bold);
    FileDialogDriver driver("");
    save(f.field, "");
    open(f.field, QString());
    QCOMPARE(driver.dialogs().size(), 2);
    QCOMPARE(driver.dialogs().at(0).caption, row.caption);
    QCOMPARE(driver.dialogs().at(1).caption, row.caption);
}

void tst_LineEditFileDialogs::chosenFile_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("bareName");
    QTest::newRow("in the current directory") << "here/in.stl" << true;
    QTest::newRow("beside the current directory") << "there/in.stl" << false;
    QTest::newRow("below the current directory") << "here/below/in.stl" << false;
}

void tst_LineEditFileDialogs::chosenFile()
{
    QFETCH(QString, chosen);
    QFETCH(bool, bareName);
    const QString expected = bareName ? m_folder->enteredFor("in.stl", "here") : m_folder->path(chosen);
    FieldUnderTest f;
    f.field.setText("before");
    FileDialogDriver driver(m_folder->path(chosen));
    open(f.field);
    QCOMPARE(f.field.text(), expected);
    f.field.setText("before");
    save(f.field);
    QCOMPARE(f.field.text(), expected);
    QCOMPARE(driver.dialogs().size(), 2);
}

const struct {
    const char *name;
    QString suffix;
    QString chosen;
    QString expected;
} suffixes[] = {
    {"missing", ".stl", "out", "out.stl"},
    {"present", ".stl", "out.stl", "out.stl"},
    {"case counts", ".stl", "out.STL", "out.STL.stl"},
    {"another one", ".stl", "out.txt", "out.txt.stl"},
    {"without its point", ".stl", "outstl", "outstl.stl"},
    {"name with a relative folder", ".stl", "below/out", "@/below/out.stl"},
    {"compared without surrounding blanks", " .stl ", "out.stl", "out.stl"},
    {"appended with its blanks", " .stl ", "out", "out .stl "},
};

void tst_LineEditFileDialogs::suffix_data() { addRows(suffixes); }

void tst_LineEditFileDialogs::suffix()
{
    const auto &row = currentRow(suffixes);
    FieldUnderTest f;
    FileDialogDriver driver(row.chosen);
    save(f.field, "stl", row.suffix);
    const QString expected = row.expected.startsWith('@')
                                 ? QString(row.expected).replace('@', m_folder->path("here"))
                                 : m_folder->enteredFor(row.expected, "here");
    QCOMPARE(f.field.text(), expected);
}

void tst_LineEditFileDialogs::existingFileCanBeChosenForSaving()
{
    FieldUnderTest f;
    FileDialogDriver driver("in.stl");
    save(f.field);
    QCOMPARE(m_boxes->boxes().size(), 1); // the dialog's own: replace the file?
    QCOMPARE(f.field.text(), m_folder->enteredFor("in.stl", "here"));
    QCOMPARE(m_folder->read("here/in.stl"), QByteArray("x"));
}

void tst_LineEditFileDialogs::currentDirectoryReachedByAnotherPathGivesTheBareName()
{
#ifdef Q_OS_WIN
    QSKIP("links to folders are no folders here");
#endif
    m_folder->link("alias", m_folder->path("here"));
    FieldUnderTest f;
    FileDialogDriver driver(m_folder->path("alias/in.stl"));
    open(f.field);
    QCOMPARE(f.field.text(), m_folder->enteredFor("in.stl", "here"));
}

void tst_LineEditFileDialogs::refusedPolicyForFullPathsChangesNothing()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyKeepFullPath);
    FileDialogDriver driver(m_folder->path("here/in.stl"));
    open(f.field);
    QCOMPARE(f.field.text(), m_folder->enteredFor("in.stl", "here"));
}

void tst_LineEditFileDialogs::cancelledDialogPutsTheTextBack_data()
{
    QTest::addColumn<bool>("saves");
    QTest::newRow("open") << false;
    QTest::newRow("save") << true;
}

void tst_LineEditFileDialogs::cancelledDialogPutsTheTextBack()
{
    QFETCH(bool, saves);
    FieldUnderTest f;
    f.field.setText(" kept, no suffix");
    const QSignalSpy changes(&f.field, &QLineEdit::textChanged);
    FileDialogDriver driver("");
    QTimer::singleShot(0, &f.field, [&f] { f.field.setText("meanwhile"); });
    saves ? save(f.field) : open(f.field);
    QCOMPARE(driver.dialogs().size(), 1);
    QCOMPARE(changes, QList<QVariantList>({{"meanwhile"}, {" kept, no suffix"}}));
    QCOMPARE(f.field.text(), QString(" kept, no suffix"));
}

void tst_LineEditFileDialogs::choiceStartsACheckRun()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyFileExists);
    f.field.setText("missing.stl");
    QVERIFY(f.showsIcon());
    FileDialogDriver driver(m_folder->path("here/in.stl"));
    const QSignalSpy changes(&f.field, &QLineEdit::textChanged);
    open(f.field);
    QCOMPARE(changes.count(), 1);
    QVERIFY(!f.showsIcon());
}

MESHVANE_QTEST_MAIN(tst_LineEditFileDialogs)
#include "tst_LineEditFileDialogs.moc"
