#include "core/ZKCMSManager.h"

#include "core/IccFile.h"
#include "core/IccSearch.h"

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
    bool isTarget;
};
} // namespace

class ZKCMSManagerPrivate
{
public:
    /// What is known without waiting: sRGB, what was added, and what was once found.
    const std::vector<Entry>& Known() const { return m_Entries; }

    /// With what stands in the folders.
    const std::vector<Entry>& Entries()
    {
        const std::vector<IccSearch::Found> found = IccSearch::OfProgram().Take();
        for (const IccSearch::Found& each : found)
            Take(each);
        return m_Entries;
    }

    /// The entry at the index; null for one that isn't there.
    const Entry* At(int index)
    {
        if (index < 0) return nullptr;
        const auto row = static_cast<std::size_t>(index);
        const std::vector<Entry>& entries = row < Known().size() ? Known() : Entries();
        return row < entries.size() ? &entries[row] : nullptr;
    }

    /// @return the index of the profile
    int Take(const IccSearch::Found& found)
    {
        const auto known = std::find_if(m_Entries.begin(), m_Entries.end(),
                                        [&](const Entry& entry) { return entry.profile == found.profile; });
        if (known != m_Entries.end()) return static_cast<int>(known - m_Entries.begin());
        m_Entries.push_back(
            {found.profile, FreeName(found.description, found.file), found.file, found.isTarget});
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
    QString FreeName(const QString& description, const QString& file) const
    {
        const QString fileName = QFileInfo(file).fileName();
        const QString first = description.isEmpty() ? fileName : description;
        QString free = first;
        for (int number = 1; IsTaken(free); ++number) {
            free = number == 1
                       ? ZKCMSManager::tr("%1 (%2)").arg(first, fileName)
                       : ZKCMSManager::tr("%1 (%2, %3)").arg(first, fileName, QString::number(number));
        }
        return free;
    }

    std::vector<Entry> m_Entries{{ZKCMSProfile::SRGB(), QStringLiteral("sRGB"), QString(), true}};
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

bool ZKCMSManager::IsRGBTarget(int index) const
{
    const Entry* entry = m_pPrivate->At(index);
    return entry && entry->isTarget;
}

int ZKCMSManager::FindRGBProfile(const QString& nameOrFile) const
{
    if (nameOrFile.isEmpty()) return -1;
    const auto find = [](const std::vector<Entry>& entries, auto matches) {
        const auto found = std::find_if(entries.begin(), entries.end(), matches);
        return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
    };
    const auto isNamed = [&](const Entry& entry) { return entry.name == nameOrFile; };
    const int known = find(m_pPrivate->Known(), isNamed);
    if (known >= 0) return known;
    const std::vector<Entry>& entries = m_pPrivate->Entries();
    const int named = find(entries, isNamed);
    return named >= 0 ? named : find(entries, [&](const Entry& entry) { return entry.file == nameOrFile; });
}

int ZKCMSManager::AddRGBProfile(const QString& file, QString* message)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    const ZKCMSProfile profile = IccFile::Read(path, message);
    if (profile.IsNull()) return -1;
    return m_pPrivate->Take({path, profile, profile.GetDescription(), profile.IsTarget()});
}

int ZKCMSManager::GetWorkingRGBIndex() const
{
    return m_pPrivate->m_Working;
}

void ZKCMSManager::SetWorkingRGBIndex(int index)
{
    const Entry* entry = m_pPrivate->At(index);
    if (index == m_pPrivate->m_Working || !entry || !entry->isTarget) return;
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
