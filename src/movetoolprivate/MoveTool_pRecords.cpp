#include "movetoolprivate/MoveTool_p.h"

// What floats: how it is lifted, how it lands, and what happens when that fails.

#include "IDocumentView.h"
#include "movetoolprivate/CopyPasteObject.h"
#include "movetoolprivate/CopyPasteThread.h"
#include "movetoolprivate/CutPasteObject.h"
#include "movetoolprivate/PathMoveObject.h"

#include "common/Messages.h"
#include "common/Reports.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"

#include <QPointer>

#include <stdexcept>
#include <utility>

namespace {
std::unique_ptr<CopyPasteBase> MakeObject(bool mask, bool copy)
{
    if (mask && copy) return std::make_unique<MaskCopyPasteObject>();
    if (mask) return std::make_unique<MaskCutPasteObject>();
    if (copy) return std::make_unique<LayerCopyPasteObject>();
    return std::make_unique<LayerCutPasteObject>();
}

// With its tool at the latest: a piece that couldn't be taken back still needs the document.
void DeleteLater(std::unique_ptr<CopyPasteThread>& thread, QObject* tool)
{
    thread->setParent(tool);
    thread.release()->deleteLater();
}
} // namespace

// ---- finding

template <class Condition>
MoveViewState* MoveToolPrivate::FindRecord(const Condition& condition) const
{
    for (const auto& entry : m_Views) {
        if (condition(*entry.second)) return entry.second.get();
    }
    return nullptr;
}

const MoveViewState* MoveToolPrivate::GetRecord(const ZKDocumentView* view) const
{
    const auto entry = m_Views.find(view);
    return entry == m_Views.end() ? nullptr : entry->second.get();
}

MoveViewState* MoveToolPrivate::CurrentRecord() const
{
    const ZKDocumentView* view = GetView();
    return FindRecord([view](const MoveViewState& record) { return record.m_pView == view; });
}

bool MoveToolPrivate::Fits(const MoveViewState& record, unsigned int layerID, bool copy) const
{
    const bool isMask = GetModel()->GetMaskSelected(static_cast<int>(layerID) - 1);
    return record.m_pThread && !record.m_bPath && record.m_LayerID == layerID && record.m_bMask == isMask &&
           record.m_bCopy == copy;
}

// ---- lifting

bool MoveToolPrivate::MakeFloating(unsigned int layerID, bool copy)
{
    // Pieces of other views of the picture land now, since their boxes may take tool and view away.
    const QPointer<MoveToolPrivate> self(this);
    const IDocumentView* view = m_pDocumentView;
    if (LexoUndoStack* stack = GetHistory()) stack->commit();
    if (!self || m_pDocumentView != view) return false;

    const bool isMask = GetModel()->GetMaskSelected(static_cast<int>(layerID) - 1);
    auto thread = std::make_unique<CopyPasteThread>(MakeObject(isMask, copy).release(), this);
    if (!thread->Begin(GetView(), layerID)) {
        thread.reset();
        Messages::ShowOperationError(tr("Cannot perform the operation. Insufficent system resources."));
        return false;
    }
    MoveViewState& record = AddRecord(std::move(thread));
    record.m_LayerID = layerID;
    record.m_bMask = isMask;
    record.m_bCopy = copy;
    return true;
}

bool MoveToolPrivate::MakeFloatingPath()
{
    auto thread = std::make_unique<CopyPasteThread>(new PathMoveObject, this);
    if (!thread->Begin(GetView(), MoveViewState::NoLayer)) {
        thread.reset();
        Messages::ShowOperationError(tr("Cannot perform the operation. Unexpected error occurred."));
        return false;
    }
    MoveViewState& record = AddRecord(std::move(thread));
    record.m_bPath = true;
    record.m_PathIDs = m_PathPair;
    return true;
}

MoveViewState& MoveToolPrivate::AddRecord(std::unique_ptr<CopyPasteThread> thread)
{
    ZKDocumentView* view = GetView();
    auto& place = m_Views[view];
    place = std::make_unique<MoveViewState>(view, std::move(thread));
    Listen(*place);
    return *place;
}

