#pragma once

#include "document/PixelLockTable.h"

#include <QRect>

#include <memory>
#include <optional>

class LXDocumentInterface;
struct Layer;

/// What the three lockers have in common: one lock of one document, taken and given back any number of times.
class LXDocumentLockerPrivate
{
public:
    enum class Access
    {
        Read,
        Write
    };

    /// Locks the layer of that id, or the merged picture for id 0.
    static std::unique_ptr<LXDocumentLockerPrivate> ForLayer(const LXDocumentInterface* document,
                                                             unsigned int id, Access access);
    static std::unique_ptr<LXDocumentLockerPrivate> ForSelection(const LXDocumentInterface* document);
    /// Brings only that part of the merged picture up to date.
    static std::unique_ptr<LXDocumentLockerPrivate> ForMergedPart(const LXDocumentInterface* document,
                                                                  const QRect& part);

    ~LXDocumentLockerPrivate();

    void Lock();
    void Unlock();

private:
    LXDocumentLockerPrivate() = default;

    const LXDocumentInterface* m_pDocument = nullptr; ///< null: there is nothing to lock
    std::shared_ptr<PixelLockTable> m_pLocks;
    std::shared_ptr<Layer> m_pLayer; ///< null for the merged picture and the selection
    PixelLockTable::Key m_Key = 0;
    std::optional<QRect> m_Part; ///< of the merged picture; none for all of it
    Access m_Access = Access::Read;
    bool m_bLocked = false;
    PixelLockTable::Thread m_Owner;
};
