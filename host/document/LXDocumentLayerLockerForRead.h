#pragma once

#include "ZKHostExport.h"

#include <memory>

class LXDocumentInterface;
class LXDocumentLockerPrivate;

/// Scope in which the pixels of a layer and its mask may be read: several readers at once, no writer of
/// another thread. Id 0 brings the merged picture up to date and holds it. Any thread; recursive on each
/// thread; given back on the thread that took it.
class ZK_HOST_EXPORT LXDocumentLayerLockerForRead
{
public:
    /// Waits for the lock. A null document and a bad id lock nothing.
    LXDocumentLayerLockerForRead(const LXDocumentInterface* document, unsigned int id);
    ~LXDocumentLayerLockerForRead();

    LXDocumentLayerLockerForRead(const LXDocumentLayerLockerForRead&) = delete;
    LXDocumentLayerLockerForRead& operator=(const LXDocumentLayerLockerForRead&) = delete;

    /// Gives the lock back before the end of the scope; harmless when it is given back already.
    void Unlock();
    /// Waits for the lock again; harmless when it is held.
    void Relock();

private:
    std::unique_ptr<LXDocumentLockerPrivate> m_pPrivate;
};
