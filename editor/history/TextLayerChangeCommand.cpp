#include "history/TextLayerChangeCommand.h"

#include "document/LXDocumentInterface_p.h"
#include "history/TextLayerChangeCommandData_p.h"

#include <QMatrix4x4>

class TextLayerChangeCommandPrivate
{
public:
    using Values = TextLayerChangeCommandDataPrivate;

    static Values& ValuesOf(LexoCommandData* data)
    {
        return *Values::Get(static_cast<TextLayerChangeCommandData*>(data));
    }

    void ReadRedo(Values& values) const;
    void Put(uint id, const TextContent& content) const;

    LXDocumentInterface* document = nullptr;
};

void TextLayerChangeCommandPrivate::ReadRedo(Values& values) const
{
    if (values.hasRedo) return;
    values.redo = LXDocumentInterfacePrivate::Get(document)->Text(values.id);
    values.hasRedo = true;
    // A matrix that wasn't changed lost digits on its way into the data.
    const bool isSame = QMatrix4x4(values.redo.transform) == QMatrix4x4(values.undo.transform);
    if (isSame) values.undo.transform = values.redo.transform;
}

void TextLayerChangeCommandPrivate::Put(uint id, const TextContent& content) const
{
    LXDocumentInterfacePrivate::Get(document)->PutText(id, content);
}

TextLayerChangeCommand::TextLayerChangeCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<TextLayerChangeCommandPrivate>())
{
    m_pPrivate->document = document;
}

TextLayerChangeCommand::~TextLayerChangeCommand() = default;

void TextLayerChangeCommand::EndTransaction(LexoCommandData* data)
{
    if (!IsExecuting() && data) m_pPrivate->ReadRedo(TextLayerChangeCommandPrivate::ValuesOf(data));
}

void TextLayerChangeCommand::RedoExecute(LexoCommandData* data)
{
    auto& values = TextLayerChangeCommandPrivate::ValuesOf(data);
    if (m_pPrivate->document->GetLayerKind(values.id) != LayerKind::Text) return;
    // The first time everything is as it shall be.
    if (!values.hasRedo) return m_pPrivate->ReadRedo(values);
    m_pPrivate->Put(values.id, values.redo);
}

void TextLayerChangeCommand::UndoExecute(LexoCommandData* data)
{
    const auto& values = TextLayerChangeCommandPrivate::ValuesOf(data);
    if (m_pPrivate->document->GetLayerKind(values.id) == LayerKind::Text) {
        m_pPrivate->Put(values.id, values.undo);
    }
}

bool TextLayerChangeCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const TextLayerChangeCommandData*>(data) != nullptr;
}
