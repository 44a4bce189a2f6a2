// The property of the field's fuzzer, checked with the fuzzer's seeds and with what it has found.
#include "tests/corpus/FieldProperty.h"
#include "tests/corpus/SeedCorpus.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QtTest>

Q_DECLARE_METATYPE(std::string)

class tst_FieldCorpus : public QObject {
    Q_OBJECT

private slots:
    void scripts_data();
    void scripts();
};

void tst_FieldCorpus::scripts_data()
{
    QTest::addColumn<std::string>("script");
    for (const Seed &seed : fieldSeeds())
        QTest::newRow(seed.name.c_str()) << seed.bytes;
}

void tst_FieldCorpus::scripts()
{
    const WorkingFolder folder;
    QFETCH(std::string, script);
    QCOMPARE(QString::fromStdString(checkField(script)), QString());
}

MESHVANE_QTEST_MAIN(tst_FieldCorpus)
#include "tst_FieldCorpus.moc"
