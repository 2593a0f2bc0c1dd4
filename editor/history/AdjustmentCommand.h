#pragma once

#include "history/AdjustmentStream.h"
#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct AdjustmentValues : PlainValues
{
    unsigned int id = 0;
    LXAdjustment before;
    LXAdjustment after;
};

/// Changes an adjustment layer. As a delayed command it reads at its end what the layer has become. Main
/// thread.
class AdjustmentCommand : public ValueCommand<AdjustmentValues, CommandDataType::Adjustment>
{
public:
    /// Takes the values before from the document.
    AdjustmentCommand(LXDocumentInterface* document, unsigned int id, const LXAdjustment& after);

    void EndTransaction(LexoCommandData* data) override;

protected:
    void Redo(AdjustmentValues& values) override;
    void Undo(AdjustmentValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
