#include "gui/ListRow.h"

#include "guicore/Checker.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>

namespace {
constexpr int SignSize = 24;

void PaintFrame(QPainter& painter, const QRect& place, bool isTarget, const QPalette& palette)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette.color(isTarget ? QPalette::Link : QPalette::Mid));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
    if (isTarget) painter.drawRect(place.adjusted(-2, -2, 1, 1));
}
} // namespace

QRect ListRow::EyeOf(const QRect& row)
{
    return {row.left(), row.top(), EyeWidth, row.height()};
}

QRect ListRow::PictureOf(const QRect& row)
{
    const int top = row.top() + (row.height() - PictureSize) / 2;
    return {row.left() + EyeWidth, top, PictureSize, PictureSize};
}

void ListRow::PaintGround(QPainter& painter, const QStyleOptionViewItem& option)
{
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, option.widget);
}

void ListRow::PaintPicture(QPainter& painter, const QRect& frame, const QImage& picture, bool isTarget,
                           const QPalette& palette)
{
    const QSize size = picture.size().scaled(frame.size() - QSize(4, 4), Qt::KeepAspectRatio);
    QRect place(QPoint(0, 0), size);
    place.moveCenter(frame.center());
    painter.setBrushOrigin(place.topLeft());
    painter.fillRect(place, SmallChecker());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
    PaintFrame(painter, place, isTarget, palette);
}

void ListRow::PaintSign(QPainter& painter, const QRect& frame, const QString& name, bool isTarget,
                        const QPalette& palette)
{
    QRect place(0, 0, SignSize, SignSize);
    place.moveCenter(frame.center());
    ZKIconHelper::DisabledIcon(name).paint(&painter, place);
    PaintFrame(painter, frame.adjusted(2, 2, -2, -2), isTarget, palette);
}

void ListRow::PaintIcon(QPainter& painter, const QRect& place, const QString& name, bool dim)
{
    QRect square(0, 0, SmallIcon, SmallIcon);
    square.moveCenter(place.center());
    ZKIconHelper::DisabledIcon(name).paint(&painter, square, Qt::AlignCenter,
                                           dim ? QIcon::Disabled : QIcon::Normal);
}

void ListRow::PaintEye(QPainter& painter, const QRect& row, bool isOpen)
{
    PaintIcon(painter, EyeOf(row), isOpen ? "theme:layer_visible.png" : "theme:layer_hidden.png", !isOpen);
}

void ListRow::PaintName(QPainter& painter, const QRect& place, const QString& name, bool dim,
                        const QStyleOptionViewItem& option)
{
    painter.setPen(option.palette.color(dim ? QPalette::PlaceholderText : QPalette::Text));
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(name, Qt::ElideRight, place.width()));
    if (!option.state.testFlag(QStyle::State_HasFocus)) return;
    painter.setPen(option.palette.color(QPalette::Link));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}
