#include "ToolWork.h"

#include "LXViewToolBase.h"

#include <QGuiApplication>

ToolWork::ToolWork(LXViewToolBase& tool) : m_Tool(tool) {}

ToolWork::~ToolWork()
{
    EndWork();
}

bool ToolWork::BeginWork()
{
    if (m_bWorking) return true;

    // First, so that whoever hears of the lock finds the cursor standing.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_bWaitCursor = true;
    if (!m_Tool.LockDocument()) {
        RestoreCursor();
        return false;
    }
    m_Tool.DisableShortcuts();
    m_bWorking = true;
    return true;
}

void ToolWork::RestoreCursor()
{
    if (!m_bWaitCursor) return;

    m_bWaitCursor = false;
    QGuiApplication::restoreOverrideCursor();
}

void ToolWork::EndWork()
{
    RestoreCursor();
    if (!m_bWorking) return;

    // First, so that whoever hears of the unlock finds the work ended.
    m_bWorking = false;
    m_Tool.UnlockDocument();
    m_Tool.EnableShortcuts();
}
