// What the field does with the findings of its checks: which messages stand after each check run, and in
// which order. The rules of the checks are tested in tst_FieldChecks.
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/widgets/FieldUnderTest.h"

#include <QtTest>

#include <functional>
#include <vector>

namespace {

// One check run: a text, and the messages that stand after it.
struct Step {
    QString text;
    QStringList messages;
};

struct Case {
    const char *name;
    std::function<void(LineEditCustom &)> configure;
    std::vector<Step> steps;
};

using Configuration = std::function<void(LineEditCustom &)>;

Configuration policies(QList<int> codes)
{
    return [codes](LineEditCustom &field) {
        for (const int code : codes)
            field.addPolicy(code);
    };
}

Configuration usedNames(QList<int> codes, QStringList names)
{
    return [codes, names](LineEditCustom &field) {
        policies(codes)(field);
        field.setUsedNames(names);
    };
}

Configuration invalidCharacters(QList<int> codes, QStringList characters)
{
    return [codes, characters](LineEditCustom &field) {
        policies(codes)(field);
        field.setInvalidCharacters(characters);
    };
}

Configuration invalidValues(QList<int> values)
{
    return [values](LineEditCustom &field) {
        field.addPolicy(PolicyInvalidValues);
        for (const int value : values)
            field.addInvalidValue(value, false);
    };
}

Configuration limits(QList<int> codes, float minimum, float maximum)
{
    return [codes, minimum, maximum](LineEditCustom &field) {
        policies(codes)(field);
        field.setMinimumValue(minimum);
        field.setMaximumValue(maximum);
    };
}

Configuration numberNamed(QString name, bool bold)
{
    return [name, bold](LineEditCustom &field) {
        field.setFieldName(name, bold);
        field.addPolicy(PolicyNumber);
    };
}

void everyPolicyInReverse(LineEditCustom &field)
{
    for (int code = PolicyMaximum; code >= PolicyNumber; --code)
        field.addPolicy(code);
    field.setUsedNames({"-7", "-7", "-7"});
    field.setInvalidCharacters({"-"});
    field.addInvalidValue(-7, false);
    field.setMinimumValue(1.0F);
    field.setMaximumValue(-20.0F);
}

const QString number = "This field can only contain a number value.";
const QString required = "This field is required to be filled.";
const QString used = "This field contains a name that is already used.";
const QString noDirectory = "This directory doesn't exist.";
const QString noFile = "This file doesn't exist.";
const QString tooSmall = "This value must be greater than: 1";
const QString tooLarge = "This value must be less than: 10";

QString character(const QString &text) { return "This field contains invalid character: " + text; }
QString value(const QString &text) { return "This field contains invalid value \"" + text + "\""; }

const Case cases[] = {
    {"name in bold",
     numberNamed("X Scale", true),
     {{"abc", {"<b>X Scale</b> field can only contain a number value."}}}},
    {"plain name",
     numberNamed("X Scale", false),
     {{"abc", {"X Scale field can only contain a number value."}}}},
    {"an empty name in bold is a name",
     numberNamed("", true),
     {{"abc", {"<b></b> field can only contain a number value."}}}},

    {"a number message stands while the field is empty",
     policies({PolicyNumber}),
     {{"", {}}, {"abc", {number}}, {"", {number}}, {"5", {}}, {"", {}}}},
    {"an empty text is only required, since it names an existing directory",
     policies({PolicyRequired, PolicyFileExists}),
     {{"", {required}}, {"missing", {noFile}}, {"", {required}}, {".", {}}}},
    {"limit messages stand until a number is entered",
     limits({PolicyMinimum, PolicyMaximum}, 1.0F, 10.0F),
     {{"abc", {}},
      {"0", {tooSmall}},
      {"abc", {tooSmall}},
      {"", {tooSmall}},
      {"11", {tooLarge}},
      {"abc", {tooLarge}},
      {"", {tooLarge}},
      {"nan", {}},
      {"", {}}}},
    {"each invalid character has its message, in list order",
     invalidCharacters({PolicyInvalidCharacters}, {"/", "ab", "*"}),
     {{"a/b", {character("/")}},
      {"*ab", {character("ab"), character("*")}},
      {"x", {}},
      {"b/", {character("/")}},
      {"", {}}}},
    {"each invalid value has its message",
     invalidValues({0, -3}),
     {{"0", {value("0")}}, {"-3", {value("-3")}}, {"1", {}}}},
    {"an invalid value that was added twice has one message",
     invalidValues({0, 0}),
     {{"0", {value("0")}}, {"1", {}}}},

    {"the field's own name is removed from the used names for good",
     usedNames({PolicyUniqueName}, {"a", "b"}),
     {{"a", {}}, {"b", {used}}, {"a", {}}}},
    {"each run removes one of several equal names until a run is clean",
     usedNames({PolicyUniqueName}, {"a", "a"}),
     {{"a", {used}}, {"a", {}}}},
    {"after a clean run no name is removed",
     usedNames({PolicyUniqueName}, {"a"}),
     {{"x", {}}, {"a", {used}}, {"a", {used}}, {"x", {}}}},
    {"of two checks with the same message the later one removes it",
     usedNames({PolicyUniqueName, PolicyUniqueNameNoCase}, {"a", "a"}),
     {{"a", {}}}},
    {"of two checks with the same message the later one adds it",
     usedNames({PolicyUniqueNameNoCase, PolicyUniqueName}, {"A"}),
     {{"x", {}}, {"a", {used}}}},

    {"checks run in their own order, whatever the order of the policies",
     everyPolicyInReverse,
     {{"-7",
       {character("-"), used, value("-7"), noDirectory, noFile, tooSmall,
        "This value must be less than: -20"}}}},
    {"messages stand in the order in which they first failed",
     limits({PolicyNumber, PolicyMinimum}, 1.0F, 0.0F),
     {{"0", {tooSmall}}, {"abc", {tooSmall, number}}, {"0", {tooSmall}}, {"5", {}}}},
    {"a message that was removed returns at the end",
     invalidCharacters({PolicyNumber, PolicyInvalidCharacters}, {"e"}),
     {{"e", {number, character("e")}}, {"1e5", {character("e")}}, {"e", {character("e"), number}}}},
};

} // namespace

