#include "document/MergedPartReader.h"

#include "document/LXDocumentLockerPrivate.h"

MergedPartReader::MergedPartReader(const LXDocumentInterface* document, const QRect& part)
    : m_pPrivate(LXDocumentLockerPrivate::ForMergedPart(document, part))
{}

MergedPartReader::~MergedPartReader() = default;
