#pragma once

#include "image/LXImage.h"

#include <QList>
#include <QPoint>
#include <QString>

class ZKDocumentView;

/// Pictures that become layers of a view's document, none of their pixels lost. Main thread only.
namespace LayerPictures {
/// A picture and where its top left lies in the document.
struct Place
{
    LXImage32 image;
    QPoint topLeft;
};

/// Whether layers may come into the view's document now; false for null.
bool MayAdd(const ZKDocumentView* view);

/// Adds them above the selected layer, the last one topmost and selected, as one step of the history. One of
/// another profile than the document's looks there as it did; without a profile values stay as they are.
/// Throws what images throw.
void Add(ZKDocumentView* view, const QList<Place>& places, const QString& text);

/// Where a picture stands with its middle at the point.
QPoint Centered(const LXImage32& image, const QPointF& middle);
} // namespace LayerPictures