class tst_LineEditChecks : public QObject {
    Q_OBJECT

private slots:
    void messages_data();
    void messages();

    void messageOutlivesItsPolicy();
    void messageOfARemovedInvalidValueStands();
    void messageWithTheOldNameStandsUntilADisabledRun();
    void repeatedMessageIsShownOnce();
};

void tst_LineEditChecks::messages_data() { addRows(cases); }

void tst_LineEditChecks::messages()
{
    const Case &row = currentRow(cases);
    FieldUnderTest f;
    row.configure(f.field);
    for (const Step &step : row.steps) {
        f.check(step.text);
        QVERIFY2(f.shownMessages() == step.messages,
                 qPrintable('"' + step.text + "\": " + f.shownMessages().join(" | ")));
        QCOMPARE(f.showsIcon(), !step.messages.isEmpty());
    }
}

void tst_LineEditChecks::messageOutlivesItsPolicy()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyNumber);
    f.check("abc");
    f.field.addPolicy(PolicyNone);
    f.check("5");
    QCOMPARE(f.shownMessages(), QStringList{number});
    f.field.addPolicy(PolicyNumber);
    f.check("6");
    QCOMPARE(f.shownMessages(), QStringList());
}

void tst_LineEditChecks::messageOfARemovedInvalidValueStands()
{
    FieldUnderTest f;
    invalidValues({0})(f.field);
    f.check("0");
    f.field.addInvalidValue(5, true);
    f.check("1");
    QCOMPARE(f.shownMessages(), QStringList{value("0")});
    f.check("5");
    QCOMPARE(f.shownMessages(), QStringList({value("0"), value("5")}));
}

void tst_LineEditChecks::messageWithTheOldNameStandsUntilADisabledRun()
{
    FieldUnderTest f;
    numberNamed("Old", true)(f.field);
    f.check("abc");
    f.field.setFieldName("New", true);
    f.check("abcd");
    QCOMPARE(f.shownMessages(), QStringList({"<b>Old</b> field can only contain a number value.",
                                             "<b>New</b> field can only contain a number value."}));
    f.check("5");
    QCOMPARE(f.shownMessages(), QStringList{"<b>Old</b> field can only contain a number value."});
    f.field.setEnabled(false);
    f.field.applyLineEditPolicy();
    f.field.setEnabled(true);
    f.check("6");
    QCOMPARE(f.shownMessages(), QStringList());
}

void tst_LineEditChecks::repeatedMessageIsShownOnce()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyNumber);
    for (const char *text : {"abc", "abc", "abcd"})
        f.check(text);
    QCOMPARE(f.icon->toolTip(), number);
    QCOMPARE(f.field.errorText(), number + "<br>");
}

MESHVANE_QTEST_MAIN(tst_LineEditChecks)
#include "tst_LineEditChecks.moc"
