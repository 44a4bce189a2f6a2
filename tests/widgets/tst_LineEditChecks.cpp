// Every check of the field, through the field: which texts fail, what the user reads, and what stays
// standing.
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"
#include "tests/widgets/FieldUnderTest.h"

#include <QtTest>

#include <functional>
#include <vector>

namespace {

// One check run: a text, and the messages that stand afterwards. "@" in a text is the working folder.
struct Step {
    QString text;
    QStringList messages;
};

struct Case {
    const char *name;
    std::function<void(LineEditCustom &)> configure;
    std::vector<Step> steps;
};

std::function<void(LineEditCustom &)> policies(QList<int> codes)
{
    return [codes](LineEditCustom &field) {
        for (const int code : codes)
            field.addPolicy(code);
    };
}

std::function<void(LineEditCustom &)> invalidCharacters(QStringList characters)
{
    return [characters](LineEditCustom &field) {
        field.addPolicy(PolicyInvalidCharacters);
        field.setInvalidCharacters(characters);
    };
}

std::function<void(LineEditCustom &)> usedNames(QList<int> codes, QStringList names)
{
    return [codes, names](LineEditCustom &field) {
        for (const int code : codes)
            field.addPolicy(code);
        field.setUsedNames(names);
    };
}

std::function<void(LineEditCustom &)> invalidValues(QList<int> values)
{
    return [values](LineEditCustom &field) {
        field.addPolicy(PolicyInvalidValues);
        for (const int value : values)
            field.addInvalidValue(value, false);
    };
}

std::function<void(LineEditCustom &)> minimum(float value)
{
    return [value](LineEditCustom &field) {
        field.addPolicy(PolicyMinimum);
        field.setMinimumValue(value);
    };
}

std::function<void(LineEditCustom &)> maximum(float value)
{
    return [value](LineEditCustom &field) {
        field.addPolicy(PolicyMaximum);
        field.setMaximumValue(value);
    };
}

std::function<void(LineEditCustom &)> named(QString name, bool bold,
                                            std::function<void(LineEditCustom &)> more)
{
    return [name, bold, more](LineEditCustom &field) {
        field.setFieldName(name, bold);
        more(field);
    };
}

const QString number = "This field can only contain a number value.";
const QString required = "This field is required to be filled.";
const QString used = "This field contains a name that is already used.";
const QString noDirectory = "This directory doesn't exist.";
const QString noFile = "This file doesn't exist.";
const QString noParent = "This directory directory doesn't exist.";

const std::vector<Case> &cases()
{
    static const std::vector<Case> all{
        {"number: what converts",
         policies({PolicyNumber}),
         {{"5", {}},
          {"abc", {number}},
          {"-1.5e3", {}},
          {"1,5", {number}},
          {" 5 ", {}},
          {"5 6", {number}},
          {".5", {}},
          {" ", {number}},
          {"+2", {}},
          {"0x10", {number}},
          {"nan", {}},
          {"1e400", {number}},
          {"inf", {}},
          {"1e39", {number}},
          {"3.4e38", {}},
          {"-1e39", {number}},
          {"1e-40", {}},
          {"1e-60", {number}}}},
        {"number: the message stands while the field is empty",
         policies({PolicyNumber}),
         {{"", {}}, {"abc", {number}}, {"", {number}}, {"5", {}}, {"", {}}}},
        {"number: named in bold",
         named("X Scale", true, policies({PolicyNumber})),
         {{"abc", {"<b>X Scale</b> field can only contain a number value."}}}},
        {"number: named plainly",
         named("X Scale", false, policies({PolicyNumber})),
         {{"abc", {"X Scale field can only contain a number value."}}}},
        {"empty bold name is a name",
         named("", true, policies({PolicyNumber})),
         {{"abc", {"<b></b> field can only contain a number value."}}}},

        {"invalid characters: none given", invalidCharacters({}), {{"a/b", {}}}},
        {"invalid characters: one message an entry, in list order",
         invalidCharacters({"/", "ab", "*"}),
         {{"x", {}},
          {"a/b", {"This field contains invalid character: /"}},
          {"*ab", {"This field contains invalid character: ab", "This field contains invalid character: *"}},
          {"AB", {}},
          {"b/", {"This field contains invalid character: /"}},
          {"", {}}}},
        {"invalid characters: at the start and at the end",
         invalidCharacters({"#"}),
         {{"#a", {"This field contains invalid character: #"}},
          {"a", {}},
          {"a#", {"This field contains invalid character: #"}}}},
        {"invalid characters: named",
         named("Name", true, invalidCharacters({":"})),
         {{"a:", {"<b>Name</b> field contains invalid character: :"}}}},

        {"required", policies({PolicyRequired}), {{"", {required}}, {" ", {}}, {"", {required}}, {"a", {}}}},
        {"required: named",
         named("Stl Input File", true, policies({PolicyRequired})),
         {{"", {"<b>Stl Input File</b> field is required to be filled."}}}},

        {"unique name: own name is dropped once and for all",
         usedNames({PolicyUniqueName}, {"a", "b"}),
         {{"a", {}}, {"b", {used}}, {"a", {}}}},
        {"unique name: only the first of two equal names is dropped",
         usedNames({PolicyUniqueName}, {"a", "a"}),
         {{"a", {used}}}},
        {"unique name: a second run drops the second, as long as no run was clean",
         usedNames({PolicyUniqueName}, {"a", "a"}),
         {{"a", {used}}, {"a", {}}}},
        {"unique name: after a clean run nothing is dropped",
         usedNames({PolicyUniqueName}, {"a"}),
         {{"x", {}}, {"a", {used}}, {"a", {used}}, {"x", {}}}},
        {"unique name: case counts",
         usedNames({PolicyUniqueName}, {"A"}),
         {{"x", {}}, {"a", {}}, {"A", {used}}}},
        {"unique name: nothing used", usedNames({PolicyUniqueName}, {}), {{"a", {}}, {"", {}}}},
        {"unique name: the empty text can be used",
         usedNames({PolicyUniqueName}, {""}),
         {{"x", {}}, {"", {used}}}},
        {"unique name without case",
         usedNames({PolicyUniqueNameNoCase}, {"A"}),
         {{"x", {}}, {"a", {used}}, {"ab", {}}, {"A", {used}}}},
        {"unique name without case: own name is dropped with case",
         usedNames({PolicyUniqueNameNoCase}, {"A"}),
         {{"a", {used}}, {"A", {}}}},
        {"unique name: both kinds, two equal names, each drops one",
         usedNames({PolicyUniqueName, PolicyUniqueNameNoCase}, {"a", "a"}),
         {{"a", {}}}},
        {"unique name: both kinds share one message",
         usedNames({PolicyUniqueName, PolicyUniqueNameNoCase}, {"a", "a", "a"}),
         {{"a", {used}}}},
        {"unique name: the kind without case runs last and decides",
         usedNames({PolicyUniqueNameNoCase, PolicyUniqueName}, {"A"}),
         {{"x", {}}, {"a", {used}}}},
        {"unique name: named",
         named("Name", true, usedNames({PolicyUniqueName}, {"a", "a"})),
         {{"a", {"<b>Name</b> field contains a name that is already used."}}}},

        {"invalid values: none given", policies({PolicyInvalidValues}), {{"0", {}}}},
        {"invalid values: compared as text",
         invalidValues({0, -3}),
         {{"0", {"This field contains invalid value \"0\""}},
          {"0.0", {}},
          {"-3", {"This field contains invalid value \"-3\""}},
          {"00", {}},
          {"0", {"This field contains invalid value \"0\""}},
          {" 0", {}},
          {"-0", {}},
          {"", {}}}},
        {"invalid values: a value given twice has one message",
         invalidValues({0, 0}),
         {{"0", {"This field contains invalid value \"0\""}}, {"1", {}}}},
        {"invalid values: named",
         named("X Scale", true, invalidValues({0})),
         {{"0", {"<b>X Scale</b> field contains invalid value \"0\""}}}},

        {"directory exists",
         policies({PolicyDirectoryExists}),
         {{"sub", {}},
          {"nosub", {noDirectory}},
          {"", {}},
          {"file", {noDirectory}},
          {".", {}},
          {"@/nosub", {noDirectory}},
          {"@/sub", {}},
          {"@/file", {noDirectory}},
          {"@", {}},
          {" ", {noDirectory}},
          {"sub/..", {}}}},
        {"directory exists: named",
         named("Folder", true, policies({PolicyDirectoryExists})),
         {{"nosub", {"<b>Folder</b> doesn't exist."}}}},

        {"file exists",
         policies({PolicyFileExists}),
         {{"file", {}},
          {"nofile", {noFile}},
          {"", {}},
          {"sub/nofile", {noFile}},
          {"sub", {}},
          {"@/nofile", {noFile}},
          {"@/file", {}},
          {"File", {noFile}},
          {"@/sub", {}},
          {" ", {noFile}}}},
        {"file exists: named",
         named("Stl Input File", true, policies({PolicyFileExists})),
         {{"nofile", {"<b>Stl Input File</b> doesn't exist."}}}},
        {"file exists and required: an empty text is only required",
         policies({PolicyRequired, PolicyFileExists}),
         {{"", {required}}, {"nofile", {noFile}}, {"", {required}}, {"file", {}}}},

        {"parent directory exists",
         policies({PolicyParentDirectoryExists}),
         {{"@/nosub/out", {noParent}},
          {"nosub/out", {}},
          {"@/file/out", {noParent}},
          {"@/sub/out", {}},
          {"@/nosub/", {noParent}},
          {"@/nosub", {}},
          {"@/nosub/a/b", {noParent}},
          {"", {}},
          {"@/nosub//", {noParent}},
          {"@/sub/", {}},
          {"@/nosub/x", {noParent}},
          {"/out", {}},
          {"@/nosub/x", {noParent}},
          {"/", {}}}},
        {"parent directory exists: named",
         named("Stl Output File", true, policies({PolicyParentDirectoryExists})),
         {{"@/nosub/out", {"<b>Stl Output File</b> directory doesn't exist."}}}},

        {"minimum: equal passes",
         minimum(1.0F),
         {{"0.5", {"This value must be greater than: 1"}},
          {"1", {}},
          {"-2", {"This value must be greater than: 1"}},
          {"2", {}}}},
        {"minimum: a text that does not convert changes nothing",
         minimum(1.0F),
         {{"abc", {}},
          {"0", {"This value must be greater than: 1"}},
          {"abc", {"This value must be greater than: 1"}},
          {"", {"This value must be greater than: 1"}},
          {"nan", {}},
          {"", {}}}},
        {"minimum: infinite", minimum(1.0F), {{"-inf", {"This value must be greater than: 1"}}, {"inf", {}}}},
        {"minimum: six digits",
         minimum(1234567.0F),
         {{"0", {"This value must be greater than: 1.23457e+06"}}}},
        {"minimum: exact tie of six digits goes away from zero",
         minimum(100000.5F),
         {{"0", {"This value must be greater than: 100001"}}}},
        {"minimum: fraction and name",
         named("Angle", true, minimum(-0.1F)),
         {{"-0.2", {"<b>Angle</b> value must be greater than: -0.1"}}, {"-0.1", {}}}},
        {"maximum: equal passes",
         maximum(10.0F),
         {{"10.5", {"This value must be less than: 10"}},
          {"10", {}},
          {"11", {"This value must be less than: 10"}},
          {"9", {}}}},
        {"maximum: a text that does not convert changes nothing",
         maximum(10.0F),
         {{"abc", {}},
          {"20", {"This value must be less than: 10"}},
          {"1e400", {"This value must be less than: 10"}},
          {"", {"This value must be less than: 10"}},
          {"nan", {}}}},
        {"maximum: six digits and name",
         named("Angle", false, maximum(0.000012345678F)),
         {{"1", {"Angle value must be less than: 1.23457e-05"}}}},

        {"checks run in their own order, whatever the order of the policies",
         [](LineEditCustom &field) {
             for (int code = PolicyMaximum; code >= PolicyNumber; --code)
                 field.addPolicy(code);
             field.setUsedNames({"-7", "-7", "-7"});
             field.setInvalidCharacters({"-"});
             field.addInvalidValue(-7, false);
             field.setMinimumValue(1.0F);
             field.setMaximumValue(-20.0F);
         },
         {{"-7",
           {"This field contains invalid character: -", used, "This field contains invalid value \"-7\"",
            noDirectory, noFile, "This value must be greater than: 1",
            "This value must be less than: -20"}}}},
        {"an absolute text that nothing is right with",
         [](LineEditCustom &field) {
             for (const int code : {10, 9, 8, 5, 1})
                 field.addPolicy(code);
             field.setInvalidCharacters({"?"});
         },
         {{"@/nosub/?",
           {number, "This field contains invalid character: ?", noDirectory, noFile, noParent}}}},
        {"messages stand in the order in which they first failed",
         [](LineEditCustom &field) {
             field.addPolicy(PolicyNumber);
             field.addPolicy(PolicyMinimum);
             field.setMinimumValue(10.0F);
         },
         {{"5", {"This value must be greater than: 10"}},
          {"abc", {"This value must be greater than: 10", number}},
          {"5", {"This value must be greater than: 10"}},
          {"50", {}}}},
        {"a message that is removed and comes back goes to the end",
         [](LineEditCustom &field) {
             field.addPolicy(PolicyNumber);
             field.addPolicy(PolicyInvalidCharacters);
             field.setInvalidCharacters({"a"});
         },
         {{"a", {number, "This field contains invalid character: a"}},
          {"x", {number}},
          {"xa", {number, "This field contains invalid character: a"}},
          {"1", {}},
          {"", {}},
          {"a", {number, "This field contains invalid character: a"}}}},
        {"a policy that is added twice counts once", policies({1, 1, 1}), {{"abc", {number}}, {"1", {}}}},
        {"unknown codes and the one for full paths are ignored",
         policies({7, 14, -1, 99, 1000}),
         {{"abc", {}}, {"", {}}, {"@/nosub/x", {}}}},
        {"code 0 empties the list", policies({1, 2, 9, 0}), {{"abc", {}}, {"", {}}}},
        {"code 0 empties what came before it only", policies({2, 0, 1}), {{"abc", {number}}}},
    };
    return all;
}

} // namespace

