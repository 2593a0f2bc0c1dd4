#include "scripting/ScriptMenus.h"

#include "scripting/ScriptHost.h"
#include "scripting/ScriptMenuEntry.h"
#include "scripting/WidgetReading.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {
/// A menu may be filled only when it opens.
void Prepare(QMenu* menu)
{
    emit menu->aboutToShow();
}

QString Plain(const QString& text)
{
    return WidgetReading::WithoutMnemonic(text).replace(QStringLiteral("..."), QStringLiteral("…"));
}
} // namespace

ScriptMenus::ScriptMenus(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QList<ScriptMenus::Found> ScriptMenus::Collect() const
{
    QList<Found> found;
    const std::function<void(const QList<QAction*>&, const QString&)> collect =
        [&](const QList<QAction*>& actions, const QString& prefix) {
            for (QAction* action : actions) {
                if (action->isSeparator() || !action->isVisible()) continue;
                const QString path = prefix + Plain(action->text());
                found.append({action, path});
                if (!action->menu()) continue;
                Prepare(action->menu());
                collect(action->menu()->actions(), path + '/');
            }
        };
    collect(Context().GetHost().GetWindow()->menuBar()->actions(), QString());
    return found;
}

ScriptMenus::Found ScriptMenus::FindEntry(const QString& path) const
{
    for (const Found& entry : Collect()) {
        if (entry.path == Plain(path)) return entry;
    }
    return {};
}

QJSValue ScriptMenus::GetAll() const
{
    return Call([this] {
        const QList<Found> found = Collect();
        QJSValue all = Context().GetEngine().newArray(static_cast<uint>(found.size()));
        for (int i = 0; i < found.size(); ++i) {
            auto* entry = new ScriptMenuEntry(Context(), found[i].action, found[i].path);
            all.setProperty(static_cast<quint32>(i), Hand(entry));
        }
        return all;
    });
}

QJSValue ScriptMenus::find(const QString& path) const
{
    return Call([&] {
        const Found found = FindEntry(path);
        if (!found.action) throw ScriptError(QStringLiteral("The menus have no entry \"%1\".").arg(path));
        return Hand(new ScriptMenuEntry(Context(), found.action, found.path));
    });
}

bool ScriptMenus::has(const QString& path) const
{
    return Call([&] { return FindEntry(path).action != nullptr; });
}

void ScriptMenus::trigger(const QString& path)
{
    Call([&] {
        const Found found = FindEntry(path);
        if (!found.action) throw ScriptError(QStringLiteral("The menus have no entry \"%1\".").arg(path));
        ScriptMenuEntry(Context(), found.action, found.path).trigger();
    });
}
