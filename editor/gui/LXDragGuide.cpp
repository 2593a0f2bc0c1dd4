#include "gui/LXDragGuide.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/OffsetTag.h"
#include "gui/SnapLines.h"
#include "gui/ViewAids.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPointer>

class LXDragGuidePrivate
{
public:
    void CollectLines(const QList<unsigned int>& draggedLayers);
    QPointF Snapped(const QPointF& way) const;

    QPointer<ZKDocumentView> view;
    QRect moved;
    SnapLines lines;
    bool isSnapping = false;
    QPointer<OffsetTag> tag; ///< the viewport's; null while the offset isn't told
};

void LXDragGuidePrivate::CollectLines(const QList<unsigned int>& draggedLayers)
{
    const LXDocumentModel* model = view->GetModel();
    const LXDocumentInterface* document = model->GetDocument();
    const QRect canvas(QPoint(0, 0), document->GetDocumentSize());
    lines.AddEdges(canvas);
    lines.AddMiddles(canvas);
    for (int row = 0; row < model->rowCount(); ++row) {
        const unsigned int id = static_cast<unsigned int>(row) + 1;
        if (model->GetVisible(row) && !draggedLayers.contains(id))
            lines.AddEdges(document->GetLayerGeometry(id));
    }
    if (view->AreGuidesShown()) lines.AddGuides(document->GetGuides());
    lines.SetGrid(ZKDocumentViewPrivate::Get(view)->ShownGrid());
}

QPointF LXDragGuidePrivate::Snapped(const QPointF& way) const
{
    const bool isSuspended = (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier) != 0;
    if (!isSnapping || isSuspended || !view) return way;
    return lines.Snapped(moved, way, LXDragGuide::SnapDistance / view->GetScale());
}

LXDragGuide::LXDragGuide(ZKDocumentView* view, const QRect& moved, const QList<unsigned int>& draggedLayers)
    : m_pPrivate(std::make_unique<LXDragGuidePrivate>())
{
    m_pPrivate->view = view;
    if (!view) return;
    m_pPrivate->moved = moved;
    m_pPrivate->isSnapping = ViewAids::IsSnapOn();
    if (m_pPrivate->isSnapping) m_pPrivate->CollectLines(draggedLayers);
    if (ViewAids::IsOffsetTold()) m_pPrivate->tag = new OffsetTag(view->viewport());
}

LXDragGuide::~LXDragGuide()
{
    delete m_pPrivate->tag;
}

QPointF LXDragGuide::Follow(const QPointF& way)
{
    const QPointF taken = m_pPrivate->Snapped(way);
    if (m_pPrivate->tag) {
        const QWidget* viewport = m_pPrivate->view->viewport();
        m_pPrivate->tag->Tell(taken, m_pPrivate->view->GetModel()->GetDocument(),
                              viewport->mapFromGlobal(QCursor::pos()));
    }
    return taken;
}
