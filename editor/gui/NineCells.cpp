#include "gui/NineCells.h"

#include <QCoreApplication>

#include <array>

QRect NineCells::RectOf(int cell, const QRect& area)
{
    const auto edge = [](int index, int length) { return index * length / Side; };
    const int column = cell % Side;
    const int row = cell / Side;
    const QPoint topLeft(edge(column, area.width()), edge(row, area.height()));
    const QPoint behind(edge(column + 1, area.width()), edge(row + 1, area.height()));
    return QRect(topLeft, behind - QPoint(1, 1)).translated(area.topLeft());
}

int NineCells::At(const QPoint& point, const QRect& area)
{
    for (int cell = 0; cell < Count; ++cell) {
        if (RectOf(cell, area).contains(point)) return cell;
    }
    return -1;
}

int NineCells::Next(int cell, int key)
{
    const int column = cell % Side;
    const int row = cell / Side;
    switch (key) {
    case Qt::Key_Left: return column > 0 ? cell - 1 : cell;
    case Qt::Key_Right: return column < Side - 1 ? cell + 1 : cell;
    case Qt::Key_Up: return row > 0 ? cell - Side : cell;
    case Qt::Key_Down: return row < Side - 1 ? cell + Side : cell;
    default: return -1;
    }
}

QString NineCells::NameOf(int cell)
{
    static const std::array<const char*, Count> names{
        QT_TRANSLATE_NOOP("NineCells", "Top left"),    QT_TRANSLATE_NOOP("NineCells", "Top"),
        QT_TRANSLATE_NOOP("NineCells", "Top right"),   QT_TRANSLATE_NOOP("NineCells", "Left"),
        QT_TRANSLATE_NOOP("NineCells", "Center"),      QT_TRANSLATE_NOOP("NineCells", "Right"),
        QT_TRANSLATE_NOOP("NineCells", "Bottom left"), QT_TRANSLATE_NOOP("NineCells", "Bottom"),
        QT_TRANSLATE_NOOP("NineCells", "Bottom right")};
    return QCoreApplication::translate("NineCells", names.at(static_cast<std::size_t>(cell)));
}
