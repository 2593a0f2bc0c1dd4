#pragma once

#include "EditorExport.h"

#include "document/LXPathSelectionModel.h"
#include "gui/CanvasPainter.h"
#include "gui/GridLines.h"
#include "gui/GuideLines.h"
#include "gui/PathOutlines.h"
#include "gui/SampleMarks.h"
#include "gui/ScaledTileCache.h"
#include "gui/SelectionAnts.h"
#include "gui/SelectionTint.h"
#include "gui/TextCaretLines.h"
#include "gui/ViewAutoscroll.h"
#include "gui/ViewPanning.h"
#include "image/ZKCMSTransform.h"

#include <QGraphicsScene>
#include <QItemSelectionModel>

#include <optional>

class LXDocumentInterface;
class LexoUndoStack;
class QMdiSubWindow;
class ZKDocumentView;

/// Scene whose items get no mouse while the view pans; who filters the scene's events still hears of it.
class DocumentScene : public QGraphicsScene
{
    Q_OBJECT

public:
    DocumentScene(const ViewPanning* panning, QObject* parent);

protected:
    bool event(QEvent* event) override;

private:
    const ViewPanning* m_pPanning;
};

class ZKDocumentViewPrivate : public QObject
{
    Q_OBJECT

public:
    ZKDocumentViewPrivate(ZKDocumentView* view, LXDocumentInterface* document, LexoUndoStack* history);

    static ZKDocumentViewPrivate* Get(const ZKDocumentView* view);

    /// Sends AboutDestroy, the first time.
    void AnnounceDestroy();

    /// How many pixels were made from the merged picture since the view exists; tells how local painting is.
    qint64 MadePixels() const { return m_Tiles.MadePixels(); }

    /// A view may stand without a history; tests take it away.
    void SetHistory(LexoUndoStack* history) { m_pHistory = history; }

    const SelectionAnts& Ants() const { return m_Ants; }

    /// Whether what is not selected is tinted; off at first.
    void ShowSelectionTint(bool show) { m_Tint.SetShown(show, Place()); }

    bool IsSelectionTintShown() const { return m_Tint.IsShown(); }

    /// Lines at even distances over the canvas; none at first.
    /// @param step  document pixels; 0 for none
    ZK_EDITOR_EXPORT void ShowGrid(int step);

    /// The step of the grid; 0 while none is shown.
    int ShownGrid() const { return m_Grid.Step(); }

signals:
    /// The picture can't be shown: memory, or the disk for temporary files, has come to an end. Comes again
    /// only after it could be shown in between. Sent while the view is painted.
    void CouldNotPaint();

private:
    friend class ZKDocumentView;

    CanvasPlace Place() const;
    void Paint(QPainter* painter);
    void PaintDocument(QPainter& painter);

    /// An absolute scale within the limits; the document point under the anchor stays there.
    void SetScale(double scale, const QPointF& anchor);
    QPointF PointUnder(const QPointF& viewPos) const;
    void ScrollTo(const QPointF& scenePos, const QPointF& viewPos);
    void UpdateSceneRect();
    void TellSceneArea();
    double FittingScale() const;
    double FittingScale(const QSize& viewport) const;
    void ShowWhole(double scale);
    /// The frame round the view in an area of documents; null in a tab and elsewhere.
    QMdiSubWindow* Frame() const;
    /// Fits the frame round the canvas.
    /// @param scale  of the canvas; none for the largest one that leaves the frame in its area
    void FitFrame(std::optional<double> scale);

    void OnCompositionChanged(const QRect& rect);
    void OnSizeChanged();
    void SelectSomeLayer();
    void TellCurrentLayer();
    void FollowPathsAndSamples();
    void UpdateLook();
    void UpdateColors();

    ZKDocumentView* m_pView;
    LXDocumentInterface* m_pDocument;
    LexoUndoStack* m_pHistory;
    QItemSelectionModel m_LayerSelection;
    LXPathSelectionModel m_PathSelection;
    ViewPanning* m_pPanning;
    ViewAutoscroll* m_pAutoscroll;

    ZKCMSTransform m_ToScreen;
    ScaledTileCache m_Tiles;
    SelectionTint m_Tint;
    SelectionAnts m_Ants;
    GridLines m_Grid;
    GuideLines m_Guides;
    PathOutlines m_Outlines;
    SampleMarks m_Marks;
    TextCaretLines m_Caret;
    CanvasLook m_Look;
    QRegion m_Exposed; ///< viewport pixels of the paint event that runs; empty outside

    double m_Scale = 1;
    /// The last zoom's anchor: while the pointer rests, rounding to whole pixels doesn't add up.
    QPointF m_AnchorView;
    QPointF m_AnchorScene;
    QRectF m_ToldArea;
    bool m_bTouched = false; ///< until the person zooms, the whole picture stays visible
    bool m_bScaling = false; ///< intermediate scrolling isn't told
    bool m_bLayerOrderBlocked = false;
    bool m_bPathOrderBlocked = false;
    bool m_bStylizationBlocked = false;
    bool m_bDestroyAnnounced = false;
    bool m_bCouldNotPaint = false; ///< the last time
};
