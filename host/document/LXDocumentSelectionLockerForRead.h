#pragma once

#include "ZKHostExport.h"

#include <memory>

class LXDocumentInterface;
class LXDocumentLockerPrivate;

/// Scope in which the selection mask may be read. Any thread; recursive on each thread; given back on the
/// thread that took it.
class ZK_HOST_EXPORT LXDocumentSelectionLockerForRead
{
public:
    /// Waits for the lock. A null document and a bad id lock nothing.
    explicit LXDocumentSelectionLockerForRead(const LXDocumentInterface* document);
    ~LXDocumentSelectionLockerForRead();

    LXDocumentSelectionLockerForRead(const LXDocumentSelectionLockerForRead&) = delete;
    LXDocumentSelectionLockerForRead& operator=(const LXDocumentSelectionLockerForRead&) = delete;

    /// Gives the lock back before the end of the scope; harmless when it is given back already.
    void Unlock();
    /// Waits for the lock again; harmless when it is held.
    void Relock();

private:
    std::unique_ptr<LXDocumentLockerPrivate> m_pPrivate;
};
