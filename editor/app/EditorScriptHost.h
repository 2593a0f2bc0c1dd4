#pragma once

#include "EditorExport.h"

#include "scripting/ScriptHost.h"

class Editor;

/// Gives scripts the running editor.
class ZK_EDITOR_EXPORT EditorScriptHost : public ScriptHost
{
public:
    /// @param editor  started; outlives this object
    explicit EditorScriptHost(Editor& editor);

    QMainWindow* GetWindow() const override;
    ZKDocumentView* GetActiveView() const override;
    LXDocumentInterface* GetActiveDocument() const override;
    QList<ZKPlugin*> GetPlugins() const override;
    LXDocumentInterface* New(const QSize& size, const QColor& background) override;
    LXDocumentInterface* Open(const QString& path) override;
    bool Save(LXDocumentInterface* document) override;
    bool SaveTo(LXDocumentInterface* document, const QString& path) override;
    QString GetPath(const LXDocumentInterface* document) const override;
    bool Close(LXDocumentInterface* document) override;
    void CloseUnasked(LXDocumentInterface* document) override;

private:
    Editor& m_Editor;
};
