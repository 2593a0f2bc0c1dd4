#include "gui/PathDelegate.h"

#include "document/LXPathsListModel.h"
#include "gui/ListRow.h"

#include <QHelpEvent>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QToolTip>

namespace {
bool IsVisible(const QModelIndex& index)
{
    return index.data(LXPathsListModel::VisibleRole).toBool();
}

QRect NameOf(const QRect& row)
{
    return {QPoint(ListRow::PictureOf(row).right() + 1 + ListRow::Gap, row.top()),
            QPoint(row.right() - ListRow::Gap, row.bottom())};
}
} // namespace

void PathDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ListRow::PaintGround(*painter, ground);

    painter->save();
    ListRow::PaintEye(*painter, option.rect, IsVisible(index));
    ListRow::PaintPicture(*painter, ListRow::PictureOf(option.rect),
                          index.data(Qt::DecorationRole).value<QImage>(), false, option.palette);
    ListRow::PaintName(*painter, NameOf(option.rect), index.data().toString(), false, option);
    painter->restore();
}

QSize PathDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {ListRow::EyeWidth + 2 * (ListRow::PictureSize + ListRow::Gap), ListRow::Height};
}

QWidget* PathDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* editor = new QLineEdit(parent);
    editor->setAccessibleName(tr("Name of the path"));
    return editor;
}

void PathDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    static_cast<QLineEdit*>(editor)->setText(index.data().toString());
}

void PathDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    emit NameWanted(index.row(), static_cast<QLineEdit*>(editor)->text());
}

void PathDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex&) const
{
    const QRect name = NameOf(option.rect);
    QRect place(0, 0, name.width(), editor->sizeHint().height());
    place.moveCenter(name.center());
    editor->setGeometry(place);
}

bool PathDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);

    const bool onEye = ListRow::EyeOf(option.rect).contains(event->pos());
    const QString eye = tr("Show the outline also while another path is selected (Space)");
    QToolTip::showText(event->globalPos(), onEye ? eye : index.data().toString(), view);
    return true;
}

bool PathDelegate::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem&,
                               const QModelIndex& index)
{
    const bool isSpace =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
    if (isSpace) emit VisibleWanted(index.row(), !IsVisible(index));
    return isSpace;
}
