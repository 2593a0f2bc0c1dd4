#include "gui/TransformationCenterPointControl.h"

#include "gui/NineCells.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {
constexpr int ControlSide = 40;
constexpr int SquareSide = 9;

QRect SquareIn(const QRect& cell)
{
    const int margin = (cell.width() - SquareSide) / 2;
    return QRect(cell.topLeft() + QPoint(margin, margin), QSize(SquareSide, SquareSide));
}
} // namespace

class TransformationCenterPointControlPrivate
{
public:
    TransformationCenterPointControl::ControlState m_State = TransformationCenterPointControl::None;
};

TransformationCenterPointControl::TransformationCenterPointControl(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<TransformationCenterPointControlPrivate>())
{
    setFixedSize(ControlSide, ControlSide);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Reference point"));
    SetState(None);
}

TransformationCenterPointControl::~TransformationCenterPointControl() = default;

TransformationCenterPointControl::ControlState TransformationCenterPointControl::GetState() const
{
    return m_pPrivate->m_State;
}

void TransformationCenterPointControl::SetState(ControlState state)
{
    m_pPrivate->m_State = state;
    setAccessibleDescription(state == None ? tr("Somewhere else") : NineCells::NameOf(state - 1));
    update();
}

void TransformationCenterPointControl::Choose(int cell)
{
    const auto state = static_cast<ControlState>(cell + 1);
    if (state == GetState()) return;
    SetState(state);
    emit StateChanged(state);
}

void TransformationCenterPointControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // The area is 39 wide, so that each cell has 13 pixels and its square a middle.
    const QRect area = rect().adjusted(0, 0, -1, -1);
    const QColor ink = palette().color(QPalette::Text);
    const QRect first = SquareIn(NineCells::RectOf(0, area));
    const QRect last = SquareIn(NineCells::RectOf(NineCells::Count - 1, area));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(QRect(first.center(), last.center()));
    for (int cell = 0; cell < NineCells::Count; ++cell) {
        const QRect square = SquareIn(NineCells::RectOf(cell, area));
        painter.setPen(ink);
        painter.setBrush(cell + 1 == GetState() ? ink : palette().color(QPalette::Base));
        painter.drawRect(square.adjusted(0, 0, -1, -1));
    }
    if (!hasFocus()) return;
    painter.setPen(palette().color(QPalette::Link));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area);
}

void TransformationCenterPointControl::mousePressEvent(QMouseEvent* event)
{
    const int cell = NineCells::At(event->pos(), rect());
    if (event->button() == Qt::LeftButton && cell >= 0) Choose(cell);
}

void TransformationCenterPointControl::keyPressEvent(QKeyEvent* event)
{
    const bool isLit = GetState() != None;
    const int cell = NineCells::Next(isLit ? GetState() - 1 : NineCells::Middle, event->key());
    if (cell < 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    // From somewhere else the keys begin in the middle.
    Choose(isLit ? cell : NineCells::Middle);
}
