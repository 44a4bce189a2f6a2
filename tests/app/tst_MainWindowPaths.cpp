// Which files a run reads and writes: those of the dialogs, or the names typed over them.
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/FileDialogDriver.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"

#include <QtTest>

namespace {

// The triangle moved along x, to tell files apart.
QByteArray triangleAt(const QByteArray &x)
{
    return triangleInput().replace("vertex 1 2 3", "vertex " + x + " 2 3");
}

// A file is chosen in the folder "sub", and then a name is typed into the field.
const struct {
    const char *name;
    QString chosen;
    QString typed;
    bool chosenIsUsed;
} pathCases[] = {
    {"another name replaces the chosen path", "file.stl", "other.stl", false},
    {"the chosen name keeps the chosen path", "file.stl", "file.stl", true},
    {"a Latin-1 name keeps the chosen path", QStringLiteral(u"\u00e9t\u00e9.stl"),
     QStringLiteral(u"\u00e9t\u00e9.stl"), true},
    {"the same name outside Latin-1 replaces the chosen path", QStringLiteral(u"\u03a9.stl"),
     QStringLiteral(u"\u03a9.stl"), false},
#ifndef Q_OS_WIN // which has no question marks in names
    {"a name outside Latin-1 equals its converted form", "?.stl", QStringLiteral(u"\u03a9.stl"), true},
#endif
};

} // namespace

class tst_MainWindowPaths : public WindowTest {
    Q_OBJECT

private slots:
    void inputPath_data() { addRows(pathCases); }
    void inputPath();
    void outputPath_data() { addRows(pathCases); }
    void outputPath();
    void typedPathIsStoredLikeAChosenOne();
    void cancelledDialogStoresTheTextOfTheField();
    void pathsAreStoredEvenIfTheRunIsRefused();
    void resetKeepsTheStoredPaths();

private:
    void choose(const char *button, const QString &name)
    {
        const FileDialogDriver driver(name.isEmpty() ? name : m_folder->path("sub/" + name));
        m->button(button)->click();
    }
    void chooseBoth()
    {
        m_folder->makeFolder("sub");
        m_folder->write("sub/in.stl", triangleAt("7"));
        choose("btnBrowseIn", "in.stl");
        choose("btnBrowseOut", "out.stl");
    }
    QByteArray firstCornerOf(const QString &output) const
    {
        return m_folder->read(output).split('\n').value(3).mid(13, 16).trimmed();
    }
    // Whether a run reads the chosen "sub/in.stl" and writes the chosen "sub/out.stl", and not the files of
    // the same names in the current folder.
    void runUsesTheChosenFiles(bool chosen)
    {
        QCOMPARE(messagesOfARun("in.stl", "out.stl"), QStringList());
        QCOMPARE(m_folder->has("sub/out.stl"), chosen);
        QCOMPARE(m_folder->has("out.stl"), !chosen);
        QCOMPARE(firstCornerOf(chosen ? "sub/out.stl" : "out.stl"),
                 QByteArray(chosen ? "7.00000000E+00" : "1.00000000E+00"));
    }
};

void tst_MainWindowPaths::inputPath()
{
    const auto &row = currentRow(pathCases);
    m_folder->makeFolder("sub");
    m_folder->write("sub/" + row.chosen, triangleAt("7"));
    m_folder->write(row.typed, triangleAt("8"));
    choose("btnBrowseIn", row.chosen);
    QCOMPARE(messagesOfARun(row.typed, "out.stl"), QStringList());
    QCOMPARE(firstCornerOf("out.stl"), QByteArray(row.chosenIsUsed ? "7.00000000E+00" : "8.00000000E+00"));
}

void tst_MainWindowPaths::outputPath()
{
    const auto &row = currentRow(pathCases);
    m_folder->makeFolder("sub");
    choose("btnBrowseOut", row.chosen);
    QCOMPARE(m->text("edtFileOut"), m_folder->path("sub/" + row.chosen));
    QCOMPARE(messagesOfARun("in.stl", row.typed), QStringList());
    QCOMPARE(m_folder->has("sub/" + row.chosen), row.chosenIsUsed);
    QCOMPARE(m_folder->has(row.typed), !row.chosenIsUsed);
    QCOMPARE(m->statusText(), statusAfterRun(row.chosenIsUsed ? row.chosen : row.typed));
}

void tst_MainWindowPaths::typedPathIsStoredLikeAChosenOne()
{
    m_folder->makeFolder("sub");
    QCOMPARE(messagesOfARun("in.stl", "sub/out.stl"), QStringList());
    QVERIFY(m_folder->has("sub/out.stl"));
    // The bare name now means the path of the previous run.
    QCOMPARE(messagesOfARun("in.stl", "out.stl"), QStringList());
    QVERIFY(!m_folder->has("out.stl"));
    QCOMPARE(messagesOfARun("in.stl", "./out.stl"), QStringList());
    QVERIFY(m_folder->has("out.stl"));
}

void tst_MainWindowPaths::cancelledDialogStoresTheTextOfTheField()
{
    chooseBoth();
    m->enterFiles("in.stl", "out.stl");
    choose("btnBrowseIn", "");
    choose("btnBrowseOut", "");
    QCOMPARE(m->text("edtFileIn"), QString("in.stl"));
    QCOMPARE(m->text("edtFileOut"), QString("out.stl"));
    runUsesTheChosenFiles(false);
}

// The refused names have replaced the chosen paths all the same.
void tst_MainWindowPaths::pathsAreStoredEvenIfTheRunIsRefused()
{
    chooseBoth();
    QCOMPARE(messagesOfARun("nofile.stl", "other.stl").size(), 1);
    runUsesTheChosenFiles(false);
}

void tst_MainWindowPaths::resetKeepsTheStoredPaths()
{
    chooseBoth();
    m->reset();
    runUsesTheChosenFiles(true);
}

MESHVANE_QTEST_MAIN(tst_MainWindowPaths)
#include "tst_MainWindowPaths.moc"
