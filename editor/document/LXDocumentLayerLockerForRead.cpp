#include "document/LXDocumentLayerLockerForRead.h"

#include "document/LXDocumentLockerPrivate.h"

LXDocumentLayerLockerForRead::LXDocumentLayerLockerForRead(const LXDocumentInterface* document,
                                                           unsigned int id)
    : m_pPrivate(LXDocumentLockerPrivate::ForLayer(document, id, LXDocumentLockerPrivate::Access::Read))
{}

LXDocumentLayerLockerForRead::~LXDocumentLayerLockerForRead() = default;

void LXDocumentLayerLockerForRead::Unlock()
{
    m_pPrivate->Unlock();
}

void LXDocumentLayerLockerForRead::Relock()
{
    m_pPrivate->Lock();
}
