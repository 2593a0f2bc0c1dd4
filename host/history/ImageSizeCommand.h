#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class ImageSizeCommandPrivate;
class LXDocumentInterface;

/// Scales a document with everything in it, layers, masks, selection, paths, samples and guides, or changes
/// only its resolution. When it throws, nothing is changed. Data: ImageSizeCommandData. Main thread.
class ZK_HOST_EXPORT ImageSizeCommand : public LexoCommand
{
public:
    explicit ImageSizeCommand(LXDocumentInterface* document);
    ~ImageSizeCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<ImageSizeCommandPrivate> m_pPrivate;
};
