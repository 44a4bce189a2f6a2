// The form without the window, so that no interlock changes what a test enters.
#include "app/FormReader.h"
#include "tests/app/FormNames.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "ui_MeshvaneMainWindow.h"

#include <QLabel>
#include <QMainWindow>
#include <QtTest>

#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

struct Form {
    QMainWindow window;
    Ui::MeshvaneMainWindow ui = [this] {
        Ui::MeshvaneMainWindow result;
        result.setupUi(&window);
        return result;
    }();
    FormTable table{ui};

    LineEditCustom *field(const QString &name) const { return window.findChild<LineEditCustom *>(name); }
    QCheckBox *box(const QString &name) const { return window.findChild<QCheckBox *>(name); }
    FormReading read() const { return readForm(table); }
};

using Parameters = TransformParameters;

const struct {
    const char *name;
    double Parameters::*value;
    double onANewForm;
} numbers[] = {
    {"xScl", &Parameters::xScl, 1.0},       {"yScl", &Parameters::yScl, 1.0},
    {"zScl", &Parameters::zScl, 1.0},       {"xOfsB", &Parameters::xOfsB, 0.0},
    {"yOfsB", &Parameters::yOfsB, 0.0},     {"zOfsB", &Parameters::zOfsB, 0.0},
    {"xOfsA", &Parameters::xOfsA, 0.0},     {"yOfsA", &Parameters::yOfsA, 0.0},
    {"zOfsA", &Parameters::zOfsA, 0.0},     {"xLength", &Parameters::xLength, 0.0},
    {"yLength", &Parameters::yLength, 0.0}, {"zLength", &Parameters::zLength, 0.0},
    {"xAngle", &Parameters::xAngle, 0.0},   {"yAngle", &Parameters::yAngle, 0.0},
    {"zAngle", &Parameters::zAngle, 0.0},
};

const struct {
    const char *name;
    int Parameters::*value;
} flags[] = {
    {"xSet0", &Parameters::xSet0},     {"ySet0", &Parameters::ySet0},     {"zSet0", &Parameters::zSet0},
    {"xSameY", &Parameters::xSameY},   {"xSameZ", &Parameters::xSameZ},   {"ySameX", &Parameters::ySameX},
    {"ySameZ", &Parameters::ySameZ},   {"zSameX", &Parameters::zSameX},   {"zSameY", &Parameters::zSameY},
    {"xSetL", &Parameters::xSetL},     {"ySetL", &Parameters::ySetL},     {"zSetL", &Parameters::zSetL},
    {"xRotate", &Parameters::xRotate}, {"yRotate", &Parameters::yRotate}, {"zRotate", &Parameters::zRotate},
};

// QString would drop the sign of a zero.
QString exactText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// The values that differ from those of a new form: flags by name, then numbers as "name=value".
QStringList unusualValues(const Parameters &parameters)
{
    QStringList result;
    for (const auto &flag : flags) {
        if (parameters.*flag.value != 0)
            result << (parameters.*flag.value == 1 ? flag.name : "neither 0 nor 1");
    }
    for (const auto &number : numbers) {
        const double value = parameters.*number.value;
        if (value != number.onANewForm || std::signbit(value))
            result << QString(number.name) + '=' + exactText(value);
    }
    return result;
}

struct TextCase {
    const char *name;
    const char *text;
    const char *value; // with 17 digits
};

const TextCase textCases[] = {
    {"empty", "", "0"},
    {"blank", " ", "0"},
    {"no number", "abc", "0"},
    {"half a number", "1.5abc", "0"},
    {"comma", "1,5", "0"},
    {"hexadecimal", "0x10", "0"},
    {"zero", "0", "0"},
    {"negative zero", "-0", "-0"},
    {"fraction", "1.5", "1.5"},
    {"negative", "-2.25", "-2.25"},
    {"blanks around it", " 2 ", "2"},
    {"exponent", "1e3", "1000"},
    {"double precision", "16777217.25", "16777217.25"},
    {"too large for float", "1e39", "9.9999999999999994e+38"},
    {"infinite", "inf", "inf"},
    {"too large for double", "1e400", "inf"},
    {"not a number", "nan", "nan"},
};

struct Complaint {
    QString name;
    QStringList entries; // ticked boxes with the texts of their fields: "box=text"
    QString message;
};

