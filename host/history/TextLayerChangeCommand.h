#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LXDocumentInterface;
class TextLayerChangeCommandPrivate;

/// A change of a text layer that is in the document already, by LXDocumentInterface's setters. Where it
/// closes, as a delayed command at commit(), else at its push, it reads from the layer what redo shall bring
/// back. Data: TextLayerChangeCommandData. Main thread.
class ZK_HOST_EXPORT TextLayerChangeCommand : public LexoCommand
{
public:
    explicit TextLayerChangeCommand(LXDocumentInterface* document);
    ~TextLayerChangeCommand() override;

    void EndTransaction(LexoCommandData* data) override;
    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<TextLayerChangeCommandPrivate> m_pPrivate;
};
