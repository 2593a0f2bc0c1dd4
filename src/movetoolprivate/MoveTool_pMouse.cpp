#include "movetoolprivate/MoveTool_p.h"

// What the mouse does with the move tool, from the press to the release.

#include "IDocumentView.h"
#include "movetoolprivate/CopyPasteThread.h"

#include "common/PushCommand.h"
#include "common/Reports.h"
#include "core/ZKActivateAction.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LayerKind.h"
#include "document/LayerLocks.h"
#include "gui/LXDragGuide.h"
#include "gui/LXMdiArea.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "guicore/LXMessageBox.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"

#include <QGraphicsSceneMouseEvent>
#include <QGuiApplication>
#include <QMainWindow>
#include <QtMath>

namespace {
/// What keeps a press from moving anything.
enum LockCode
{
    Unlocked = 0,
    LayerLocked = 1,
    SelectionLocked = 2,
};
} // namespace

// ---- press

void MoveToolPrivate::OnPress(const QGraphicsSceneMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;

    // A box of a drag runs an event loop, in which the tool may go.
    const QPointer<MoveToolPrivate> self(this);
    // Somebody else has got the release of the last one.
    if (m_bDragging) AbandonDrag();
    if (!self) return;
    m_Targets.Clear();
    if (!m_pDocumentView) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error move tool state."));
        return;
    }
    const bool isCaptured = (m_pDocumentView->GetState() & IDocumentView::LockBit) != 0;
    if (isCaptured || !m_pDocumentView->Scene() || GetView()->IsPanningEnabled()) return;
    if (IsDocumentInOtherHands()) return;

    m_LockCode = TestLocks();
    // Told at the release.
    if (m_LockCode != Unlocked) return;
    if (!m_pDocumentView->Lock(this)) return;

    LockDocument();
    m_State = State::NoSelection;
    m_bDragging = true;
    m_PressPos = event->scenePos();
    m_Way = QPointF();
    const bool isStarted = StartDrag();
    if (!self) return;
    if (!isStarted || !m_bDragging) {
        m_State = State::NoSelection;
        if (m_bDragging) GiveDragBack();
        LeaveTemporaryTurn();
        return;
    }
    if (m_State == State::Path) m_SelectionOffset = m_PressPos.toPoint();
    m_pGuide = std::make_unique<LXDragGuide>(GetView(), m_FrameRect, m_Targets.LayerIds());
    GetView()->EnableAutoscroll(true);
}

// Whether somebody works on the document, who would not expect it to change. A lock of this tool's own may be
// left from a drag that couldn't give it back.
bool MoveToolPrivate::IsDocumentInOtherHands() const
{
    const LXDocumentInterface* document = GetDocument();
    return document && document != m_pLockedDocument && document->GetLockState();
}

int MoveToolPrivate::TestLocks() const
{
    const QList<int> rows = SelectedRows();
    for (const int row : rows) {
        if (GetModel()->GetLockFlags(row) & LayerLocks::AgainstMove) return LayerLocked;
    }
    return Unlocked;
}

void MoveToolPrivate::TellLock(int code)
{
    QString text;
    switch (code) {
    case LayerLocked: text = tr("Cannot move the image. Layer is locked."); break;
    case SelectionLocked: text = tr("Cannot move the selection. Layer is locked."); break;
    default: return;
    }
    LXMessageBox::Information(LXMdiArea::MainWindow(), tr("Zenkari"), text);
}

// Whether locks let the selected pixels of the layer move; tells which one doesn't.
bool MoveToolPrivate::AllowsByLocks(int row)
{
    const unsigned int layerID = static_cast<unsigned int>(row) + 1;
    int code = TestLocks();
    if (code == Unlocked && !GetModel()->GetMaskSelected(row) &&
        GetDocument()->IsSelectionMoveLocked(layerID))
        code = SelectionLocked;
    TellLock(code);
    return code == Unlocked;
}

bool MoveToolPrivate::StartDrag()
{
    if (!GetDocument()) return false;

    m_FrameItemPos = m_Frame.GetPos();
    if (m_PathPair.first < 0 || m_PathPair.second < 0) m_PathPair = MoveViewState::NoPaths();
    m_State = StateForPress();
    switch (m_State) {
    case State::NoSelection:
    case State::WithSelection: return StartOffsets();
    case State::Cut:
    case State::Copy: return StartFloating();
    case State::Path: return StartPath();
    }
    return false;
}

