#include "scripting/ScriptObject.h"

#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "scripting/ScriptHost.h"

#include <QCoreApplication>
#include <QEvent>

namespace {
int g_depth = 0;
int g_callNumber = 0;
} // namespace

ScriptObject::Depth::Depth()
{
    if (g_depth++ == 0) ++g_callNumber;
}

ScriptObject::Depth::~Depth()
{
    if (--g_depth > 0) return;
    ++g_callNumber;
    // Between two acts of a person the event loop deletes what was to be deleted later, such as a document
    // that was closed; a script doesn't go back to the loop before its end.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

int ScriptObject::CallNumber()
{
    return g_callNumber;
}

ZKDocumentView* ScriptObject::RequireView() const
{
    ZKDocumentView* view = m_Context.GetHost().GetActiveView();
    if (!view) throw ScriptError(QStringLiteral("No document is open."));
    return view;
}

LXDocumentInterface* ScriptObject::RequireDocument() const
{
    return RequireView()->GetModel()->GetDocument();
}

QJSValue ScriptObject::Hand(QObject* object) const
{
    QJSEngine& engine = m_Context.GetEngine();
    QJSValue value = engine.newQObject(object);
    const QJSValue objects = engine.globalObject().property(QStringLiteral("Object"));
    objects.property(QStringLiteral("preventExtensions")).call({value});
    return value;
}
