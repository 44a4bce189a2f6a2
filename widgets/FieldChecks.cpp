#include "widgets/FieldChecks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString message(const FieldFacts &facts, const char *unnamed, const QString &tail)
{
    return (facts.fieldName.isEmpty() ? QString(unnamed) : facts.fieldName) + tail;
}

FieldFindings checkNumber(const FieldFacts &facts)
{
    // Deliberate: an empty field keeps the message of an earlier text, so a run is still refused.
    if (facts.text.isEmpty())
        return {};
    // Deliberate: the range is that of a float, so "1e39" fails; "nan" and "inf" pass.
    bool isNumber = false;
    facts.text.toFloat(&isNumber);
    return {{!isNumber, message(facts, "This", " field can only contain a number value.")}};
}

FieldFindings checkInvalidCharacters(const FieldFacts &facts)
{
    FieldFindings findings;
    for (const QString &character : facts.invalidCharacters)
        findings.append({facts.text.contains(character),
                         message(facts, "This", " field contains invalid character: " + character)});
    return findings;
}

// Deliberate: white space counts as filled.
FieldFindings checkRequired(const FieldFacts &facts)
{
    return {{facts.text.isEmpty(), message(facts, "This", " field is required to be filled.")}};
}

FieldFindings checkUnique(const FieldFacts &facts, Qt::CaseSensitivity sensitivity)
{
    // Deliberate: the field's own name is removed for good, and only in its exact spelling even if the lookup
    // ignores case.
    if (facts.excludeOwnName)
        facts.usedNames.removeOne(facts.text);
    return {{facts.usedNames.contains(facts.text, sensitivity),
             message(facts, "This", " field contains a name that is already used.")}};
}

FieldFindings checkUniqueName(const FieldFacts &facts) { return checkUnique(facts, Qt::CaseSensitive); }

FieldFindings checkUniqueNameNoCase(const FieldFacts &facts)
{
    return checkUnique(facts, Qt::CaseInsensitive);
}

FieldFindings checkInvalidValues(const FieldFacts &facts)
{
    // Deliberate: whole texts are compared, so "0.0" is not "0".
    FieldFindings findings;
    for (const QString &value : facts.invalidValues)
        findings.append(
            {facts.text == value, message(facts, "This", " field contains invalid value \"" + value + "\"")});
    return findings;
}

// Deliberate: an empty text is relative and so names the current directory, which exists.
QString fullPath(const QString &text)
{
    return QFileInfo(text).isRelative() ? QDir::currentPath() + QDir::separator() + text : text;
}

FieldFindings checkDirectoryExists(const FieldFacts &facts)
{
    return {{!QDir(fullPath(facts.text)).exists(), message(facts, "This directory", " doesn't exist.")}};
}

// Deliberate: an existing directory passes too.
FieldFindings checkFileExists(const FieldFacts &facts)
{
    return {{!QFile(fullPath(facts.text)).exists(), message(facts, "This file", " doesn't exist.")}};
}

bool parentDirectoryExists(const QString &path)
{
    QString directory = QDir::toNativeSeparators(path);
    directory.chop(directory.section(QDir::separator(), -1).length() + 1);
    return QDir(directory).exists();
}

FieldFindings checkParentDirectoryExists(const FieldFacts &facts)
{
    // Deliberate: a relative path is not tested, so a run finds out about a missing directory only when it
    // opens the file.
    const bool passed = QFileInfo(facts.text).isRelative() || parentDirectoryExists(facts.text);
    // Deliberate: an unnamed field reads "This directory directory doesn't exist."
    return {{!passed, message(facts, "This directory", " directory doesn't exist.")}};
}

// Deliberate: the messages say "greater" and "less", but a value equal to the limit passes. A text that does
// not convert, the empty one included, leaves an earlier message standing.
FieldFindings checkLimit(const FieldFacts &facts, bool (*isBeyond)(float value, float limit), float limit,
                         const char *tail)
{
    bool isNumber = false;
    const float value = facts.text.toFloat(&isNumber);
    if (!isNumber)
        return {};
    return {{isBeyond(value, limit), message(facts, "This", tail + QString::number(double{limit}, 'g', 6))}};
}

FieldFindings checkMinimum(const FieldFacts &facts)
{
    return checkLimit(
        facts, [](float value, float limit) { return limit > value; }, facts.minimumValue,
        " value must be greater than: ");
}

FieldFindings checkMaximum(const FieldFacts &facts)
{
    return checkLimit(
        facts, [](float value, float limit) { return value > limit; }, facts.maximumValue,
        " value must be less than: ");
}

} // namespace

const QVector<FieldCheck> &fieldChecks()
{
    static const QVector<FieldCheck> checks = {
        {PolicyNumber, checkNumber},
        {PolicyInvalidCharacters, checkInvalidCharacters},
        {PolicyRequired, checkRequired},
        {PolicyUniqueName, checkUniqueName},
        {PolicyUniqueNameNoCase, checkUniqueNameNoCase},
        {PolicyInvalidValues, checkInvalidValues},
        {PolicyDirectoryExists, checkDirectoryExists},
        {PolicyFileExists, checkFileExists},
        {PolicyParentDirectoryExists, checkParentDirectoryExists},
        {PolicyMinimum, checkMinimum},
        {PolicyMaximum, checkMaximum},
    };
    return checks;
}
