#include "tests/support/qt/TestRows.h"
#include "widgets/RoundingByText.h"

#include <QtTest>

#include <limits>

class tst_RoundingByText : public QObject {
    Q_OBJECT

private slots:
    void roundsByTheSixDigitText_data();
    void roundsByTheSixDigitText();
};

const struct {
    const char *name;
    float value;
    int rounded;
} roundedValues[] = {
    {"zero", 0.0F, 0},
    {"negative zero", -0.0F, 0},
    {"integer", 42.0F, 42},
    {"negative integer", -42.0F, -42},
    {"half", 2.5F, 3},
    {"negative half", -2.5F, -3},
    {"one half", 0.5F, 1},
    {"minus one half", -0.5F, -1},
    {"below half", 2.49F, 2},
    {"negative, below half", -2.49F, -2},
    {"negative, below one half", -0.49F, 0},
    {"second decimal is ignored", 2.09F, 2},
    {"carry into the next digit", 9.5F, 10},
    {"six digits round the decimal up first", 2.4999999F, 3},
    {"largest plain text", 999999.0F, 999999},
    {"a million has an exponent but no point", 1e6F, 0},
    {"seven digits with a point", 1234567.0F, 1},
    {"seven digits, first decimal above half", 1734567.0F, 2},
    {"negative seven digits", -1734567.0F, -2},
    {"smallest plain text", 0.00015F, 0},
    {"small, with exponent and point", 0.000015F, 2},
    {"negative small, with exponent and point", -0.000015F, -2},
    {"small, with exponent but no point", 0.00001F, 0},
    {"six digits have no room for the decimal", 123456.7F, 123457},
    {"exact tie of six digits goes away from zero", 100000.5F, 100001},
    {"negative exact tie of six digits", -100000.5F, -100001},
    {"largest float", std::numeric_limits<float>::max(), 3},
    {"infinity", std::numeric_limits<float>::infinity(), 0},
    {"negative infinity", -std::numeric_limits<float>::infinity(), 0},
    {"not a number", std::numeric_limits<float>::quiet_NaN(), 0},
};

void tst_RoundingByText::roundsByTheSixDigitText_data() { addRows(roundedValues); }

void tst_RoundingByText::roundsByTheSixDigitText()
{
    const auto &row = currentRow(roundedValues);
    QCOMPARE(roundToInteger(row.value), row.rounded);
}

QTEST_APPLESS_MAIN(tst_RoundingByText)
#include "tst_RoundingByText.moc"
