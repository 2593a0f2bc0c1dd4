#pragma once

#include "scripting/ScriptObject.h"

/// `view`: how the active document is shown.
class ScriptView : public ScriptObject
{
    Q_OBJECT
    /// Screen pixels for each document pixel. Setting it keeps the middle of the view.
    Q_PROPERTY(double scale READ GetScale WRITE SetScale)
    /// The document point in the middle of the view.
    Q_PROPERTY(QJSValue center READ GetCenter)
    /// The part of the scene that is seen, in document pixels.
    Q_PROPERTY(QJSValue visible READ GetVisible)
    Q_PROPERTY(bool panning READ IsPanning)
    /// The handles that tools have put over the document, a list of SceneHandles::ToValue().
    Q_PROPERTY(QJSValue handles READ GetHandles)

public:
    ScriptView(ScriptContext& context, QObject* parent);

    double GetScale() const;
    void SetScale(double scale);
    QJSValue GetCenter() const;
    QJSValue GetVisible() const;
    bool IsPanning() const;
    QJSValue GetHandles() const;

    /// Shows the whole document.
    Q_INVOKABLE void fit();
    /// Brings a document point to the middle, as far as the view can scroll.
    Q_INVOKABLE void centerOn(const QJSValue& x, const QJSValue& y);
    /// Takes a handle by its middle, with the left button, and lets it go at a document point.
    /// @param options  `{modifiers, steps}`
    Q_INVOKABLE void dragHandle(const QJSValue& index, const QJSValue& x, const QJSValue& y,
                                const QJSValue& options = QJSValue());
};
