// The rule of each check: which texts fail, which pass, which leave the messages as they are, and what the
// messages say.
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/TestRows.h"
#include "tests/support/qt/WorkingFolder.h"
#include "widgets/FieldChecks.h"

#include <QtTest>

namespace {

// "file" exists.
#ifdef Q_OS_WIN
constexpr const char *missingUnlessCaseIsIgnored = "missing";
#else
constexpr const char *missingUnlessCaseIsIgnored = "File";
#endif

FieldFindings run(LineEditPolicy policy, const FieldFacts &facts)
{
    for (const FieldCheck &check : fieldChecks()) {
        if (check.policy == policy)
            return check.run(facts);
    }
    return {{true, "(no such check)"}};
}

// "+" adds the message, "-" removes it.
QStringList described(const FieldFindings &findings)
{
    QStringList result;
    for (const FieldFinding &finding : findings)
        result << (finding.failed ? "+" : "-") + finding.message;
    return result;
}

// The field has minimum 1, maximum 10, the used names "A" and "", the invalid value "0" and the invalid
// characters "ab". "@" in a text is the working folder, which holds the folder "sub" and the file "file".
struct Rule {
    const char *name;
    LineEditPolicy policy;
    QString unnamedHead;
    QString tail;
    QStringList failing;
    QStringList passing;
    QStringList leavingMessagesAlone;
};

const Rule rules[] = {
    {"number",
     PolicyNumber,
     "This",
     " field can only contain a number value.",
     {"abc", "1,5", "5 6", " ", "0x10", "1e400", "1e39", "-1e39", "1e-60"},
     {"5", "-1.5e3", " 5 ", ".5", "+2", "nan", "inf", "3.4e38", "1e-40"},
     {""}},
    {"invalid characters",
     PolicyInvalidCharacters,
     "This",
     " field contains invalid character: ab",
     {"ab", "abx", "xab", "xabx"},
     {"AB", "a b", ""},
     {}},
    {"required", PolicyRequired, "This", " field is required to be filled.", {""}, {" ", "a"}, {}},
    {"unique name",
     PolicyUniqueName,
     "This",
     " field contains a name that is already used.",
     {"A", ""},
     {"a", "AB", " "},
     {}},
    {"unique name in any case",
     PolicyUniqueNameNoCase,
     "This",
     " field contains a name that is already used.",
     {"A", "a", ""},
     {"ab", " "},
     {}},
    {"invalid values",
     PolicyInvalidValues,
     "This",
     " field contains invalid value \"0\"",
     {"0"},
     {"0.0", "00", " 0", "-0", ""},
     {}},
    {"directory exists",
     PolicyDirectoryExists,
     "This directory",
     " doesn't exist.",
     {"missing", "file", "@/missing", "@/file", " "},
     {"sub", "", ".", "sub/..", "@/sub", "@"},
     {}},
    {"file exists",
     PolicyFileExists,
     "This file",
     " doesn't exist.",
     {"missing", "sub/missing", "@/missing", missingUnlessCaseIsIgnored, " "},
     {"file", "@/file", "sub", "@/sub", ""},
     {}},
    {"parent directory exists",
     PolicyParentDirectoryExists,
     "This directory",
     " directory doesn't exist.",
     {"@/missing/out", "@/file/out", "@/missing/", "@/missing//", "@/missing/a/b"},
     {"missing/out", "@/sub/out", "@/sub/", "@/missing", "/out", "/", ""},
     {}},
    {"minimum",
     PolicyMinimum,
     "This",
     " value must be greater than: 1",
     {"0.5", "-2", "-inf"},
     {"1", "2", "inf", "nan"},
     {"abc", "1e400", ""}},
    {"maximum",
     PolicyMaximum,
     "This",
     " value must be less than: 10",
     {"10.5", "11", "inf"},
     {"10", "9", "-inf", "nan"},
     {"abc", "1e400", ""}},
};

} // namespace

class tst_FieldChecks : public QObject {
    Q_OBJECT

private slots:
    void checksStandInTheirOrder();
    void textsOfARule_data();
    void textsOfARule();
    void limits_data();
    void limits();
    void emptyListsLeaveTheMessagesAlone();
    void everyEntryOfAListIsAnsweredInListOrder();
    void ownNameIsRemovedFromTheFieldsListForGood();
    void withoutTheRightToTheOwnNameTheListStays();
};

void tst_FieldChecks::checksStandInTheirOrder()
{
    QList<int> order;
    for (const FieldCheck &check : fieldChecks())
        order << check.policy;
    QCOMPARE(order, QList<int>({1, 5, 2, 3, 4, 6, 8, 9, 10, 12, 13}));
}

void tst_FieldChecks::textsOfARule_data() { addRows(rules); }

