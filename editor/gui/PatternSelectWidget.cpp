#include "gui/PatternSelectWidget.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {
constexpr int SwatchSize = 48;
constexpr int ColumnCount = 4;
constexpr int RowCount = 4;

/// A swatch of the pattern in its own pixels; a small one is repeated as it will be when painted.
QIcon MakeSwatch(const QPixmap& pattern)
{
    if (pattern.isNull()) return {};
    QPixmap swatch(SwatchSize, SwatchSize);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.fillRect(swatch.rect(), QBrush(pattern));
    return swatch;
}
} // namespace

PatternSelectWidget::PatternSelectWidget(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), m_pList(new QListWidget(this))
{
    m_pList->setAccessibleName(tr("Patterns"));
    m_pList->setViewMode(QListView::IconMode);
    m_pList->setMovement(QListView::Static);
    m_pList->setResizeMode(QListView::Adjust);
    m_pList->setUniformItemSizes(true);
    m_pList->setIconSize({SwatchSize, SwatchSize});
    m_pList->setGridSize({SwatchSize + 8, SwatchSize + 8});
    m_pList->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pList->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_pList->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_pList);
    setFocusProxy(m_pList);

    connect(m_pList, &QListWidget::currentRowChanged, this, &PatternSelectWidget::CurrentItemChanged);
    connect(m_pList, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { emit ItemDoubleClicked(m_pList->row(item)); });
}

PatternSelectWidget::~PatternSelectWidget() = default;

void PatternSelectWidget::AddItem(const QString& file, const QString& label)
{
    const QPixmap image(file);
    m_Images.append(image);

    auto* item = new QListWidgetItem(MakeSwatch(image), QString(), m_pList);
    item->setToolTip(label);
    item->setData(Qt::AccessibleTextRole, label);
}

int PatternSelectWidget::GetItemCount() const
{
    return m_pList->count();
}

void PatternSelectWidget::SelectItem(int index)
{
    if (index >= 0 && index < m_pList->count()) m_pList->setCurrentRow(index);
}

int PatternSelectWidget::GetCurrentItem() const
{
    return m_pList->currentRow();
}

QPixmap PatternSelectWidget::GetItemImage(int index) const
{
    return m_Images.value(index);
}

QBrush PatternSelectWidget::GetPattern() const
{
    const QPixmap image = GetItemImage(GetCurrentItem());
    // A brush with an image, not a pixmap: it is painted with on workers.
    return image.isNull() ? QBrush() : QBrush(image.toImage());
}

QSize PatternSelectWidget::sizeHint() const
{
    const QSize grid = m_pList->gridSize();
    const int scrollBar = m_pList->verticalScrollBar()->sizeHint().width();
    const int frame = 2 * m_pList->frameWidth() + 8;
    return {ColumnCount * grid.width() + scrollBar + frame + 1, RowCount * grid.height() + frame};
}

bool PatternSelectWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_pList || event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);

    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (GetCurrentItem() >= 0) emit ItemDoubleClicked(GetCurrentItem());
        return true;
    case Qt::Key_Escape: hide(); return true;
    default: return false;
    }
}
