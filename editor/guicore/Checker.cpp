#include "guicore/Checker.h"

#include <QPainter>
#include <QPixmap>

QBrush MakeChecker(int square, const QColor& light, const QColor& dark)
{
    QPixmap squares(2 * square, 2 * square);
    squares.fill(light);
    QPainter painter(&squares);
    painter.fillRect(0, 0, square, square, dark);
    painter.fillRect(square, square, square, square, dark);
    return squares;
}

QBrush SmallChecker()
{
    constexpr int smallSquare = 4;
    return MakeChecker(smallSquare, QColor(0xb4, 0xb4, 0xb4), QColor(0x9a, 0x9a, 0x9a));
}
