#include "movetoolprivate/MoveFrame.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPen>

#include <algorithm>

namespace {
bool IsFrameable(const LXDocumentModel& model, int row)
{
    const unsigned int id = static_cast<unsigned int>(row) + 1;
    return model.GetMaskSelected(row) || model.GetDocument()->GetLayerKind(id) != LayerKind::Adjustment;
}

QRect RectOfRow(const LXDocumentModel& model, int row)
{
    const LXDocumentInterface* document = model.GetDocument();
    const unsigned int id = static_cast<unsigned int>(row) + 1;
    if (model.HasMask(row) && model.GetMaskLinked(row))
        return document->GetLayerGeometry(id) | document->GetMaskGeometry(id);
    return model.GetMaskSelected(row) ? document->GetMaskGeometry(id) : document->GetLayerGeometry(id);
}
} // namespace

bool MoveFrame::CanFrame(const LXDocumentModel& model, const QList<int>& rows)
{
    return !rows.isEmpty() &&
           std::all_of(rows.begin(), rows.end(), [&model](int row) { return IsFrameable(model, row); });
}

QRect MoveFrame::RectAround(const LXDocumentModel& model, const QList<int>& rows)
{
    if (!CanFrame(model, rows)) return {};

    QRect rect;
    for (const int row : rows) {
        rect |= RectOfRow(model, row);
    }
    return rect;
}

void MoveFrame::Show(QGraphicsScene* scene, const QRect& rect)
{
    Remove();
    if (!scene || rect.isEmpty()) return;

    m_pItem = scene->addRect(rect);
    m_pItem->setPen(QPen(Qt::black, 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
}

void MoveFrame::Remove()
{
    // An item that dies leaves its scene by itself.
    delete m_pItem;
    m_pItem = nullptr;
}

QPointF MoveFrame::GetPos() const
{
    return m_pItem ? m_pItem->pos() : QPointF();
}

void MoveFrame::SetPos(const QPointF& pos)
{
    if (m_pItem) m_pItem->setPos(pos);
}
