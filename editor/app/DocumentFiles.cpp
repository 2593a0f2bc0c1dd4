#include "app/DocumentFiles.h"

#include "app/FormatLimitSettings.h"
#include "app/MainWindow.h"
#include "app/PictureLosses.h"
#include "app/WaitedWork.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "formats/PictureFile.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "resource/LXResource.h"

#include <QColor>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QStatusBar>

namespace {
const QLatin1String FolderKey("Editor/Folder");
constexpr int BusyTime = 4000; // ms

QString Title()
{
    return LXResource::GetData(LXResource::ProductName).toString();
}

QString NewName()
{
    QString name = DocumentFiles::tr("Untitled");
    const auto isTaken = [](const QString& wanted) {
        for (const LXDocumentInterface* document : LXDocumentManager::Instance()->GetDocuments()) {
            if (document->GetDocumentName() == wanted) return true;
        }
        return false;
    };
    if (!isTaken(name)) return name;
    int number = 2;
    while (isTaken(QStringLiteral("%1 %2").arg(name).arg(number)))
        ++number;
    return QStringLiteral("%1 %2").arg(name).arg(number);
}

/// The format of an entry of a file dialog's filter, such as "PNG (*.png)".
PictureFile::Format FormatOfFilter(const QString& filter)
{
    const QRegularExpressionMatch ending = QRegularExpression(QStringLiteral("\\*(\\.\\w+)")).match(filter);
    return PictureFile::FormatOfName(QStringLiteral("x") + ending.captured(1));
}

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
} // namespace

DocumentFiles::DocumentFiles(MainWindow* window) : m_pWindow(window)
{
    LXMdiArea* area = window->GetDocumentArea();
    LXMdiAreaPrivate::Get(area)->SetCloseQuestion(
        [this](LXDocumentInterface* document) { return m_bAllAnswered || AskBeforeClose(document); });
    connect(area, &LXMdiArea::AboutToClose, this,
            [this](LXDocumentInterface* document) { m_Records.remove(document); });
}

LXDocumentInterface* DocumentFiles::New(const QSize& size, const QColor& background)
{
    LXDocumentInterface* document = LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32);
    try {
        LXImage32 image(size.width(), size.height());
        if (background.alpha() > 0) image.Fill(LXRGBA32i(background.rgba()));
        document->SetDocumentSize(size);
        document->AddLayer(tr("Background"), image, QPoint(0, 0));
    } catch (const std::exception& error) {
        LXDocumentFactory::Instance()->Release(document);
        Tell(tr("A picture of %1 × %2 pixels can't be made: %3")
                 .arg(size.width())
                 .arg(size.height())
                 .arg(QString::fromUtf8(error.what())));
        return nullptr;
    }
    document->SetDocumentName(NewName());
    return Show(document, QString());
}

QStringList DocumentFiles::AskForFiles()
{
    const QString folder = ZKApplication::GetUserValue(FolderKey, QDir::homePath()).toString();
    return QFileDialog::getOpenFileNames(m_pWindow, tr("Open"), folder, PictureFile::OpenFilter());
}

LXDocumentInterface* DocumentFiles::Open(const QString& path)
{
    const QFileInfo file(path);
    if (LXDocumentInterface* open = FindOpen(file.canonicalFilePath())) {
        BringToFront(open);
        return open;
    }

    // Read here: the settings belong to the main thread.
    const FormatLimits limits = FormatLimitSettings::Read();
    PictureFile::ReadResult result;
    WaitedWork::Run(m_pWindow, tr("Opening “%1”…").arg(file.fileName()), true,
                    [&](const FileProgress& progress) {
                        result = PictureFile::ReadPicture(file.absoluteFilePath(), limits, progress);
                    });
    if (!result.outcome.IsOk()) {
        if (result.outcome.error != PictureFile::Error::Cancelled) Tell(result.outcome.message);
        return nullptr;
    }
    LXDocumentInterface* document = PictureFile::MakeDocument(result.picture, file.fileName());
    if (!document) {
        Tell(tr("There is not enough memory to open “%1”. Close other pictures and try again.")
                 .arg(file.fileName()));
        return nullptr;
    }
    return Show(document, file.canonicalFilePath());
}

LXDocumentInterface* DocumentFiles::Show(LXDocumentInterface* document, const QString& path)
{
    if (!LXDocumentManager::Instance()->AddDocument(document)) {
        LXDocumentFactory::Instance()->Release(document);
        return nullptr;
    }

    m_Records.insert(document, Record{path, QString()});
    if (!path.isEmpty()) {
        ZKApplication::SetUserValue(FolderKey, QFileInfo(path).absolutePath());
        emit FileUsed(path);
    }
    return document;
}

bool DocumentFiles::Save(LXDocumentInterface* document)
{
    const QString path = GetPath(document);
    const bool canSaveThere = PictureFile::FormatOfName(path) != PictureFile::Format::Unknown;
    return canSaveThere ? SaveTo(document, path) : SaveAs(document);
}

bool DocumentFiles::SaveAs(LXDocumentInterface* document)
{
    if (!document || IsBusy(document)) return false;

    const QString path = AskForPath(document);
    return !path.isEmpty() && SaveTo(document, path);
}

