#pragma once

#include <QtGlobal>

class LXViewToolBase;

/// What a view tool holds while its job runs on a worker: the wait cursor, the document lock, and the
/// program's shortcuts switched off. Main thread only.
class ToolWork
{
public:
    /// @param tool  outlives this object.
    explicit ToolWork(LXViewToolBase& tool);

    /// Ends the work.
    ~ToolWork();

    Q_DISABLE_COPY(ToolWork)

    /// False when the tool doesn't get the document's lock; nothing is held then.
    bool BeginWork();

    /// Gives the wait cursor back alone: something else now tells that there is work.
    void RestoreCursor();

    /// Gives everything back; harmless when nothing is held.
    void EndWork();

    bool IsWorking() const { return m_bWorking; }

private:
    LXViewToolBase& m_Tool;
    bool m_bWorking = false;
    bool m_bWaitCursor = false;
};
