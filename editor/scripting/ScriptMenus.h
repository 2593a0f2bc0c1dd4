#pragma once

#include "scripting/ScriptObject.h"

#include <QString>

class QAction;

/// `menus`: the entries of the menu bar, by the texts that lead to them: "File/Save As…". Three dots may
/// stand for "…".
class ScriptMenus : public ScriptObject
{
    Q_OBJECT
    /// Every entry of every menu, as a person would find them now.
    Q_PROPERTY(QJSValue all READ GetAll)

public:
    ScriptMenus(ScriptContext& context, QObject* parent);

    QJSValue GetAll() const;

    /// Fails when there is no such entry.
    Q_INVOKABLE QJSValue find(const QString& path) const;
    Q_INVOKABLE bool has(const QString& path) const;
    /// What a click on the entry does.
    Q_INVOKABLE void trigger(const QString& path);

private:
    struct Found
    {
        QAction* action = nullptr;
        QString path;
    };

    QList<Found> Collect() const;
    Found FindEntry(const QString& path) const;
};
