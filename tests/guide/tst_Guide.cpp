// Carries out the worked examples of the guide as a reader would, and compares the results with the guide.
#include "tests/app/WindowTest.h"
#include "tests/guide/GuideExamples.h"
#include "tests/support/qt/QtTestMain.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <limits>

Q_DECLARE_METATYPE(GuideExample)

namespace {

const QString sourceFolder = QStringLiteral(MESHVANE_SOURCE_FOLDER);

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

QString guide() { return QString::fromUtf8(contentOf(sourceFolder + "/docs/guide.md")); }

// The extents of a mesh as the guide writes them.
QStringList extentsOf(const QByteArray &mesh)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    double lowest[] = {infinity, infinity, infinity};
    double highest[] = {-infinity, -infinity, -infinity};
    for (const QByteArray &line : mesh.split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() != 4 || words[0] != "vertex")
            continue;
        for (int axis = 0; axis < 3; ++axis) {
            const double coordinate = words[axis + 1].toDouble();
            lowest[axis] = std::min(lowest[axis], coordinate);
            highest[axis] = std::max(highest[axis], coordinate);
        }
    }
    const auto written = [](double value) {
        return QString::number(qAbs(value) < 0.00005 ? 0.0 : value, 'f', 4).rightJustified(11);
    };
    QStringList lines;
    for (int axis = 0; axis < 3; ++axis)
        lines << QString("XYZ").mid(axis, 1) + written(lowest[axis]) + "  to" + written(highest[axis]) +
                     "   length" + written(highest[axis] - lowest[axis]);
    return lines;
}

} // namespace

class tst_Guide : public WindowTest {
    Q_OBJECT

private slots:
    void hasExamplesOfEveryKind();
    void example_data();
    void example();
    void picturesAreThere();
    void headingsOfLinksAreThere();

private:
    void fillIn(const QString &line);
    void enterByLabel(const QString &label, const QString &text);
    void tickByText(const QString &text);
    void compare(const GuideBlock &result);
};

void tst_Guide::enterByLabel(const QString &label, const QString &text)
{
    for (const QString &name : fieldNames()) {
        QLineEdit *field = m->field(name);
        if (field->accessibleName() != label)
            continue;
        QVERIFY2(field->isEnabled(), qPrintable(label + " is disabled"));
        field->setText(text);
        return;
    }
    QFAIL(qPrintable("the form has no field " + label));
}

void tst_Guide::tickByText(const QString &text)
{
    for (const QString &name : boxNames()) {
        if (m->box(name)->text() != text)
            continue;
        QVERIFY2(m->isEnabled(name), qPrintable(text + " is disabled"));
        m->tick(name);
        return;
    }
    QFAIL(qPrintable("the form has no box " + text));
}

// "Field: text", "[x] Box" or "[x] Box: text for the field beside it".
void tst_Guide::fillIn(const QString &line)
{
    static const QString ticked = "[x] ";
    const bool isBox = line.startsWith(ticked);
    const QString label = line.section(": ", 0, 0).mid(isBox ? ticked.size() : 0);
    if (isBox)
        tickByText(label);
    if (line.contains(": "))
        enterByLabel(label, line.section(": ", 1));
}

void tst_Guide::compare(const GuideBlock &result)
{
    if (result.kind == "box") {
        QCOMPARE(m_boxes->texts(), QStringList(result.lines.join('\n')));
        return;
    }
    QCOMPARE(m_boxes->texts(), QStringList());
    if (result.kind == "mesh") {
        QCOMPARE(extentsOf(m_folder->read(result.argument)), result.lines);
    } else if (result.kind == "file") {
        QCOMPARE(QString::fromUtf8(m_folder->read(result.argument)).split('\n').mid(0, result.lines.size()),
                 result.lines);
    } else if (result.kind == "log") {
        QCOMPARE(QString::fromUtf8(m_folder->read("meshvane.log")), result.lines.join('\n') + '\n');
    }
}

void tst_Guide::hasExamplesOfEveryKind()
{
    QStringList kinds;
    for (const GuideExample &example : examplesIn(guide())) {
        QVERIFY2(!example.results.isEmpty(), qPrintable(QString::number(example.form.lineNumber)));
        for (const GuideBlock &result : example.results)
            kinds << result.kind;
    }
    QCOMPARE(kinds.count("mesh"), 6);
    QCOMPARE(kinds.count("file"), 1);
    QCOMPARE(kinds.count("log"), 1);
    QCOMPARE(kinds.count("box"), 1);
}

void tst_Guide::example_data()
{
    QTest::addColumn<GuideExample>("example");
    for (const GuideExample &example : examplesIn(guide()))
        QTest::addRow("guide.md:%d", example.form.lineNumber) << example;
}

void tst_Guide::example()
{
    QFETCH(GuideExample, example);
    const QDir meshes(sourceFolder + "/examples");
    for (const QString &name : meshes.entryList({"*.stl"}))
        m_folder->write(name, contentOf(meshes.filePath(name)));
    for (const QString &line : example.form.lines)
        fillIn(line);
    if (example.results.constFirst().kind != "box")
        m->run();
    for (const GuideBlock &result : example.results)
        compare(result);
}

void tst_Guide::picturesAreThere()
{
    int pictures = 0;
    QRegularExpressionMatchIterator match =
        QRegularExpression("!\\[[^]]*\\]\\(([^)]*)\\)").globalMatch(guide());
    for (; match.hasNext(); ++pictures) {
        const QString path = sourceFolder + "/docs/" + match.next().captured(1);
        QVERIFY2(!QImage(path).isNull(), qPrintable(path));
    }
    QVERIFY(pictures >= 3);
}

// A link to "#put-it-on-the-bed" needs a heading "Put it on the bed".
void tst_Guide::headingsOfLinksAreThere()
{
    QStringList anchors;
    for (const QString &line : guide().split('\n')) {
        if (line.startsWith('#'))
            anchors
                << line.section(' ', 1).toLower().remove(QRegularExpression("[^a-z0-9 -]")).replace(' ', '-');
    }
    int links = 0;
    QRegularExpressionMatchIterator match = QRegularExpression("\\]\\(#([^)]*)\\)").globalMatch(guide());
    for (; match.hasNext(); ++links) {
        const QString anchor = match.next().captured(1);
        QVERIFY2(anchors.contains(anchor), qPrintable(anchor));
    }
    QVERIFY(links >= 12);
}

MESHVANE_QTEST_MAIN(tst_Guide)
#include "tst_Guide.moc"
