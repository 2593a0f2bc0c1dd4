#include "scripting/ScriptMenuEntry.h"

#include "scripting/WidgetReading.h"

#include <QAction>
#include <QApplication>

ScriptMenuEntry::ScriptMenuEntry(ScriptContext& context, QAction* action, const QString& path)
    : ScriptObject(context, nullptr), m_pAction(action), m_Path(path)
{}

QAction* ScriptMenuEntry::Require() const
{
    if (!m_pAction) throw ScriptError(QStringLiteral("The entry \"%1\" is no longer there.").arg(m_Path));
    return m_pAction;
}

QString ScriptMenuEntry::GetText() const
{
    return Call([this] { return WidgetReading::WithoutMnemonic(Require()->text()); });
}

bool ScriptMenuEntry::IsEnabled() const
{
    return Call([this] { return Require()->isEnabled(); });
}

bool ScriptMenuEntry::IsVisible() const
{
    return Call([this] { return Require()->isVisible(); });
}

bool ScriptMenuEntry::IsCheckable() const
{
    return Call([this] { return Require()->isCheckable(); });
}

bool ScriptMenuEntry::IsChecked() const
{
    return Call([this] { return Require()->isChecked(); });
}

QString ScriptMenuEntry::GetShortcut() const
{
    return Call([this] { return Require()->shortcut().toString(QKeySequence::PortableText); });
}

QString ScriptMenuEntry::GetHint() const
{
    return Call([this] { return Require()->statusTip(); });
}

bool ScriptMenuEntry::HasMenu() const
{
    return Call([this] { return Require()->menu() != nullptr; });
}

void ScriptMenuEntry::trigger()
{
    Call([this] {
        QAction* action = Require();
        if (!action->isVisible()) throw ScriptError(QStringLiteral("\"%1\" is hidden.").arg(m_Path));
        if (!action->isEnabled()) throw ScriptError(QStringLiteral("\"%1\" is disabled.").arg(m_Path));
        if (action->menu()) throw ScriptError(QStringLiteral("\"%1\" only opens a menu.").arg(m_Path));
        if (const QWidget* modal = QApplication::activeModalWidget()) {
            throw ScriptError(QStringLiteral("The menus are blocked by \"%1\".").arg(modal->windowTitle()));
        }
        action->trigger();
    });
}
