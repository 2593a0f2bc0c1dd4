#pragma once

#include "EditorExport.h"

#include <QJSValue>
#include <QObject>
#include <QRandomGenerator>

/// Random numbers for a script, the same ones for the same seed on every machine.
class ZK_EDITOR_EXPORT ScriptRandom : public QObject
{
    Q_OBJECT

public:
    explicit ScriptRandom(int seed);

    /// From 0 up to, but not including, 1.
    Q_INVOKABLE double next();
    /// A whole number from low to high, both included.
    Q_INVOKABLE int integer(int low, int high);
    /// One of the list's items; undefined of an empty list.
    Q_INVOKABLE QJSValue pick(const QJSValue& list);

private:
    QRandomGenerator m_Generator;
};
