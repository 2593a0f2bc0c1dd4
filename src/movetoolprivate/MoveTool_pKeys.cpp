#include "movetoolprivate/MoveTool_p.h"

// What keys do with the move tool: they nudge the selection and its pixels, put down what floats, and call
// the tool for a moment.

#include "IDocumentView.h"
#include "movetoolprivate/CopyPasteThread.h"
#include "movetoolprivate/KeyStep.h"

#include "common/Messages.h"
#include "common/Reports.h"
#include "core/ZKActivateAction.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "document/LayerKind.h"
#include "gui/LXMdiArea.h"
#include "gui/LXShortcut.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "history/SelectionMoveCommand.h"
#include "history/SelectionMoveCommandData.h"

#include <QMainWindow>

namespace {
constexpr QPoint Left(-1, 0);
constexpr QPoint Right(1, 0);
constexpr QPoint Up(0, -1);
constexpr QPoint Down(0, 1);

constexpr int SmallStep = 1;
constexpr int LargeStep = 10;

constexpr int MoveKeys = Qt::CTRL;
constexpr int LargeMoveKeys = Qt::CTRL + Qt::SHIFT;
constexpr int CopyKeys = Qt::CTRL + Qt::ALT;
constexpr int LargeCopyKeys = Qt::CTRL + Qt::ALT + Qt::SHIFT;
} // namespace

// ---- the sixteen shortcuts

void MoveToolPrivate::CreateShortcuts()
{
    using Slot = void (MoveToolPrivate::*)();
    using Tool = MoveToolPrivate;

    const struct
    {
        int key;
        Slot slot;
    } rows[] = {{MoveKeys + Qt::Key_Left, &Tool::OnSelectionMoveLeft},
                {LargeMoveKeys + Qt::Key_Left, &Tool::OnSelectionMove10Left},
                {MoveKeys + Qt::Key_Right, &Tool::OnSelectionMoveRight},
                {LargeMoveKeys + Qt::Key_Right, &Tool::OnSelectionMove10Right},
                {MoveKeys + Qt::Key_Up, &Tool::OnSelectionMoveTop},
                {LargeMoveKeys + Qt::Key_Up, &Tool::OnSelectionMove10Top},
                {MoveKeys + Qt::Key_Down, &Tool::OnSelectionMoveBottom},
                {LargeMoveKeys + Qt::Key_Down, &Tool::OnSelectionMove10Bottom},
                {CopyKeys + Qt::Key_Left, &Tool::OnSelectionCopyMoveLeft},
                {LargeCopyKeys + Qt::Key_Left, &Tool::OnSelectionCopyMove10Left},
                {CopyKeys + Qt::Key_Right, &Tool::OnSelectionCopyMoveRight},
                {LargeCopyKeys + Qt::Key_Right, &Tool::OnSelectionCopyMove10Right},
                {CopyKeys + Qt::Key_Up, &Tool::OnSelectionCopyMoveTop},
                {LargeCopyKeys + Qt::Key_Up, &Tool::OnSelectionCopyMove10Top},
                {CopyKeys + Qt::Key_Down, &Tool::OnSelectionCopyMoveBottom},
                {LargeCopyKeys + Qt::Key_Down, &Tool::OnSelectionCopyMove10Bottom}};

    for (const auto& row : rows) {
        auto* shortcut = new LXShortcut(LXMdiArea::MainWindow(), QKeySequence(row.key));
        connect(shortcut, &LXShortcut::Activated, this, row.slot);
        m_Shortcuts.append(shortcut);
    }
    EnableShortcuts(false);
}

void MoveToolPrivate::EnableShortcuts(bool enable)
{
    for (const QPointer<LXShortcut>& shortcut : qAsConst(m_Shortcuts)) {
        if (shortcut) shortcut->SetEnabled(enable);
    }
}

void MoveToolPrivate::OnDocumentLocked()
{
    EnableShortcuts(false);
}

void MoveToolPrivate::OnDocumentUnlocked()
{
    EnableShortcuts(true);
}

void MoveToolPrivate::OnSelectionMoveLeft()
{
    MoveByKey(Left, SmallStep);
}

void MoveToolPrivate::OnSelectionMove10Left()
{
    MoveByKey(Left, LargeStep);
}

void MoveToolPrivate::OnSelectionMoveRight()
{
    MoveByKey(Right, SmallStep);
}

void MoveToolPrivate::OnSelectionMove10Right()
{
    MoveByKey(Right, LargeStep);
}

void MoveToolPrivate::OnSelectionMoveTop()
{
    MoveByKey(Up, SmallStep);
}

void MoveToolPrivate::OnSelectionMove10Top()
{
    MoveByKey(Up, LargeStep);
}

void MoveToolPrivate::OnSelectionMoveBottom()
{
    MoveByKey(Down, SmallStep);
}

void MoveToolPrivate::OnSelectionMove10Bottom()
{
    MoveByKey(Down, LargeStep);
}

void MoveToolPrivate::OnSelectionCopyMoveLeft()
{
    CopyByKey(Left, SmallStep);
}

void MoveToolPrivate::OnSelectionCopyMove10Left()
{
    CopyByKey(Left, LargeStep);
}

void MoveToolPrivate::OnSelectionCopyMoveRight()
{
    CopyByKey(Right, SmallStep);
}

void MoveToolPrivate::OnSelectionCopyMove10Right()
{
    CopyByKey(Right, LargeStep);
}

