#include "core/ZKCMSManager.h"

#include "core/IccFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace {
struct Entry
{
    ZKCMSProfile profile;
    QString name;
    QString file;
};
} // namespace

class ZKCMSManagerPrivate
{
public:
    /// With what stands in the folders; sRGB alone can be had without.
    std::vector<Entry>& Entries()
    {
        if (!m_bSearched) {
            m_bSearched = true;
            const QStringList files = IccFile::All();
            for (const QString& file : files) {
                QString unread; // nobody asked for this file
                const ZKCMSProfile profile = IccFile::Read(file, &unread);
                if (!profile.IsNull()) Take(profile, file);
            }
        }
        return m_Entries;
    }

    /// The entry at the index; null for one that isn't there. The first needs no search.
    const Entry* At(int index)
    {
        if (index == 0) return &m_Entries.front();
        const std::vector<Entry>& entries = Entries();
        if (index < 0 || index >= static_cast<int>(entries.size())) return nullptr;
        return &entries[static_cast<std::size_t>(index)];
    }

    /// @return the index of the profile
    int Take(const ZKCMSProfile& profile, const QString& file)
    {
        const auto known = std::find_if(m_Entries.begin(), m_Entries.end(),
                                        [&](const Entry& entry) { return entry.profile == profile; });
        if (known != m_Entries.end()) return static_cast<int>(known - m_Entries.begin());
        m_Entries.push_back({profile, FreeName(profile, file), file});
        return static_cast<int>(m_Entries.size()) - 1;
    }

    /// Making a transform takes as long as painting a window; a few documents are open at a time.
    ZKCMSTransform ToDisplay(const ZKCMSProfile& profile)
    {
        const auto known = std::find_if(m_ToDisplay.begin(), m_ToDisplay.end(),
                                        [&](const auto& pair) { return pair.first == profile; });
        if (known != m_ToDisplay.end()) return known->second;
        if (m_ToDisplay.size() == MostKept) m_ToDisplay.erase(m_ToDisplay.begin());
        const ZKCMSProfile meant = profile.IsValid() ? profile : ZKCMSProfile();
        m_ToDisplay.emplace_back(profile, ZKCMSTransform(meant, m_Display, m_DisplayRendering));
        return m_ToDisplay.back().second;
    }

    void SetDisplay(const ZKCMSProfile& profile, const ZKCMSRendering& rendering)
    {
        m_Display = profile;
        m_DisplayRendering = rendering;
        m_ToDisplay.clear();
    }

    ZKCMSProfile m_Display;
    ZKCMSRendering m_DisplayRendering;
    int m_Working = 0;

private:
    static constexpr std::size_t MostKept = 8;

    bool IsTaken(const QString& name) const
    {
        return std::any_of(m_Entries.begin(), m_Entries.end(),
                           [&](const Entry& entry) { return entry.name == name; });
    }

    /// Vendors ship several profiles under one name; then the file tells them apart.
    QString FreeName(const ZKCMSProfile& profile, const QString& file) const
    {
        const QString fileName = QFileInfo(file).fileName();
        const QString name = profile.GetDescription();
        const QString first = name.isEmpty() ? fileName : name;
        QString free = first;
        for (int number = 1; IsTaken(free); ++number) {
            free = number == 1
                       ? ZKCMSManager::tr("%1 (%2)").arg(first, fileName)
                       : ZKCMSManager::tr("%1 (%2, %3)").arg(first, fileName, QString::number(number));
        }
        return free;
    }

    std::vector<Entry> m_Entries{{ZKCMSProfile::SRGB(), QStringLiteral("sRGB"), QString()}};
    bool m_bSearched = false;
    std::vector<std::pair<ZKCMSProfile, ZKCMSTransform>> m_ToDisplay;
};

ZKCMSManager* ZKCMSManager::GetInstance()
{
    static ZKCMSManager manager;
    return &manager;
}

ZKCMSManager::ZKCMSManager() : m_pPrivate(std::make_unique<ZKCMSManagerPrivate>()) {}

ZKCMSManager::~ZKCMSManager() = default;

int ZKCMSManager::GetRGBProfileCount() const
{
    return static_cast<int>(m_pPrivate->Entries().size());
}

ZKCMSProfile ZKCMSManager::GetRGBProfile(int index) const
{
    const Entry* entry = m_pPrivate->At(index);
    return entry ? entry->profile : ZKCMSProfile::SRGB();
}

QString ZKCMSManager::GetRGBProfileName(int index) const
{
    const Entry* entry = m_pPrivate->At(index);
    return entry ? entry->name : QString();
}

QString ZKCMSManager::GetRGBProfileFile(int index) const
{
    const Entry* entry = m_pPrivate->At(index);
    return entry ? entry->file : QString();
}

int ZKCMSManager::FindRGBProfile(const QString& nameOrFile) const
{
    const std::vector<Entry>& entries = m_pPrivate->Entries();
    const auto find = [&entries](auto matches) {
        const auto found = std::find_if(entries.begin(), entries.end(), matches);
        return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
    };
    if (nameOrFile.isEmpty()) return -1;
    const int named = find([&](const Entry& entry) { return entry.name == nameOrFile; });
    return named >= 0 ? named : find([&](const Entry& entry) { return entry.file == nameOrFile; });
}

int ZKCMSManager::AddRGBProfile(const QString& file, QString* message)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    const ZKCMSProfile profile = IccFile::Read(path, message);
    if (profile.IsNull()) return -1;
    m_pPrivate->Entries();
    return m_pPrivate->Take(profile, path);
}

int ZKCMSManager::GetWorkingRGBIndex() const
{
    return m_pPrivate->m_Working;
}

void ZKCMSManager::SetWorkingRGBIndex(int index)
{
    const Entry* entry = m_pPrivate->At(index);
    if (index == m_pPrivate->m_Working || !entry || !entry->profile.IsTarget()) return;
    m_pPrivate->m_Working = index;
    emit WorkingProfileChanged();
}

ZKCMSProfile ZKCMSManager::GetDisplayProfile() const
{
    return m_pPrivate->m_Display.IsNull() ? ZKCMSProfile::SRGB() : m_pPrivate->m_Display;
}

ZKCMSRendering ZKCMSManager::GetDisplayRendering() const
{
    return m_pPrivate->m_DisplayRendering;
}

void ZKCMSManager::SetDisplay(const ZKCMSProfile& profile, const ZKCMSRendering& rendering)
{
    const ZKCMSProfile usable = profile.IsTarget() ? profile : ZKCMSProfile();
    if (usable == m_pPrivate->m_Display && rendering == m_pPrivate->m_DisplayRendering) return;
    m_pPrivate->SetDisplay(usable, rendering);
    emit DisplayChanged();
}

ZKCMSTransform ZKCMSManager::ToDisplay(const ZKCMSProfile& profile) const
{
    return m_pPrivate->ToDisplay(profile);
}

ZKCMSTransform ZKCMSManager::OwnToDisplay() const
{
    return ToDisplay(GetRGBProfile(GetWorkingRGBIndex()));
}
