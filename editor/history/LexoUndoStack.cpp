#include "history/LexoUndoStack.h"

#include "history/CommandList.h"
#include "history/MacroCommand.h"

class LexoUndoStackPrivate
{
public:
    CommandList list;
    std::unique_ptr<LexoCommand> delayed;
    std::vector<std::unique_ptr<MacroCommand>> macros; ///< open ones, the outermost first
    bool wasClean = true;

    bool IsMacroOpen() const { return !macros.empty(); }

    void MakePlace();
    void Append(std::unique_ptr<LexoCommand> command) noexcept;
    bool CloseDelayed();
    void OpenMacro(const QString& text);
    void CloseMacro(LexoUndoStack* stack);
    void Announce(LexoUndoStack* stack);
    void AnnounceIndex(LexoUndoStack* stack);
    template <class Step>
    void Run(LexoUndoStack* stack, bool hasClosed, const Step& step);
    void ApplyLimits(LexoUndoStack* stack, int steps, qint64 bytes);
};

/// Before a command is done: what is done must find its place in the history.
void LexoUndoStackPrivate::MakePlace()
{
    if (IsMacroOpen()) {
        macros.back()->MakePlace();
    } else {
        list.MakePlace();
    }
}

void LexoUndoStackPrivate::Append(std::unique_ptr<LexoCommand> command) noexcept
{
    if (IsMacroOpen()) {
        macros.back()->Add(std::move(command));
    } else {
        list.Append(std::move(command));
    }
}

/// True when there was one. When it throws, the command stays open: its change stays in the document too.
bool LexoUndoStackPrivate::CloseDelayed()
{
    if (!delayed) return false;
    MakePlace();
    std::unique_ptr<LexoCommand> command = std::move(delayed);
    try {
        command->EndTransaction(command->GetCommandData());
    } catch (...) {
        delayed = std::move(command);
        throw;
    }
    Append(std::move(command));
    return true;
}

void LexoUndoStackPrivate::OpenMacro(const QString& text)
{
    // Its own place, so that its end can't fail.
    MakePlace();
    macros.push_back(std::make_unique<MacroCommand>(text));
}

void LexoUndoStackPrivate::CloseMacro(LexoUndoStack* stack)
{
    std::unique_ptr<MacroCommand> macro = std::move(macros.back());
    macros.pop_back();
    if (!macro->IsEmpty()) Append(std::move(macro));
    AnnounceIndex(stack);
}

void LexoUndoStackPrivate::Announce(LexoUndoStack* stack)
{
    const bool isClean = stack->isClean();
    if (isClean != wasClean) {
        wasClean = isClean;
        emit stack->cleanChanged(isClean);
    }
    emit stack->historyChanged();
}

void LexoUndoStackPrivate::AnnounceIndex(LexoUndoStack* stack)
{
    if (!IsMacroOpen()) emit stack->indexChanged(list.Index());
    Announce(stack);
}

/// A step that throws ends the call, but not before everybody has heard how far it came.
template <class Step>
void LexoUndoStackPrivate::Run(LexoUndoStack* stack, bool hasClosed, const Step& step)
{
    const int before = list.Index();
    try {
        step();
    } catch (...) {
        if (hasClosed || list.Index() != before) AnnounceIndex(stack);
        throw;
    }
}

void LexoUndoStackPrivate::ApplyLimits(LexoUndoStack* stack, int steps, qint64 bytes)
{
    const int before = list.Index();
    list.SetLimits(steps, bytes);
    if (list.Index() != before) AnnounceIndex(stack);
}

LexoUndoStack::LexoUndoStack(QObject* parent)
    : QObject(parent), m_pPrivate(std::make_unique<LexoUndoStackPrivate>())
{}

LexoUndoStack::~LexoUndoStack() = default;

void LexoUndoStack::push(LexoCommand* command)
{
    std::unique_ptr<LexoCommand> owned(command);
    if (!owned) return;
    if (!m_pPrivate->IsMacroOpen()) emit aboutIndexChanged();
    const bool hasClosed = m_pPrivate->CloseDelayed();
    m_pPrivate->Run(this, hasClosed, [&] {
        m_pPrivate->MakePlace();
        owned->redo();
    });
    m_pPrivate->Append(std::move(owned));
    m_pPrivate->AnnounceIndex(this);
}

void LexoUndoStack::pushDelayed(LexoCommand* command)
{
    std::unique_ptr<LexoCommand> owned(command);
    if (!owned) return;
    if (!m_pPrivate->IsMacroOpen()) emit aboutIndexChanged();
    const bool hasClosed = m_pPrivate->CloseDelayed();
    m_pPrivate->Run(this, hasClosed, [&owned] { owned->BeginTransaction(); });
    m_pPrivate->delayed = std::move(owned);
    m_pPrivate->Announce(this);
}

void LexoUndoStack::commit()
{
    emit aboutCommit();
    if (m_pPrivate->CloseDelayed()) m_pPrivate->AnnounceIndex(this);
}

void LexoUndoStack::beginMacro(const QString& text)
{
    if (!m_pPrivate->IsMacroOpen()) emit aboutIndexChanged();
    m_pPrivate->CloseDelayed();
    m_pPrivate->OpenMacro(text);
    m_pPrivate->Announce(this);
}

