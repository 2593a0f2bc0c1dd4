#include "gui/LToolBoxWidget.h"

#include "gui/LToolBoxButton.h"
#include "gui/SingleWidget.h"

#include <QPainter>
#include <QResizeEvent>

namespace {
constexpr int Margin = 4;
constexpr int ButtonSize = 32;
constexpr int GroupGap = 9; ///< 4 above and below a line of one pixel

/// The first positions of the groups behind the first: crop; paint and fill; measure and pick; view; text;
/// gradient; paths; what comes behind them.
constexpr int GroupStarts[] = {4, 7, 10, 13, 14, 15, 16, 18};

int GroupOf(int position)
{
    return int(std::upper_bound(std::begin(GroupStarts), std::end(GroupStarts), position) -
               std::begin(GroupStarts));
}
} // namespace

class LToolBoxWidgetPrivate
{
public:
    struct Entry
    {
        LToolBoxButton* button;
        int position;
    };

    std::vector<Entry> m_Entries; ///< by rising position
    std::vector<int> m_Lines;     ///< y of the lines between the groups
    int m_Columns = 1;

    /// Height of all buttons in so many columns. Groups share rows when there are two columns: most of them
    /// are so small that lines would eat what the second column gains.
    int HeightOf(int columns) const
    {
        const int count = int(m_Entries.size());
        int height = 2 * Margin + (count + columns - 1) / columns * ButtonSize;
        if (columns > 1) return height;
        for (int i = 1; i < count; ++i)
            height += StartsGroup(i) ? GroupGap : 0;
        return height;
    }

    void Arrange(int height)
    {
        m_Columns = height < HeightOf(1) ? 2 : 1;
        m_Lines.clear();
        QPoint place(Margin, Margin);
        for (int i = 0; i < int(m_Entries.size()); ++i) {
            if (m_Columns == 1 && StartsGroup(i)) {
                m_Lines.push_back(place.y() + GroupGap / 2);
                place.ry() += GroupGap;
            }
            m_Entries[std::size_t(i)].button->move(place);
            const bool endsRow = (i + 1) % m_Columns == 0;
            place = endsRow ? QPoint(Margin, place.y() + ButtonSize) : place + QPoint(ButtonSize, 0);
        }
    }

    bool Take(const QObject* button)
    {
        const auto found = std::find_if(m_Entries.begin(), m_Entries.end(),
                                        [=](const Entry& entry) { return entry.button == button; });
        if (found == m_Entries.end()) return false;
        m_Entries.erase(found);
        return true;
    }

private:
    bool StartsGroup(int index) const
    {
        return index > 0 && GroupOf(m_Entries[std::size_t(index)].position) !=
                                GroupOf(m_Entries[std::size_t(index) - 1].position);
    }
};

LToolBoxWidget::LToolBoxWidget(QWidget* parent)
    : QWidget(parent), m_pPrivate(std::make_unique<LToolBoxWidgetPrivate>())
{
    SingleWidget<LToolBoxWidget>::Register(this);
    setAccessibleName(tr("Tools"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    Rearrange();
}

LToolBoxWidget::~LToolBoxWidget()
{
    // The buttons are their tools' own.
    while (!m_pPrivate->m_Entries.empty())
        RemoveButton(m_pPrivate->m_Entries.back().button);
}

LToolBoxWidget* LToolBoxWidget::GetInstance()
{
    return SingleWidget<LToolBoxWidget>::Get();
}

void LToolBoxWidget::AddToolButton(LToolBoxButton* button, int position)
{
    if (!button) return;
    RemoveButton(button);
    if (position < 0) return;

    auto& entries = m_pPrivate->m_Entries;
    const auto behind = std::upper_bound(
        entries.begin(), entries.end(), position,
        [](int wanted, const LToolBoxWidgetPrivate::Entry& entry) { return wanted < entry.position; });
    entries.insert(behind, {button, position});
    connect(button, &QObject::destroyed, this, [this](QObject* gone) {
        if (m_pPrivate->Take(gone)) Rearrange();
    });
    button->setParent(this);
    button->show();
    Rearrange();
}

void LToolBoxWidget::RemoveButton(LToolBoxButton* button)
{
    if (!m_pPrivate->Take(button)) return;

    disconnect(button, &QObject::destroyed, this, nullptr);
    button->hide();
    button->setParent(nullptr);
    Rearrange();
}

QSize LToolBoxWidget::sizeHint() const
{
    return {width(), m_pPrivate->HeightOf(1)};
}

QSize LToolBoxWidget::minimumSizeHint() const
{
    return {width(), m_pPrivate->HeightOf(2)};
}

void LToolBoxWidget::resizeEvent(QResizeEvent* event)
{
    if (event->size().height() != event->oldSize().height()) Rearrange();
}

void LToolBoxWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    for (const int y : m_pPrivate->m_Lines)
        painter.drawLine(2 * Margin, y, width() - 2 * Margin - 1, y);
}

void LToolBoxWidget::Rearrange()
{
    m_pPrivate->Arrange(height());
    setFixedWidth(2 * Margin + m_pPrivate->m_Columns * ButtonSize);
    // Tab goes in reading order, whatever the order of coming.
    const auto& entries = m_pPrivate->m_Entries;
    for (std::size_t i = 1; i < entries.size(); ++i)
        setTabOrder(entries[i - 1].button, entries[i].button);
    updateGeometry();
    update();
}
