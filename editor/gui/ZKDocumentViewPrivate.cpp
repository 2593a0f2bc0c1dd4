#include "core/ZKCMSManager.h"
#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXPathsListModel.h"
#include "document/MergedPartReader.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"
#include "guicore/GuardedStep.h"

#include <QGraphicsSceneMouseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {
constexpr qint64 TileBudget = qint64(192) * 1024 * 1024;
constexpr int Padding = 24; ///< viewport pixels left free on each side of a whole picture
/// By so much the scene is smaller than the viewport when there is nothing to scroll: rounding must not
/// leave a rest.
constexpr int Slack = 2;

/// How far the middle of the viewport may leave the middle of the canvas. A canvas that fits stays in the
/// middle; beyond that the room to scroll over the edge grows with the canvas, up to half a viewport, so
/// that nothing jumps on the way.
double FreedomOfMiddle(double canvas, double viewport)
{
    const double hidden = qMax(0.0, canvas - viewport);
    return hidden / 2 + qMin(hidden, viewport / 2);
}
} // namespace

DocumentScene::DocumentScene(const ViewPanning* panning, QObject* parent)
    : QGraphicsScene(parent), m_pPanning(panning)
{
    // Handles move all the time, and they are few.
    setItemIndexMethod(QGraphicsScene::NoIndex);
}

bool DocumentScene::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMouseDoubleClick:
        if (m_pPanning->IsEnabled()) return true;
        break;
    default: break;
    }
    return QGraphicsScene::event(event);
}

ZKDocumentViewPrivate::ZKDocumentViewPrivate(ZKDocumentView* view, LXDocumentInterface* document,
                                             LexoUndoStack* history)
    : m_pView(view),
      m_pDocument(document),
      m_pHistory(history),
      m_LayerSelection(document->GetModel(), nullptr),
      m_PathSelection(document->GetPathListModel()),
      m_pPanning(new ViewPanning(view)),
      m_pAutoscroll(new ViewAutoscroll(view)),
      m_Tiles(TileBudget),
      m_Tint(document, view->viewport()),
      m_Ants(document, view->viewport()),
      m_Guides(document, view->viewport()),
      m_Outlines(document->GetPathListModel(), &m_PathSelection, view->viewport()),
      m_Marks(document->GetColorSamples(), view->viewport()),
      m_Caret(document, view->viewport())
{
    connect(document, &LXDocumentInterface::CompositionChanged, this,
            &ZKDocumentViewPrivate::OnCompositionChanged);
    connect(document, &LXDocumentInterface::DocumentSizeChanged, this, &ZKDocumentViewPrivate::OnSizeChanged);
    connect(document, &LXDocumentInterface::SelectionChanged, this, [this] {
        m_Tint.Update(Place());
        m_Ants.Update(Place());
    });
    connect(document, &LXDocumentInterface::TextCaretChanged, this, [this] { m_Caret.Update(Place()); });
    connect(document, &LXDocumentInterface::GuidesChanged, this, [this] { m_Guides.Update(Place()); });
    connect(document, &LXDocumentInterface::ICCProfileChanged, this, &ZKDocumentViewPrivate::UpdateColors);
    connect(ZKCMSManager::GetInstance(), &ZKCMSManager::DisplayChanged, this,
            &ZKDocumentViewPrivate::UpdateColors);
    connect(&m_LayerSelection, &QItemSelectionModel::currentRowChanged, this,
            &ZKDocumentViewPrivate::TellCurrentLayer);

    const LXDocumentModel* model = document->GetModel();
    connect(model, &QAbstractItemModel::rowsInserted, this, &ZKDocumentViewPrivate::SelectSomeLayer);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &ZKDocumentViewPrivate::SelectSomeLayer);
    connect(model, &QAbstractItemModel::modelReset, this, &ZKDocumentViewPrivate::SelectSomeLayer);
    SelectSomeLayer();
    FollowPathsAndSamples();
    UpdateColors();
}

ZKDocumentViewPrivate* ZKDocumentViewPrivate::Get(const ZKDocumentView* view)
{
    return view->m_pPrivate.get();
}

void ZKDocumentViewPrivate::AnnounceDestroy()
{
    if (std::exchange(m_bDestroyAnnounced, true)) return;
    emit m_pView->AboutDestroy(m_pView);
}

CanvasPlace ZKDocumentViewPrivate::Place() const
{
    return {m_pDocument->GetDocumentSize(), m_Scale, m_pView->mapFromScene(QPointF(0, 0)),
            m_pView->devicePixelRatioF()};
}

