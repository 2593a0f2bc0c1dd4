#include "history/CommandList.h"

namespace {
/// A step whose cost can't be told now counts as nothing: the limit may wait, the step must not be lost.
qint64 CostOf(const LexoCommand& command) noexcept
{
    try {
        return command.GetMemoryCost();
    } catch (...) {
        return 0;
    }
}
} // namespace

void CommandList::MakePlace()
{
    if (m_Entries.size() == m_Entries.capacity()) m_Entries.reserve(m_Entries.size() * 2 + 1);
}

void CommandList::Append(std::unique_ptr<LexoCommand> command) noexcept
{
    if (m_CleanIndex > m_Index) m_CleanIndex = NoCleanIndex;
    while (Count() > m_Index) {
        m_Cost -= m_Entries.back().cost;
        m_Entries.pop_back();
    }
    Entry entry;
    entry.cost = CostOf(*command);
    entry.command = std::move(command);
    m_Cost += entry.cost;
    m_Entries.push_back(std::move(entry));
    ++m_Index;
    Trim();
}

void CommandList::StepBack()
{
    At(m_Index - 1)->undo();
    --m_Index;
}

void CommandList::StepForward()
{
    At(m_Index)->redo();
    ++m_Index;
}

void CommandList::Clear()
{
    m_CleanIndex = IsAtClean() ? 0 : NoCleanIndex;
    m_Entries.clear();
    m_Cost = 0;
    m_Index = 0;
    m_bHasForgotten = false;
}

void CommandList::SetLimits(int steps, qint64 bytes)
{
    m_StepLimit = steps;
    m_MemoryLimit = bytes;
    Trim();
}

bool CommandList::IsOverLimit() const
{
    return (m_StepLimit > 0 && Count() > m_StepLimit) || (m_MemoryLimit > 0 && m_Cost > m_MemoryLimit);
}

void CommandList::Trim()
{
    while (IsOverLimit() && Count() > 1 && m_Index > 0) {
        m_Cost -= m_Entries.front().cost;
        m_Entries.erase(m_Entries.begin());
        --m_Index;
        m_bHasForgotten = true;
        // The clean state can't be reached any more once its first step is gone.
        m_CleanIndex = m_CleanIndex > 0 ? m_CleanIndex - 1 : NoCleanIndex;
    }
}
