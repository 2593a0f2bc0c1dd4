#include "gui/ClipboardDelegate.h"

#include "core/ZKCMSManager.h"
#include "gui/ClipboardRole.h"
#include "gui/DisplayColors.h"
#include "gui/ListRow.h"
#include "guicore/Checker.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QIcon>
#include <QPainter>
#include <QToolTip>

namespace {
constexpr int PictureSide = 32;

// Columns of the list, each with two lines.
constexpr int NameColumn = 1;
constexpr int TimeColumn = 2;
constexpr int StateColumn = 3;

QStringList LinesOf(const QModelIndex& index, int column)
{
    return index.siblingAtColumn(column).data().toString().split('\n');
}

/// How much of the icon the picture takes, from the top left.
QSize SizeInPicture(const QModelIndex& index)
{
    const QSize size = index.data(ClipboardRole::Image).value<LXImage32>().Rect().size();
    return size.isEmpty() ? QSize() : size.scaled(PictureSide, PictureSide, Qt::KeepAspectRatio);
}

/// The row's picture, whose colors are those of the document that it was copied in.
void PaintPicture(QPainter& painter, const QRect& place, const QModelIndex& index)
{
    const auto icon = index.data(Qt::DecorationRole).value<QIcon>();
    const auto profile = index.data(ClipboardRole::Image).value<LXImage32>().m_Profile;
    const ZKCMSTransform toScreen = ZKCMSManager::GetInstance()->ToDisplay(profile);
    if (toScreen.IsEmpty()) {
        icon.paint(&painter, place, Qt::AlignLeft | Qt::AlignTop);
        return;
    }
    QImage picture = icon.pixmap(place.size()).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    DisplayColors::Convert(toScreen, picture, picture.rect());
    painter.drawImage(place.topLeft(), picture);
}

/// One above the other, in the halves of the place.
void PaintLines(QPainter& painter, const QRect& place, const QString& upper, const QString& lower,
                Qt::Alignment side, const QStyleOptionViewItem& option)
{
    const int half = place.height() / 2;
    const QRect top(place.left(), place.top() + 4, place.width(), half - 4);
    painter.setPen(option.palette.color(QPalette::Text));
    painter.drawText(top, side | Qt::AlignVCenter | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(upper, Qt::ElideRight, place.width()));
    painter.setPen(option.palette.color(QPalette::PlaceholderText));
    painter.drawText(top.translated(0, half - 4), side | Qt::AlignVCenter | Qt::TextSingleLine,
                     option.fontMetrics.elidedText(lower, Qt::ElideRight, place.width()));
}

int WidthOf(const QString& upper, const QString& lower, const QStyleOptionViewItem& option)
{
    // Eliding measures a little more than the advance.
    return 2 + qMax(option.fontMetrics.horizontalAdvance(upper), option.fontMetrics.horizontalAdvance(lower));
}
} // namespace

void ClipboardDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ListRow::PaintGround(*painter, ground);

    painter->save();
    const int gap = ListRow::Gap;
    QRect picture(option.rect.left() + gap, 0, PictureSide, PictureSide);
    picture.moveTop(option.rect.top() + (option.rect.height() - PictureSide) / 2);
    painter->setBrushOrigin(picture.topLeft());
    painter->fillRect(QRect(picture.topLeft(), SizeInPicture(index)), SmallChecker());
    PaintPicture(*painter, picture, index);

    const QString state = LinesOf(index, StateColumn).last();
    const QString time = LinesOf(index, TimeColumn).first();
    QRect right = option.rect.adjusted(0, 0, -gap, 0);
    right.setLeft(right.right() + 1 - WidthOf(state, time, option));
    QRect left = option.rect;
    left.setLeft(picture.right() + 1 + gap);
    left.setRight(right.left() - gap);
    const QStringList name = LinesOf(index, NameColumn);
    PaintLines(*painter, left, name.first(), name.last(), Qt::AlignLeft, option);
    PaintLines(*painter, right, state, time, Qt::AlignRight, option);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(option.palette.color(QPalette::Link));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

QSize ClipboardDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {PictureSide + 3 * ListRow::Gap, ListRow::Height};
}

bool ClipboardDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);

    const QStringList lines =
        LinesOf(index, NameColumn) + LinesOf(index, TimeColumn) + LinesOf(index, StateColumn);
    QToolTip::showText(event->globalPos(), lines.join('\n'), view);
    return true;
}
