#include "app/ViewMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "gui/ZKDocumentView.h"

#include <QAction>

#include <algorithm>
#include <array>

namespace {
/// Where the zoom keys stop, as factors; inside the limits of the view.
constexpr std::array<double, 18> ZoomStops{0.05, 0.0625, 0.125, 0.25, 0.33, 0.5, 0.67, 1,  1.5,
                                           2,    3,      4,     6,    8,    12,  16,   24, 40};

/// The next stop above or below; a little tolerance, so that a scale that is a stop is left.
double NextStop(double scale, int direction)
{
    const auto isAbove = [scale](double stop) { return stop > scale * 1.001; };
    const auto isBelow = [scale](double stop) { return stop < scale * 0.999; };
    if (direction > 0) {
        const auto stop = std::find_if(ZoomStops.begin(), ZoomStops.end(), isAbove);
        return stop == ZoomStops.end() ? ZoomStops.back() : *stop;
    }
    const auto stop = std::find_if(ZoomStops.rbegin(), ZoomStops.rend(), isBelow);
    return stop == ZoomStops.rend() ? ZoomStops.front() : *stop;
}
} // namespace

ViewMenu::ViewMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    AddZoomActions();

    AddMenuSeparator(this, ZKMenuManager::View, 10);
    QAction* fullScreen = AddMenuAction(this, {ZKMenuManager::View,
                                               11,
                                               tr("F&ull Screen"),
                                               tr("Uses the whole screen"),
                                               {QKeySequence(Qt::Key_F11)}});
    fullScreen->setCheckable(true);
    connect(fullScreen, &QAction::triggered, window, &MainWindow::SetFullScreen);

    connect(window, &MainWindow::ActiveViewChanged, this, &ViewMenu::UpdateActions);
    UpdateActions();
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

void ViewMenu::ZoomTo(double scale)
{
    ZKDocumentView* view = m_pWindow->GetActiveView();
    if (view) view->Scale(scale / view->GetScale(), view->viewport()->rect().center());
}

void ViewMenu::ZoomStep(int direction)
{
    if (ZKDocumentView* view = m_pWindow->GetActiveView()) ZoomTo(NextStop(view->GetScale(), direction));
}

void ViewMenu::UpdateActions()
{
    for (QAction* action : m_ZoomActions)
        action->setEnabled(m_pWindow->GetActiveView() != nullptr);
}
