#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"
#include "image/LXImageFwd.h"

#include <QPainterPath>
#include <QPoint>

#include <memory>

class SelectionCommandDataPrivate;

/// A path that is combined with the selection, and the selection as it was.
class ZK_HOST_EXPORT SelectionCommandData : public LexoCommandData
{
public:
    /// How new coverage is combined with that of the selection.
    enum LogicalOp : int
    {
        Unite = 0,     ///< the larger of both
        Intersect = 1, ///< their product
        Subtract = 2,  ///< what the new one leaves of the old
        Replace = 3
    };

    SelectionCommandData();
    ~SelectionCommandData() override;

    /// Replace, unless set.
    void SetSelectionOp(LogicalOp op);
    /// Document pixels. Without a path there is no new coverage: with Replace nothing is selected.
    void SetSelectionGeometry(const QPainterPath& path);
    /// The selection before, and where its top left lies; an empty image for none.
    void SetUndoSel(const QPoint& offset, const LXImage32& mask);

    LogicalOp GetSelectionOp() const;
    const QPainterPath& GetSelectionGeometry() const;
    QPoint GetUndoOffset() const;
    const LXImage32& GetUndoMask() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;
    void ReleaseSerializeData() override;
    qint64 GetMemoryCost() const override;

private:
    std::unique_ptr<SelectionCommandDataPrivate> m_pPrivate;
};
