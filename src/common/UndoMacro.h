#pragma once

#include "common/Reports.h"
#include "history/LexoUndoStack.h"

#include <QString>

#include <exception>

/// The commands that are pushed within the scope are one step of the history. When an exception leaves the
/// scope they are taken back, and there is no step. Main thread only.
class UndoMacro
{
public:
    /// @param history  null does nothing; else it outlives the scope
    UndoMacro(LexoUndoStack* history, const QString& text)
        : m_pHistory(history), m_ExceptionsBefore(std::uncaught_exceptions())
    {
        if (m_pHistory) m_pHistory->beginMacro(text);
    }

    ~UndoMacro()
    {
        if (!m_pHistory) return;
        if (std::uncaught_exceptions() == m_ExceptionsBefore) {
            m_pHistory->endMacro();
            return;
        }
        try {
            m_pHistory->abortMacro();
        } catch (const std::exception& exception) {
            // What can't be taken back stays a step, so that the person can try again.
            Reports::Exception(ZK_HERE, exception);
        } catch (...) {
            Reports::UnknownException(ZK_HERE);
        }
    }

    Q_DISABLE_COPY(UndoMacro)

private:
    LexoUndoStack* m_pHistory;
    int m_ExceptionsBefore;
};
