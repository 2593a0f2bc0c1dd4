#pragma once

#include "history/CommandDataType.h"
#include "history/LayerColors.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct ColorsValues
{
    qint64 GetMemoryCost() const { return before.GetMemoryCost() + after.GetMemoryCost(); }

    void ReleaseImages()
    {
        before.ReleaseImages();
        after.ReleaseImages();
    }

    LayerColors before;
    LayerColors after;
};

/// Gives a document colors that were converted into another profile, with that profile. Main thread.
class ColorsCommand : public ValueCommand<ColorsValues, CommandDataType::ConvertProfile>
{
public:
    /// @param before  what the document has now
    ColorsCommand(LXDocumentInterface* document, const LayerColors& before, const LayerColors& after);

protected:
    void Redo(ColorsValues& values) override;
    void Undo(ColorsValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
