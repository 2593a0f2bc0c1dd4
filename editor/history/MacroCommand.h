#pragma once

#include "history/LexoCommand.h"

#include <QString>

#include <memory>
#include <vector>

/// Several commands that are one step of the history. It has no data of its own.
class MacroCommand : public LexoCommand
{
public:
    explicit MacroCommand(const QString& text);
    ~MacroCommand() override;

    /// What the next Add() needs of memory. To be called before the command is done.
    void MakePlace();
    /// Takes a command that is done already.
    void Add(std::unique_ptr<LexoCommand> command) noexcept;
    bool IsEmpty() const;

    /// All or nothing: when a command throws, those before it are taken back and the exception goes on.
    void undo() override;
    void redo() override;
    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;
    qint64 GetMemoryCost() const override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::vector<std::unique_ptr<LexoCommand>> m_Commands;
};
