#include "guicore/LexoListView.h"

#include "guicore/PopupPlacement.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

namespace {
constexpr int PreviewSize = 48;
constexpr int MostColumns = 4;
constexpr int MostRows = 4;
constexpr int Gap = 8;

int CountOf(const QListView& view)
{
    return view.model() ? qMax(1, view.model()->rowCount(view.rootIndex())) : 1;
}

int RowsOf(const QListView& view)
{
    return (CountOf(view) + MostColumns - 1) / MostColumns;
}
} // namespace

LexoListView::LexoListView(QWidget* parent) : QListView(parent)
{
    setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_NoMouseReplay);
    setFrameShape(QFrame::Box);
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setIconSize({PreviewSize, PreviewSize});
    setGridSize({PreviewSize + 3 * Gap, PreviewSize + 2 * Gap + fontMetrics().height()});
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListView::clicked, this, &LexoListView::Pick);
}

LexoListView::~LexoListView() = default;

void LexoListView::PopUp(const QWidget* anchor)
{
    // With a bar as needed, the view keeps its room free also where none is needed.
    setVerticalScrollBarPolicy(RowsOf(*this) > MostRows ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    resize(sizeHint());
    move(PopupPlacement::Beside(*anchor, size()));
    show();
    setFocus(Qt::PopupFocusReason);
    if (currentIndex().isValid()) scrollTo(currentIndex());
}

QSize LexoListView::sizeHint() const
{
    const int columns = qMin(CountOf(*this), MostColumns);
    const int rows = RowsOf(*this);
    const int bar = rows > MostRows ? verticalScrollBar()->sizeHint().width() : 0;
    // One pixel more than the columns: the view breaks a row that is filled to the last one.
    return {columns * gridSize().width() + bar + 2 * frameWidth() + 1,
            qMin(rows, MostRows) * gridSize().height() + 2 * frameWidth()};
}

bool LexoListView::event(QEvent* event)
{
    // A press anywhere else comes to the open pop-up, not to its viewport.
    if (event->type() == QEvent::MouseButtonPress &&
        !rect().contains(static_cast<QMouseEvent*>(event)->pos())) {
        close();
        return true;
    }
    return QListView::event(event);
}

void LexoListView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape: close(); return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: Pick(currentIndex()); return;
    default: QListView::keyPressEvent(event);
    }
}

void LexoListView::Pick(const QModelIndex& index)
{
    if (!index.isValid() || !index.flags().testFlag(Qt::ItemIsEnabled)) return;
    close();
    emit Picked(index);
}
