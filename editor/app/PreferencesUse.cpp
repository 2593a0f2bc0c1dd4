#include "app/PreferencesUse.h"

#include "app/MainWindow.h"
#include "app/PreferencesDialog.h"
#include "app/ScreenProfile.h"
#include "gui/LXMdiArea.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXTileManager.h"
#include "resource/LXResource.h"

#include <QScreen>

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
    connect(window, &MainWindow::ScreenChanged, this, &PreferencesUse::FollowScreen);
    m_Screen = ScreenProfile::KeyOf(window->screen());
    Use(Preferences::Read(m_Screen));
}

void PreferencesUse::AskAndUse()
{
    PreferencesDialog dialog(Preferences::Read(m_Screen), m_pWindow);
    if (dialog.Exec() != QDialog::Accepted) return;

    const Preferences values = dialog.GetValues();
    values.Write();
    Use(values);
    // While the dialog stood, the window may have gone to another screen than its answer is for.
    if (values.colors.screen != m_Screen) UseColors(ColorPreferences::Read(m_Screen));
}

void PreferencesUse::FollowScreen()
{
    const QString screen = ScreenProfile::KeyOf(m_pWindow->screen());
    if (screen == m_Screen) return;
    m_Screen = screen;
    UseColors(ColorPreferences::Read(screen));
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
    UseColors(values.colors);
}

void PreferencesUse::UseColors(const ColorPreferences& values)
{
    const QString message = values.Use();
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
