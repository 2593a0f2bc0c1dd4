#include "scripting/ScriptWidgets.h"

#include "scripting/ScriptWidget.h"
#include "scripting/WidgetSearch.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

ScriptWidgets::ScriptWidgets(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QJSValue ScriptWidgets::HandWidget(QWidget* widget) const
{
    if (!widget) return QJSValue(QJSValue::NullValue);
    return Hand(new ScriptWidget(Context(), widget));
}

QJSValue ScriptWidgets::GetFocused() const
{
    return HandWidget(QApplication::focusWidget());
}

QJSValue ScriptWidgets::GetModal() const
{
    return HandWidget(QApplication::activeModalWidget());
}

QJSValue ScriptWidgets::find(const QString& path) const
{
    return Call([&] { return HandWidget(WidgetSearch::Find(path)); });
}

QJSValue ScriptWidgets::findAll(const QString& path) const
{
    return Call([&] {
        const QList<QWidget*> found = WidgetSearch::FindAll(path);
        QJSValue all = Context().GetEngine().newArray(static_cast<uint>(found.size()));
        for (int i = 0; i < found.size(); ++i)
            all.setProperty(static_cast<quint32>(i), HandWidget(found[i]));
        return all;
    });
}

bool ScriptWidgets::shows(const QString& path) const
{
    return Call([&] {
        const QList<QWidget*> found = WidgetSearch::FindAll(path);
        return std::any_of(found.begin(), found.end(),
                           [](const QWidget* widget) { return widget->isVisible(); });
    });
}

QString ScriptWidgets::tree() const
{
    return Call([] { return WidgetSearch::Tree(nullptr); });
}
