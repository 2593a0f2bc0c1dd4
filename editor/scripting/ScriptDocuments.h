#pragma once

#include "scripting/ScriptObject.h"

/// `documents`: opening, making and finding documents.
class ScriptDocuments : public ScriptObject
{
    Q_OBJECT
    /// The document of the active window; null without one.
    Q_PROPERTY(QJSValue active READ GetActive)
    /// All open documents, in the order of opening.
    Q_PROPERTY(QJSValue all READ GetAll)
    Q_PROPERTY(int count READ GetCount)

public:
    ScriptDocuments(ScriptContext& context, QObject* parent);

    QJSValue GetActive() const;
    QJSValue GetAll() const;
    int GetCount() const;

    /// A file that is open already comes to the front.
    Q_INVOKABLE QJSValue open(const QString& path);
    /// @param options  `{dpi, background}`
    Q_INVOKABLE QJSValue create(const QJSValue& width, const QJSValue& height,
                                const QJSValue& options = QJSValue());

private:
    QJSValue HandDocument(LXDocumentInterface* document) const;
};
