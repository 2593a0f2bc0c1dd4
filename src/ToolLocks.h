#pragma once

#include <QString>

class IDocumentView;
class LXDocumentInterface;
class QObject;

/// The two locks that a tool holds around a change: the document lock says who may change the document, the
/// view lock keeps other tools from becoming active. Each is taken once, however often it is asked for.
/// Main thread only.
class ToolLocks
{
public:
    /// @param reportFile  the source file under whose name reports go to the log.
    explicit ToolLocks(const QString& reportFile) : m_ReportFile(reportFile) {}

    Q_DISABLE_COPY(ToolLocks)

    /// True when the lock is held here afterwards; false without a document and when somebody else holds it.
    bool LockDocument(LXDocumentInterface* document);

    /// True when the lock isn't held here afterwards. A lock that somebody else gave back is reported.
    bool UnlockDocument(LXDocumentInterface* document);

    /// The same for the view.
    bool LockView(IDocumentView* view, QObject* owner);
    bool UnlockView(IDocumentView* view, QObject* owner);

    bool HoldsDocument() const { return m_bDocumentLocked; }

    bool HoldsView() const { return m_bViewLocked; }

private:
    void Report(int line, const QString& message) const;

    QString m_ReportFile;
    bool m_bDocumentLocked = false;
    bool m_bViewLocked = false;
};
