// The real window and the real command do the same runs: output and log are the same bytes.
// MESHVANE_FORMS says how many.
#include "app/MeshvaneMainWindow.h"
#include "tests/cli/CommandMesh.h"
#include "tests/cli/CommandProcess.h"
#include "tests/cli/RandomForm.h"
#include "tests/support/Amount.h"
#include "tests/support/qt/MessageBoxRecorder.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <limits>

namespace {

using Arguments = std::vector<std::string>;

struct Result {
    QByteArray output;
    QByteArray log;
};

class DrivenWindow {
public:
    Result run(const RandomForm &form, const QString &input)
    {
        button(QDialogButtonBox::Reset)->click();
        field("edtFileIn")->setText(input);
        field("edtFileOut")->setText("window.stl");
        for (const auto &[name, text] : form.entries)
            field(name)->setText(text);
        for (const QString &name : form.ticks) {
            auto *box = m_window.findChild<QCheckBox *>(name);
            if (box == nullptr || !box->isEnabled())
                qFatal("%s cannot be ticked", qPrintable(name));
            box->setChecked(true);
        }
        button(QDialogButtonBox::Apply)->click();
        if (!m_boxes.boxes().isEmpty())
            qFatal("the window complains: %s", qPrintable(m_boxes.texts().join("; ")));
        return {m_folder.read("window.stl"), m_folder.read("meshvane.log")};
    }

    const WorkingFolder &folder() const { return m_folder; }

private:
    QLineEdit *field(const QString &name) const { return m_window.findChild<QLineEdit *>(name); }
    QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return m_window.findChild<QDialogButtonBox *>("buttonBox")->button(which);
    }

    WorkingFolder m_folder;
    MessageBoxRecorder m_boxes;
    MeshvaneMainWindow m_window;
};

Arguments operator+(Arguments first, const Arguments &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

QString asText(const Arguments &arguments)
{
    QString text;
    for (const std::string &argument : arguments)
        text += " " + QString::fromStdString(argument);
    return text;
}

// Both formats, ordinary meshes and odd ones.
struct Mesh {
    QString name;
    bool isOdd = false; // flat, infinite or undefined somewhere
};

float anyCoordinate(std::mt19937 &random)
{
    return static_cast<float>(std::uniform_real_distribution<double>(-100.0, 100.0)(random));
}

std::vector<BinaryFacet> randomFacets(std::mt19937 &random, int count)
{
    std::vector<BinaryFacet> facets(static_cast<std::size_t>(count));
    for (BinaryFacet &facet : facets) {
        for (float &number : facet.numbers)
            number = anyCoordinate(random);
    }
    return facets;
}

std::string asAscii(const std::vector<BinaryFacet> &facets)
{
    std::string text = "solid made by hand\n";
    for (const BinaryFacet &facet : facets) {
        std::string points[4];
        for (std::size_t i = 0; i < facet.numbers.size(); ++i) {
            char number[64];
            std::snprintf(number, sizeof number, "%s%.9g", i % 3 == 0 ? "" : " ",
                          static_cast<double>(facet.numbers[i]));
            points[i / 3] += number;
        }
        text += asciiFacet({points[0], points[1], points[2], points[3]});
    }
    return text + "endsolid\n";
}

std::vector<BinaryFacet> oddFacets(std::mt19937 &random)
{
    std::vector<BinaryFacet> facets = randomFacets(random, 5);
    constexpr float odd[] = {std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN(),
                             -0.0F,
                             1e-42F,
                             3.4e38F,
                             1e26F};
    for (const float number : odd)
        facets[random() % 5].numbers[random() % 12] = number;
    return facets;
}

} // namespace

class tst_CommandAgainstWindow : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void formsAndOptionsGiveTheSameBytes();
    void theBoxOfAnAxisIsTheOptionThatSaysWhatHappens_data();
    void theBoxOfAnAxisIsTheOptionThatSaysWhatHappens();

private:
    void write(const QString &name, const std::string &bytes, bool isOdd = false);
    void compare(const RandomForm &form, const Mesh &mesh);
    void compareCommand(const Arguments &options, const Mesh &mesh, const Result &window, bool mayWarn);

    std::unique_ptr<DrivenWindow> m_window = std::make_unique<DrivenWindow>();
    std::vector<Mesh> m_meshes;
};

void tst_CommandAgainstWindow::write(const QString &name, const std::string &bytes, bool isOdd)
{
    m_window->folder().write(name, QByteArray::fromStdString(bytes));
    m_meshes.push_back({name, isOdd});
}

