#pragma once

#include "document/Layer.h"
#include "history/CommandDataType.h"
#include "history/SelectedRows.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

/// A whole layer that comes or goes.
struct LayerContentValues
{
    qint64 GetMemoryCost() const;
    void ReleaseImages();

    bool isAdded = false;
    int row = 0;
    LayerState layer;        ///< of a removed one: as it was when it went
    bool hasChanged = false; ///< the last redo found the row
};

/// Removes a layer or adds one with its pixels; the selected rows follow. Main thread.
class LayerContentCommand : public ValueCommand<LayerContentValues, CommandDataType::LayerContent>
{
public:
    /// @param selection  null for none
    static LayerContentCommand* Removing(LXDocumentInterface* document, QItemSelectionModel* selection,
                                         int row);
    static LayerContentCommand* Adding(LXDocumentInterface* document, QItemSelectionModel* selection, int row,
                                       const LayerState& layer);

protected:
    void Redo(LayerContentValues& values) override;
    void Undo(LayerContentValues& values) override;

private:
    LayerContentCommand(LXDocumentInterface* document, QItemSelectionModel* selection,
                        const LayerContentValues& values);

    bool Add(const LayerContentValues& values);
    bool Remove(LayerContentValues& values);

    LXDocumentInterface* m_pDocument;
    SelectedRows m_Selected;
};
