#include "gui/SampleDelegate.h"

#include "document/LXColorSampleModel.h"
#include "gui/DisplayColors.h"
#include "gui/ListRow.h"
#include "guicore/Checker.h"

#include <QPainter>

namespace {
constexpr int RowHeight = 40;
constexpr int NumberWidth = 28;
constexpr int SwatchSize = 24;

void PaintSwatch(QPainter& painter, const QRect& place, const QColor& color, const QPalette& palette)
{
    painter.setBrushOrigin(place.topLeft());
    painter.fillRect(place, SmallChecker());
    if (color.isValid()) painter.fillRect(place, color);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette.color(QPalette::Mid));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
}
} // namespace

void SampleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const auto* samples = qobject_cast<const LXColorSampleModel*>(index.model());
    if (!samples) return;
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    ListRow::PaintGround(*painter, ground);

    painter->save();
    const QRect row = option.rect;
    const QRect number(row.left(), row.top(), NumberWidth, row.height());
    QRect swatch(number.right() + 1, row.top(), SwatchSize, SwatchSize);
    swatch.moveTop(row.top() + (row.height() - SwatchSize) / 2);
    QRect values = row.adjusted(NumberWidth + SwatchSize + ListRow::Gap, 2, -ListRow::Gap, 0);
    values.setHeight(row.height() / 2);
    const QRect place = values.translated(0, values.height() - 2);

    painter->setPen(option.palette.color(QPalette::Text));
    painter->drawText(number.adjusted(0, 0, -ListRow::Gap, 0), Qt::AlignRight | Qt::AlignVCenter,
                      QString::number(index.row() + 1));
    PaintSwatch(*painter, swatch,
                DisplayColors::Shown(samples->GetDocument(), samples->GetColor(index.row())), option.palette);
    painter->drawText(values, Qt::AlignLeft | Qt::AlignVCenter, samples->GetColorText(index.row()));
    const QPoint point = samples->GetPoint(index.row());
    painter->setPen(option.palette.color(QPalette::PlaceholderText));
    painter->drawText(place, Qt::AlignLeft | Qt::AlignVCenter, tr("at %1, %2").arg(point.x()).arg(point.y()));
    painter->restore();
}

QSize SampleDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {NumberWidth + SwatchSize + ListRow::Gap, RowHeight};
}
