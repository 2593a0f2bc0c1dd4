#pragma once

#include "document/TextContent.h"
#include "document/TextLines.h"
#include "document/TextWarp.h"

#include <QBrush>
#include <QImage>
#include <QLineF>
#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

#include <vector>

/// A text where it lies in the document: outlines, box and caret, in document pixels. Any thread.
class TextGeometry
{
public:
    explicit TextGeometry(const TextContent& content);

    /// What is filled with the text's brush, the letters first; the parts may overlap.
    QPainterPath Letters() const { return ToDocument(m_Lines.Letters()); }

    QPainterPath Thickening() const { return ToDocument(m_Lines.Thickening()); }

    QPainterPath Decorations() const { return ToDocument(m_Lines.Decorations()); }

    /// A letter that is a picture, and the way from the picture's pixels to the document's. A bend moves its
    /// corners; between them it stays straight.
    struct Picture
    {
        QImage image;
        QTransform transform;

        QRectF Rect() const { return transform.mapRect(QRectF(image.rect())); }
    };

    std::vector<Picture> Pictures() const;

    /// The content's brush as it lies in the document.
    QBrush Brush(const QBrush& brush) const;

    /// Around all lines, also where they hold nothing that is seen. Never empty.
    QRectF Box() const;

    /// The place of a caret that is nearest to the point.
    int IndexAt(const QPointF& docPos) const;
    /// Before the code unit at the index, from top to bottom; beyond the ends the nearest.
    QLineF CaretAt(int index) const;
    /// Under the letters of the line in which a caret at the index stands.
    QPolygonF UnderlineAt(int index) const;

    /// Where the first baseline begins.
    QPointF Origin() const;

private:
    QPainterPath ToDocument(const QPainterPath& path) const { return m_Transform.map(m_Warp.Map(path)); }

    QPointF ToDocument(const QPointF& point) const { return m_Transform.map(m_Warp.Map(point)); }

    /// Adds to the transform what the bend makes of the box's corners.
    bool Bend(const QRectF& box, QTransform* transform) const;

    TextLines m_Lines;
    TextWarp m_Warp;
    QTransform m_Transform; ///< from where lines are set to the document
};
