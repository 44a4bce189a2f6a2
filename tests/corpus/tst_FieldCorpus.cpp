// The seeds of the field's fuzzer, and what it has found, held against the same property.
#include "tests/corpus/FieldProperty.h"
#include "tests/corpus/SeedCorpus.h"
#include "tests/support/qt/QtTestMain.h"
#include "tests/support/qt/WorkingFolder.h"

#include <QtTest>

Q_DECLARE_METATYPE(std::string)

class tst_FieldCorpus : public QObject {
    Q_OBJECT

private slots:
    void deeds_data();
    void deeds();
};

void tst_FieldCorpus::deeds_data()
{
    QTest::addColumn<std::string>("script");
    for (const Seed &seed : fieldSeeds())
        QTest::newRow(seed.name.c_str()) << seed.bytes;
}

void tst_FieldCorpus::deeds()
{
    const WorkingFolder folder;
    QFETCH(std::string, script);
    QCOMPARE(QString::fromStdString(checkField(script)), QString());
}

MESHVANE_QTEST_MAIN(tst_FieldCorpus)
#include "tst_FieldCorpus.moc"
