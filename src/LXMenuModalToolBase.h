#pragma once

#include "MainMenuEntry.h"
#include "ToolLocks.h"

#include <QList>
#include <QObject>

class IDocumentView;
class LXDocumentInterface;
class QAction;
class ZKDocumentView;

/// The base of tools that live in menus alone: it follows the current document view and holds the two locks
/// around a change. Main thread only.
class LXMenuModalToolBase : public QObject
{
    Q_OBJECT

public:
    explicit LXMenuModalToolBase(QObject* parent = nullptr);

    /// Gives both locks back.
    ~LXMenuModalToolBase() override;

    virtual QList<QAction*> GetMenuActions() = 0;
    virtual QList<QAction*> GetToolBarActions() = 0;
    virtual MainMenuEntries GetMainMenuEntries() = 0;

    /// Does nothing here: a place for tools that need a call of their own.
    virtual void Update() {}

    /// Follows another view, or none for null; true always.
    bool SetDocumentView(IDocumentView* view);

    IDocumentView* GetDocumentView() const { return m_pDocumentView; }

    /// Null without a view.
    LXDocumentInterface* GetDocument() const;
    ZKDocumentView* GetView() const;

    /// The document lock: true when this tool holds it (doesn't hold it) afterwards.
    bool LockDocument();
    bool UnlockDocument();

    /// The view lock, which keeps other tools from becoming active.
    bool LockView();
    bool UnlockView();

signals:
    /// After the tool took the new view.
    void DocumentViewChanged(IDocumentView* oldDocumentView, IDocumentView* newDocumentView);

    /// Before the tool leaves the old view.
    void DocumentViewChange(IDocumentView* oldDocumentView, IDocumentView* newDocumentView);

private:
    IDocumentView* m_pDocumentView = nullptr;
    ToolLocks m_Locks;
};