// The complaints of each axis, then which of several complaints comes first.
const std::vector<Complaint> &complaints()
{
    static const std::vector<Complaint> all = [] {
        const QString negative = "? Length value must be nonnegative.  Calculation interrupted.";
        const QString noLength = "A value must be entered for ? length.";
        const QString noAngle = "A value must be entered for rotation about the ? axis.";
        const std::vector<Complaint> ofOneAxis{
            {"?: negative length", {"chb?SetL=-1"}, negative},
            {"?: tiny negative length", {"chb?SetL=-1e-300"}, negative},
            {"?: negative infinite length", {"chb?SetL=-inf"}, negative},
            {"?: empty length", {"chb?SetL="}, noLength},
            {"?: blank length", {"chb?SetL=  "}, noLength},
            {"?: empty angle", {"chbRotate?="}, noAngle},
            {"?: blank angle", {"chbRotate?= \t"}, noAngle},
            {"?: length before angle", {"chbRotate?=", "chb?SetL="}, noLength},
        };
        std::vector<Complaint> result;
        for (const QString &axis : axes()) {
            for (Complaint complaint : ofOneAxis) {
                complaint.name.replace('?', axis);
                complaint.entries.replaceInStrings("?", axis);
                complaint.message.replace('?', axis);
                result.push_back(complaint);
            }
        }
        result.push_back({"X length before Y and Z",
                          {"chbXSetL=", "chbYSetL=-1", "chbZSetL=-1"},
                          "A value must be entered for X length."});
        result.push_back({"Y length before Z",
                          {"chbXSetL=1", "chbYSetL=-1", "chbZSetL="},
                          "Y Length value must be nonnegative.  Calculation interrupted."});
        result.push_back({"Z length before X angle",
                          {"chbRotateX=", "chbXSetL=1", "chbYSetL=0", "chbZSetL="},
                          "A value must be entered for Z length."});
        result.push_back({"X angle before Y and Z",
                          {"chbRotateX=", "chbRotateY=", "chbRotateZ="},
                          "A value must be entered for rotation about the X axis."});
        result.push_back({"Y angle before Z",
                          {"chbRotateX=1", "chbRotateY=", "chbRotateZ="},
                          "A value must be entered for rotation about the Y axis."});
        return result;
    }();
    return all;
}

} // namespace

class tst_FormReader : public QObject {
    Q_OBJECT

private slots:
    void init() { m = std::make_unique<Form>(); }
    void cleanup() { m.reset(); }

    void newFormHasTheUsualValues();
    void scalesAndOffsets_data() { addRows(textCases); }
    void scalesAndOffsets();
    void lengthsAndAngles_data() { addRows(textCases); }
    void lengthsAndAngles();
    void tickedBoxesSetTheirFlags();
    void fieldsOfUntickedBoxesAreIgnored();
    void everyReadingStartsFromZero();

    void refusedLengthsAndAngles_data() { addRows(complaints()); }
    void refusedLengthsAndAngles();
    void messagesOfAllCheckedFieldsAreJoinedInOrder();
    void messagesOfFieldsComeBeforeLengthsAndAngles();
    void disabledFieldsAreNotAsked();
    void standingMessageRefusesAnEmptyField();
    void readingRunsTheChecksOfTheFields();

private:
    void requireNumbersOfCheckedFields() const
    {
        for (LineEditCustom *field : m->table.checkedFields) {
            field->setFieldName(field->objectName(), false);
            field->addPolicy(PolicyNumber);
        }
    }

    std::unique_ptr<Form> m;
};

void tst_FormReader::newFormHasTheUsualValues()
{
    QCOMPARE(m->read().complaint, QString());
    QCOMPARE(unusualValues(m->read().parameters), QStringList());
}

void tst_FormReader::scalesAndOffsets()
{
    const TextCase &row = currentRow(textCases);
    const struct {
        const char *field;
        const char *parameter;
        const char *usual;
    } fields[] = {{"edt?Scale", "%1Scl", "1"}, {"edt?OffsB", "%1OfsB", "0"}, {"edt?OffsA", "%1OfsA", "0"}};
    for (const QString &axis : axes()) {
        for (const auto &each : fields) {
            LineEditCustom *field = m->field(onAxis(each.field, axis));
            field->setText(row.text);
            const FormReading reading = m->read();
            QCOMPARE(reading.complaint, QString());
            QStringList expected;
            if (QString(row.value) != each.usual)
                expected << QString(each.parameter).arg(axis.toLower()) + '=' + row.value;
            QCOMPARE(unusualValues(reading.parameters), expected);
            field->setText(each.usual);
        }
    }
}

// Blank texts and negative lengths are refused.
void tst_FormReader::lengthsAndAngles()
{
    const TextCase &row = currentRow(textCases);
    const bool isBlank = QString(row.text).trimmed().isEmpty();
    const struct {
        const char *box;
        const char *field;
        const char *flag;
        const char *parameter;
        bool refuses;
    } fields[] = {
        {"chb?SetL", "edt?SetL", "%1SetL", "%1Length", isBlank || QString(row.value).toDouble() < 0.0},
        {"chbRotate?", "edtRotate?", "%1Rotate", "%1Angle", isBlank},
    };
    for (const QString &axis : axes()) {
        for (const auto &each : fields) {
            m->box(onAxis(each.box, axis))->setChecked(true);
            m->field(onAxis(each.field, axis))->setText(row.text);
            const FormReading reading = m->read();
            QCOMPARE(!reading.complaint.isEmpty(), each.refuses);
            QStringList expected;
            if (!each.refuses)
                expected << QString(each.flag).arg(axis.toLower());
            if (!each.refuses && QString(row.value) != "0")
                expected << QString(each.parameter).arg(axis.toLower()) + '=' + row.value;
            QCOMPARE(unusualValues(reading.parameters), expected);
            m->box(onAxis(each.box, axis))->setChecked(false);
        }
    }
}

