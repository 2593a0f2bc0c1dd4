#include "core/IccSearch.h"

#include "core/IccFile.h"

#include <QCoreApplication>
#include <QStringList>

#include <chrono>

IccSearch::~IccSearch()
{
    Abandon();
}

IccSearch& IccSearch::OfProgram()
{
    static IccSearch search;
    // The thread must not outlive what Qt keeps for it.
    static const bool isTold = [] {
        qAddPostRoutine([] { OfProgram().Abandon(); });
        return true;
    }();
    Q_UNUSED(isTold)
    return search;
}

void IccSearch::Begin()
{
    if (m_bBegun) return;
    m_bBegun = true;
    m_Reading =
        std::async(std::launch::async, [this, folders = IccFile::Folders()] { return Read(folders); });
}

bool IccSearch::IsReady() const
{
    return m_Reading.valid() && m_Reading.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

std::vector<IccSearch::Found> IccSearch::Take()
{
    Begin();
    return m_Reading.valid() ? m_Reading.get() : std::vector<Found>();
}

void IccSearch::Abandon()
{
    m_bBegun = true;
    m_bAbandoned = true;
    if (m_Reading.valid()) m_Reading.wait();
}

std::vector<IccSearch::Found> IccSearch::Read(const QStringList& folders) const
{
    std::vector<Found> found;
    const QStringList files = IccFile::In(folders);
    for (const QString& file : files) {
        if (m_bAbandoned) break;
        QString unread; // nobody asked for this file
        const ZKCMSProfile profile = IccFile::Read(file, &unread);
        if (profile.IsNull()) continue;
        found.push_back({file, profile, profile.GetDescription(), profile.IsTarget()});
    }
    return found;
}
