#include "ToolLocks.h"

#include "IDocumentView.h"

#include "common/Reports.h"
#include "document/LXDocumentInterface.h"

namespace {
// The lines that reports name; they stay what they are, wherever the code moves.
constexpr int DocumentExternallyUnlockedLine = 684;
constexpr int DocumentUnlockFailedLine = 690;
constexpr int ViewExternallyUnlockedLine = 730;

bool IsLocked(const IDocumentView* view)
{
    return (view->GetState() & IDocumentView::LockBit) != 0;
}
} // namespace

bool ToolLocks::LockDocument(LXDocumentInterface* document)
{
    if (m_bDocumentLocked) return true;
    if (!document || document->GetLockState() || !document->Lock()) return false;

    m_bDocumentLocked = true;
    return true;
}

bool ToolLocks::UnlockDocument(LXDocumentInterface* document)
{
    if (!m_bDocumentLocked) return true;
    if (!document) return false;

    if (!document->GetLockState()) {
        Report(DocumentExternallyUnlockedLine, QStringLiteral("Document externally unlocked."));
    } else if (!document->Unlock()) {
        Report(DocumentUnlockFailedLine, QStringLiteral("Document unlock failed."));
        return false;
    }
    m_bDocumentLocked = false;
    return true;
}

bool ToolLocks::LockView(IDocumentView* view, QObject* owner)
{
    if (m_bViewLocked) return true;
    if (!view || IsLocked(view) || !view->Lock(owner)) return false;

    m_bViewLocked = true;
    return true;
}

bool ToolLocks::UnlockView(IDocumentView* view, QObject* owner)
{
    if (!m_bViewLocked) return true;
    if (!view) return false;

    if (!IsLocked(view)) {
        Report(ViewExternallyUnlockedLine, QStringLiteral("View externally unlocked."));
    } else if (!view->Unlock(owner)) {
        return false;
    }
    m_bViewLocked = false;
    return true;
}

void ToolLocks::Report(int line, const QString& message) const
{
    Reports::Condition({line, m_ReportFile}, message);
}
