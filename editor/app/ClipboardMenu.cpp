#include "app/ClipboardMenu.h"

#include "app/MainWindow.h"
#include "app/MenuAction.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "formats/PictureFile.h"
#include "gui/ClipboardRole.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMimePictures.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "resource/LXResource.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QPointer>

#include <stdexcept>

namespace {
constexpr int InPlacePosition = 8;
constexpr int IntoViewPosition = 9;
constexpr int NewPosition = 5;

QModelIndex CurrentRow()
{
    const QItemSelectionModel* selection = LayersWidget::GetInstance()->GetClipboardSelection();
    return selection ? selection->currentIndex().siblingAtColumn(0) : QModelIndex();
}

QPointF MiddleOfSight(const ZKDocumentView* view)
{
    return view->mapToScene(view->viewport()->rect()).boundingRect().center();
}
} // namespace

ClipboardMenu::ClipboardMenu(MainWindow* window) : QObject(window), m_pWindow(window)
{
    m_pInPlace = AddMenuAction(this, {ZKMenuManager::Edit,
                                      InPlacePosition,
                                      tr("Paste in Pla&ce"),
                                      tr("Puts the copied picture on a new layer, where it was copied"),
                                      {Qt::CTRL + Qt::ALT + Qt::Key_V}});
    m_pIntoView = AddMenuAction(this, {ZKMenuManager::Edit,
                                       IntoViewPosition,
                                       tr("Paste into &View"),
                                       tr("Puts the copied picture on a new layer, in the middle of what is "
                                          "seen"),
                                       {Qt::CTRL + Qt::ALT + Qt::SHIFT + Qt::Key_V}});
    m_pNew = AddMenuAction(this, {ZKMenuManager::File,
                                  NewPosition,
                                  tr("New from Clip&board"),
                                  tr("Opens the copied picture as a picture of its own"),
                                  {}});
    m_pInPlace->setObjectName(QStringLiteral("pasteInPlaceAction"));
    m_pIntoView->setObjectName(QStringLiteral("pasteIntoViewAction"));
    m_pNew->setObjectName(QStringLiteral("newFromClipboardAction"));
    connect(m_pInPlace, &QAction::triggered, this, &ClipboardMenu::PasteInPlace);
    connect(m_pIntoView, &QAction::triggered, this, &ClipboardMenu::PasteIntoView);
    connect(m_pNew, &QAction::triggered, this, &ClipboardMenu::OpenAsNew);

    connect(window, &MainWindow::ActiveViewChanged, this, &ClipboardMenu::Follow);
    connect(LayersWidget::GetInstance(), &LayersWidget::ClipboardModelChanged, this,
            &ClipboardMenu::FollowList);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &ClipboardMenu::UpdateActions);
    FollowList();
}

void ClipboardMenu::Follow(ZKDocumentView* view)
{
    if (m_pDocument) m_pDocument->disconnect(this);
    m_pDocument = view ? view->GetModel()->GetDocument() : nullptr;
    if (m_pDocument) {
        connect(m_pDocument, &LXDocumentInterface::Locked, this, &ClipboardMenu::UpdateActions);
        connect(m_pDocument, &LXDocumentInterface::Unlocked, this, &ClipboardMenu::UpdateActions);
    }
    if (view) {
        connect(view, &ZKDocumentView::LayerOrderOperationsBlocked, this, &ClipboardMenu::UpdateActions,
                Qt::UniqueConnection);
    }
    UpdateActions();
}

void ClipboardMenu::FollowList()
{
    if (const QAbstractItemModel* list = LayersWidget::GetInstance()->GetClipboardModel()) {
        connect(list, &QAbstractItemModel::rowsInserted, this, &ClipboardMenu::UpdateActions);
        connect(list, &QAbstractItemModel::rowsRemoved, this, &ClipboardMenu::UpdateActions);
    }
    UpdateActions();
}

void ClipboardMenu::UpdateActions()
{
    const bool canUse = HasPicture();
    const bool canAdd = canUse && LayerPictures::MayAdd(m_pWindow->GetActiveView());
    m_pInPlace->setEnabled(canAdd);
    m_pIntoView->setEnabled(canAdd);
    m_pNew->setEnabled(canUse);
}

bool ClipboardMenu::HasPicture() const
{
    const QAbstractItemModel* list = LayersWidget::GetInstance()->GetClipboardModel();
    return (list && list->rowCount() > 0) ||
           LXMimePictures::HasPictures(QGuiApplication::clipboard()->mimeData());
}

std::optional<ClipboardMenu::Copied> ClipboardMenu::Take() const
{
    const QModelIndex row = CurrentRow();
    if (row.isValid()) {
        Copied copied{row.data(ClipboardRole::Image).value<LXImage32>(), {}};
        const QVariant origin = row.data(ClipboardRole::Origin);
        if (origin.isValid()) copied.origin = origin.toPoint();
        return copied;
    }
    const QList<LXImage32> pictures = LXMimePictures::Read(QGuiApplication::clipboard()->mimeData());
    if (pictures.isEmpty()) return {};
    return Copied{pictures.first(), {}};
}

template <class Work>
void ClipboardMenu::WithPicture(Work work)
{
    try {
        if (const std::optional<Copied> copied = Take()) work(*copied);
    } catch (const std::exception& error) {
        LXMessageBox::Critical(
            m_pWindow, LXResource::GetData(LXResource::ProductName).toString(),
            tr("The copied picture can't be pasted: %1").arg(QString::fromUtf8(error.what())));
    }
}

void ClipboardMenu::PasteInPlace()
{
    const QPointer<ZKDocumentView> view = m_pWindow->GetActiveView();
    if (!LayerPictures::MayAdd(view)) return;

    WithPicture([view](const Copied& copied) {
        if (!LayerPictures::MayAdd(view)) return;
        const QSize canvas = view->GetModel()->GetDocument()->GetDocumentSize();
        const QPointF middle(canvas.width() / 2.0, canvas.height() / 2.0);
        const QPoint topLeft = copied.origin.value_or(LayerPictures::Centered(copied.image, middle));
        LayerPictures::Add(view, {{copied.image, topLeft}}, tr("Paste in place"));
    });
}

void ClipboardMenu::PasteIntoView()
{
    const QPointer<ZKDocumentView> view = m_pWindow->GetActiveView();
    if (!LayerPictures::MayAdd(view)) return;

    WithPicture([view](const Copied& copied) {
        if (!LayerPictures::MayAdd(view)) return;
        const QPoint topLeft = LayerPictures::Centered(copied.image, MiddleOfSight(view));
        LayerPictures::Add(view, {{copied.image, topLeft}}, tr("Paste into view"));
    });
}

void ClipboardMenu::OpenAsNew()
{
    WithPicture([](const Copied& copied) {
        Picture picture;
        picture.image = copied.image;
        picture.iccProfile = copied.image.m_Profile.GetData();
        LXDocumentInterface* document = PictureFile::MakeDocument(picture, tr("From clipboard"));
        if (!document) throw std::bad_alloc();
        if (!LXDocumentManager::Instance()->AddDocument(document)) {
            LXDocumentFactory::Instance()->Release(document);
            throw std::runtime_error(tr("There is no place for another picture.").toStdString());
        }
        // It stands in no file yet.
        document->SetDocumentState(document->GetDocumentState() + 1);
    });
}
