#pragma once

#include "clipboardprivate/ClipboardPixels.h"

#include "common/TileMap.h"
#include "gui/LXOperationProgress.h"
#include "image/LXImage.h"

#include <QReadWriteLock>

#include <exception>

/// Turns the colors of a picture into values of a mask, on a worker under a dialog that can cancel it: first
/// the mask's own values are taken over, then the picture is painted into them. The document isn't touched.
/// Main thread only, but for OnCancel().
class MaskPasteProgress : public LXOperationProgress
{
    Q_OBJECT

public:
    /// What the mask holds under the picture, and how much of the picture went into it. It covers what
    /// picture and mask, and the selection, if there is one, have in common.
    const LXImage32& GetResult() const { return m_Result; }

    QRect GetResultRect() const { return m_ResultRect; }

    /// Throws what Run() has caught.
    void RethrowFailure() const;

signals:
    /// From the worker.
    void ConversionProgressRange(int minimum, int maximum);
    void ConversionPosition(int position);
    void ConversionLabel(QString label);

public slots:
    void OnCancel() override;

protected:
    /// @param isGroundOpaque  the value of the mask where it has no pixels
    MaskPasteProgress(const ClipboardPixels::Placed& item, const ClipboardPixels::Placed& mask,
                      const QRect& resultRect, bool isGroundOpaque, QWidget* parent);

    void Run() override;

    /// Paints one tile of the item, which lies as the result's tile does.
    /// @param tile  its column and row
    virtual void BlendTile(TileMap& map, LXImage32& result, const LXImage32& item, const QPoint& tile) = 0;

private:
    void Convert();
    void TakeOverMask();
    void PaintItem();
    /// Goes through the tiles of the result until it is cancelled.
    template <class Visit>
    void ForEachTile(const QString& label, Visit visit);
    bool IsStopped() const;

    ClipboardPixels::Placed m_Item;
    ClipboardPixels::Placed m_Mask;
    QRect m_ResultRect;
    bool m_bGroundOpaque;
    LXImage32 m_Result;
    TileMap m_Map;

    mutable QReadWriteLock m_CancelLock;
    bool m_bStop = false;
    std::exception_ptr m_Failure;
};
