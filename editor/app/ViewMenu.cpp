#include "app/ViewMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "app/StatusReadout.h"
#include "app/ZoomStops.h"
#include "core/MenuPlacement.h"
#include "core/ZKApplication.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentView_p.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace {
const QLatin1String TintKey("Editor/TintUnselected");
}

ViewMenu::ViewMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    AddZoomActions();
    BuildZoomMenu();

    AddTintAction();
    AddFullScreenAction();
    connect(&MenuPlacement::Instance(), &MenuPlacement::Added, this, &ViewMenu::StepAsideFor);
    connect(window, &MainWindow::ActiveViewChanged, this, &ViewMenu::Follow);
    Follow(window->GetActiveView());
}

void ViewMenu::AddTintAction()
{
    m_pTint = AddMenuAction(this, {ZKMenuManager::View,
                                   9,
                                   tr("&Tint Unselected Parts"),
                                   tr("Puts a red film over what is not selected"),
                                   {}});
    m_pTint->setObjectName(QStringLiteral("tintUnselectedAction"));
    m_pTint->setCheckable(true);
    m_pTint->setChecked(ZKApplication::GetUserValue(TintKey, false).toBool());
    connect(m_pTint, &QAction::triggered, this, [this](bool shown) {
        ZKApplication::SetUserValue(TintKey, shown);
        Follow(m_pWindow->GetActiveView());
    });
}

void ViewMenu::AddFullScreenAction()
{
    AddMenuSeparator(this, ZKMenuManager::View, 15);
    QAction* fullScreen = AddMenuAction(this, {ZKMenuManager::View,
                                               16,
                                               tr("F&ull Screen"),
                                               tr("Uses the whole screen"),
                                               {QKeySequence(Qt::Key_F11)}});
    fullScreen->setObjectName(QStringLiteral("fullScreenAction"));
    fullScreen->setCheckable(true);
    fullScreen->setChecked(m_pWindow->isFullScreen());
    connect(fullScreen, &QAction::triggered, m_pWindow, &MainWindow::SetFullScreen);
    connect(m_pWindow, &MainWindow::FullScreenChanged, fullScreen, &QAction::setChecked);
}

void ViewMenu::AddZoomActions()
{
    const auto add = [this](int position, const QString& text, const QString& hint,
                            const QList<QKeySequence>& keys, const QString& icon = QString()) {
        return AddMenuAction(this, {ZKMenuManager::View, position, text, hint, keys, icon});
    };
    QAction* zoomIn = add(0, tr("Zoom &In"), tr("Shows the picture larger"),
                          {Qt::CTRL + Qt::Key_Plus, Qt::CTRL + Qt::Key_Equal}, "theme:zoom_in.png");
    QAction* zoomOut = add(1, tr("Zoom &Out"), tr("Shows more of the picture"), {Qt::CTRL + Qt::Key_Minus},
                           "theme:zoom_out.png");
    QAction* actual = add(2, tr("&100 %"), tr("Shows one pixel as one pixel"), {Qt::CTRL + Qt::Key_1});
    QAction* fit = add(3, tr("&Fit in Window"), tr("Shows the whole picture"), {Qt::CTRL + Qt::Key_0},
                       "theme:zoom_fit.png");
    m_ZoomActions = {zoomIn, zoomOut, actual, fit};

    connect(zoomIn, &QAction::triggered, this, [this] { ZoomStep(1); });
    connect(zoomOut, &QAction::triggered, this, [this] { ZoomStep(-1); });
    connect(actual, &QAction::triggered, this, [this] { ZoomTo(1.0); });
    connect(fit, &QAction::triggered, this, [this] {
        if (ZKDocumentView* view = m_pWindow->GetActiveView()) view->FitSizeToViewPort();
    });
}

void ViewMenu::BuildZoomMenu()
{
    auto* menu = new QMenu(m_pWindow);
    menu->addActions(m_ZoomActions);
    menu->addSeparator();
    for (const double scale : {0.25, 0.5, 2.0, 4.0, 8.0, 16.0}) {
        QAction* action = menu->addAction(tr("%1 %").arg(scale * 100));
        connect(action, &QAction::triggered, this, [this, scale] { ZoomTo(scale); });
    }
    m_pWindow->GetStatus()->SetZoomMenu(menu);
}

void ViewMenu::StepAsideFor(QAction* other)
{
    // It may get its keys later.
    connect(other, &QAction::changed, this, [this, other] { GiveKeysTo(other); });
    GiveKeysTo(other);
}

void ViewMenu::GiveKeysTo(const QAction* other)
{
    const QList<QKeySequence> keys = other->shortcuts();
    for (QAction* own : qAsConst(m_ZoomActions)) {
        const QList<QKeySequence> ownKeys = own->shortcuts();
        const bool isShared =
            own != other &&
            std::any_of(ownKeys.begin(), ownKeys.end(), [&](const auto& key) { return keys.contains(key); });
        if (!isShared) continue;
        MenuPlacement::Instance().Remove(own);
        own->setShortcuts(QList<QKeySequence>());
    }
}

void ViewMenu::ZoomTo(double scale)
{
    ZKDocumentView* view = m_pWindow->GetActiveView();
    if (view) view->Scale(scale / view->GetScale(), view->viewport()->rect().center());
}

void ViewMenu::ZoomStep(int direction)
{
    if (ZKDocumentView* view = m_pWindow->GetActiveView()) ZoomTo(NextZoomStop(view->GetScale(), direction));
}

void ViewMenu::Follow(ZKDocumentView* view)
{
    for (QAction* action : m_ZoomActions)
        action->setEnabled(view != nullptr);
    if (view) ZKDocumentViewPrivate::Get(view)->ShowSelectionTint(m_pTint->isChecked());
}
