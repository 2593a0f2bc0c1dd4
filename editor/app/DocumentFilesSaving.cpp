// The part of DocumentFiles that writes.

#include "app/DocumentFiles.h"
#include "app/MainWindow.h"
#include "app/PictureLosses.h"
#include "app/SaveDialog.h"
#include "app/WaitedWork.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "formats/DocumentFile.h"
#include "formats/OraFile.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "resource/LXResource.h"

#include <QDir>
#include <QFileInfo>
#include <QPointer>
#include <QStatusBar>

namespace {
const QLatin1String FolderKey("Editor/Folder");
constexpr int ExportedTime = 4000; // ms

/// Puts down whatever floats above the pixels, so that what is read is all of the picture.
void LandFloatingPieces(LXDocumentInterface* document, LexoUndoStack* history)
{
    const int layers = document->GetModel()->rowCount();
    for (int row = 0; row < layers; ++row) {
        const uint id = static_cast<uint>(row) + 1;
        emit document->AboutRequesAdditionalLayer(id);
        emit document->AboutRequesAdditionalMask(id);
    }
    if (history) history->commit();
}

/// Its name without the ending of a picture, and with another one.
QString WithEnding(const QString& path, const QString& ending)
{
    const bool hasEnding =
        OraFile::IsNameOf(path) || PictureFile::FormatOfName(path) != PictureFile::Format::Unknown;
    const QFileInfo file(path);
    const QString name = hasEnding ? file.completeBaseName() : file.fileName();
    return QDir(file.path()).filePath(name + '.' + ending);
}
} // namespace

bool DocumentFiles::Save(LXDocumentInterface* document)
{
    if (!document || IsBusy(document)) return false;

    const QString path = GetPath(document);
    if (OraFile::IsNameOf(path)) return SaveOwn(document, path);
    const PictureFile::Format format = PictureFile::FormatOfName(path);
    return PictureFile::CanWrite(format) && FitsInto(document, format) ? SaveTo(document, path)
                                                                       : SaveAs(document);
}

bool DocumentFiles::SaveAs(LXDocumentInterface* saved)
{
    if (!saved || IsBusy(saved)) return false;

    const QPointer<LXDocumentInterface> document = saved;
    const bool fitsFlat = FitsInto(document, PictureFile::Format::Png);
    const bool isFlat = fitsFlat && PictureFile::CanWrite(PictureFile::FormatOfName(GetPath(document)));
    const QString suggestion = isFlat ? GetPath(document) : SuggestedPath(document, OraFile::Ending());
    const QString path =
        SaveDialog::Ask(m_pWindow, {tr("Save as"), suggestion,
                                    fitsFlat ? DocumentFile::SaveFilter() : DocumentFile::OwnFilter()});
    return !path.isEmpty() && IsOpen(document) && SaveTo(document, path);
}

bool DocumentFiles::SaveTo(LXDocumentInterface* document, const QString& path)
{
    if (!document || IsBusy(document)) return false;
    if (OraFile::IsNameOf(path)) return SaveOwn(document, path);

    const PictureFile::Format format = PictureFile::FormatOfName(path);
    if (!PictureFile::CanWrite(format)) return TellUnknownEnding(path);
    return FitsInto(document, format) ? SaveFlat(document, path) : ExportTo(document, path);
}

bool DocumentFiles::SaveOwn(LXDocumentInterface* saved, const QString& path)
{
    LandFloatingPieces(saved, HistoryOf(saved));
    const QPointer<LXDocumentInterface> document = saved;
    const OraContent content = OraFile::TakeContent(document, SelectedRows(document));
    PictureFile::Outcome outcome;
    WaitedWork::Run(m_pWindow, tr("Saving “%1”…").arg(QFileInfo(path).fileName()), true,
                    [&](const FileProgress& progress) { outcome = OraFile::Write(path, content, progress); });
    if (!TellFailure(outcome)) return false;
    MarkSaved(document, path);
    return true;
}

bool DocumentFiles::SaveFlat(LXDocumentInterface* saved, const QString& path)
{
    LandFloatingPieces(saved, HistoryOf(saved));
    const QPointer<LXDocumentInterface> document = saved;
    if (!WriteFlat(path, PictureFile::TakePicture(document))) return false;
    MarkSaved(document, path);
    return true;
}

