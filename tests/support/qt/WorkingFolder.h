// A temporary working folder with an interface of Qt strings.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

class WorkingFolder {
public:
    // Without symbolic links.
    QString path() const { return m_path; }
    QString path(const QString &name) const { return m_path + '/' + name; }

    // Names are relative to the folder.
    void write(const QString &name, const QByteArray &content) const;
    // On Windows without the carriage returns that text mode writes before line feeds.
    QByteArray read(const QString &name) const;
    bool has(const QString &name) const;

    // What a field holds after a dialog has chosen a file in the current directory, which is `folder` in this
    // one: the file's name. Deliberate: on Windows its path, because dialogs return paths with slashes there,
    // and a path is reduced at its last backslash.
    QString enteredFor(const QString &name, const QString &folder = ".") const;
    void makeFolder(const QString &name) const;
    void remove(const QString &name) const;
    void link(const QString &name, const QString &target) const;
    QStringList entries() const;

private:
    static QString canonicalPath(const TemporaryFolder &folder);

    TemporaryFolder m_folder;
    QString m_path = canonicalPath(m_folder);
};
