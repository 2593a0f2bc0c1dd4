#include "history/MacroCommand.h"

#include <numeric>

MacroCommand::MacroCommand(const QString& text)
{
    setText(text);
}

MacroCommand::~MacroCommand() = default;

void MacroCommand::MakePlace()
{
    if (m_Commands.size() == m_Commands.capacity()) m_Commands.reserve(m_Commands.size() * 2 + 1);
}

void MacroCommand::Add(std::unique_ptr<LexoCommand> command) noexcept
{
    m_Commands.push_back(std::move(command));
}

bool MacroCommand::IsEmpty() const
{
    return m_Commands.empty();
}

void MacroCommand::undo()
{
    UndoExecute(nullptr);
}

void MacroCommand::redo()
{
    RedoExecute(nullptr);
}

void MacroCommand::RedoExecute(LexoCommandData*)
{
    std::size_t done = 0;
    try {
        for (; done < m_Commands.size(); ++done) {
            m_Commands[done]->redo();
        }
    } catch (...) {
        while (done > 0) {
            m_Commands[--done]->undo();
        }
        throw;
    }
}

void MacroCommand::UndoExecute(LexoCommandData*)
{
    std::size_t left = m_Commands.size();
    try {
        for (; left > 0; --left) {
            m_Commands[left - 1]->undo();
        }
    } catch (...) {
        for (; left < m_Commands.size(); ++left) {
            m_Commands[left]->redo();
        }
        throw;
    }
}

qint64 MacroCommand::GetMemoryCost() const
{
    return std::accumulate(m_Commands.begin(), m_Commands.end(), qint64(0),
                           [](qint64 sum, const auto& command) { return sum + command->GetMemoryCost(); });
}

bool MacroCommand::AcceptsData(const LexoCommandData*) const
{
    return false;
}
