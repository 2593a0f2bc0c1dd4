#pragma once

#include <QStyledItemDelegate>

/// Draws a row of the clipboard's list: the picture, what it is called and how large it is, and at the right
/// what was done with it and when. The tool tip tells everything that the row knows.
class ClipboardDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};
