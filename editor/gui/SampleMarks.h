#pragma once

#include "gui/CanvasPainter.h"

#include <QPoint>

#include <vector>

class LXColorSampleModel;
class QPainter;
class QWidget;

/// The marks of a document's color samples in a viewport: a ring round each point with the sample's number.
/// They keep their size at any scale and have a halo. Main thread only.
class SampleMarks
{
public:
    SampleMarks(const LXColorSampleModel* samples, QWidget* viewport);

    /// Draws what lies in these viewport pixels.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place) const;

    /// The samples are other ones: shows them, hides the old ones.
    void Update(const CanvasPlace& place);

    void SetShown(bool shown, const CanvasPlace& place);

    bool IsShown() const { return m_bShown; }

private:
    void Repaint(const CanvasPlace& place) const;

    const LXColorSampleModel* m_pSamples;
    QWidget* m_pViewport;
    std::vector<QPoint> m_Points; ///< document pixels
    bool m_bShown = true;
};
