#pragma once

#include "ZKHostExport.h"

#include <QUndoCommand>

#include <memory>

class LexoCommandData;
class LexoCommandPrivate;

/// One undoable change: what to do, while its LexoCommandData holds the values. The text is the user's word
/// for it. Main thread. Commands take the pixel lockers themselves and never ask for the document lock.
class ZK_HOST_EXPORT LexoCommand : public QUndoCommand
{
public:
    LexoCommand();
    ~LexoCommand() override;

    /// Run BeginTransaction, the execute step and EndTransaction. Without data they do nothing.
    void undo() override;
    void redo() override;

    /// Before a change. The base does nothing.
    virtual void BeginTransaction();
    /// After a change. For a delayed command this is where the values after the user's work are read from the
    /// document; IsExecuting() tells the two apart. The base does nothing.
    virtual void EndTransaction(LexoCommandData* data);
    virtual void RedoExecute(LexoCommandData* data) = 0;
    virtual void UndoExecute(LexoCommandData* data) = 0;

    /// Hands over the values; owned from then on. False, and still the caller's, for null, for data of a kind
    /// that this command doesn't take, and for a second call.
    bool SetCommandData(LexoCommandData* data);
    /// Null before SetCommandData.
    LexoCommandData* GetCommandData() const;

    /// About how many bytes the command holds.
    virtual qint64 GetMemoryCost() const;

protected:
    /// Whether the data is of the command's kind.
    virtual bool AcceptsData(const LexoCommandData* data) const = 0;
    /// SetCommandData() has taken the data. The base does nothing.
    virtual void DataTaken(LexoCommandData* data);
    /// True inside undo() and redo().
    bool IsExecuting() const;

private:
    std::unique_ptr<LexoCommandPrivate> m_pPrivate;
};
