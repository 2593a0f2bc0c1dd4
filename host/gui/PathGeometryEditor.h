#pragma once

#include "ZKHostExport.h"

#include "document/LXPathElement.h"

#include <QGraphicsObject>

#include <memory>

class PathGeometryEditorPrivate;

/// Scene item that lets a person edit a sub path: it shows the anchors and guides as handles of a constant
/// size on screen, and drags them. It draws no outline of the path. Main thread only.
///
/// Points are coordinates of the item; a tool that leaves it at the origin of its scene has document
/// coordinates. Elements are counted as in GetPath(). The anchor at which a contour closes is two elements
/// there and one anchor for a person; either number means it.
///
/// A drag of an anchor takes its guides along; one of a guide turns the other guide of a smooth anchor along
/// and leaves that of a corner. Alt breaks an anchor (the guide moves alone), pulls guides out of an anchor,
/// and with a click takes them off. Shift keeps to the eight directions. A press of an anchor or its guide
/// makes the anchor the current one; a press of the path beside them makes none current. Arrow keys move the
/// current anchor by a pixel of the document, with Shift by 10.
///
/// A handler of the signals may call everything here, and delete the item by deleteLater().
class ZK_HOST_EXPORT PathGeometryEditor : public QGraphicsObject
{
    Q_OBJECT

public:
    explicit PathGeometryEditor(QGraphicsItem* parent = nullptr);
    ~PathGeometryEditor() override;

    /// Edits this path from now on; no anchor is current. Ends a drag. Silent.
    void MakeFromPath(const LXPath& elements);
    /// As it stands, also during a drag. What nobody touched is as it was given, to the last bit.
    LXPath GetPath() const;

    /// Puts an anchor on the curve where that is nearest to the point, and makes it the current one; the
    /// shape stays. Nothing when an anchor is nearest, or there is no curve.
    void InsertNode(const QPointF& point);
    /// Takes the anchor of the element out; its neighbours are joined with the guides that they have.
    /// Nothing for a bad number. The removal of the last anchor sends no signal, because the sub path can't
    /// go on without one: who deletes asks ElementCount() and takes the sub path away as it was.
    void DeleteNode(int element);
    /// DeleteNode() of the current anchor, after which none is current.
    void DeleteCurrentNode();

    /// Of GetPath().
    int ElementCount() const;
    /// The element whose anchor the item is the handle of; -1 for handles of guides and any other item.
    int CentralNodeOf(const QGraphicsItem* item) const;
    /// The element of the current anchor; -1 for none.
    int GetCurrentEditNodeIndex() const;
    /// Whether the item belongs to this editor.
    bool IsEditorItem(const QGraphicsItem* item) const;

    /// While true the editor takes no mouse presses: they go to what lies below. Ends a drag as a release
    /// does.
    void IgnoreSceneEvents(bool ignore);

    /// Of all anchors and guides; the view adds what handles and lines need.
    QRectF boundingRect() const override;
    /// The path, 4 screen pixels wide.
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    /// The path is another one: at each step of a drag, and after an insertion or a removal.
    void PathChanged();
    /// A gesture has come to its end: a drag was released, an anchor inserted or removed. The path needn't
    /// differ from the one before.
    void Released();

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    friend class PathGeometryEditorPrivate;
    std::unique_ptr<PathGeometryEditorPrivate> m_pPrivate;
};