void MoveToolPrivate::OnSelectionCopyMoveTop()
{
    CopyByKey(Up, SmallStep);
}

void MoveToolPrivate::OnSelectionCopyMove10Top()
{
    CopyByKey(Up, LargeStep);
}

void MoveToolPrivate::OnSelectionCopyMoveBottom()
{
    CopyByKey(Down, SmallStep);
}

void MoveToolPrivate::OnSelectionCopyMove10Bottom()
{
    CopyByKey(Down, LargeStep);
}

// ---- a step

void MoveToolPrivate::MoveByKey(const QPoint& direction, int step)
{
    if (!CanMoveByKey()) return;

    const QPoint delta = KeyDelta(direction, step);
    if (SelectedRows().size() == 1) {
        MovePixels(delta, false);
    } else {
        MoveSelectionAlone(delta);
    }
}

void MoveToolPrivate::CopyByKey(const QPoint& direction, int step)
{
    if (CanMoveByKey() && SelectedRows().size() == 1) MovePixels(KeyDelta(direction, step), true);
}

bool MoveToolPrivate::CanMoveByKey() const
{
    const LXDocumentInterface* document = GetDocument();
    return document && document->HasSelection();
}

QPoint MoveToolPrivate::KeyDelta(const QPoint& direction, int step) const
{
    return direction * KeyStepInDocument(step, GetView()->GetScale());
}

void MoveToolPrivate::MovePixels(const QPoint& delta, bool copy)
{
    const int row = SelectedRows().first();
    if (delta.isNull() || !AllowsPixels(row)) return;

    const unsigned int layerID = static_cast<unsigned int>(row) + 1;
    const MoveViewState* present = CurrentRecord();
    if (!present || !Fits(*present, layerID, copy)) {
        if (present && !LandRecord(*present)) return;
        if (!MakeFloating(layerID, copy)) return;
    }
    MoveViewState* record = CurrentRecord();
    if (!record) return;

    BeginOwnMove(*record);
    if (!record->m_pThread->Move(GetDocument()->GetSelectionGeometry().topLeft() + delta)) {
        OnUnexpectedException(record->m_pThread.get());
        return;
    }
    EndOwnMove(*record);
}

// Whether pixels of the layer may be carried about; tells why not.
bool MoveToolPrivate::AllowsPixels(int row)
{
    if (GetModel()->GetMaskSelected(row)) return AllowsByLocks(row);

    const int kind = GetDocument()->GetLayerKind(static_cast<unsigned int>(row) + 1);
    if (kind == LayerKind::Raster) return AllowsByLocks(row);

    const QString name = kind == LayerKind::Text ? tr("text") : tr("adjustment");
    Messages::ShowWarning(LXMdiArea::MainWindow(), tr("Unable to move selected %1 area.").arg(name));
    return false;
}

void MoveToolPrivate::MoveSelectionAlone(const QPoint& delta)
{
    if (delta.isNull()) return;

    LXDocumentInterface* document = GetDocument();
    const MoveViewState* record = CurrentRecord();
    if (record && record->m_pThread) {
        if (!LandRecord(*record)) return;
        record = nullptr;
    }
    if (!record) {
        if (LexoUndoStack* stack = GetHistory()) {
            const QPoint place = document->GetSelectionGeometry().topLeft();
            auto data = std::make_unique<SelectionMoveCommandData>();
            data->SetUndoPosition(place);
            data->SetRedoPosition(place);
            auto command = std::make_unique<SelectionMoveCommand>(document);
            // Owned by the command from then on.
            if (command->SetCommandData(data.get())) static_cast<void>(data.release());
            stack->pushDelayed(command.release());
            AddRecord(nullptr);
        }
    }
    document->TranslateSelection(delta);
}

// ---- single keys

void MoveToolPrivate::KeyPressEvent(int key)
{
    if (m_bActive) return;

    if (key == Qt::Key_Control) TakeTemporaryTurn();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) LandByKey();
}

void MoveToolPrivate::KeyReleaseEvent(int key)
{
    // A drag keeps its turn until the button is released.
    const bool isInGesture = m_bDragging || m_LockCode != 0;
    if (!m_bActive || key != Qt::Key_Control || isInGesture) return;

    if (!m_pActivateAction->IsChecked() && m_pActivateAction->IsImplicitlyChecked())
        m_pActivateAction->SetImplicitChecked(false);
}

void MoveToolPrivate::TakeTemporaryTurn()
{
    const LXDocumentInterface* document = GetDocument();
    if (!m_pActivateAction->IsChecked() && document && document->GetLockState()) return;
    // The view of another's gesture can't be taken, and who gave the turn away wouldn't get it back.
    if (m_pDocumentView && (m_pDocumentView->GetState() & IDocumentView::LockBit)) return;

    ZKActivateAction* running = ZKToolGroupManager::GetImplicitAction();
    if (running && !running->IsAllowChange()) {
        Reports::Condition(ZK_HERE, QStringLiteral("Error to activate."));
        return;
    }
    if (running) running->SetImplicitChecked(false);
    m_pActivateAction->SetImplicitChecked(true);
}

void MoveToolPrivate::LandByKey()
{
    if (!m_pDocumentView || (m_pDocumentView->GetState() & IDocumentView::LockBit)) return;
    if (GetDocument()->GetLockState()) return;

    if (const MoveViewState* record = CurrentRecord()) LandRecord(*record);
}
