#include "app/DocumentFiles.h"

#include "app/FormatLimitSettings.h"
#include "app/MainWindow.h"
#include "app/WaitedWork.h"
#include "core/ZKApplication.h"
#include "core/ZKCMSManager.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "formats/DocumentFile.h"
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
#include <QItemSelectionModel>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStatusBar>

#include <algorithm>

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

/// Colors are chosen in the working profile. sRGB is what all programs take a picture without one for.
ZKCMSProfile ProfileOfNew()
{
    const ZKCMSManager* manager = ZKCMSManager::GetInstance();
    const int working = manager->GetWorkingRGBIndex();
    return working == 0 ? ZKCMSProfile() : manager->GetRGBProfile(working);
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
        document->SetICCProfile(ProfileOfNew());
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
    return QFileDialog::getOpenFileNames(m_pWindow, tr("Open"), folder, DocumentFile::OpenFilter());
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
    DocumentFile::ReadResult result;
    WaitedWork::Run(m_pWindow, tr("Opening “%1”…").arg(file.fileName()), true,
                    [&](const FileProgress& progress) {
                        result = DocumentFile::Read(file.absoluteFilePath(), limits, progress);
                    });
    if (!result.outcome.IsOk()) {
        if (result.outcome.error != PictureFile::Error::Cancelled) Tell(result.outcome.message);
        return nullptr;
    }
    LXDocumentInterface* document = DocumentFile::MakeDocument(result, file.fileName());
    if (!document) {
        Tell(tr("There is not enough memory to open “%1”. Close other pictures and try again.")
                 .arg(file.fileName()));
        return nullptr;
    }
    if (!Show(document, file.canonicalFilePath())) return nullptr;
    SelectRows(document, result.content.selectedRows);
    if (!result.notice.isEmpty()) m_pWindow->statusBar()->showMessage(result.notice);
    return document;
}

LXDocumentInterface* DocumentFiles::Show(LXDocumentInterface* document, const QString& path)
{
    if (!LXDocumentManager::Instance()->AddDocument(document)) {
        LXDocumentFactory::Instance()->Release(document);
        return nullptr;
    }

    m_Records.insert(document, Record{path, {}, {}});
    if (!path.isEmpty()) {
        ZKApplication::SetUserValue(FolderKey, QFileInfo(path).absolutePath());
        emit FileUsed(path);
    }
    return document;
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
    QList<QPointer<LXDocumentInterface>> documents;
    for (LXDocumentInterface* document : LXDocumentManager::Instance()->GetDocuments())
        documents.append(document);
    for (const QPointer<LXDocumentInterface>& document : documents) {
        if (IsOpen(document) && IsModified(document) && !AskBeforeClose(document)) return false;
    }
    const QScopedValueRollback<bool> answered(m_bAllAnswered, true);
    if (LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->CloseAll()) return true;
    if (const LXDocumentInterface* document = m_pWindow->GetActiveDocument()) IsBusy(document);
    return false;
}

bool DocumentFiles::AskBeforeClose(LXDocumentInterface* asked)
{
    BringToFront(asked);
    const QPointer<LXDocumentInterface> document = asked;
    const LXMessageBox::Button answer = LXMessageBox::Warning(
        m_pWindow, Title(),
        tr("“%1” has changes that are not saved. Save them before it closes?").arg(asked->GetDocumentName()),
        LXMessageBox::Save | LXMessageBox::Discard | LXMessageBox::Cancel, LXMessageBox::Save);
    if (answer == LXMessageBox::Save) return IsOpen(document) && Save(document);
    return answer == LXMessageBox::Discard;
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

ZKDocumentView* DocumentFiles::ViewOf(const LXDocumentInterface* document) const
{
    const LXMdiSubWindow* window = LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->FindWindow(document);
    const auto* widget = window ? qobject_cast<ZKDocumentWidget*>(window->GetWidget()) : nullptr;
    return widget ? widget->GetView() : nullptr;
}

LexoUndoStack* DocumentFiles::HistoryOf(const LXDocumentInterface* document) const
{
    const ZKDocumentView* view = ViewOf(document);
    return view ? view->GetHistory() : nullptr;
}

/// Nothing selected in the file leaves the view's own choice.
void DocumentFiles::SelectRows(const LXDocumentInterface* document, const QSet<int>& rows)
{
    const ZKDocumentView* view = ViewOf(document);
    if (!view || rows.isEmpty()) return;

    const LXDocumentModel* model = view->GetModel();
    QItemSelection selection;
    for (const int row : rows) {
        selection.select(model->index(row), model->index(row));
    }
    const int first = *std::min_element(rows.begin(), rows.end());
    view->GetLayerSelection()->setCurrentIndex(model->index(first), QItemSelectionModel::NoUpdate);
    view->GetLayerSelection()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QSet<int> DocumentFiles::SelectedRows(const LXDocumentInterface* document) const
{
    QSet<int> rows;
    const ZKDocumentView* view = ViewOf(document);
    if (!view) return rows;
    for (const QModelIndex& index : view->GetLayerSelection()->selectedIndexes()) {
        rows.insert(index.row());
    }
    return rows;
}

bool DocumentFiles::IsOpen(const LXDocumentInterface* document) const
{
    return LXMdiAreaPrivate::Get(m_pWindow->GetDocumentArea())->FindWindow(document) != nullptr;
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
