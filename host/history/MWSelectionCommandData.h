#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"
#include "history/SelectionCommandData.h"
#include "image/LXImageFwd.h"

#include <QPoint>

#include <memory>

class MWSelectionCommandDataPrivate;

/// A mask that is combined with the selection, and the selection as it was.
class ZK_HOST_EXPORT MWSelectionCommandData : public LexoCommandData
{
public:
    MWSelectionCommandData();
    ~MWSelectionCommandData() override;

    /// True: nothing was selected before, whatever SetUndoSel() holds.
    void SetNoUndoSelection(bool none);
    /// The selection before, and where its top left lies, in document pixels.
    void SetUndoSel(const QPoint& offset, const LXImage32& mask);
    /// The new coverage likewise; an empty mask for none.
    void SetRedoSel(const QPoint& offset, const LXImage32& mask, SelectionCommandData::LogicalOp op);

    bool HasNoUndoSelection() const;
    QPoint GetUndoOffset() const;
    const LXImage32& GetUndoMask() const;
    QPoint GetRedoOffset() const;
    const LXImage32& GetRedoMask() const;
    SelectionCommandData::LogicalOp GetRedoOp() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    std::unique_ptr<MWSelectionCommandDataPrivate> m_pPrivate;
};