void ZKDocumentViewPrivate::Paint(QPainter* painter)
{
    painter->save();
    const auto restore = qScopeGuard([painter] { painter->restore(); });
    painter->resetTransform();
    const bool isPainted = GuardedStep::Try([&] { PaintDocument(*painter); }).isEmpty();
    if (!isPainted) {
        for (const QRect& rect : m_Exposed)
            painter->fillRect(rect, m_Look.surround);
    }
    // Without memory the next event fails like this one, and telling it over and over helps nobody.
    const bool couldNotBefore = std::exchange(m_bCouldNotPaint, !isPainted);
    if (!isPainted && !couldNotBefore) emit CouldNotPaint();
}

void ZKDocumentViewPrivate::PaintDocument(QPainter& painter)
{
    const CanvasPlace place = Place();
    const MergedPartReader reader(m_pDocument, PictureBehind(m_Exposed.boundingRect(), place));
    const LXImage32* picture = m_pDocument->GetLayerImage(0);
    if (!picture) return;

    for (const QRect& rect : m_Exposed) {
        PaintCanvas(painter, rect, place, m_Look, *picture, m_Tiles);
        m_Tint.Paint(painter, rect, place);
        m_Grid.Paint(painter, rect, place);
        m_Guides.Paint(painter, rect, place);
        m_Ants.Paint(painter, rect, place);
        m_Outlines.Paint(painter, rect, place);
        m_Marks.Paint(painter, rect, place);
        m_Caret.Paint(painter, rect, place);
    }
}

void ZKDocumentViewPrivate::ShowGrid(int step)
{
    if (m_Grid.Step() == step) return;
    m_Grid = GridLines(step);
    m_pView->viewport()->update();
}

void ZKDocumentViewPrivate::SetScale(double scale, const QPointF& anchor)
{
    if (qIsNaN(scale)) return;
    m_bTouched = true;
    const double bounded = qBound(ZKDocumentView::MinScale, scale, ZKDocumentView::MaxScale);
    if (qFuzzyCompare(bounded, m_Scale)) return;

    const QPointF fixed = PointUnder(anchor);
    {
        const QScopedValueRollback<bool> scaling(m_bScaling, true);
        m_Scale = bounded;
        m_pView->setTransform(QTransform::fromScale(bounded, bounded));
        UpdateSceneRect();
        ScrollTo(fixed, anchor);
    }
    m_AnchorView = anchor;
    m_AnchorScene = fixed;
    emit m_pView->ScaleChanged(bounded);
    TellSceneArea();
}

QPointF ZKDocumentViewPrivate::PointUnder(const QPointF& viewPos) const
{
    const QTransform toView = m_pView->viewportTransform();
    const QPointF drift = toView.map(m_AnchorScene) - viewPos;
    if (viewPos == m_AnchorView && drift.manhattanLength() <= 2) return m_AnchorScene;
    return toView.inverted().map(viewPos);
}

void ZKDocumentViewPrivate::ScrollTo(const QPointF& scenePos, const QPointF& viewPos)
{
    const QPointF corner = scenePos * m_Scale - viewPos;
    m_pView->horizontalScrollBar()->setValue(qRound(corner.x()));
    m_pView->verticalScrollBar()->setValue(qRound(corner.y()));
}

void ZKDocumentViewPrivate::UpdateSceneRect()
{
    const QSizeF viewport = (QSizeF(m_pView->viewport()->size()) - QSizeF(Slack, Slack)) / m_Scale;
    const QSizeF canvas = m_pDocument->GetDocumentSize();
    const QSizeF padded = canvas + QSizeF(2 * Padding, 2 * Padding) / m_Scale;
    const QSizeF reach(viewport.width() / 2 + FreedomOfMiddle(padded.width(), viewport.width()),
                       viewport.height() / 2 + FreedomOfMiddle(padded.height(), viewport.height()));
    const QPointF middle(canvas.width() / 2, canvas.height() / 2);
    m_pView->scene()->setSceneRect(QRectF(middle.x() - reach.width(), middle.y() - reach.height(),
                                          2 * reach.width(), 2 * reach.height()));
}

void ZKDocumentViewPrivate::TellSceneArea()
{
    const QRectF area = m_pView->mapToScene(m_pView->viewport()->rect()).boundingRect();
    if (m_bScaling || area == m_ToldArea) return;
    m_ToldArea = area;
    emit m_pView->SceneAreaChanged();
}

double ZKDocumentViewPrivate::FittingScale() const
{
    return FittingScale(m_pView->viewport()->size());
}

double ZKDocumentViewPrivate::FittingScale(const QSize& viewport) const
{
    constexpr int taken = 2 * Padding + Slack;
    const QSizeF room = QSizeF(viewport) - QSizeF(taken, taken);
    const QSizeF canvas = m_pDocument->GetDocumentSize();
    return qMin(room.width() / canvas.width(), room.height() / canvas.height());
}

