#pragma once

#include "EditorExport.h"

#include <QList>
#include <QString>

class LXDocumentInterface;
class QColor;
class QMainWindow;
class QSize;
class ZKDocumentView;
class ZKPlugin;

/// What a script asks of the application, which stands above it and hands this down. The calls do what the
/// menus do, with the same questions and message boxes. Main thread only.
class ZK_EDITOR_EXPORT ScriptHost
{
public:
    ScriptHost() = default;
    virtual ~ScriptHost();
    Q_DISABLE_COPY(ScriptHost)

    /// Never null while a script runs.
    virtual QMainWindow* GetWindow() const = 0;
    /// Of the active document window; null without one.
    virtual ZKDocumentView* GetActiveView() const = 0;
    virtual LXDocumentInterface* GetActiveDocument() const = 0;

    /// The units of the plug-in.
    virtual QList<ZKPlugin*> GetPlugins() const = 0;

    /// Null, after a message, when there is no memory for it.
    virtual LXDocumentInterface* New(const QSize& size, const QColor& background) = 0;
    /// Null when the file could not be read (told) or the question was cancelled.
    virtual LXDocumentInterface* Open(const QString& path) = 0;
    /// Asks for a path when the document has none. False when cancelled or failed.
    virtual bool Save(LXDocumentInterface* document) = 0;
    /// From then on it is the document's file; the ending chooses the format.
    virtual bool SaveTo(LXDocumentInterface* document, const QString& path) = 0;
    /// The document's file; empty when it has none.
    virtual QString GetPath(const LXDocumentInterface* document) const = 0;
    /// As the close button of its window does. False when somebody refused.
    virtual bool Close(LXDocumentInterface* document) = 0;
    /// Without asking anybody, as a crash of its window would.
    virtual void CloseUnasked(LXDocumentInterface* document) = 0;
};
