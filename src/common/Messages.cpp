#include "common/Messages.h"

#include "gui/LXMdiArea.h"
#include "guicore/LXMessageBox.h"

#include <QCoreApplication>
#include <QMainWindow>

void Messages::ShowWarning(QWidget* parent, const QString& text)
{
    LXMessageBox::Warning(parent, QCoreApplication::translate("Messages", "Zenkari"), text,
                          LXMessageBox::Close, LXMessageBox::Close);
}

void Messages::ShowOperationError(const QString& text)
{
    LXMessageBox::Critical(LXMdiArea::MainWindow(),
                           QCoreApplication::translate("Messages", "Operation error"), text,
                           LXMessageBox::Close, LXMessageBox::Close);
}
