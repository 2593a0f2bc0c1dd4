#include "gui/ZKDocumentView.h"

#include "document/LXColorTransformBase.h"
#include "document/LXDocumentInterface.h"
#include "gui/ViewCursor.h"
#include "gui/ZKDocumentView_p.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QtMath>

namespace {
constexpr double WheelUnitsToDouble = 360; ///< three notches

struct ToScreen : LXColorTransformBase
{
    explicit ToScreen(const ZKCMSTransform& transform) : m_Transform(transform) {}

    void operator()(QColor& color) const override { m_Transform(color); }

private:
    ZKCMSTransform m_Transform;
};
} // namespace

ZKDocumentView::ZKDocumentView(LXDocumentInterface* document, LexoUndoStack* history, QWidget* parent)
    : QGraphicsView(parent), m_pPrivate(std::make_unique<ZKDocumentViewPrivate>(this, document, history))
{
    setScene(new DocumentScene(m_pPrivate->m_pPanning, this));
    setAccessibleName(tr("Picture"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAlignment(Qt::AlignCenter);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    setResizeAnchor(QGraphicsView::NoAnchor);
    // Bars that come and go would resize the viewport.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    for (QScrollBar* const bar : {horizontalScrollBar(), verticalScrollBar()}) {
        connect(bar, &QScrollBar::rangeChanged, bar, [bar](int from, int to) { bar->setEnabled(to > from); });
    }
    setViewportUpdateMode(QGraphicsView::MinimalViewportUpdate);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    new ViewCursor(this);
    // Files are dropped on the window.
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
    m_pPrivate->UpdateLook();
    m_pPrivate->UpdateSceneRect();
    m_pPrivate->m_Ants.Update(m_pPrivate->Place());
    m_pPrivate->m_Guides.Update(m_pPrivate->Place());
    m_pPrivate->m_Outlines.Update(m_pPrivate->Place());
    m_pPrivate->m_Marks.Update(m_pPrivate->Place());
}

ZKDocumentView::~ZKDocumentView()
{
    m_pPrivate->AnnounceDestroy();
}

LXDocumentModel* ZKDocumentView::GetModel() const
{
    return m_pPrivate->m_pDocument->GetModel();
}

LexoUndoStack* ZKDocumentView::GetHistory() const
{
    return m_pPrivate->m_pHistory;
}

QItemSelectionModel* ZKDocumentView::GetLayerSelection() const
{
    return &m_pPrivate->m_LayerSelection;
}

QItemSelectionModel* ZKDocumentView::GetPathSelection() const
{
    return &m_pPrivate->m_PathSelection;
}

double ZKDocumentView::GetScale() const
{
    return m_pPrivate->m_Scale;
}

void ZKDocumentView::Scale(double factor, const QPointF& center)
{
    m_pPrivate->SetScale(GetScale() * factor, center);
}

void ZKDocumentView::Zoom(double scale, const QPointF& anchor, bool resizeWindow)
{
    m_pPrivate->SetScale(scale, anchor);
    if (resizeWindow) m_pPrivate->FitFrame(GetScale());
}

void ZKDocumentView::FitSizeToViewPort(bool resizeWindow)
{
    if (resizeWindow) m_pPrivate->FitFrame(std::nullopt);
    m_pPrivate->ShowWhole(m_pPrivate->FittingScale());
}

bool ZKDocumentView::IsPanningEnabled() const
{
    return m_pPrivate->m_pPanning->IsEnabled();
}

void ZKDocumentView::EnablePanning(bool enable)
{
    m_pPrivate->m_pPanning->Enable(enable);
}

bool ZKDocumentView::IsPanningAllowed() const
{
    return m_pPrivate->m_pPanning->IsAllowed();
}

void ZKDocumentView::AllowPanning(bool allow)
{
    m_pPrivate->m_pPanning->Allow(allow);
}

void ZKDocumentView::EnableAutoscroll(bool enable)
{
    m_pPrivate->m_pAutoscroll->Enable(enable);
}

void ZKDocumentView::BlockLayerOrderOperations(bool block)
{
    if (block == m_pPrivate->m_bLayerOrderBlocked) return;
    m_pPrivate->m_bLayerOrderBlocked = block;
    emit LayerOrderOperationsBlocked(block);
}

bool ZKDocumentView::IsLayerOrderBlocked() const
{
    return m_pPrivate->m_bLayerOrderBlocked;
}

void ZKDocumentView::BlockPathOrderOperations(bool block)
{
    if (block == m_pPrivate->m_bPathOrderBlocked) return;
    m_pPrivate->m_bPathOrderBlocked = block;
    emit PathOrderOperationsBlocked(block);
}

bool ZKDocumentView::IsPathOrderBlocked() const
{
    return m_pPrivate->m_bPathOrderBlocked;
}

void ZKDocumentView::ShowGuides(bool show)
{
    m_pPrivate->m_Guides.SetShown(show, m_pPrivate->Place());
}

bool ZKDocumentView::AreGuidesShown() const
{
    return m_pPrivate->m_Guides.IsShown();
}

void ZKDocumentView::ShowSampleMarks(bool show)
{
    m_pPrivate->m_Marks.SetShown(show, m_pPrivate->Place());
}

bool ZKDocumentView::AreSampleMarksShown() const
{
    return m_pPrivate->m_Marks.IsShown();
}

std::shared_ptr<const LXColorTransformBase> ZKDocumentView::GetColorTransform() const
{
    return std::make_shared<ToScreen>(m_pPrivate->m_ToScreen);
}

void ZKDocumentView::BlockStylizationView(bool block)
{
    if (block == m_pPrivate->m_bStylizationBlocked) return;
    m_pPrivate->m_bStylizationBlocked = block;
    emit StylizationViewBlocked(block);
}

bool ZKDocumentView::IsStylizationBlocked() const
{
    return m_pPrivate->m_bStylizationBlocked;
}

void ZKDocumentView::paintEvent(QPaintEvent* event)
{
    const QScopedValueRollback<QRegion> exposed(m_pPrivate->m_Exposed, event->region());
    QGraphicsView::paintEvent(event);
}

void ZKDocumentView::drawBackground(QPainter* painter, const QRectF& exposed)
{
    // Rendered into something else than the viewport, the scene has only its items.
    if (m_pPrivate->m_Exposed.isEmpty()) {
        QGraphicsView::drawBackground(painter, exposed);
    } else {
        m_pPrivate->Paint(painter);
    }
}

bool ZKDocumentView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave) emit CursorLeft();
    return QGraphicsView::viewportEvent(event);
}

