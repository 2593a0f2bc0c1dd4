#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommandData.h"

#include <QMatrix4x4>
#include <QPointF>
#include <QString>

#include <memory>

class QBrush;
class QFont;
class TextLayerChangeCommandDataPrivate;

/// What a text layer was before it was changed; the command reads what it is afterwards. The values mean what
/// LXDocumentInterface says of them; a value that isn't set is that of a new text layer.
class ZK_HOST_EXPORT TextLayerChangeCommandData : public LexoCommandData
{
public:
    TextLayerChangeCommandData();
    ~TextLayerChangeCommandData() override;

    void SetLayerID(uint id);
    void SetUndoText(const QString& text);
    void SetUndoFont(const QFont& font);
    void SetUndoBrush(const QBrush& brush);
    void SetUndoPosition(const QPointF& position);
    /// Of the bend: 0 none, 1 flag.
    void SetUndoStyle(int style);
    void SetUndoOrientation(int orientation);
    void SetUndoBend(double percent);
    void SetUndoHDistortion(double percent);
    void SetUndoVDistortion(double percent);
    void SetUndoTransformation(const QMatrix4x4& matrix);
    void SetUndoRenderMode(int mode);

    uint GetLayerID() const;
    QString GetUndoText() const;
    QFont GetUndoFont() const;
    QBrush GetUndoBrush() const;
    QPointF GetUndoPosition() const;
    int GetUndoStyle() const;
    int GetUndoOrientation() const;
    double GetUndoBend() const;
    double GetUndoHDistortion() const;
    double GetUndoVDistortion() const;
    QMatrix4x4 GetUndoTransformation() const;
    int GetUndoRenderMode() const;

    int GetDataType() const override;
    bool Serialize(IWriter* writer) const override;
    bool Deserialize(IReader* reader) override;

private:
    friend class TextLayerChangeCommandDataPrivate;

    std::unique_ptr<TextLayerChangeCommandDataPrivate> m_pPrivate;
};
