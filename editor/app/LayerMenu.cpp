#include "app/LayerMenu.h"

#include "app/MainWindow.h"
#include "app/PanelArea.h"
#include "core/ZKMenuManager.h"
#include "gui/AdjustmentPanel.h"
#include "gui/ZKDocumentView.h"

#include <QAction>
#include <QDockWidget>
#include <QMenu>

LayerMenu::LayerMenu(MainWindow* window)
    : QObject(window), m_pWindow(window), m_pMenu(std::make_unique<QMenu>(tr("New &Adjustment Layer")))
{
    Add(LXAdjustment::BrightnessContrast, tr("&Brightness and Contrast"),
        tr("Makes what lies below brighter, darker, stronger or weaker"), "addBrightnessContrastAction");
    Add(LXAdjustment::Levels, tr("&Levels"),
        tr("Spreads the colors of what lies below between black and white"), "addLevelsAction");
    Add(LXAdjustment::HueSaturation, tr("&Hue and Saturation"), tr("Turns the colors of what lies below"),
        "addHueSaturationAction");
    Add(LXAdjustment::Invert, tr("&Invert"), tr("Turns the colors of what lies below into their opposites"),
        "addInvertAction");
    ZKMenuManager::CreateMenu(ZKMenuManager::Layer, 0, m_pMenu.get());
    connect(window, &MainWindow::ActiveViewChanged, &m_Operations, &LayerOperations::SetView);
    connect(&m_Operations, &LayerOperations::Changed, this, &LayerMenu::UpdateActions);
    connect(&m_Operations, &LayerOperations::LockChanged, this, &LayerMenu::UpdateActions);
    UpdateActions();
}

LayerMenu::~LayerMenu() = default;

void LayerMenu::Add(LXAdjustment::Kind kind, const QString& text, const QString& hint, const char* name)
{
    auto* action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    action->setStatusTip(hint);
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, kind] {
        LXAdjustment adjustment;
        adjustment.kind = kind;
        m_Operations.AddAdjustment(adjustment);
        // The next thing to do is to draw its sliders.
        const QList<QDockWidget*> panels = m_pWindow->GetPanels()->GetPanels();
        for (QDockWidget* panel : panels) {
            if (qobject_cast<AdjustmentPanel*>(panel->widget())) panel->raise();
        }
    });
    m_pMenu->addAction(action);
}

void LayerMenu::UpdateActions()
{
    for (QAction* action : m_pMenu->actions())
        action->setEnabled(m_Operations.CanAdd());
}
