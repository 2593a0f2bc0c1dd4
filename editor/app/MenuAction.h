#pragma once

#include "core/ZKMenuManager.h"

#include <QKeySequence>
#include <QList>
#include <QString>

class QAction;
class QObject;

/// What an entry of the main menu is, before it stands there.
struct MenuEntry
{
    ZKMenuManager::MenuRole role;
    int position; ///< entries stand by rising position
    QString text; ///< with its mnemonic
    QString hint; ///< for the status bar
    QList<QKeySequence> keys;
    QString icon = QString(); ///< a picture of the theme; empty for none
};

/// Makes the action and places it in the main menu. Main thread only.
QAction* AddMenuAction(QObject* parent, const MenuEntry& entry);

void AddMenuSeparator(QObject* parent, ZKMenuManager::MenuRole role, int position);
