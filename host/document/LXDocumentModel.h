#pragma once

#include "ZKHostExport.h"

#include <QAbstractItemModel>
#include <QPoint>

#include <memory>

class LXDocumentInterface;
class LXDocumentModelPrivate;
class QTransform;

/// The layers of a document as a list of one column; the views' layer selection models work on it.
///
/// Row 0 is the topmost layer and the last row the bottom one, so that a list view shows the stack as it
/// lies. The id that the document and the signals use is the row plus 1.
///
/// `Qt::DisplayRole` and `Qt::EditRole` give the name, `Qt::DecorationRole` the layer's thumbnail (QImage);
/// the rest comes through Role. Setters change the document at once and without undo; the undoable forms are
/// commands. All but GetDocument and the getters of flags belong to the main thread. Getters answer a default
/// and setters do nothing for a bad row.
class ZK_HOST_EXPORT LXDocumentModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role
    {
        MaskThumbnailRole = Qt::UserRole, ///< QImage, gray; invalid without a mask
        HasMaskRole,                      ///< bool
        MaskSelectedRole,                 ///< bool
        MaskLinkedRole,                   ///< bool
        VisibleRole,                      ///< bool
        OpacityRole,                      ///< double, 0 to 1
        BlendModeRole,                    ///< unsigned int
        LocksRole,                        ///< unsigned int, LayerLocks bits
        KindRole,                         ///< int, LayerKind number
        AdjustmentRole                    ///< LXAdjustment; invalid for other kinds
    };

    ~LXDocumentModel() override;

    LXDocumentInterface* GetDocument() const;

    /// LayerLocks bits.
    unsigned int GetLockFlags(int row) const;
    void SetLockFlags(int row, unsigned int flags);

    /// What of the layer painting goes to: its pixels, or its mask. Exactly one of the two is selected.
    bool GetLayerSelected(int row) const;
    bool GetMaskSelected(int row) const;
    /// Selects the mask (if there is one) or the layer's pixels as the target.
    void SetMaskSelected(int row, bool selected);

    bool HasMask(int row) const;
    /// Whether layer and mask move together.
    bool GetMaskLinked(int row) const;
    void SetMaskLinked(int row, bool linked);

    /// Top left of the layer's image and of its mask, in document pixels; (0, 0) without a mask.
    QPoint GetLayerOffset(int row) const;
    QPoint GetMaskOffset(int row) const;
    /// LXDocumentInterface::GetTextLayerMatrix in full precision; the identity for other layers.
    QTransform GetTextLayerTransformation(int row) const;

    QString GetName(int row) const;
    void SetName(int row, const QString& name);

    /// 0 to 1; values outside are clamped.
    double GetOpacity(int row) const;
    void SetOpacity(int row, double opacity);

    /// One of the modes of `BlendOn`: 0, 12 to 23.
    unsigned int GetBlendMode(int row) const;
    void SetBlendMode(int row, unsigned int mode);

    bool GetVisible(int row) const;
    void SetVisible(int row, bool visible);

    /// Moves the layer at `from` so that it stands at row `to` afterwards. No undo.
    void MoveLayer(int from, int to);

    /// Drops the thumbnail; it is made anew when a view asks for it.
    void UpdateLayerThumbnail(int row);
    void UpdateMaskThumbnail(int row);

    using QObject::parent;
    QModelIndex index(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    /// A name can be edited: the delegate turns that into a command.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

signals:
    void LayerDataChanged(uint id);
    void LayerMaskChanged(uint id);
    void LayerPositionChanged(uint id, QPoint offset);
    void MaskPositionChanged(uint id, QPoint offset);
    void LayerSelectedChanged(bool selected);
    void MaskSelectedChanged(bool selected);
    void LocksChanged(uint id, uint flags);
    void LayerFontChanged(uint id);
    void LayerBrushChanged(uint id);
    void LayerTextDeformationChanged(uint id);

private:
    friend class LXDocumentModelPrivate;
    explicit LXDocumentModel(LXDocumentInterface* document);

    std::unique_ptr<LXDocumentModelPrivate> m_pPrivate;
};
