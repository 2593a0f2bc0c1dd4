#include "document/LXDocumentLayerLockerForWrite.h"

#include "document/LXDocumentLockerPrivate.h"

LXDocumentLayerLockerForWrite::LXDocumentLayerLockerForWrite(LXDocumentInterface* document, unsigned int id)
    : m_pPrivate(LXDocumentLockerPrivate::ForLayer(document, id, LXDocumentLockerPrivate::Access::Write))
{}

LXDocumentLayerLockerForWrite::~LXDocumentLayerLockerForWrite() = default;

void LXDocumentLayerLockerForWrite::Unlock()
{
    m_pPrivate->Unlock();
}

void LXDocumentLayerLockerForWrite::Relock()
{
    m_pPrivate->Lock();
}