void tst_FormReader::tickedBoxesSetTheirFlags()
{
    const struct {
        const char *box;
        const char *flag;
    } rows[] = {
        {"chbXSet0", "xSet0"},   {"chbYSet0", "ySet0"},   {"chbZSet0", "zSet0"},
        {"chbXsameY", "xSameY"}, {"chbXsameZ", "xSameZ"}, {"chbYsameX", "ySameX"},
        {"chbYsameZ", "ySameZ"}, {"chbZsameX", "zSameX"}, {"chbZsameY", "zSameY"},
    };
    QStringList all;
    for (const auto &row : rows) {
        m->box(row.box)->setChecked(true);
        QCOMPARE(unusualValues(m->read().parameters), QStringList{row.flag});
        m->box(row.box)->setChecked(false);
        all << row.flag;
    }
    for (const auto &row : rows)
        m->box(row.box)->setChecked(true);
    QCOMPARE(unusualValues(m->read().parameters), all);
}

void tst_FormReader::fieldsOfUntickedBoxesAreIgnored()
{
    for (const QString &axis : axes()) {
        m->field(onAxis("edt?SetL", axis))->setText("-5");
        m->field(onAxis("edtRotate?", axis))->setText("90");
    }
    QCOMPARE(m->read().complaint, QString());
    QCOMPARE(unusualValues(m->read().parameters), QStringList());
}

void tst_FormReader::everyReadingStartsFromZero()
{
    m->box("chbRotateX")->setChecked(true);
    m->field("edtRotateX")->setText("90");
    QCOMPARE(unusualValues(m->read().parameters), QStringList({"xRotate", "xAngle=90"}));
    m->box("chbRotateX")->setChecked(false);
    QCOMPARE(unusualValues(m->read().parameters), QStringList());
}

void tst_FormReader::refusedLengthsAndAngles()
{
    const Complaint &row = currentRow(complaints());
    for (const QString &entry : row.entries) {
        const QString box = entry.section('=', 0, 0);
        m->box(box)->setChecked(true);
        m->field(QString(box).replace("chb", "edt"))->setText(entry.section('=', 1));
    }
    QCOMPARE(m->read().complaint, row.message);
}

void tst_FormReader::messagesOfAllCheckedFieldsAreJoinedInOrder()
{
    requireNumbersOfCheckedFields();
    for (const QString name : {"edtZScale", "edtYScale", "edtXScale", "edtFileOut", "edtFileIn"})
        m->field(name)->setText("abc");
    QString expected;
    for (const QString name : {"edtFileIn", "edtFileOut", "edtXScale", "edtYScale", "edtZScale"})
        expected += name + " field can only contain a number value.<br>";
    QCOMPARE(m->read().complaint, expected);
}

void tst_FormReader::messagesOfFieldsComeBeforeLengthsAndAngles()
{
    requireNumbersOfCheckedFields();
    m->box("chbXSetL")->setChecked(true);
    m->box("chbRotateX")->setChecked(true);
    m->field("edtZScale")->setText("abc");
    QCOMPARE(m->read().complaint, QString("edtZScale field can only contain a number value.<br>"));
}

void tst_FormReader::disabledFieldsAreNotAsked()
{
    requireNumbersOfCheckedFields();
    m->field("edtXScale")->setText("abc");
    m->field("edtXScale")->setEnabled(false);
    QCOMPARE(m->read().complaint, QString());
    QCOMPARE(unusualValues(m->read().parameters), QStringList{"xScl=0"});
}

void tst_FormReader::standingMessageRefusesAnEmptyField()
{
    requireNumbersOfCheckedFields();
    m->field("edtXScale")->setText("abc");
    m->field("edtXScale")->clear();
    QCOMPARE(m->read().complaint, QString("edtXScale field can only contain a number value.<br>"));
    m->field("edtXScale")->setText("5");
    m->field("edtXScale")->clear();
    QCOMPARE(m->read().complaint, QString());
}

void tst_FormReader::readingRunsTheChecksOfTheFields()
{
    m->field("edtFileIn")->addPolicy(PolicyRequired);
    const QLabel *icon = m->field("edtFileIn")->findChild<QLabel *>();
    QVERIFY(icon->isHidden());
    m->read();
    QVERIFY(!icon->isHidden());
    QCOMPARE(icon->toolTip(), QString("This field is required to be filled."));
}

MESHVANE_QTEST_MAIN(tst_FormReader)
#include "tst_FormReader.moc"
