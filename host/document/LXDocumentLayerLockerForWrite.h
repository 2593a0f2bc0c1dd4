#pragma once

#include "ZKHostExport.h"

#include <memory>

class LXDocumentInterface;
class LXDocumentLockerPrivate;

/// Scope in which the pixels of a layer and its mask may be changed: excludes readers and writers of other
/// threads. Readers of the same thread don't stand in its way; of two threads that both hold a reader and
/// both want to write, one waits and finds the other's changes. Any thread; recursive on each thread; given
/// back on the thread that took it. Never take the locker of id 0 inside.
class ZK_HOST_EXPORT LXDocumentLayerLockerForWrite
{
public:
    /// Waits for the lock. A null document and a bad id lock nothing.
    LXDocumentLayerLockerForWrite(LXDocumentInterface* document, unsigned int id);
    ~LXDocumentLayerLockerForWrite();

    LXDocumentLayerLockerForWrite(const LXDocumentLayerLockerForWrite&) = delete;
    LXDocumentLayerLockerForWrite& operator=(const LXDocumentLayerLockerForWrite&) = delete;

    /// Gives the lock back before the end of the scope; harmless when it is given back already.
    void Unlock();
    /// Waits for the lock again; harmless when it is held.
    void Relock();

private:
    std::unique_ptr<LXDocumentLockerPrivate> m_pPrivate;
};
