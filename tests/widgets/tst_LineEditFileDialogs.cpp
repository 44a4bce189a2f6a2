// The file dialogs of a field: what they ask, and what of the answer goes into the field.
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"
#include "tests/widgets/FieldUnderTest.h"

#include <QDir>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace {
const QString filter = "STL files (*.stl *.Stl *.STL *.stl2d);;All files (*.*)";
}

class tst_LineEditFileDialogs : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void openDialogAsksForAnExistingFile();
    void saveDialogAsksForAnyFile();
    void captionIsMadeFromTheFieldName_data();
    void captionIsMadeFromTheFieldName();

    void chosenFile_data();
    void chosenFile();
    void suffix_data();
    void suffix();
    void suffixIsComparedSimplifiedAndAppendedAsItIs();
    void existingFileCanBeChosenForSaving();
    void currentDirectoryReachedByAnotherPathGivesTheBareName();
    void refusedPolicyForFullPathsChangesNothing();

    void cancelledOpenKeepsTheText();
    void cancelledSaveKeepsTheText();
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

void tst_LineEditFileDialogs::openDialogAsksForAnExistingFile()
{
    FieldUnderTest f;
    FileDialogDriver driver("");
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(driver.dialogs().size(), 1);
    const ShownFileDialog &dialog = driver.dialogs().first();
    QCOMPARE(dialog.caption, QString("Open Input File"));
    QCOMPARE(dialog.directory, m_folder->path("here"));
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.selectedNameFilter, QString("STL files (*.stl *.Stl *.STL *.stl2d)"));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(dialog.fileMode, QFileDialog::ExistingFile);
    QCOMPARE(dialog.options, QFileDialog::Options());
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(&f.field));
    QVERIFY(dialog.modal);
}

void tst_LineEditFileDialogs::saveDialogAsksForAnyFile()
{
    FieldUnderTest f;
    FileDialogDriver driver("");
    f.field.browseSaveFile(".stl", filter, "stl");
    QCOMPARE(driver.dialogs().size(), 1);
    const ShownFileDialog &dialog = driver.dialogs().first();
    QCOMPARE(dialog.caption, QString("stl"));
    QCOMPARE(dialog.directory, m_folder->path("here"));
    QCOMPARE(dialog.nameFilters, QStringList({"STL files (*.stl *.Stl *.STL *.stl2d)", "All files (*.*)"}));
    QCOMPARE(dialog.proposedName, QString());
    QCOMPARE(dialog.defaultSuffix, QString());
    QCOMPARE(dialog.acceptMode, QFileDialog::AcceptSave);
    QCOMPARE(dialog.fileMode, QFileDialog::AnyFile);
    QCOMPARE(dialog.options, QFileDialog::Options());
    QCOMPARE(dialog.parent, static_cast<const QWidget *>(&f.field));
    QVERIFY(dialog.modal);
}

void tst_LineEditFileDialogs::captionIsMadeFromTheFieldName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<QString>("caption");
    QTest::newRow("bold name") << "Stl Output File" << true << "Stl Output File Save As";
    QTest::newRow("name without mark-up") << "Stl Output File" << false << " Save As";
    QTest::newRow("no name") << "" << false << " Save As";
    QTest::newRow("empty bold name") << "" << true << " Save As";
    QTest::newRow("white space is simplified") << "Stl \n  Output\tFile" << true << "Stl Output File Save As";
    QTest::newRow("blanks within the mark-up stay") << " A " << true << " A  Save As";
    QTest::newRow("nested mark-up") << "A <i>B</i> C" << true << "A B C Save As";
    QTest::newRow("entity") << "A &lt; B" << true << "A < B Save As";
}

void tst_LineEditFileDialogs::captionIsMadeFromTheFieldName()
{
    QFETCH(QString, name);
    QFETCH(bool, bold);
    QFETCH(QString, caption);
    FieldUnderTest f;
    f.field.setFieldName(name, bold);
    FileDialogDriver driver("");
    f.field.browseSaveFile(".stl", filter, "");
    f.field.browseOpenFile(filter, QString());
    QCOMPARE(driver.dialogs().size(), 2);
    QCOMPARE(driver.dialogs().at(0).caption, caption);
    QCOMPARE(driver.dialogs().at(1).caption, caption);
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
    const QString expected = bareName ? QString("in.stl") : m_folder->path(chosen);
    FieldUnderTest f;
    f.field.setText("before");
    FileDialogDriver driver(m_folder->path(chosen));
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(f.field.text(), expected);
    f.field.setText("before");
    f.field.browseSaveFile(".stl", filter, "stl");
    QCOMPARE(f.field.text(), expected);
    QCOMPARE(driver.dialogs().size(), 2);
}

