#pragma once

#include "scripting/LayerReference.h"
#include "scripting/ScriptObject.h"

#include <QString>
#include <QStringList>

class LexoCommand;
class LexoUndoStack;
class LXDocumentModel;

/// One layer of a document, as a script holds it: it stays the same layer when others are added, removed or
/// moved. Properties are set by steps of the history; the calls for setting up, which say so, are not.
class ScriptLayer : public ScriptObject
{
    Q_OBJECT
    /// Whether the layer is still in its document; false: everything else fails.
    Q_PROPERTY(bool exists READ Exists)
    /// 0 is the topmost layer.
    Q_PROPERTY(int row READ GetRow)
    /// The row plus 1.
    Q_PROPERTY(int id READ GetId)
    Q_PROPERTY(QString name READ GetName WRITE SetName)
    /// "raster", "text" or "adjustment"
    Q_PROPERTY(QString kind READ GetKind)
    Q_PROPERTY(QJSValue geometry READ GetGeometry)
    Q_PROPERTY(QJSValue offset READ GetOffset)
    /// 0 to 1
    Q_PROPERTY(double opacity READ GetOpacity WRITE SetOpacity)
    /// As the panel calls it: "Normal", "Multiply"
    Q_PROPERTY(QString blendMode READ GetBlendMode WRITE SetBlendMode)
    Q_PROPERTY(bool visible READ IsVisible WRITE SetVisible)
    /// A list of "transparency", "pixels", "position", "all"
    Q_PROPERTY(QStringList locks READ GetLocks WRITE SetLocks)
    Q_PROPERTY(bool selected READ IsSelected)
    Q_PROPERTY(bool hasMask READ HasMask)
    /// Whether painting goes to the mask.
    Q_PROPERTY(bool maskSelected READ IsMaskSelected)
    /// Whether layer and mask move together.
    Q_PROPERTY(bool linked READ IsLinked WRITE SetLinked)
    Q_PROPERTY(bool maskReveals READ MaskReveals)
    Q_PROPERTY(QJSValue maskGeometry READ GetMaskGeometry)
    Q_PROPERTY(QJSValue maskOffset READ GetMaskOffset)
    /// What a text layer says; fails for other layers.
    Q_PROPERTY(QString text READ GetText WRITE SetText)
    /// Everything of the text, as setText() takes it.
    Q_PROPERTY(QJSValue textOptions READ GetTextOptions)
    /// Where the text lies in the document, with fractions: `{x, y, width, height}`
    Q_PROPERTY(QJSValue textBox READ GetTextBox)
    /// What an adjustment layer does, as setAdjustment() takes it; fails for other layers.
    Q_PROPERTY(QJSValue adjustment READ GetAdjustment)

public:
    ScriptLayer(ScriptContext& context, LXDocumentInterface* document, int row);

    const LayerReference& Reference() const { return m_Layer; }

    bool Exists() const { return m_Layer.IsValid(); }

    int GetRow() const;
    int GetId() const;
    QString GetName() const;
    void SetName(const QString& name);
    QString GetKind() const;
    QJSValue GetGeometry() const;
    QJSValue GetOffset() const;
    double GetOpacity() const;
    void SetOpacity(double opacity);
    QString GetBlendMode() const;
    void SetBlendMode(const QString& mode);
    bool IsVisible() const;
    void SetVisible(bool visible);
    QStringList GetLocks() const;
    void SetLocks(const QStringList& names);
    bool IsSelected() const;
    bool HasMask() const;
    bool IsMaskSelected() const;
    bool IsLinked() const;
    void SetLinked(bool linked);
    bool MaskReveals() const;
    QJSValue GetMaskGeometry() const;
    QJSValue GetMaskOffset() const;

    QString GetText() const;
    void SetText(const QString& text);
    QJSValue GetTextOptions() const;
    QJSValue GetTextBox() const;
    QJSValue GetAdjustment() const;

    /// One step, whatever the options change.
    Q_INVOKABLE void setText(const QJSValue& options);
    Q_INVOKABLE void setAdjustment(const QJSValue& options);
    /// @param options  `{reveals}`; true unless told
    Q_INVOKABLE void addMask(const QJSValue& options = QJSValue());
    Q_INVOKABLE void removeMask();
    Q_INVOKABLE void moveToRow(const QJSValue& row);
    Q_INVOKABLE void remove();

    /// For setting up. Where the rectangle is missing, the whole of it is filled.
    Q_INVOKABLE void fill(const QString& color, const QJSValue& rect = QJSValue());
    Q_INVOKABLE void fillMask(const QJSValue& value, const QJSValue& rect = QJSValue());
    Q_INVOKABLE void setPixel(const QJSValue& x, const QJSValue& y, const QString& color);
    Q_INVOKABLE void setMaskPixel(const QJSValue& x, const QJSValue& y, const QJSValue& value);
    Q_INVOKABLE void place(const QJSValue& x, const QJSValue& y);
    Q_INVOKABLE void placeMask(const QJSValue& x, const QJSValue& y);

private:
    LXDocumentModel* Model() const;
    /// Null for a document without a window.
    LexoUndoStack* History() const;
    void CheckFree() const;
    void RequireMask() const;
    void RequireKind(int kind) const;
    void ChangeText(const QJSValue& options) const;
    void Push(LexoCommand* command) const;
    void BeginSetUp() const;
    void Paint(bool isMask, quint32 pixel, const QRect& rect) const;

    LayerReference m_Layer;
};
