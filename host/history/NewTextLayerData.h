#pragma once

#include "ZKHostExport.h"

#include "history/NewLayerData.h"

class QBrush;
class QFont;
class QMatrix4x4;
class QPointF;

/// A new text layer. The values mean what LXDocumentInterface says of them; the text itself is read from the
/// layer when the command closes.
class ZK_HOST_EXPORT NewTextLayerData : public NewLayerData
{
public:
    NewTextLayerData();

    void SetFont(const QFont& font);
    void SetBrush(const QBrush& brush);
    void SetPosition(const QPointF& position);
    /// Of the bend: 0 none, 1 flag.
    void SetStyle(int style);
    void SetOrientation(int orientation);
    void SetBend(double percent);
    void SetHDistortion(double percent);
    void SetVDistortion(double percent);
    void SetTransformation(const QMatrix4x4& matrix);
    void SetRenderMode(int mode);

    int GetDataType() const override;
};
