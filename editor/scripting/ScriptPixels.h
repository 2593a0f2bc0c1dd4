#pragma once

#include "scripting/ScriptObject.h"

/// `pixels`: what can be read of the active document.
class ScriptPixels : public ScriptObject
{
    Q_OBJECT
    /// What a person sees: all layers together.
    Q_PROPERTY(QJSValue merged READ GetMerged)
    /// How much of each pixel is selected.
    Q_PROPERTY(QJSValue selection READ GetSelection)
    Q_PROPERTY(bool hasSelection READ HasSelection)

public:
    ScriptPixels(ScriptContext& context, QObject* parent);

    QJSValue GetMerged() const;
    QJSValue GetSelection() const;
    bool HasSelection() const;

    Q_INVOKABLE QJSValue layer(const QJSValue& layer) const;
    /// Of the layer's mask.
    Q_INVOKABLE QJSValue mask(const QJSValue& layer) const;
    /// Of a picture file, with its top left at (0, 0).
    Q_INVOKABLE QJSValue file(const QString& path) const;
};