void tst_LineEditFileDialogs::suffix_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("expected");
    QTest::newRow("missing") << "out"
                             << "out.stl";
    QTest::newRow("there") << "out.stl"
                           << "out.stl";
    QTest::newRow("case counts") << "out.STL"
                                 << "out.STL.stl";
    QTest::newRow("another one") << "out.txt"
                                 << "out.txt.stl";
    QTest::newRow("without its point") << "outstl"
                                       << "outstl.stl";
    QTest::newRow("typed with a relative folder") << "below/out"
                                                  << "@/below/out.stl";
}

void tst_LineEditFileDialogs::suffix()
{
    QFETCH(QString, chosen);
    QFETCH(QString, expected);
    FieldUnderTest f;
    FileDialogDriver driver(chosen);
    f.field.browseSaveFile(".stl", filter, "stl");
    QCOMPARE(f.field.text(), expected.replace('@', m_folder->path("here")));
}

void tst_LineEditFileDialogs::suffixIsComparedSimplifiedAndAppendedAsItIs()
{
    FieldUnderTest f;
    {
        FileDialogDriver driver("out.stl");
        f.field.browseSaveFile(" .stl ", filter, "stl");
    }
    QCOMPARE(f.field.text(), QString("out.stl"));
    {
        FileDialogDriver driver("out");
        f.field.browseSaveFile(" .stl ", filter, "stl");
    }
    QCOMPARE(f.field.text(), QString("out .stl "));
}

void tst_LineEditFileDialogs::existingFileCanBeChosenForSaving()
{
    FieldUnderTest f;
    FileDialogDriver driver("in.stl");
    f.field.browseSaveFile(".stl", filter, "stl");
    QCOMPARE(m_boxes->boxes().size(), 1); // the dialog's own question whether to replace it
    QCOMPARE(f.field.text(), QString("in.stl"));
    QCOMPARE(m_folder->read("here/in.stl"), QByteArray("x"));
}

void tst_LineEditFileDialogs::currentDirectoryReachedByAnotherPathGivesTheBareName()
{
    m_folder->link("alias", m_folder->path("here"));
    FieldUnderTest f;
    FileDialogDriver driver(m_folder->path("alias/in.stl"));
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(f.field.text(), QString("in.stl"));
}

void tst_LineEditFileDialogs::refusedPolicyForFullPathsChangesNothing()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyKeepFullPath);
    FileDialogDriver driver(m_folder->path("here/in.stl"));
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(f.field.text(), QString("in.stl"));
}

void tst_LineEditFileDialogs::cancelledOpenKeepsTheText()
{
    FieldUnderTest f;
    f.field.setText(" kept as it was");
    FileDialogDriver driver("");
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(driver.dialogs().size(), 1);
    QCOMPARE(f.field.text(), QString(" kept as it was"));
}

void tst_LineEditFileDialogs::cancelledSaveKeepsTheText()
{
    FieldUnderTest f;
    f.field.setText("no suffix");
    FileDialogDriver driver("");
    f.field.browseSaveFile(".stl", filter, "stl");
    QCOMPARE(driver.dialogs().size(), 1);
    QCOMPARE(f.field.text(), QString("no suffix"));
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
    f.field.setText("kept");
    const QSignalSpy changes(&f.field, &QLineEdit::textChanged);
    FileDialogDriver driver("");
    QTimer::singleShot(0, &f.field, [&f] { f.field.setText("meanwhile"); });
    if (saves)
        f.field.browseSaveFile(".stl", filter, "stl");
    else
        f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(changes, QList<QVariantList>({{"meanwhile"}, {"kept"}}));
    QCOMPARE(f.field.text(), QString("kept"));
}

void tst_LineEditFileDialogs::choiceStartsACheckRun()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyFileExists);
    f.field.setText("missing.stl");
    QVERIFY(f.showsIcon());
    FileDialogDriver driver(m_folder->path("here/in.stl"));
    const QSignalSpy changes(&f.field, &QLineEdit::textChanged);
    f.field.browseOpenFile(filter, "Open Input File");
    QCOMPARE(changes.count(), 1);
    QVERIFY(!f.showsIcon());
}

MESHVANE_QTEST_MAIN(tst_LineEditFileDialogs)
#include "tst_LineEditFileDialogs.moc"
