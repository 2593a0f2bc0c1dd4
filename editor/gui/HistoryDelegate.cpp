#include "gui/HistoryDelegate.h"

#include "gui/HistoryModel.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QPainter>

namespace {
constexpr int RowHeight = 24;
constexpr int Gap = 8;
constexpr int MarkSize = 16;
} // namespace

void HistoryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, option.widget);

    painter->save();
    QRect place = option.rect.adjusted(Gap, 0, -Gap, 0);
    const bool isDone = index.data(HistoryModel::IsDoneRole).toBool();
    if (index.data(HistoryModel::IsCleanRole).toBool()) {
        QRect mark(0, 0, MarkSize, MarkSize);
        mark.moveCenter(place.center());
        mark.moveRight(place.right());
        ZKIconHelper::DisabledIcon(QStringLiteral("theme:file_save.png"))
            .paint(painter, mark, Qt::AlignCenter, isDone ? QIcon::Normal : QIcon::Disabled);
        place.setRight(mark.left() - Gap);
    }
    painter->setPen(option.palette.color(isDone ? QPalette::Text : QPalette::PlaceholderText));
    painter->drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, place.width()));
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(option.palette.color(QPalette::Link));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

QSize HistoryDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int width = option.fontMetrics.horizontalAdvance(index.data().toString());
    return {width + 3 * Gap + MarkSize, RowHeight};
}
