// What only Windows has: drive letters, backslashes, files that another program holds, and its limits for
// names.
#include "stl/StlPasses.h"
#include "tests/app/SmallMesh.h"
#include "tests/app/WindowTest.h"
#include "tests/support/qt/QtTestMain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

class tst_MainWindowOnWindows : public WindowTest {
    Q_OBJECT

private slots:
    void writtenFilesHaveTheSystemsLineEnds();
    void driveLettersAndBackslashesAreUnderstood();
    void statusLineShowsTheWholePathWithBackslashes();
    void namesOutsideAsciiReachTheFiles();
    void pathsOf300CharactersAreUsed();
    void outputHeldByAnotherProgramIsReported();
    void readOnlyOutputIsReported();
    void outputInAReadOnlyFolderIsReported();
    void fullDiscIsReported();
    void folderThatDoesNotExistIsAFieldError();
};

void tst_MainWindowOnWindows::writtenFilesHaveTheSystemsLineEnds()
{
    QCOMPARE(messagesOfARun("in.stl", "out.stl"), QStringList());
    for (const char *name : {"out.stl", "meshvane.log"}) {
        QFile file(m_folder->path(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.count('\n') > 0);
        QCOMPARE(bytes.count("\r\n"), bytes.count('\n'));
        QCOMPARE(bytes.count('\r'), bytes.count('\n'));
    }
}

void tst_MainWindowOnWindows::driveLettersAndBackslashesAreUnderstood()
{
    const QString input = QDir::toNativeSeparators(m_folder->path("in.stl"));
    const QString output = QDir::toNativeSeparators(m_folder->path("out.stl"));
    QVERIFY(input.at(1) == ':' && input.at(2) == '\\');
    QCOMPARE(messagesOfARun(input, output), QStringList());
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

// Deliberate: the name starts after the last slash, and there is none.
void tst_MainWindowOnWindows::statusLineShowsTheWholePathWithBackslashes()
{
    const QString output = QDir::toNativeSeparators(m_folder->path("out.stl"));
    QCOMPARE(messagesOfARun("in.stl", output), QStringList());
    QCOMPARE(m->statusText(), statusAfterRun(output));
}

void tst_MainWindowOnWindows::namesOutsideAsciiReachTheFiles()
{
    const QString input = QStringLiteral(u"gr\u00f6\u00dfe.stl");
    const QString output = QStringLiteral(u"\u540d\u524d \u03a9.stl");
    m_folder->write(input, triangleInput());
    QCOMPARE(messagesOfARun(input, output), QStringList());
    QCOMPARE(m_folder->read(output), triangleOutput(untouchedCorners()));
}

void tst_MainWindowOnWindows::pathsOf300CharactersAreUsed()
{
    const QString part = QString(100, 'a');
    const QString folder = part + "/" + part + "/" + part;
    m_folder->makeFolder(folder);
    QCOMPARE(messagesOfARun("in.stl", m_folder->path(folder + "/out.stl")), QStringList());
    QCOMPARE(m_folder->read(folder + "/out.stl"), triangleOutput(untouchedCorners()));
}

void tst_MainWindowOnWindows::outputHeldByAnotherProgramIsReported()
{
    m_folder->write("out.stl", "held");
    const std::wstring name = m_folder->path("out.stl").toStdWString();
    const int held = _wsopen(name.c_str(), _O_RDONLY, _SH_DENYRW, 0);
    QVERIFY(held >= 0);
    QCOMPARE(messagesOfARun("in.stl", "out.stl"), QStringList{"Unable to open output file."});
    _close(held);
    QCOMPARE(m_folder->read("out.stl"), QByteArray("held"));
}

void tst_MainWindowOnWindows::readOnlyOutputIsReported()
{
    m_folder->write("out.stl", "kept");
    const std::wstring name = m_folder->path("out.stl").toStdWString();
    QCOMPARE(_wchmod(name.c_str(), _S_IREAD), 0);
    if (QFile(m_folder->path("out.stl")).open(QIODevice::ReadWrite))
        QSKIP("Wine opens such files for root");
    const QStringList messages = messagesOfARun("in.stl", "out.stl");
    QCOMPARE(_wchmod(name.c_str(), _S_IREAD | _S_IWRITE), 0);
    QCOMPARE(messages, QStringList{"Unable to open output file."});
    QCOMPARE(m_folder->read("out.stl"), QByteArray("kept"));
}

// Wine shows the folders and devices of the system below it. Nobody can make a file in this one.
void tst_MainWindowOnWindows::outputInAReadOnlyFolderIsReported()
{
    if (!QFileInfo::exists("Z:/proc"))
        QSKIP("there is no such folder here");
    QCOMPARE(messagesOfARun("in.stl", "Z:/proc/out.stl"), QStringList{"Unable to open output file."});
}

void tst_MainWindowOnWindows::fullDiscIsReported()
{
    if (!QFileInfo::exists("Z:/dev"))
        QSKIP("there is no such device here");
    QCOMPARE(messagesOfARun("in.stl", "Z:/dev/full"), QStringList{stlWriteErrorMessage});
}

void tst_MainWindowOnWindows::folderThatDoesNotExistIsAFieldError()
{
    QCOMPARE(messagesOfARun("in.stl", "Q:\\nowhere\\out.stl"),
             QStringList{"<b>Stl Output File</b> directory doesn't exist.<br>"});
}

MESHVANE_QTEST_MAIN(tst_MainWindowOnWindows)
#include "tst_MainWindowOnWindows.moc"
