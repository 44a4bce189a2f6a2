// Takes the worked examples out of the guide. An example is a fenced block that says what to fill in,
// followed by blocks that say what comes of it.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct GuideBlock {
    QString kind;     // the first word behind the fence: form, mesh, file, log or box
    QString argument; // the rest: a file name, or nothing
    QStringList lines;
    int lineNumber = 0; // of the opening fence
};

struct GuideExample {
    GuideBlock form;
    QVector<GuideBlock> outcomes;
};

// Blocks of other kinds are no examples and are left out.
QVector<GuideExample> examplesIn(const QString &guide);
