#include "app/MenuAction.h"

#include "utils/ZKIconHelper.h"

#include <QAction>

QAction* AddMenuAction(QObject* parent, const MenuEntry& entry)
{
    auto* action = new QAction(entry.text, parent);
    action->setShortcuts(entry.keys);
    action->setStatusTip(entry.hint);
    if (!entry.icon.isEmpty()) action->setIcon(ZKIconHelper::DisabledIcon(entry.icon));
    action->setMenuRole(QAction::NoRole);
    ZKMenuManager::CreateAction(entry.role, entry.position, action);
    return action;
}

void AddMenuSeparator(QObject* parent, ZKMenuManager::MenuRole role, int position)
{
    auto* separator = new QAction(parent);
    separator->setSeparator(true);
    ZKMenuManager::CreateAction(role, position, separator);
}
