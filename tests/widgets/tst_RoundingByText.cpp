#include "widgets/RoundingByText.h"

#include <QtTest>

#include <limits>

class tst_RoundingByText : public QObject {
    Q_OBJECT

private slots:
    void roundsByTheSixDigitText_data();
    void roundsByTheSixDigitText();
};

void tst_RoundingByText::roundsByTheSixDigitText_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<int>("rounded");
    QTest::newRow("zero") << 0.0F << 0;
    QTest::newRow("negative zero") << -0.0F << 0;
    QTest::newRow("integer") << 42.0F << 42;
    QTest::newRow("negative integer") << -42.0F << -42;
    QTest::newRow("half") << 2.5F << 3;
    QTest::newRow("negative half") << -2.5F << -3;
    QTest::newRow("half of one") << 0.5F << 1;
    QTest::newRow("negative half of one") << -0.5F << -1;
    QTest::newRow("below half") << 2.49F << 2;
    QTest::newRow("negative below half") << -2.49F << -2;
    QTest::newRow("negative below half of one") << -0.49F << 0;
    QTest::newRow("second decimal is ignored") << 2.09F << 2;
    QTest::newRow("six digits round the decimal up first") << 2.4999999F << 3;
    QTest::newRow("largest plain text") << 999999.0F << 999999;
    QTest::newRow("a million has an exponent and no point") << 1e6F << 0;
    QTest::newRow("seven digits with a point") << 1234567.0F << 1;
    QTest::newRow("seven digits, first decimal above half") << 1734567.0F << 2;
    QTest::newRow("negative seven digits") << -1734567.0F << -2;
    QTest::newRow("smallest plain text") << 0.00015F << 0;
    QTest::newRow("small with exponent and point") << 0.000015F << 2;
    QTest::newRow("negative small with exponent and point") << -0.000015F << -2;
    QTest::newRow("small with exponent, no point") << 0.00001F << 0;
    QTest::newRow("decimal hidden by six digits") << 123456.7F << 123457;
    QTest::newRow("exact tie of six digits goes away from zero") << 100000.5F << 100001;
    QTest::newRow("negative exact tie of six digits") << -100000.5F << -100001;
    QTest::newRow("largest float") << std::numeric_limits<float>::max() << 3;
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity() << 0;
    QTest::newRow("negative infinite") << -std::numeric_limits<float>::infinity() << 0;
    QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 0;
}

void tst_RoundingByText::roundsByTheSixDigitText()
{
    QFETCH(float, value);
    QFETCH(int, rounded);
    QCOMPARE(roundToInteger(value), rounded);
}

QTEST_APPLESS_MAIN(tst_RoundingByText)
#include "tst_RoundingByText.moc"
