#include "app/PreferencesUse.h"

#include "app/MainWindow.h"
#include "app/PreferencesDialog.h"
#include "gui/LXMdiArea.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXTileManager.h"
#include "resource/LXResource.h"

namespace {
constexpr qint64 Megabyte = 1024 * 1024;

/// What the store of tiles takes when nobody says anything.
qint64 AutomaticMemory()
{
    static const qint64 atFirst = LXTileManager::Instance().MemoryBudget();
    return atFirst;
}
} // namespace

void PreferencesUse::ApplyLook(const QString& resources)
{
    Theme::Apply(Preferences::Read().look, resources);
}

PreferencesUse::PreferencesUse(MainWindow* window, const QString& resources)
    : QObject(window), m_pWindow(window), m_Resources(resources)
{
    // A document that is opened becomes the active one first of all.
    connect(window, &MainWindow::ActiveViewChanged, this, &PreferencesUse::LimitHistory);
    Use(Preferences::Read());
}

void PreferencesUse::AskAndUse()
{
    PreferencesDialog dialog(Preferences::Read(), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted) return;

    const Preferences values = dialog.GetValues();
    values.Write();
    Use(values);
}

void PreferencesUse::Use(const Preferences& values)
{
    const qint64 automatic = AutomaticMemory();
    LXTileManager::Instance().SetMemoryBudget(values.memoryMegabytes > 0 ? values.memoryMegabytes * Megabyte
                                                                         : automatic);
    m_UndoSteps = values.undoSteps;
    m_UndoBytes = values.undoMegabytes * Megabyte;
    for (ZKDocumentView* view : m_pWindow->GetDocumentArea()->findChildren<ZKDocumentView*>())
        LimitHistory(view);
    if (values.look != Theme::Current()) Theme::Apply(values.look, m_Resources);
    const QString message = values.colors.Use();
    if (!message.isEmpty()) Tell(message);
}

void PreferencesUse::Tell(const QString& message)
{
    // At the start there is no window yet to show it over.
    QMetaObject::invokeMethod(
        this,
        [this, message] {
            LXMessageBox::Warning(m_pWindow, LXResource::GetData(LXResource::ProductName).toString(),
                                  message);
        },
        Qt::QueuedConnection);
}

void PreferencesUse::LimitHistory(ZKDocumentView* view) const
{
    if (!view) return;

    view->GetHistory()->setStepLimit(m_UndoSteps);
    view->GetHistory()->setMemoryLimit(m_UndoBytes);
}
