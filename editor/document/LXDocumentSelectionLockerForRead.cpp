#include "document/LXDocumentSelectionLockerForRead.h"

#include "document/LXDocumentLockerPrivate.h"

LXDocumentSelectionLockerForRead::LXDocumentSelectionLockerForRead(const LXDocumentInterface* document)
    : m_pPrivate(LXDocumentLockerPrivate::ForSelection(document))
{}

LXDocumentSelectionLockerForRead::~LXDocumentSelectionLockerForRead() = default;

void LXDocumentSelectionLockerForRead::Unlock()
{
    m_pPrivate->Unlock();
}

void LXDocumentSelectionLockerForRead::Relock()
{
    m_pPrivate->Lock();
}
