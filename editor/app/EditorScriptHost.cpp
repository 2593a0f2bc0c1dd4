#include "app/EditorScriptHost.h"

#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/MainWindow.h"
#include "gui/LXMdiArea_p.h"
#include "plugincore/PluginLoader.h"

EditorScriptHost::EditorScriptHost(Editor& editor) : m_Editor(editor) {}

QMainWindow* EditorScriptHost::GetWindow() const
{
    return m_Editor.GetWindow();
}

ZKDocumentView* EditorScriptHost::GetActiveView() const
{
    return m_Editor.GetWindow()->GetActiveView();
}

LXDocumentInterface* EditorScriptHost::GetActiveDocument() const
{
    return m_Editor.GetWindow()->GetActiveDocument();
}

QList<ZKPlugin*> EditorScriptHost::GetPlugins() const
{
    return m_Editor.GetPlugin()->GetPlugins();
}

LXDocumentInterface* EditorScriptHost::New(const QSize& size, const QColor& background)
{
    return m_Editor.GetFiles()->New(size, background);
}

LXDocumentInterface* EditorScriptHost::Open(const QString& path)
{
    return m_Editor.GetFiles()->Open(path);
}

bool EditorScriptHost::Save(LXDocumentInterface* document)
{
    return m_Editor.GetFiles()->Save(document);
}

bool EditorScriptHost::SaveTo(LXDocumentInterface* document, const QString& path)
{
    return m_Editor.GetFiles()->SaveTo(document, path);
}

QString EditorScriptHost::GetPath(const LXDocumentInterface* document) const
{
    return m_Editor.GetFiles()->GetPath(document);
}

bool EditorScriptHost::Close(LXDocumentInterface* document)
{
    return m_Editor.GetFiles()->Close(document);
}

void EditorScriptHost::CloseUnasked(LXDocumentInterface* document)
{
    auto* area = LXMdiAreaPrivate::Get(m_Editor.GetWindow()->GetDocumentArea());
    if (LXMdiSubWindow* window = area->FindWindow(document)) area->Close(window);
}
