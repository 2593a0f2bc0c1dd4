#pragma once

#include "EditorExport.h"

#include <QObject>
#include <QPointer>
#include <QString>

class LexoUndoStack;
class ScriptContext;
class ZKDocumentView;

/// `faults`: makes the editor fail on purpose, to see that its tools stand it. Only there when the program
/// was started with `--test-faults`. Counts start at 1 with the next time; later ones succeed again.
class ZK_EDITOR_EXPORT ScriptFaults : public QObject
{
    Q_OBJECT

public:
    ScriptFaults(ScriptContext& context, QObject* parent);

    /// Takes everything back that has not happened yet.
    ~ScriptFaults() override;

    /// The n-th lock of a document is refused.
    Q_INVOKABLE void refuseLock(int n = 1);
    Q_INVOKABLE void refuseUnlock(int n = 1);
    /// No memory for the n-th tile.
    Q_INVOKABLE void failTile(int n = 1);
    /// No room on the disk at the n-th write of a picture file.
    Q_INVOKABLE void failWrite(int n = 1);
    /// The n-th fill of similar pixels fails.
    Q_INVOKABLE void failFill(int n = 1);

    /// Each time takes so much longer; 0 takes it back.
    /// @param place  "lock", "unlock", "tile", "write" or "fill"
    Q_INVOKABLE void slowDown(const QString& place, int milliseconds);

    /// Leaves the active view without a history, until giveHistory() or the view's end.
    Q_INVOKABLE void takeHistory();
    Q_INVOKABLE void giveHistory();

    /// Closes the active document without asking anybody, whatever is going on.
    Q_INVOKABLE void closeDocument();

    /// Puts a picture of one color on the system's clipboard the way another program does: as a PNG file.
    Q_INVOKABLE void putForeignImage(int width, int height, const QString& color);

    /// Disarms what has not happened yet.
    Q_INVOKABLE void reset();

private:
    ScriptContext& m_Context;
    QPointer<ZKDocumentView> m_pViewWithout; ///< whose history was taken
    QPointer<LexoUndoStack> m_pTaken;
};
