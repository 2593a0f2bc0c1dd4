#pragma once

#include "ZKHostExport.h"

#include <QGraphicsView>

#include <memory>

class LXColorTransformBase;
class LXDocumentInterface;
class LXDocumentModel;
class LexoUndoStack;
class QItemSelectionModel;
class ZKDocumentViewPrivate;

/// Shows one document. Main thread only.
///
/// Scene coordinates are document pixels: pixel (x, y) covers x to x + 1. The scene rectangle is the canvas
/// with room round it; a canvas that is smaller than the viewport stands in its middle. Points called "view"
/// are device independent pixels of the viewport.
///
/// The wheel zooms at the pointer. The view pans while Space is held and the left button drags, or while the
/// middle button drags.
class ZK_HOST_EXPORT ZKDocumentView : public QGraphicsView
{
    Q_OBJECT

public:
    static constexpr double MinScale = 0.05;
    static constexpr double MaxScale = 40.0;

    /// Neither the document nor the history becomes the view's own; both outlive it.
    /// @param history  null for a view whose tools work without one
    ZKDocumentView(LXDocumentInterface* document, LexoUndoStack* history, QWidget* parent = nullptr);
    ~ZKDocumentView() override;

    /// The layers of the document shown.
    LXDocumentModel* GetModel() const;
    LexoUndoStack* GetHistory() const;
    /// Which rows of GetModel() are selected; each view has its own selection. Never null.
    QItemSelectionModel* GetLayerSelection() const;
    /// Which of the document's paths are selected, an LXPathSelectionModel; none at first. Each view has its
    /// own. Never null.
    QItemSelectionModel* GetPathSelection() const;

    /// Device independent screen pixels for each document pixel.
    double GetScale() const;
    /// Multiplies the scale, within MinScale and MaxScale; the document point under `center` stays there as
    /// far as the scene rectangle allows. A factor that is no number is ignored.
    /// @param center  view coordinates
    void Scale(double factor, const QPointF& center);
    /// The same to an absolute scale.
    /// @param resizeWindow  also fits a frame (not a tab) round the canvas, as far as the area has room; one
    ///                      that would reach over the area's edge moves
    void Zoom(double scale, const QPointF& anchor, bool resizeWindow);
    /// Shows the whole canvas in the middle, as large as it fits, within the limits.
    /// @param resizeWindow  makes room first, as Zoom() does: a frame takes as much of the area as it can use
    void FitSizeToViewPort(bool resizeWindow = false);

    /// Whether the view pans now: mouse presses move the picture, and scene items don't get them.
    bool IsPanningEnabled() const;
    /// Starts or ends panning. Starting does nothing while panning isn't allowed.
    void EnablePanning(bool enable);
    /// Whether panning may start; true at first.
    bool IsPanningAllowed() const;
    /// False ends panning that is under way.
    void AllowPanning(bool allow);

    /// While on, a drag that leaves the viewport scrolls, the faster the farther it is outside. Off at first.
    void EnableAutoscroll(bool enable);

    /// While true, panels refuse to reorder, add and delete layers. A switch, not a counter.
    void BlockLayerOrderOperations(bool block);
    bool IsLayerOrderBlocked() const;
    /// The same for paths.
    void BlockPathOrderOperations(bool block);
    bool IsPathOrderBlocked() const;
    /// The same for the opacity, the blend mode and the locks of layers.
    void BlockStylizationView(bool block);
    bool IsStylizationBlocked() const;

    /// Whether the document's guides are drawn; true at first.
    void ShowGuides(bool show);
    bool AreGuidesShown() const;
    /// Whether the view marks the document's color samples; on at first. A tool that puts handles on them
    /// switches the marks off.
    void ShowSampleMarks(bool show);
    bool AreSampleMarksShown() const;

    /// Turns colors of the document into those of the screen, as the view itself does. It stays as it is when
    /// one of the two gets another profile (ColorTransformChanged). Never null; the result may be used on any
    /// thread, also after the view is gone.
    std::shared_ptr<const LXColorTransformBase> GetColorTransform() const;

signals:
    /// The view's own cursor is set before true and put back before false.
    void PanningEnabled(bool enabled);
    void ScaleChanged(qreal scale);
    /// Another part of the scene is visible: scrolled, scaled or resized.
    void SceneAreaChanged();
    /// Once, while everything of the view still stands.
    void AboutDestroy(ZKDocumentView* view);
    /// GetColorTransform() answers something else from now on.
    void ColorTransformChanged();
    /// The pointer moved over the viewport to this point, or left it.
    void CursorMoved(QPointF scenePos);
    void CursorLeft();
    void LayerOrderOperationsBlocked(bool blocked);
    void PathOrderOperationsBlocked(bool blocked);
    void StylizationViewBlocked(bool blocked);

protected:
    void drawBackground(QPainter* painter, const QRectF& exposed) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    friend class ZKDocumentViewPrivate;
    std::unique_ptr<ZKDocumentViewPrivate> m_pPrivate;
};
