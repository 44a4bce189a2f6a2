#include "tests/support/qt/WorkingFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtGlobal>

QString WorkingFolder::canonicalPath(const TemporaryFolder &folder)
{
    return QString::fromStdString(std::filesystem::canonical(folder.path()).generic_u8string());
}

void WorkingFolder::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(name));
}

QByteArray WorkingFolder::read(const QString &name) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadOnly))
        return "(no file)";
    QByteArray content = file.readAll();
#ifdef Q_OS_WIN
    content.replace("\r\n", "\n");
#endif
    return content;
}

QString WorkingFolder::enteredFor(const QString &name, const QString &folder) const
{
    return QDir::separator() == '/' ? name : QDir::cleanPath(path(folder + '/' + name));
}

bool WorkingFolder::has(const QString &name) const
{
    const QFileInfo info(path(name));
    return info.exists() || info.isSymLink();
}

void WorkingFolder::makeFolder(const QString &name) const
{
    if (!QDir(m_path).mkpath(name))
        qFatal("cannot make folder %s", qPrintable(name));
}

void WorkingFolder::remove(const QString &name) const
{
    if (!QFile::remove(path(name)))
        qFatal("cannot remove %s", qPrintable(name));
}

void WorkingFolder::link(const QString &name, const QString &target) const
{
    if (!QFile::link(target, path(name)))
        qFatal("cannot link %s", qPrintable(name));
}

QStringList WorkingFolder::entries() const
{
    return QDir(m_path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}
