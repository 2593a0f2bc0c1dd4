#pragma once

#include "scripting/ScriptObject.h"

#include <QPointer>
#include <QString>

class QAction;

/// One entry of the menu bar or of a context menu, as a script holds it.
class ScriptMenuEntry : public ScriptObject
{
    Q_OBJECT
    /// The texts from the menu bar down, parted by "/".
    Q_PROPERTY(QString path READ GetPath CONSTANT)
    Q_PROPERTY(QString text READ GetText)
    Q_PROPERTY(bool enabled READ IsEnabled)
    Q_PROPERTY(bool visible READ IsVisible)
    Q_PROPERTY(bool checkable READ IsCheckable)
    Q_PROPERTY(bool checked READ IsChecked)
    /// The first of its keys, such as "Ctrl+Z"; empty for none.
    Q_PROPERTY(QString shortcut READ GetShortcut)
    /// What the status bar tells of it.
    Q_PROPERTY(QString hint READ GetHint)
    /// Whether a menu opens from it.
    Q_PROPERTY(bool hasMenu READ HasMenu)

public:
    ScriptMenuEntry(ScriptContext& context, QAction* action, const QString& path);

    QString GetPath() const { return m_Path; }

    QString GetText() const;
    bool IsEnabled() const;
    bool IsVisible() const;
    bool IsCheckable() const;
    bool IsChecked() const;
    QString GetShortcut() const;
    QString GetHint() const;
    bool HasMenu() const;

    /// What a click on it does. Fails when it is disabled.
    Q_INVOKABLE void trigger();

private:
    QAction* Require() const;

    QPointer<QAction> m_pAction;
    QString m_Path;
};
