#include "scripting/LayerReference.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "scripting/ScriptError.h"

LayerReference::LayerReference(LXDocumentInterface* document, int row)
    : m_pDocument(document), m_Index(document->GetModel()->index(row))
{}

bool LayerReference::IsValid() const
{
    return m_pDocument && m_Index.isValid();
}

LXDocumentInterface* LayerReference::Document() const
{
    if (!IsValid()) throw ScriptError(QStringLiteral("The layer is no longer there."));
    return m_pDocument;
}

int LayerReference::Row() const
{
    Document();
    return m_Index.row();
}

unsigned int LayerReference::Id() const
{
    return static_cast<unsigned int>(Row()) + 1;
}
