#include "gui/LayerDelegate.h"

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "gui/AdjustmentNames.h"
#include "gui/DisplayColors.h"
#include "gui/ListRow.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QToolTip>

namespace {
using ListRow::Gap;
using ListRow::PictureSize;
using ListRow::SmallIcon;

/// Where the parts of a row lie, in the coordinates of its list.
struct RowPlaces
{
    RowPlaces(const QRect& row, bool hasMask, bool isLocked)
    {
        eye = ListRow::EyeOf(row);
        layer = ListRow::PictureOf(row);
        mask = layer.translated(hasMask ? PictureSize + Gap : 0, 0);
        lock = QRect(row.right() + 1 - SmallIcon - Gap, row.top(), SmallIcon, row.height());
        const int nameRight = isLocked ? lock.left() - Gap : row.right() - Gap;
        name = QRect(QPoint(mask.right() + 1 + Gap, row.top()), QPoint(nameRight, row.bottom()));
    }

    QRect eye, layer, mask, lock, name;
};

bool HasMask(const QModelIndex& index)
{
    return index.data(LXDocumentModel::HasMaskRole).toBool();
}

bool IsLocked(const QModelIndex& index)
{
    return index.data(LXDocumentModel::LocksRole).toUInt() != 0;
}

int KindOf(const QModelIndex& index)
{
    return index.data(LXDocumentModel::KindRole).toInt();
}

/// A text shows its letters, and a mark that they are letters.
void PaintKind(QPainter& painter, const QRect& picture, int kind)
{
    if (kind == LayerKind::Text) {
        const QRect corner(picture.right() - SmallIcon, picture.bottom() - SmallIcon, SmallIcon, SmallIcon);
        painter.fillRect(corner, painter.background());
        ListRow::PaintIcon(painter, corner, "theme:layer_text.png", false);
    }
}

/// What a layer that isn't of pixels is, in words.
QString KindName(const QModelIndex& index)
{
    switch (KindOf(index)) {
    case LayerKind::Text: return LayerDelegate::tr("Text layer");
    case LayerKind::Adjustment:
        return AdjustmentNames::Of(index.data(LXDocumentModel::AdjustmentRole).value<LXAdjustment>().kind);
    default: return LayerDelegate::tr("Paint on the layer");
    }
}

RowPlaces PlacesOf(const QStyleOptionViewItem& option, const QModelIndex& index)
{
    return RowPlaces(option.rect, HasMask(index), IsLocked(index));
}
} // namespace

void LayerDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ListRow::PaintGround(*painter, ground);

    painter->save();
    const RowPlaces places = PlacesOf(option, index);
    const bool visible = index.data(LXDocumentModel::VisibleRole).toBool();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool maskIsTarget = index.data(LXDocumentModel::MaskSelectedRole).toBool();
    ListRow::PaintEye(*painter, option.rect, visible);
    const bool isTarget = selected && !maskIsTarget;
    if (KindOf(index) == LayerKind::Adjustment) {
        // It has no pixels to show.
        ListRow::PaintSign(*painter, places.layer, "theme:layer_adjustment.png", isTarget, option.palette);
    } else {
        const auto* layers = qobject_cast<const LXDocumentModel*>(index.model());
        const auto picture = index.data(Qt::DecorationRole).value<QImage>();
        ListRow::PaintPicture(*painter, places.layer,
                              DisplayColors::Shown(layers ? layers->GetDocument() : nullptr, picture),
                              isTarget, option.palette);
    }
    painter->setBackground(option.palette.brush(QPalette::Base));
    PaintKind(*painter, places.layer, KindOf(index));
    if (HasMask(index)) {
        ListRow::PaintPicture(*painter, places.mask,
                              index.data(LXDocumentModel::MaskThumbnailRole).value<QImage>(),
                              selected && maskIsTarget, option.palette);
    }
    if (IsLocked(index)) ListRow::PaintIcon(*painter, places.lock, "theme:layer_lock.png", false);

    ListRow::PaintName(*painter, places.name, index.data().toString(), !visible, option);
    painter->restore();
}

bool LayerDelegate::IsOnEye(const QRect& row, const QPoint& pos)
{
    return RowPlaces(row, false, false).eye.contains(pos);
}

QSize LayerDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {ListRow::EyeWidth + 2 * (PictureSize + Gap), ListRow::Height};
}

QWidget* LayerDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* editor = new QLineEdit(parent);
    editor->setAccessibleName(tr("Name of the layer"));
    return editor;
}

void LayerDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    static_cast<QLineEdit*>(editor)->setText(index.data().toString());
}

void LayerDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const
{
    emit NameWanted(index.row(), static_cast<QLineEdit*>(editor)->text());
}

void LayerDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const
{
    const QRect name = PlacesOf(option, index).name;
    QRect place(0, 0, name.width(), editor->sizeHint().height());
    place.moveCenter(name.center());
    editor->setGeometry(place);
}

bool LayerDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);

    const RowPlaces places = PlacesOf(option, index);
    QString text = index.data().toString();
    if (places.eye.contains(event->pos())) {
        text = tr("Show or hide the layer (Space)");
    } else if (places.layer.contains(event->pos())) {
        text = KindName(index);
    } else if (places.mask.contains(event->pos())) {
        text = tr("Paint on the mask");
    }
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

bool LayerDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                const QModelIndex& index)
{
    auto* const layers = qobject_cast<LXDocumentModel*>(model);
    if (!layers) return false;
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        emit VisibleWanted(index.row(), !layers->GetVisible(index.row()));
        return true;
    }
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!isPress || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return false;

    const RowPlaces places = PlacesOf(option, index);
    const QPoint pos = static_cast<QMouseEvent*>(event)->pos();
    const bool onMask = HasMask(index) && places.mask.contains(pos);
    if (!onMask && !places.layer.contains(pos)) return false;
    // A tool at work goes on with the target that it began with.
    if (!layers->GetDocument()->GetLockState()) layers->SetMaskSelected(index.row(), onMask);
    // Only the name is edited by a double click.
    return event->type() == QEvent::MouseButtonDblClick;
}
