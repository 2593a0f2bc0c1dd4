#pragma once

#include "scripting/ScriptObject.h"

#include <QString>

/// `widgets`: finding widgets of the program.
class ScriptWidgets : public ScriptObject
{
    Q_OBJECT
    /// The widget that gets the keys; null for none.
    Q_PROPERTY(QJSValue focused READ GetFocused)
    /// The window that blocks the others; null for none.
    Q_PROPERTY(QJSValue modal READ GetModal)

public:
    ScriptWidgets(ScriptContext& context, QObject* parent);

    QJSValue GetFocused() const;
    QJSValue GetModal() const;

    Q_INVOKABLE QJSValue find(const QString& path) const;
    /// Hidden ones too, those on the screen first.
    Q_INVOKABLE QJSValue findAll(const QString& path) const;
    /// Whether one that matches is on the screen.
    Q_INVOKABLE bool shows(const QString& path) const;
    /// All windows with everything in them, a line for each widget.
    Q_INVOKABLE QString tree() const;

private:
    QJSValue HandWidget(QWidget* widget) const;
};
