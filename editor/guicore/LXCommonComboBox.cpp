#include "guicore/LXCommonComboBox.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QScrollBar>

namespace {
/// What the rows need, as a width of the whole list.
int WidthOfRows(const QComboBox& box)
{
    const QAbstractItemView* view = box.view();
    const bool isScrolled = box.count() > box.maxVisibleItems();
    const int bar = isScrolled ? view->verticalScrollBar()->sizeHint().width() : 0;
    return view->sizeHintForColumn(box.modelColumn()) + bar + 2 * view->frameWidth();
}
} // namespace

LXCommonComboBox::LXCommonComboBox(QWidget* parent) : QComboBox(parent) {}

LXCommonComboBox::~LXCommonComboBox() = default;

void LXCommonComboBox::showPopup()
{
    QComboBox::showPopup();
    QWidget* list = view()->window();
    const int frame = list->width() - view()->width();
    const int wanted = WidthOfRows(*this) + frame;
    if (list == window() || list->width() >= wanted) return;

    const QRect available = screen()->availableGeometry();
    const int width = qMin(wanted, available.width());
    const int left = qMin(list->x(), available.right() + 1 - width);
    list->setGeometry(left, list->y(), width, list->height());
}