class tst_LineEditChecks : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_folder.reset(); }

    void messages_data();
    void messages();

    void messageOutlivesItsPolicy();
    void messageOfADroppedInvalidValueStands();
    void invalidValuesAreClearedFirstOnRequest();
    void renamedFieldKeepsTheOldMessageUntilADisabledRun();
    void disabledRunKeepsTheRightToTheOwnName();
    void hiddenRunKeepsTheRightToTheOwnName();
    void sameMessageTwiceIsShownOnce();

private:
    std::unique_ptr<WorkingFolder> m_folder;
};

void tst_LineEditChecks::init()
{
    m_folder = std::make_unique<WorkingFolder>();
    m_folder->makeFolder("sub");
    m_folder->write("file", "x");
}

void tst_LineEditChecks::messages_data()
{
    QTest::addColumn<int>("index");
    for (std::size_t index = 0; index < cases().size(); ++index)
        QTest::newRow(cases()[index].name) << int(index);
}

void tst_LineEditChecks::messages()
{
    QFETCH(int, index);
    const Case &row = cases()[std::size_t(index)];
    FieldUnderTest f;
    row.configure(f.field);
    for (const Step &step : row.steps) {
        QString text = step.text;
        text.replace('@', m_folder->path());
        f.check(text);
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

void tst_LineEditChecks::messageOfADroppedInvalidValueStands()
{
    FieldUnderTest f;
    invalidValues({0})(f.field);
    f.check("0");
    f.field.addInvalidValue(5, true);
    f.check("1");
    QCOMPARE(f.shownMessages(), QStringList{"This field contains invalid value \"0\""});
}

void tst_LineEditChecks::invalidValuesAreClearedFirstOnRequest()
{
    FieldUnderTest f;
    invalidValues({0, 1})(f.field);
    f.field.addInvalidValue(2, true);
    f.check("0");
    QVERIFY(!f.showsIcon());
    f.check("1");
    QVERIFY(!f.showsIcon());
    f.check("2");
    QCOMPARE(f.shownMessages(), QStringList{"This field contains invalid value \"2\""});
}

void tst_LineEditChecks::renamedFieldKeepsTheOldMessageUntilADisabledRun()
{
    FieldUnderTest f;
    f.field.setFieldName("Old", true);
    f.field.addPolicy(PolicyNumber);
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

void tst_LineEditChecks::disabledRunKeepsTheRightToTheOwnName()
{
    FieldUnderTest f;
    usedNames({PolicyUniqueName}, {"a"})(f.field);
    f.field.setEnabled(false);
    f.check("a");
    f.field.setEnabled(true);
    f.check("a");
    QVERIFY(!f.showsIcon());
}

void tst_LineEditChecks::hiddenRunKeepsTheRightToTheOwnName()
{
    FieldUnderTest f;
    usedNames({PolicyUniqueName}, {"a"})(f.field);
    f.field.hide();
    f.check("a");
    f.field.show();
    f.check("a");
    QVERIFY(!f.showsIcon());
}

void tst_LineEditChecks::sameMessageTwiceIsShownOnce()
{
    FieldUnderTest f;
    f.field.addPolicy(PolicyNumber);
    f.check("abc");
    f.check("abc");
    f.check("abcd");
    QCOMPARE(f.icon->toolTip(), number);
    QCOMPARE(f.field.errorText(), number + "<br>");
}

MESHVANE_QTEST_MAIN(tst_LineEditChecks)
#include "tst_LineEditChecks.moc"
