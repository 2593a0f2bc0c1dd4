#include "clipboardprivate/ClipboardGuard.h"
#include "clipboardprivate/ClipboardTool.h"
#include "clipboardprivate/LXClipboardPasteToMask.h"
#include "clipboardprivate/LXClipboardPasteToMaskBySelection.h"

#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "common/UndoMacro.h"
#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXLayerNameHelper.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/ZKDocumentView.h"
#include "history/LayerCreateCommand.h"
#include "history/LayerCreateCommandData.h"
#include "history/LexoUndoStack.h"

#include <QFileInfo>
#include <QMainWindow>
#include <QPersistentModelIndex>
#include <QScopedValueRollback>

#include <stdexcept>

namespace {
constexpr bool ApplyOnPush = true;
} // namespace

void ClipboardTool::Paste()
{
    if (m_bPastingOnMask) return;

    FinishStart();
    const int layer = m_pDocument && m_pView ? CurrentLayerNumber() : 0;
    if (layer < 1 || IsDocumentLocked()) return;

    const Target target{static_cast<unsigned int>(layer),
                        IsMaskTarget(layer) ? PaintTarget::Mask : PaintTarget::Layer};
    GuardClipboard(ZK_HERE, tr("Cannot paste. Unexpected error occurred."), [&] {
        if (!MayPaintOn(target)) return;

        TakeFiles();
        if (HasCurrentItem()) PasteCurrent(target);
    });
}

void ClipboardTool::PasteCurrent(const Target& target)
{
    LandFloatingPieces();
    if (target.pixels == PaintTarget::Mask) {
        PasteOnMask(target.layerId);
    } else {
        PasteOnLayer(target.layerId);
    }
}

QRect ClipboardTool::PasteTarget(const QSize& picture) const
{
    if (m_pDocument->HasSelection()) return m_pDocument->GetSelectionGeometry();
    return {ClipboardPixels::CenteredIn(m_pDocument->GetDocumentSize(), picture), picture};
}

void ClipboardTool::PasteOnLayer(unsigned int layerId)
{
    using ClipboardPixels::PasteThrough;

    const OverrideCursor waiting(Qt::WaitCursor);
    const LXImage32 image =
        ClipboardPixels::InColorsOf(m_Items[m_CurrentRow].m_Image, m_pDocument->GetICCProfile());
    const QRect target = PasteTarget(image.Rect().size());
    const bool keepsShape = (m_pDocument->GetLayerLockFlags(layerId) & LayerLocks::Transparency) != 0;
    const bool hasSelection = m_pDocument->HasSelection();
    const PasteThrough through = keepsShape     ? PasteThrough::LayerAlpha
                                 : hasSelection ? PasteThrough::Selection
                                                : PasteThrough::Everything;

    const ClipboardPixels::Placed layer = ReadPixels({layerId, PaintTarget::Layer});
    const ClipboardPixels::Change pixels =
        ClipboardPixels::Paste(layer, {image, target.topLeft()}, target, through, ReadSelection());
    Push({layerId, pixels.before, pixels.after, layer.Rect(), target}, PaintTarget::Layer, tr("Paste"));
    MarkPasted(CurrentIndex());
}

void ClipboardTool::PasteOnMask(unsigned int layerId)
{
    const LXImage32 image = m_Items[m_CurrentRow].m_Image;
    const ClipboardPixels::Placed item{image, PasteTarget(image.Rect().size()).topLeft()};
    const ClipboardPixels::Placed mask = ReadPixels({layerId, PaintTarget::Mask});
    bool reveals = false;
    m_pDocument->GetMaskInverted(layerId, &reveals);

    // Rows and views come and go while the dialog stands.
    const QPersistentModelIndex row = CurrentIndex();
    const QPointer<LXDocumentInterface> document = m_pDocument;
    const QPointer<ZKDocumentView> view = m_pView;
    QWidget* window = LXMdiArea::MainWindow();
    std::unique_ptr<MaskPasteProgress> progress;
    if (m_pDocument->HasSelection()) {
        progress =
            std::make_unique<LXClipboardPasteToMaskBySelection>(item, mask, ReadSelection(), reveals, window);
    } else {
        progress = std::make_unique<LXClipboardPasteToMask>(item, mask, reveals, window);
    }
    const QScopedValueRollback<bool> pasting(m_bPastingOnMask, true);
    const bool isDone = progress->Execute() == QDialog::Accepted;
    progress->WaitForFinished();
    const bool isSameView = document && view && m_pDocument == document && m_pView == view;
    if (!isDone || !isSameView || IsDocumentLocked()) return;

    progress->RethrowFailure();
    Push({layerId, mask.image, progress->GetResult(), mask.Rect(), progress->GetResultRect()},
         PaintTarget::Mask, tr("Paste"));
    MarkPasted(row);
}

