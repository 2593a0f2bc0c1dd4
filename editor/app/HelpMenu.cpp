#include "app/HelpMenu.h"

#include "app/AboutDialog.h"
#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "resource/LXResource.h"

#include <QAction>

HelpMenu::HelpMenu(MainWindow* window) : QObject(window)
{
    const QString product = LXResource::GetData(LXResource::ProductName).toString();
    QAction* about = AddMenuAction(this, {ZKMenuManager::Help,
                                          0,
                                          tr("&About %1").arg(product),
                                          tr("Tells the versions of the program and of its libraries"),
                                          {}});
    about->setObjectName(QStringLiteral("aboutAction"));
    connect(about, &QAction::triggered, window, [window] { AboutDialog(window).Exec(); });
}
