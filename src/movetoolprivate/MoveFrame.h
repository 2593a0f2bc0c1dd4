#pragma once

#include <QList>
#include <QPointF>
#include <QRect>

class LXDocumentModel;
class QGraphicsRectItem;
class QGraphicsScene;

/// The rectangle around what the selected layers hold, as a thin line in the scene. Main thread only.
class MoveFrame
{
public:
    /// The rectangle around the layers of these rows: the mask alone where it is selected, both where they
    /// are linked. Empty when there is nothing to frame; also as soon as one of them has no pixels of its
    /// own (an adjustment layer), unless its mask is meant. Document pixels.
    static QRect RectAround(const LXDocumentModel& model, const QList<int>& rows);

    /// Whether there is a row, and each of them has something that a frame could be put around.
    static bool CanFrame(const LXDocumentModel& model, const QList<int>& rows);

    /// Puts the frame around this rectangle, in place of the one that stands; an empty one shows none.
    /// @param scene  owns the line while it is shown
    void Show(QGraphicsScene* scene, const QRect& rect);

    /// To be called before the scene goes.
    void Remove();

    bool IsShown() const { return m_pItem != nullptr; }

    /// How far the frame was moved from where it was put.
    QPointF GetPos() const;
    void SetPos(const QPointF& pos);

private:
    QGraphicsRectItem* m_pItem = nullptr; ///< the scene's
};
