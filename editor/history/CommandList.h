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

    /// Drops what was undone and takes a command that is done already.
    void Append(std::unique_ptr<LexoCommand> command);
    /// Undo or redo one command; when it throws, the index stays.
    void StepBack();
    void StepForward();
    void Clear();

    bool IsAtClean() const { return m_Index == m_CleanIndex; }

    void SetClean(bool here) { m_CleanIndex = here ? m_Index : NoCleanIndex; }

    int StepLimit() const { return m_StepLimit; }

    qint64 MemoryLimit() const { return m_MemoryLimit; }

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
    int m_StepLimit = 0;
    qint64 m_MemoryLimit = 0;
};