MoveToolPrivate::State MoveToolPrivate::StateForPress() const
{
    if (m_PathPair != MoveViewState::NoPaths()) return State::Path;
    const LXDocumentInterface* document = GetDocument();
    if (!document->HasSelection()) return State::NoSelection;

    const Qt::KeyboardModifiers modifiers = QGuiApplication::keyboardModifiers();
    const QList<int> rows = SelectedRows();
    if (rows.size() != 1) return State::WithSelection;
    const unsigned int layerID = static_cast<unsigned int>(rows.first()) + 1;
    const bool hasPixels =
        document->GetLayerKind(layerID) == LayerKind::Raster || GetModel()->GetMaskSelected(rows.first());
    if (!hasPixels || !IsOnSelectedPixel(m_PressPos)) return State::WithSelection;
    return modifiers & Qt::AltModifier ? State::Copy : State::Cut;
}

bool MoveToolPrivate::IsOnSelectedPixel(const QPointF& scenePos) const
{
    const LXDocumentInterface* document = GetDocument();
    const LXDocumentSelectionLockerForRead locker(document);
    const QRect geometry = document->GetSelectionGeometry();
    const QPoint pixel(qFloor(scenePos.x()), qFloor(scenePos.y()));
    if (!geometry.contains(pixel)) return false;

    const QPoint inMask = pixel - geometry.topLeft();
    return document->GetSelectionMask().GetColor(inMask.x(), inMask.y()).Alpha() != 0;
}

bool MoveToolPrivate::StartFloating()
{
    const LXDocumentInterface* document = GetDocument();
    m_SelectionOffset = document->GetSelectionMaskOffset();
    m_FrameRect = document->GetSelectionGeometry();
    const int row = SelectedRows().first();
    const unsigned int layerID = static_cast<unsigned int>(row) + 1;
    if (!AllowsByLocks(row)) return false;
    const bool isCopy = m_State == State::Copy;
    if (const MoveViewState* record = CurrentRecord()) {
        if (Fits(*record, layerID, isCopy)) return true;
        if (!LandRecord(*record)) return false;
    }
    return MakeFloating(layerID, isCopy);
}

bool MoveToolPrivate::StartPath()
{
    m_FrameRect = QRect();
    if (const MoveViewState* record = CurrentRecord()) {
        if (record->m_bPath && record->m_PathIDs == m_PathPair) return true;
        if (!LandRecord(*record)) return false;
    }
    return MakeFloatingPath();
}

bool MoveToolPrivate::StartOffsets()
{
    if (!LandAll()) return false;
    // A step that somebody left open reads what it changed when it is closed, and would take the drag along.
    if (LexoUndoStack* history = GetHistory()) history->commit();
    if (m_State == State::WithSelection) m_SelectionOffset = GetDocument()->GetSelectionMaskOffset();
    m_Targets.Collect(*GetModel(), SelectedRows());
    m_FrameRect = m_Targets.GetRect();
    return true;
}

// ---- move

void MoveToolPrivate::OnMove(const QGraphicsSceneMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        EndLostGesture();
    } else if (m_bDragging) {
        StepTo(event->scenePos());
    }
}

void MoveToolPrivate::StepTo(const QPointF& scenePos)
{
    // No guide: a box of the start still shows.
    if (!m_pDocumentView || m_LockCode != Unlocked || !m_pGuide) return;

    m_Way = m_pGuide->Follow(scenePos - m_PressPos);
    const QPoint delta = DragDelta();
    switch (m_State) {
    case State::NoSelection:
    case State::WithSelection: MoveOffsets(delta); break;
    case State::Cut:
    case State::Copy:
    case State::Path:
        if (MoveViewState* record = CurrentRecord(); record && record->m_pThread) {
            BeginOwnMove(*record);
            record->m_pThread->PostMove(PiecePosition());
        }
        break;
    }
}

QPoint MoveToolPrivate::DragDelta() const
{
    return m_Way.toPoint();
}

// Pixels are told where the selection shall be, a path how far it shall go.
QPoint MoveToolPrivate::PiecePosition() const
{
    return m_State == State::Path ? DragDelta() : m_SelectionOffset + DragDelta();
}

void MoveToolPrivate::MoveOffsets(const QPoint& delta)
{
    LXDocumentInterface* document = GetDocument();
    m_Frame.SetPos(m_FrameItemPos + delta);
    m_Targets.MoveBy(document, delta);
    if (m_State == State::WithSelection) document->MoveToSelection(m_SelectionOffset + delta);
}

// ---- release

