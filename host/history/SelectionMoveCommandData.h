#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QPoint>

#include <memory>

class SelectionMoveCommandDataPrivate;

/// Where the selection's top left lay before and after a move, in document pixels.
class ZK_HOST_EXPORT SelectionMoveCommandData : public LexoCommandData
{
public:
    SelectionMoveCommandData();
    ~SelectionMoveCommandData() override;

    void SetUndoPosition(const QPoint& topLeft);
    void SetRedoPosition(const QPoint& topLeft);

    QPoint GetUndoPosition() const;
    QPoint GetRedoPosition() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    std::unique_ptr<SelectionMoveCommandDataPrivate> m_pPrivate;
};