bool DocumentFiles::Export(LXDocumentInterface* exported)
{
    if (!exported || IsBusy(exported)) return false;

    const QPointer<LXDocumentInterface> document = exported;
    QString suggestion = m_Records.value(document).exportPath;
    if (suggestion.isEmpty()) {
        const QString path = GetPath(document);
        const bool isFlat = PictureFile::CanWrite(PictureFile::FormatOfName(path));
        suggestion = isFlat ? path : SuggestedPath(document, QStringLiteral("png"));
    }
    const QString path = SaveDialog::Ask(m_pWindow, {tr("Export"), suggestion, PictureFile::SaveFilter()});
    return !path.isEmpty() && IsOpen(document) && ExportTo(document, path);
}

bool DocumentFiles::ExportTo(LXDocumentInterface* exported, const QString& path)
{
    if (!exported || IsBusy(exported)) return false;

    const PictureFile::Format format = PictureFile::FormatOfName(path);
    if (!PictureFile::CanWrite(format)) return TellUnknownEnding(path);
    LandFloatingPieces(exported, HistoryOf(exported));
    const QPointer<LXDocumentInterface> document = exported;
    const Picture picture = PictureFile::TakePicture(document);
    if (!AcceptsLosses(document, PictureLosses::OfContent(document, picture, format),
                       PictureLosses::OfNotes(document, picture, format) +
                           PictureLosses::OfAids(document, format))) {
        return false;
    }
    if (!WriteFlat(path, picture)) return false;
    if (IsOpen(document)) m_Records[document].exportPath = path;
    m_pWindow->statusBar()->showMessage(tr("Exported to “%1”").arg(QDir::toNativeSeparators(path)),
                                        ExportedTime);
    return true;
}

bool DocumentFiles::WriteFlat(const QString& path, const Picture& picture)
{
    PictureFile::Outcome outcome;
    WaitedWork::Run(m_pWindow, tr("Saving “%1”…").arg(QFileInfo(path).fileName()), true,
                    [&](const FileProgress& progress) {
                        outcome = PictureFile::WritePicture(path, PictureFile::FormatOfName(path), picture,
                                                            {}, progress);
                    });
    return TellFailure(outcome);
}

void DocumentFiles::MarkSaved(LXDocumentInterface* document, const QString& path)
{
    const QFileInfo file(path);
    if (IsOpen(document)) {
        m_Records[document].path = file.canonicalFilePath();
        document->SetDocumentName(file.fileName());
        document->SetDocumentState(0);
        if (LexoUndoStack* history = HistoryOf(document)) history->setClean();
    }
    ZKApplication::SetUserValue(FolderKey, file.absolutePath());
    emit FileUsed(file.canonicalFilePath());
}

/// Beside the document's file, or where the last file was; with its name.
QString DocumentFiles::SuggestedPath(const LXDocumentInterface* document, const QString& ending) const
{
    const QString path = GetPath(document);
    if (!path.isEmpty()) return WithEnding(path, ending);
    const QDir folder(ZKApplication::GetUserValue(FolderKey, QDir::homePath()).toString());
    return WithEnding(folder.filePath(document->GetDocumentName()), ending);
}

bool DocumentFiles::FitsInto(const LXDocumentInterface* document, PictureFile::Format format) const
{
    return PictureLosses::OfContent(document, PictureFile::TakePicture(document), format).isEmpty();
}

bool DocumentFiles::AcceptsLosses(const LXDocumentInterface* document, const QStringList& content,
                                  const QStringList& others)
{
    // What leaves the pixels as they are is worth a line, not a question of its own.
    const QString losses = content.isEmpty() ? QString() : (content + others).join('\n');
    if (losses.isEmpty() || losses == m_Records.value(document).acceptedLosses) return true;

    const QPointer<const LXDocumentInterface> asked = document;

    const LXMessageBox::Button answer = LXMessageBox::Warning(
        m_pWindow, LXResource::GetData(LXResource::ProductName).toString(),
        tr("%1\n\nThe picture here keeps all of it; only the copy goes without. Write the copy?").arg(losses),
        LXMessageBox::Save | LXMessageBox::Cancel, LXMessageBox::Save);
    if (answer != LXMessageBox::Save) return false;

    if (IsOpen(asked)) m_Records[asked].acceptedLosses = losses;
    return true;
}

bool DocumentFiles::TellUnknownEnding(const QString& path)
{
    Tell(tr("“%1” was not saved, since its ending names no known format. Choose a name that ends in %2.")
             .arg(QDir::toNativeSeparators(path), QStringLiteral(".ora")));
    return false;
}

bool DocumentFiles::TellFailure(const PictureFile::Outcome& outcome)
{
    if (!outcome.IsOk() && outcome.error != PictureFile::Error::Cancelled) Tell(outcome.message);
    return outcome.IsOk();
}
