#pragma once

#include <QStyledItemDelegate>

/// Draws a state of the history: undone ones dim, the one on the disk with a mark at its right end.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
