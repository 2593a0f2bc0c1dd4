#include "app/WindowMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/PanelArea.h"

#include <QAction>
#include <QDockWidget>

namespace {
/// Places in the menu; the panels stand between the first and the second.
enum Position
{
    FirstPanel = 0,
    EndOfPanels = 50,
    ResetLayout = 51,
};
} // namespace

WindowMenu::WindowMenu(MainWindow* window) : QObject(window)
{
    PanelArea* panels = window->GetPanels();
    int position = FirstPanel;
    for (QDockWidget* panel : panels->GetPanels()) {
        const QString title = panel->windowTitle();
        QAction* show = AddMenuAction(
            this, {ZKMenuManager::Window, position++, title, tr("Goes to the panel “%1”").arg(title), {}});
        connect(show, &QAction::triggered, panels, [panels, panel] { panels->Show(panel); });
    }
    AddMenuSeparator(this, ZKMenuManager::Window, EndOfPanels);
    QAction* reset = AddMenuAction(this, {ZKMenuManager::Window,
                                          ResetLayout,
                                          tr("&Reset Layout"),
                                          tr("Puts all panels back to where they were at first"),
                                          {}});
    reset->setObjectName(QStringLiteral("resetLayoutAction"));
    connect(reset, &QAction::triggered, window, &MainWindow::ResetLayout);
}