void tst_FieldChecks::textsOfARule()
{
    const Rule &rule = currentRow(rules);
    const WorkingFolder folder;
    folder.makeFolder("sub");
    folder.write("file", "x");
    for (const QString name : {"", "<b>N</b>"}) {
        const QString message = (name.isEmpty() ? rule.unnamedHead : name) + rule.tail;
        const struct {
            QStringList texts;
            QStringList findings;
        } outcomes[] = {{rule.failing, {"+" + message}},
                        {rule.passing, {"-" + message}},
                        {rule.leavingMessagesAlone, {}}};
        for (const auto &outcome : outcomes) {
            for (QString text : outcome.texts) {
                text.replace('@', folder.path());
                QStringList used{"A", ""};
                const FieldFacts facts{text, name, 1.0F, 10.0F, used, {"0"}, {"ab"}, false};
                const QStringList findings = described(run(rule.policy, facts));
                QVERIFY2(findings == outcome.findings, qPrintable(text + ": " + findings.join(" | ")));
            }
        }
    }
}

const struct {
    const char *name;
    float limit;
    QString equalText;
    QString shown;
} limitRows[] = {
    {"is shown with six digits", 1234567.0F, "1234567", "1.23457e+06"},
    {"small with an exponent", 0.000012345678F, "0.000012345678", "1.23457e-05"},
    {"exact tie of six digits goes away from zero", 100000.5F, "100000.5", "100001"},
    {"negative fraction", -0.1F, "-0.1", "-0.1"},
    {"compared as a float", 0.1F, "0.1", "0.1"},
};

void tst_FieldChecks::limits_data() { addRows(limitRows); }

void tst_FieldChecks::limits()
{
    const auto &row = currentRow(limitRows);
    QStringList used;
    const auto findings = [&](LineEditPolicy policy, const QString &text) {
        return described(run(policy, {text, "", row.limit, row.limit, used, {}, {}, true}));
    };
    const QString tooSmall = "This value must be greater than: " + row.shown;
    const QString tooLarge = "This value must be less than: " + row.shown;
    QCOMPARE(findings(PolicyMinimum, "-1e9"), QStringList{"+" + tooSmall});
    QCOMPARE(findings(PolicyMinimum, row.equalText), QStringList{"-" + tooSmall});
    QCOMPARE(findings(PolicyMaximum, row.equalText), QStringList{"-" + tooLarge});
    QCOMPARE(findings(PolicyMaximum, "1e9"), QStringList{"+" + tooLarge});
}

void tst_FieldChecks::emptyListsLeaveTheMessagesAlone()
{
    QStringList used;
    const FieldFacts facts{"x", "", 0.0F, 0.0F, used, {}, {}, true};
    for (const LineEditPolicy policy : {PolicyInvalidCharacters, PolicyInvalidValues})
        QCOMPARE(described(run(policy, facts)), QStringList());
}

void tst_FieldChecks::everyEntryOfAListIsAnsweredInListOrder()
{
    QStringList used;
    const FieldFacts facts{"ab", "", 0.0F, 0.0F, used, {"b", "ab", "AB"}, {"b", "c", "a"}, true};
    QCOMPARE(
        described(run(PolicyInvalidCharacters, facts)),
        QStringList({"+This field contains invalid character: b", "-This field contains invalid character: c",
                     "+This field contains invalid character: a"}));
    QCOMPARE(
        described(run(PolicyInvalidValues, facts)),
        QStringList({"-This field contains invalid value \"b\"", "+This field contains invalid value \"ab\"",
                     "-This field contains invalid value \"AB\""}));
}

void tst_FieldChecks::ownNameIsRemovedFromTheFieldsListForGood()
{
    QStringList used{"A", "a", "b", "a"};
    const FieldFacts facts{"a", "", 0.0F, 0.0F, used, {}, {}, true};
    QVERIFY(run(PolicyUniqueName, facts).first().failed);
    QCOMPARE(used, QStringList({"A", "b", "a"}));
    QVERIFY(run(PolicyUniqueNameNoCase, facts).first().failed);
    QCOMPARE(used, QStringList({"A", "b"}));
    QVERIFY(!run(PolicyUniqueName, facts).first().failed);
    QVERIFY(run(PolicyUniqueNameNoCase, facts).first().failed);
    QCOMPARE(used, QStringList({"A", "b"}));
}

void tst_FieldChecks::withoutTheRightToTheOwnNameTheListStays()
{
    QStringList used{"a"};
    const FieldFacts facts{"a", "", 0.0F, 0.0F, used, {}, {}, false};
    QVERIFY(run(PolicyUniqueName, facts).first().failed);
    QVERIFY(run(PolicyUniqueNameNoCase, facts).first().failed);
    QCOMPARE(used, QStringList{"a"});
}

MESHVANE_QTEST_MAIN(tst_FieldChecks)
#include "tst_FieldChecks.moc"
