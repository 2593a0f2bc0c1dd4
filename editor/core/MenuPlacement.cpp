#include "core/MenuPlacement.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <tuple>

namespace {
/// Sorts before every place in a menu, so that the entries of the bar come first in their role.
constexpr int BarPosition = std::numeric_limits<int>::min();
} // namespace

MenuPlacement& MenuPlacement::Instance()
{
    static MenuPlacement placement;
    return placement;
}

void MenuPlacement::SetMenuBar(QMenuBar* bar)
{
    m_pBar = bar;
    m_Menus.fill(nullptr);
    if (bar == nullptr) return;

    const QString titles[RoleCount] = {tr("&File"),      tr("&Edit"), tr("&Image"),  tr("&Layer"),
                                       tr("&Selection"), tr("&View"), tr("&Window"), tr("&Help")};
    std::transform(std::begin(titles), std::end(titles), m_Menus.begin(),
                   [bar](const QString& title) { return bar->addMenu(title); });
    for (auto entry = m_Entries.cbegin(); entry != m_Entries.cend(); ++entry) {
        Insert(entry);
    }
    ShowFilledMenus();
}

QMenu* MenuPlacement::RoleMenu(ZKMenuManager::MenuRole role) const
{
    return m_Menus[static_cast<std::size_t>(role)];
}

void MenuPlacement::AddToBar(ZKMenuManager::MenuRole role, QAction* action)
{
    Add({role, BarPosition, action});
}

void MenuPlacement::AddToMenu(ZKMenuManager::MenuRole role, int position, QAction* action)
{
    // The smallest number stands for the bar.
    Add({role, std::max(position, BarPosition + 1), action});
}

void MenuPlacement::Add(const Entry& entry)
{
    // Adding an action again moves it.
    Forget(entry.action);
    const auto isBefore = [](const Entry& one, const Entry& other) {
        return std::tie(one.role, one.position) < std::tie(other.role, other.position);
    };
    const auto place = std::upper_bound(m_Entries.cbegin(), m_Entries.cend(), entry, isBefore);
    const auto added = m_Entries.insert(place, entry);
    connect(entry.action, &QObject::destroyed, this, &MenuPlacement::Forget);
    if (!m_pBar.isNull()) {
        Insert(added);
        ShowFilledMenus();
    }
    emit Added(entry.action);
}

void MenuPlacement::Remove(QAction* action)
{
    const auto entry = std::find_if(m_Entries.cbegin(), m_Entries.cend(),
                                    [action](const Entry& candidate) { return candidate.action == action; });
    if (entry == m_Entries.cend()) return;
    if (!m_pBar.isNull()) {
        m_pBar->removeAction(action);
        RoleMenu(entry->role)->removeAction(action);
    }
    Forget(action);
}

void MenuPlacement::Insert(std::vector<Entry>::const_iterator entry)
{
    const bool inBar = entry->position == BarPosition;
    const auto next = std::next(entry);
    const bool hasNext =
        next != m_Entries.cend() && next->role == entry->role && (next->position == BarPosition) == inBar;
    if (!inBar) {
        RoleMenu(entry->role)->insertAction(hasNext ? next->action : nullptr, entry->action);
        return;
    }
    QAction* before = hasNext ? next->action : nullptr;
    if (!hasNext && entry->role < ZKMenuManager::Help) {
        before = RoleMenu(static_cast<ZKMenuManager::MenuRole>(entry->role + 1))->menuAction();
    }
    m_pBar->insertAction(before, entry->action);
}

void MenuPlacement::Forget(const QObject* action)
{
    disconnect(action, &QObject::destroyed, this, &MenuPlacement::Forget);
    m_Entries.erase(std::remove_if(m_Entries.begin(), m_Entries.end(),
                                   [action](const Entry& entry) { return entry.action == action; }),
                    m_Entries.end());
    ShowFilledMenus();
}

void MenuPlacement::ShowFilledMenus()
{
    for (const QPointer<QMenu>& menu : m_Menus) {
        if (!menu.isNull()) menu->menuAction()->setVisible(!menu->isEmpty());
    }
}
