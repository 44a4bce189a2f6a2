// Reads the worked examples from the guide. An example is a fenced block with the entries of the form,
// followed by blocks with the expected results.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct GuideBlock {
    QString kind;     // the first word after the fence: form, mesh, file, log or box
    QString argument; // the other words: a file name, or nothing
    QStringList lines;
    int lineNumber = 0; // of the opening fence
};

struct GuideExample {
    GuideBlock form;
    QVector<GuideBlock> results;
};

// Blocks of other kinds are left out.
QVector<GuideExample> examplesIn(const QString &guide);
