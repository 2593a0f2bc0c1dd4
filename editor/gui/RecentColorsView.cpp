#include "gui/RecentColorsView.h"

#include "gui/DisplayColors.h"
#include "gui/RecentColors.h"
#include "guicore/ColorSwatch.h"
#include "guicore/ColorText.h"
#include "guicore/LineFrame.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

namespace {
constexpr int CellSize = 24;
constexpr int SwatchMargin = 3;
constexpr int ColorRole = Qt::UserRole;

class SwatchDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // Without a text an item would have no width of its own.
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {CellSize, CellSize};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const QRect swatch = option.rect.adjusted(SwatchMargin, SwatchMargin, -SwatchMargin, -SwatchMargin);
        ColorSwatch::Paint(*painter, swatch, DisplayColors::ShownOwn(index.data(ColorRole).value<QColor>()));
        PaintLineFrame(*painter, swatch, option.palette.color(QPalette::Mid));

        const bool isFocus = option.state.testFlag(QStyle::State_HasFocus);
        if (!isFocus && !option.state.testFlag(QStyle::State_Selected)) return;
        const QColor ring = option.palette.color(isFocus ? QPalette::Link : QPalette::Text);
        PaintLineFrame(*painter, swatch.adjusted(-2, -2, 2, 2), ring);
    }
};
} // namespace

RecentColorsView::RecentColorsView(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new SwatchDelegate(this));
    setFlow(QListView::LeftToRight);
    setUniformItemSizes(true);
    setGridSize({CellSize, CellSize});
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(this, &QListWidget::itemSelectionChanged, this, &RecentColorsView::PickSelected);
    // The selected color again, after another was chosen elsewhere.
    connect(this, &QListWidget::itemClicked, this, &RecentColorsView::PickSelected);
}

void RecentColorsView::SetColors(const QList<QColor>& colors)
{
    const QSignalBlocker blocker(this);
    clear();
    for (const QColor& color : colors) {
        auto* item = new QListWidgetItem(this);
        const QString text = color.alpha() == 255 ? ColorText::Opaque(color) : ColorText::WithAlpha(color);
        item->setData(ColorRole, color);
        item->setData(Qt::AccessibleTextRole, text);
        item->setToolTip(text);
    }
    setEnabled(!colors.isEmpty());
    setToolTip(colors.isEmpty() ? tr("No color has been chosen yet") : QString());
}

void RecentColorsView::Mark(const QColor& color)
{
    const QSignalBlocker blocker(this);
    clearSelection();
    for (int row = 0; row < count(); ++row) {
        if (item(row)->data(ColorRole).value<QColor>().rgba() != color.rgba()) continue;
        setCurrentRow(row);
        return;
    }
}

QSize RecentColorsView::sizeHint() const
{
    return {RecentColors::Most * CellSize + 2 * frameWidth(), CellSize + 2 * frameWidth()};
}

QSize RecentColorsView::minimumSizeHint() const
{
    return sizeHint();
}

void RecentColorsView::PickSelected()
{
    const QList<QListWidgetItem*> selected = selectedItems();
    if (!selected.isEmpty()) emit Picked(selected.first()->data(ColorRole).value<QColor>());
}
