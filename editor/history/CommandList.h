#pragma once

#include "history/LexoCommand.h"

#include <memory>
#include <vector>

/// The commands of a history that are done and undone, with the clean index and the limits. No signals.
class CommandList
{
public:
    int Index() const { return m_Index; }

    int Count() const { return static_cast<int>(m_Entries.size()); }

    LexoCommand* At(int index) const { return m_Entries[static_cast<std::size_t>(index)].command.get(); }

    /// What the next Append() needs of memory. To be called before the command is done, because afterwards
    /// nothing may fail.
    void MakePlace();
    /// Drops what was undone and takes a command that is done already.
    void Append(std::unique_ptr<LexoCommand> command) noexcept;
    /// Undo or redo one command; when it throws, the index stays.
    void StepBack();
    void StepForward();
    void Clear();

    /// -1 when no state of the list is the clean one.
    int CleanIndex() const { return m_CleanIndex; }

    bool IsAtClean() const { return m_Index == m_CleanIndex; }

    void SetClean(bool here) { m_CleanIndex = here ? m_Index : NoCleanIndex; }

    int StepLimit() const { return m_StepLimit; }

    qint64 MemoryLimit() const { return m_MemoryLimit; }

    /// What the commands hold, in bytes.
    qint64 Cost() const { return m_Cost; }

    /// Whether a limit has taken commands away since the last Clear().
    bool HasForgotten() const { return m_bHasForgotten; }

    void SetLimits(int steps, qint64 bytes);

private:
    static constexpr int NoCleanIndex = -1;

    struct Entry
    {
        std::unique_ptr<LexoCommand> command;
        qint64 cost = 0;
    };

    bool IsOverLimit() const;
    void Trim();

    std::vector<Entry> m_Entries;
    qint64 m_Cost = 0;
    int m_Index = 0;
    int m_CleanIndex = 0;
    bool m_bHasForgotten = false;
    int m_StepLimit = 0;
    qint64 m_MemoryLimit = 0;
};