void ZKDocumentView::changeEvent(QEvent* event)
{
    QGraphicsView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) m_pPrivate->UpdateLook();
}

// Mouse events end here: a frame around the view would take what is left over for its own drag.

void ZKDocumentView::mousePressEvent(QMouseEvent* event)
{
    m_pPrivate->m_bTouched = true;
    m_pPrivate->m_pPanning->Press(event);
    QGraphicsView::mousePressEvent(event);
    event->accept();
}

void ZKDocumentView::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_pPrivate->m_pPanning->Press(event);
    QGraphicsView::mouseDoubleClickEvent(event);
    event->accept();
}

void ZKDocumentView::mouseMoveEvent(QMouseEvent* event)
{
    emit CursorMoved(viewportTransform().inverted().map(event->localPos()));
    m_pPrivate->m_pPanning->Move(event);
    QGraphicsView::mouseMoveEvent(event);
    event->accept();
    m_pPrivate->m_pAutoscroll->Move(event->pos(), event->buttons());
}

void ZKDocumentView::mouseReleaseEvent(QMouseEvent* event)
{
    // A tool must not take the end of a panning drag for the end of its own: panning ends after the scene.
    QGraphicsView::mouseReleaseEvent(event);
    m_pPrivate->m_pPanning->Release(event);
    event->accept();
    m_pPrivate->m_pAutoscroll->Move(event->pos(), event->buttons());
}

void ZKDocumentView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint delta = event->angleDelta();
    if (event->modifiers() & Qt::ShiftModifier) {
        const int step = delta.x() != 0 ? delta.x() : delta.y();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - step);
        return;
    }
    if (event->modifiers() & Qt::AltModifier) {
        const int step = delta.y() != 0 ? delta.y() : delta.x();
        verticalScrollBar()->setValue(verticalScrollBar()->value() - step);
        return;
    }
    const double scale = GetScale() * qPow(2, delta.y() / WheelUnitsToDouble);
    // Whoever comes past the picture's own size gets it.
    const bool passesOne = (GetScale() - 1) * (scale - 1) < 0 && !qFuzzyCompare(GetScale(), 1);
    m_pPrivate->SetScale(passesOne ? 1 : scale, event->position());
}

void ZKDocumentView::resizeEvent(QResizeEvent* event)
{
    const QPointF oldMiddle = QPointF(event->oldSize().width(), event->oldSize().height()) / 2;
    const QPointF middle = viewportTransform().inverted().map(oldMiddle);
    {
        const QScopedValueRollback<bool> scaling(m_pPrivate->m_bScaling, true);
        QGraphicsView::resizeEvent(event);
        m_pPrivate->UpdateSceneRect();
        if (m_pPrivate->m_bTouched) {
            m_pPrivate->ScrollTo(middle, QPointF(viewport()->width(), viewport()->height()) / 2);
        } else {
            m_pPrivate->ShowWhole(qMin(1.0, m_pPrivate->FittingScale()));
            m_pPrivate->m_bTouched = false;
        }
    }
    m_pPrivate->TellSceneArea();
}

void ZKDocumentView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    m_pPrivate->m_Ants.Scroll({dx, dy});
    m_pPrivate->TellSceneArea();
}
