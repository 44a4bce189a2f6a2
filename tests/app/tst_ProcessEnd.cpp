// The program as a process: its start, and its end when it cannot read its input.
#include "tests/app/SmallMesh.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QProcess>
#include <QtTest>

#include <cerrno>
#include <cstring>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace {

struct Outcome {
    QProcess::ExitStatus end = QProcess::CrashExit;
    int status = -1;
    QStringList lines; // of standard output
    QByteArray standardError;

    QString value(const QString &what) const
    {
        for (const QString &line : lines) {
            if (line.startsWith(what + ": "))
                return QUrl::fromPercentEncoding(line.mid(what.size() + 2).toUtf8());
        }
        return "(not printed)";
    }
};

Outcome runProgram(const QString &program, const QStringList &arguments,
                   const QMap<QString, QString> &variables = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    if (!process.waitForFinished(30000))
        qFatal("%s did not end", qPrintable(program));
    Outcome outcome;
    outcome.end = process.exitStatus();
    outcome.status = process.exitCode();
    outcome.lines = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    outcome.standardError = process.readAllStandardError();
    return outcome;
}

Outcome runWindow(const QStringList &arguments, const QMap<QString, QString> &variables = {})
{
    return runProgram(MESHVANE_RUN_WINDOW_ONCE, arguments, variables);
}

QStringList files(const QString &input, const QString &output)
{
    return {"edtFileIn=" + input, "edtFileOut=" + output};
}

// Exists, but cannot be opened as a file.
void makeSocket(const QString &name)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, qPrintable(name), sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    if (descriptor < 0 || bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        qFatal("no socket");
    close(descriptor);
}

// As perror writes it.
QByteArray perrorText(const QByteArray &what, int error)
{
    return what + ": " + QByteArray(std::strerror(error)) + '\n';
}

QByteArray binaryMesh(int facets)
{
    return QByteArray::fromStdString(binaryStl("made by hand", differentFacets(facets)));
}

struct SizeCase {
    const char *name;
    QString file;
    QByteArray content;
};

const std::vector<SizeCase> &sizeCases()
{
    static const std::vector<SizeCase> all{
        {"three facets", "three.stl", binaryMesh(3)},
        {"one byte too many", "more.stl", binaryMesh(5) + "x"},
        {"one byte too few", "less.stl", binaryMesh(5).chopped(1)},
        {"name outside ASCII", QStringLiteral(u"gr\u00f6\u00dfe \u03a9.stl"), binaryMesh(2)},
    };
    return all;
}

const struct {
    const char *name;
    const char *scale;
    const char *box;
} localeCases[] = {
    {"decimal point", "1.5", "(not printed)"},
    {"decimal comma", "1,5", "<b>X Scale</b> field can only contain a number value.<br>"},
};

} // namespace

class tst_ProcessEnd : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_folder.reset(); }

    void startUp();
    void refusedLocaleIsADebugMessage();
    void closingTheWindowEndsTheProgram();
    void exitStatusIsThatOfTheEventLoop();
    void refusedFormDoesNotEndTheProgram();

    void inputThatCannotBeOpened();
    void inputOfTheWrongSize_data() { addRows(sizeCases()); }
    void inputOfTheWrongSize();
    void smallestBinaryFileIsRead();
    void wrongFacetCountIsAWarning();
    void temporaryFileThatCannotBeCreated();
    void endOfTheProcessLeavesOutputAndLogAlone();

    void localeWithADecimalComma_data() { addRows(localeCases); }
    void localeWithADecimalComma();

private:
    std::unique_ptr<WorkingFolder> m_localeFolder;
    std::unique_ptr<WorkingFolder> m_folder;
};

