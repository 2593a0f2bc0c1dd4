#include "history/PaintCommand.h"

#include "history/PaintCommandData.h"
#include "history/PaintExecution.h"

class PaintCommandPrivate
{
public:
    LXDocumentInterface* document;
    PaintExecution::Target target;
    bool isApplied; ///< the next redo finds the pixels in the document
};

PaintCommand::PaintCommand(LXDocumentInterface* document, Target target, bool applyOnPush)
    : m_pPrivate(std::make_unique<PaintCommandPrivate>())
{
    m_pPrivate->document = document;
    m_pPrivate->target =
        target == Target::Mask ? PaintExecution::Target::Mask : PaintExecution::Target::Layer;
    m_pPrivate->isApplied = !applyOnPush;
}

PaintCommand::~PaintCommand() = default;

void PaintCommand::RedoExecute(LexoCommandData* data)
{
    auto& paint = static_cast<PaintCommandData&>(*data);
    if (m_pPrivate->isApplied) {
        PaintExecution::AnnounceRedo(m_pPrivate->document, paint, m_pPrivate->target);
    } else {
        PaintExecution::Redo(m_pPrivate->document, paint, m_pPrivate->target);
    }
    m_pPrivate->isApplied = false;
}

void PaintCommand::UndoExecute(LexoCommandData* data)
{
    m_pPrivate->isApplied = false; // a step that was open has had no first redo
    PaintExecution::Undo(m_pPrivate->document, static_cast<PaintCommandData&>(*data), m_pPrivate->target);
}