bool DocumentFiles::SaveTo(LXDocumentInterface* document, const QString& path)
{
    if (!document || IsBusy(document)) return false;

    const PictureFile::Format format = PictureFile::FormatOfName(path);
    if (format == PictureFile::Format::Unknown) {
        Tell(tr("“%1” was not saved, since its ending names no known format. Choose a name that ends in %2.")
                 .arg(QDir::toNativeSeparators(path), QStringLiteral(".png")));
        return false;
    }

    LandFloatingPieces(document, HistoryOf(document));
    const Picture picture = PictureFile::TakePicture(document);
    if (!AcceptsLosses(document, path, picture)) return false;

    PictureFile::Outcome outcome;
    WaitedWork::Run(m_pWindow, tr("Saving “%1”…").arg(QFileInfo(path).fileName()), true,
                    [&](const FileProgress& progress) {
                        outcome = PictureFile::WritePicture(path, format, picture, {}, progress);
                    });
    if (!outcome.IsOk()) {
        if (outcome.error != PictureFile::Error::Cancelled) Tell(outcome.message);
        return false;
    }
    MarkSaved(document, path);
    return true;
}

void DocumentFiles::MarkSaved(LXDocumentInterface* document, const QString& path)
{
    const QFileInfo file(path);
    m_Records[document].path = file.canonicalFilePath();
    document->SetDocumentName(file.fileName());
    document->SetDocumentState(0);
    if (LexoUndoStack* history = HistoryOf(document)) history->setClean();
    ZKApplication::SetUserValue(FolderKey, file.absolutePath());
    emit FileUsed(file.canonicalFilePath());
}

bool DocumentFiles::Close(LXDocumentInterface* document)
{
    if (!document || IsBusy(document)) return false;
    return LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->CloseDocument(document);
}

QString DocumentFiles::GetPath(const LXDocumentInterface* document) const
{
    return m_Records.value(document).path;
}

bool DocumentFiles::CloseAll()
{
    // First all questions, then all closes: a late "Cancel" leaves everything as it was.
    for (LXDocumentInterface* document : LXDocumentManager::Instance()->GetDocuments()) {
        if (IsModified(document) && !AskBeforeClose(document)) return false;
    }
    const QScopedValueRollback<bool> answered(m_bAllAnswered, true);
    if (LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->CloseAll()) return true;
    if (const LXDocumentInterface* document = m_pWindow->GetActiveDocument()) IsBusy(document);
    return false;
}

bool DocumentFiles::AskBeforeClose(LXDocumentInterface* document)
{
    BringToFront(document);
    const LXMessageBox::Button answer = LXMessageBox::Warning(
        m_pWindow, Title(),
        tr("“%1” has changes that are not saved. Save them before it closes?")
            .arg(document->GetDocumentName()),
        LXMessageBox::Save | LXMessageBox::Discard | LXMessageBox::Cancel, LXMessageBox::Save);
    if (answer == LXMessageBox::Save) return Save(document);
    return answer == LXMessageBox::Discard;
}

QString DocumentFiles::AskForPath(const LXDocumentInterface* document)
{
    QString suggestion = GetPath(document);
    if (suggestion.isEmpty()) {
        const QDir folder(ZKApplication::GetUserValue(FolderKey, QDir::homePath()).toString());
        suggestion = folder.filePath(document->GetDocumentName());
    }

    QFileDialog dialog(m_pWindow, tr("Save as"), QFileInfo(suggestion).absolutePath(),
                       PictureFile::SaveFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto applyFilter = [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(PictureFile::DefaultEnding(FormatOfFilter(filter)));
    };
    connect(&dialog, &QFileDialog::filterSelected, &dialog, applyFilter);
    for (const QString& filter : dialog.nameFilters()) {
        if (FormatOfFilter(filter) == PictureFile::FormatOfName(suggestion)) dialog.selectNameFilter(filter);
    }
    applyFilter(dialog.selectedNameFilter());
    dialog.selectFile(QFileInfo(suggestion).fileName());

    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

bool DocumentFiles::AcceptsLosses(LXDocumentInterface* document, const QString& path, const Picture& picture)
{
    const QString losses = PictureLosses(document, picture, PictureFile::FormatOfName(path));
    Record& record = m_Records[document];
    if (losses.isEmpty() || losses == record.acceptedLosses) return true;

    const LXMessageBox::Button answer =
        LXMessageBox::Warning(m_pWindow, Title(), tr("%1 Save it so?").arg(losses),
                              LXMessageBox::Save | LXMessageBox::Cancel, LXMessageBox::Save);
    if (answer != LXMessageBox::Save) return false;

    record.acceptedLosses = losses;
    return true;
}

LXDocumentInterface* DocumentFiles::FindOpen(const QString& path) const
{
    if (path.isEmpty()) return nullptr;

    for (LXDocumentInterface* document : LXDocumentManager::Instance()->GetDocuments()) {
        if (GetPath(document) == path) return document;
    }
    return nullptr;
}

void DocumentFiles::BringToFront(const LXDocumentInterface* document)
{
    LXMdiArea* area = m_pWindow->GetDocumentArea();
    if (LXMdiSubWindow* window = LXMdiAreaPrivate::Get(area)->FindWindow(document)) {
        area->setActiveSubWindow(window);
    }
}

LexoUndoStack* DocumentFiles::HistoryOf(const LXDocumentInterface* document) const
{
    const LXMdiSubWindow* window = LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->FindWindow(document);
    const auto* widget = window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
    return widget ? widget->GetView()->GetHistory() : nullptr;
}

bool DocumentFiles::IsModified(const LXDocumentInterface* document) const
{
    const LexoUndoStack* history = HistoryOf(document);
    return document->GetDocumentState() > 0 || (history && !history->isClean());
}

bool DocumentFiles::IsBusy(const LXDocumentInterface* document)
{
    if (!document->GetLockState()) return false;

    m_pWindow->statusBar()->showMessage(
        tr("“%1” is being changed. Try again when that is done.").arg(document->GetDocumentName()), BusyTime);
    return true;
}

void DocumentFiles::Tell(const QString& message)
{
    LXMessageBox::Critical(m_pWindow, Title(), message);
}
