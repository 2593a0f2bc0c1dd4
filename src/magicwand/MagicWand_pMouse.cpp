#include "magicwand/MagicWand_p.h"

// What the mouse does with the magic wand, from the press to the release.

#include "IDocumentView.h"
#include "ui_MWToolWidget.h"

#include "common/MaskSelection.h"
#include "common/OverrideCursor.h"
#include "common/PushCommand.h"
#include "common/Reports.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LayerKind.h"
#include "gui/LToolBoxButton.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/MoveCommand.h"
#include "history/MoveCommandData.h"

#include <QGraphicsSceneMouseEvent>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QtMath>

namespace {
/// A pixel counts as selected above this coverage: more than half.
constexpr int HalfSelected = 127;

/// Toward zero.
QPoint PixelAt(const QPointF& scenePos)
{
    return {static_cast<int>(scenePos.x()), static_cast<int>(scenePos.y())};
}
} // namespace

// ---- hover

bool MagicWandPrivate::IsOverSelected(const QPointF& scenePos) const
{
    const LXDocumentInterface* document = GetDocument();
    if (!document || m_Op != SelectionCommandData::Replace) return false;

    const QRect geometry = document->GetSelectionGeometry();
    const QPoint pixel(qFloor(scenePos.x()), qFloor(scenePos.y()));
    if (!geometry.contains(pixel)) return false;

    const LXDocumentSelectionLockerForRead locker(document);
    const QPoint inMask = pixel - geometry.topLeft();
    return document->GetSelectionMask().GetColor(inMask.x(), inMask.y()).Alpha() > HalfSelected;
}

void MagicWandPrivate::Hover(const QPointF& scenePos)
{
    if (!m_pDocumentView) return;

    if (IsOverSelected(scenePos)) {
        ShowCursor(Qt::ArrowCursor);
        m_bSelectionDragArmed = true;
        return;
    }
    if (m_Op == SelectionCommandData::Replace && !m_bSelectionDragArmed) return;

    m_bSelectionDragArmed = false;
    RefreshCursor();
}

// ---- press

void MagicWandPrivate::OnPress(const QGraphicsSceneMouseEvent* event)
{
    if (m_bSelectionPressed) {
        const bool isBesideTheDrag =
            event->button() != Qt::LeftButton && event->buttons().testFlag(Qt::LeftButton);
        if (isBesideTheDrag) return;
        // The release has gone where nobody heard of it.
        AbandonGesture();
    }
    if (!GetDocument() || PopUpContextMenu(event)) return;

    // The boxes of a click run an event loop, in which the tool may go.
    const QPointer<MagicWandPrivate> self(this);
    BeginGesture();
    try {
        if (!RunClick(event)) return;
    } catch (const std::exception& exception) {
        Reports::Exception(ZK_HERE, exception);
        LXMessageBox::Warning(LXMdiArea::MainWindow(), tr("Operation error"),
                              tr("Cannot select pixels. Unexpected error occurred."));
        if (!self) return;
        GiveCaptureBack();
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        LXMessageBox::Warning(LXMdiArea::MainWindow(), tr("Operation error"),
                              tr("Cannot select pixels. Unexpected error occurred.\nApplication will stop!"));
        if (self) {
            GiveCaptureBack();
            Unlock();
        }
        throw;
    }
    if (self) Unlock();
}

bool MagicWandPrivate::PopUpContextMenu(const QGraphicsSceneMouseEvent* event)
{
    if (event->buttons() != Qt::RightButton || m_pContextMenu->isEmpty() || !GetDocument()->HasSelection())
        return false;

    const QPoint viewPos = m_pDocumentView->MapFromScene(event->scenePos());
    m_pContextMenu->popup(m_pDocumentView->MapToGlobal(viewPos));
    return true;
}

void MagicWandPrivate::BeginGesture()
{
    // A refused lock doesn't end the click.
    if (LockDocument()) {
        m_pToolButton->blockSignals(true);
        LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
    }
    if (!m_bInputCaptured) m_bInputCaptured = m_pDocumentView->Lock(this);
}

// False when the gesture goes on until the release.
bool MagicWandPrivate::RunClick(const QGraphicsSceneMouseEvent* event)
{
    const QPointF scenePos = event->scenePos();
    if (event->button() == Qt::LeftButton) {
        if (IsOverSelected(scenePos)) {
            ArmDrag(scenePos);
            return false;
        }
        const int layerId = LayerToCompare();
        if (layerId < 0) {
            GiveCaptureBack();
            return false;
        }
        Fill(scenePos, static_cast<unsigned int>(layerId));
    }
    GiveCaptureBack();
    WarnOfFaintSelection();
    return true;
}

void MagicWandPrivate::ArmDrag(const QPointF& scenePos)
{
    m_bSelectionPressed = true;
    m_bSelectionDragArmed = true;
    m_bSelectionDragged = false;
    m_PressPoint = scenePos.toPoint();
    m_SelectionOrigin = GetDocument()->GetSelectionGeometry().topLeft();
}

// -1 when it is a layer's turn and none is selected.
int MagicWandPrivate::LayerToCompare() const
{
    constexpr int mergedPicture = 0;
    if (m_ToolWidgetUi->m_pSampleAllLayers->isChecked()) return mergedPicture;

    const QModelIndexList selected =
        m_pDocumentView->GetDocumentView()->GetLayerSelection()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row() + 1;
}

