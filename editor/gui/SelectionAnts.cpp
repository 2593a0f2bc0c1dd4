#include "gui/SelectionAnts.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "gui/OutlinePixels.h"

#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace {
constexpr int StepMilliseconds = 120;
constexpr int PhaseCount = 8;
} // namespace

SelectionAnts::SelectionAnts(const LXDocumentInterface* document, QWidget* viewport)
    : m_pDocument(document), m_pViewport(viewport)
{}

void SelectionAnts::Paint(QPainter& painter, const QRect& exposed, const CanvasPlace& place)
{
    m_Marching -= exposed;
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    const QRect selection = m_pDocument->GetSelectionGeometry();
    const QRect part = exposed & place.ToViewport(selection).adjusted(-1, -1, 1, 1);
    if (selection.isEmpty() || part.isEmpty()) return;

    const OutlinePixels outline =
        DrawOutline(m_pDocument->GetSelectionMask(), selection.topLeft(), place, part, m_Phase);
    m_Marching += outline.cells;
    painter.drawImage(part.topLeft(), outline.dashes);
}

void SelectionAnts::Update(const CanvasPlace& place)
{
    // What lies inside both outlines looks as before.
    m_pViewport->update(m_Marching + NewCells(place));
    const QRect selection = m_pDocument->GetSelectionGeometry();

    // Desktops that want less motion tell it as animations of no duration.
    const bool moves = m_pViewport->style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
    if (selection.isEmpty() || !moves) {
        m_Timer.stop();
    } else if (!m_Timer.isActive()) {
        m_Timer.start(StepMilliseconds, this);
    }
}

QRegion SelectionAnts::NewCells(const CanvasPlace& place) const
{
    const LXDocumentSelectionLockerForRead locker(m_pDocument);
    const QRect selection = m_pDocument->GetSelectionGeometry();
    const QRect part = m_pViewport->rect() & place.ToViewport(selection).adjusted(-1, -1, 1, 1);
    if (selection.isEmpty() || part.isEmpty()) return {};
    return OutlineCells(m_pDocument->GetSelectionMask(), selection.topLeft(), place, part);
}

void SelectionAnts::timerEvent(QTimerEvent*)
{
    if (!m_pViewport->isVisible()) return;
    m_Phase = (m_Phase + PhaseCount - 1) % PhaseCount;
    m_pViewport->update(m_Marching);
}
