#pragma once

#include "ZKHostExport.h"

#include <QObject>
#include <QString>

#include <memory>

class LexoCommand;
class LexoUndoStackPrivate;

/// The history of one document: what was done, in order, and how far it is undone. Main thread.
///
/// A command may stand open ("delayed") while the user still works on its change; it isn't in the list until
/// it is closed. commit() closes it, and so does every push, undo, redo, setIndex and clear before it acts.
///
/// `aboutIndexChanged()` goes out before anything happens, so that whoever has a floating piece can put it
/// down; its handlers may push. Inside an open macro only the pushes do something: undo, redo, setIndex and
/// clear are ignored, and the signals of the pushes are left to beginMacro() and endMacro().
class ZK_HOST_EXPORT LexoUndoStack : public QObject
{
    Q_OBJECT

public:
    explicit LexoUndoStack(QObject* parent = nullptr);
    ~LexoUndoStack() override;

    /// `aboutIndexChanged()`, closes a delayed command, `redo()`, appends, `indexChanged()`. Takes ownership,
    /// also when the command throws: then it is deleted, the list stays, and the exception goes on.
    /// What was undone can't be redone afterwards. Null is harmless.
    void push(LexoCommand* command);
    /// `aboutIndexChanged()`, closes an older delayed command, `BeginTransaction()`, and holds the command
    /// outside the list. Takes ownership.
    void pushDelayed(LexoCommand* command);
    /// `aboutCommit()`, `EndTransaction()`, appends, `indexChanged()`. With nothing open only
    /// `aboutCommit()`. When the command throws, here or wherever else it is closed, it stays open, and the
    /// exception goes on.
    void commit();

    /// Groups the pushes up to endMacro() into one step with this text. `aboutIndexChanged()` goes out here,
    /// `indexChanged()` at the end. Macros may nest; a macro that stayed empty leaves no step. A delayed
    /// command that can't be closed at the end stays open outside the macro, and the exception goes on.
    void beginMacro(const QString& text);
    void endMacro();
    /// Takes back what the open macro holds, the newest first, and closes it without a step. When that
    /// throws, the macro is closed with what it holds, and the exception goes on.
    void abortMacro();
    bool isMacroOpen() const;

    /// `aboutIndexChanged()`, closes a delayed command, then acts on the index of that moment,
    /// `indexChanged()`.
    void undo();
    void redo();
    /// Undoes or redoes up to that many commands done; clamped to the list.
    void setIndex(int index);
    /// Forgets all commands without undoing them.
    void clear();

    /// How many of the commands are done.
    int index() const;
    int count() const;
    /// The text of the command at the index; empty outside the list.
    QString text(int index) const;
    /// The command at the index, which stays the history's own; null outside the list.
    const LexoCommand* command(int index) const;

    /// Whether a delayed command stands open.
    bool isDelayedOpen() const;
    /// A delayed command can be undone too.
    bool canUndo() const;
    bool canRedo() const;
    /// The text of what undo() and redo() would act on; empty if nothing.
    QString undoText() const;
    QString redoText() const;

    /// The state that is on disk. Not clean while a delayed command or a macro is open.
    bool isClean() const;
    void setClean();
    /// The index of the clean state; -1 when none of those in the list is it.
    int cleanIndex() const;
    /// No state is the clean one any more.
    void resetClean();

    /// How many steps are kept, the oldest being forgotten first; 0 means no limit.
    int stepLimit() const;
    void setStepLimit(int steps);
    /// How many bytes the steps may hold (LexoCommandData::GetMemoryCost); the newest step always stays.
    /// 0 means no limit.
    qint64 memoryLimit() const;
    void setMemoryLimit(qint64 bytes);
    /// How many bytes the steps of the list hold.
    qint64 memoryCost() const;
    /// Whether a limit has taken steps out of the list since the last clear().
    bool hasForgotten() const;

signals:
    void aboutIndexChanged();
    void aboutCommit();
    void indexChanged(int index);
    void cleanChanged(bool clean);
    /// Anything that a panel or an action shows of the history may have changed.
    void historyChanged();

private:
    std::unique_ptr<LexoUndoStackPrivate> m_pPrivate;
};