void LexoUndoStack::endMacro()
{
    if (!m_pPrivate->IsMacroOpen()) return;
    try {
        m_pPrivate->CloseDelayed();
    } catch (...) {
        m_pPrivate->CloseMacro(this);
        throw;
    }
    m_pPrivate->CloseMacro(this);
}

void LexoUndoStack::abortMacro()
{
    if (!m_pPrivate->IsMacroOpen()) return;
    try {
        m_pPrivate->CloseDelayed();
        m_pPrivate->macros.back()->undo();
    } catch (...) {
        m_pPrivate->CloseMacro(this);
        throw;
    }
    m_pPrivate->macros.pop_back();
    m_pPrivate->AnnounceIndex(this);
}

bool LexoUndoStack::isMacroOpen() const
{
    return m_pPrivate->IsMacroOpen();
}

void LexoUndoStack::undo()
{
    if (m_pPrivate->IsMacroOpen()) return;
    emit aboutIndexChanged();
    const bool hasClosed = m_pPrivate->CloseDelayed();
    if (m_pPrivate->list.Index() == 0) return;
    m_pPrivate->Run(this, hasClosed, [this] { m_pPrivate->list.StepBack(); });
    m_pPrivate->AnnounceIndex(this);
}

void LexoUndoStack::redo()
{
    if (m_pPrivate->IsMacroOpen()) return;
    emit aboutIndexChanged();
    if (m_pPrivate->CloseDelayed()) m_pPrivate->AnnounceIndex(this);
    if (m_pPrivate->list.Index() == count()) return;
    m_pPrivate->list.StepForward();
    m_pPrivate->AnnounceIndex(this);
}

void LexoUndoStack::setIndex(int index)
{
    if (m_pPrivate->IsMacroOpen()) return;
    emit aboutIndexChanged();
    const bool hasClosed = m_pPrivate->CloseDelayed();
    CommandList& list = m_pPrivate->list;
    const int target = qBound(0, index, list.Count());
    if (target == list.Index() && !hasClosed) return;
    m_pPrivate->Run(this, hasClosed, [&list, target] {
        while (list.Index() > target) {
            list.StepBack();
        }
        while (list.Index() < target) {
            list.StepForward();
        }
    });
    m_pPrivate->AnnounceIndex(this);
}

void LexoUndoStack::clear()
{
    if (m_pPrivate->IsMacroOpen()) return;
    emit aboutIndexChanged();
    m_pPrivate->CloseDelayed();
    m_pPrivate->list.Clear();
    m_pPrivate->AnnounceIndex(this);
}

int LexoUndoStack::index() const
{
    return m_pPrivate->list.Index();
}

int LexoUndoStack::count() const
{
    return m_pPrivate->list.Count();
}

QString LexoUndoStack::text(int index) const
{
    return index >= 0 && index < count() ? m_pPrivate->list.At(index)->text() : QString();
}

const LexoCommand* LexoUndoStack::command(int index) const
{
    return index >= 0 && index < count() ? m_pPrivate->list.At(index) : nullptr;
}

bool LexoUndoStack::isDelayedOpen() const
{
    return m_pPrivate->delayed != nullptr;
}

bool LexoUndoStack::canUndo() const
{
    return !m_pPrivate->IsMacroOpen() && (m_pPrivate->delayed || index() > 0);
}

bool LexoUndoStack::canRedo() const
{
    return !m_pPrivate->IsMacroOpen() && !m_pPrivate->delayed && index() < count();
}

QString LexoUndoStack::undoText() const
{
    if (!canUndo()) return QString();
    return m_pPrivate->delayed ? m_pPrivate->delayed->text() : text(index() - 1);
}

QString LexoUndoStack::redoText() const
{
    return canRedo() ? text(index()) : QString();
}

bool LexoUndoStack::isClean() const
{
    return !m_pPrivate->IsMacroOpen() && !m_pPrivate->delayed && m_pPrivate->list.IsAtClean();
}

void LexoUndoStack::setClean()
{
    m_pPrivate->list.SetClean(true);
    m_pPrivate->Announce(this);
}

int LexoUndoStack::cleanIndex() const
{
    return m_pPrivate->list.CleanIndex();
}

void LexoUndoStack::resetClean()
{
    m_pPrivate->list.SetClean(false);
    m_pPrivate->Announce(this);
}

int LexoUndoStack::stepLimit() const
{
    return m_pPrivate->list.StepLimit();
}

void LexoUndoStack::setStepLimit(int steps)
{
    m_pPrivate->ApplyLimits(this, steps, memoryLimit());
}

qint64 LexoUndoStack::memoryLimit() const
{
    return m_pPrivate->list.MemoryLimit();
}

qint64 LexoUndoStack::memoryCost() const
{
    return m_pPrivate->list.Cost();
}

bool LexoUndoStack::hasForgotten() const
{
    return m_pPrivate->list.HasForgotten();
}

void LexoUndoStack::setMemoryLimit(qint64 bytes)
{
    m_pPrivate->ApplyLimits(this, stepLimit(), bytes);
}
