#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class LXDocumentInterface;
class PaintCommandPrivate;

/// Puts kept pixels into a layer or a mask and takes them out again. Redo grows the target to hold them, new
/// ground being transparent or the mask's default; undo cuts it back. PaintCommandData tells where the images
/// lie. Takes the write locker itself; when it throws, nothing is changed. Main thread.
class ZK_HOST_EXPORT PaintCommand : public LexoCommand
{
public:
    ~PaintCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    enum class Target
    {
        Layer,
        Mask
    };

    PaintCommand(LXDocumentInterface* document, Target target, bool applyOnPush);

private:
    std::unique_ptr<PaintCommandPrivate> m_pPrivate;
};