void tst_CommandAgainstWindow::initTestCase()
{
    std::mt19937 random(815);
    for (int i = 0; i < 4; ++i) {
        const std::vector<BinaryFacet> facets = randomFacets(random, 4 + 30 * i);
        write(QString("binary%1.stl").arg(i), binaryStl("made by hand", facets));
        write(QString("ascii%1.stl").arg(i), asAscii(facets));
    }
    write("odd-binary.stl", binaryStl("odd", oddFacets(random)), true);
    write("odd-ascii.stl", asAscii(oddFacets(random)), true);
    write("flat.stl", flatMesh(), true);
    write("empty.stl", "solid\nendsolid\n", true);
}

void tst_CommandAgainstWindow::formsAndOptionsGiveTheSameBytes()
{
    std::mt19937 random(static_cast<unsigned>(amount("MESHVANE_SEED", 20261121)));
    const int forms = amount("MESHVANE_FORMS", 1000);
    for (int i = 0; i < forms && !QTest::currentTestFailed(); ++i)
        compare(randomForm(random), m_meshes[random() % m_meshes.size()]);
}

void tst_CommandAgainstWindow::compare(const RandomForm &form, const Mesh &mesh)
{
    const Result window = m_window->run(form, mesh.name);
    m_window->folder().write("repeated.log", window.log);
    if (!form.hasScaleThatLosesToALength)
        compareCommand(form.options, mesh, window, false);
    compareCommand(form.optionsBesideTheLog + Arguments{"--repeat", "repeated.log"}, mesh, window, true);
}

// A number of six decimals makes the command warn of the log that it repeats.
void tst_CommandAgainstWindow::compareCommand(const Arguments &options, const Mesh &mesh,
                                              const Result &window, bool mayWarn)
{
    Arguments arguments =
        options + Arguments{"--force", "--log", "command.log", mesh.name.toStdString(), "command.stl"};
    if (mesh.isOdd)
        arguments.insert(arguments.begin(), "--allow-degenerate");
    const CommandResult result = runMeshvane(arguments);
    const QString what = mesh.name + asText(arguments) + ": " + QString::fromStdString(result.standardError);
    QVERIFY2(result.exited && result.status == 0, qPrintable(what));
    const bool mayHaveNoFacets = mesh.name == "empty.stl";
    QVERIFY2(result.standardError.empty() || mayWarn || mayHaveNoFacets, qPrintable(what));
    const WorkingFolder &folder = m_window->folder();
    QVERIFY2(folder.read("command.stl") == window.output, qPrintable("output: " + what));
    QVERIFY2(folder.read("command.log") == window.log, qPrintable("log: " + what));
}

void tst_CommandAgainstWindow::theBoxOfAnAxisIsTheOptionThatSaysWhatHappens_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("other");
    QTest::newRow("x y") << "chbXsameY"
                         << "--x-length-of"
                         << "y";
    QTest::newRow("x z") << "chbXsameZ"
                         << "--x-length-of"
                         << "z";
    QTest::newRow("y x") << "chbYsameZ"
                         << "--y-length-of"
                         << "x";
    QTest::newRow("y z") << "chbYsameX"
                         << "--y-length-of"
                         << "z";
    QTest::newRow("z x") << "chbZsameX"
                         << "--z-length-of"
                         << "x";
    QTest::newRow("z y") << "chbZsameY"
                         << "--z-length-of"
                         << "y";
}

// The form says it in its own way; what it does is measured here, too.
void tst_CommandAgainstWindow::theBoxOfAnAxisIsTheOptionThatSaysWhatHappens()
{
    QFETCH(QString, box);
    QFETCH(QString, option);
    QFETCH(QString, other);
    m_window->folder().write("box.stl", QByteArray::fromStdString(boxMesh())); // 4 x 8 x 16
    RandomForm form;
    form.ticks << box;
    form.options = {option.toStdString(), other.toStdString()};
    form.optionsBesideTheLog = form.options;
    compare(form, {"box.stl"});
    const CommandResult info = runMeshvane({"info", "command.stl"});
    const char *const wanted = other == "x" ? "length 4\n" : other == "y" ? "length 8\n" : "length 16\n";
    QCOMPARE(QString::fromStdString(info.standardOutput).count(wanted), 2);
}

MESHVANE_QTEST_MAIN(tst_CommandAgainstWindow)
#include "tst_CommandAgainstWindow.moc"