void ZKDocumentViewPrivate::ShowWhole(double scale)
{
    const QPointF middle = QPointF(m_pView->viewport()->width(), m_pView->viewport()->height()) / 2;
    SetScale(scale, middle);
    const QSizeF canvas = m_pDocument->GetDocumentSize();
    ScrollTo({canvas.width() / 2, canvas.height() / 2}, middle);
}

QMdiSubWindow* ZKDocumentViewPrivate::Frame() const
{
    QWidget* window = m_pView->parentWidget();
    while (window && !qobject_cast<QMdiSubWindow*>(window))
        window = window->parentWidget();
    auto* const frame = qobject_cast<QMdiSubWindow*>(window);
    const bool hasSize = frame && frame->mdiArea() && !frame->isMaximized() && !frame->isMinimized();
    return hasSize ? frame : nullptr;
}

void ZKDocumentViewPrivate::FitFrame(std::optional<double> scale)
{
    QMdiSubWindow* const frame = Frame();
    if (!frame) return;

    const QSize around = frame->size() - m_pView->viewport()->size();
    const QSize room = frame->mdiArea()->viewport()->size();
    const double wantedScale = qBound(ZKDocumentView::MinScale, scale.value_or(FittingScale(room - around)),
                                      ZKDocumentView::MaxScale);
    const QSize canvas = (QSizeF(m_pDocument->GetDocumentSize()) * wantedScale).toSize();
    const QSize wanted = canvas + QSize(2 * Padding + Slack, 2 * Padding + Slack) + around;
    const QRect place(frame->pos(), wanted.boundedTo(room).expandedTo(frame->minimumSizeHint()));
    // Over the right and lower edge it moves back, but not over the others.
    const QPoint back(qMax(0, place.right() + 1 - room.width()), qMax(0, place.bottom() + 1 - room.height()));
    const QPoint topLeft(qMin(place.left(), qMax(0, place.left() - back.x())),
                         qMin(place.top(), qMax(0, place.top() - back.y())));
    frame->setGeometry(QRect(topLeft, place.size()));
}

void ZKDocumentViewPrivate::OnCompositionChanged(const QRect& rect)
{
    const QRect canvas(QPoint(0, 0), m_pDocument->GetDocumentSize());
    const QRect changed = rect.isEmpty() ? canvas : rect & canvas;
    if (changed.isEmpty()) return;
    m_Tiles.Invalidate(changed);
    m_pView->viewport()->update(Place().ToViewport(changed));
}

void ZKDocumentViewPrivate::OnSizeChanged()
{
    m_Tiles.Clear();
    UpdateSceneRect();
    m_pView->viewport()->update();
    TellSceneArea();
}

void ZKDocumentViewPrivate::SelectSomeLayer()
{
    const int rows = m_pDocument->GetModel()->rowCount();
    if (rows == 0 || m_LayerSelection.hasSelection()) return;

    const int row = qBound(0, m_LayerSelection.currentIndex().row(), rows - 1);
    m_LayerSelection.setCurrentIndex(m_pDocument->GetModel()->index(row),
                                     QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ZKDocumentViewPrivate::TellCurrentLayer()
{
    // Of no row the number is -1, which makes the id of nothing.
    emit m_pDocument->CurrentLayerChanged(static_cast<uint>(m_LayerSelection.currentIndex().row() + 1));
}

void ZKDocumentViewPrivate::FollowPathsAndSamples()
{
    const auto showPaths = [this] { m_Outlines.Update(Place()); };
    const LXPathsListModel* paths = m_pDocument->GetPathListModel();
    connect(paths, &LXPathsListModel::PathChanged, this, showPaths);
    connect(paths, &LXPathsListModel::dataChanged, this,
            [=](const QModelIndex&, const QModelIndex&, const QVector<int>& roles) {
                if (roles.contains(LXPathsListModel::VisibleRole)) showPaths();
            });
    connect(&m_PathSelection, &QItemSelectionModel::currentChanged, this, showPaths);

    const auto showSamples = [this] { m_Marks.Update(Place()); };
    const LXColorSampleModel* samples = m_pDocument->GetColorSamples();
    connect(samples, &LXColorSampleModel::SampleInserted, this, showSamples);
    connect(samples, &LXColorSampleModel::SampleRemoved, this, showSamples);
    connect(samples, &LXColorSampleModel::SamplePosChanged, this, showSamples);
}

void ZKDocumentViewPrivate::UpdateLook()
{
    m_Look = CanvasLook::ForSurround(m_pView->palette().color(QPalette::Dark));
    m_pView->viewport()->update();
}

void ZKDocumentViewPrivate::UpdateColors()
{
    m_ToScreen = ZKCMSManager::GetInstance()->ToDisplay(m_pDocument->GetICCProfile());
    m_Tiles.SetColors(m_ToScreen);
    m_pView->viewport()->update();
    emit m_pView->ColorTransformChanged();
}
