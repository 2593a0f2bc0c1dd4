#pragma once

#include "document/Layer.h"
#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

/// A mask that comes or goes. Only what the states say of the mask counts.
struct LayerMaskValues
{
    qint64 GetMemoryCost() const;
    void ReleaseImages();

    unsigned int id = 0;
    LayerState before;
    LayerState after;
};

/// Adds or removes the mask of a layer. Main thread.
class LayerMaskCommand : public ValueCommand<LayerMaskValues, CommandDataType::LayerMaskContent>
{
public:
    /// A new mask of the canvas' size, filled with its default.
    static LayerMaskCommand* Adding(LXDocumentInterface* document, unsigned int id, bool reveals);
    static LayerMaskCommand* Removing(LXDocumentInterface* document, unsigned int id);

protected:
    void Redo(LayerMaskValues& values) override;
    void Undo(LayerMaskValues& values) override;

private:
    LayerMaskCommand(LXDocumentInterface* document, const LayerMaskValues& values);

    LXDocumentInterface* m_pDocument;
};
