#pragma once

#include "history/LexoCommand.h"
#include "history/LexoCommandData.h"

#include <QStringList>

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

    void EndTransaction(LexoCommandData*) override { Note(IsExecuting() ? "end" : "close"); }

    void RedoExecute(LexoCommandData*) override
    {
        if (failsOnRedo) throw std::runtime_error("redo");
        Note("redo");
    }

    void UndoExecute(LexoCommandData*) override
    {
        if (failsOnUndo) throw std::runtime_error("undo");
        Note("undo");
    }

    bool failsOnRedo = false;
    bool failsOnUndo = false;

protected:
    bool AcceptsData(const LexoCommandData* data) const override
    {
        return dynamic_cast<const RecordedData*>(data) != nullptr;
    }

private:
    void Note(const QString& what) { m_Log << text() + ' ' + what; }

    QStringList& m_Log;
};
