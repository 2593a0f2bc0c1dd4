#pragma once

#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct LayerOrderValues : PlainValues
{
    int from = 0;
    int to = 0;
};

/// Moves a layer to another row. Main thread.
class LayerOrderCommand : public ValueCommand<LayerOrderValues, CommandDataType::LayerOrder>
{
public:
    /// The layer at row `from` stands at row `to` afterwards.
    LayerOrderCommand(LXDocumentInterface* document, int from, int to);

protected:
    void Redo(LayerOrderValues& values) override;
    void Undo(LayerOrderValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
