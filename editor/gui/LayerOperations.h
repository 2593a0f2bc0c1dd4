#pragma once

#include "image/LXAdjustment.h"

#include <QObject>
#include <QPointer>

#include <functional>

class LexoCommand;
class LXDocumentModel;
class ZKDocumentView;

/// What the layers panel does to the document of a view: each change is one step of its history. Nothing
/// happens while the document is locked, and layers keep their order and number while the view says so.
/// Main thread only.
class LayerOperations : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Null: nothing can be done.
    void SetView(ZKDocumentView* view);

    LXDocumentModel* GetModel() const;
    /// The row that single changes go to; -1 unless exactly one is selected.
    int GetRow() const;

    /// What keeps the layers from being changed or put into another order, in words for the user; empty for
    /// nothing.
    QString GetObstacle() const;
    /// What keeps the person from choosing other layers, in words; empty for nothing.
    QString GetChoiceObstacle() const;
    /// Whether the selected layer may be changed.
    bool CanChange() const;
    bool CanAdd() const;
    /// Deleting takes the mask while that is what is painted on; else the selected layers, of which one
    /// stays.
    bool CanDelete() const;
    bool IsDeletingMask() const;
    bool CanAddMask() const;
    /// @param by  rows, -1 being up
    bool CanMove(int by) const;

    void Add();
    /// A layer above the selected one that changes the colors below it.
    void AddAdjustment(const LXAdjustment& adjustment);
    /// Shows the selected layer's adjustment so, in a step that stays open until FinishAdjustment().
    void PreviewAdjustment(const LXAdjustment& adjustment);
    void FinishAdjustment();
    void Delete();
    /// @param reveals  false for a mask that hides the layer
    void AddMask(bool reveals);
    void Move(int by);
    void SetBlendMode(unsigned int mode);
    /// 0 to 1
    void SetOpacity(double opacity);
    /// @param locks  bits of LayerLocks
    void SetLocks(unsigned int locks, bool locked);
    void SetVisible(int row, bool visible);
    void Rename(int row, const QString& name);
    /// Deletes the selected pixels of the layer or mask that is painted on; false when there is nothing to
    /// delete or it may not be.
    bool DeleteSelection(const QString& text);

signals:
    /// What is shown of the layers, or what may be done to them, may have changed; thumbnails aside.
    void Changed();
    /// A tool has begun or ended its work on the document, which decides about all of it.
    void LockChanged();

private:
    bool MayWork() const;
    bool MayReorder() const;
    bool IsLocked(int row) const;
    bool MayPaint(int row) const;
    /// Runs a step; the person is told when it can't be done.
    void Try(const std::function<void()>& step);
    void Push(LexoCommand* command);
    void AddLayer();
    void ShowAdjustment(const LXAdjustment& adjustment);
    void DeleteLayers();
    bool DeletePixels(int row, const QString& text);

    QPointer<ZKDocumentView> m_pView;
    unsigned int m_AdjustedId = 0; ///< of the layer whose step is open; 0 for none
};
