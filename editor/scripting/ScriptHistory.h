#pragma once

#include "scripting/ScriptObject.h"

#include <QString>
#include <QStringList>

class LexoUndoStack;

/// `history`: the steps of the active document.
class ScriptHistory : public ScriptObject
{
    Q_OBJECT
    /// Of all steps, the oldest first, undone ones included.
    Q_PROPERTY(QStringList texts READ GetTexts)
    Q_PROPERTY(int count READ GetCount)
    /// How many of the steps are done. Setting it undoes or redoes up to there.
    Q_PROPERTY(int index READ GetIndex WRITE SetIndex)
    Q_PROPERTY(bool canUndo READ CanUndo)
    Q_PROPERTY(bool canRedo READ CanRedo)
    /// Of the step that undo or redo would act on; empty for none.
    Q_PROPERTY(QString undoText READ GetUndoText)
    Q_PROPERTY(QString redoText READ GetRedoText)
    /// Whether the state is the one that was saved or opened.
    Q_PROPERTY(bool clean READ IsClean)
    /// Whether a group of steps is being made.
    Q_PROPERTY(bool macroOpen READ IsMacroOpen)

public:
    ScriptHistory(ScriptContext& context, QObject* parent);

    QStringList GetTexts() const;
    int GetCount() const;
    int GetIndex() const;
    void SetIndex(int index);
    bool CanUndo() const;
    bool CanRedo() const;
    QString GetUndoText() const;
    QString GetRedoText() const;
    bool IsClean() const;
    bool IsMacroOpen() const;

    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// Whether the step consists of several.
    Q_INVOKABLE bool isMacro(const QJSValue& index) const;

private:
    LexoUndoStack* Require() const;
    LexoUndoStack* RequireFree() const;
};