void MoveToolPrivate::OnRelease(const QGraphicsSceneMouseEvent* event)
{
    const QPointer<MoveToolPrivate> self(this);
    if (m_LockCode != Unlocked) {
        m_LockCode = Unlocked;
        TellLock(TestLocks());
        if (self) LeaveTemporaryTurn();
        return;
    }
    if (event->button() != Qt::LeftButton) return;

    UnlockDocument();
    if (!m_bDragging || !m_pDocumentView) return;
    if (!GiveCaptureBack()) {
        Reports::Condition(ZK_HERE, QStringLiteral("Can't unlock view."));
        return;
    }
    m_bDragging = false;
    GetView()->EnableAutoscroll(false);
    if (!GetDocument()) {
        Reports::Condition(ZK_HERE, QStringLiteral("Null document."));
        return;
    }
    StepTo(event->scenePos());
    m_pGuide.reset();
    EndDrag();
    if (!self) return;
    LeaveTemporaryTurn();
    OnMaskSelectionChanged(false);
}

void MoveToolPrivate::EndDrag()
{
    switch (m_State) {
    case State::NoSelection:
    case State::WithSelection: PushMove(); break;
    case State::Cut:
    case State::Copy:
        if (SettlePiece()) UpdateThumbnails();
        break;
    case State::Path: SettlePiece(); break;
    }
}

void MoveToolPrivate::PushMove()
{
    std::unique_ptr<LexoCommand> command = m_Targets.MakeCommand(GetDocument(), DragDelta());
    command->setText(tr("Move"));
    PushCommand(GetHistory(), std::move(command));
}

// Puts the piece under the pointer, and listens to others again. False without one, and when it couldn't.
bool MoveToolPrivate::SettlePiece()
{
    MoveViewState* record = CurrentRecord();
    if (!record || !record->m_pThread) return false;

    // The worker may be behind.
    if (record->m_bOwnMove && !record->m_pThread->Move(PiecePosition())) {
        OnUnexpectedException(record->m_pThread.get());
        return false;
    }
    record->m_pThread->Refresh();
    EndOwnMove(*record);
    return true;
}

void MoveToolPrivate::UpdateThumbnails()
{
    const MoveViewState* record = CurrentRecord();
    if (!record) return;

    LXDocumentModel* model = GetModel();
    const int row = static_cast<int>(record->m_LayerID) - 1;
    const bool isLinked = model->HasMask(row) && model->GetMaskLinked(row);
    const bool isMask = model->GetMaskSelected(row);
    if (isLinked || !isMask) model->UpdateLayerThumbnail(row);
    if (isLinked || isMask) model->UpdateMaskThumbnail(row);
}

// The tool leaves the view in the middle of a drag; what is dragged stays where it is.
void MoveToolPrivate::AbandonDrag()
{
    const bool hasBegun = m_pGuide != nullptr;
    GiveDragBack();
    if (hasBegun) EndDrag();
}

// A box has got the release, so that the pointer comes back without a button.
void MoveToolPrivate::EndLostGesture()
{
    if (!m_bDragging && m_LockCode == Unlocked) return;

    m_LockCode = Unlocked;
    const QPointer<MoveToolPrivate> self(this);
    if (m_bDragging) AbandonDrag();
    if (!self) return;
    LeaveTemporaryTurn();
    OnMaskSelectionChanged(false);
}

// ---- what a drag holds

void MoveToolPrivate::GiveDragBack()
{
    m_bDragging = false;
    m_pGuide.reset();
    UnlockDocument();
    if (!m_pDocumentView) return;

    if (!GiveCaptureBack()) Reports::Condition(ZK_HERE, QStringLiteral("Error to unlock view"));
    GetView()->EnableAutoscroll(false);
}

bool MoveToolPrivate::GiveCaptureBack()
{
    return m_pDocumentView->Unlock(this);
}

void MoveToolPrivate::LockDocument()
{
    LXDocumentInterface* document = GetDocument();
    if (!document || !document->Lock()) return;

    m_pLockedDocument = document;
    LexoAppKeyHook::instance()->DisableAllRegisteredShortcuts();
}

void MoveToolPrivate::UnlockDocument()
{
    if (!m_pLockedDocument) return;

    if (!m_pLockedDocument->Unlock()) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error to unlock the document."));
        return;
    }
    m_pLockedDocument = nullptr;
    LexoAppKeyHook::instance()->EnableAllRegisteredShortcuts();
}

// A turn that Ctrl gave lasts until neither the key nor a drag needs it.
void MoveToolPrivate::LeaveTemporaryTurn()
{
    const bool isHeld = (QGuiApplication::keyboardModifiers() & Qt::ControlModifier) != 0;
    if (!isHeld && !m_pActivateAction->IsChecked()) m_pActivateAction->SetImplicitChecked(false);
}
