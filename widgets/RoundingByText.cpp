#include "widgets/RoundingByText.h"

#include <QString>

int roundToInteger(float value)
{
    const QString text = QString::number(double{value}, 'g', 6);
    const auto point = text.lastIndexOf('.');
    if (point < 0)
        return text.toInt();

    bool isNumber = false;
    const int digit = text.mid(point + 1, 1).toInt(&isNumber);
    if (!isNumber)
        return 0;
    const int whole = text.left(point).toInt(&isNumber);
    if (!isNumber)
        return 0;
    if (digit < 5)
        return whole;
    return text.startsWith('-') ? whole - 1 : whole + 1;
}
