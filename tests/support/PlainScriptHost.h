#pragma once

#include "scripting/ScriptHost.h"

#include <QColor>
#include <QMainWindow>
#include <QSize>

/// An application of one empty window, for scripts that need no document.
class PlainScriptHost : public ScriptHost
{
public:
    QMainWindow* GetWindow() const override { return &m_Window; }

    ZKDocumentView* GetActiveView() const override { return nullptr; }

    LXDocumentInterface* GetActiveDocument() const override { return nullptr; }

    QList<ZKPlugin*> GetPlugins() const override { return {}; }

    LXDocumentInterface* New(const QSize&, const QColor&) override { return nullptr; }

    LXDocumentInterface* Open(const QString&) override { return nullptr; }

    bool Save(LXDocumentInterface*) override { return false; }

    bool SaveTo(LXDocumentInterface*, const QString&) override { return false; }

    QString GetPath(const LXDocumentInterface*) const override { return QString(); }

    bool Close(LXDocumentInterface*) override { return false; }

    void CloseUnasked(LXDocumentInterface*) override {}

private:
    mutable QMainWindow m_Window;
};
