#pragma once

#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"

#include <QStringList>

#include <new>
#include <stdexcept>

/// Data that holds nothing but a memory cost.
class RecordedData : public LexoCommandData
{
public:
    explicit RecordedData(qint64 cost = 0) : m_Cost(cost) {}

    int GetDataType() const override { return -1; }

    bool Serialize(IWriter*) const override { return false; }

    bool Deserialize(IReader*) override { return false; }

    qint64 GetMemoryCost() const override { return m_Cost; }

private:
    qint64 m_Cost;
};

/// Writes each call into a log: "name redo", "name begin", ...
class RecordedCommand : public LexoCommand
{
public:
    RecordedCommand(const QString& name, QStringList& log, qint64 cost = 0) : m_Log(log)
    {
        setText(name);
        SetCommandData(new RecordedData(cost));
    }

    ~RecordedCommand() override { Note("deleted"); }

    void BeginTransaction() override { Note("begin"); }

    void EndTransaction(LexoCommandData*) override
    {
        if (failsOnClose && !IsExecuting()) throw std::runtime_error("close");
        Note(IsExecuting() ? "end" : "close");
    }

    void RedoExecute(LexoCommandData*) override
    {
        if (failsOnRedo) throw std::runtime_error("redo");
        Note("redo");
    }

    qint64 GetMemoryCost() const override
    {
        if (failsOnCost) throw std::bad_alloc();
        return LexoCommand::GetMemoryCost();
    }

    void UndoExecute(LexoCommandData*) override
    {
        if (failsOnUndo) throw std::runtime_error("undo");
        Note("undo");
    }

    bool failsOnRedo = false;
    bool failsOnUndo = false;
    bool failsOnClose = false;
    bool failsOnCost = false;

protected:
    bool AcceptsData(const LexoCommandData* data) const override
    {
        return dynamic_cast<const RecordedData*>(data) != nullptr;
    }

private:
    void Note(const QString& what) { m_Log << text() + ' ' + what; }

    QStringList& m_Log;
};
