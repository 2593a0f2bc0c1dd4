#pragma once

#include "scripting/ScriptObject.h"

#include <QString>
#include <QStringList>

class ZKActivateAction;

/// `tools`: which tool is chosen, and choosing one.
class ScriptTools : public ScriptObject
{
    Q_OBJECT
    /// The registered names of all tools.
    Q_PROPERTY(QStringList names READ GetNames)
    /// The chosen tool; empty for none.
    Q_PROPERTY(QString active READ GetActive)
    /// The tool that runs: the chosen one, or another for a moment.
    Q_PROPERTY(QString running READ GetRunning)
    /// The cursor over the active document: `{shape}`, or `{theme, x, y}` with the hot spot.
    Q_PROPERTY(QJSValue cursor READ GetCursor)
    /// The tool tips of the tool box, from the top.
    Q_PROPERTY(QStringList box READ GetBox)

public:
    ScriptTools(ScriptContext& context, QObject* parent);

    QStringList GetNames() const;
    QString GetActive() const;
    QString GetRunning() const;
    QJSValue GetCursor() const;
    QStringList GetBox() const;

    /// By its registered name; "" chooses no tool. False when the present tool refuses to go.
    Q_INVOKABLE bool activate(const QString& name);
    /// Clicks a button of the tool box, 0 being the topmost.
    Q_INVOKABLE void activateAt(const QJSValue& position);
    /// Presses the tool's key.
    Q_INVOKABLE void activateByKey(const QString& key);

private:
    QString NameOf(const ZKActivateAction* action) const;
    ZKActivateAction* RequireAction(const QString& name) const;
};
