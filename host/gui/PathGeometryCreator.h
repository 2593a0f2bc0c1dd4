#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"

#include <QGraphicsObject>

#include <memory>

class PathGeometryCreatorPrivate;

/// Scene item with which a tool draws a sub path anchor by anchor: it holds the anchors, shows them and their
/// guides at a constant size on screen, and bends the guides of the newest one while the mouse is dragged. It
/// draws no outline of the path, and takes no mouse events from others. Main thread only.
///
/// Points are coordinates of the item; a tool that leaves it at the origin of its scene has document
/// coordinates. Guides are given as the way from their anchor, so that they fit an anchor that has moved in
/// between; none is (0, 0). Numbers that no anchor has do nothing.
class ZK_HOST_EXPORT PathGeometryCreator : public QGraphicsObject
{
    Q_OBJECT

public:
    explicit PathGeometryCreator(QGraphicsItem* parent = nullptr);
    ~PathGeometryCreator() override;

    /// Adds an anchor without guides at the end.
    void AddPoint(const QPointF& point);
    /// Puts the last anchor exactly there; its guides go along.
    void MoveLastPoint(const QPointF& point);
    void RemoveLastPoint();
    int GetPointCount() const;
    /// An element at (0, 0) for a bad number.
    LXPathElement GetPointAt(int index) const;

    /// As it stands, also during a drag.
    LXPath GetPath() const;
    /// The current anchor stays, if the new path has one of its number; else the last one becomes it.
    void MakeFromPath(const LXPath& elements);

    /// Makes an anchor the current one, whose guides are shown above the others; -1 for none.
    ///
    /// Called while the left button alone is down, as by the handler of a press, it also begins to bend:
    /// until the button goes up, the anchor's out guide follows the pointer and its in guide mirrors it, once
    /// the pointer has left the place of the press by 3 pixels. With Alt the in guide stays, Shift keeps to
    /// the eight directions. The guide is bent before filters of the scene hear of the move, so that what
    /// they read is what the pointer says; the release changes nothing any more.
    ///
    /// A last anchor of three or more that lies on the first one closes the path: when it becomes the current
    /// one, it takes over the first one's in guide, and a drag bends both sides of that anchor; with Alt only
    /// the closing curve.
    void SetCurrentEditNodeIndex(int index);

    /// Lays the guide on its anchor and gives what it was. Shown with the next InvalidatePath(), as the
    /// following three are.
    QPointF RemoveInGuide(int index);
    QPointF RemoveOutGuide(int index);
    /// Gives a guide back as RemoveInGuide() gave it.
    void RestoreInGuide(int index, const QPointF& guide);
    void RestoreOutGuide(int index, const QPointF& guide);

    /// Shows the path as it is now.
    void InvalidatePath();

    /// Of all anchors and guides; the view adds what handles and lines need.
    QRectF boundingRect() const override;
    /// Empty: nothing of it is hit.
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::unique_ptr<PathGeometryCreatorPrivate> m_pPrivate;
};
