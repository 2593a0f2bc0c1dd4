#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A folder with files that goes with the test.
class FileFolder
{
public:
    QString Path(const QString& name) const { return m_Folder.filePath(name); }

    /// Writes a file and gives its path.
    QString Write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no room for a test's file");
        return file.fileName();
    }

    QByteArray Read(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Everything in it, temporary files too.
    QStringList Names() const { return QDir(m_Folder.path()).entryList(QDir::Files | QDir::Hidden); }

private:
    QTemporaryDir m_Folder;
};