void MoveToolPrivate::Listen(const MoveViewState& record)
{
    const LXDocumentInterface* document = record.m_pDocument;
    connect(record.m_pView, &ZKDocumentView::AboutDestroy, this,
            &MoveToolPrivate::OnAboutDocumentViewDestroyed);
    connect(document, &LXDocumentInterface::AboutRequesAdditionalLayer, this,
            &MoveToolPrivate::OnAboutRequesAdditionalLayer);
    connect(document, &LXDocumentInterface::AboutRequesAdditionalMask, this,
            &MoveToolPrivate::OnAboutRequesAdditionalMask);
    connect(document, &LXDocumentInterface::AboutSelectionMove, this, &MoveToolPrivate::OnAboutSelectionMove);
    if (const LexoUndoStack* stack = record.m_pUndoStack) {
        connect(stack, &LexoUndoStack::aboutIndexChanged, this, &MoveToolPrivate::OnAboutHistoryIndexChanged);
        connect(stack, &LexoUndoStack::aboutCommit, this, &MoveToolPrivate::OnAboutHistoryIndexChanged);
    }
    if (const CopyPasteThread* thread = record.m_pThread.get()) {
        connect(thread, &CopyPasteThread::UnexpectedException, this, &MoveToolPrivate::OnUnexpectedException);
        connect(thread, &CopyPasteThread::UnexpectedError, this, &MoveToolPrivate::OnUnexpectedError);
    }
}

void MoveToolPrivate::StopListening(const MoveViewState& record)
{
    const LXDocumentInterface* document = record.m_pDocument;
    disconnect(record.m_pView, &ZKDocumentView::AboutDestroy, this, nullptr);
    disconnect(document, &LXDocumentInterface::AboutRequesAdditionalLayer, this, nullptr);
    disconnect(document, &LXDocumentInterface::AboutRequesAdditionalMask, this, nullptr);
    disconnect(document, &LXDocumentInterface::AboutSelectionMove, this, nullptr);
    if (record.m_pUndoStack) disconnect(record.m_pUndoStack, nullptr, this, nullptr);
    if (record.m_pThread) disconnect(record.m_pThread.get(), nullptr, this, nullptr);
}

// ---- moving

void MoveToolPrivate::BeginOwnMove(MoveViewState& record)
{
    if (record.m_bOwnMove) return;

    disconnect(record.m_pDocument, &LXDocumentInterface::AboutSelectionMove, this, nullptr);
    record.m_bOwnMove = true;
}

void MoveToolPrivate::EndOwnMove(MoveViewState& record)
{
    if (!record.m_bOwnMove) return;

    record.m_pThread->Flush();
    record.m_bOwnMove = false;
    connect(record.m_pDocument, &LXDocumentInterface::AboutSelectionMove, this,
            &MoveToolPrivate::OnAboutSelectionMove);
}

// ---- landing

// Nobody finds the record any more from here on: what its end causes must not lead to it again.
std::unique_ptr<MoveViewState> MoveToolPrivate::TakeRecord(const MoveViewState& record)
{
    StopListening(record);
    const auto entry = m_Views.find(record.m_pView);
    std::unique_ptr<MoveViewState> taken = std::move(entry->second);
    m_Views.erase(entry);
    // It may outlive the tool, which a box of its end lets go.
    if (taken->m_pThread) taken->m_pThread->setParent(nullptr);
    return taken;
}

// False when a box of a failure took the tool or its view away: then the caller can't go on.
bool MoveToolPrivate::LandRecord(const MoveViewState& record)
{
    const QPointer<MoveToolPrivate> self(this);
    const IDocumentView* view = m_pDocumentView;
    const std::unique_ptr<MoveViewState> landing = TakeRecord(record);
    if (!landing->m_pThread) {
        // The command of the keys reads where the selection stands, so it must not stay open.
        if (landing->m_pUndoStack) landing->m_pUndoStack->commit();
        return self && m_pDocumentView == view;
    }
    landing->m_pThread->Flush();
    if (landing->HasPiece() && !landing->m_pThread->Commit(landing->m_pUndoStack) && !landing->m_bPath)
        CancelPiece(*landing);
    return self && m_pDocumentView == view;
}

// What floats above the current picture, in whichever view. Without a history only this view is known to show
// it. False as of LandRecord().
bool MoveToolPrivate::LandAll()
{
    const LexoUndoStack* stack = GetHistory();
    const ZKDocumentView* view = GetView();
    const auto isHere = [stack, view](const MoveViewState& record) {
        return stack ? record.m_pUndoStack == stack : record.m_pView == view;
    };
    while (const MoveViewState* record = FindRecord(isHere)) {
        if (!LandRecord(*record)) return false;
    }
    return true;
}

