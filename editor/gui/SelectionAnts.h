#pragma once

#include "gui/CanvasPainter.h"

#include <QBasicTimer>
#include <QObject>
#include <QRegion>

class LXDocumentInterface;
class QPainter;
class QWidget;

/// The outline of a document's selection in a viewport: a line of black and white dashes, one pixel wide,
/// where the coverage passes one half. The dashes march, and stand still when the system wants no motion.
/// Main thread only.
class SelectionAnts : public QObject
{
    Q_OBJECT

public:
    SelectionAnts(const LXDocumentInterface* document, QWidget* viewport);

    /// Draws the outline's part in these viewport pixels; takes the selection's locker.
    void Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place);

    /// The selection is another one: shows it, hides the old one.
    void Update(const CanvasPlace& place);

    bool IsMarching() const { return m_Timer.isActive(); }

    /// The viewport's pixels were moved by so much.
    void Scroll(const QPoint& delta) { m_Marching.translate(delta); }

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    /// Where the outline runs now, in whole cells of the viewport.
    QRegion NewCells(const CanvasPlace& place) const;

    const LXDocumentInterface* m_pDocument;
    QWidget* m_pViewport;
    QBasicTimer m_Timer;
    QRegion m_Marching; ///< viewport pixels that hold the outline as it is painted, in whole cells
    int m_Phase = 0;
};
