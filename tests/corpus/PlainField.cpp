#include "tests/corpus/PlainField.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

namespace {

bool wholeNumber(const std::string &text, int &number)
{
    char *end = nullptr;
    number = static_cast<int>(std::strtol(text.c_str(), &end, 10));
    return !text.empty() && *end == '\0';
}

// Six significant digits. The field rounds an exact tie away from zero, the C library to even; so the value
// is first moved away from zero by the smallest step.
std::string sixDigits(float value)
{
    auto outward = static_cast<long double>(value);
    if (value != 0.0F)
        outward =
            std::nextafter(outward, std::copysign(std::numeric_limits<long double>::infinity(), outward));
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%Lg", outward);
    return buffer;
}

int rounded(float value)
{
    const std::string text = sixDigits(value);
    const std::size_t dot = text.rfind('.');
    int whole = 0;
    if (dot == std::string::npos)
        return wholeNumber(text, whole) ? whole : 0;
    int digit = 0;
    if (!wholeNumber(text.substr(dot + 1, 1), digit) || !wholeNumber(text.substr(0, dot), whole))
        return 0;
    if (digit < 5)
        return whole;
    return text[0] == '-' ? whole - 1 : whole + 1;
}

QString resolved(const QString &path)
{
    return QFileInfo(path).isRelative() ? QDir::currentPath() + "/" + path : path;
}

} // namespace

void PlainField::enter(const QString &newText)
{
    if (newText == text)
        return;
    text = newText;
    runChecks();
}

void PlainField::addPolicy(int code)
{
    if (code == 0)
        policies.clear();
    else if (code >= 1 && code <= 13 && code != 7)
        policies.insert(code);
}

void PlainField::finishEditing()
{
    if (policies.contains(11) && !text.isEmpty())
        enter(QString::number(rounded(text.toFloat())));
}

QString PlainField::askForErrors()
{
    if (!enabled)
        return {};
    runChecks();
    QString answer;
    for (const QString &error : std::as_const(m_errors))
        answer += error + "<br>";
    return answer;
}

void PlainField::judge(bool failed, const QString &message)
{
    if (!failed)
        m_errors.removeAll(message);
    else if (!m_errors.contains(message))
        m_errors << message;
}

void PlainField::runChecks()
{
    iconToolTip.clear();
    iconShown = false;
    if (hidden || !enabled) {
        m_errors.clear();
        return;
    }
    checkNumber();
    checkCharacters();
    if (policies.contains(2))
        judge(text.isEmpty(), head("This") + " field is required to be filled.");
    checkUnique(3, Qt::CaseSensitive);
    checkUnique(4, Qt::CaseInsensitive);
    checkValues();
    checkPlaces();
    checkLimits();
    if (m_errors.isEmpty()) {
        ownToolTip.clear();
        m_excludeOwn = false;
        return;
    }
    iconShown = true;
    for (const QString &error : std::as_const(m_errors))
        iconToolTip += m_errors.size() > 1 ? error + "<br>" : error;
}

void PlainField::checkNumber()
{
    if (!policies.contains(1) || text.isEmpty())
        return;
    bool isNumber = false;
    text.toFloat(&isNumber);
    judge(!isNumber, head("This") + " field can only contain a number value.");
}

void PlainField::checkCharacters()
{
    if (!policies.contains(5))
        return;
    for (const QString &character : std::as_const(invalidCharacters))
        judge(text.indexOf(character) >= 0, head("This") + " field contains invalid character: " + character);
}

void PlainField::checkUnique(int code, Qt::CaseSensitivity sensitivity)
{
    if (!policies.contains(code))
        return;
    if (m_excludeOwn && usedNames.contains(text))
        usedNames.removeAt(usedNames.indexOf(text));
    judge(usedNames.contains(text, sensitivity),
          head("This") + " field contains a name that is already used.");
}

void PlainField::checkValues()
{
    if (!policies.contains(6))
        return;
    for (const QString &value : std::as_const(invalidValues))
        judge(text == value, head("This") + " field contains invalid value \"" + value + "\"");
}

void PlainField::checkPlaces()
{
    if (policies.contains(8))
        judge(!QDir(resolved(text)).exists(), head("This directory") + " doesn't exist.");
    if (policies.contains(9))
        judge(!QFile::exists(resolved(text)), head("This file") + " doesn't exist.");
    if (policies.contains(10)) {
        // A resource name is not relative and may have no separator; then nothing is left.
        const QString parent = text.left(qMax(text.lastIndexOf('/'), 0));
        judge(!QFileInfo(text).isRelative() && !QDir(parent).exists(),
              head("This directory") + " directory doesn't exist.");
    }
}

void PlainField::checkLimits()
{
    bool isNumber = false;
    const float value = text.toFloat(&isNumber);
    if (!isNumber)
        return;
    if (policies.contains(12))
        judge(minimum > value, head("This") + " value must be greater than: " + sixDigits(minimum).c_str());
    if (policies.contains(13))
        judge(value > maximum, head("This") + " value must be less than: " + sixDigits(maximum).c_str());
}