LXDocumentInterface* MoveToolPrivate::SenderDocument() const
{
    return qobject_cast<LXDocumentInterface*>(sender());
}

void MoveToolPrivate::OnAboutHistoryIndexChanged()
{
    const auto* stack = qobject_cast<const LexoUndoStack*>(sender());
    const auto isOfStack = [stack](const MoveViewState& record) { return record.m_pUndoStack == stack; };
    const MoveViewState* record = FindRecord(isOfStack);
    if (!record) return;

    if (record->m_pThread) {
        LandRecord(*record);
    } else {
        // The stack is about to close the command by itself.
        TakeRecord(*record);
    }
}

void MoveToolPrivate::OnAboutRequesAdditionalLayer(uint layerID)
{
    const LXDocumentInterface* document = SenderDocument();
    const MoveViewState* record = FindRecord([document, layerID](const MoveViewState& candidate) {
        return candidate.m_pDocument == document && candidate.m_LayerID == layerID;
    });
    if (record) LandRecord(*record);
}

void MoveToolPrivate::OnAboutRequesAdditionalMask(uint layerID)
{
    OnAboutRequesAdditionalLayer(layerID);
}

void MoveToolPrivate::OnAboutSelectionMove()
{
    const LXDocumentInterface* document = SenderDocument();
    const MoveViewState* record =
        FindRecord([document](const MoveViewState& candidate) { return candidate.m_pDocument == document; });
    if (record) LandRecord(*record);
}

void MoveToolPrivate::OnAboutDocumentViewDestroyed(ZKDocumentView* view)
{
    // What floats goes with the picture.
    if (const MoveViewState* record = GetRecord(view)) TakeRecord(*record);
}

// ---- failures

void MoveToolPrivate::OnUnexpectedException(CopyPasteThread* thread)
{
    const MoveViewState* record =
        FindRecord([thread](const MoveViewState& candidate) { return candidate.m_pThread.get() == thread; });
    // A move at once only answers false, whatever failed.
    if (!record || thread->IsStateUnknown()) {
        OnUnexpectedError(thread);
        return;
    }
    const QPointer<MoveToolPrivate> self(this);
    {
        // The thread may be the sender.
        const std::unique_ptr<MoveViewState> cancelled = TakeRecord(*record);
        cancelled->m_pThread->Flush();
        CancelPiece(*cancelled);
        DeleteLater(cancelled->m_pThread, self);
    }
    if (!self) return;
    if (m_bDragging) GiveDragBack();
    LeaveTemporaryTurn();
}

// The piece isn't found by anybody any more.
void MoveToolPrivate::CancelPiece(MoveViewState& record)
{
    bool isDone = false;
    bool isBack = false;
    const auto cancel = [&record, &isDone, &isBack] {
        if (!std::exchange(isDone, true)) isBack = record.m_pThread->Cancel();
    };
    const QPointer<MoveToolPrivate> self(this);
    {
        // A picture that goes while the box shows gets its pixels back before.
        const QObject untilAnswered;
        connect(record.m_pView, &ZKDocumentView::AboutDestroy, &untilAnswered, cancel);
        Messages::ShowOperationError(tr("Unexpected error. Operation will be interrupted."));
    }
    try {
        cancel();
    } catch (...) {
        Reports::UnknownException(ZK_HERE);
        DeleteLater(record.m_pThread, self);
        if (self) DeleteThreadsLater();
        Messages::ShowOperationError(tr("Cannot roll back. Unexpected error.\nApplication will stop!"));
        throw;
    }
    if (!isBack) Messages::ShowOperationError(tr("Cannot roll back. Insufficent system resources."));
}

void MoveToolPrivate::OnUnexpectedError(CopyPasteThread*)
{
    Reports::UnknownException(ZK_HERE);
    DeleteThreadsLater();
    // What is asked at the end of the program must not find the document held.
    if (m_bDragging) GiveDragBack();
    Messages::ShowOperationError(tr("Unexpected error. Application will stop!"));
    throw std::runtime_error("The move tool failed in an unknown way.");
}

void MoveToolPrivate::DeleteThreadsLater()
{
    for (auto& entry : m_Views) {
        StopListening(*entry.second);
        if (entry.second->m_pThread) entry.second->m_pThread.release()->deleteLater();
    }
    m_Views.clear();
}
