// Data rows of a Qt test, taken from a table.
#pragma once

#include <QString>
#include <QStringList>
#include <QtTest>

#include <iterator>

// One row per entry of the table, named by the entry's member `name`.
template <typename Table>
void addRows(const Table &table)
{
    QTest::addColumn<int>("entry");
    for (int entry = 0; entry < int(std::size(table)); ++entry)
        QTest::newRow(qPrintable(QString(std::data(table)[entry].name))) << entry;
}

// The entry to which the running row belongs.
template <typename Table>
const auto &currentRow(const Table &table)
{
    QFETCH(int, entry);
    return std::data(table)[entry];
}

// One row per name. currentName() gives the name of the running row.
inline void addNamedRows(const QStringList &names)
{
    QTest::addColumn<int>("unused");
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << 0;
}

inline QString currentName() { return QTest::currentDataTag(); }