void MagicWandPrivate::Fill(const QPointF& scenePos, unsigned int layerId)
{
    const OverrideCursor cursor(Qt::WaitCursor);
    // A floating piece lands before the pixels are read.
    if (LexoUndoStack* history = GetHistory()) history->commit();

    // Until the command has run: nobody changes the layer under the selection.
    const LXDocumentLayerLockerForRead locker(GetDocument(), layerId);
    const WandFillResult found = FillByWand(ReadFillData(scenePos, layerId));
    std::unique_ptr<LexoCommand> command =
        MakeMaskSelectionCommand(GetDocument(), found.mask, found.offset, m_Op);
    command->setText(tr("Apply magic wand"));
    PushCommand(GetHistory(), std::move(command));
}

WandFillData MagicWandPrivate::ReadFillData(const QPointF& scenePos, unsigned int layerId) const
{
    const LXDocumentInterface* document = GetDocument();
    WandFillData data;
    switch (document->GetLayerKind(layerId)) {
    case LayerKind::Raster:
    case LayerKind::Text:
    case LayerKind::Adjustment:
        if (const LXImage32* image = document->GetLayerImage(layerId)) data.picture = *image;
        break;
    default: break;
    }
    data.geometry = document->GetLayerGeometry(layerId);
    data.documentSize = document->GetDocumentSize();
    data.seed = PixelAt(scenePos);
    data.tolerance = m_ToolWidgetUi->m_pToleranceSlider->value();
    data.contiguous = m_ToolWidgetUi->m_pContiguousAreas->isChecked();
    return data;
}

void MagicWandPrivate::WarnOfFaintSelection()
{
    QString text;
    {
        const OverrideCursor cursor(Qt::WaitCursor);
        const LXDocumentInterface* document = GetDocument();
        if (!document->HasSelection()) {
            text = tr("Warning. No pixels selected.");
        } else if (!document->HasAboveSelected(HalfSelected)) {
            text = tr("Warning. No pixels are more than 50% selected.\nThe selection edges will not be "
                      "visible.");
        }
    }
    if (text.isEmpty()) return;
    LXMessageBox::Warning(LXMdiArea::MainWindow(), tr("Zenkari"), text, LXMessageBox::Ok);
}

// ---- move and release

void MagicWandPrivate::OnMove(const QGraphicsSceneMouseEvent* event)
{
    if (event->buttons() != Qt::LeftButton) Hover(event->scenePos());
    if (!m_bSelectionPressed || event->buttons() != Qt::LeftButton) return;

    const QPoint delta = event->scenePos().toPoint() - m_PressPoint;
    if (!delta.isNull()) m_bSelectionDragged = true;
    GetDocument()->MoveToSelection(m_SelectionOrigin + delta);
}

void MagicWandPrivate::OnRelease(const QGraphicsSceneMouseEvent* event)
{
    if (m_bSelectionPressed && event->button() != Qt::LeftButton) return;

    const QPointF scenePos = event->scenePos();
    const auto end = [&] {
        m_bSelectionPressed = false;
        GiveCaptureBack();
        Unlock();
        // Still armed, so that the hover also takes the arrow back that stood for the drag.
        Hover(scenePos);
    };
    const QPointer<MagicWandPrivate> self(this);
    try {
        EndDragOrClick(scenePos.toPoint());
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        LXMessageBox::Warning(LXMdiArea::MainWindow(), tr("Operation error"),
                              tr("Cannot select pixels. Unexpected error occurred.\nApplication will stop!"));
        if (self) end();
        throw;
    }
    end();
}

void MagicWandPrivate::EndDragOrClick(const QPoint& releasePoint)
{
    if (!m_bSelectionPressed) return;

    if (m_bSelectionDragged) {
        PushMove(releasePoint - m_PressPoint);
    } else if (m_Op == SelectionCommandData::Replace) {
        RemoveSelection();
    }
}

void MagicWandPrivate::PushMove(const QPoint& delta)
{
    m_bSelectionDragged = false;
    // A release may come from another place than the last move.
    const QPoint target = m_SelectionOrigin + delta;
    if (GetDocument()->GetSelectionGeometry().topLeft() != target) GetDocument()->MoveToSelection(target);

    constexpr bool applyOnPush = false;
    auto data = std::make_unique<MoveCommandData>();
    data->SetDelta(delta);
    data->SetLayers({});
    data->SetMasks({});
    auto command = std::make_unique<MoveCommand>(GetDocument(), applyOnPush);
    command->setText(tr("Move selection"));
    // Owned by the command from then on.
    if (command->SetCommandData(data.get())) static_cast<void>(data.release());
    PushCommand(GetHistory(), std::move(command));
}

void MagicWandPrivate::RemoveSelection()
{
    std::unique_ptr<LexoCommand> command =
        MakeMaskSelectionCommand(GetDocument(), {}, {}, SelectionCommandData::Replace);
    command->setText(tr("Remove selection"));
    PushCommand(GetHistory(), std::move(command));
}

// The tool leaves the view in the middle of a gesture; what is dragged stays where it is.
void MagicWandPrivate::AbandonGesture()
{
    if (m_bSelectionPressed && m_bSelectionDragged) {
        PushMove(GetDocument()->GetSelectionGeometry().topLeft() - m_SelectionOrigin);
    }
    m_bSelectionPressed = false;
    GiveCaptureBack();
    Unlock();
}

// ---- what a gesture holds

void MagicWandPrivate::GiveCaptureBack()
{
    if (!m_bInputCaptured) return;

    m_bInputCaptured = false;
    m_pDocumentView->Unlock(this);
}

bool MagicWandPrivate::LockDocument()
{
    if (!GetDocument()->Lock()) return false;

    m_pLockedDocument = GetDocument();
    return true;
}

void MagicWandPrivate::Unlock()
{
    if (!m_pLockedDocument) return;

    if (!m_pLockedDocument->Unlock()) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error to unlock the document."));
        return;
    }
    m_pLockedDocument = nullptr;
    m_pToolButton->blockSignals(false);
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
}
