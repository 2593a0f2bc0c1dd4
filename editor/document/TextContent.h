#pragma once

#include <QBrush>
#include <QFont>
#include <QPointF>
#include <QString>
#include <QTransform>

/// How the letters of a text layer are bent; see TextWarp.
struct TextDeformation
{
    static constexpr int None = 0;
    static constexpr int Flag = 1;
    static constexpr int Horizontal = 0;
    static constexpr int Vertical = 1;

    int style = None;
    int orientation = Horizontal;
    double bend = 0; ///< this and the next two in percent, -100 to 100
    double hDistortion = 0;
    double vDistortion = 0;

    friend bool operator==(const TextDeformation& a, const TextDeformation& b)
    {
        return a.style == b.style && a.orientation == b.orientation && a.bend == b.bend &&
               a.hDistortion == b.hDistortion && a.vDistortion == b.vDistortion;
    }
};

/// Everything that the pixels of a text layer are drawn from. A value.
struct TextContent
{
    static constexpr int Aliased = 0;
    static constexpr int Antialiased = 1;

    QString text;
    QFont font; ///< a point counts as a pixel of the document
    /// A texture or gradient begins where the first baseline does and goes with `transform`; a gradient in
    /// parts of what it fills takes the box of the lines for it.
    QBrush brush = QBrush(Qt::black);
    QPointF position; ///< where the first baseline begins, document pixels before `transform`
    TextDeformation deformation;
    int renderMode = Antialiased;
    QTransform transform; ///< from document pixels to document pixels

    friend bool operator==(const TextContent& a, const TextContent& b)
    {
        // Points compare fuzzily in Qt, and a small step is a step.
        return a.text == b.text && a.font == b.font && a.brush == b.brush &&
               a.position.x() == b.position.x() && a.position.y() == b.position.y() &&
               a.deformation == b.deformation && a.renderMode == b.renderMode && a.transform == b.transform;
    }

    friend bool operator!=(const TextContent& a, const TextContent& b) { return !(a == b); }
};
