#include "document/LXDocumentLockerPrivate.h"

#include "document/LXDocumentInterface_p.h"

std::unique_ptr<LXDocumentLockerPrivate>
LXDocumentLockerPrivate::ForLayer(const LXDocumentInterface* document, unsigned int id, Access access)
{
    std::unique_ptr<LXDocumentLockerPrivate> locker(new LXDocumentLockerPrivate);
    if (!document) return locker;

    const LXDocumentInterfacePrivate* insides = LXDocumentInterfacePrivate::Get(document);
    locker->m_pLayer = insides->layers.Find(id);
    if (id != 0 && !locker->m_pLayer) return locker;

    locker->m_pDocument = document;
    locker->m_pLocks = insides->locks;
    locker->m_Key = locker->m_pLayer ? locker->m_pLayer->key : MergedPicture::Key;
    locker->m_Access = access;
    locker->Lock();
    return locker;
}

std::unique_ptr<LXDocumentLockerPrivate>
LXDocumentLockerPrivate::ForSelection(const LXDocumentInterface* document)
{
    std::unique_ptr<LXDocumentLockerPrivate> locker(new LXDocumentLockerPrivate);
    if (!document) return locker;

    locker->m_pDocument = document;
    locker->m_pLocks = LXDocumentInterfacePrivate::Get(document)->locks;
    locker->m_Key = DocumentSelection::Key;
    locker->Lock();
    return locker;
}

std::unique_ptr<LXDocumentLockerPrivate>
LXDocumentLockerPrivate::ForMergedPart(const LXDocumentInterface* document, const QRect& part)
{
    std::unique_ptr<LXDocumentLockerPrivate> locker(new LXDocumentLockerPrivate);
    locker->m_pDocument = document;
    locker->m_pLocks = LXDocumentInterfacePrivate::Get(document)->locks;
    locker->m_Key = MergedPicture::Key;
    locker->m_Part = part;
    locker->Lock();
    return locker;
}

LXDocumentLockerPrivate::~LXDocumentLockerPrivate()
{
    Unlock();
}

void LXDocumentLockerPrivate::Lock()
{
    if (!m_pDocument || m_bLocked) return;
    if (m_Key == MergedPicture::Key) {
        MergedPicture& merged = LXDocumentInterfacePrivate::Get(m_pDocument)->merged;
        m_Part ? merged.Update(*m_Part) : merged.Update();
    }
    if (m_Access == Access::Write) {
        m_pLocks->LockWrite(m_Key);
    } else {
        m_pLocks->LockRead(m_Key);
    }
    m_Owner = std::this_thread::get_id();
    m_bLocked = true;
}

void LXDocumentLockerPrivate::Unlock()
{
    if (!m_bLocked) return;
    m_bLocked = false;
    if (m_Access == Access::Read) {
        m_pLocks->UnlockRead(m_Key, m_Owner);
        return;
    }
    if (m_pLayer) LXDocumentInterfacePrivate::Get(m_pDocument)->SyncGeometry(*m_pLayer);
    m_pLocks->UnlockWrite(m_Key, m_Owner);
}
