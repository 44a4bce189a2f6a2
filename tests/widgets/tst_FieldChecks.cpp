#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"
#include "widgets/FieldChecks.h"

#include <QtTest>

namespace {

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

} // namespace

class tst_FieldChecks : public QObject {
    Q_OBJECT

private slots:
    void checksStandInTheirOrder();

    void unnamedHeads_data();
    void unnamedHeads();
    void namedHeads_data();
    void namedHeads();

    void emptyTextLeavesNumberAndLimitsAlone();
    void listsWithoutEntriesLeaveTheMessagesAlone();
    void everyEntryOfAListIsAnswered();
    void ownNameIsTakenFromTheFieldsListForGood();
    void withoutTheRightToTheOwnNameTheListStays();
};

void tst_FieldChecks::checksStandInTheirOrder()
{
    QList<int> order;
    for (const FieldCheck &check : fieldChecks())
        order << check.policy;
    QCOMPARE(order, QList<int>({1, 5, 2, 3, 4, 6, 8, 9, 10, 12, 13}));
}

void tst_FieldChecks::unnamedHeads_data()
{
    QTest::addColumn<int>("policy");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("finding");
    QTest::newRow("number") << 1 << "x"
                            << "+This field can only contain a number value.";
    QTest::newRow("required") << 2 << ""
                              << "+This field is required to be filled.";
    QTest::newRow("unique") << 3 << "x"
                            << "-This field contains a name that is already used.";
    QTest::newRow("unique, no case") << 4 << "x"
                                     << "-This field contains a name that is already used.";
    QTest::newRow("character") << 5 << "x"
                               << "+This field contains invalid character: x";
    QTest::newRow("value") << 6 << "x"
                           << "+This field contains invalid value \"x\"";
    QTest::newRow("directory") << 8 << "x"
                               << "+This directory doesn't exist.";
    QTest::newRow("file") << 9 << "x"
                          << "+This file doesn't exist.";
    QTest::newRow("parent") << 10 << "/nowhere at all/x"
                            << "+This directory directory doesn't exist.";
    QTest::newRow("minimum") << 12 << "0.5"
                             << "+This value must be greater than: 1";
    QTest::newRow("maximum") << 13 << "2.5"
                             << "+This value must be less than: 2";
}

void tst_FieldChecks::unnamedHeads()
{
    QFETCH(int, policy);
    QFETCH(QString, text);
    QFETCH(QString, finding);
    const WorkingFolder folder;
    QStringList used;
    const FieldFacts facts{text, "", 1.0F, 2.0F, used, {"x"}, {"x"}, true};
    QCOMPARE(described(run(LineEditPolicy(policy), facts)), QStringList{finding});
}

void tst_FieldChecks::namedHeads_data()
{
    QTest::addColumn<int>("policy");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("finding");
    QTest::newRow("number") << 1 << "x"
                            << "+<b>N</b> field can only contain a number value.";
    QTest::newRow("required") << 2 << ""
                              << "+<b>N</b> field is required to be filled.";
    QTest::newRow("unique") << 3 << "x"
                            << "-<b>N</b> field contains a name that is already used.";
    QTest::newRow("unique, no case") << 4 << "x"
                                     << "-<b>N</b> field contains a name that is already used.";
    QTest::newRow("character") << 5 << "x"
                               << "+<b>N</b> field contains invalid character: x";
    QTest::newRow("value") << 6 << "x"
                           << "+<b>N</b> field contains invalid value \"x\"";
    QTest::newRow("directory") << 8 << "x"
                               << "+<b>N</b> doesn't exist.";
    QTest::newRow("file") << 9 << "x"
                          << "+<b>N</b> doesn't exist.";
    QTest::newRow("parent") << 10 << "/nowhere at all/x"
                            << "+<b>N</b> directory doesn't exist.";
    QTest::newRow("minimum") << 12 << "0.5"
                             << "+<b>N</b> value must be greater than: 1";
    QTest::newRow("maximum") << 13 << "2.5"
                             << "+<b>N</b> value must be less than: 2";
}

void tst_FieldChecks::namedHeads()
{
    QFETCH(int, policy);
    QFETCH(QString, text);
    QFETCH(QString, finding);
    const WorkingFolder folder;
    QStringList used;
    const FieldFacts facts{text, "<b>N</b>", 1.0F, 2.0F, used, {"x"}, {"x"}, true};
    QCOMPARE(described(run(LineEditPolicy(policy), facts)), QStringList{finding});
}

void tst_FieldChecks::emptyTextLeavesNumberAndLimitsAlone()
{
    QStringList used;
    const FieldFacts facts{"", "", 1.0F, -1.0F, used, {}, {}, true};
    for (const LineEditPolicy policy : {PolicyNumber, PolicyMinimum, PolicyMaximum})
        QCOMPARE(described(run(policy, facts)), QStringList());
}

void tst_FieldChecks::listsWithoutEntriesLeaveTheMessagesAlone()
{
    QStringList used;
    const FieldFacts facts{"x", "", 0.0F, 0.0F, used, {}, {}, true};
    for (const LineEditPolicy policy : {PolicyInvalidCharacters, PolicyInvalidValues})
        QCOMPARE(described(run(policy, facts)), QStringList());
}

void tst_FieldChecks::everyEntryOfAListIsAnswered()
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

void tst_FieldChecks::ownNameIsTakenFromTheFieldsListForGood()
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
