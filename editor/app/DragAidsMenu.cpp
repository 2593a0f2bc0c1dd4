#include "app/DragAidsMenu.h"

#include "app/GridDialog.h"
#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "gui/ViewAids.h"
#include "gui/ZKDocumentView_p.h"

#include <QAction>

DragAidsMenu::DragAidsMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    const auto add = [this](int position, const QString& text, const QString& hint, const char* name,
                            const QList<QKeySequence>& keys = {}) {
        QAction* action = AddMenuAction(this, {ZKMenuManager::View, position, text, hint, keys});
        action->setObjectName(QLatin1String(name));
        return action;
    };
    const auto addSwitch = [&add](int position, const QString& text, const QString& hint, const char* name,
                                  bool isOn, const QList<QKeySequence>& keys = {}) {
        QAction* action = add(position, text, hint, name, keys);
        action->setCheckable(true);
        action->setChecked(isOn);
        return action;
    };
    m_pGrid = addSwitch(10, tr("Show G&rid"), tr("Draws lines at even distances over the canvas"),
                        "showGridAction", ViewAids::IsGridShown(), {Qt::CTRL + Qt::Key_Apostrophe});
    const QAction* step =
        add(11, tr("Grid &Step…"), tr("Sets the distance between the lines of the grid"), "gridStepAction");
    AddMenuSeparator(this, ZKMenuManager::View, 12);
    const QAction* snap = addSwitch(13, tr("S&nap"),
                                    tr("Brings what is dragged to the edges and the middle of the canvas, to "
                                       "layers, guides and the grid; "
                                       "Shift suspends it"),
                                    "snapAction", ViewAids::IsSnapOn());
    const QAction* offset =
        addSwitch(14, tr("Show Drag &Offset"), tr("Tells beside the pointer how far a drag has come"),
                  "showDragOffsetAction", ViewAids::IsOffsetTold());

    connect(m_pGrid, &QAction::triggered, this, &DragAidsMenu::ShowGrid);
    connect(step, &QAction::triggered, this, &DragAidsMenu::AskForStep);
    connect(snap, &QAction::triggered, this, &ViewAids::SetSnap);
    connect(offset, &QAction::triggered, this, &ViewAids::TellOffset);
    connect(window, &MainWindow::ActiveViewChanged, this, &DragAidsMenu::Follow);
    Follow(window->GetActiveView());
}

void DragAidsMenu::ShowGrid(bool shown)
{
    ViewAids::ShowGrid(shown);
    Follow(m_pWindow->GetActiveView());
}

void DragAidsMenu::AskForStep()
{
    GridDialog dialog(ViewAids::GridStep(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted) return;
    ViewAids::SetGridStep(dialog.GetStep());
    // A grid that was asked for is to be seen.
    m_pGrid->setChecked(true);
    ShowGrid(true);
}

void DragAidsMenu::Follow(ZKDocumentView* view) const
{
    if (view) ZKDocumentViewPrivate::Get(view)->ShowGrid(m_pGrid->isChecked() ? ViewAids::GridStep() : 0);
}
