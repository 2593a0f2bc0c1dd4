#include "app/RecentFiles.h"

#include "core/ZKApplication.h"

#include <QFileInfo>

namespace {
const QLatin1String SettingsKey("Editor/RecentFiles");
} // namespace

RecentFiles::RecentFiles(QObject* parent) : QObject(parent)
{
    m_Paths = ZKApplication::GetUserValue(SettingsKey, QStringList()).toStringList().mid(0, MaxCount);
}

QStringList RecentFiles::GetExisting() const
{
    QStringList existing;
    for (const QString& path : m_Paths) {
        if (QFileInfo(path).isFile()) existing.append(path);
    }
    return existing;
}

void RecentFiles::Add(const QString& path)
{
    m_Paths.removeAll(path);
    m_Paths.prepend(path);
    m_Paths = m_Paths.mid(0, MaxCount);
    Store();
}

void RecentFiles::Remove(const QString& path)
{
    if (m_Paths.removeAll(path) > 0) Store();
}

void RecentFiles::Clear()
{
    if (m_Paths.isEmpty()) return;

    m_Paths.clear();
    Store();
}

void RecentFiles::Store()
{
    ZKApplication::SetUserValue(SettingsKey, m_Paths);
    emit Changed();
}
