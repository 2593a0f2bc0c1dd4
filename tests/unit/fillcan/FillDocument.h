#pragma once

#include "fillcan/FillJob.h"
#include "image/LXImage.h"

#include <QStringList>

class LXDocumentInterface;

/// A small document whose layers are drawn as rows of letters, for tests of the fill's pixels:
/// '.' transparent, '#' black, 'w' white, 'r' red, 'g' green, 'b' blue, all opaque.
/// A mask and a selection are drawn by value: '.' 0, '#' 255, 'h' 128.
class FillDocument
{
public:
    FillDocument(int width, int height);
    ~FillDocument();

    Q_DISABLE_COPY(FillDocument)

    /// Adds a layer on top. Layers that were there get the next higher id.
    void AddLayer(const QStringList& rows, const QPoint& offset = {});

    /// Gives layer 1 a mask.
    void SetMask(const QStringList& values, bool reveals, const QPoint& offset = {});

    void SetSelection(const QStringList& values, const QPoint& offset = {});

    LXDocumentInterface* operator->() const { return m_pDocument; }

    operator LXDocumentInterface*() const { return m_pDocument; } // NOLINT: stands for the document

    /// Layer 1 as rows; what isn't one of the colors is '?'.
    QStringList Layer() const;

    /// The pixel in document coordinates, of layer 1 and of its mask.
    QRgb LayerPixel(int x, int y) const;
    int MaskValue(int x, int y) const;

    /// The mask of layer 1 as rows of values.
    QStringList Mask() const;

    /// Fills a click with a color. What isn't said is as a new tool has it.
    static FillJobData Click(int x, int y, const QColor& color);

private:
    LXDocumentInterface* m_pDocument;
};

/// A picture from rows of colors.
LXImage32 ImageOf(const QStringList& rows);
