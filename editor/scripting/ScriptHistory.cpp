#include "scripting/ScriptHistory.h"

#include "document/LXDocumentInterface.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "history/MacroCommand.h"
#include "scripting/ScriptArguments.h"

ScriptHistory::ScriptHistory(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

LexoUndoStack* ScriptHistory::Require() const
{
    LexoUndoStack* history = RequireView()->GetHistory();
    if (!history) throw ScriptError(QStringLiteral("The view has no history."));
    return history;
}

LexoUndoStack* ScriptHistory::RequireFree() const
{
    if (RequireDocument()->GetLockState()) {
        throw ScriptError(QStringLiteral("The document is being changed."));
    }
    return Require();
}

QStringList ScriptHistory::GetTexts() const
{
    return Call([this] {
        const LexoUndoStack* history = Require();
        QStringList texts;
        for (int i = 0; i < history->count(); ++i)
            texts.append(history->text(i));
        return texts;
    });
}

int ScriptHistory::GetCount() const
{
    return Call([this] { return Require()->count(); });
}

int ScriptHistory::GetIndex() const
{
    return Call([this] { return Require()->index(); });
}

void ScriptHistory::SetIndex(int index)
{
    Call([&] {
        LexoUndoStack* history = RequireFree();
        if (index < 0 || index > history->count()) {
            throw ScriptError(QStringLiteral("The history has %1 steps.").arg(history->count()));
        }
        history->setIndex(index);
    });
}

bool ScriptHistory::CanUndo() const
{
    return Call([this] { return Require()->canUndo(); });
}

bool ScriptHistory::CanRedo() const
{
    return Call([this] { return Require()->canRedo(); });
}

QString ScriptHistory::GetUndoText() const
{
    return Call([this] { return Require()->undoText(); });
}

QString ScriptHistory::GetRedoText() const
{
    return Call([this] { return Require()->redoText(); });
}

bool ScriptHistory::IsClean() const
{
    return Call([this] { return Require()->isClean(); });
}

bool ScriptHistory::IsMacroOpen() const
{
    return Call([this] { return Require()->isMacroOpen(); });
}

void ScriptHistory::undo()
{
    Call([this] {
        LexoUndoStack* history = RequireFree();
        if (!history->canUndo()) throw ScriptError(QStringLiteral("There is nothing to undo."));
        history->undo();
    });
}

void ScriptHistory::redo()
{
    Call([this] {
        LexoUndoStack* history = RequireFree();
        if (!history->canRedo()) throw ScriptError(QStringLiteral("There is nothing to redo."));
        history->redo();
    });
}

bool ScriptHistory::isMacro(const QJSValue& index) const
{
    return Call([&] {
        const LexoUndoStack* history = Require();
        const int step = ScriptArguments::ToInteger(index, "index", 0, history->count() - 1);
        return dynamic_cast<const MacroCommand*>(history->command(step)) != nullptr;
    });
}