// ---- a new image

void ClipboardTool::PasteAsNew()
{
    FinishStart();
    GuardClipboard(ZK_HERE, tr("Cannot paste. Unexpected error occurred."), [this] {
        TakeFiles();
        if (HasCurrentItem()) MakeDocument(m_Items[m_CurrentRow]);
    });
}

void ClipboardTool::MakeDocument(const ClipboardItem& item)
{
    struct Release
    {
        void operator()(LXDocumentInterface* document) const
        {
            LXDocumentFactory::Instance()->Release(document);
        }
    };

    const OverrideCursor waiting(Qt::WaitCursor);
    const LXImage32 image = item.m_Image;
    std::unique_ptr<LXDocumentInterface, Release> document(
        LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    document->SetDocumentSize(image.Rect().size());
    document->SetICCProfile(image.m_Profile);
    document->SetDocumentName(QFileInfo(item.m_Name).fileName());
    document->AddLayer(tr("Background layer"), image, {});
    if (!LXDocumentManager::Instance()->AddDocument(document.get())) {
        throw std::runtime_error("the new document was refused");
    }

    // The manager owns it from then on.
    LXDocumentInterface* opened = document.release();
    opened->SetDocumentState(opened->GetDocumentState() + 1);
}

// ---- a new layer

void ClipboardTool::PasteAsNewLayer()
{
    if (m_bPastingOnMask) return;

    FinishStart();
    const int layer = m_pDocument && m_pView ? CurrentLayerNumber() : 0;
    if (layer < 1 || IsDocumentLocked() || m_pView->IsLayerOrderBlocked()) return;

    GuardClipboard(ZK_HERE, tr("Cannot paste. Unexpected error occurred."), [&] {
        TakeFiles();
        if (!HasCurrentItem()) return;

        LandFloatingPieces();
        const UndoMacro step(GetHistory(), tr("PasteAsNewLayer"));
        MakeLayer(layer);
        PasteOnNewLayer(static_cast<unsigned int>(layer));
    });
}

void ClipboardTool::PasteOnNewLayer(unsigned int layerId)
{
    try {
        PasteOnLayer(layerId);
    } catch (...) {
        // Where a history is, its step is taken back.
        if (!GetHistory()) m_pDocument->RemoveLayer(layerId);
        throw;
    }
}

void ClipboardTool::MakeLayer(int layer)
{
    const OverrideCursor waiting(Qt::WaitCursor);
    const auto layerId = static_cast<unsigned int>(layer);
    auto data = std::make_unique<LayerCreateCommandData>(m_pLayerSelection, LayerCreateCommandData::Raster,
                                                         layer - 1);
    data->SetLayerId(layerId);
    data->SetBlendMode(BlendMode::Normal);
    data->SetOpacity(1.0);
    data->SetLayerName(LXLayerNameHelper::MakeDefaultName(m_pDocument, LXLayerNameHelper::New, layerId));
    auto command = std::make_unique<LayerCreateCommand>(m_pDocument, ApplyOnPush);
    command->setText(tr("PasteAsNewLayer"));
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    PushCommand(GetHistory(), std::move(command));

    const QModelIndex index = m_pDocument->GetModel()->index(layer - 1, 0);
    m_pLayerSelection->setCurrentIndex(index,
                                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}
