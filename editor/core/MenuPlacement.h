#pragma once

#include "EditorExport.h"

#include "core/ZKMenuManager.h"

#include <QMenu>
#include <QMenuBar>
#include <QObject>
#include <QPointer>

#include <array>
#include <vector>

/// Builds the main menu from the entries of ZKMenuManager. The menu of a role is shown in the bar while it
/// holds something.
class ZK_EDITOR_EXPORT MenuPlacement : public QObject
{
    Q_OBJECT

public:
    static MenuPlacement& Instance();

    /// The bar of the main window, at first none. What was placed before it came is put in.
    void SetMenuBar(QMenuBar* bar);

    /// The menu of the role in the present bar; null without a bar.
    QMenu* RoleMenu(ZKMenuManager::MenuRole role) const;

    void AddToBar(ZKMenuManager::MenuRole role, QAction* action);
    void AddToMenu(ZKMenuManager::MenuRole role, int position, QAction* action);

    /// Takes an entry out of the main menu; nothing for one that isn't there.
    void Remove(QAction* action);

signals:
    /// An entry came into the main menu.
    void Added(QAction* action);

private:
    struct Entry
    {
        ZKMenuManager::MenuRole role;
        int position; // BarPosition: in the bar itself
        QAction* action;
    };

    static constexpr int RoleCount = ZKMenuManager::Help + 1;

    void Add(const Entry& entry);
    void Insert(std::vector<Entry>::const_iterator entry);
    void Forget(const QObject* action);
    void ShowFilledMenus();

    std::vector<Entry> m_Entries; // by role and position, equal ones in the order of coming
    QPointer<QMenuBar> m_pBar;
    std::array<QPointer<QMenu>, RoleCount> m_Menus;
};
