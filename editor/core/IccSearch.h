#pragma once

#include "EditorExport.h"

#include "image/ZKCMSProfile.h"

#include <QString>

#include <atomic>
#include <future>
#include <vector>

/// Reads the profiles that stand in the person's and the system's folders for them, once, on a thread of its
/// own: there may be hundreds, each takes the color library its time, and the disk may be slow. What can't be
/// read is left out. Main thread only.
class ZK_EDITOR_EXPORT IccSearch
{
public:
    struct Found
    {
        QString file;
        ZKCMSProfile profile;
        QString description; ///< ZKCMSProfile::GetDescription()
        bool isTarget;       ///< ZKCMSProfile::IsTarget(), which takes as long as reading
    };

    IccSearch() = default;
    /// Waits for the file that is being read.
    ~IccSearch();
    Q_DISABLE_COPY(IccSearch)

    /// The one of the program, which ends with the application object at the latest.
    static IccSearch& OfProgram();

    /// Begins to read and returns at once; the folders are those of the environment of this moment. Nothing
    /// the second time.
    void Begin();

    /// Whether Take() has nothing to wait for.
    bool IsReady() const;

    /// What was found, in the order of the files; begins when nobody did, and waits. Only the first call
    /// gives anything.
    std::vector<Found> Take();

    /// Ends after the file that is being read; what isn't read by then is never found.
    void Abandon();

private:
    std::vector<Found> Read(const QStringList& folders) const;

    std::future<std::vector<Found>> m_Reading;
    std::atomic<bool> m_bAbandoned{false};
    bool m_bBegun = false;
};
