#include "gui/LXAnchorSelection.h"

#include "gui/NineCells.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

#include <cmath>

namespace {
constexpr int CellSide = 28;
constexpr int Border = 1;
constexpr double ArrowReach = 7;  ///< from the middle of its cell to either end
constexpr double ArrowHead = 4.5; ///< length of its barbs
constexpr double LineWidth = 1.5;
constexpr int PictureSide = 12;

void DrawArrow(QPainter& painter, const QPointF& middle, const QPointF& direction)
{
    const QPointF along = direction / std::hypot(direction.x(), direction.y());
    const QPointF across(-along.y(), along.x());
    const QPointF tip = middle + along * ArrowReach;
    const QPointF neck = tip - along * (ArrowHead * M_SQRT1_2);
    const QPointF barb = across * (ArrowHead * M_SQRT1_2);
    painter.drawLine(middle - along * ArrowReach, tip);
    painter.drawPolyline(QPolygonF({neck + barb, tip, neck - barb}));
}
} // namespace

class LXAnchorSelectionPrivate
{
public:
    /// Which way the canvas goes in the cell; null for the anchor itself and what doesn't lie beside it.
    QPointF ArrowOf(int cell) const
    {
        const int x = cell % NineCells::Side - m_State % NineCells::Side;
        const int y = cell / NineCells::Side - m_State / NineCells::Side;
        if (std::abs(x) > 1 || std::abs(y) > 1) return QPointF();
        return QPointF(m_bShrinksAcross ? -x : x, m_bShrinksDown ? -y : y);
    }

    LXAnchorSelection::State m_State = LXAnchorSelection::Center;
    bool m_bShrinksAcross = false;
    bool m_bShrinksDown = false;
};

LXAnchorSelection::LXAnchorSelection(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<LXAnchorSelectionPrivate>())
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(tr("Anchor"));
    setAccessibleDescription(NineCells::NameOf(GetState()));
}

LXAnchorSelection::~LXAnchorSelection() = default;

LXAnchorSelection::State LXAnchorSelection::GetState() const
{
    return m_pPrivate->m_State;
}

void LXAnchorSelection::SetState(State state)
{
    m_pPrivate->m_State = state;
    setAccessibleDescription(NineCells::NameOf(state));
    update();
}

QSize LXAnchorSelection::sizeHint() const
{
    const int side = NineCells::Side * CellSide + 2 * Border;
    return {side, side};
}

void LXAnchorSelection::ShrinkHorizontal(bool shrinks)
{
    m_pPrivate->m_bShrinksAcross = shrinks;
    update();
}

void LXAnchorSelection::ShrinkVertical(bool shrinks)
{
    m_pPrivate->m_bShrinksDown = shrinks;
    update();
}

void LXAnchorSelection::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = rect().adjusted(0, 0, -1, -1);
    painter.fillRect(area, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    for (int cell = 0; cell < NineCells::Count; ++cell)
        painter.drawRect(NineCells::RectOf(cell, area).adjusted(0, 0, 1, 1));
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Link));
        painter.drawRect(area);
    }

    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = palette().color(QPalette::Text);
    painter.setPen(QPen(ink, LineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (int cell = 0; cell < NineCells::Count; ++cell) {
        const QPointF middle = QRectF(NineCells::RectOf(cell, area)).center();
        if (cell == m_pPrivate->m_State) {
            const QPointF half(PictureSide / 2.0, PictureSide / 2.0);
            painter.fillRect(QRectF(middle - half, middle + half), ink);
            continue;
        }
        const QPointF direction = m_pPrivate->ArrowOf(cell);
        if (!direction.isNull()) DrawArrow(painter, middle, direction);
    }
}

void LXAnchorSelection::mousePressEvent(QMouseEvent* event)
{
    const int cell = NineCells::At(event->pos(), rect());
    if (event->button() == Qt::LeftButton && cell >= 0) SetState(static_cast<State>(cell));
}

void LXAnchorSelection::keyPressEvent(QKeyEvent* event)
{
    const int cell = NineCells::Next(GetState(), event->key());
    if (cell < 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    SetState(static_cast<State>(cell));
}
