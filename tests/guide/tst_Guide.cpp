// Does the guide's worked examples as a reader would, and compares what comes out with what the guide says.
#include "tests/app/WindowUnderTest.h"
#include "tests/guide/GuideExamples.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <limits>
#include <memory>

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

// How the guide writes down where a mesh lies.
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

class tst_Guide : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void hasExamplesOfEveryKind();
    void example_data();
    void example();
    void picturesAreThere();
    void headingsOfLinksAreThere();

private:
    void fillIn(const QString &line);
    void enterByLabel(const QString &label, const QString &text);
    void tickByText(const QString &text);
    void compare(const GuideBlock &outcome);

    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<MessageBoxRecorder> m_boxes;
    std::unique_ptr<WindowUnderTest> m;
};

void tst_Guide::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    for (const QString &name : QDir(sourceFolder + "/examples").entryList({"*.stl"}))
        m_folder->write(name, contentOf(sourceFolder + "/examples/" + name));
    m_boxes = std::make_unique<MessageBoxRecorder>();
    m = std::make_unique<WindowUnderTest>();
}

void tst_Guide::cleanup()
{
    m.reset();
    m_boxes.reset();
    m_folder.reset();
}

void tst_Guide::enterByLabel(const QString &label, const QString &text)
{
    for (const QString &name : fieldNames()) {
        QLineEdit *field = m->field(name);
        if (field->accessibleName() != label)
            continue;
        QVERIFY2(field->isEnabled(), qPrintable(label + " is switched off"));
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
        QVERIFY2(m->isEnabled(name), qPrintable(text + " is switched off"));
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

void tst_Guide::compare(const GuideBlock &outcome)
{
    if (outcome.kind == "box") {
        QCOMPARE(m_boxes->texts(), QStringList(outcome.lines.join('\n')));
        return;
    }
    QCOMPARE(m_boxes->texts(), QStringList());
    if (outcome.kind == "mesh") {
        QCOMPARE(extentsOf(m_folder->read(outcome.argument)), outcome.lines);
    } else if (outcome.kind == "file") {
        QCOMPARE(QString::fromUtf8(m_folder->read(outcome.argument)).split('\n').mid(0, outcome.lines.size()),
                 outcome.lines);
    } else if (outcome.kind == "log") {
        QCOMPARE(QString::fromUtf8(m_folder->read("meshvane.log")), outcome.lines.join('\n') + '\n');
    }
}

void tst_Guide::hasExamplesOfEveryKind()
{
    QStringList kinds;
    for (const GuideExample &example : examplesIn(guide())) {
        QVERIFY2(!example.outcomes.isEmpty(), qPrintable(QString::number(example.form.lineNumber)));
        for (const GuideBlock &outcome : example.outcomes)
            kinds << outcome.kind;
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
    for (const QString &line : example.form.lines)
        fillIn(line);
    if (example.outcomes.constFirst().kind != "box")
        m->run();
    for (const GuideBlock &outcome : example.outcomes)
        compare(outcome);
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
