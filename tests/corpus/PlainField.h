// The rules of the validating field, written a second time without widgets and without any of the product's
// code.
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

struct PlainField {
    QSet<int> policies;
    QStringList usedNames;
    QStringList invalidValues;
    QStringList invalidCharacters;
    QString name;
    float minimum = 0.0F;
    float maximum = 0.0F;
    bool enabled = true;
    bool hidden = false;

    QString text;
    QString ownToolTip;
    QString iconToolTip;
    bool iconShown = false;

    void enter(const QString &newText);
    void addPolicy(int code);
    void runChecks();
    void finishEditing();
    QString askForErrors();

private:
    QString head(const char *unnamed) const { return name.isEmpty() ? QString(unnamed) : name; }
    void judge(bool failed, const QString &message);
    void checkNumber();
    void checkCharacters();
    void checkUnique(int code, Qt::CaseSensitivity sensitivity);
    void checkValues();
    void checkPlaces();
    void checkLimits();

    QStringList m_errors;
    bool m_excludeOwn = true;
};
