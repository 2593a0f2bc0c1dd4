#include "scripting/ScriptTools.h"

#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "gui/LToolBoxButton.h"
#include "gui/LToolBoxWidget.h"
#include "gui/ZKDocumentView.h"
#include "plugincore/ZKPlugin.h"
#include "scripting/CursorWords.h"
#include "scripting/InputDriver.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptHost.h"

#include <algorithm>

namespace {
/// A tool keeps its action somewhere among its children.
ZKActivateAction* ActionOf(const ZKPlugin* unit)
{
    const auto* tool = unit->property("tool").value<QObject*>();
    return tool ? tool->findChild<ZKActivateAction*>() : nullptr;
}

/// As they stand: from the top, and from the left where there are two columns.
QList<LToolBoxButton*> Buttons()
{
    QList<LToolBoxButton*> buttons =
        LToolBoxWidget::GetInstance()->findChildren<LToolBoxButton*>(QString(), Qt::FindDirectChildrenOnly);
    std::sort(buttons.begin(), buttons.end(), [](const LToolBoxButton* a, const LToolBoxButton* b) {
        return std::make_pair(a->y(), a->x()) < std::make_pair(b->y(), b->x());
    });
    return buttons;
}
} // namespace

ScriptTools::ScriptTools(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QString ScriptTools::NameOf(const ZKActivateAction* action) const
{
    if (!action) return {};
    for (ZKPlugin* unit : Context().GetHost().GetPlugins()) {
        if (ActionOf(unit) == action) return unit->GetName();
    }
    return {};
}

ZKActivateAction* ScriptTools::RequireAction(const QString& name) const
{
    for (ZKPlugin* unit : Context().GetHost().GetPlugins()) {
        ZKActivateAction* action = ActionOf(unit);
        if (action && unit->GetName() == name) return action;
    }
    throw ScriptError(QStringLiteral("There is no tool \"%1\"; there are: %2.")
                          .arg(name, GetNames().join(QStringLiteral(", "))));
}

QStringList ScriptTools::GetNames() const
{
    QStringList names;
    for (ZKPlugin* unit : Context().GetHost().GetPlugins()) {
        if (ActionOf(unit)) names.append(unit->GetName());
    }
    return names;
}

QString ScriptTools::GetActive() const
{
    return NameOf(ZKToolGroupManager::GetExplicitAction());
}

QString ScriptTools::GetRunning() const
{
    return NameOf(ZKToolGroupManager::GetImplicitAction());
}

QJSValue ScriptTools::GetCursor() const
{
    return Call(
        [this] { return CursorWords::ToValue(Context().GetEngine(), RequireView()->viewport()->cursor()); });
}

QStringList ScriptTools::GetBox() const
{
    QStringList tips;
    for (const LToolBoxButton* button : Buttons())
        tips.append(button->toolTip());
    return tips;
}

bool ScriptTools::activate(const QString& name)
{
    return Call([&] { return ZKToolGroupManager::Activate(name.isEmpty() ? nullptr : RequireAction(name)); });
}

void ScriptTools::activateAt(const QJSValue& position)
{
    Call([&] {
        const QList<LToolBoxButton*> buttons = Buttons();
        LToolBoxButton* button =
            buttons[ScriptArguments::ToInteger(position, "position", 0, buttons.size() - 1)];
        if (!button->isVisible()) throw ScriptError(QStringLiteral("The button is hidden."));
        if (!button->isEnabled()) throw ScriptError(QStringLiteral("The button is disabled."));
        Context().GetInput().Click(button);
    });
}

void ScriptTools::activateByKey(const QString& key)
{
    Call([&] {
        const ScriptArguments::Stroke stroke = ScriptArguments::ToStroke(key);
        Context().GetInput().Key(stroke.key, stroke.modifiers);
    });
}
