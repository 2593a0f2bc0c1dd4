#include "scripting/ScriptDocument.h"

#include "document/LXDocumentInterface.h"
#include "formats/PictureFile.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "scripting/ScriptHost.h"

#include <QFileInfo>

namespace {
LXMdiSubWindow* WindowOf(const LXDocumentInterface* document)
{
    return LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->FindWindow(document);
}

QString Absolute(const QString& path)
{
    return QFileInfo(path).absoluteFilePath();
}
} // namespace

ScriptDocument::ScriptDocument(ScriptContext& context, LXDocumentInterface* document)
    : ScriptObject(context, nullptr), m_pDocument(document)
{}

LXDocumentInterface* ScriptDocument::Require() const
{
    if (!m_pDocument) throw ScriptError(QStringLiteral("The document is closed."));
    return m_pDocument;
}

bool ScriptDocument::IsActive() const
{
    return Call([this] { return Require() == Context().GetHost().GetActiveDocument(); });
}

QString ScriptDocument::GetName() const
{
    return Call([this] { return Require()->GetDocumentName(); });
}

QString ScriptDocument::GetPath() const
{
    return Call([this] { return Context().GetHost().GetPath(Require()); });
}

int ScriptDocument::GetWidth() const
{
    return Call([this] { return Require()->GetDocumentSize().width(); });
}

int ScriptDocument::GetHeight() const
{
    return Call([this] { return Require()->GetDocumentSize().height(); });
}

double ScriptDocument::GetDpi() const
{
    return Call([this] { return Require()->GetDPI(); });
}

void ScriptDocument::SetDpi(double dpi)
{
    Call([&] {
        if (!(dpi > 0)) throw ScriptError(QStringLiteral("The resolution has to be above 0."));
        Require()->SetDPI(dpi);
    });
}

bool ScriptDocument::IsLocked() const
{
    return Call([this] { return Require()->GetLockState(); });
}

int ScriptDocument::GetState() const
{
    return Call([this] { return Require()->GetDocumentState(); });
}

bool ScriptDocument::IsModified() const
{
    return Call([this] { return ::IsModified(WindowOf(Require())); });
}

void ScriptDocument::activate()
{
    Call([this] { LXDocumentManager::GetDocumentArea()->setActiveSubWindow(WindowOf(Require())); });
}

bool ScriptDocument::save(const QString& path)
{
    return Call([&] {
        LXDocumentInterface* document = Require();
        if (document->GetLockState()) throw ScriptError(QStringLiteral("The document is being changed."));
        ScriptHost& host = Context().GetHost();
        return path.isEmpty() ? host.Save(document) : host.SaveTo(document, Absolute(path));
    });
}

void ScriptDocument::exportAs(const QString& path)
{
    Call([&] {
        LXDocumentInterface* document = Require();
        if (document->GetLockState()) throw ScriptError(QStringLiteral("The document is being changed."));
        const PictureFile::Format format = PictureFile::FormatOfName(path);
        if (!PictureFile::CanWrite(format)) {
            throw ScriptError(QStringLiteral("The ending of \"%1\" names no flat format.").arg(path));
        }
        if (LexoUndoStack* history = ViewOf(WindowOf(document))->GetHistory()) history->commit();
        const PictureFile::Outcome outcome =
            PictureFile::WritePicture(Absolute(path), format, PictureFile::TakePicture(document));
        if (!outcome.IsOk()) throw ScriptError(outcome.message);
    });
}

bool ScriptDocument::close()
{
    return Call([this] { return Context().GetHost().Close(Require()); });
}
