#pragma once

#include "history/LexoUndoStack.h"

#include <QString>

/// The commands that are pushed within the scope are one step of the history. Main thread only.
class UndoMacro
{
public:
    /// @param history  null does nothing; else it outlives the scope
    UndoMacro(LexoUndoStack* history, const QString& text) : m_pHistory(history)
    {
        if (m_pHistory) m_pHistory->beginMacro(text);
    }

    ~UndoMacro()
    {
        if (m_pHistory) m_pHistory->endMacro();
    }

    Q_DISABLE_COPY(UndoMacro)

private:
    LexoUndoStack* m_pHistory;
};
