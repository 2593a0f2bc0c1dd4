#include "gui/LayerDelegate.h"

#include "document/LXDocumentModel.h"
#include "gui/CanvasPainter.h"
#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QToolTip>

namespace {
constexpr int RowHeight = 48;
constexpr int PictureSize = 36;
constexpr int EyeWidth = 32;
constexpr int Gap = 8;
constexpr int SmallIcon = 16;
constexpr int CheckerSquare = 4;

/// Where the parts of a row lie, in the coordinates of its list.
struct RowPlaces
{
    RowPlaces(const QRect& row, bool hasMask, bool isLocked)
    {
        eye = QRect(row.left(), row.top(), EyeWidth, row.height());
        const int pictureTop = row.top() + (row.height() - PictureSize) / 2;
        layer = QRect(eye.right() + 1, pictureTop, PictureSize, PictureSize);
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

RowPlaces PlacesOf(const QStyleOptionViewItem& option, const QModelIndex& index)
{
    return RowPlaces(option.rect, HasMask(index), IsLocked(index));
}

/// A picture in its frame, over the checker that tells transparency; the target of painting has an accent.
void PaintPicture(QPainter& painter, const QRect& frame, const QImage& picture, bool isTarget,
                  const QPalette& palette)
{
    const QSize size = picture.size().scaled(frame.size() - QSize(4, 4), Qt::KeepAspectRatio);
    QRect place(QPoint(0, 0), size);
    place.moveCenter(frame.center());
    painter.setBrushOrigin(place.topLeft());
    painter.fillRect(place, MakeChecker(CheckerSquare, QColor(0xb4, 0xb4, 0xb4), QColor(0x9a, 0x9a, 0x9a)));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette.color(isTarget ? QPalette::Link : QPalette::Mid));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
    if (isTarget) painter.drawRect(place.adjusted(-2, -2, 1, 1));
}

void PaintIcon(QPainter& painter, const QRect& place, const QString& name, bool dim)
{
    QRect square(0, 0, SmallIcon, SmallIcon);
    square.moveCenter(place.center());
    ZKIconHelper::DisabledIcon(name).paint(&painter, square, Qt::AlignCenter,
                                           dim ? QIcon::Disabled : QIcon::Normal);
}
} // namespace

void LayerDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, option.widget);

    painter->save();
    const RowPlaces places = PlacesOf(option, index);
    const bool visible = index.data(LXDocumentModel::VisibleRole).toBool();
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool maskIsTarget = index.data(LXDocumentModel::MaskSelectedRole).toBool();
    PaintIcon(*painter, places.eye, visible ? "theme:layer_visible.png" : "theme:layer_hidden.png", !visible);
    PaintPicture(*painter, places.layer, index.data(Qt::DecorationRole).value<QImage>(),
                 selected && !maskIsTarget, option.palette);
    if (HasMask(index)) {
        PaintPicture(*painter, places.mask, index.data(LXDocumentModel::MaskThumbnailRole).value<QImage>(),
                     selected && maskIsTarget, option.palette);
    }
    if (IsLocked(index)) PaintIcon(*painter, places.lock, "theme:layer_lock.png", false);

    painter->setPen(option.palette.color(visible ? QPalette::Text : QPalette::PlaceholderText));
    const QString name =
        option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, places.name.width());
    painter->drawText(places.name, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, name);
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(option.palette.color(QPalette::Link));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

bool LayerDelegate::IsOnEye(const QRect& row, const QPoint& pos)
{
    return RowPlaces(row, false, false).eye.contains(pos);
}

QSize LayerDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {EyeWidth + 2 * (PictureSize + Gap), RowHeight};
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
        text = tr("Paint on the layer");
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
    layers->SetMaskSelected(index.row(), onMask);
    // Only the name is edited by a double click.
    return event->type() == QEvent::MouseButtonDblClick;
}
