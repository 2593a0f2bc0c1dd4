#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/syscall.h>
#include <unistd.h>

/// A folder with files that goes with the test.
class FileFolder
{
public:
    QString Path(const QString& name) const { return m_Folder.filePath(name); }

    /// Writes a file and gives its path.
    QString Write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(Path(name));
        // Some file systems wait for the disk when a file is cut to nothing and written anew.
        file.remove();
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no room for a test's file");
        return file.fileName();
    }

    QByteArray Read(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Lets everybody look into it, or forbids everybody to write there.
    void SetPermissions(QFile::Permissions permissions) const
    {
        QFile::setPermissions(m_Folder.path(), permissions);
    }

    /// Everything in it, temporary files too.
    QStringList Names() const { return QDir(m_Folder.path()).entryList(QDir::Files | QDir::Hidden); }

private:
    QTemporaryDir m_Folder;
};

/// Lets this thread meet files as a person without special rights, also where the tests run as root.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        constexpr uid_t nobody = 65534;
        if (m_IsRoot) Become(nobody);
    }

    ~OrdinaryUser()
    {
        if (m_IsRoot) Become(0);
    }

    Q_DISABLE_COPY(OrdinaryUser)

private:
    /// The library's function would change all threads. The way back stays open.
    static void Become(uid_t user) { ::syscall(SYS_setresuid, user, user, 0); }

    const bool m_IsRoot = ::geteuid() == 0;
};