// Builds a locale whose decimal separator is a comma.
void tst_ProcessEnd::initTestCase()
{
    m_localeFolder = std::make_unique<WorkingFolder>();
    QProcess localedef;
    localedef.start("localedef", {"-i", "de_DE", "-f", "UTF-8", m_localeFolder->path("de_DE.UTF-8")});
    QVERIFY2(localedef.waitForFinished(60000),
             "localedef is missing; it comes with the locale sources (locales)");
    QVERIFY2(m_localeFolder->has("de_DE.UTF-8/LC_NUMERIC"), localedef.readAllStandardError().constData());
}

void tst_ProcessEnd::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->write("in.stl", triangleInput());
}

void tst_ProcessEnd::startUp()
{
    const Outcome outcome = runWindow(files("in.stl", "out.stl"));
    QCOMPARE(outcome.value("visible"), QString("yes"));
    QCOMPARE(outcome.value("has parent"), QString("no"));
    QCOMPARE(outcome.value("title"), QString("Meshvane - Quillmoret"));
    QCOMPARE(outcome.value("has the size of its hint"), QString("yes"));
    QCOMPARE(outcome.value("font apart from its size"), QString("the system's"));
    QCOMPARE(outcome.value("font size"), QString("10"));
    QCOMPARE(outcome.value("font size of labels"), QString("10"));
    QCOMPARE(outcome.value("font size of menus"), QString("10"));
    QCOMPARE(outcome.value("C locale"), QString("C"));
    QCOMPARE(outcome.value("initial C++ locale"), QString("*"));
    QCOMPARE(outcome.value("C++ locale"), QString("C"));
    QCOMPARE(outcome.value("Qt locale"), QString("C"));
    QCOMPARE(outcome.value("debug message without context"), QString("(not printed)"));
    QCOMPARE(outcome.value("status"), statusAfterRun("out.stl"));
    QCOMPARE(outcome.standardError, QByteArray());
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

void tst_ProcessEnd::refusedLocaleIsADebugMessage()
{
    const Outcome outcome = runProgram(MESHVANE_RUN_WINDOW_WITHOUT_LOCALE, files("in.stl", "out.stl"));
    QCOMPARE(outcome.value("first C locale"), QString("all"));
    QCOMPARE(outcome.value("debug message without context"), QString("ERROR: Locale not set to classic.\n"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(m_folder->read("out.stl"), triangleOutput(untouchedCorners()));
}

void tst_ProcessEnd::closingTheWindowEndsTheProgram()
{
    const Outcome outcome = runWindow(files("in.stl", "out.stl"));
    QCOMPARE(outcome.end, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.value("window destroyed"), QString("before the application"));
}

void tst_ProcessEnd::exitStatusIsThatOfTheEventLoop()
{
    const Outcome outcome = runWindow({"end with 7"});
    QCOMPARE(outcome.end, QProcess::NormalExit);
    QCOMPARE(outcome.status, 7);
}

void tst_ProcessEnd::refusedFormDoesNotEndTheProgram()
{
    const Outcome outcome = runWindow(files("nofile.stl", "out.stl"));
    QCOMPARE(outcome.value("box"), QString("<b>Stl Input File</b> doesn't exist.<br>"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(m_folder->entries(), QStringList{"in.stl"});
}

void tst_ProcessEnd::inputThatCannotBeOpened()
{
    makeSocket("socket.stl");
    const Outcome outcome = runWindow(files("socket.stl", "out.stl"));
    QCOMPARE(outcome.end, QProcess::NormalExit);
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.standardError,
             perrorText("stl_initialize: Couldn't open socket.stl for reading", ENXIO));
    QCOMPARE(outcome.value("box"), QString("(not printed)"));
    QCOMPARE(m_folder->entries(), QStringList({"in.stl", "socket.stl"}));
}

void tst_ProcessEnd::inputOfTheWrongSize()
{
    const auto &[name, file, content] = currentRow(sizeCases());
    m_folder->write(file, content);
    const Outcome outcome = runWindow(files(file, "out.stl"));
    QCOMPARE(outcome.end, QProcess::NormalExit);
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.standardError, "The file " + file.toUtf8() + " has the wrong size.\n");
    QVERIFY(!m_folder->has("out.stl"));
    QVERIFY(!m_folder->has("_tmp_stl_"));
    QVERIFY(!m_folder->has("meshvane.log"));
}

void tst_ProcessEnd::smallestBinaryFileIsRead()
{
    const QByteArray mesh = binaryMesh(4);
    QCOMPARE(mesh.size(), 284);
    m_folder->write("four.stl", mesh);
    const Outcome outcome = runWindow(files("four.stl", "out.stl"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.standardError, QByteArray());
    QVERIFY(m_folder->read("meshvane.log").contains("Number triangles read from stl file = 4\n"));
    QCOMPARE(m_folder->read("out.stl").count("  facet normal"), 4);
}

void tst_ProcessEnd::wrongFacetCountIsAWarning()
{
    m_folder->write("count.stl", QByteArray::fromStdString(binaryStl("made by hand", 0, differentFacets(4))));
    const Outcome outcome = runWindow(files("count.stl", "out.stl"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.standardError,
             QByteArray("Warning: File size doesn't match number of facets in the header\n"));
    QCOMPARE(outcome.value("status"), statusAfterRun("out.stl"));
}

void tst_ProcessEnd::temporaryFileThatCannotBeCreated()
{
    m_folder->makeFolder("_tmp_stl_");
    const Outcome outcome = runWindow(files("in.stl", "out.stl"));
    QCOMPARE(outcome.end, QProcess::NormalExit);
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.standardError,
             perrorText("stl_write_ascii: Couldn't open _tmp_stl_ for writing", EISDIR));
    QCOMPARE(outcome.value("box"), QString("(not printed)"));
    QCOMPARE(m_folder->entries(), QStringList({"_tmp_stl_", "in.stl"}));
}

void tst_ProcessEnd::endOfTheProcessLeavesOutputAndLogAlone()
{
    m_folder->write("three.stl", binaryMesh(3));
    m_folder->write("out.stl", "old output");
    m_folder->write("meshvane.log", "old log");
    QCOMPARE(runWindow(files("three.stl", "out.stl")).status, 1);
    QCOMPARE(m_folder->read("out.stl"), QByteArray("old output"));
    QCOMPARE(m_folder->read("meshvane.log"), QByteArray("old log"));
}

void tst_ProcessEnd::localeWithADecimalComma()
{
    const auto &row = currentRow(localeCases);
    const QString box = row.box;
    m_folder->write("in.stl", triangleInput().replace("vertex 1 2 3", "vertex 0.5 2 3"));
    const Outcome outcome =
        runWindow(files("in.stl", "out.stl") << QString("edtXScale=") + row.scale << "edtYOffsA=0.25",
                  {{"LC_ALL", "de_DE.UTF-8"}, {"LOCPATH", m_localeFolder->path()}});
    QCOMPARE(outcome.value("initial decimal point"), QString(","));
    QCOMPARE(outcome.value("decimal point"), QString("."));
    QCOMPARE(outcome.value("Qt locale"), QString("C"));
    QCOMPARE(outcome.value("locale of the window"), QString("C"));
    QCOMPARE(outcome.value("box"), box);
    QCOMPARE(outcome.status, 0);
    if (box != "(not printed)")
        return;
    QCOMPARE(m_folder->read("out.stl"),
             triangleOutput("      vertex  7.50000000E-01  2.25000000E+00  3.00000000E+00\n"
                            "      vertex  7.50000000E+00  2.25000000E+00  3.00000000E+00\n"
                            "      vertex  1.50000000E+00  1.02500000E+01  1.90000000E+01\n"));
    QVERIFY(m_folder->read("meshvane.log").contains("xScl = 1.500000     xOfsB = 0.000000"));
}

MESHVANE_QTEST_MAIN(tst_ProcessEnd)
#include "tst_ProcessEnd.moc"
